#!/usr/bin/env python3
"""check_arrows.py TREE TABLE: who includes whom, held against the table of who may.

A line of the table names a place and the places whose headers it may include:

    endpoint:
    terminal/ui: terminal/chart terminal/data

A place is a folder without its subfolders, or a few files of one that stand apart from the rest:

    border = tradechartobject/ChartInterface.h tradechartobject/CombinedOverlay.h

What is in the place "stand-in" is included in the place of a header of the same name.

Fails on an include that the table does not allow, on an arrow of the table that nobody uses, on a folder that the table
does not know, on places that include each other in a circle, and on two headers of one name.
"""
import collections
import pathlib
import re
import sys

INCLUDE = re.compile(r'^\s*#\s*include\s*[<"]([^>"]+)[>"]')
NOT_OURS = {"build", "out"}
STAND_IN = "stand-in"
FREE = {"tests", "bench"}  # they may include whatever they test


def sources(tree):
    """Paths of the sources, from the top of the tree."""
    for path in sorted(tree.rglob("*")):
        inside = path.relative_to(tree)
        if path.suffix in (".h", ".cpp") and inside.parts[0] not in NOT_OURS and not inside.parts[0].startswith("."):
            yield inside


class Table:
    def __init__(self, text):
        self.allowed = {}    # place -> places
        self._place_of = {}  # file that stands apart -> place
        for line in text.splitlines():
            line = line.split("#")[0].strip()
            if "=" in line:
                place, files = line.split("=")
                self._place_of.update((pathlib.Path(file), place.strip()) for file in files.split())
            elif line:
                place, others = line.split(":")
                self.allowed[place.strip()] = set(others.split())

    def place_of(self, file):
        return self._place_of.get(file, file.parent.as_posix())

    def files_apart(self):
        return set(self._place_of)


def arrows(tree, files, table):
    """(place, place) -> the lines that include across."""
    found = collections.defaultdict(list)
    for file in files:
        if file.parts[0] in FREE:
            continue
        for number, line in enumerate((tree / file).read_text(encoding="utf-8").splitlines(), 1):
            match = INCLUDE.match(line)
            for target in (pathlib.Path(match[1]), file.parent / match[1]) if match else ():
                if target in files:
                    here, there = table.place_of(file), table.place_of(target)
                    if here != there:
                        found[here, there].append(f"{file.as_posix()}:{number}: {line.strip()}")
                    break
    return found


def circle(found):
    """Places that include each other in a circle, the first one again at the end; empty when there is none."""
    after = collections.defaultdict(list)
    for here, there in sorted(found):
        after[here].append(there)
    done = set()

    def walk(path):
        for place in after[path[-1]]:
            if place in path:
                return path[path.index(place):] + [place]
            if place not in done:
                closed = walk(path + [place])
                if closed:
                    return closed
        done.add(path[-1])
        return []

    for place in sorted(after):
        closed = [] if place in done else walk([place])
        if closed:
            return closed
    return []


def faults(tree, table):
    files = dict.fromkeys(sources(tree))
    found = arrows(tree, files, table)

    for file in sorted(table.files_apart() - set(files)):
        yield f"{file.as_posix()} of the table is not there"
    for place in sorted({table.place_of(file) for file in files if file.parts[0] not in FREE} - set(table.allowed)):
        yield f"{place} has no line in the table"
    for here, there in sorted(found):
        if there not in table.allowed.get(here, ()):
            yield "\n    ".join([f"{here} must not include {there}:", *found[here, there]])
    for here, others in sorted(table.allowed.items()):
        for there in sorted(others - {there for place, there in found if place == here}):
            yield f"{here} may include {there} in the table, but does not: take it out"
    closed = circle(found)
    if closed:
        lines = [found[here, there][0] for here, there in zip(closed, closed[1:])]
        yield "\n    ".join(["a circle: " + " -> ".join(closed), *lines])

    by_name = collections.defaultdict(list)
    for file in files:
        if file.suffix == ".h" and table.place_of(file) != STAND_IN:
            by_name[file.name].append(file.as_posix())
    for name, paths in sorted(by_name.items()):
        if len(paths) > 1:
            yield f"{len(paths)} headers are named {name}: {' '.join(paths)}"


def main():
    tree, table = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])
    told = list(faults(tree, Table(table.read_text(encoding="utf-8"))))
    if told:
        print("\n".join(told), file=sys.stderr)
    return 1 if told else 0


if __name__ == "__main__":
    sys.exit(main())
