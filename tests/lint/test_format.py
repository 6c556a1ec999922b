import unittest

from check_format import check
from lint_testing import LintTest


class Format(LintTest):
    def test_laid_out(self):
        self.write("src/base/a.cc", "int F() {\n  return 1;\n}\n")
        self.assert_accepts(check)

    def test_names_the_file_and_the_cure(self):
        self.write("src/base/a.cc", "int F() {\n      return   1;\n}\n")
        self.write("src/base/b.h", "int G();\n")
        self.assert_rejects(check, "run: clang-format -i src/base/a.cc")


if __name__ == "__main__":
    unittest.main()
