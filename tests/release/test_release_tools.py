#!/usr/bin/env python3
"""The tools that make a release, on small samples: debug information, bill of materials, manifests, and what is refused."""

import importlib.machinery
import importlib.util
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

import jsonschema

sys.dont_write_bytecode = True
TOP = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(TOP / "packaging"))
import program_file  # noqa: E402

SOURCE = """#include <stdio.h>
__attribute__((noinline)) int
known_function(int value) {
    return value * 3 + printf("x");
}
int main(int count, char **words) { (void)words; return known_function(count); }
"""
COMPILERS = {"i686-w64-mingw32-gcc-win32": "i686-w64-mingw32-nm", "x86_64-w64-mingw32-gcc-win32": "x86_64-w64-mingw32-nm", "gcc": "nm"}


def run(*words, **options):
    return subprocess.run([str(word) for word in words], capture_output=True, text=True, cwd=TOP, **options)


class Folder(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def file(self, name, text):
        path = self.folder / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text)
        return path


class Symbols(Folder):
    def make(self, compiler, source=SOURCE):
        """A program as it is shipped, and the other one."""
        code = self.file("sample.c", source)
        program, debug = self.folder / "sample.exe", self.folder / "debug.exe"
        common = [compiler, "-g", "-O1", f"-ffile-prefix-map={self.folder}=/bromvale", code, "-Wl,--build-id"]
        stamp = ["-Wl,--no-insert-timestamp"] if "mingw" in compiler else []
        subprocess.run([*common, *stamp, "-s", "-o", program], check=True)
        subprocess.run([*common, *stamp, "-o", debug], check=True)
        return program, debug

    def archive(self, program, debug):
        said = run("packaging/check-symbols", program, debug, check=True).stdout.strip()
        named = self.folder / f"sample-x.{said}.debug"
        shutil.copy(debug, named)
        archive = self.folder / "symbols.zip"
        subprocess.run(["zip", "-q", "-j", archive, named], check=True)
        return archive, said

    def test_an_address_becomes_file_and_line_in_each_width(self):
        for compiler, nm in COMPILERS.items():
            with self.subTest(compiler):
                program, debug = self.make(compiler)
                archive, identity = self.archive(program, debug)
                symbols = run(nm, debug, check=True).stdout
                address = int(re.search(r"^([0-9a-f]+) T _?known_function$", symbols, re.M).group(1), 16)
                base = program_file.read(program).base
                for words in ([program, hex(address)], [identity, hex(address)], [identity[:8], hex(address)],
                              [identity.upper(), hex(address - base)], [program, "--base", hex(base + 0x70000), hex(address + 0x70000)]):
                    done = run("scripts/symbolize", archive, *words)
                    self.assertEqual(0, done.returncode, done.stderr)
                    self.assertIn("known_function at sample.c:3", done.stdout)

    def test_the_shipped_program_has_no_symbols_and_usual_names_of_sections(self):
        for compiler in COMPILERS:
            program, _ = self.make(compiler)
            names = [name for name, _ in program_file.read(program).sections]
            self.assertEqual([], [name for name in names if name.startswith("/") or "debug" in name or "symtab" in name])
            self.assertTrue(".buildid" in names or ".note.gnu.build-id" in names)

    def test_debug_information_of_another_program_is_refused(self):
        program, _ = self.make("gcc")
        kept = shutil.copy(program, self.folder / "kept")
        _, debug = self.make("gcc", SOURCE.replace("* 3", "* 5"))
        done = run("packaging/check-symbols", kept, debug)
        self.assertEqual(1, done.returncode)
        self.assertIn("is not of", done.stderr)

    def test_a_program_that_the_archive_does_not_have_is_told(self):
        program, debug = self.make("gcc")
        archive, _ = self.archive(program, debug)
        for word, told in (("00000000", "no program of build id"), ("nothing.exe", "neither a file nor a build id")):
            done = run("scripts/symbolize", archive, word, "1000")
            self.assertEqual(1, done.returncode)
            self.assertIn(told, done.stderr)


# What SPDX 2.3 requires of a document in JSON, written for this test: the fields that it calls mandatory, and our kinds of values.
TEXT = {"type": "string", "minLength": 1}
ID = {"type": "string", "pattern": "^SPDXRef-[A-Za-z0-9.-]+$"}
CHECKSUM = {"type": "object", "required": ["algorithm", "checksumValue"], "additionalProperties": False,
            "properties": {"algorithm": {"enum": ["SHA1", "SHA256"]}, "checksumValue": {"type": "string", "pattern": "^[0-9a-f]{40,64}$"}}}
SPDX = {
    "type": "object",
    "required": ["spdxVersion", "dataLicense", "SPDXID", "name", "documentNamespace", "creationInfo", "packages", "files", "relationships"],
    "properties": {
        "spdxVersion": {"const": "SPDX-2.3"}, "dataLicense": {"const": "CC0-1.0"}, "SPDXID": {"const": "SPDXRef-DOCUMENT"}, "name": TEXT,
        "documentNamespace": {"type": "string", "pattern": "^https://[^#]+$"},
        "creationInfo": {"type": "object", "required": ["created", "creators"], "properties": {
            "created": {"type": "string", "pattern": r"^\d{4}-\d\d-\d\dT\d\d:\d\d:\d\dZ$"},
            "creators": {"type": "array", "minItems": 1, "items": {"type": "string", "pattern": "^(Tool|Organization|Person): "}}}},
        "packages": {"type": "array", "minItems": 2, "items": {
            "type": "object", "required": ["SPDXID", "name", "versionInfo", "downloadLocation", "licenseConcluded", "licenseDeclared",
                                           "copyrightText"],
            "properties": {"SPDXID": ID, "name": TEXT, "versionInfo": TEXT, "filesAnalyzed": {"const": False},
                           "supplier": {"type": "string", "pattern": "^(Organization|Person): "}}}},
        "files": {"type": "array", "minItems": 1, "items": {
            "type": "object", "required": ["SPDXID", "fileName", "checksums", "licenseConcluded", "copyrightText"],
            "properties": {"SPDXID": ID, "fileName": {"type": "string", "pattern": r"^\./"},
                           "checksums": {"type": "array", "items": CHECKSUM, "contains": {"properties": {"algorithm": {"const": "SHA1"}}}}}}},
        "relationships": {"type": "array", "minItems": 1, "items": {
            "type": "object", "required": ["spdxElementId", "relationshipType", "relatedSpdxElement"],
            "properties": {"spdxElementId": ID, "relatedSpdxElement": ID,
                           "relationshipType": {"enum": ["DESCRIBES", "CONTAINS", "STATIC_LINK", "DYNAMIC_LINK"]}}}},
    },
}


class Papers(Folder):
    NAMES = ("Bromvale-9.8.7-setup.exe", "Bromvale-9.8.7-portable.zip", "bromvale-offline_9.8.7_amd64.deb", "bromvale-9.8.7.tar.xz")

    def bill(self):
        files = [self.file(name, name) for name in self.NAMES]
        output = self.folder / "bill.json"
        done = run("packaging/make-sbom", "9.8.7", "86400", "www.example.org", output, *files)
        self.assertEqual(0, done.returncode, done.stderr)
        return json.loads(output.read_text())

    def test_the_bill_of_materials_has_what_spdx_requires(self):
        bill = self.bill()
        jsonschema.Draft7Validator.check_schema(SPDX)
        jsonschema.validate(bill, SPDX)
        elements = [bill["SPDXID"]] + [each["SPDXID"] for each in bill["packages"] + bill["files"]]
        self.assertEqual(len(elements), len(set(elements)), "an id stands twice")
        for relation in bill["relationships"]:
            self.assertIn(relation["spdxElementId"], elements)
            self.assertIn(relation["relatedSpdxElement"], elements)
        self.assertEqual("1970-01-02T00:00:00Z", bill["creationInfo"]["created"])

    def test_the_bill_names_each_file_and_what_is_in_it(self):
        bill = self.bill()
        self.assertEqual(sorted("./" + name for name in self.NAMES), sorted(file["fileName"] for file in bill["files"]))
        names = {package["SPDXID"]: package["name"] for package in bill["packages"]}
        inside = {file["fileName"]: {names[relation["relatedSpdxElement"]] for relation in bill["relationships"]
                                     if relation["spdxElementId"] == file["SPDXID"]} for file in bill["files"]}
        self.assertIn("nsis", inside["./" + self.NAMES[0]])
        self.assertIn("g++-mingw-w64-i686-win32", inside["./" + self.NAMES[1]])
        self.assertEqual({"libc6", "libgcc-s1", "libstdc++6", "libhivex0", "libcreg1"}, inside["./" + self.NAMES[2]])
        self.assertEqual(set(), inside["./" + self.NAMES[3]])
        self.assertEqual({"MIT"}, {package["licenseDeclared"] for package in bill["packages"] if package["name"] == "Bromvale"})

    def test_filled_manifests_pass_and_hold_the_sums(self):
        version = run("scripts/version").stdout.strip()
        self.file(f"Bromvale-{version}-setup.exe", "setup")
        self.file(f"Bromvale-{version}-portable.zip", "portable")
        done = run("packaging/manifests/fill", version, "www.example.org", self.folder, self.folder / "out")
        self.assertEqual(0, done.returncode, done.stdout + done.stderr)
        texts = {file.name: file.read_text() for file in (self.folder / "out").iterdir()}
        self.assertEqual(4, len(texts))
        sums = run("sha256sum", self.folder / f"Bromvale-{version}-setup.exe").stdout.split()[0].upper()
        self.assertEqual(2, texts["Bromvale.Bromvale.installer.yaml"].count(sums))
        self.assertIn(f"https://www.example.org/download/Bromvale-{version}-portable.zip", texts["bromvale.json"])

    def test_faulty_manifests_are_found(self):
        loader = importlib.machinery.SourceFileLoader("fill", str(TOP / "packaging/manifests/fill"))
        fill = importlib.util.module_from_spec(importlib.util.spec_from_loader("fill", loader))
        loader.exec_module(fill)
        good = (TOP / "packaging/manifests/winget/Bromvale.Bromvale.yaml").read_text().replace("@VERSION@", "1.2.3")
        self.assertEqual([], fill.faults("Bromvale.Bromvale.yaml", good))
        for text in (good.replace("1.2.3", "@VERSION@"), good + "Other: 1\n", good.replace("DefaultLocale: de-DE\n", ""),
                     good.replace("ManifestType: version", "ManifestType: installer")):
            self.assertEqual(1, len(fill.faults("Bromvale.Bromvale.yaml", text)), text)


class Refusals(Folder):
    """scripts/release on a repository of its own, up to where it would begin."""

    def setUp(self):
        super().setUp()
        for name in ("scripts/release", "scripts/version", "packaging/changelog.py", "CHANGELOG.md", "CMakeLists.txt"):
            (self.folder / name).parent.mkdir(exist_ok=True)
            shutil.copy(TOP / name, self.folder / name)
        # Nothing more is done here than to look whether it would go on.
        tools = self.file("scripts/install-tools.sh", "#!/bin/sh\necho tools\nexit 1\n")
        tools.chmod(0o755)
        self.git("init", "-q")
        self.commit()

    def git(self, *words):
        subprocess.run(["git", "-c", "user.name=a", "-c", "user.email=a@a.example", *words], cwd=self.folder, check=True, capture_output=True)

    def commit(self):
        self.git("add", "-A")
        self.git("commit", "-qm", "all", "--allow-empty")

    def said(self, *words, **variables):
        done = subprocess.run(["scripts/release", *words], cwd=self.folder, capture_output=True, text=True, env={**os.environ, **variables})
        self.assertNotEqual(0, done.returncode)
        return done.stdout + done.stderr

    def test_a_clean_tree_goes_on_and_says_when_it_is_no_release(self):
        self.assertEqual("tools\nNo release: its tools are missing\n", self.said())
        self.assertIn("*** THIS IS NOT A RELEASE: the tests were not run", self.said("--without-tests"))

    def test_a_dirty_tree_is_refused(self):
        self.file("new.txt", "x")
        self.assertIn("No release: the tree is not what is committed", self.said())
        self.commit()
        self.file("new.txt", "y")
        self.assertIn("No release: the tree is not what is committed", self.said("--without-tests"))

    def test_a_version_without_its_entry_is_refused(self):
        rules = self.folder / "CMakeLists.txt"
        rules.write_text(re.sub(r"VERSION \d+\.\d+\.\d+ ", "VERSION 99.0.0 ", rules.read_text(), count=1))
        self.commit()
        self.assertIn("No release: version 99.0.0 is not told in CHANGELOG.md", self.said())

    def test_tests_that_fail_are_refused(self):
        self.file("scripts/install-tools.sh", "#!/bin/sh\n").chmod(0o755)
        self.file("test.sh", "#!/bin/sh\nexit 1\n").chmod(0o755)
        self.commit()
        self.assertIn("No release: tests fail", self.said())

    def test_a_version_that_is_another_commit_is_refused(self):
        version = run("scripts/version").stdout.strip()
        self.git("tag", f"v{version}")
        self.assertIn("its tools are missing", self.said())
        self.file("new.txt", "x")
        self.commit()
        self.assertIn(f"No release: v{version} is another commit", self.said())
        self.assertIn("its tools are missing", self.said("--without-tests"))

    def test_another_folder_or_repository_of_the_environment_is_none_of_ours(self):
        self.file("new.txt", "x")
        other = self.folder.parent / (self.folder.name + "-other")
        self.addCleanup(shutil.rmtree, other)
        (other / "scripts").mkdir(parents=True)
        subprocess.run(["git", "init", "-q", other], check=True)
        for name, value in {"CDPATH": other, "GIT_DIR": other / ".git", "GIT_INDEX_FILE": other / "index"}.items():
            self.assertIn("No release: the tree is not what is committed", self.said(**{name: str(value)}))
        self.git("config", "status.showUntrackedFiles", "no")
        self.assertIn("No release: the tree is not what is committed", self.said())

    def test_a_key_that_is_not_there_is_refused(self):
        self.assertIn("there is no key nothing", self.said("--key", "nothing"))

    def test_wrong_use_is_told(self):
        self.assertIn("scripts/release", self.said("--quick"))


class Environment(Folder):
    """Functions of scripts/release, by themselves."""

    def function(self, name):
        return re.search(rf"^{name}\(\) \{{.*?^\}}", (TOP / "scripts/release").read_text(), re.M | re.S).group(0)

    def test_nothing_that_changes_what_compilers_and_packers_do_is_left(self):
        hostile = {name: "-x" for name in """CC CXX CFLAGS CXXFLAGS CPPFLAGS LDFLAGS RCFLAGS CPATH CPLUS_INCLUDE_PATH LIBRARY_PATH GZIP XZ_OPT
            ZIP ZIPOPT TAR_OPTIONS DESTDIR NSISDIR CMAKE_GENERATOR CMAKE_BUILD_TYPE CMAKE_PREFIX_PATH CMAKE_INSTALL_MODE CMAKE_TOOLCHAIN_FILE
            CMAKE_CXX_FLAGS""".split()}
        script = f"set -u; epoch=5; {self.function('set_environment')}; set_environment; env; umask"
        own = {"TZ": "Asia/Tokyo", "LC_ALL": "C.UTF-8", "SOURCE_DATE_EPOCH": "1", "CMAKE_CXX_COMPILER_LAUNCHER": "ccache"}
        left = subprocess.run(["bash", "-c", script], env={"PATH": os.environ["PATH"], **own, **hostile}, check=True, capture_output=True, text=True).stdout
        for name in hostile:
            self.assertNotRegex(left, rf"(?m)^{name}=")
        for line in ("TZ=UTC", "LC_ALL=C", "SOURCE_DATE_EPOCH=5", "CMAKE_CXX_COMPILER_LAUNCHER=ccache", "0022"):
            self.assertIn(line, left.splitlines())

    def test_the_packed_sources_are_those_that_are_committed_whatever_git_is_told(self):
        self.file(".gitattributes", "* text=auto\n*.reg -text\n")
        self.file("a/name with blanks.txt", "one\ntwo\n")
        self.file("b.reg", "one\r\ntwo\n")
        git = ["git", "-c", "user.name=a", "-c", "user.email=a@a.example"]
        for words in (["init", "-q"], ["add", "-A"], ["commit", "-qm", "all"]):
            subprocess.run([*git, *words], cwd=self.folder, check=True, capture_output=True)
        script = f"set -u; work=$1 out=$1 version=1 epoch=5 source=$1/bromvale-1; {self.function('make_source')}; make_source"
        packed = set()
        for setting in ("core.autocrlf=input", "core.autocrlf=true", "core.eol=crlf", "tar.umask=077"):
            name, value = setting.split("=")
            subprocess.run(["git", "config", name, value], cwd=self.folder, check=True)
            with tempfile.TemporaryDirectory(prefix="with blanks ") as work:
                subprocess.run(["bash", "-c", script, "bash", work], cwd=self.folder, check=True, capture_output=True)
                packed.add((pathlib.Path(work) / "bromvale-1.tar.xz").read_bytes())
            self.assertEqual(1, len(packed), setting)
            subprocess.run(["git", "config", "--unset", name], cwd=self.folder, check=True)


class Signature(Folder):
    def test_a_throw_away_key_signs_the_same_each_time_and_a_changed_file_is_noticed(self):
        key, public = self.folder / "key", self.folder / "key.pub"
        subprocess.run(["minisign", "-G", "-W", "-s", key, "-p", public], check=True, capture_output=True)
        sums = self.file("SHA256SUMS", "sums\n")
        sign = re.search(r"^    minisign (-S .*)$", (TOP / "scripts/release").read_text(), re.M).group(1)
        signatures = set()
        for _ in range(2):
            subprocess.run(["bash", "-c", f"key={key} out={self.folder} version=1.2.3; minisign {sign}"], check=True, capture_output=True)
            signatures.add((self.folder / "SHA256SUMS.minisig").read_bytes())
        self.assertEqual(1, len(signatures))
        verify = ["minisign", "-V", "-p", public, "-m", sums]
        self.assertEqual(0, subprocess.run(verify, capture_output=True).returncode)
        sums.write_text("others\n")
        self.assertNotEqual(0, subprocess.run(verify, capture_output=True).returncode)


if __name__ == "__main__":
    unittest.main()
