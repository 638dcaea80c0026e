"""What tools/bench has measured: rows, their times and instructions, and what is computed from them.

A row is named `topic/operation/precision/library`. Its time is that of one item: the median over the repetitions. The
ratio of a row is a peer's time over ours: above 1 this library is faster.
"""

import json
import math
import re
import statistics

OURS = "BvBaseUtils"
HAND_WRITTEN = "hand-written"
LIMITS = ("memcpy", "memchr")  # what memory allows: no library, so no peer
TOPICS = ["vector", "componentwise", "direction", "matrix", "transform", "view", "quaternion", "scalar", "box", "sphere",
          "bounds", "frustum", "visibility", "ray", "intersect", "noise", "generator", "sampling", "batch", "scene",
          "hash", "string"]
APART = ("hash", "string")  # no mathematics: on a page of their own, in no mean
V3 = ("gcc-v3", "GCC -O3 -march=x86-64-v3")
CONTRACTION = ("gcc-v3-contraction", "v3, contraction allowed")
BUILDS = [("gcc", "GCC -O2"), ("clang", "Clang -O2"), V3, CONTRACTION]

# A library has rows under several names where it offers several ways.
LIBRARIES = (("GLM (intrinsics)", "GLM (intrinsics)"), ("GLM", "GLM"), ("pcg", "pcg-cpp"), ("XXH", "xxHash"),
             ("utfcpp", "utfcpp"), ("std", "standard library"), ("mt19937", "standard library"),
             ("minstd_rand", "standard library"))


class ReportError(Exception):
    """Something that the user must put right, in one line."""


def load(path):
    try:
        with open(path, encoding="utf-8") as file:
            return json.load(file)
    except json.JSONDecodeError as error:
        raise ReportError(f"{path}: not JSON: {error}") from error


def is_ours(name):
    """Whether a row shows this library: as it is meant to be used, or in another of its own forms."""
    return name.startswith(OURS)


def is_peer(name):
    return not is_ours(name) and name not in LIMITS


def library_of(name):
    """The library that a peer's row shows."""
    return next((library for prefix, library in LIBRARIES if name.startswith(prefix)), name)


def is_maths(key):
    return key[0] not in APART


def parse_results(document, source):
    """The median time of an item in nanoseconds, by (topic, operation, precision) and library."""
    rows = {}
    for entry in document.get("benchmarks", []):
        if entry.get("error_occurred"):
            raise ReportError(f"{source}: {entry.get('run_name')} failed: {entry.get('error_message', '')}")
        if entry.get("aggregate_name") != "median":
            continue
        name = entry["run_name"]
        parts = name.split("/")
        if len(parts) != 4:
            raise ReportError(f"{source}: a row must be topic/operation/precision/library, not {name}")
        rate = entry.get("items_per_second", 0)
        if not rate > 0:
            raise ReportError(f"{source}: {name} does not say how many items it worked on")
        libraries = rows.setdefault(tuple(parts[:3]), {})
        if parts[3] in libraries:
            raise ReportError(f"{source}: {name} is there twice")
        libraries[parts[3]] = 1e9 / rate
    if not rows:
        raise ReportError(f"{source}: there is no median in it")
    return rows


def parse_counts(lines, source):
    """The instructions of an item, by (topic, operation, precision) and library: from callgrind's dumps, each of which
    was triggered by the number of items and the name of a row."""
    counts = {}
    label = None
    for line in lines:
        trigger = re.match(r"desc: Trigger: Client Request: (\d+) (\S.*)$", line)
        if trigger:
            label = (int(trigger[1]), trigger[2].rstrip().split("/"))
            if len(label[1]) != 4 or label[0] == 0:
                raise ReportError(f"{source}: a dump must be of a number of items and a row, not {trigger[0]}")
        elif line.startswith("totals:") and label:
            items, parts = label
            counts.setdefault(tuple(parts[:3]), {})[parts[3]] = int(line.split()[1]) / items
            label = None
    return counts


def parse_floors(document, source):
    """Why a row cannot be faster, by its name: `topic/operation`, or with `/precision` behind it."""
    floors = {}
    for entry in document:
        row, reason = entry.get("row", ""), entry.get("reason", "")
        if len(row.split("/")) not in (2, 3) or not reason or "\n" in reason or set(entry) != {"row", "reason"}:
            raise ReportError(f"{source}: a floor has a row and a reason in one line, not {json.dumps(entry)}")
        if row in floors:
            raise ReportError(f"{source}: {row} is there twice")
        floors[row] = reason
    return floors


def floor_of(key, floors):
    """The reason why a row cannot be faster; None where it is on no list."""
    return floors.get("/".join(key), floors.get("/".join(key[:2])))


def best_peer(libraries):
    """The fastest peer and its time; None where there is none."""
    peers = [(time, name) for name, time in libraries.items() if is_peer(name)]
    if not peers:
        return None
    time, name = min(peers)
    return name, time


def ratio(libraries):
    """The fastest peer's time over ours; None where one of the two is missing."""
    peer = best_peer(libraries)
    if peer is None or OURS not in libraries:
        return None
    return peer[1] / libraries[OURS]


def ratios(rows):
    """The ratio of each row that has one."""
    found = {key: ratio(libraries) for key, libraries in rows.items()}
    return {key: value for key, value in found.items() if value is not None}


def geometric_mean(values):
    values = list(values)
    return math.exp(statistics.fmean(math.log(value) for value in values)) if values else None


def median(values):
    values = list(values)
    return statistics.median(values) if values else None


def summarise(values):
    """What is said of a set of ratios."""
    values = list(values)
    return {"rows": len(values), "mean": geometric_mean(values), "median": median(values)}


def ratios_by_library(rows):
    """For each library, the ratios of the rows that it shares with ours: its fastest form's time over ours."""
    found = {}
    for key, libraries in rows.items():
        if OURS not in libraries:
            continue
        times = {}
        for name, time in libraries.items():
            if is_peer(name):
                library = library_of(name)
                times[library] = min(time, times.get(library, math.inf))
        for library, time in times.items():
            found.setdefault(library, {})[key] = time / libraries[OURS]
    return found


def gains(rows, other):
    """How much faster rows are in another build: ours by row, and every peer's."""
    ours, peers = {}, {}
    for key, libraries in rows.items():
        for name, time in libraries.items():
            if name not in other.get(key, {}):
                continue
            if name == OURS:
                ours[key] = time / other[key][name]
            elif is_peer(name):
                peers[(*key, name)] = time / other[key][name]
    return ours, peers


def packet_ratios(rows):
    """How the ray packets compare with hand-written intrinsics: (row, our time over theirs)."""
    return [(key, libraries[OURS] / libraries[HAND_WRITTEN]) for key, libraries in sorted(rows.items())
            if key[0] == "ray" and re.match("(four|eight) rays", key[1]) and OURS in libraries
            and HAND_WRITTEN in libraries]


def incomplete(rows):
    """What is wrong with the set of rows: no peer, or a peer without us."""
    problems = []
    for key, libraries in sorted(rows.items()):
        if OURS not in libraries:
            problems.append(f"{'/'.join(key)} has no row of {OURS}")
        elif best_peer(libraries) is None and not any(library != OURS for library in libraries):
            problems.append(f"{'/'.join(key)} has no peer")
    return problems


def topic_order(key):
    """Topics in the order of TOPICS, new ones behind; rows by name."""
    topic = key[0]
    return (TOPICS.index(topic) if topic in TOPICS else len(TOPICS), *key)


def all_keys(results):
    """Every row of any build, in the order of the report. `results` are pairs of a build's title and its rows."""
    return sorted({key for _, rows in results for key in rows}, key=topic_order)


def topics_of(keys):
    return list(dict.fromkeys(key[0] for key in keys))


def only(rows, wanted):
    """The rows whose key is wanted."""
    return {key: libraries for key, libraries in rows.items() if wanted(key)}
