import unittest

from check_qt import check
from lint_testing import LintTest


class Qt(LintTest):
    def test_desktop_may(self):
        self.write("src/desktop/form/a.cc", "#include <QWidget>\n")
        self.write("tests/desktop/a_test.cc", "#include <QtTest/QTest>\n")
        self.write("src/base/queue.h", '#include <queue>\n#include "base/quote.h"\n')
        self.assert_accepts(check)

    def test_others_may_not(self):
        self.write("src/shell/a.h", "#include <QString>\n")
        self.write("tests/shell/a_test.cc", "#include <QtCore/QString>\n")
        self.assert_rejects(check, "src/shell/a.h includes QString",
                            "tests/shell/a_test.cc includes QtCore/QString")


if __name__ == "__main__":
    unittest.main()
