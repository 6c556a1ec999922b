import unittest

from check_includes import check
from lint_testing import LintTest


class Includes(LintTest):
    def test_down_and_own_folder_pass(self):
        self.write("src/storage/a.cc",
                   '#include "storage/a.h"\n\n#include <vector>\n\n#include "base/text.h"\n')
        self.write("tests/storage/a_test.cc",
                   '#include "storage/a.h"\n#include "tests/support/family.h"\n')
        self.assert_accepts(check)

    def test_upward(self):
        self.write("src/base/a.h", '#include "storage/b.h"\n')
        self.assert_rejects(check, "src/base/a.h includes \"storage/b.h\": this runs upward")

    def test_upward_from_a_test(self):
        self.write("tests/base/a_test.cc", '#  include "platform/b.h"\n')
        self.assert_rejects(check, "upward")

    def test_sideways_between_neighbours(self):
        self.write("src/link/a.h", '#include "transfer/b.h"\n')
        self.write("src/cli/a.h", '#include "desktop/b.h"\n')
        self.assert_rejects(check, "src/cli/a.h", "src/link/a.h")
        self.assertIn("sideways", check(self.root)[0])

    def test_include_without_folder(self):
        self.write("src/base/a.cc", '#include "a.h"\n')
        self.assert_rejects(check, '"folder/file.h"')

    def test_product_includes_test(self):
        self.write("src/base/a.cc", '#include "tests/support/a.h"\n')
        self.assert_rejects(check, "does not know its tests")

    def test_folder_without_floor(self):
        self.write("src/attic/a.cc", "\n")
        self.assert_rejects(check, "src/attic has no floor")


if __name__ == "__main__":
    unittest.main()
