# SPDX-FileCopyrightText: 2026 The Burnwick developers
# SPDX-License-Identifier: MIT
"""Many machines at the interval of the example configuration: what they cost Prometheus."""

import os
import random
import re
import threading
import time
import urllib.request
from http.server import BaseHTTPRequestHandler, ThreadingHTTPServer
from pathlib import Path

import dashboard
from homes import PRICES, Home, Limit, Message
from servers import Failed, wait

MODELS = [*PRICES] + [f"claude-sample-{number}" for number in range(10 - len(PRICES))]
SCRAPES = 4


def template(number):
    """Returns the text of a machine, in pieces between its counters, and the counters."""
    seed = random.Random(number)
    now = int(time.time())
    home = Home(f"m{number}", True, [
        Message(model, tuple(seed.randint(1, 10**size) for size in (5, 6, 6, 5, 8))) for model in MODELS
    ], [Limit(kind, seed.random(), now + seed.randint(3600, 5 * 3600), now, model)
        for kind, model in (("session", ""), ("weekly", ""), ("weekly_scoped", "Opus"))])
    text = home.text() + f'node_textfile_mtime_seconds{{file="/var/lib/prometheus/burnwick/burnwick.prom"}} {now}\n'
    pieces = re.split(r"(?<=\} )(\S+)(?=\n)", text)
    is_counter = [bool(re.search(r"_total\{[^\n]*$", piece)) for piece in pieces[:-1:2]]
    return pieces, is_counter


def text_at(pieces, is_counter, minutes):
    """Each counter grows by a thousandth a minute."""
    parts = list(pieces)
    for number, counts in enumerate(is_counter):
        if counts:
            parts[2 * number + 1] = repr(float(pieces[2 * number + 1]) * (1 + minutes / 1000))
    return "".join(parts).encode()


def serve(machines):
    begin = time.monotonic()
    templates = [template(number) for number in range(machines)]

    class Handler(BaseHTTPRequestHandler):
        def do_GET(self):
            body = text_at(*templates[int(self.path.split("?")[0].rsplit("/", 1)[1])],
                           (time.monotonic() - begin) / 60)
            self.send_response(200)
            self.send_header("Content-Type", "text/plain; version=0.0.4")
            self.end_headers()
            self.wfile.write(body)

        def log_message(self, *_):
            pass

    server = ThreadingHTTPServer(("127.0.0.1", 0), Handler)
    server.daemon_threads = True
    threading.Thread(target=server.serve_forever, daemon=True).start()
    return server, len(text_at(*templates[0], 0))


def processor_seconds(pid):
    fields = Path(f"/proc/{pid}/stat").read_text().rsplit(")", 1)[1].split()
    return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")


def resident_megabytes(pid, line):
    return int(re.search(rf"^{line}:\s+(\d+) kB", Path(f"/proc/{pid}/status").read_text(), re.M)[1]) / 1024


def own_metric(servers, name):
    text = urllib.request.urlopen(servers.address + "/metrics", timeout=30).read().decode()
    return float(re.search(rf"^{name} (\S+)", text, re.M)[1])


def folder_bytes(folder):
    return sum(file.stat().st_size for file in folder.rglob("*") if file.is_file())


def measure(servers, rules_folder, place, machines, configured, said):
    server, size = serve(machines)
    address = f"127.0.0.1:{server.server_address[1]}"
    config = place / "prometheus.yml"
    config.write_text(configured(rules_folder / "prometheus.yml", {
        f"m{number}, __metrics_path__: /m/{number}": address for number in range(machines)}, 60))
    pid = servers.start_prometheus(config)

    def scraped(times):
        found = servers.values(f"count(count_over_time(up[30m]) >= {times})")
        return found.get((), 0) == machines

    wait(lambda: scraped(2), "two scrapes of each machine", 180, 5)
    begin, used = time.monotonic(), processor_seconds(pid)
    wait(lambda: scraped(SCRAPES), f"{SCRAPES} scrapes of each machine", 60 * SCRAPES, 5)
    share = (processor_seconds(pid) - used) / (time.monotonic() - begin)
    servers.await_rules(90)

    if servers.values("sum(up)")[()] != machines:
        raise Failed("a scrape failed")
    kept = servers.values("sum(scrape_samples_post_metric_relabeling)")[()]
    series = own_metric(servers, "prometheus_tsdb_head_series")
    said("machines, models of each, bytes of a file", f"{machines}, {len(MODELS)}, {size}")
    said("series of the machines; all with those of rules and scrapes", f"{kept:.0f}; {series:.0f}")
    longest = servers.values("max(scrape_duration_seconds)")[()]
    said("duration of a scrape: mean, longest", f"{1000 * servers.values('avg(scrape_duration_seconds)')[()]:.1f} ms, "
         f"{1000 * longest:.0f} ms")
    said("resident memory of Prometheus: now, at most",
         f"{resident_megabytes(pid, 'VmRSS'):.0f} MB, {resident_megabytes(pid, 'VmHWM'):.0f} MB")
    said("processor time of Prometheus", f"{100 * share:.1f} % of one core")
    said("log on disk after this time", f"{folder_bytes(place / 'tsdb') / 1e6:.0f} MB")
    for group in servers.rule_groups():
        said(f"evaluation of {group['name']}", f"{1000 * group['evaluationTime']:.0f} ms")
    times = dict(dashboard.durations(servers, rules_folder / "burnwick-dashboard.json"))
    slowest = max(times, key=times.get)
    said("queries of the dashboard, one after the other", f"{sum(times.values()):.1f} s")
    said(f"the slowest: {slowest}", f"{times[slowest]:.1f} s")
    # Before the interpreter ends, Prometheus must: it asks this server.
    servers.stop("prometheus")
    server.shutdown()
