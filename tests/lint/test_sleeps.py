import unittest

from check_sleeps import check
from lint_testing import LintTest

CALLS = ("sleep", "usleep", "nanosleep", "std::this_thread::sleep_for", "QTest::qSleep",
         "QThread::msleep", "time.sleep")


class Sleeps(LintTest):
    def test_each_way_to_wait(self):
        for number, call in enumerate(CALLS):
            self.write(f"tests/base/a{number}_test.cc", f"void f() {{ {call}" + "(1); }\n")
        self.assert_rejects(check, *[f"tests/base/a{number}_test.cc:1: sleeps"
                                     for number in range(len(CALLS))])

    def test_shell_script(self):
        self.write("tests/cli/a.sh", "#!/bin/sh\ntrue\nsleep 1\n")
        self.assert_rejects(check, "tests/cli/a.sh:3: sleeps")

    def test_product_and_other_words_pass(self):
        self.write("src/base/a.cc", "void f() { " + "sleep" + "(1); }\n")
        self.write("tests/base/a_test.cc", "int asleep(int sleeper);\n")
        self.assert_accepts(check)

    def test_excused(self):
        self.write("tests/base/a_test.cc", "void f() { " + "sleep" + "(1); }\n")
        self.write("tests/lint/excused.txt", "sleeps tests/base/a_test.cc reason\n")
        self.assert_accepts(check)

    def test_excuse_without_file(self):
        self.write("tests/lint/excused.txt", "sleeps tests/base/gone_test.cc reason\n")
        self.assert_rejects(check, "take the line out")


if __name__ == "__main__":
    unittest.main()
