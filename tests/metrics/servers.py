# SPDX-FileCopyrightText: 2026 The Burnwick developers
# SPDX-License-Identifier: MIT
"""Debian's Prometheus and node_exporter on loopback, in folders of the check, and questions to them."""

import json
import math
import os
import socket
import subprocess
import time
import urllib.error
import urllib.parse
import urllib.request
from datetime import datetime
from pathlib import Path


class Failed(Exception):
    pass


def wait(condition, what, seconds=30, pause=0.05):
    """Returns the first true result of the condition, which is asked until then, with pauses in seconds."""
    deadline = time.monotonic() + seconds
    while True:
        result = condition()
        if result:
            return result
        if time.monotonic() > deadline:
            raise Failed(f"{what}: not within {seconds} s")
        time.sleep(pause)


def free_port():
    with socket.socket() as listener:
        listener.bind(("127.0.0.1", 0))
        return listener.getsockname()[1]


class Servers:
    """Starts programs of the folder with the unpacked packages, and ends those and no others."""

    def __init__(self, debian: Path, place: Path):
        self.programs = debian / "usr/bin"
        self.place = place
        self.started = {}
        self.address = ""

    def __enter__(self):
        return self

    def __exit__(self, *_):
        for name in list(self.started):
            self.stop(name)

    def stop(self, name):
        process = self.started.pop(name)
        process.terminate()
        try:
            process.wait(20)
        except subprocess.TimeoutExpired:
            process.kill()
            process.wait()

    def start(self, name, program, *arguments):
        with open(self.place / f"{name}.log", "wb") as log:
            self.started[name] = subprocess.Popen([self.programs / program, *arguments], stdin=subprocess.DEVNULL,
                                                  stdout=log, stderr=log, cwd=self.place,
                                                  env=os.environ | {"TZ": "UTC"})
        return self.started[name].pid

    def start_exporter(self, name, folder: Path):
        port = free_port()
        self.start(name, "prometheus-node-exporter", "--collector.disable-defaults", "--collector.textfile",
                   f"--collector.textfile.directory={folder}", f"--web.listen-address=127.0.0.1:{port}")
        return f"127.0.0.1:{port}"

    def start_prometheus(self, config: Path):
        self.address = f"http://127.0.0.1:{free_port()}"
        pid = self.start("prometheus", "prometheus", f"--config.file={config}",
                         f"--storage.tsdb.path={self.place / 'tsdb'}",
                         f"--web.listen-address={self.address.removeprefix('http://')}")
        wait(self.is_ready, "Prometheus answers", 60)
        return pid

    def is_ready(self):
        if self.started["prometheus"].poll() is not None:
            raise Failed((self.place / "prometheus.log").read_text())
        try:
            return urllib.request.urlopen(self.address + "/-/ready", timeout=5).status == 200
        except OSError:
            return False

    def ask(self, path, **parameters):
        body = urllib.parse.urlencode(parameters).encode()
        try:
            with urllib.request.urlopen(f"{self.address}/api/v1/{path}", body, timeout=60) as answer:
                return json.load(answer)["data"]["result"]
        except urllib.error.HTTPError as error:
            raise Failed(f"{parameters}: {error.read().decode()}") from error

    def values(self, query, *labels, at=None):
        """Returns the values of an instant query by the labels, which must tell the results apart."""
        parameters = {"query": query} | ({"time": at} if at else {})
        result = self.ask("query", **parameters)
        found = {tuple(row["metric"].get(label, "") for label in labels): float(row["value"][1]) for row in result}
        if len(found) != len(result):
            raise Failed(f"{query}: {labels} do not tell the results apart")
        return found

    def rule_groups(self):
        with urllib.request.urlopen(self.address + "/api/v1/rules", timeout=60) as answer:
            return json.load(answer)["data"]["groups"]

    def await_rules(self, seconds=30):
        """Waits until each group of rules has been evaluated after this call began."""
        begin = time.time()

        def evaluated():
            # Nine decimals are more than fromisoformat() reads.
            times = [datetime.fromisoformat(group["lastEvaluation"][:19] + "+00:00").timestamp()
                     for group in self.rule_groups()]
            return times and min(times) > begin

        wait(evaluated, "the rules are evaluated", seconds)

    def promtool(self, *arguments, text=None):
        done = subprocess.run([self.programs / "promtool", *arguments], input=text, text=True, capture_output=True)
        if done.returncode:
            raise Failed(f"promtool {' '.join(map(str, arguments))}:\n{done.stdout}{done.stderr}")
        return done.stdout


def close(value, expected):
    return math.isclose(value, expected, rel_tol=1e-9, abs_tol=1e-9)


def require_equal(found, expected, what):
    """Requires the same keys and, but for rounding, the same values."""
    for key in sorted(found.keys() | expected.keys()):
        if key not in found or key not in expected or not close(found[key], expected[key]):
            raise Failed(f"{what}: {key} is {found.get(key)}, expected {expected.get(key)}")


def require_within(found, bounds, what):
    """Requires the same keys, and each value between its bounds; those without bounds are 0."""
    for key in sorted(found.keys() | bounds.keys()):
        low, high = bounds.get(key, (0, 0))
        if key not in found or not (low - 1e-9 <= found[key] <= high + 1e-9):
            raise Failed(f"{what}: {key} is {found.get(key)}, expected {low} to {high}")
