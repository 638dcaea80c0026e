#!/usr/bin/env python3
"""Writes the report on speed: Markdown pages and bar charts, from what tools/bench has measured.

Usage: report.py RESULTS OUTPUT [NOTES]

RESULTS is a folder with one Google Benchmark JSON file for each build (BUILDS below), callgrind's counts of instructions
(BUILD.callgrind) where they were made, and costs.json, raytracer.json and machine.json where they were measured. OUTPUT is the folder that the pages go to. NOTES is the page with what is to be
said about single rows; a row that is slower than a peer is looked up there.

A row is named `topic/operation/precision/library`. Its time is that of one item: the median over the repetitions.
The ratio of a row is the fastest peer's time over ours.
"""

import json
import math
import os
import re
import statistics
import sys

OURS = "BvBaseUtils"
HAND_WRITTEN = "hand-written"
LIMITS = ("memcpy", "reading")  # what memory allows: no library, so no peer
PACKET_LIMIT = 1.15  # how much slower than hand-written intrinsics a packet may be
TOPICS = ["vector", "matrix", "transform", "scalar", "box", "sphere", "frustum", "ray", "noise", "generator", "hash",
          "string", "batch"]
BUILDS = [("gcc", "GCC -O2"), ("clang", "Clang -O2"), ("gcc-v3", "GCC -O3 -march=x86-64-v3")]
SHOWN = 15  # of the rows below 1, on the terminal
UNMEASURED = "–"
LEVEL = 0.95  # ratios from here to 1 may be the machine's mood: the same code, measured twice, differs by as much
FORM_MARKS = "' ,()"  # between the library's name and the form of its that a row shows


class ReportError(Exception):
    """Something that the user must put right, in one line."""


def is_ours(library):
    """Whether a row shows this library: as it is meant to be used, or in another of its own forms."""
    return library.startswith(OURS)


def is_peer(library):
    return not is_ours(library) and library not in LIMITS


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


def best_peer(libraries):
    """The fastest peer and its time; None where there is none."""
    peers = [(time, library) for library, time in libraries.items() if is_peer(library)]
    if not peers:
        return None
    time, library = min(peers)
    return library, time


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


def summarise(rows):
    """Number of rows, median ratio, and the rows below 1, the slowest first."""
    values = ratios(rows)
    below = sorted((key for key, value in values.items() if value < 1), key=values.get)
    return {"rows": len(values), "median": statistics.median(values.values()) if values else None, "below": below}


def incomplete(rows):
    """What is wrong with the set of rows: no peer, or a peer without us."""
    problems = []
    for key, libraries in sorted(rows.items()):
        if OURS not in libraries:
            problems.append(f"{'/'.join(key)} has no row of {OURS}")
        elif best_peer(libraries) is None and not any(library != OURS for library in libraries):
            problems.append(f"{'/'.join(key)} has no peer")
    return problems


def packet_checks(rows):
    """How the ray packets compare with hand-written intrinsics: (row, our time over theirs)."""
    return [(key, libraries[OURS] / libraries[HAND_WRITTEN]) for key, libraries in sorted(rows.items())
            if key[0] == "ray" and re.match("(four|eight) rays", key[1]) and OURS in libraries
            and HAND_WRITTEN in libraries]


def topic_order(key):
    """Topics in the order of TOPICS, new ones behind; rows by name."""
    topic = key[0]
    return (TOPICS.index(topic) if topic in TOPICS else len(TOPICS), *key)


def number(value):
    """Three significant digits, without an exponent."""
    if value is None:
        return UNMEASURED
    if value >= 100:
        return f"{value:,.0f}"
    return f"{value:.1f}" if value >= 10 else f"{value:.2f}"


def times(value):
    """A ratio; one just below 1 never reads as 1."""
    if value is None:
        return UNMEASURED
    text = f"{value:.1f}" if value >= 10 else f"{value:.2f}"
    return f"{math.floor(value * 1000) / 1000:.3f}" if value < 1 and text == "1.00" else text


def marked(value):
    """A ratio; those below 1 stand out."""
    return f"**{times(value)}**" if value is not None and value < 1 else times(value)


def table(header, lines):
    """A Markdown table whose first column is text and whose others are numbers."""
    output = ["| " + " | ".join(header) + " |", "|---|" + "---:|" * (len(header) - 1)]
    output += ["| " + " | ".join(cell.replace("|", "\\|") for cell in line) + " |" for line in lines]
    return "\n".join(output) + "\n"


def explained(key, notes):
    """Whether the notes name a row: `topic/operation` or `topic/operation/precision`, in backquotes."""
    return f"`{key[0]}/{key[1]}`" in notes or f"`{'/'.join(key)}`" in notes


def all_keys(results):
    """Every row of any build, in the order of the report."""
    return sorted({key for _, rows in results for key in rows}, key=topic_order)


def summary_section(results, notes, counts):
    lines = []
    for title, rows in results:
        facts = summarise(rows)
        clearly = sum(1 for key in facts["below"] if ratio(rows[key]) < LEVEL)
        lines.append([title, str(facts["rows"]), times(facts["median"]), str(len(facts["below"])), str(clearly)])
    text = table(["build", "rows", "median ratio", "rows below 1.0", f"rows below {LEVEL}"], lines) + "\n"

    slow = [(key, title, ratios(rows)[key], rows[key]) for title, rows in results for key in summarise(rows)["below"]]
    slow.sort(key=lambda entry: (topic_order(entry[0]), entry[1]))
    if slow:
        text += "Rows on which a peer was faster, with the instructions of an item:\n\n"
        lines = []
        for key, title, value, libraries in slow:
            peer, time = best_peer(libraries)
            counted = counts.get(title, {}).get(key, {})
            lines.append(["/".join(key), title, number(libraries[OURS]), number(counted.get(OURS)), peer, number(time),
                          number(counted.get(peer)), marked(value), "yes" if explained(key, notes) else "no"])
        text += table(["row", "build", "ours, ns", "instructions", "peer", "peer's, ns", "instructions", "ratio",
                       "in the notes"], lines) + "\n"
    else:
        text += "No row is below 1.0.\n\n"
    return text


def packet_section(results):
    lines = [["/".join(key), title, number(rows[key][OURS]), number(rows[key][HAND_WRITTEN]), f"{value:.2f}",
              "yes" if value <= PACKET_LIMIT else "**no**"]
             for title, rows in results for key, value in packet_checks(rows)]
    if not lines:
        return ""
    return ("## Packets against hand-written intrinsics\n\n"
            f"Our time may be {PACKET_LIMIT} times that of a kernel of the same semantics, written by hand for it.\n\n"
            + table(["row", "build", "ours, ns", "hand-written, ns", "ours over hand-written",
                     f"within {PACKET_LIMIT}"], sorted(lines)) + "\n")


def topic_sections(results):
    text = ""
    keys = all_keys(results)
    for topic in dict.fromkeys(key[0] for key in keys if key[0] != "batch"):
        header = [topic]
        for title, _ in results:
            header += [f"{title}: ours", "best peer", "ratio"]
        lines = []
        for key in keys:
            if key[0] != topic:
                continue
            line = [f"{key[1]}, {key[2]}"]
            for _, rows in results:
                libraries = rows.get(key, {})
                peer = best_peer(libraries)
                line += [number(libraries.get(OURS)), f"{number(peer[1])} {peer[0]}" if peer else UNMEASURED,
                         marked(ratio(libraries))]
            lines.append(line)
        text += f"### {topic.capitalize()}\n\n" + table(header, lines) + "\n"
    return text


def batch_section(results):
    keys = [key for key in all_keys(results) if key[0] == "batch"]
    if not keys:
        return ""
    text = ("## Batch\n\nThe functions of `bv/maths/Batch.h` against the same work done item by item: with this "
            "library's single forms in a loop, and with the fastest peer's. `memcpy` and `reading` say what memory allows for "
            "the same bytes; they are no peers. The functions choose their instructions when called, whatever the program "
            "was compiled for.\n\n")
    for title, rows in results:
        present = {library for key in keys for library in rows.get(key, {})}
        forms = sorted(library for library in present if is_ours(library) and library != OURS)
        limits = [library for library in LIMITS if library in present]
        header = [title, "batch, ns"]
        for form in forms:
            header += [f"{form[len(OURS):].strip(FORM_MARKS)}, ns", "times faster"]
        header += ["best peer, ns", "ratio"]
        for limit in limits:
            header += [f"{limit}, ns", f"{limit} over batch"]
        lines = []
        for key in keys:
            libraries = rows.get(key, {})

            def against(library, libraries=libraries):
                both = OURS in libraries and library in libraries
                return [number(libraries.get(library)),
                        times(libraries[library] / libraries[OURS] if both else None)]

            line = [f"{key[1]}, {key[2]}", number(libraries.get(OURS))]
            for form in forms:
                line += against(form)
            peer = best_peer(libraries)
            line += [f"{number(peer[1])} {peer[0]}" if peer else UNMEASURED, marked(ratio(libraries))]
            for limit in limits:
                line += against(limit)
            lines.append(line)
        text += table(header, lines) + "\n"
    return text


def cost_section(costs):
    limit = costs["size_limit"]
    load = costs["load"]
    text = "## What it costs to build and to load\n\n"
    text += table(["", ""], [
        ["clean build of the library, both cores" if costs["build"]["jobs"] == 2 else "clean build of the library",
         f"{costs['build']['wall']:.1f} s"],
        ["the same, processor time", f"{costs['build']['cpu']:.1f} s"],
        ["shared library, stripped", f"{costs['size']:,} bytes of at most {limit:,}"],
        ["start and end of an empty program", f"{load['plain']:.0f} µs"],
        ["the same, linked with the library", f"{load['linked']:.0f} µs"],
        ["`dlopen` of the library", f"{load['dlopen']:.0f} µs"],
    ]) + "\n"
    text += ("Times are medians: the build of one run, the starts of "
             f"{load['runs']}, the headers of {costs['headers']['runs']}.\n\n")
    text += ("What including a single header adds to a compiler's work: processor time of a file that holds nothing else, "
             "at -O2, and as a multiple of a file that includes `<cmath>`; lines that the preprocessor leaves.\n\n")
    compilers = costs["headers"]["compilers"]
    header = ["header"]
    for compiler in compilers:
        header += [f"{compiler}, ms", "× `<cmath>`", "lines"]
    lines = []
    for name in costs["headers"]["names"]:
        line = [f"`{name}`"]
        for compiler in compilers:
            measured = costs["headers"]["measured"][compiler]
            line += [f"{measured[name]['ms']:.0f}", f"{measured[name]['ms'] / measured['<cmath>']['ms']:.2f}",
                     f"{measured[name]['lines']:,}"]
        lines.append(line)
    return text + table(header, lines) + "\n"


def tracer_section(tracer):
    modes = tracer["modes"]
    text = "## The ray tracer\n\n" + tracer["what"] + "\n\n"
    return text + table(["build"] + modes, [[title] + [f"{tracer['rates'][build][mode] / 1e6:.2f}" for mode in modes]
                                            for build, title in BUILDS if build in tracer["rates"]]) + "\n"


def machine_section(machine):
    text = "## The machine\n\n"
    text += "".join(f"- {name}: {value}\n" for name, value in machine["facts"])
    return text + "- packages: " + ", ".join(machine["packages"]) + "\n\n"


HOW_TO_READ = """\
Every time is that of one item (a product, a point, a box, a text), in nanoseconds of processor time: the median of the
repetitions, which Google Benchmark interleaves at random. Both sides work on the same numbers, in arrays that fit the
second-level cache (but for those rows that say otherwise), and every result is written to memory or consumed. The ratio
is the fastest peer's time over ours: above 1 this library is faster. Where no library has an operation, the peer is the
plain code that a user would write (`hand-written`). [Every peer's times](details.md) stand on a page of their own.

Instructions are counted by callgrind in the code that is timed. It runs it as on a processor with AVX2 and without
AVX-512, and leaves out a row with an instruction that it does not know.

A program is built three times, and its peers with it: what is inline is compiled with the program's flags, what is not
comes from the installed library. This library's code is compiled without contraction to fused operations, since its
results are promised to the bit; the peers' is compiled as their users compile it.

[Notes](notes.md) say what holds a row back, and what the processor's own limits are. The results are compared with a
[record](../../tests/digest/record.txt) of their hashes: it guards against a change of results on the way to speed, and
proves nothing about their being right.
"""


def readme(results, notes, extras, charts, counts):
    text = "# How fast it is\n\nMade by `tools/bench`; not to be edited by hand.\n\n"
    text += summary_section(results, notes, counts)
    for (title, _), chart in zip(results, charts):
        text += f"![Ratios, {title}]({chart})" if chart == charts[0] else f"[The same chart for {title}]({chart})"
        text += "\n\n"
    text += "## How to read it\n\n" + HOW_TO_READ + "\n"
    if "machine" in extras:
        text += machine_section(extras["machine"])
    text += "## Rows\n\n" + topic_sections(results)
    text += packet_section(results)
    text += batch_section(results)
    if "raytracer" in extras:
        text += tracer_section(extras["raytracer"])
    if "costs" in extras:
        text += cost_section(extras["costs"])
    return text.rstrip("\n") + "\n"


def details(results):
    text = ("# Every time\n\nMade by `tools/bench`; not to be edited by hand. Nanoseconds for one item, the fastest "
            "library of the first build first.\n")
    keys = all_keys(results)
    for topic in dict.fromkeys(key[0] for key in keys):
        text += f"\n## {topic.capitalize()}\n\n"
        lines = []
        for key in keys:
            if key[0] != topic:
                continue
            libraries = {library for _, rows in results for library in rows.get(key, {})}
            first = results[0][1].get(key, {})
            for library in sorted(libraries, key=lambda name: (first.get(name, float("inf")), name)):
                lines.append([f"{key[1]}, {key[2]}", library] +
                             [number(rows.get(key, {}).get(library)) for _, rows in results])
        text += table(["row", "library"] + [title for title, _ in results], lines)
    return text


def draw(title, rows, path):
    """A bar for each row, on a logarithmic scale, sorted within its topic. The same numbers draw the same bytes."""
    import matplotlib
    matplotlib.use("Agg")
    matplotlib.rcParams.update({"svg.hashsalt": "bench", "svg.fonttype": "none", "font.size": 7,
                                "font.family": "sans-serif"})
    from matplotlib import pyplot

    values = ratios(rows)
    keys = sorted(values, key=lambda key: (topic_order(key)[0], key[0], -values[key], key))
    places, labels, groups = [], [], []
    place = 0.0
    for i, key in enumerate(keys):
        if i == 0 or key[0] != keys[i - 1][0]:
            place += 1.6
            groups.append((place - 0.9, key[0]))
        places.append(place)
        labels.append(f"{key[1]}, {key[2]}")
        place += 1

    figure, axes = pyplot.subplots(figsize=(8, 1 + 0.155 * place))
    colours = ["#2f6f9f" if values[key] >= 1 else "#d1601f" for key in keys]
    axes.barh(places, [values[key] - 1 for key in keys], left=1, height=0.72, color=colours)
    axes.set_xscale("log")
    low = min([0.5] + [value for value in values.values()])
    high = max([2.0] + [value for value in values.values()])
    axes.set_xlim(low * 0.8, high * 3)
    ticks = (0.1, 0.2, 0.5, 1, 1.5, 2, 5, 10, 20, 50, 100, 200, 500, 1000)
    ticks = [tick for tick in ticks if low * 0.8 <= tick <= high]
    axes.set_xticks(ticks, [f"{tick:g}" for tick in ticks])
    axes.set_xticks([], minor=True)
    axes.xaxis.set_ticks_position("both")
    axes.tick_params(axis="x", labeltop=True)
    axes.axvline(1, color="black", linewidth=0.8)
    for key, at in zip(keys, places):
        axes.text(max(values[key], 1) * 1.03, at, f"{times(values[key])}  {best_peer(rows[key])[0]}",
                  va="center", fontsize=6)
    for at, topic in groups:
        axes.text(low * 0.8, at, f" {topic}", va="center", fontweight="bold")
    axes.set_yticks(places, labels)
    axes.tick_params(axis="y", length=0)
    axes.set_ylim(place, -0.2)
    axes.grid(axis="x", linewidth=0.3)
    axes.set_axisbelow(True)
    for side in ("left", "right"):
        axes.spines[side].set_visible(False)
    axes.set_title(f"{title}: the fastest peer's time over ours (above 1 we are faster), and who that peer is\n")
    figure.tight_layout()
    figure.savefig(path, metadata={"Date": None, "Creator": None})
    pyplot.close(figure)


def load(path):
    try:
        with open(path, encoding="utf-8") as file:
            return json.load(file)
    except json.JSONDecodeError as error:
        raise ReportError(f"{path}: not JSON: {error}") from error


def main(source, output, notes_path=None):
    results, names, counts = [], [], {}
    for build, title in BUILDS:
        path = os.path.join(source, build + ".json")
        if os.path.exists(path):
            results.append((title, parse_results(load(path), path)))
            names.append(build)
        path = os.path.join(source, build + ".callgrind")
        if os.path.exists(path):
            with open(path, encoding="utf-8", errors="replace") as file:
                counts[title] = parse_counts(file, path)
    if not results:
        raise ReportError(f"{source}: no results of any build")
    extras = {name: load(os.path.join(source, name + ".json")) for name in ("costs", "raytracer", "machine")
              if os.path.exists(os.path.join(source, name + ".json"))}
    notes = ""
    if notes_path and os.path.exists(notes_path):
        with open(notes_path, encoding="utf-8") as file:
            notes = file.read()

    os.makedirs(output, exist_ok=True)
    charts = [f"ratios-{name}.svg" for name in names]
    for (title, rows), chart in zip(results, charts):
        draw(title, rows, os.path.join(output, chart))
    for name, text in (("README.md", readme(results, notes, extras, charts, counts)), ("details.md", details(results))):
        with open(os.path.join(output, name), "w", encoding="utf-8") as file:
            file.write(text)

    for title, rows in results:
        facts = summarise(rows)
        print(f"{title}: {facts['rows']} rows, median ratio {times(facts['median'])}, "
              f"{len(facts['below'])} below 1.0")
        for key in facts["below"][:SHOWN]:
            peer, time = best_peer(rows[key])
            print(f"  {times(ratios(rows)[key])}  {'/'.join(key)}: {number(rows[key][OURS])} ns, "
                  f"{peer} {number(time)} ns")
        if len(facts["below"]) > SHOWN:
            print(f"  and {len(facts['below']) - SHOWN} more, all in the report")
        for key, value in packet_checks(rows):
            if value > PACKET_LIMIT:
                print(f"  {'/'.join(key)}: {value:.2f} times the hand-written kernel, more than {PACKET_LIMIT}")
        for problem in incomplete(rows):
            print(f"  {problem}")


if __name__ == "__main__":
    if len(sys.argv) not in (3, 4):
        sys.exit(__doc__)
    try:
        main(*sys.argv[1:])
    except (ReportError, OSError, KeyError) as problem:
        sys.exit(f"report: {problem!r}" if isinstance(problem, KeyError) else f"report: {problem}")
