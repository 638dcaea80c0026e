#!/usr/bin/env python3
"""Writes the report on speed: Markdown pages and bar charts, from what tools/bench has measured.

Usage: report.py RESULTS OUTPUT [FLOORS [NOTES]]

RESULTS is a folder with one Google Benchmark JSON file for each build, callgrind's counts of instructions
(BUILD.callgrind) and what other programs used meanwhile (BUILD.quiet) where they were recorded, and costs.json,
raytracer.json and machine.json where they were measured. OUTPUT is the folder that the pages go to. FLOORS is a JSON
list of the rows that cannot be faster, each with the reason. NOTES is a page for those who work on the library: a row
below LEVEL that neither of the two names is pointed out on the terminal.
"""

import os
import sys

import quiet
from charts import draw
from formats import UNMEASURED, marked, number, table, times, warned
from results import (BUILDS, CONTRACTION, HAND_WRITTEN, LIMITS, OURS, TOPICS, V3, ReportError, all_keys, best_peer,
                     floor_of, gains, geometric_mean, incomplete, is_maths, is_ours, load, only, packet_ratios,
                     parse_counts, parse_floors, parse_results, ratio, ratios, ratios_by_library, summarise, topics_of,
                     topic_order)

SHOWN = 15  # of the rows below 1, on the terminal
LEVEL = 0.95  # ratios from here to 1 may be the machine's mood: the same code, measured twice, differs by as much
FORM_MARKS = "' ,()"  # between the library's name and the form of its that a row shows
HEAD = "Made by `tools/bench`; not to be edited by hand.\n\n"

HOW_TO_READ = """\
Every time is that of one item (a product, a point, a box), in nanoseconds of processor time: the median of the
repetitions, which Google Benchmark interleaves at random. All libraries work on the same numbers, in arrays that fit
the second-level cache where a row does not say otherwise, and every result is written to memory or consumed. A ratio is
the other library's time over ours: **above 1, this library is faster**; 2 means half the time. Code that is the same,
instruction for instruction, differs by up to five per cent between two rows.

Means are geometric: twice as fast here and half as fast there is level. The median stands beside them, which no single
row can move. Where no library has an operation, the peer is the plain code that a user would write (`hand-written`).

Every program is built with each of the compilers and flags below, and its peers with it. What is inline is compiled
with the program's flags, what is not comes from the installed library. This library's results are promised to the bit,
so its code is compiled without fused operations; its peers' is compiled as their users compile it. The last build lets
the compiler fuse this library's inline code, too.

"""


def library_section(results):
    """How each library compares with ours, in each build; those that share most rows first."""
    by_build = [(title, ratios_by_library(rows)) for title, rows in results]
    shared = {}
    for _, libraries in by_build:
        for library, values in libraries.items():
            shared[library] = max(len(values), shared.get(library, 0))
    lines = []
    for library in sorted(shared, key=lambda name: (-shared[name], name)):
        for title, libraries in by_build:
            values = libraries.get(library, {}).values()
            facts = summarise(values)
            if facts["rows"]:
                lines.append([library, title, str(facts["rows"]), marked(facts["mean"]), marked(facts["median"]),
                              str(sum(1 for value in values if value < 1))])
    if not lines:
        return ""
    return ("## Against each library\n\nThe rows of mathematics that a library shares with this one, none left out: "
            "its time over ours, and on how many rows it is faster.\n\n" +
            table(["library", "build", "shared rows", "geometric mean", "median", "rows it wins"], lines) + "\n")


def topic_lines(results, keys, label):
    """A line of the table by topic: the rows, and each build's mean and median."""
    values = [[value for key, value in ratios(rows).items() if key in keys] for _, rows in results]
    count = max(len(found) for found in values)
    if not count:
        return []
    line = [label, str(count)]
    for found in values:
        facts = summarise(found)
        line += [marked(facts["mean"]), marked(facts["median"])]
    return [line]


def topic_table(results, floors):
    """The fastest peer of each row against ours, by topic; rows that cannot be faster are counted apart."""
    keys = all_keys(results)
    at_floor = {key for key in keys if floor_of(key, floors)}
    free = [key for key in keys if key not in at_floor]
    lines = []
    for topic in topics_of(free):
        lines += topic_lines(results, {key for key in free if key[0] == topic}, topic)
    lines += topic_lines(results, set(free), "**all of these**")
    if at_floor:
        lines += topic_lines(results, at_floor, "rows at their floor")
        lines += topic_lines(results, set(keys), "both together")
    header = ["topic", "rows"]
    for title, _ in results:
        header += [f"{title}: geometric mean", "median"]
    return table(header, lines) if lines else ""


def best_section(results, floors):
    lines = topic_table(results, floors)
    if not lines:
        return ""
    return ("## Against the best of all, row by row\n\nThe fastest of up to ten peers is another one on each row, and "
            "the luckiest of as many measurements. Rows [at their floor](details.md#rows-at-their-floor) are counted "
            "apart.\n\n"
            + lines + "\n")


def contraction_section(results):
    """What the promise of equal bits costs: ours with and without, and the peers, whose code does not change."""
    by_title = dict(results)
    if V3[1] not in by_title or CONTRACTION[1] not in by_title:
        return ""
    ours, peers = gains(by_title[V3[1]], by_title[CONTRACTION[1]])
    lines = []
    for topic in topics_of(sorted(ours, key=topic_order)) + [None]:
        mine = [value for key, value in ours.items() if topic in (None, key[0])]
        theirs = [value for key, value in peers.items() if topic in (None, key[0])]
        lines.append([topic or "**all of these**", str(len(mine)), times(geometric_mean(mine)),
                      times(geometric_mean(theirs))])
    if len(lines) == 1:
        return ""
    return ("## What equal bits cost\n\nThis library's time in the build for x86-64-v3 over its time where the "
            "compiler may fuse products and sums, which gives up the promise of equal bits: 1.04 means that fusing "
            "saves 4 %. The peers' code is the same in both builds: how far their mean is from 1 says what the "
            "measurement is worth. What is not inline is the same in both, too.\n\n" +
            table(["topic", "rows", "ours", "peers, the same code"], lines) + "\n")


def floor_section(results, floors, counts):
    lines = []
    for key in all_keys(results):
        reason = floor_of(key, floors)
        for title, rows in results if reason else []:
            libraries = rows.get(key, {})
            peer = best_peer(libraries)
            if peer and OURS in libraries:
                counted = counts.get(title, {}).get(key, {})
                lines.append(["/".join(key), title, number(counted.get(OURS)), number(counted.get(peer[0])), peer[0],
                              marked(ratio(libraries)), reason])
    if not lines:
        return ""
    return ("## Rows at their floor\n\nWhat these rows must do takes the time that it takes. The instructions of an "
            "item, ours and the fastest peer's, and what they are spent on:\n\n" +
            table(["row", "build", "our instructions", "the peer's", "peer", "ratio", "reason"], lines) + "\n")


def chart_section(charts):
    if not charts:
        return ""
    text = "## Charts\n\n"
    for index, (title, chart) in enumerate(charts):
        text += f"![Ratios, {title}]({chart})\n\n" if index == 0 else f"[The same chart for {title}]({chart})\n\n"
    return text


def below_section(results, counts):
    """The rows on which a peer is faster, the instructions of an item beside the times."""
    lines = []
    for title, rows in results:
        for key, value in ratios(rows).items():
            if value < 1:
                peer, time = best_peer(rows[key])
                counted = counts.get(title, {}).get(key, {})
                lines.append((topic_order(key), ["/".join(key), title, number(rows[key][OURS]),
                                                 number(counted.get(OURS)), peer, number(time),
                                                 number(counted.get(peer)), marked(value)]))
    if not lines:
        return ""
    header = ["row", "build", "ours, ns", "instructions", "peer", "peer's, ns", "instructions", "ratio"]
    return ("## Rows on which a peer is faster\n\nInstructions are counted by callgrind in the code that is timed. It "
            "runs it as on a processor with AVX2 and without AVX-512, and leaves out a row with an instruction that it "
            "does not know.\n\n" + table(header, [line for _, line in sorted(lines)]) + "\n")


def rows_section(results):
    """Every row of the topics: our time, the fastest peer's, and the ratio."""
    text = "## All rows\n\n"
    keys = [key for key in all_keys(results) if key[0] != "batch"]
    for topic in topics_of(keys):
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
    return text if keys else ""


def packet_section(results):
    lines = sorted(["/".join(key), title, number(rows[key][OURS]), number(rows[key][HAND_WRITTEN]), f"{value:.2f}"]
                   for title, rows in results for key, value in packet_ratios(rows))
    if not lines:
        return ""
    return ("## Packets against hand-written intrinsics\n\nOur time over that of a kernel of the same semantics, "
            "written by hand for the row.\n\n" +
            table(["row", "build", "ours, ns", "hand-written, ns", "ours over hand-written"], lines) + "\n")


def batch_section(results):
    keys = [key for key in all_keys(results) if key[0] == "batch"]
    if not keys:
        return ""
    text = ("## Batch\n\nThe functions of `bv/maths/Batch.h` against the same work done item by item: with this "
            "library's single forms in a loop, and with the fastest peer's. `memcpy` (copying) and `memchr` (reading) "
            "say what memory allows for the same bytes; they are no peers. The functions choose their instructions "
            "when called, whatever the program was compiled for.\n\n")
    for title, rows in results:
        present = {name for key in keys for name in rows.get(key, {})}
        forms = sorted(name for name in present if is_ours(name) and name != OURS)
        limits = [name for name in LIMITS if name in present]
        header = [title, "batch, ns"]
        for form in forms:
            header += [f"{form[len(OURS):].strip(FORM_MARKS)}, ns", "times faster"]
        header += ["best peer, ns", "ratio"]
        for limit in limits:
            header += [f"{limit}, ns", f"{limit} over batch"]
        lines = []
        for key in keys:
            libraries = rows.get(key, {})

            def against(name, libraries=libraries):
                both = OURS in libraries and name in libraries
                return [number(libraries.get(name)), times(libraries[name] / libraries[OURS] if both else None)]

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


def times_section(results):
    """Every library's time, the fastest of the first build first."""
    text = "## Every time\n\nNanoseconds for one item, the fastest library of the first build first.\n"
    keys = all_keys(results)
    for topic in topics_of(keys):
        text += f"\n### Every time: {topic}\n\n"
        lines = []
        for key in keys:
            if key[0] != topic:
                continue
            names = {name for _, rows in results for name in rows.get(key, {})}
            first = results[0][1].get(key, {})
            for name in sorted(names, key=lambda name: (first.get(name, float("inf")), name)):
                lines.append([f"{key[1]}, {key[2]}", name] +
                             [number(rows.get(key, {}).get(name)) for _, rows in results])
        text += table(["row", "library"] + [title for title, _ in results], lines)
    return text + "\n"


def cost_section(costs):
    load_times = costs["load"]
    text = "## What it costs to build and to load\n\n"
    text += table(["", ""], [
        ["clean build of the library, both cores" if costs["build"]["jobs"] == 2 else "clean build of the library",
         f"{costs['build']['wall']:.1f} s"],
        ["the same, processor time", f"{costs['build']['cpu']:.1f} s"],
        ["shared library, stripped", f"{costs['size']:,} bytes"],
        ["start and end of an empty program", f"{load_times['plain']:.0f} µs"],
        ["the same, linked with the library", f"{load_times['linked']:.0f} µs"],
        ["`dlopen` of the library", f"{load_times['dlopen']:.0f} µs"],
    ]) + "\n"
    text += ("Times are medians: the build of one run, the starts of "
             f"{load_times['runs']}, the headers of {costs['headers']['runs']}.\n\n")
    text += ("What including a single header adds to a compiler's work: processor time of a file that holds nothing "
             "else, at -O2, and as a multiple of a file that includes `<cmath>`; lines that the preprocessor leaves.\n\n")
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


def machine_section(machine, quietness):
    text = "## The machine\n\n"
    if machine:
        text += "".join(f"- {name}: {value}\n" for name, value in machine["facts"])
        text += "- packages: " + ", ".join(machine["packages"]) + "\n\n"
    lines = [[title, UNMEASURED if used is None else f"{used:.2f}", UNMEASURED if between is None else f"{between:.1%}"]
             for title, used, between in quietness]
    return text + ("Figures count only where the machine is quiet. Other programs' use is the busy time of all "
                   "processors less the benchmark's own, in processors; the spread is the median over the rows of the "
                   f"coefficient of variation between repetitions. Beyond {quiet.OTHERS_LIMIT} of a processor or "
                   f"{quiet.SPREAD_LIMIT:.0%}, a warning stands in front of every table.\n\n" +
                   table(["build", "used by other programs", "spread"], lines) + "\n")


def readme(results, floors, extras, charts, quietness, has_text):
    text = "# How fast it is\n\n" + HEAD + "## How to read it\n\n" + HOW_TO_READ
    text += "[Every row and every time](details.md) stand on a page of their own"
    text += ", [text and hashes](text.md) on another; they enter no mean here.\n" if has_text else ".\n"
    text += ("[Notes](notes.md) say what the differences are made of. The results of every build that promises equal "
             "bits are compared with a [record](../../tests/digest/record.txt) of their hashes before anything is "
             "measured, and the libraries' results on the newer rows with each other.\n\n")
    text += library_section(results)
    text += best_section(results, floors)
    text += contraction_section(results)
    text += chart_section(charts)
    if "raytracer" in extras:
        text += tracer_section(extras["raytracer"])
    if "costs" in extras:
        text += cost_section(extras["costs"])
    return text + machine_section(extras.get("machine"), quietness)


def details(results, floors, counts):
    return ("# Every row and every time\n\n" + HEAD + "[How to read it](README.md#how-to-read-it)\n\n" +
            below_section(results, counts) + floor_section(results, floors, counts) + rows_section(results) +
            packet_section(results) + batch_section(results) + times_section(results))


def text_page(results, counts):
    return ("# Text and hashes\n\n" + HEAD + "[How to read it](README.md#how-to-read-it)\n\n"
            "## Against the best of all, row by row\n\n" + topic_table(results, {}) + "\n" +
            below_section(results, counts) + rows_section(results) + times_section(results))


def say(results, floors, notes):
    """On the terminal: the builds in one line each, their slowest rows, and what somebody should look at."""
    for title, rows in results:
        maths = {key: value for key, value in ratios(rows).items() if is_maths(key)}
        facts = summarise(maths.values())
        below = sorted((key for key, value in maths.items() if value < 1), key=maths.get)
        print(f"{title}: {facts['rows']} rows of mathematics, geometric mean {times(facts['mean'])}, "
              f"median {times(facts['median'])}, {len(below)} below 1.0")
        for key in below[:SHOWN]:
            peer, time = best_peer(rows[key])
            print(f"  {times(maths[key])}  {'/'.join(key)}: {number(rows[key][OURS])} ns, {peer} {number(time)} ns")
        if len(below) > SHOWN:
            print(f"  and {len(below) - SHOWN} more, all in the report")
        for problem in incomplete(rows):
            print(f"  {problem}")
    slow = {key for title, rows in results if title != CONTRACTION[1]
            for key, value in ratios(rows).items() if value < LEVEL}
    for key in sorted(slow, key=topic_order):
        if not floor_of(key, floors) and f"`{key[0]}/{key[1]}`" not in notes and f"`{'/'.join(key)}`" not in notes:
            print(f"  {'/'.join(key)} is below {LEVEL}, and neither among the floors nor in the notes")
    for row in unknown_floors(all_keys(results), floors):
        print(f"  {row} is among the floors, and no row")


def unknown_floors(keys, floors):
    """The floors that name no row, where every topic was measured."""
    if not set(topics_of(keys)).issuperset(TOPICS):
        return []
    return [row for row in floors if not any(floor_of(key, {row: True}) for key in keys)]


def read_results(source):
    """The builds that were measured, as (build, title, rows), and the instructions by title."""
    builds, counts = [], {}
    for build, title in BUILDS:
        path = os.path.join(source, build + ".json")
        if os.path.exists(path):
            builds.append((build, title, parse_results(load(path), path)))
        path = os.path.join(source, build + ".callgrind")
        if os.path.exists(path):
            with open(path, encoding="utf-8", errors="replace") as file:
                counts[title] = parse_counts(file, path)
    if not builds:
        raise ReportError(f"{source}: no results of any build")
    return builds, counts


def main(source, output, floors_path=None, notes_path=None):
    builds, counts = read_results(source)
    floors = parse_floors(load(floors_path), floors_path) if floors_path else {}
    notes = ""
    if notes_path:
        with open(notes_path, encoding="utf-8") as file:
            notes = file.read()
    extras = {name: load(os.path.join(source, name + ".json")) for name in ("costs", "raytracer", "machine")
              if os.path.exists(os.path.join(source, name + ".json"))}
    quietness = quiet.read(source)
    noisy = [title for title, used, between in quietness if quiet.disturbances(used, between)]
    warning = f"The machine was not quiet: {', '.join(noisy)}." if noisy else ""

    results = [(title, rows) for _, title, rows in builds]
    maths = [(title, only(rows, is_maths)) for title, rows in results]
    texts = [(title, only(rows, lambda key: not is_maths(key))) for title, rows in results if title != CONTRACTION[1]]

    os.makedirs(output, exist_ok=True)
    charts = []
    for build, title, rows in builds:
        if (build, title) != CONTRACTION and ratios(only(rows, is_maths)):
            charts.append((title, f"ratios-{build}.svg"))
            draw(title + (" (the machine was not quiet)" if title in noisy else ""), only(rows, is_maths),
                 os.path.join(output, charts[-1][1]))
    pages = {"README.md": readme(maths, floors, extras, charts, quietness, bool(all_keys(texts)))}
    if all_keys(maths):
        pages["details.md"] = details(maths, floors, counts)
    if all_keys(texts):
        pages["text.md"] = text_page(texts, counts)
    for name, text in pages.items():
        with open(os.path.join(output, name), "w", encoding="utf-8") as file:
            file.write(warned(text, warning).rstrip("\n") + "\n")
    say(results, floors, notes)


if __name__ == "__main__":
    if not 3 <= len(sys.argv) <= 5:
        sys.exit(__doc__)
    try:
        main(*sys.argv[1:])
    except (ReportError, OSError, KeyError) as problem:
        sys.exit(f"report: {problem!r}" if isinstance(problem, KeyError) else f"report: {problem}")
