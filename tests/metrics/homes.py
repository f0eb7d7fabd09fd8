# SPDX-FileCopyrightText: 2026 The Burnwick developers
# SPDX-License-Identifier: MIT
"""Sample homes: the logs that the program reads, and what its metrics must be, computed from the same messages."""

import json
import shutil
import time
from collections import defaultdict
from dataclasses import dataclass, field
from pathlib import Path

KINDS = ("input", "output", "cache_write_5m", "cache_write_1h", "cache_read")
# Dollars per million tokens, in the order of the kinds; from the vendor's public price pages.
PRICES = {
    "claude-opus-4-6": (5, 25, 6.25, 10, 0.5),
    "claude-sonnet-4-6": (3, 15, 3.75, 6, 0.3),
    "claude-haiku-4-5": (1, 5, 1.25, 2, 0.1),
}
# What no metric may hold unless it was asked for.
SECRETS = ("/home/", "secret-work", "example.org", "0a1b2c3d")


@dataclass
class Message:
    model: str
    tokens: tuple  # in the order of the kinds
    project: str = "secret-work"


@dataclass
class Limit:
    kind: str
    used: float  # 0 to 1 and above
    resets_at: int  # seconds since the epoch
    observed_at: int
    model: str = ""


@dataclass
class Home:
    """The home of one user. `series` and `limits` are what a metrics file of it must have."""

    name: str
    keeps_history: bool
    messages: list = field(default_factory=list)
    limits: list = field(default_factory=list)
    gives_projects: bool = False
    lost: list = field(default_factory=list)  # messages that were counted and are in no log any more

    def series(self):
        """Returns name and labels to value, without the labels of projects."""
        sums = defaultdict(float)
        suffix = "_total" if self.keeps_history else ""
        for message in self.lost + self.messages:
            model = ("model", message.model)
            for kind, count in zip(KINDS, message.tokens):
                sums["burnwick_tokens" + suffix, (("kind", kind), model)] += count
            sums["burnwick_messages" + suffix, (model,)] += 1
            prices = PRICES.get(message.model)
            cost = sum(count * price for count, price in zip(message.tokens, prices or ())) / 1e6
            sums["burnwick_cost_usd" + suffix, (model,)] += cost
            sums["burnwick_unpriced_tokens" + suffix, (model,)] += 0 if prices else sum(message.tokens)
        for limit in self.limits:
            labels = (("limit", limit.kind),) + ((("model", limit.model),) if limit.model else ())
            sums["burnwick_limit_used_ratio", labels] = limit.used
            sums["burnwick_limit_reset_timestamp_seconds", labels] = limit.resets_at
            sums["burnwick_limit_observed_timestamp_seconds", labels] = limit.observed_at
        return dict(sums)

    def lose_history(self, home: Path):
        """Removes the logs and what was kept of them, but not what was counted."""
        self.lost, self.messages = self.lost + self.messages, []
        shutil.rmtree(home / ".claude/projects")
        for file in (home / ".local/share/burnwick").glob("ledger*"):
            file.unlink()

    def write(self, home: Path):
        """Writes logs, settings and limits. The lines of a message repeat its counts, as the assistant's do."""
        logs = defaultdict(list)
        begin = time.time() - 3600
        for number, message in enumerate(self.messages, len(self.lost)):
            stamp = utc(begin + number)
            placeholder = (message.tokens[0], min(message.tokens[1], 4), *message.tokens[2:])
            logs[message.project] += [log_line(message, number, stamp, counts)
                                      for counts in (placeholder, message.tokens)]
        for project, lines in logs.items():
            write(home / ".claude/projects" / f"-home-{self.name}-{project}" / "0a1b2c3d.jsonl", "".join(lines))
        write(home / ".config/burnwick/burnwick.json", json.dumps({"keepHistory": self.keeps_history}))
        write(home / ".local/share/burnwick/limits.json", json.dumps({"limits": [
            {"kind": limit.kind, "model": limit.model or None, "usedPct": limit.used * 100,
             "resetsAt": utc(limit.resets_at), "observedAt": utc(limit.observed_at)} for limit in self.limits]}))

    def text(self):
        """Returns a metrics file, in place of the program's."""
        lines = []
        series = dict(self.series())
        series["burnwick_burn_tokens_per_minute", ()] = 60
        series["burnwick_build_info", (("version", "0.0.0"),)] = 1
        types = {}
        for (name, labels), value in sorted(series.items()):
            if name not in types:
                types[name] = "counter" if name.endswith("_total") else "gauge"
                lines += [f"# HELP {name} Sample.", f"# TYPE {name} {types[name]}"]
            if self.gives_projects and name.startswith(("burnwick_tokens", "burnwick_cost", "burnwick_messages")):
                labels += (("project", "4f1e"),)
            text = ",".join(f'{key}="{label}"' for key, label in labels)
            lines.append(f"{name}{{{text}}} {value!r}")
        return "\n".join(lines) + "\n"


def utc(seconds):
    return time.strftime("%Y-%m-%dT%H:%M:%S.000Z", time.gmtime(seconds))


def write(file: Path, text):
    """Replaces the file as a whole, so that no reader sees a part of it."""
    file.parent.mkdir(parents=True, exist_ok=True)
    draft = file.with_suffix(".draft")
    draft.write_text(text)
    draft.replace(file)


def log_line(message, number, stamp, counts):
    five_minutes, hour = counts[2], counts[3]
    return json.dumps({
        "type": "assistant", "timestamp": stamp, "sessionId": "0a1b2c3d", "requestId": f"req_{number}",
        "cwd": f"/home/someone/{message.project}", "userEmail": "someone@example.org",
        "message": {"id": f"msg_{number}", "model": message.model, "usage": {
            "input_tokens": counts[0], "output_tokens": counts[1],
            "cache_creation_input_tokens": five_minutes + hour, "cache_read_input_tokens": counts[4],
            "cache_creation": {"ephemeral_5m_input_tokens": five_minutes, "ephemeral_1h_input_tokens": hour}}},
    }) + "\n"
