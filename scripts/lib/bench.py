#!/usr/bin/env python3
"""Runs the benchmarks beside their floors, writes docs/performance.md anew and checks the bounds. Called by scripts/bench.

A benchmark runs three times. Its figure is the shortest of the times beside the shortest of the floors; what the next one
is longer by counts as noise, up to NOISE_AT_MOST. A ratio fails when it is above its bound by more than that.
"""
import argparse
import datetime
import json
import math
import os
import pathlib
import platform
import re
import subprocess
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parents[2]
PAGE = ROOT / "docs" / "performance.md"
PLOTS = ROOT / "docs" / "images"
BOUNDS = ROOT / "bench" / "bounds.txt"
KEPT = ROOT / "build" / "bench.json"
NOISE_AT_MOST = 0.15
GROWTH = "growth/"
MEMORY = "Memory"  # has a place of its own on the page
# programs of the library benchmark, and what they are called on the page
LIBRARY_PROGRAMS = {"overlay_bench": "Overlays", "terminal_bench": "Chart", "bar_bench": "Bar files", "ledger_bench": "Ledger"}
MICROSECONDS = {"ns": 1e-3, "us": 1.0, "ms": 1e3, "s": 1e6}


# Measuring

def run(program, *arguments, check=True):
    environment = dict(os.environ, QT_QPA_PLATFORM="offscreen", QT_LOGGING_RULES="*.debug=false")
    return subprocess.run([ROOT / "build" / "release" / "bin" / program, *arguments], env=environment, check=check,
                          stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True).stdout


def run_on_a_screen(program):
    """On an X server of its own, which shows nothing else."""
    environment = dict(os.environ, QT_QPA_PLATFORM="xcb", QT_LOGGING_RULES="*.debug=false")
    return subprocess.run(["xvfb-run", "-a", "-s", "-screen 0 1600x1000x24 -br", ROOT / "build" / "release" / "bin" / program],
                          env=environment, check=True, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True).stdout


def measure():
    """Name of a group -> the reports of its benchmarks."""
    groups = {}
    for program, group in LIBRARY_PROGRAMS.items():
        began = time.monotonic()
        groups[group] = json.loads(run(program, "--benchmark_format=json", "--benchmark_repetitions=3",
                                       "--benchmark_min_time=0.15"))["benchmarks"]
        print(f"{program}: {time.monotonic() - began:.0f} s", flush=True)
    for program, group, times, arguments in (("beside_bench", "Ledger", 2, ["--json"]), ("start_bench", "Start", 3, []),
                                             ("bus_bench", "Bus", 3, ["--json"])):
        began = time.monotonic()
        reports = [report for _ in range(times) for report in json.loads(run(program, *arguments))["benchmarks"]]
        groups[group] = groups.get(group, []) + reports
        print(f"{program}: {time.monotonic() - began:.0f} s", flush=True)
    groups["Start"] += [report for _ in range(3) for report in json.loads(run_on_a_screen("window_bench"))["benchmarks"]]
    groups[MEMORY] = json.loads(run("memory_bench"))["benchmarks"]
    return {"machine": machine(), "day": datetime.date.today().isoformat(), "groups": groups, "live": run("live_bench"),
            "stalls": run("stall_bench", check=False)}  # fails where the page says that an aim is missed


def machine():
    """One line."""
    cpu = platform.processor()
    try:
        cpu = re.search(r"^model name\s*: (.*)$", pathlib.Path("/proc/cpuinfo").read_text(), re.MULTILINE).group(1)
    except (OSError, AttributeError):
        pass
    compiler = subprocess.run(["c++", "--version"], stdout=subprocess.PIPE, text=True, check=False).stdout.split("\n")[0]
    return f"{cpu}, {os.cpu_count()} cores, {platform.system()} {platform.release()}, {compiler}"


# Figures

class Figure:
    """A benchmark beside its floor, in microseconds or bytes."""

    def __init__(self, name, reports):
        self.name = name
        self.text = bytes_text if "bytes" in reports[0] else time_text
        self.taken, *others = sorted(amount(report, "bytes", "median_us", "cpu_ms") for report in reports)
        self.floor = min(amount(report, "floor_bytes", "floor_us", "floor_ms") for report in reports)
        self.ratio = self.taken / self.floor
        self.noise = min(others[0] / self.taken - 1 if others else 0.0, NOISE_AT_MOST)


def amount(report, name_of_bytes, name_of_microseconds, name_of_milliseconds):
    for name in (name_of_bytes, name_of_microseconds):
        if name in report:
            return report[name]
    return report[name_of_milliseconds] * 1e3


def plain_name(report):
    """Without what the library adds about how it ran."""
    name = report.get("run_name", report["name"])
    return re.sub(r"/(manual_time|real_time|iterations:\d+|repeats:\d+)", "", name)


def by_name(reports):
    found = {}
    for report in reports:
        if report.get("run_type") != "aggregate":
            if report.get("error_occurred"):
                sys.exit(f"bench: {report['name']}: {report['error_message']}")
            found.setdefault(plain_name(report), []).append(report)
    return found


def figures_of(reports):
    return [Figure(name, runs) for name, runs in by_name(reports).items()
            if {"floor_us", "floor_ms", "floor_bytes"} & runs[0].keys()]


def growths_of(groups):
    """What is done -> [(number, microseconds)], the best of all runs."""
    growths = {}
    for reports in groups.values():
        for name, runs in by_name(reports).items():
            if name.startswith(GROWTH):
                what, number = name[len(GROWTH):].rsplit("/", 1)
                least = min(run["real_time"] * MICROSECONDS[run["time_unit"]] for run in runs)
                growths.setdefault(what, []).append((int(number), least))
    return {what: sorted(points) for what, points in sorted(growths.items())}


def read_bounds():
    bounds = {}
    for line in BOUNDS.read_text(encoding="utf-8").splitlines():
        if line.strip() and not line.startswith("#"):
            bound, name = line.split(None, 1)
            bounds[name.strip()] = float(bound)
    return bounds


def faults(figures, bounds):
    for name in sorted(set(bounds) - {figure.name for figure in figures}):
        yield f"{name} has a bound, but was not measured"
    for figure in figures:
        if figure.name not in bounds:
            yield f"{figure.name} has no bound in {BOUNDS.relative_to(ROOT)}"
        elif figure.ratio > bounds[figure.name] * (1 + figure.noise):
            yield (f"{figure.name}: {figure.ratio:.2f} times its floor, bound {bounds[figure.name]:.2f}, "
                   f"noise {figure.noise * 100:.0f} %")


# The page

def time_text(microseconds):
    for unit, scale in (("s", 1e6), ("ms", 1e3), ("µs", 1.0)):
        if microseconds >= scale:
            return f"{microseconds / scale:.3g} {unit}"
    return f"{microseconds * 1e3:.3g} ns"


def bytes_text(count):
    return f"{count / 1e6:.3g} MB"


def rows(reports, bounds, work="work"):
    lines = [f"| {work} | takes | floor | ratio | bound |", "|---|---|---|---|---|"]
    return lines + [f"| {figure.name} | {figure.text(figure.taken)} | {figure.text(figure.floor)} | {figure.ratio:.2f} "
                    f"| {bounds.get(figure.name, math.nan):.2f} |" for figure in figures_of(reports)]


def table(groups, bounds):
    lines = []
    for group, reports in groups.items():
        if group != MEMORY:
            lines += [f"### {group}", "", *rows(reports, bounds), ""]
    return lines


def plot_file(what):
    return "growth-" + re.sub(r"[^a-z0-9]+", "-", what.lower()).strip("-") + ".svg"


def plot(what, points):
    """A plot with two logarithmic axes and a thin line of even growth through the last point."""
    width, height, left, bottom, top, right = 420, 260, 64, 36, 28, 36
    lows = [math.floor(math.log10(min(axis))) for axis in zip(*points)]
    highs = [max(math.ceil(math.log10(max(axis))), low + 1) for axis, low in zip(zip(*points), lows)]

    def x(number):
        return left + (math.log10(number) - lows[0]) / (highs[0] - lows[0]) * (width - left - right)

    def y(microseconds):
        return height - bottom - (math.log10(microseconds) - lows[1]) / (highs[1] - lows[1]) * (height - bottom - top)

    parts = [f'<svg xmlns="http://www.w3.org/2000/svg" width="{width}" height="{height}" font-family="sans-serif" '
             f'font-size="11"><rect width="100%" height="100%" fill="white"/>'
             f'<text x="{left}" y="16" font-size="12">{what}</text>']
    for power in range(lows[0], highs[0] + 1):
        at = x(10 ** power)
        parts.append(f'<line x1="{at:.1f}" y1="{top}" x2="{at:.1f}" y2="{height - bottom}" stroke="#ddd"/>'
                     f'<text x="{at:.1f}" y="{height - bottom + 16}" text-anchor="middle">{10 ** power:,}</text>')
    for power in range(lows[1], highs[1] + 1):
        at = y(10.0 ** power)
        parts.append(f'<line x1="{left}" y1="{at:.1f}" x2="{width - right}" y2="{at:.1f}" stroke="#ddd"/>'
                     f'<text x="{left - 6}" y="{at + 4:.1f}" text-anchor="end">{time_text(10.0 ** power)}</text>')
    last_number, last_time = points[-1]
    first = max(points[0][0], last_number * 10.0 ** lows[1] / last_time)
    parts.append(f'<line x1="{x(first):.1f}" y1="{y(last_time * first / last_number):.1f}" x2="{x(last_number):.1f}" '
                 f'y2="{y(last_time):.1f}" stroke="#999" stroke-dasharray="4 3"/>')
    path = " ".join(f"{x(number):.1f},{y(taken):.1f}" for number, taken in points)
    parts.append(f'<polyline points="{path}" fill="none" stroke="#2563eb" stroke-width="2"/>')
    parts += [f'<circle cx="{x(number):.1f}" cy="{y(taken):.1f}" r="3" fill="#2563eb"><title>{number:,}: '
              f'{time_text(taken)}</title></circle>' for number, taken in points]
    return "\n".join(parts) + "\n</svg>\n"


def growth_lines(growths):
    numbers = sorted({number for points in growths.values() for number, _ in points})
    lines = ["| | " + " | ".join(f"{number:,}" for number in numbers) + " |", "|---" * (len(numbers) + 1) + "|"]
    for what, points in growths.items():
        taken = dict(points)
        lines.append(f"| {what} | " + " | ".join(time_text(taken[n]) if n in taken else "" for n in numbers) + " |")
    return lines + [""] + [f"![{what}](images/{plot_file(what)})" for what in growths]


def between_marks(page, mark, lines):
    """The page with other lines between <!-- mark --> and <!-- /mark -->."""
    begin, end = f"<!-- {mark} -->", f"<!-- /{mark} -->"
    head, rest = page.split(begin)
    return head + begin + "\n\n" + "\n".join(lines).strip() + "\n\n" + end + rest.split(end)[1]


def write(measured, bounds):
    growths = growths_of(measured["groups"])
    page = PAGE.read_text(encoding="utf-8")
    page = between_marks(page, "machine", [f"{measured['machine']}, {measured['day']}."])
    page = between_marks(page, "figures", table(measured["groups"], bounds))
    page = between_marks(page, "live", ["```", measured["live"].rstrip(), "```"])
    page = between_marks(page, "memory", rows(measured["groups"][MEMORY], bounds, "what"))
    page = between_marks(page, "stalls", measured["stalls"].splitlines())
    page = between_marks(page, "growth", growth_lines(growths))
    PAGE.write_text(page, encoding="utf-8")
    for what, points in growths.items():
        (PLOTS / plot_file(what)).write_text(plot(what, points), encoding="utf-8")


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--check", action="store_true")
    parser.add_argument("--from", dest="kept", type=pathlib.Path)
    arguments = parser.parse_args()

    measured = json.loads(arguments.kept.read_text(encoding="utf-8")) if arguments.kept else measure()
    if not arguments.kept:
        KEPT.write_text(json.dumps(measured, indent=1), encoding="utf-8")
    bounds = read_bounds()
    if not arguments.check:
        write(measured, bounds)
    figures = [figure for reports in measured["groups"].values() for figure in figures_of(reports)]
    found = list(faults(figures, bounds))
    for fault in found:
        print(f"bench: {fault}")
    print(f"{len(figures)} figures, {len(found)} of them beyond their bounds")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
