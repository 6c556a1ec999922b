import unittest

from check_words import check
from lint_testing import LintTest


class Words(LintTest):
    def test_unfinished_work(self):
        self.write("src/base/a.cc", "\n// TO" "DO: later\n")
        self.write("README.md", "FIX" "ME\nX" "XX\nHA" "CK\n")
        self.assert_rejects(check, "README.md:1", "README.md:2", "README.md:3", "src/base/a.cc:2")

    def test_switched_off_tests(self):
        self.write("tests/base/a_test.cc", "TEST(A, DIS" "ABLED_B) {}\nGTEST_" "SKIP();\n")
        self.assert_rejects(check, "a_test.cc:1", "a_test.cc:2")

    def test_outside_references(self):
        lines = ("as the spe" "c says", "Specifi" "cation", "see Par" "t 1.3", "Issu" "e #12",
                 "fixes" " #4", "../shar" "ed/x")
        self.write("docs/a.md", "\n".join(lines) + "\n")
        self.assert_rejects(check, *[f"docs/a.md:{number + 1}" for number in range(len(lines))])

    def test_file_names(self):
        self.write("docs/spe" "c.md", "\n")
        self.assert_rejects(check, "(its name)")

    def test_ordinary_words_pass(self):
        self.write("README.md", "specific, special, inspect, TODOS, mktemp a.XXXXXX, field #25, "
                   "first part of it, #4 stays\nReissue 4 times\n")
        self.write("samples/a.csv", "TO" "DO\n")
        self.assert_accepts(check)

    def test_binary_files_pass(self):
        self.write("tests/data/a.dan", "\0TO" "DO")
        self.assert_accepts(check)


if __name__ == "__main__":
    unittest.main()
