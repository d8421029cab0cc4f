#!/usr/bin/env python3
"""Tests of the checks themselves: a check that finds nothing in a bad sample is worth nothing."""

import importlib.machinery
import importlib.util
import json
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

sys.dont_write_bytecode = True
HERE = pathlib.Path(__file__).resolve().parent


def load(name, folder=HERE):
    loader = importlib.machinery.SourceFileLoader(name, str(folder / name))
    module = importlib.util.module_from_spec(importlib.util.spec_from_loader(name, loader))
    loader.exec_module(module)
    return module


layering = load("check_layering")
imports = load("check_imports")
hardening = load("check_hardening")
one_definition = load("check_one_definition")
literals = load("clang_literals", HERE.parent / "fuzz")


class Layering(unittest.TestCase):
    def findings(self, files):
        with tempfile.TemporaryDirectory() as folder:
            top = pathlib.Path(folder)
            for path, text in files.items():
                (top / path).parent.mkdir(parents=True, exist_ok=True)
                (top / path).write_text(text, encoding="utf-8")
            return list(layering.findings(top))

    def arrows(self, allowed):
        """All pairs of folders of which the check lets one include the other, each tried with a file of its own."""
        folders = sorted(set(allowed).union(*allowed.values()))
        passed = {mine: set() for mine in allowed}
        for mine in allowed:
            for theirs in folders:
                if mine != theirs and not self.findings({f"{mine}/a.h": f'#include "{theirs}/b.h"\n'}):
                    passed[mine].add(theirs)
        return passed

    def test_each_arrow_of_the_house_passes_and_each_other_one_is_found(self):
        seam = {"base", "resources", "platform", "platform/controls"}
        offline, system, windows = "platform/offline", "platform/win32/system", "platform/win32/windows"
        core = seam | {"platform/exact", "core"}
        ui = core | {"ui"}
        features = {"scanner", "repair", "uninstall", "cleanup", "internet"}
        top = ui | features | {"core/startup"}
        allowed = {
            "base": set(),
            "resources": set(),
            "platform": {"base", "resources", "platform/controls", system, offline},
            "platform/controls": {"base", "resources", "platform"},
            system: {"base", "platform", "platform/controls"},
            windows: {"base", "platform", "platform/controls", system},
            offline: {"base", "platform", "platform/controls"},
            "platform/exact": seam,
            "core": seam | {"platform/exact"},
            "ui": core,
            "scanner": ui | {"repair"},
            "repair": ui | {"cleanup"},
            "uninstall": ui | {"scanner", "repair"},
            "cleanup": ui,
            "internet": ui,
            "core/startup": ui | features,
            "bromvale": top | {system, windows},
            "bromvale-offline": top | {offline},
            "starter": {"base"},
            "starter/win32": {"base", "starter", system},
        }
        self.assertEqual(allowed, self.arrows(allowed))
        self.assertEqual(set(allowed), set(layering.RANKS) | set(layering.PROVIDERS) | set(layering.STARTER))

    def test_folders_below_a_floor_stand_on_it(self):
        self.assertEqual([], self.findings({"ui/pages/scan.cpp": '#include "ui/form.h"\n#include "core/log.h"\n',
                                            "platform/offline/files/volume.cpp": '#include "platform/offline/locale/clock.h"\n'}))
        self.assertEqual(['ui/pages/scan.cpp:1: "scanner/scan.h" points upward',
                          'core/startup/parts/order.cpp:1: "platform/offline/files/volume.h" lies behind the seam; '
                          "include the header in platform/"],
                         sorted(self.findings({"ui/pages/scan.cpp": '#include "scanner/scan.h"\n',
                                               "core/startup/parts/order.cpp": '#include "platform/offline/files/volume.h"\n'}),
                                reverse=True))

    def test_an_arrow_is_told_with_its_line_and_why_it_is_wrong(self):
        self.assertEqual(['core/log.cpp:2: "ui/form.h" points upward'],
                         self.findings({"core/log.cpp": '\n#include "ui/form.h"\n'}))
        self.assertEqual(['ui/form.cpp:1: "core/startup/main.h" points upward'],
                         self.findings({"ui/form.cpp": '#include "core/startup/main.h"\n'}))
        self.assertEqual(['repair/undo.cpp:1: "scanner/scan.h": repair does not know scanner'],
                         self.findings({"repair/undo.cpp": '#include "scanner/scan.h"\n'}))
        self.assertEqual(['platform/offline/net.cpp:1: "platform/exact/text.h": '
                          "platform/offline knows the seam and what is below it, not platform/exact"],
                         self.findings({"platform/offline/net.cpp": '#include "platform/exact/text.h"\n'}))

    def test_a_folder_without_a_floor_is_found(self):
        for folder in ("helpers", "platform/win32", "platform/others"):
            self.assertEqual([f"{folder}/a.cpp: its folder has no floor; give it one in check_layering"],
                             self.findings({f"{folder}/a.cpp": "\n"}))
        self.assertEqual([], self.findings({"tests/core/a.cpp": '#include "helpers/x.h"\n', "build/native/a.cpp": "\n"}))

    def test_the_seam_holds_headers_alone(self):
        self.assertEqual(["platform/registry.cpp: platform/ itself holds the seam's headers and nothing else"],
                         self.findings({"platform/registry.cpp": "\n"}))

    def test_the_control_model_reaches_no_provider_by_any_way(self):
        seam = {"platform/events.h": '#include "platform/screen.h"\n', "platform/screen.h": '#include "platform/registry.h"\n',
                "platform/registry.h": '#include "platform/win32/system/windows.h"\n',
                "platform/win32/system/windows.h": "#include <windows.h>\n"}
        self.assertEqual(["the control model reaches a provider: platform/controls/form.cpp -> platform/events.h -> "
                          "platform/screen.h -> platform/registry.h -> platform/win32/system/windows.h"],
                         self.findings({"platform/controls/form.cpp": '#include "platform/events.h"\n', **seam}))
        self.assertEqual([], self.findings({"core/log.cpp": '#include "platform/events.h"\n', **seam}))

    def test_windows_headers_stay_in_their_provider(self):
        self.assertEqual(["ui/tray.cpp:1: <windows.h> belongs into platform/win32 alone",
                          'ui/tray.cpp:2: "platform/win32/system/windows.h" lies behind the seam; '
                          "include the header in platform/"],
                         self.findings({"ui/tray.cpp": '#include <windows.h>\n#include "platform/win32/system/windows.h"\n'}))
        self.assertEqual([], self.findings({"platform/win32/windows/window.cpp": "#include <commctrl.h>\n"}))

    def test_library_parts_that_old_systems_cannot_load_are_found(self):
        self.assertEqual(["core/log.cpp:1: <fstream> keeps Bromvale.exe from loading on Windows 98 and NT4"],
                         self.findings({"core/log.cpp": "#include <fstream>\n"}))
        self.assertEqual([], self.findings({"platform/offline/files/load.cpp": "#include <fstream>\n",
                                            "bromvale-offline/main.cpp": "#include <iostream>\n"}))

    def test_an_include_without_its_folder_is_found(self):
        for name in ("log.h", "core/../ui/form.h", "helpers/log.h"):
            self.assertEqual([f'core/log.cpp:1: "{name}" is not written from the project folder'],
                             self.findings({"core/log.cpp": f'#include "{name}"\n'}))

    def test_a_circle_is_found_once(self):
        self.assertEqual(["circle of includes: core/a.h -> core/b.h -> core/a.h"],
                         self.findings({"core/a.h": '#include "core/b.h"\n', "core/b.h": '#include "core/a.h"\n',
                                        "core/c.h": '#include "core/a.h"\n'}))


HEADER = """MajorOSystemVersion\t4
MinorOSystemVersion\t0
MajorSubsystemVersion\t4
MinorSubsystemVersion\t0
DllCharacteristics\t00008140
\t\t\t\t\tTERMINAL_SERVICE_AWARE

"""
TABLE = """\tDLL Name: {}
\tvma:  Hint/Ord Member-Name Bound-To
\t{}

 0000e014\t0000e070 00000000 00000000 0000e6b8 0000e184
"""


class Imports(unittest.TestCase):
    def findings(self, text, waived=None):
        return list(imports.findings(text, {"kernel32": {"Beep"}}, waived or {}))

    def test_a_function_of_the_list_is_fine(self):
        self.assertEqual([], self.findings(HEADER + TABLE.format("KERNEL32.dll", "e2ec\t  277  Beep")))

    def test_a_function_outside_the_list_is_found(self):
        self.assertEqual(["KERNEL32.dll: GetTickCount64 is not known on both Windows 98 and NT4"],
                         self.findings(HEADER + TABLE.format("KERNEL32.dll", "e2ec\t  277  GetTickCount64")))

    def test_a_waiver_lets_one_function_through(self):
        waived = {("kernel32", "LoadLibraryW"): "harmless"}
        self.assertEqual([], self.findings(HEADER + TABLE.format("KERNEL32.dll", "1\t  2  LoadLibraryW"), waived))

    def test_an_import_by_number_is_found(self):
        self.assertEqual(["KERNEL32.dll: #413 is not known on both Windows 98 and NT4"],
                         self.findings(HEADER + TABLE.format("KERNEL32.dll", "e2ec\t 413  <none>")))

    def test_a_library_without_list_is_found(self):
        self.assertEqual(["wininet.dll: no list of its functions; load it at first use instead of importing it"],
                         self.findings(HEADER + TABLE.format("wininet.dll", "1\t  2  InternetOpenA")))

    def test_a_header_for_newer_systems_is_found(self):
        text = HEADER.replace("MajorSubsystemVersion\t4", "MajorSubsystemVersion\t5")
        self.assertEqual(["subsystem version in the header is 5.0 and must be 4.0"],
                         self.findings(text + TABLE.format("KERNEL32.dll", "1\t  2  Beep")))

    def test_a_header_without_the_flag_of_terminal_servers_is_found(self):
        for text in (HEADER.replace("00008140", "00000140"), HEADER.replace("DllCharacteristics", "Characteristics")):
            self.assertEqual(["the header does not say that the program knows terminal servers (linker option --tsaware)"],
                             self.findings(text + TABLE.format("KERNEL32.dll", "1\t  2  Beep")))

    def test_a_file_without_imports_is_found(self):
        self.assertIn("no imports found; is this a Windows program?", self.findings(HEADER))

    @unittest.skipUnless(shutil.which("i686-w64-mingw32-gcc-win32"), "the cross compiler is missing")
    def test_a_real_program_that_needs_windows_xp_is_found(self):
        source = "#include <windows.h>\nint main(void){HMODULE m;return GetModuleHandleExA(0,0,&m);}\n"
        with tempfile.TemporaryDirectory() as folder:
            program = folder + "/new.exe"
            subprocess.run(["i686-w64-mingw32-gcc-win32", "-Wl,--tsaware", "-D_WIN32_WINNT=0x0501", "-xc", "-", "-o", program],
                           input=source, text=True, check=True)
            done = subprocess.run([HERE / "check_imports", program], capture_output=True, text=True)
        self.assertEqual(1, done.returncode)
        self.assertIn("GetModuleHandleExA is not known on both Windows 98 and NT4", done.stdout)
        self.assertEqual(1, len(done.stdout.splitlines()), done.stdout)


@unittest.skipUnless(shutil.which("i686-w64-mingw32-gcc-win32"), "the cross compiler is missing")
class Hardening(unittest.TestCase):
    """Each option that protects, taken away from a small program."""

    SOURCE = "int main(int n,char**v){char t[20];int i=0;for(;v[0][i];++i)t[i]=v[0][i];return t[n];}\n"
    GUARD = "unsigned long long __stack_chk_guard=1;void __stack_chk_fail(void){for(;;);}\n"

    def build(self, *options, width="i686", guarded=True):
        """The findings in a program that is made with these options, and in its objects."""
        compiler = f"{width}-w64-mingw32-gcc-win32"
        with tempfile.TemporaryDirectory() as folder:
            watch = ["-fstack-protector-strong"] if guarded else []
            for name, source in (("main", self.SOURCE), ("guard", self.GUARD)):
                subprocess.run([compiler, *watch, "-c", "-xc", "-", "-o", f"{folder}/{name}.obj"], input=source, text=True, check=True)
            program = f"{folder}/small.exe"
            subprocess.run([compiler, "-s", *options, f"{folder}/main.obj", f"{folder}/guard.obj", "-o", program], check=True)
            done = subprocess.run([HERE / "check_hardening", program, folder], capture_output=True, text=True)
        lines = [line.partition(": ")[2] for line in done.stdout.splitlines()]
        self.assertEqual(1 if lines else 0, done.returncode, done.stderr)
        return lines

    def test_a_protected_program_passes_in_both_widths(self):
        for width in ("i686", "x86_64"):
            self.assertEqual([], self.build(width=width))

    def test_a_fixed_address_is_found(self):
        self.assertIn("the header does not allow any address (linker option --dynamicbase)",
                      self.build("-Wl,--disable-dynamicbase"))

    def test_a_program_that_cannot_be_moved_is_found(self):
        self.assertIn("the program has no relocations, so that Windows can't move it",
                      self.build("-Wl,--disable-dynamicbase", "-Wl,--disable-reloc-section"))

    def test_code_in_data_is_found(self):
        self.assertEqual(["the header does not forbid code in data (linker option --nxcompat)"],
                         self.build("-Wl,--disable-nxcompat"))

    def test_short_addresses_of_64_bits_are_found(self):
        self.assertEqual(["the header does not allow long addresses (linker option --high-entropy-va)"],
                         self.build("-Wl,--disable-high-entropy-va", width="x86_64"))

    def test_stacks_that_nobody_watches_are_found(self):
        for line in self.build(guarded=False):
            self.assertIn("the stacks are not watched", line)
        self.assertEqual(2, len(self.build(guarded=False)))

    def test_a_guard_of_somebody_else_is_found(self):
        self.assertEqual(["no object defines __stack_chk_guard: another library's would be taken"],
                         list(hardening.symbol_findings([("U", "__stack_chk_fail"), ("U", "__stack_chk_guard"),
                                                         ("T", "__stack_chk_fail")])))

    def test_bytes_behind_the_last_section_are_found(self):
        with tempfile.TemporaryDirectory() as folder:
            program = pathlib.Path(folder) / "small.exe"
            subprocess.run(["i686-w64-mingw32-gcc-win32", "-s", "-xc", "-", "-o", program], input="int main(void){return 0;}\n",
                           text=True, check=True)
            self.assertEqual([], list(hardening.header_findings(program.read_bytes())))
            self.assertEqual(["5 bytes lie behind the last section"],
                             list(hardening.header_findings(program.read_bytes() + b"12345")))

    def test_an_installer_may_have_what_its_maker_cannot_help_and_nothing_else(self):
        with tempfile.TemporaryDirectory() as folder:
            def findings(*options):
                program = pathlib.Path(folder) / "small.exe"
                subprocess.run(["i686-w64-mingw32-gcc-win32", "-s", *options, "-xc", "-", "-o", program], text=True, check=True,
                               input='int packed __attribute__((section(".ndata"))) = 1;int main(void){return packed;}\n')
                data = program.read_bytes() + b"the packed files"
                return list(hardening.header_findings(data)), list(hardening.header_findings(data, installer=True))

            of_others, of_installers = findings()
            self.assertEqual((["the section .ndata has an unusual name", "16 bytes lie behind the last section"], []),
                             (of_others, of_installers))
            self.assertEqual(["the header does not allow any address (linker option --dynamicbase)",
                              "the header does not forbid code in data (linker option --nxcompat)"],
                             findings("-Wl,--disable-dynamicbase", "-Wl,--disable-reloc-section", "-Wl,--disable-nxcompat")[1])

    def test_what_is_no_program_is_found(self):
        self.assertEqual(["no Windows program"], list(hardening.header_findings(b"#!/bin/sh")))


class OneDefinition(unittest.TestCase):
    """Two objects that are linked without a word."""

    def doubled(self, first, second):
        with tempfile.TemporaryDirectory() as folder:
            for name, source in (("first", first), ("second", second)):
                subprocess.run(["g++", "-c", "-O0", "-xc++", "-", "-o", f"{folder}/{name}.o"], input=source, text=True, check=True)
            return list(one_definition.doubled(one_definition.definitions(folder, ["first.o", "second.o"])))

    PLAIN = "bool same(int a){return a>1;}\n"
    INLINE = "inline bool same(int a){return a>2;} bool caller(int a){return same(a);}\n"

    def test_a_plain_and_an_inline_function_of_one_name_are_found(self):
        self.assertEqual(["_Z4samei"], self.doubled(self.PLAIN, self.INLINE))

    def test_one_of_a_file_alone_is_no_other(self):
        self.assertEqual([], self.doubled(self.PLAIN, self.INLINE.replace("inline", "static")))

    def test_other_arguments_make_another_function(self):
        self.assertEqual([], self.doubled(self.PLAIN, self.INLINE.replace("same(int a)", "same(char a)")))


class ClangLiterals(unittest.TestCase):
    """What clang reads in place of a source has the bytes that GCC makes of it, and as many lines."""

    def read_as(self, source):
        return literals.TOKEN.sub(literals.escaped, source)

    def test_texts_and_characters_have_the_bytes_of_windows_1252(self):
        self.assertEqual(r"""f("\374ber", "\200", '\344')""", self.read_as('f("über", "€", \'ä\')'))

    def test_a_digit_behind_an_escape_stays_a_digit(self):
        self.assertEqual(r'"\3441 \374f\n"', self.read_as(r'"ä1 üf\n"'))

    def test_a_raw_text_becomes_a_plain_one_of_as_many_lines(self):
        self.assertEqual('"a\\\\\\374\\"\\n"\n"b"', self.read_as('R"(a\\ü"\nb)"'))

    def test_wide_texts_names_comments_and_numbers_stay(self):
        for source in ('u"ü" U"ü" L"ü" u8"ü" u\'ü\' u"a\\"ü"', "cmdLöschen_Click();", '// "ü"', '/* "ü\n" */',
                       "f(1'000'000, ü, 1'0);"):
            self.assertEqual(source, self.read_as(source))

    def test_text_behind_a_number_with_marks_is_seen(self):
        self.assertEqual(r"""f(1'000, "\374")""", self.read_as('f(1\'000, "ü")'))

    def test_the_overlay_names_what_has_changed_and_nothing_else(self):
        with tempfile.TemporaryDirectory() as folder:
            top = pathlib.Path(folder).resolve()
            (top / "in").mkdir()
            (top / "in" / "a.cpp").write_text('"ü"', encoding="utf-8")
            (top / "in" / "b.cpp").write_text('// ü', encoding="utf-8")
            subprocess.run([HERE.parent / "fuzz" / "clang_literals", top / "out", top / "in"], check=True)
            roots = json.loads((top / "out" / "overlay.yaml").read_text(encoding="utf-8"))["roots"]
            self.assertEqual([str(top / "in" / "a.cpp")], [root["name"] for root in roots])
            self.assertEqual(r'"\374"', pathlib.Path(roots[0]["external-contents"]).read_text(encoding="utf-8"))


if __name__ == "__main__":
    unittest.main()
