# SPDX-FileCopyrightText: 2026 The Burnwick developers
# SPDX-License-Identifier: MIT
"""The dashboard: its structure, and each of its queries in Prometheus as Grafana would send it."""

import json
import time
from pathlib import Path

from servers import Failed

VARIABLES = {"$__rate_interval": "4m", "$__range": "24h", "$instance": ".*", "$model": ".*"}
SOURCE = {"type": "prometheus", "uid": "${datasource}"}


def panels(board):
    for panel in board["panels"]:
        yield panel
        yield from panel.get("panels", [])


def load(file: Path):
    board = json.loads(file.read_text())
    identifiers = [panel["id"] for panel in panels(board)]
    if len(set(identifiers)) < len(identifiers):
        raise Failed("two panels have the same id")
    names = {variable["name"] for variable in board["templating"]["list"]}
    if names != {"datasource", "instance", "model"}:
        raise Failed(f"the variables are {names}")
    cells = set()
    for panel in panels(board):
        if panel["type"] == "row":
            continue
        place = panel["gridPos"]
        own = {(x, y) for x in range(place["x"], place["x"] + place["w"])
               for y in range(place["y"], place["y"] + place["h"])}
        if own & cells or place["x"] + place["w"] > 24:
            raise Failed(f"the panel {panel['title']} lies on another one or beside the grid")
        cells |= own
        if not panel["targets"] or any(part["datasource"] != SOURCE for part in (panel, *panel["targets"])):
            raise Failed(f"the panel {panel['title']} has another source of data")
    return board


def substituted(query):
    for name, value in VARIABLES.items():
        query = query.replace(name, value)
    if "$" in query:
        raise Failed(f"{query}: an unknown variable")
    return query


def ask(servers, target, now):
    query = substituted(target["expr"])
    if target.get("instant"):
        return servers.ask("query", query=query, time=now)
    if target["interval"] == "1d":
        day = 24 * 3600
        today = now // day * day
        return servers.ask("query_range", query=query, start=today - 6 * day, end=today, step=day)
    return servers.ask("query_range", query=query, start=now - 3600, end=now, step=15)


def run(servers, file: Path):
    """Runs all queries; each must return something for the sample homes. Returns the number of queries and rows."""
    queries = rows = 0
    now = time.time()
    for panel in panels(load(file)):
        for target in panel.get("targets", []):
            result = ask(servers, target, now)
            if not result:
                raise Failed(f"{panel['title']}: {target['expr']} has no result")
            queries += 1
            rows += len(result)
    return queries, rows


def durations(servers, file: Path):
    """Runs all queries and yields the title of the panel and the seconds of each."""
    for panel in panels(load(file)):
        for target in panel.get("targets", []):
            begin = time.monotonic()
            ask(servers, target, time.time())
            yield f"{panel['title']} {target['refId']}", time.monotonic() - begin
