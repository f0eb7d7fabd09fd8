#!/usr/bin/env -S python3 -B
# SPDX-FileCopyrightText: 2026 The Burnwick developers
# SPDX-License-Identifier: MIT
"""check.py DEBIAN [REPORT]: scrapes the metrics of three sample homes with the Prometheus and node_exporter in the
folder DEBIAN, and compares sums, increases, recording rules, alerts and the dashboard's queries with what the homes
hold. REPORT is the program burnwick-report; without it the homes describe themselves. Prints a table of what was
compared, and ends at the first wrong figure. `check.py DEBIAN scale [MACHINES]` measures many machines instead."""

import itertools
import os
import re
import shutil
import subprocess
import sys
import tempfile
import time
from pathlib import Path

import dashboard
import scale
import watch
from homes import SECRETS, Home, Limit, Message
from servers import Failed, Servers, require_equal, require_within, wait

HERE = Path(__file__).resolve().parent
DATA = HERE.parent.parent / "data/prometheus"
OPUS, SONNET, HAIKU, UNPRICED = "claude-opus-4-6", "claude-sonnet-4-6", "claude-haiku-4-5", "claude-unheard-of-9"
FIGURES = ("burnwick_tokens", "burnwick_cost_usd", "burnwick_messages", "burnwick_unpriced_tokens")
LABELS = ("instance", "model", "kind")


def said(what, figures):
    print(f"| {what:<66} | {figures:<44} |", flush=True)


def sample_homes(now):
    hour = 3600
    return {
        "anna": Home("anna", True, [
            Message(OPUS, (1000, 600, 2000, 300, 50_000)), Message(SONNET, (400, 90, 0, 0, 9000), "secret-work-too"),
        ], [Limit("session", .6, now + 2 * hour, now), Limit("weekly", .41, now + 80 * hour, now)], True),
        "bert": Home("bert", True, [
            Message(OPUS, (7000, 5000, 0, 0, 200_000)), Message(HAIKU, (10_000, 900, 500, 0, 0)),
            Message(UNPRICED, (800, 200, 0, 0, 0)),
        ], [Limit("weekly", .95, now + 30 * hour, now)]),
        # Its other limit was last observed long ago.
        "clara": Home("clara", False, [
            Message(SONNET, (3000, 1200, 100, 40, 7000)), Message(UNPRICED, (0, 50, 0, 0, 0)),
        ], [Limit("session", 1.02, now + hour, now),
            Limit("weekly_scoped", .97, now + 90 * hour, now - 2 * hour, "Opus")]),
    }


def parsed(text):
    """Returns the series of a metrics file, projects added up, without those that no home has."""
    sums = {}
    for name, labels, value in re.findall(r"^(burnwick_\w+)(?:\{(.*)\})? (\S+)$", text, re.M):
        pairs = tuple(sorted(pair for pair in re.findall(r'(\w+)="((?:[^"\\]|\\.)*)"', labels)
                             if pair[0] != "project" and pair[1]))
        sums[name, pairs] = sums.get((name, pairs), 0) + float(value)
    own = ("burnwick_burn_tokens_per_minute", "burnwick_build_info")
    return {key: value for key, value in sums.items() if key[0] not in own}


class Check:
    def __init__(self, servers, report, place):
        self.servers, self.report, self.place = servers, report, place
        self.homes = sample_homes(int(time.time()))
        self.waves = {name: [] for name in self.homes}  # the figures of each home, each time it was published

    def file(self, name):
        return self.place / name / "text" / "burnwick.prom"

    def publish(self, name):
        """Writes the home and its metrics file, and compares the file with the home."""
        home, folder, file = self.homes[name], self.place / name / "home", self.file(name)
        home.write(folder)
        file.parent.mkdir(parents=True, exist_ok=True)
        if self.report:
            options = ["--metrics-projects"] if home.gives_projects else []
            environment = {"HOME": str(folder), "PATH": os.environ["PATH"], "TZ": "UTC"}
            done = subprocess.run([self.report, "--metrics-file", file, *options], env=environment,
                                  stdin=subprocess.DEVNULL, capture_output=True, text=True)
            if done.returncode or done.stderr:
                raise Failed(f"burnwick-report: exit status {done.returncode}, {done.stderr}")
        else:
            draft = file.with_suffix(".draft")
            draft.write_text(home.text())
            draft.replace(file)
        text = file.read_text()
        self.servers.promtool("check", "metrics", text=text)
        for secret in SECRETS:
            if secret in text:
                raise Failed(f"{file} names {secret}")
        expected = home.series()
        require_equal(parsed(text), {(name, tuple(sorted(labels))): value for (name, labels), value
                                     in expected.items()}, f"the file of {name}")
        self.waves[name].append({(key, labels): value for (key, labels), value in expected.items()
                                 if key.removesuffix("_total") in FIGURES})
        return len(expected)

    def expected(self, metric):
        """Returns the last value of each home's series of that name, by LABELS."""
        return {(name, *(dict(labels).get(label, "") for label in LABELS[1:])): value
                for name, waves in self.waves.items() for (key, labels), value in waves[-1].items()
                if key == metric and value}

    def scraped(self, metric):
        return self.servers.values(f"sum by ({', '.join(LABELS)}) ({metric}) != 0", *LABELS)

    def await_scrape(self, metric):
        """Waits until Prometheus has the last values."""
        expected = self.expected(metric)
        def arrived():
            found = self.scraped(metric)
            return found.keys() == expected.keys() and all(abs(found[key] - expected[key]) < 1e-9 for key in found)
        wait(arrived, f"Prometheus has the values of {metric}")

    def increments(self, metric):
        """Returns by how much each counter has risen; after a fall the whole new value counts."""
        rises = {}
        for name, waves in self.waves.items():
            keys = {key for wave in waves for key in wave if key[0] == metric}
            for key in keys:
                values = [wave[key] for wave in waves if key in wave]
                labels = (name, *(dict(key[1]).get(label, "") for label in LABELS[1:]))
                rises[labels] = sum(new - old if new >= old else new for old, new in itertools.pairwise(values))
        return rises

    def bounds(self, metric, at, without=()):
        """Returns the bounds of each increase in the last half hour. Prometheus extrapolates it at both ends, by at
        most 1.1 steps of the samples."""
        factors = {}
        for row in self.servers.ask("query", query=f"{metric}[30m]", time=at):
            key = tuple(row["metric"].get(label, "") for label in LABELS)
            factors[key] = max(factors.get(key, 1), 1 + 2.2 / max(len(row["values"]) - 1, 1))
        sums = {}
        for labels, rise in self.increments(metric).items():
            key = tuple(label for label, name in zip(labels, LABELS) if name not in without)
            low, high = sums.get(key, (0, 0))
            sums[key] = low + rise, high + rise * factors[labels]
        return sums

    def compare_sums(self):
        count = 0
        for metric in [name + suffix for name in FIGURES for suffix in ("_total", "")]:
            self.await_scrape(metric)
            expected = self.expected(metric)
            require_equal(self.scraped(metric), expected, metric)
            count += len(expected)
        self.servers.await_rules()
        totals = {name: self.servers.values(f"sum({name}_total or {name})")[()] for name in FIGURES[:2]}
        said("sums of each machine, model and kind", f"{count} equal; {totals[FIGURES[0]]:.0f} tokens, "
             f"{totals[FIGURES[1]]:.6f} dollars")

    def change(self):
        """Anna goes on and uses more of a limit, then loses her history; bert begins anew with less, and both go on."""
        wait(lambda: min(self.servers.values("min(count_over_time(burnwick_tokens_total[30m]))").values()) >= 3,
             "some scrapes of each counter before it changes")
        now = int(time.time())
        anna, bert = self.homes["anna"], self.homes["bert"]
        anna.messages += [Message(OPUS, (500, 4000, 0, 100, 80_000)),
                          Message(SONNET, (10, 20, 30, 0, 40), "secret-work-too")]
        anna.limits[0] = Limit("session", .66, anna.limits[0].resets_at, now)
        self.publish("anna")
        shutil.rmtree(self.place / "bert" / "home")
        bert.messages = [Message(OPUS, (300, 100, 0, 0, 4000)), Message(UNPRICED, (90, 10, 0, 0, 0))]
        self.publish("bert")
        self.compare_sums()
        bert.messages.append(Message(OPUS, (50, 60, 0, 0, 700)))
        self.publish("bert")
        anna.lose_history(self.place / "anna" / "home")
        self.publish("anna")
        anna.messages.append(Message(OPUS, (20, 10, 0, 0, 500)))
        self.publish("anna")
        self.compare_sums()

        # With more samples Prometheus extrapolates less.
        wait(lambda: len(self.servers.values("count_over_time(burnwick_build_info[30m]) >= 25", "instance")) ==
             len(self.homes), "25 scrapes")

    def compare_increases(self):
        count = 0
        at = time.time()
        for metric in [name + "_total" for name in FIGURES]:
            found = self.servers.values(f"sum by ({', '.join(LABELS)}) (increase({metric}[30m]))", *LABELS, at=at)
            require_within(found, self.bounds(metric, at), f"increase of {metric}")
            count += len(found)
        resets = self.servers.values("max by (instance) (resets(burnwick_cost_usd_total[30m]))", "instance", at=at)
        require_equal(resets, {("anna",): 0, ("bert",): 1}, "resets")
        said("increases of each counter, through a restart with less", f"{count} within the extrapolation")

    def compare_usage_rules(self):
        at = time.time()
        for rule, metric, seconds, without in (
                ("burnwick:tokens:rate5m", "burnwick_tokens_total", 300, ("kind",)),
                ("burnwick:tokens_by_kind:rate5m", "burnwick_tokens_total", 300, ("model",)),
                ("burnwick:cost_usd:rate1h", "burnwick_cost_usd_total", 3600, ("kind",))):
            labels = [label for label in LABELS if label not in without]
            found = self.servers.values(f"sum by ({', '.join(labels)}) ({rule})", *labels, at=at)
            bounds = self.bounds(metric, at, without)
            # The rule may be older than the last scrapes by some of them.
            require_within({key: value * seconds for key, value in found.items()}, bounds, rule)
            said(rule, f"{len(found)} within the extrapolation")
        days = self.servers.values("sum by (instance, model) (increase(burnwick:cost_usd:carried[1d]))", "instance",
                                   "model", at=at)
        bounds = self.bounds("burnwick_cost_usd_total", at, ("kind",))
        require_within(days, bounds, "cost of the day")
        said("cost of the day by machine and model", f"{len(days)}; {sum(days.values()):.4f} dollars, computed "
             f"{sum(low for low, _ in bounds.values()):.4f}")


def configured(file, targets, seconds=1):
    """Returns the example configuration with these targets, by address to label, and a short interval."""
    text = file.read_text()
    head, example, _ = text.partition("    static_configs:\n")
    head, count = re.subn(r"_interval: 1m$", f"_interval: {seconds}s", head, flags=re.M)
    if not example or count != 2:
        raise Failed(f"{file} has another form")
    head = head.replace("burnwick-rules.yml", str(file.with_name("burnwick-rules.yml")))
    rows = "".join(f"      - targets: ['{address}']\n        labels: {{instance: {name}}}\n"
                   for name, address in targets.items())
    return head + example + rows


def verify_units(report, place):
    """Has systemd read the service and the timer, with a program that exists."""
    folder = place / "units"
    (folder / "runtime").mkdir(parents=True)
    for file in (DATA.parent / "systemd").glob("burnwick-metrics.*"):
        text = file.read_text().replace("ExecStart=burnwick-report", f"ExecStart={report or '/bin/true'}")
        (folder / file.name).write_text(text)
    environment = {"PATH": os.environ["PATH"], "HOME": str(folder), "XDG_RUNTIME_DIR": str(folder / "runtime")}
    done = subprocess.run(["systemd-analyze", "--user", "--man=no", "verify", *folder.glob("burnwick-metrics.*")],
                          env=environment, capture_output=True, text=True)
    if done.returncode or done.stderr:
        raise Failed(f"systemd-analyze: {done.stderr}")
    said("systemd-analyze verify of the service and the timer", "accepted")


def compare(servers, report, place):
    verify_units(report, place)
    for arguments in (("check", "rules", DATA / "burnwick-rules.yml"), ("test", "rules", HERE / "rules-test.yml"),
                      ("check", "config", DATA / "prometheus.yml")):
        servers.promtool(*arguments)
        said("promtool " + " ".join((*arguments[:2], arguments[2].name)), "accepted")
    check = Check(servers, report, place)
    series = sum(check.publish(name) for name in check.homes)
    said("the files of three homes", f"{series} series equal")
    targets = {name: servers.start_exporter(name, check.file(name).parent) for name in check.homes}
    config = place / "prometheus.yml"
    config.write_text(configured(DATA / "prometheus.yml", targets))
    servers.start_prometheus(config)
    check.compare_sums()
    check.change()
    watch.compare_limit_rules(check, said)
    watch.compare_alerts(check, said)
    check.compare_increases()
    check.compare_usage_rules()
    queries, rows = dashboard.run(servers, DATA / "burnwick-dashboard.json")
    said("queries of the dashboard", f"{queries} with {rows} results")
    watch.old_file(check, said)
    watch.two_users(check, said)
    watch.await_reset(check, said)
    watch.away(check, said)


def main():
    debian, rest = Path(sys.argv[1]).resolve(), sys.argv[2:]
    place = Path(tempfile.mkdtemp(prefix="burnwick-metrics-"))
    begin = time.monotonic()
    try:
        with Servers(debian, place) as servers:
            if rest[:1] == ["scale"]:
                scale.measure(servers, DATA, place, int(rest[1]) if rest[1:] else 2000, configured, said)
            else:
                compare(servers, Path(rest[0]).resolve() if rest else None, place)
        said("all of it", f"{time.monotonic() - begin:.0f} s")
    except Failed as failure:
        sys.exit(f"metrics: {failure}")
    finally:
        shutil.rmtree(place)


main()
