import unittest

from check_size import check, p90
from cpp_functions import functions_of
from lint_testing import LintTest


def function(name, lines):
    """A function of `lines` lines, its first line and its closing brace counted."""
    return f"void {name}() {{\n" + "  Step();\n" * (lines - 2) + "}\n"


def lengths(source):
    return [(found.name, found.line, found.lines) for found in functions_of(source)]


class Budget(LintTest):
    def write_small_files(self, folder="src/base"):
        """Enough small files for one long one not to count as one in ten."""
        for number in range(9):
            self.write(f"{folder}/small{number}.h", "int a;\n")

    def test_within(self):
        self.write("src/base/a.h", "int a;\n" * 400)
        self.write("src/base/a.cc", "".join(function(f"F{n}", 30) for n in range(10)))
        self.assert_accepts(check)

    def test_header_too_long(self):
        self.write("src/base/a.h", "int a;\n" * 401)
        self.write_small_files()
        self.assert_rejects(check, "src/base/a.h: 401 lines, 400 at most")

    def test_file_too_long(self):
        self.write("src/base/a.cc", "int a;\n" * 1001)
        self.write_small_files()
        self.assert_rejects(check, "src/base/a.cc: 1001 lines, 1000 at most")

    def test_too_many_long_files(self):
        for number in range(8):
            self.write(f"src/base/b{number}.h", "int a;\n")
        self.write("src/base/a.cc", "int a;\n" * 401)
        self.write("src/base/c.cc", "int a;\n" * 402)
        self.assert_rejects(check, "src/: one file in ten is above 401 lines")

    def test_function_too_long(self):
        self.write_small_files()
        short = "".join(function(f"F{n}", 5) for n in range(99))
        self.write("src/base/a.cc", short + function("Endless", 101))
        self.assert_rejects(check, "src/base/a.cc:496 Endless: 101 lines, 100 at most")

    def test_too_many_functions_above_thirty(self):
        short = "".join(function(f"F{n}", 5) for n in range(8))
        self.write("src/base/a.cc", short + function("G", 31) + function("H", 32))
        self.assert_rejects(check, "src/: one function in ten is above 31 lines")

    def test_three_in_a_hundred_above_sixty(self):
        self.write_small_files()
        short = "".join(function(f"F{n}", 3) for n in range(97))
        self.write("src/base/a.cc", short + "".join(function(f"G{n}", 61) for n in range(3)))
        self.assert_rejects(check, "3 of 100 functions are above 60 lines")

    def test_short_tests_do_not_hide_long_product_code(self):
        self.write("src/base/a.cc", function("Long", 61))
        self.write("tests/base/a_test.cc", "".join(function(f"F{n}", 3) for n in range(100)))
        self.assert_rejects(check, "src/: one function in ten", "src/: 1 of 1")

    def test_excused(self):
        self.write("src/base/a.cc", function("Table", 1500))
        self.write("tests/lint/excused.txt", "# comment\nsize src/base/a.cc a table\n")
        self.assert_accepts(check)

    def test_nine_in_ten(self):
        self.assertEqual(p90(range(1, 11)), 9)
        self.assertEqual(p90([7]), 7)
        self.assertEqual(p90([]), 0)


class Functions(unittest.TestCase):
    def test_scopes_are_entered(self):
        source = ("namespace a {\nnamespace {\nclass B : public C<D()> {\n public:\n"
                  "  explicit B(int x) : x_{x}, y_(x) {\n    F();\n  }\n"
                  " private:\n  int x_{1};\n};\n}\nstruct S {\n  int v = 0;\n};\n"
                  "int F(S s) {\n  return s.v;\n}\n}\n")
        self.assertEqual(lengths(source), [("B", 5, 3), ("F", 15, 3)])

    def test_declaration_over_several_lines(self):
        source = "template <class T>\nT Longer(T a,\n         T b) {\n  return a + b;\n}\n"
        self.assertEqual(lengths(source), [("Longer", 1, 5)])

    def test_operators_and_trailing_types(self):
        source = ("bool operator==(A a, A b) {\n  return true;\n}\n"
                  "auto A::operator()(int n) const -> std::vector<int> {\n  return {n};\n}\n"
                  "A& A::operator=(const A& a) {\n  return *this;\n}\n"
                  "bool operator<(A a, A b) {\n  return true;\n}\n")
        self.assertEqual([found.lines for found in functions_of(source)], [3, 3, 3, 3])

    def test_tables_and_initialisers_are_no_functions(self):
        source = ("constexpr std::array<int, sizeof(int)> kA{\n    1,\n};\n"
                  "const Row kRows[] = {\n    {1, F(2)},\n};\n"
                  "constexpr auto kSum = [](int a) {\n  return a;\n};\n"
                  "enum class E : int {\n  kA,\n};\nvoid F(Options o = {});\n")
        self.assertEqual(lengths(source), [])

    def test_lambdas_count_with_their_function(self):
        source = "void F() {\n  auto g = [] {\n    return 1;\n  };\n  g();\n}\n"
        self.assertEqual(lengths(source), [("F", 1, 6)])

    def test_literals_and_comments_hold_no_braces(self):
        source = ("void F() {  // }\n  G(\"}\", '}', R\"x(})\" }\n)x\");\n  /* } */\n"
                  "  int n = 32'767;\n  H('\\'');\n}\n#define X {\nvoid I() {\n}\n")
        self.assertEqual(lengths(source), [("F", 1, 7), ("I", 9, 2)])

    def test_test_macros_carry_their_names(self):
        self.assertEqual(lengths("TEST(A, B) {\n  F();\n}\n"), [("TEST(A, B)", 1, 3)])


if __name__ == "__main__":
    unittest.main()
