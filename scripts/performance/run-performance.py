#!/usr/bin/env python3
"""Runs the performance suite and writes its figures as a Markdown table.

Usage: scripts/performance/run-performance.py [--build-dir build/perf] [--repetitions 5]
       [--output docs/performance.md] [--json FILE] [--from-json FILE] [--baseline FILE]
       [--shapes-before FILE]

The suite (target rlx_performance_benchmarks) must be built; configure with
-DRLX_BUILD_BENCHMARKS=ON and a release build type. Every figure is the median of the
repetitions; ratios compare figures of the same run. Generated databases go to a temporary
directory, never into the source tree.
"""

import argparse
import datetime
import json
import os
import platform
import re
import subprocess
import sys
import tempfile

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
EXECUTABLE = os.path.join("benchmarks", "rlx_performance_benchmarks")
MEASURES = ["ReadFileBytes", "BareParse", "CreateAndRelease", "RootProperty", "EditType", "ConvertBack",
            "LoadMemory"]


def run_suite(build_dir, repetitions, min_time, benchmark_filter, json_path):
    executable = os.path.join(build_dir, EXECUTABLE)
    if not os.access(executable, os.X_OK):
        sys.exit(f"{executable} is missing: build the target rlx_performance_benchmarks first")
    home = os.path.join(build_dir, "benchmarks", "home")
    os.makedirs(home, exist_ok=True)
    env = dict(os.environ)
    for name in ("KW_TRACE_LOGGING", "KW_TRACE_DEBUGCLIENT_PID", "KORVA_XMLDB"):
        env.pop(name, None)
    env["USERPROFILE"] = home
    # Repetitions of all benchmarks run in a shuffled order: when the machine's speed drifts over
    # the minutes of a run, the bare parse and the load it is compared with drift alike.
    command = [executable, f"--benchmark_repetitions={repetitions}", "--benchmark_report_aggregates_only=true",
               "--benchmark_enable_random_interleaving=true",
               f"--benchmark_min_time={min_time}", "--benchmark_format=console",
               f"--benchmark_out={json_path}", "--benchmark_out_format=json"]
    if benchmark_filter:
        command.append(f"--benchmark_filter={benchmark_filter}")
    subprocess.run(command, env=env, check=True)


def medians(report):
    """{(measure, dataset): benchmark entry of the median aggregate}"""
    result = {}
    for entry in report["benchmarks"]:
        if entry.get("run_type") == "aggregate" and entry.get("aggregate_name") != "median":
            continue
        name = entry.get("run_name", entry["name"])
        name = re.sub(r"/iterations:\d+$", "", name)
        name = re.sub(r"/repeats:\d+$", "", name)
        measure, _, dataset = name.partition("/")
        if entry.get("error_occurred"):
            continue
        result[(measure, dataset)] = entry
    return result


def microseconds(entry):
    scale = {"ns": 1e-3, "us": 1.0, "ms": 1e3, "s": 1e6}[entry.get("time_unit", "ns")]
    # CPU time of the benchmark's single thread: on a shared machine it moves far less with the
    # other processes' load than the wall-clock time does.
    return entry["cpu_time"] * scale


SHAPE = re.compile(r"wide-(?P<order>[a-z]+)-(?P<siblings>\d+)|deep-(?P<levels>\d+)|many-keys-(?P<keys>\d+)x(?P<count>\d+)")
SHAPE_ORDERS = ["ascending", "descending", "equal", "random"]


def is_shape(dataset):
    return SHAPE.fullmatch(dataset) is not None


def datasets(figures):
    """The generated databases and the samples, without the linking shapes."""
    seen = []
    for measure, dataset in figures:
        if dataset not in seen and not is_shape(dataset):
            seen.append(dataset)

    def order(dataset):
        match = re.fullmatch(r"N=(\d+)", dataset)
        return (0, int(match.group(1)), "") if match else (1, 0, dataset)

    return sorted(seen, key=order)


def fmt(value, digits=3):
    if value is None:
        return "n/a"
    if value >= 1000:
        return f"{value:,.0f}"
    return f"{value:.{digits}g}"


def row_figures(figures, dataset):
    def get(measure):
        return figures.get((measure, dataset))

    read, parse, load, root, edit, convert, memory = (get(m) for m in MEASURES)
    row = {}
    row["properties"] = int(memory["properties"]) if memory and "properties" in memory else None
    row["kib"] = parse["bytes"] / 1024 if parse and "bytes" in parse else None
    row["read"] = microseconds(read) if read else None
    row["parse"] = microseconds(parse) if parse else None
    row["load"] = microseconds(load) if load else None
    row["ratio"] = row["load"] / row["parse"] if row["load"] and row["parse"] else None
    row["root"] = microseconds(root) if root else None
    row["nodes"] = int(root["nodes"]) if root and "nodes" in root else None
    row["per_node"] = row["root"] / row["nodes"] if row["root"] and row["nodes"] else None
    row["edit"] = microseconds(edit) if edit else None
    row["convert"] = microseconds(convert) if convert else None
    props = row["properties"]
    row["peak"] = memory["peak_bytes"] / props if memory and props else None
    row["kept"] = memory["kept_bytes"] / props if memory and props else None
    return row


def machine_description(context):
    cpu = platform.processor() or "unknown"
    try:
        with open("/proc/cpuinfo") as info:
            for line in info:
                if line.startswith("model name"):
                    cpu = line.split(":", 1)[1].strip()
                    break
    except OSError:
        pass
    memory = "unknown"
    try:
        with open("/proc/meminfo") as info:
            for line in info:
                if line.startswith("MemTotal"):
                    memory = f"{int(line.split()[1]) / (1024 * 1024):.1f} GiB"
                    break
    except OSError:
        pass
    os_name = platform.platform()
    try:
        with open("/etc/os-release") as release:
            for line in release:
                if line.startswith("PRETTY_NAME="):
                    os_name = line.split("=", 1)[1].strip().strip('"') + f" (kernel {platform.release()})"
    except OSError:
        pass
    load = context.get("load_avg")
    return [
        f"- Date: {context.get('date', 'unknown')}",
        f"- CPU: {cpu}, {context.get('num_cpus', os.cpu_count())} cores at {context.get('mhz_per_cpu', '?')} MHz",
        f"- Memory: {memory}",
        f"- System: {os_name}",
        f"- Load average when the run started: {', '.join(f'{x:.2f}' for x in load) if load else 'unknown'}",
        "- Build: suite and library RelWithDebInfo (-O2 -g); the Google Benchmark library is the "
        f"distribution's ({context.get('library_build_type', 'unknown')} build), which only does the timing",
    ]


TABLE_HEAD = [
    ("Database", None),
    ("Properties", "properties"),
    ("File KiB", "kib"),
    ("Read bytes µs", "read"),
    ("Bare parse µs", "parse"),
    ("Load + release µs", "load"),
    ("Load / parse", "ratio"),
    ("GetRootProperty µs", "root"),
    ("Linked nodes", "nodes"),
    ("µs per linked node", "per_node"),
    ("Edit + relink µs", "edit"),
    ("ConvertBack µs", "convert"),
    ("Peak bytes per property", "peak"),
    ("Kept bytes per property", "kept"),
]


def markdown_table(figures):
    lines = ["| " + " | ".join(title for title, _ in TABLE_HEAD) + " |",
             "|" + "|".join("---" if key is None else "---:" for _, key in TABLE_HEAD) + "|"]
    for dataset in datasets(figures):
        row = row_figures(figures, dataset)
        cells = [dataset if dataset.startswith("N=") else f"`{dataset}`"]
        for _, key in TABLE_HEAD[1:]:
            value = row[key]
            if key == "ratio" and value is not None:
                cells.append(f"{value:.2f}")
            elif key in ("properties", "nodes") and value is not None:
                cells.append(f"{value:,}")
            else:
                cells.append(fmt(value))
        lines.append("| " + " | ".join(cells) + " |")
    return lines


def comparison_table(figures, earlier, lead, columns):
    """A before/after table: the lead column (title, row key, formatter), then for each
    (title, row key, formatter) of columns the earlier and the current figure side by side."""
    header = ["Database", lead[0]]
    for title, _, _ in columns:
        header += [f"{title} before", "after"]
    lines = ["| " + " | ".join(header) + " |", "|---|" + "---:|" * (len(header) - 1)]
    for dataset in datasets(figures):
        after = row_figures(figures, dataset)
        before = row_figures(earlier, dataset)
        label = dataset if dataset.startswith("N=") else f"`{dataset}`"
        cells = [label, lead[2](after[lead[1]])]
        for _, key, formatter in columns:
            cells += [formatter(before[key]), formatter(after[key])]
        lines.append("| " + " | ".join(cells) + " |")
    return lines


def ratio_text(value):
    return f"{value:.2f}" if value is not None else "n/a"


def count_text(value):
    return f"{value:,}" if value is not None else "n/a"


def linking_comparison(figures, baseline):
    return comparison_table(figures, baseline, ("Linked nodes", "nodes", lambda v: str(v) if v is not None else "n/a"),
                            [("µs per linked node", "per_node", fmt), ("Edit + relink µs", "edit", fmt),
                             ("ConvertBack µs", "convert", fmt), ("Load / parse", "ratio", ratio_text)])


def load_comparison(figures, previous):
    return comparison_table(figures, previous, ("Properties", "properties", count_text),
                            [("Bare parse µs", "parse", fmt), ("Load + release µs", "load", fmt),
                             ("Load / parse", "ratio", ratio_text), ("Kept bytes per property", "kept", fmt)])


def shape_datasets(figures):
    def order(dataset):
        match = SHAPE.fullmatch(dataset)
        if match.group("order"):
            return (0, SHAPE_ORDERS.index(match.group("order")) if match.group("order") in SHAPE_ORDERS else 9,
                    int(match.group("siblings")))
        if match.group("levels"):
            return (1, 0, int(match.group("levels")))
        return (2, int(match.group("keys")), int(match.group("count")))

    return sorted({dataset for _, dataset in figures if is_shape(dataset)}, key=order)


def shape_row(figures, dataset):
    root = figures.get(("RootProperty", dataset))
    row = {"root": microseconds(root) if root else None,
           "nodes": int(root["nodes"]) if root and "nodes" in root else None}
    row["per_node"] = row["root"] / row["nodes"] if row["root"] and row["nodes"] else None
    edit_type = figures.get(("EditType", dataset))
    edit_sibling = figures.get(("EditSibling", dataset))
    row["edit_type"] = microseconds(edit_type) if edit_type else None
    row["edit_sibling"] = microseconds(edit_sibling) if edit_sibling else None
    return row


def wide_growth(figures, dataset):
    """Time per linked node of a wide shape over that of the same order at 1,000 siblings."""
    match = SHAPE.fullmatch(dataset)
    if not match.group("order"):
        return None
    smallest = shape_row(figures, f"wide-{match.group('order')}-1000")["per_node"]
    here = shape_row(figures, dataset)["per_node"]
    return here / smallest if here and smallest else None


def shapes_table(figures, before=None):
    header = ["Database", "Linked nodes", "GetRootProperty µs", "µs per linked node", "per node / at 1,000",
              "Edit \"Type\" + relink µs", "Edit sibling + relink µs"]
    if before is not None:
        header += ["µs per linked node before", "Edit sibling + relink µs before"]
    lines = ["| " + " | ".join(header) + " |", "|---|" + "---:|" * (len(header) - 1)]
    for dataset in shape_datasets(figures):
        row = shape_row(figures, dataset)
        cells = [f"`{dataset}`", count_text(row["nodes"]), fmt(row["root"]), fmt(row["per_node"]),
                 ratio_text(wide_growth(figures, dataset)), fmt(row["edit_type"]), fmt(row["edit_sibling"])]
        if before is not None:
            earlier = shape_row(before, dataset)
            cells += [fmt(earlier["per_node"]), fmt(earlier["edit_sibling"])]
        lines.append("| " + " | ".join(cells) + " |")
    return lines


def shapes_summary(figures):
    growths = [wide_growth(figures, d) for d in shape_datasets(figures) if d.startswith("wide-") and d.endswith("-100000")]
    growths = [g for g in growths if g is not None]
    if not growths:
        return []
    return [f"At 100,000 siblings under one key the time per linked node is {min(growths):.2f} to "
            f"{max(growths):.2f} times its value at 1,000 siblings, over the four orders of key numbers."]


def shapes_section(figures, shapes_before=None):
    if not shape_datasets(figures):
        return []
    lines = ["", "## Linking shapes", "",
             "Linking inserts each selected copy before the first entry of the level whose key number "
             "is greater; the work list keeps its entries in blocks with the largest number of each, so "
             "that place is found without scanning the level from its start. "
             + " ".join(shapes_summary(figures)), "",
             "Shapes (`benchmarks/LinkingShapes.cpp`): `wide-<order>-<n>`, \"Type\" selecting through one key n "
             "Boolean siblings whose key numbers ascend, descend, are all equal or are scrambled in file order; "
             "`deep-250`, a chain of 250 levels, each a switch selecting the next level and three leaves; "
             "`many-keys-16x<n>`, n siblings with 16 keys each, every fourth a string whose value carries a "
             "same-level key of its own that pulls in one further sibling listed under that key alone. Edit "
             "\"Type\" switches to a value that selects nothing and back; edit sibling flips a switch among the "
             "children of \"Type\" and relinks the whole tree, which keeps every sibling.",
             "", *shapes_table(figures, shapes_before)]
    if shapes_before is not None:
        lines += ["", "The columns marked before come from a run of the same suite against the library "
                  "whose insertion scanned the work list from its start for every copy; \"n/a\" marks "
                  "shapes that run left out (at 100,000 siblings one link takes minutes)."]
    return lines


def splice_shapes(path, figures, repetitions, date, shapes_before):
    """Replaces the linking shapes section of an existing page, leaving the rest as it is."""
    with open(path, encoding="utf-8") as page:
        lines = page.read().split("\n")
    section = shapes_section(figures, shapes_before)[1:]
    section[3:3] = ["", f"Medians of {repetitions} repetitions of the shapes alone, run on {date}; the other "
                        "sections come from their own runs."]
    if "## Linking shapes" in lines:
        start = lines.index("## Linking shapes")
        end = next((i for i in range(start + 1, len(lines)) if lines[i].startswith("## ")), len(lines))
        lines[start:end] = section + [""]
    else:
        lines += section + [""]
    with open(path, "w", encoding="utf-8") as page:
        page.write("\n".join(lines))


HEAP_FLOOR_BLOCKS = (1, 3, 5)


def heap_floor_table(figures):
    """The bare parse plus heap blocks per property and nothing else, against the load."""
    header = ["Database", "Bare parse µs"] + [f"{blocks} block{'s' if blocks > 1 else ''} / parse"
                                              for blocks in HEAP_FLOOR_BLOCKS] + ["Load / parse"]
    lines = ["| " + " | ".join(header) + " |", "|---|" + "---:|" * (len(header) - 1)]
    for dataset in datasets(figures):
        floors = [figures.get((f"HeapFloor{blocks}", dataset)) for blocks in HEAP_FLOOR_BLOCKS]
        if not any(floors):
            continue
        row = row_figures(figures, dataset)
        parse = row["parse"]
        cells = [dataset, fmt(parse)]
        for floor in floors:
            cells.append(ratio_text(microseconds(floor) / parse if floor and parse else None))
        cells.append(ratio_text(row["ratio"]))
        lines.append("| " + " | ".join(cells) + " |")
    return lines


def write_markdown(path, report, repetitions, baseline, previous=None, shapes_before=None):
    figures = medians(report)
    context = report.get("context", {})
    lines = [
        "# Performance",
        "",
        "Figures of the performance suite (`benchmarks/PerformanceBenchmark.cpp`), written by "
        "`scripts/performance/run-performance.py`. Each figure is the median of "
        f"{repetitions} repetitions, in CPU time of the benchmark's thread (the machine may be shared); "
        "ratios compare figures of the same run.",
        "",
        "## Machine",
        "",
        *machine_description(context),
        "",
        "## What is measured",
        "",
        "- `N=...`: generated databases of N top-level properties. \"Type\" has four allowed values whose "
        "keys select one subtree each; below them string selectors and Booleans select further "
        "levels (eight children per key), with integers, 32-bit and 64-bit locations, key numbers "
        "in both orders, same-level keys and second keys. The linked tree holds about N/4 nodes.",
        "- The bundled samples, copied to a scratch directory.",
        "- Read bytes: reading the file into memory. Bare parse: `XMLPlatformUtils::Initialize`, a "
        "`SAXParser` parse of the same file with an empty `HandlerBase`, `Terminate`: the floor of any load.",
        "- Load + release: `CreatePropertyDBByName` + `ReleasePropertyDB`; Load / parse is its ratio to the bare parse.",
        "- Heap floor (generated databases only): the bare parse with a handler that only makes, writes "
        "and at the end frees heap blocks per property (see \"Where a load spends its time beyond the parse\").",
        "- GetRootProperty: the copy of \"Type\" with its whole tree linked, and its release; per linked node "
        "divides by the nodes of that tree.",
        "- Edit + relink: `SetValue` of \"Type\" to another allowed value and `UpdateSubProperties` "
        "(the edits alternate between two values; on the linking shapes the other value selects nothing, "
        "so every second edit gathers all siblings anew).",
        "- Edit sibling + relink (linking shapes): `SetValue` of a switch among the children of \"Type\" "
        "and `UpdateSubProperties` of the whole tree, which keeps every sibling.",
        "- ConvertBack: an edited whole tree taken back into the database's own \"Type\" tree (alternating "
        "between two trees, so that every call relinks).",
        "- Peak / kept bytes per property: bytes held through `operator new` (the parser's included) at the "
        "highest point of one load, and after it, divided by the properties of the file.",
        "",
        "## Figures",
        "",
        *markdown_table(figures),
        "",
        "## Reproducing",
        "",
        "```sh",
        "cmake -S . -B build/perf -DCMAKE_BUILD_TYPE=RelWithDebInfo -DRLX_BUILD_BENCHMARKS=ON",
        "cmake --build build/perf -j2 --target rlx_performance_benchmarks",
        "scripts/performance/run-performance.py --build-dir build/perf --repetitions 9",
        "```",
        "",
        "The default preset builds the suite too (`build/default`); the suite is never run as a test.",
        "",
        "## Where a load spends its time beyond the parse",
        "",
        "Profiled with `valgrind --tool=callgrind` and `perf record`: a load executes only a little more "
        "than the instructions of the bare parse, yet takes noticeably longer, and the gap grows with the "
        "database as it outgrows the caches. Much of the gap is the heap. The table below times the bare "
        "parse with a handler that keeps nothing of the file but, at every property end tag, makes and "
        "writes heap blocks holding 350 bytes in all, as many as a loaded property keeps, in one, three "
        "or five blocks, and frees them in the order they were made (`benchmarks/BlockMakingHandler.h`): the same "
        "bytes cost more the more blocks they come in. A loaded property of the generated databases is "
        "now about 1.4 blocks: a switch is its object alone (a name and description of up to 62 "
        "characters together, a single key of up to 23 characters and short child and same-level keys "
        "live inside it), a string adds one block for its allowed values and their attributes. "
        "Besides the reader's own work "
        "(matching element names and narrowing each piece of character data as it comes), the "
        "rest goes to glibc allocating and coalescing blocks (`unlink_chunk`, `malloc_consolidate`) and "
        "to Xerces running slower in caches the properties crowd. On the bundled samples a load costs "
        "within a few per cent of the bare parse (first table).",
        "",
        *heap_floor_table(figures),
    ]
    lines += shapes_section(figures, shapes_before)
    if baseline is not None:
        lines += ["", "## Before and after the candidate index and the reader's quick paths", "",
                  "Before: linking scanned the whole database for every linked node, and the reader looked "
                  "element names up by a linear scan of the tag table and converted every number through a "
                  "string stream. After: linking visits only the candidates of the keys in play, in file "
                  "order, and the reader does neither. Each column holds medians of its own run on the "
                  "same machine; \"n/a\" marks figures the earlier run did not reach (one ConvertBack at "
                  "N=100000 took minutes).", "", *linking_comparison(figures, medians(baseline))]
    if previous is not None:
        lines += ["", "## Before and after the lighter property", "",
                  "Before: a property took 304 bytes before its typed part, a string property kept its allowed "
                  "values and their attributes in two vectors (two blocks, about 120 bytes per item), child key "
                  "and same-level key were a `std::string` each, the first key was a `PropertyKey` inside the "
                  "property beside an empty vector for further ones, and the reader copied every piece of "
                  "character data as UTF-16 units to narrow it when an end tag read it. After: 216 bytes; one "
                  "block for a string's allowed values and attributes (about 40 bytes per item); child and "
                  "same-level key share one small buffer; a single key of up to 23 characters lives in 32 bytes "
                  "inside the property and further keys share one block; each piece of character data is "
                  "narrowed as it comes, several units at a time. Both runs are medians from the same machine, "
                  "one after the other, with the same suite; only the library differs.", "",
                  *load_comparison(figures, medians(previous))]
    lines.append("")
    with open(path, "w", encoding="utf-8") as out:
        out.write("\n".join(lines))


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--build-dir", default=os.path.join(ROOT, "build", "perf"))
    parser.add_argument("--repetitions", type=int, default=5)
    parser.add_argument("--min-time", default="0.2")
    parser.add_argument("--filter", default="")
    parser.add_argument("--output", default=os.path.join(ROOT, "docs", "performance.md"))
    parser.add_argument("--json", help="keep the raw results of this run in this file")
    parser.add_argument("--from-json", help="write the table from an earlier run's raw results instead of running")
    parser.add_argument("--baseline", help="raw results of an earlier run to compare linking with")
    parser.add_argument("--previous", help="raw results of the previous version to compare loading with")
    parser.add_argument("--shapes-before", help="raw results of an earlier library on the linking shapes")
    parser.add_argument("--shapes-only", action="store_true",
                        help="run only the linking shapes and replace their section of the existing page")
    args = parser.parse_args()

    if args.from_json:
        with open(args.from_json) as raw:
            report = json.load(raw)
    else:
        with tempfile.TemporaryDirectory(prefix="rlx-performance-") as scratch:
            json_path = args.json or os.path.join(scratch, "results.json")
            benchmark_filter = args.filter or ("/(wide|deep|many-keys)-" if args.shapes_only else "")
            run_suite(os.path.abspath(args.build_dir), args.repetitions, args.min_time, benchmark_filter, json_path)
            with open(json_path) as raw:
                report = json.load(raw)
    report.setdefault("context", {}).setdefault("date", datetime.datetime.utcnow().strftime("%Y-%m-%d %H:%M UTC"))
    baseline = None
    if args.baseline:
        with open(args.baseline) as raw:
            baseline = json.load(raw)
    repetitions = max([entry.get("repetitions", 1) for entry in report.get("benchmarks", [])] or [args.repetitions])
    previous = None
    if args.previous:
        with open(args.previous) as raw:
            previous = json.load(raw)
    shapes_before = None
    if args.shapes_before:
        with open(args.shapes_before) as raw:
            shapes_before = medians(json.load(raw))
    if args.shapes_only:
        splice_shapes(args.output, medians(report), repetitions, report["context"]["date"], shapes_before)
    else:
        write_markdown(args.output, report, repetitions, baseline, previous, shapes_before)
    print(f"wrote {args.output}")


if __name__ == "__main__":
    main()
