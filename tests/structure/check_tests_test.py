#!/usr/bin/env python3
"""check_tests.py finds each kind of fault in a small tree, and none in one that is as it should be."""
import pathlib
import subprocess
import sys
import tempfile
import unittest

CHECK = pathlib.Path(__file__).with_name("check_tests.py")

TREE = {
    "chart/Line.h": "",
    "chart/Pen_p.h": "",
    "chart/marks/Dot.h": "",
    "tests/chart/LineTest.cpp": "TEST(Line, IsLong)\nTEST_P(LineOfDots, IsLong)\n",
    "tests/chart/PenTest.cpp": "TEST_F(PenTest, Draws)\n",
    "tests/chart/PrintingTest.cpp": "TEST_F(Printing, IsSlow)\n",
    "tests/chart/marks/DotTest.cpp": "TYPED_TEST(Dot, IsRound)\n",
    "tests/chart/line/EndsTest.cpp": "TEST_F(LineEnds, AreRound)\n",
    "tests/chart/support/Paper.h": "",
    "tests/e2e/PictureTest.cpp": "TEST_F(Picture, IsDrawn)\n",
}


class TestsOfATree(unittest.TestCase):
    def told(self, changes=None):
        """What is said of the small tree with other files in it."""
        with tempfile.TemporaryDirectory() as folder:
            for name, text in {**TREE, **(changes or {})}.items():
                file = pathlib.Path(folder, name)
                file.parent.mkdir(parents=True, exist_ok=True)
                file.write_text(text)
            run = subprocess.run([sys.executable, str(CHECK), folder], capture_output=True, text=True)
            self.assertEqual(run.returncode, 1 if run.stderr else 0)
            return run.stderr

    def test_nothing_is_told_of_a_tree_that_is_as_it_should_be(self):
        self.assertEqual(self.told(), "")

    def test_a_suite_of_another_name_than_its_file_is_told(self):
        for macro in ("TEST", "TEST_F", "TEST_P", "TYPED_TEST"):
            said = self.told({"tests/chart/LineTest.cpp": f"{macro}(Line, IsLong)\n{macro}(LongOne, IsLong)\n"})
            self.assertEqual(said, "tests/chart/LineTest.cpp: the suite LongOne is not called Line...\n")

    def test_a_suite_in_the_folder_of_a_class_is_called_as_class_and_file(self):
        said = self.told({"tests/chart/line/EndsTest.cpp": "TEST(Ends, AreRound)\n"})
        self.assertEqual(said, "tests/chart/line/EndsTest.cpp: the suite Ends is not called LineEnds...\n")

    def test_a_suite_of_two_files_is_told(self):
        said = self.told({"tests/chart/LineOfDotsTest.cpp": "TEST_P(LineOfDots, IsShort)\n"})
        self.assertEqual(said, "2 files have a suite LineOfDots: chart/LineOfDotsTest.cpp chart/LineTest.cpp\n")

    def test_a_folder_that_the_sources_do_not_have_is_told(self):
        said = self.told({"tests/chart/glyphs/GlyphTest.cpp": "TEST(Glyph, IsSmall)\n"})
        self.assertEqual(said, "tests/chart/glyphs/ has neither a folder nor a class of that name in the sources\n")

    def test_a_class_of_another_folder_has_no_folder_of_tests(self):
        said = self.told({"tests/chart/dot/EdgesTest.cpp": "TEST(Edges, AreSharp)\n"})
        self.assertIn("tests/chart/dot/ has neither", said)

    def test_a_test_in_another_folder_than_its_class_is_told(self):
        said = self.told({"tests/chart/DotTest.cpp": "TEST(DotOnPaper, IsRound)\n"})
        self.assertEqual(said, "tests/chart/DotTest.cpp tests Dot of chart/marks/, but is not in tests/chart/marks/\n")

    def test_what_is_tested_as_a_whole_may_be_called_as_a_class(self):
        self.assertEqual(self.told({"tests/e2e/DotTest.cpp": "TEST(DotInAProgram, IsRound)\n"}), "")


if __name__ == "__main__":
    unittest.main()
