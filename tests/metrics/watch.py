# SPDX-FileCopyrightText: 2026 The Burnwick developers
# SPDX-License-Identifier: MIT
"""The rules about limits and the alerts, compared with the homes and with faults that are made on purpose."""

import os
import re
import statistics
import time

from homes import write
from servers import Failed, close, require_equal, require_within, wait

LIMIT = ("instance", "limit", "model")


def current(homes, now):
    """Returns each limit whose window lasts and that was observed within an hour."""
    return {(name, limit.kind, limit.model): limit for name, home in homes.items() for limit in home.limits
            if limit.resets_at > now and limit.observed_at > now - 3600}


def compare_limit_rules(check, said):
    servers = check.servers
    servers.await_rules()
    at = time.time()
    limits = current(check.homes, at)
    require_equal(servers.values("burnwick:limit_used_ratio:current", *LIMIT, at=at),
                  {key: limit.used for key, limit in limits.items()}, "burnwick:limit_used_ratio:current")
    said("burnwick:limit_used_ratio:current", f"{len(limits)} equal")

    until_reset = servers.values("burnwick:limit_until_reset:seconds", *LIMIT, at=at)
    require_within(until_reset, {key: (limit.resets_at - at - 1, limit.resets_at - at + 3)
                                 for key, limit in limits.items()}, "burnwick:limit_until_reset:seconds")
    said("burnwick:limit_until_reset:seconds", f"{len(until_reset)} within 3 s")

    # The slope of the least squares through the scraped values, as Python computes it.
    until_full = servers.values("burnwick:limit_until_full:seconds", *LIMIT, at=at)
    evaluated = max(servers.values("timestamp(burnwick:limit_until_full:seconds)", *LIMIT, at=at).values())
    bounds = {}
    for row in servers.ask("query", query="burnwick_limit_used_ratio[30m]", time=evaluated):
        key = tuple(row["metric"].get(label, "") for label in LIMIT)
        times, ratios = zip(*((float(instant), float(ratio)) for instant, ratio in row["values"]))
        if key in limits and limits[key].used < 1 and len(set(ratios)) > 1:
            left = (1 - limits[key].used) / statistics.linear_regression(times, ratios).slope
            bounds[key] = (left * .9, left * 1.1)  # the last scrape may have come after the rule
    require_within(until_full, bounds, "burnwick:limit_until_full:seconds")
    said("burnwick:limit_until_full:seconds", ", ".join(f"{key[0]} {value:.0f} s" for key, value in until_full.items()))
    stops = {key: value for key, value in until_full.items() if value < until_reset[key]}
    require_equal(servers.values("burnwick:limit_until_stop:seconds", *LIMIT, at=at), stops,
                  "burnwick:limit_until_stop:seconds")
    said("burnwick:limit_until_stop:seconds", f"{len(stops)} equal")


def alerts(check, name, *labels):
    found = check.servers.values(f'ALERTS{{alertname="Burnwick{name}"}}', *labels, "alertstate")
    return set(found)


def require_alert(check, said, name, labels, expected):
    wait(lambda: alerts(check, name, *labels) == expected, f"the alert {name} is {expected}")
    said(f"alert Burnwick{name}", " ".join(sorted("/".join(filter(None, key)) for key in expected)))


def compare_alerts(check, said):
    require_alert(check, said, "LimitFull", ("instance", "limit"), {("clara", "session", "firing")})
    require_alert(check, said, "LimitNearlyFull", ("instance", "limit"),
                  {("anna", "session", "pending"), ("bert", "weekly", "pending")})
    require_alert(check, said, "UnpricedTokens", ("model",), {("claude-unheard-of-9", "pending")})
    for quiet in ("MetricsStale", "FilesCollide"):
        if alerts(check, quiet):
            raise Failed(f"the alert {quiet} is not expected yet")


def await_reset(check, said):
    """The session of clara ends: the alert does, too, and the rules leave the limit out."""
    session = check.homes["clara"].limits[0]
    session.resets_at = int(time.time()) + 3
    check.publish("clara")
    wait(lambda: not alerts(check, "LimitFull"), "the full limit is reset")
    limits = current(check.homes, time.time())
    require_equal(check.servers.values("burnwick:limit_used_ratio:current", *LIMIT),
                  {key: limit.used for key, limit in limits.items()}, "limits after a reset")
    said("a limit after its reset", "left out, alert over")


def old_file(check, said):
    """The timer of clara stops."""
    file = check.file("clara")
    now = time.time()
    os.utime(file, (now - 1000, now - 1000))
    require_alert(check, said, "MetricsStale", ("instance",), {("clara", "pending")})
    os.utime(file)
    wait(lambda: not alerts(check, "MetricsStale"), "the alert ends")


def two_users(check, said):
    """A second user of bert's machine writes into the same folder: of two equal series one counts, and an alert
    says it."""
    cost = 'sum without (project) (burnwick_cost_usd_total{instance="bert"})'
    before = check.servers.values(cost, "model")
    second = check.file("bert").with_name("burnwick-second.prom")
    text = check.file("bert").read_text()
    write(second, re.sub(r"^(burnwick_cost_usd_total\S+ )(\S+)$", lambda row: f"{row[1]}{float(row[2]) * 10}", text,
                         flags=re.M))
    require_alert(check, said, "FilesCollide", ("instance",), {("bert", "pending")})
    both = check.servers.values(cost, "model")
    if not any(all(close(both[key], before[key] * factor) for key in before) for factor in (1, 10)):
        raise Failed(f"two users: {both} instead of one of both; before {before}")
    errors = check.servers.values("node_textfile_scrape_error", "instance")[("bert",)]
    second.unlink()
    wait(lambda: not alerts(check, "FilesCollide"), "the alert ends")
    wait(lambda: check.servers.values(cost, "model") == before, "the second user is gone")
    said("two files in one folder", f"one of both counts, scrape_error is {errors:.0f}")


def away(check, said):
    """The machine of bert is switched off: its counters end, and its last cost is carried on."""
    labels = ("instance", "model")
    before = check.servers.values('burnwick_cost_usd_total{instance="bert"}', *labels)
    check.servers.stop("bert")
    wait(lambda: not check.servers.values('burnwick_cost_usd_total{instance="bert"}', *labels), "the counters end")
    check.servers.await_rules()
    check.servers.await_rules()
    carried = check.servers.values('burnwick:cost_usd:carried{instance="bert"}', *labels)
    # A model that the smaller history lacks is carried, too.
    if not before.keys() < carried.keys():
        raise Failed(f"carried: {carried} after {before}")
    require_equal({key: carried[key] for key in before}, before, "burnwick:cost_usd:carried")
    said("burnwick:cost_usd:carried, of a machine that is off", f"{len(before)} equal")
