#!/usr/bin/env python3
"""check_tests.py TREE: where a test is and what it is called, so that it is found by the class that it tests.

What LineTest.cpp tests is called Line..., in every suite of it, and no other file has a suite of that name. In the folder
of one class, e.g. tests/chart/line/ for chart/Line.h, the suites of EndsTest.cpp are called LineEnds...

A folder below tests/ is there because the sources have it (tests/chart/ for chart/), or a class of the folder above is
named so, or it is a folder "support". What is tested as a whole has a folder beside them: see WHOLES. A test that is named
as a class stands in the folder of the class.
"""
import collections
import pathlib
import re
import sys

SUITE = re.compile(r"^\s*(?:TEST|TEST_F|TEST_P|TYPED_TEST|TYPED_TEST_P)\(\s*(\w+)\s*,", re.MULTILINE)
# folders of tests that are not those of one folder of the sources
WHOLES = {"abi", "docs", "e2e", "format", "fuzz", "install", "scripts", "structure", "support", "world"}
NOT_OURS = {"build", "out", "tests"}


def classes_of(tree):
    """Name of a class, as its header is called -> the folders that have one of that name."""
    found = collections.defaultdict(set)
    for header in tree.rglob("*.h"):
        inside = header.relative_to(tree)
        if inside.parts[0] not in NOT_OURS and not inside.parts[0].startswith("."):
            found[inside.stem.split("_")[0]].add(inside.parent)
    return found


class Layout:
    def __init__(self, tree):
        self.tests = tree / "tests"
        self._sources = tree
        self._classes = classes_of(tree)

    def files(self):
        """The tests, from tests/ on."""
        return sorted(file.relative_to(self.tests) for file in self.tests.rglob("*Test.cpp"))

    def class_of(self, folder):
        """The class that the folder of tests is for; nothing when the folder is for many."""
        for name, places in self._classes.items():
            if name.lower() == folder.name and folder.parent in places and not (self._sources / folder).is_dir():
                return name
        return ""

    def is_known(self, folder):
        """True for a folder of tests that has its folder or class in the sources."""
        return (folder.parts[0] in WHOLES or "support" in folder.parts or (self._sources / folder).is_dir()
                or self.class_of(folder) != "")

    def place_of(self, file):
        """The folder where the tests of the class are after which the file is called; nothing for none or several."""
        places = self._classes.get(file.stem[:-len("Test")], ())
        return min(places) if len(places) == 1 else None


def faults(tree):
    layout = Layout(tree)
    files_of = collections.defaultdict(set)

    for folder in sorted({file.parent for file in layout.files()}):
        if folder.parts and not layout.is_known(folder):
            yield f"tests/{folder.as_posix()}/ has neither a folder nor a class of that name in the sources"
    for file in layout.files():
        name = layout.class_of(file.parent) + file.stem[:-len("Test")]
        for suite in sorted(set(SUITE.findall((layout.tests / file).read_text(encoding="utf-8")))):
            files_of[suite].add(file.as_posix())
            if not suite.startswith(name):
                yield f"tests/{file.as_posix()}: the suite {suite} is not called {name}..."
        place = layout.place_of(file)
        if place and file.parts[0] not in WHOLES and not layout.class_of(file.parent) and file.parent != place:
            yield f"tests/{file.as_posix()} tests {name} of {place.as_posix()}/, but is not in tests/{place.as_posix()}/"
    for suite, files in sorted(files_of.items()):
        if len(files) > 1:
            yield f"{len(files)} files have a suite {suite}: {' '.join(sorted(files))}"


def main():
    told = list(faults(pathlib.Path(sys.argv[1])))
    if told:
        print("\n".join(told), file=sys.stderr)
    return 1 if told else 0


if __name__ == "__main__":
    sys.exit(main())
