#!/usr/bin/env python3
"""check_arrows.py finds each kind of fault in a small tree, and none in one that is as its table says."""
import pathlib
import subprocess
import sys
import tempfile
import unittest

CHECK = pathlib.Path(__file__).with_name("check_arrows.py")

TABLE = """
border = plugin/Border.h   # stands apart from what includes it
border:
plugin: border plugin/parts
plugin/parts: border
"""
TREE = {
    "plugin/Border.h": "",
    "plugin/Factory.cpp": '#include "plugin/parts/Line.h"\n#include "Border.h"\n',
    "plugin/parts/Line.h": '#include "plugin/Border.h"\n#include <QString>\n',
    "plugin/parts/Line.cpp": '#include "plugin/parts/Line.h"\n',
    "tests/LineTest.cpp": '#include "plugin/parts/Line.h"\n',
    "build/parts/Line.h": "",
}


class Arrows(unittest.TestCase):
    def told(self, changes=None, table=TABLE):
        """What is said of the small tree with other files in it."""
        with tempfile.TemporaryDirectory() as folder:
            for name, text in {**TREE, **(changes or {})}.items():
                file = pathlib.Path(folder, name)
                file.parent.mkdir(parents=True, exist_ok=True)
                file.write_text(text)
            written = pathlib.Path(folder, "arrows.txt")
            written.write_text(table)
            run = subprocess.run([sys.executable, str(CHECK), folder, str(written)], capture_output=True, text=True)
            self.assertEqual(run.returncode, 1 if run.stderr else 0)
            return run.stderr

    def test_nothing_is_told_of_a_tree_that_is_as_its_table_says(self):
        self.assertEqual(self.told(), "")

    def test_an_include_through_a_wall_is_told_with_its_line(self):
        said = self.told({"bus/Client.h": "", "plugin/parts/Line.cpp": '// a line\n#include "bus/Client.h"\n'},
                         TABLE + "bus:\n")
        self.assertEqual(said, "plugin/parts must not include bus:\n"
                               '    plugin/parts/Line.cpp:2: #include "bus/Client.h"\n')

    def test_a_circle_is_told_though_the_table_allows_it(self):
        said = self.told({"plugin/Factory.h": "", "plugin/parts/Line.cpp": '#include "plugin/Factory.h"\n'},
                         TABLE.replace("plugin/parts: border", "plugin/parts: border plugin"))
        self.assertIn("a circle: plugin -> plugin/parts -> plugin\n", said)
        self.assertIn('plugin/parts/Line.cpp:1: #include "plugin/Factory.h"', said)

    def test_a_longer_circle_is_told_too(self):
        said = self.told({"a/A.h": '#include "b/B.h"\n', "b/B.h": '#include "c/C.h"\n', "c/C.h": '#include "a/A.h"\n'},
                         TABLE + "a: b\nb: c\nc: a\n")
        self.assertIn("a circle: a -> b -> c -> a\n", said)

    def test_two_headers_of_one_name_are_told(self):
        said = self.told({"plugin/Line.h": ""})
        self.assertEqual(said, "2 headers are named Line.h: plugin/Line.h plugin/parts/Line.h\n")

    def test_a_header_may_stand_in_for_another_when_the_table_says_so(self):
        stand_in = {"tests/other/Line.h": ""}
        self.assertIn("2 headers are named Line.h", self.told(stand_in))
        self.assertEqual(self.told(stand_in, TABLE + "stand-in = tests/other/Line.h\n"), "")

    def test_a_folder_that_the_table_does_not_know_is_told(self):
        self.assertEqual(self.told({"plugin/new/New.h": ""}), "plugin/new has no line in the table\n")

    def test_an_arrow_that_nobody_uses_is_told(self):
        said = self.told({"plugin/Factory.cpp": '#include "plugin/parts/Line.h"\n'})
        self.assertEqual(said, "plugin may include border in the table, but does not: take it out\n")

    def test_a_file_of_the_table_that_is_gone_is_told(self):
        self.assertIn("plugin/Gone.h of the table is not there\n", self.told(table=TABLE + "gone = plugin/Gone.h\n"))

    def test_an_include_of_a_file_in_the_same_folder_needs_no_arrow(self):
        self.assertEqual(self.told({"plugin/parts/Dot.h": '#include "Line.h"\n'}), "")


if __name__ == "__main__":
    unittest.main()
