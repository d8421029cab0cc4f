#!/usr/bin/env python3
"""Tests of the checks themselves: a check that finds nothing in a bad sample is worth nothing."""

import importlib.machinery
import importlib.util
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

sys.dont_write_bytecode = True
HERE = pathlib.Path(__file__).resolve().parent


def load(name):
    loader = importlib.machinery.SourceFileLoader(name, str(HERE / name))
    module = importlib.util.module_from_spec(importlib.util.spec_from_loader(name, loader))
    loader.exec_module(module)
    return module


layering = load("check_layering")
imports = load("check_imports")


class Layering(unittest.TestCase):
    def findings(self, files):
        with tempfile.TemporaryDirectory() as folder:
            top = pathlib.Path(folder)
            for path, text in files.items():
                (top / path).parent.mkdir(parents=True, exist_ok=True)
                (top / path).write_text(text, encoding="utf-8")
            return list(layering.findings(top))

    def test_includes_that_point_down_are_fine(self):
        self.assertEqual([], self.findings({
            "core/log.cpp": '#include "core/log.h"\n#include "platform/files.h"\n#include <string>\n',
            "scanner/scan.cpp": '#include "repair/restart.h"\n#include "ui/form.h"\n',
            "core/startup/main.cpp": '#include "scanner/scan.h"\n#include "platform/win32/entry.h"\n',
            "platform/registry.h": '#include "platform/win32/system/windows.h"\n',
            "platform/win32/system/windows.h": "#include <windows.h>\n",
            "platform/offline/load.cpp": "#include <fstream>\n"}))

    def test_an_include_that_points_up_is_found(self):
        self.assertEqual(['core/log.cpp:2: "ui/form.h" points upward'],
                         self.findings({"core/log.cpp": '\n#include "ui/form.h"\n'}))

    def test_nobody_knows_start_up(self):
        self.assertEqual(['ui/form.cpp:1: "core/startup/main.h" points upward'],
                         self.findings({"ui/form.cpp": '#include "core/startup/main.h"\n'}))

    def test_features_know_each_other_only_along_the_named_edges(self):
        self.assertEqual(['repair/undo.cpp:1: "scanner/scan.h": repair does not know scanner'],
                         self.findings({"repair/undo.cpp": '#include "scanner/scan.h"\n'}))

    def test_windows_headers_stay_in_their_provider(self):
        self.assertEqual(["ui/tray.cpp:1: <windows.h> belongs into platform/win32 alone",
                          'ui/tray.cpp:2: "platform/win32/system/windows.h" lies behind the seam; '
                          "include the header in platform/"],
                         self.findings({"ui/tray.cpp": '#include <windows.h>\n#include "platform/win32/system/windows.h"\n'}))

    def test_library_parts_that_old_systems_cannot_load_are_found(self):
        self.assertEqual(["core/log.cpp:1: <fstream> keeps Bromvale.exe from loading on Windows 98 and NT4"],
                         self.findings({"core/log.cpp": "#include <fstream>\n"}))

    def test_an_include_without_its_folder_is_found(self):
        self.assertEqual(['core/log.cpp:1: "log.h" is not written from the project folder'],
                         self.findings({"core/log.cpp": '#include "log.h"\n'}))

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


if __name__ == "__main__":
    unittest.main()
