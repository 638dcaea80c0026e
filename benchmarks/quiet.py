#!/usr/bin/env python3
"""Tells whether the machine is quiet enough to be measured.

Usage: quiet.py idle SECONDS             fails when other programs use the processors
       quiet.py run RECORD COMMAND...    runs a command and records what other programs used meanwhile
       quiet.py check RESULTS            fails when the machine was not quiet during the measurements in a folder

What others use is the busy time of all processors (/proc/stat, with the time that a hypervisor takes away) less that of
the command itself, over the time that passes: 1 is one processor. The spread of a build is the median over its rows of
the coefficient of variation between a row's repetitions.
"""

import json
import os
import resource
import subprocess
import sys
import time

from results import BUILDS, ReportError, load, median

OTHERS_LIMIT = 0.1  # processors that other programs use
SPREAD_LIMIT = 0.02  # between the repetitions of a row


def busy_seconds(stat, ticks):
    """The busy time of all processors together, from the text of /proc/stat."""
    user, nice, system, _, _, interrupts, soft_interrupts, stolen = map(int, stat.splitlines()[0].split()[1:9])
    return (user + nice + system + interrupts + soft_interrupts + stolen) / ticks


def now():
    """Busy time of the machine, processor time of our children, and the time of day, in seconds."""
    with open("/proc/stat", encoding="ascii") as file:
        busy = busy_seconds(file.read(), os.sysconf("SC_CLK_TCK"))
    used = resource.getrusage(resource.RUSAGE_CHILDREN)
    return busy, used.ru_utime + used.ru_stime, time.monotonic()


def others(before, after):
    """The processors that other programs used between two moments."""
    busy, own, wall = (last - first for first, last in zip(before, after))
    return max(0.0, busy - own) / wall


def spread(document):
    """The median over the rows of the coefficient of variation; None where nothing was repeated."""
    return median(entry["items_per_second"] for entry in document.get("benchmarks", [])
                  if entry.get("aggregate_name") == "cv" and "items_per_second" in entry)


def disturbances(used, between):
    """What was not quiet, in words; nothing where all was."""
    found = []
    if used is not None and used > OTHERS_LIMIT:
        found.append(f"other programs used {used:.2f} of a processor (at most {OTHERS_LIMIT})")
    if between is not None and between > SPREAD_LIMIT:
        found.append(f"repetitions differed by {between:.1%} (at most {SPREAD_LIMIT:.0%})")
    return found


def read(folder):
    """For each build in a folder of results: its title, what others used, and the spread."""
    facts = []
    for build, title in BUILDS:
        result = os.path.join(folder, build + ".json")
        record = os.path.join(folder, build + ".quiet")
        if os.path.exists(result):
            used = load(record)["others"] if os.path.exists(record) else None
            facts.append((title, used, spread(load(result))))
    return facts


def idle(seconds):
    before = now()
    time.sleep(seconds)
    found = disturbances(others(before, now()), None)
    if found:
        sys.exit(f"quiet: {found[0]}")


def run(record, command):
    before = now()
    code = subprocess.run(command, check=False).returncode
    with open(record, "w", encoding="utf-8") as file:
        json.dump({"others": others(before, now())}, file)
    sys.exit(code)


def check(folder):
    found = [f"{title}: {what}" for title, used, between in read(folder) for what in disturbances(used, between)]
    if found:
        sys.exit("\n".join(f"quiet: {line}" for line in found))


if __name__ == "__main__":
    try:
        if len(sys.argv) == 3 and sys.argv[1] == "idle":
            idle(float(sys.argv[2]))
        elif len(sys.argv) > 3 and sys.argv[1] == "run":
            run(sys.argv[2], sys.argv[3:])
        elif len(sys.argv) == 3 and sys.argv[1] == "check":
            check(sys.argv[2])
        else:
            sys.exit(__doc__)
    except (ReportError, OSError) as problem:
        sys.exit(f"quiet: {problem}")
