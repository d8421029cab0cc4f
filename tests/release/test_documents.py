#!/usr/bin/env python3
"""What bromvale-offline is delivered with tells the same as its help: tests/release/test_documents.py BROMVALE-OFFLINE

Also: what becomes of CHANGELOG.md, and LIESMICH.txt.
"""
import gzip
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

sys.dont_write_bytecode = True
TOP = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(TOP / "packaging"))
import changelog  # noqa: E402

PROGRAM = pathlib.Path(sys.argv.pop(1)).resolve() if len(sys.argv) > 1 else sys.exit(__doc__.strip())
HELP = subprocess.run([PROGRAM, "--help"], capture_output=True, text=True, check=True).stdout
VERSION = subprocess.run([TOP / "scripts" / "version"], capture_output=True, text=True, check=True).stdout.strip()
OPTIONS = set(re.findall(r"^  (--[a-z-]+)", HELP, re.M))


def actions_of_help():
    """They stand in two columns, the second below the first line's."""
    lines = HELP.split("Actions of a script", 1)[1].split("Everything that", 1)[0].splitlines()[2:]
    second = lines[0].index("print NAME")
    columns = [line[2:] for line in lines] + [line[second:] for line in lines if line[second - 2:second] == "  "]
    return {column.split()[0] for column in columns if column.strip()}


class Page(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        subprocess.run([TOP / "packaging/debian/make-documents", VERSION, cls.folder.name], check=True)
        cls.page = gzip.decompress((pathlib.Path(cls.folder.name) / "bromvale-offline.1.gz").read_bytes()).decode()
        cls.shown = subprocess.run(["man", "--warnings", "-l", cls.folder.name + "/bromvale-offline.1.gz"], capture_output=True, text=True,
                                   env={**os.environ, "LC_ALL": "C.UTF-8", "MANWIDTH": "120", "MAN_KEEP_FORMATTING": ""})

    @classmethod
    def tearDownClass(cls):
        cls.folder.cleanup()

    def test_every_option_has_its_paragraph_and_no_other_one_has(self):
        described = set(re.findall(r"^\.TP\n\.BR?I? .*?(\\-\\-[a-z\\-]+)", self.page, re.M))
        self.assertEqual(OPTIONS, {option.replace("\\", "") for option in described})

    def test_every_action_has_its_paragraph_and_no_other_one_has(self):
        found = actions_of_help()
        self.assertGreater(len(found), 15)
        scripts = self.page.split(".SH SCRIPTS", 1)[1].split(".SH", 1)[0]
        self.assertEqual(found, set(re.findall(r"^\.TP\n\.(?:BI|BR|B) ([a-z]+)", scripts, re.M)))

    def test_it_is_shown_without_a_warning_and_names_the_version(self):
        self.assertEqual((0, ""), (self.shown.returncode, self.shown.stderr))
        self.assertIn(f"Bromvale {VERSION}", self.shown.stdout)
        self.assertNotIn("@", self.shown.stdout)

    def test_each_exit_status_of_the_help_is_there(self):
        section = self.page.split(".SH EXIT STATUS", 1)[1].split(".SH", 1)[0]
        self.assertEqual(["0", "1", "2", "3", "4"], re.findall(r"^\.B (\d)", section, re.M))
        self.assertIn("0 done, 1 an action of the script could not be done, 2 wrong option or unreadable file, 3 faults found", HELP)

    def test_the_same_sources_give_the_same_bytes(self):
        with tempfile.TemporaryDirectory() as other:
            subprocess.run([TOP / "packaging/debian/make-documents", VERSION, other], check=True,
                           env={**os.environ, "TZ": "Asia/Tokyo", "LC_ALL": "C"})
            for file in pathlib.Path(other).iterdir():
                self.assertEqual(file.read_bytes(), (pathlib.Path(self.folder.name) / file.name).read_bytes(), file.name)


class Completion(unittest.TestCase):
    def complete(self, *words):
        script = ". packaging/debian/bash-completion\nCOMP_WORDS=(bromvale-offline \"$@\") COMP_CWORD=$#\n" \
                 "_bromvale_offline\nprintf '%s\\n' \"${COMPREPLY[@]}\"\n"
        done = subprocess.run(["bash", "-uc", script, "bash", *words], capture_output=True, text=True, cwd=TOP, check=True)
        self.assertEqual("", done.stderr)
        return set(done.stdout.split("\n")) - {""}

    def test_every_option_is_completed_and_nothing_that_is_none(self):
        self.assertEqual(OPTIONS | {"--", "-h"}, self.complete(""))
        for option in OPTIONS:
            self.assertIn(option, self.complete(option[:4]), option)

    def test_values_are_completed(self):
        self.assertEqual({"de", "en"}, self.complete("--locale", ""))
        self.assertEqual({"en"}, self.complete("--locale", "=", "e"))
        self.assertEqual({"de", "en"}, self.complete("--locale", "="))
        self.assertEqual({"Windows\\ 98", "Windows\\ 98\\ SE"}, self.complete("--os", "Windows\\ 98"))
        self.assertIn("CHANGELOG.md", self.complete("--registry", "CH"))
        self.assertEqual({"C:="}, self.complete("--drive", "C"))

    def test_every_system_that_is_offered_is_known(self):
        for name in self.complete("--os", ""):
            done = subprocess.run([PROGRAM, "--os", name.replace("\\ ", " "), "--help"], capture_output=True)
            self.assertEqual(0, done.returncode, name)
        self.assertEqual(set(re.findall(r'"(Windows [^"]+)"', HELP)), {name.replace("\\ ", " ") for name in self.complete("--os", "")})

    def test_the_other_programs_command_line_is_left_alone(self):
        self.assertEqual(set(), self.complete("--", "-"))


class Changelog(unittest.TestCase):
    def test_the_version_has_its_entry(self):
        self.assertTrue(any(changelog.entry(VERSION).groups.values()))

    def test_a_version_without_entry_date_or_content_is_refused(self):
        for text in ("## [Unreleased]\n\n### Added\n\n- new\n", "## [9.9.9]\n\n### Added\n\n- new\n", "## [9.9.9] - 2026-01-02\n\n### Added\n",
                     "## [9.9.90] - 2026-01-02\n\n### Added\n\n- new\n"):
            with self.assertRaises(SystemExit, msg=text):
                changelog.entry("9.9.9", text)

    def test_items_belong_to_their_version(self):
        found = changelog.entries("# C\n\n## [Unreleased]\n\n### Added\n\n- no\n\n## [2.0.0] - 2026-01-02\n\nWords.\n\n### Fixed\n\n- one\n  goes on\n- two\n"
                                  "\n## [1.0.0] - 2026-01-01\n\n### Added\n\n- three\n")
        self.assertEqual([("2.0.0", {"Fixed": ["one goes on", "two"]}), ("1.0.0", {"Added": ["three"]})],
                         [(entry.version, entry.groups) for entry in found])

    def test_debians_form_of_it_is_read_by_its_own_reader(self):
        with tempfile.TemporaryDirectory() as folder:
            subprocess.run([TOP / "packaging/debian/make-documents", VERSION, folder], check=True)
            text = gzip.decompress((pathlib.Path(folder) / "changelog.gz").read_bytes())
        done = subprocess.run(["dpkg-parsechangelog", "-l-", "-SVersion"], input=text, capture_output=True)
        self.assertEqual((0, VERSION, ""), (done.returncode, done.stdout.decode().strip(), done.stderr.decode()))


class ReadMe(unittest.TestCase):
    def test_the_projects_first_page_offers_this_version(self):
        text = (TOP / "README.md").read_text(encoding="utf-8")
        self.assertEqual({VERSION}, set(re.findall(r"[Bb]romvale-(?:offline_)?(\d+\.\d+\.\d+)", text)))

    def test_old_editors_can_show_it(self):
        with tempfile.TemporaryDirectory() as folder:
            file = pathlib.Path(folder) / "LIESMICH.txt"
            subprocess.run([TOP / "packaging/portable/make-readme", VERSION, file], check=True)
            data = file.read_bytes()
        lines = data.decode("cp1252").split("\r\n")
        self.assertNotIn(b"\n", data.replace(b"\r\n", b""))
        self.assertEqual([], [line for line in lines if len(line) > 78])
        self.assertIn(f"Bromvale-{VERSION}-setup.exe", data.decode("cp1252"))
        self.assertEqual([], [line for line in lines if re.search(r"[*`@]|^#", line)])
        headings = re.findall(r"^#+ (.*)$", (TOP / "docs/benutzen.md").read_text(encoding="utf-8"), re.M)
        self.assertEqual([], [heading for heading in headings if heading not in lines])


if __name__ == "__main__":
    unittest.main()
