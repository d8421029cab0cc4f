#!/usr/bin/env python3
"""Tests of what scripts/mutate does with C++ text, with its list of equivalent changes, and of its draw."""

import importlib.machinery
import importlib.util
import pathlib
import sys
import tempfile
import unittest

sys.dont_write_bytecode = True
HERE = pathlib.Path(__file__).resolve().parent
TOP = HERE.parents[1]
sys.path.insert(0, str(HERE))

import equivalent  # noqa: E402
import measure  # noqa: E402
from changes import changes, enumerations  # noqa: E402
from programs import EVERY, PARTICULAR, suites_for  # noqa: E402
from tokens import tokens  # noqa: E402

LOADER = importlib.machinery.SourceFileLoader("mutate", str(TOP / "scripts" / "mutate"))
mutate = importlib.util.module_from_spec(importlib.util.spec_from_loader("mutate", LOADER))
LOADER.exec_module(mutate)


def after(source):
    """All changed texts of a source, each as the lines that differ."""
    return [change.told(source)[1] for change in changes(source)]


def in_code(statement):
    """The same for a statement in a function."""
    return [text for text in after(f"void f() {{\n{statement}\n}}\n")]


class Texts(unittest.TestCase):
    def test_comments_texts_and_directives_are_no_code(self):
        self.assertEqual([], after("// a == b + 1\n/* x && \"y\" \n 1 */\n#include \"a/b.h\"\n  #define N \\\n 1 + 2\n"))
        self.assertEqual([("text", '"// no /* comment 1 + 1"'), ("mark", ";")],
                         [(token.kind, token.text) for token in tokens('"// no /* comment 1 + 1"; // 2')])
        self.assertEqual(['"a\\"b"', '"c"'], [token.text for token in tokens(r'"a\"b" "c"')])
        self.assertEqual(['R"x(a)" b)x"', "'\\''", "1'000u", "0x1F"], [token.text for token in tokens("R\"x(a)\" b)x\" '\\'' 1'000u 0x1F")])

    def test_places_are_those_of_the_source(self):
        source = "/* a */ int x = 41;  // ä\nint y = 2;\n"
        for token in tokens(source):
            self.assertEqual(token.text, source[token.start:token.end])

    def test_a_text_is_emptied_and_gets_another_end(self):
        self.assertEqual(['auto t = "";', 'auto t = "abc#";'], after('auto t = "abcd";'))
        self.assertEqual(['auto t = "";', 'auto t = "abc#";'], after('auto t = "abc\\xE4";'))
        self.assertEqual(['auto t = u""sv;', 'auto t = u"a+"sv;'], after('auto t = u"a#"sv;'))
        self.assertEqual([], after('auto t = ""; extern "C" int f();'))


class Operators(unittest.TestCase):
    def test_binary_ones_between_spaces(self):
        self.assertEqual(["x = a <= b", "x = a >= b"], after("x = a < b"))
        self.assertEqual(["x = a || b"], after("x = a && b"))
        self.assertEqual(["x = a - b"], after("x = a + b"))
        self.assertEqual(["x &= b"], after("x |= b"))

    def test_types_pointers_and_declared_operators_are_none(self):
        self.assertEqual([], after("std::vector<int> f(const T& a, T&& b, U* c);"))
        self.assertEqual([], after("bool operator == (A a, B b);"))
        self.assertEqual([], after("x = *p; y = &q; z = -r;"))

    def test_a_negation_falls_and_a_step_goes_the_other_way(self):
        self.assertEqual(["x = a;"], after("x = !a;"))
        self.assertEqual(["x = --a;"], after("x = ++a;"))

    def test_conditions_are_turned(self):
        self.assertIn("if (!(isGood(x))) return;", in_code("if (isGood(x)) return;"))
        self.assertIn("if (T t = f(); !(t.good)) return;", in_code("if (T t = f(); t.good) return;"))
        self.assertIn("while (!(next())) work();", in_code("while (next()) work();"))
        self.assertNotIn("if (!(auto* p = f())) return;", in_code("if (auto* p = f()) return;"))


class Constants(unittest.TestCase):
    def test_a_number_is_one_more_and_one_less(self):
        self.assertEqual(["int x = 40;", "int x = 42;"], sorted(after("int x = 41;")))
        self.assertEqual(["int x = 1;"], after("int x = 0;"))
        self.assertEqual(["auto x = 14u;", "auto x = 16u;"], sorted(after("auto x = 0xFu;")))
        self.assertEqual(["auto x = 7;", "auto x = 9;"], sorted(after("auto x = 010;")))
        self.assertEqual(["auto x = 1000;", "auto x = 998;"], sorted(after("auto x = 9'99;")))

    def test_a_truth_is_the_other_and_a_character_another(self):
        self.assertEqual(["bool x = false;"], after("bool x = true;"))
        self.assertEqual(["char c = 'x';"], after("char c = '\\\\';"))
        self.assertEqual(["auto c = u'y';"], after("auto c = u'x';"))


    def test_a_value_of_an_enumeration_is_the_next_one(self):
        known = enumerations(["enum class Ending { Next, /* , */ Retry = 3,\n Leave,  // ,\n};", "enum class One : int { Only };"])
        self.assertEqual({"Ending": ["Next", "Retry", "Leave"], "One": ["Only"]}, known)
        for source, changed in (("f(Ending::Next)", "f(Ending::Retry)"), ("f(Ending::Leave)", "f(Ending::Next)")):
            self.assertEqual([changed], [change.told(source)[1] for change in changes(source, known)])
        self.assertEqual([], changes("f(One::Only, Other::Next)", known))


class Statements(unittest.TestCase):
    def test_calls_assignments_and_jumps_fall(self):
        self.assertIn(";", in_code("work(a, b);"))
        self.assertIn(";", in_code("a = b;"))
        self.assertIn("if (a) ;", in_code("if (a) return;"))
        self.assertIn("for (A b : c) ;", in_code("for (A b : c) work(b);"))
        self.assertIn("else ;", in_code("if (a) {\n}\nelse work();"))
        self.assertIn("case A: ;", in_code("switch (a) {\ncase A: break;\n}"))

    def test_those_of_several_lines_fall_whole(self):
        self.assertIn("a = 1; ; b = 2;", after("void f() {\na = 1; work(c,\n  d); b = 2;\n}"))

    def test_those_in_lambdas_constructors_and_methods_fall(self):
        self.assertIn("quietly([&] { ; });", in_code("quietly([&] { work(); });"))
        self.assertIn("C() : a_(b), c_{d} { ; }", after("class C {\n C() : a_(b), c_{d} { work(); }\n};"))
        self.assertIn("auto f() const -> std::string { ; return s; }", after("auto f() const -> std::string { work(); return s; }"))
        self.assertIn("try { ; } catch (const E&) { no(); }", after("void f() {\ntry { work(); } catch (const E&) { no(); }\n}"))

    def test_memory_that_is_only_asked_for_ahead_stays(self):
        self.assertEqual([], in_code("text.reserve(2 * size + 6);"))
        self.assertEqual([";"], in_code("g();\ntext.reserve(1);"))
        self.assertEqual(["if (!(a)) list.reserve(1);"], in_code("if (a) list.reserve(1);"))

    def test_results_and_what_is_no_statement_stay(self):
        self.assertEqual([], in_code("return a;"))
        self.assertEqual([], in_code("using std::max;"))
        self.assertEqual([], after("namespace n {\nvoid f();\nstruct A;\nclass B { int a_; void g(); };\nenum E { kA, kB };\n}"))


class Lists(unittest.TestCase):
    def test_an_entry_is_file_before_after_and_reason(self):
        text = "# words\n\na/b.cpp\n- x = 1;\n+ x = 2;\n  nobody reads x,\n  ever\n\na/c.cpp\n- f();\n+ ;\n  no\n"
        self.assertEqual({("a/b.cpp", "x = 1;", "x = 2;"): "nobody reads x, ever", ("a/c.cpp", "f();", ";"): "no"},
                         equivalent.entries(text))

    def test_an_entry_without_reason_is_refused(self):
        with self.assertRaises(SystemExit):
            equivalent.entries("a/b.cpp\n- x = 1;\n+ x = 2;\n")

    def test_entries_that_fit_nothing_are_told(self):
        path = "core/log.cpp"
        source = (TOP / path).read_text(encoding="utf-8")
        before, changed = next(changes(source) and iter(change.told(source) for change in changes(source)))
        self.assertEqual([], list(equivalent.stale({(path, before, changed): ""}, TOP)))
        self.assertEqual([f"{path}: - {before} + nothing like it"], list(equivalent.stale({(path, before, "nothing like it"): ""}, TOP)))
        self.assertEqual(["gone.cpp: - a + b"], list(equivalent.stale({("gone.cpp", "a", "b"): ""}, TOP)))

    def test_the_list_of_this_project_is_not_stale(self):
        self.assertEqual([], list(equivalent.stale(equivalent.entries(equivalent.LIST.read_text(encoding="utf-8")), TOP)))


class Draws(unittest.TestCase):
    def test_a_seed_draws_the_same_each_time_and_each_line_once(self):
        found, _ = mutate.lines_of(["core"])
        first, again, other = (list(mutate.drawn(found, seed)) for seed in (1, 1, 2))
        self.assertEqual(first, again)
        self.assertNotEqual(first, other)
        self.assertEqual(sorted(found), sorted((path, number) for path, number, _ in first))

    def test_a_line_alone_can_be_named(self):
        every, _ = mutate.lines_of(["core/log.cpp"])
        number = sorted(every)[0][1]
        self.assertEqual([("core/log.cpp", number)], list(mutate.lines_of([f"core/log.cpp:{number}"])[0]))

    def test_equivalent_ones_are_not_in_the_share(self):
        text, share = mutate.summary(["killed by a", "SURVIVED", "equivalent", "killed by b", "killed by c"])
        self.assertEqual("4 changes, 3 killed (75.0 %), 1 survived; 1 more are equivalent", text)
        self.assertEqual(75, share)

    def test_the_survivors_of_an_earlier_run_are_known_by_their_lines(self):
        said = "core: 1 tests, 0.1 s\n3 a/b.cpp:7: SURVIVED\n    - f();\n    + ;\n4 a/c.cpp:8: killed by x: failed Y.Z\na/d.cpp:9: SURVIVED\n    - g(1);\n    + g(2);\n"
        with tempfile.NamedTemporaryFile("w", suffix=".log") as file:
            file.write(said)
            file.flush()
            self.assertEqual([("a/b.cpp", "f();", ";"), ("a/d.cpp", "g(1);", "g(2);")], list(mutate.survivors(file.name)))

    def test_tests_of_a_like_name_come_first_then_the_quick_ones(self):
        tests = {"A": [0.2, "tests/x/other_test.cpp"], "B": [0.1, "tests/x/list_test.cpp"], "C": [0.4, "tests/x/folder_list_test.cpp"],
                 "D": [9.0, "tests/x/folder_list_offline.cpp"]}
        self.assertEqual(["C", "B", "A", "D"], measure.ordered(tests, "x/folder_list.cpp"))

    def test_the_own_suites_come_first(self):
        self.assertEqual("scanner", suites_for("scanner/search.cpp")[0])
        self.assertEqual("startup", suites_for("core/startup/main.cpp")[0])
        self.assertEqual(["offline", "contract"], suites_for("platform/offline/files/find.cpp")[:2])
        self.assertEqual(["hives", "rescue", "offline"], suites_for("platform/offline/hives/disk/users.cpp"))
        self.assertEqual("internet", suites_for("internet/forwarding.cpp")[0])
        for path in ("scanner/search.cpp", "platform/offline/machine.cpp", "platform/exact/text.cpp"):
            self.assertLessEqual(set(EVERY) - PARTICULAR, set(suites_for(path)))
            self.assertEqual(len(set(suites_for(path))), len(suites_for(path)))


if __name__ == "__main__":
    unittest.main()
