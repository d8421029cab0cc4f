"""The test programs of the tree "mutants": built once, linked anew with a changed object, and run shut away.

Each test runs in a process of its own (each_test.cpp). The programs see the whole file system read-only, an empty /tmp and
no network but their own, so that a change that deletes the wrong file deletes nothing.
"""

import json
import os
import pathlib
import re
import shlex
import shutil
import subprocess

TOP = pathlib.Path(__file__).resolve().parents[2]
TREE = TOP / "build" / "mutants"
HERE = pathlib.Path(__file__).resolve().parent
TOOL = "bromvale-offline"
LINKERS = ("mold", "lld", "gold")
MOST_MEMORY = 6 << 30  # bytes, of each process

EVERY = ["core", "base", "contract", "startup", "scanner", "cleanup", "uninstall", "repair", "ui", "scripts", "offline", "rescue", "hives",
         "internet", "proof"]
# Whom a source's folder is first asked of, the most particular folder first.
OWN = {
    "platform/offline/hives": ["hives", "rescue"],
    "platform/offline/registry": ["offline", "contract", "hives"],
    "platform/offline/network": ["offline", "internet"],
    "platform/offline": ["offline", "contract"],
    "core/startup": ["startup"],
}
# Suites of many seconds that are asked about nothing but what is theirs: those of raw hives, and one that waits for servers.
PARTICULAR = {"rescue", "hives", "internet", "offline"}


def suites_for(path):
    """Suites in the order in which they are asked about a source."""
    folder = path.rpartition("/")[0]
    while folder and folder not in OWN and folder not in EVERY:
        folder = folder.rpartition("/")[0]
    own = OWN.get(folder, [folder] if folder else [])
    if own == ["hives", "rescue"]:
        return [*own, "offline"]
    return own + [suite for suite in EVERY if suite not in own and suite not in PARTICULAR]


class Tree:
    """The tree, up to date, with what ninja knows about its programs."""

    def __init__(self):
        missing = [tool for tool in ("bwrap", "ninja", "prlimit") if not shutil.which(tool)]
        if missing:
            raise SystemExit(f"mutate: {', '.join(missing)} not installed (scripts/install-tools.sh native)")
        self.linker = next((name for name in LINKERS if shutil.which(name if name == "mold" else f"ld.{name}")), None)
        subprocess.run(["cmake", "--preset", "mutants", "--log-level=ERROR"], cwd=TOP, check=True, stdout=subprocess.DEVNULL)
        targets = [f"test_{suite}" for suite in EVERY if suite != "scripts"] + [TOOL]
        subprocess.run(["ninja", "-C", TREE, "--quiet", *targets], check=True)
        self.compilations = {}
        for entry in json.loads((TREE / "compile_commands.json").read_text()):
            self.compilations[os.path.relpath(entry["file"], TOP)] = shlex.split(entry["command"])
        self.links = {target: self.link_words(target) for target in targets}
        self.objects = self.frozen()
        self.main = TREE / "each_test.o"
        subprocess.run(["g++", "-std=c++20", "-O1", "-c", HERE / "each_test.cpp", "-o", self.main], check=True)

    def frozen(self):
        """The folder of a copy of all objects: the tree may be built anew while changes are tried."""
        folder = TREE / "work" / "objects"
        shutil.rmtree(folder, ignore_errors=True)
        for word in {word for words in self.links.values() for word in words if word.endswith(".o")}:
            (folder / word).parent.mkdir(parents=True, exist_ok=True)
            shutil.copy2(TREE / word, folder / word)
        return folder

    def link_words(self, target):
        said = subprocess.run(["ninja", "-C", TREE, "-t", "commands", target], check=True, capture_output=True, text=True).stdout
        line = said.strip().splitlines()[-1]
        words = shlex.split(re.sub(r"^: && (.*?) &&.*$", r"\1", line))
        return words[words.index("c++") if "c++" in words else next(i for i, w in enumerate(words) if w.endswith("c++")):]

    def object_of(self, path):
        words = self.compilations[path]
        return words[words.index("-o") + 1]


class Workshop:
    """A folder for one change at a time. Several work beside each other."""

    def __init__(self, tree, number):
        self.tree, self.folder = tree, TREE / "work" / str(number)
        shutil.rmtree(self.folder, ignore_errors=True)
        self.folder.mkdir(parents=True)
        self.object = self.folder / "changed.o"

    def compiles(self, path, text):
        words = list(self.tree.compilations[path])
        source = self.folder / path
        source.parent.mkdir(parents=True, exist_ok=True)
        source.write_text(text, encoding="utf-8")
        words[words.index("-o") + 1] = str(self.object)
        words[words.index("-c") + 1] = str(source)
        return subprocess.run([word for word in words if word != "ccache" and not word.endswith("/ccache")], cwd=TREE, capture_output=True).returncode == 0

    def link(self, target, path=None):
        """The program with the changed object in its place; None where it holds no such object."""
        words, old = list(self.tree.links[target]), self.tree.object_of(path) if path else None
        if old and old not in words:
            return None
        program = self.folder / target
        words = [str(self.object) if word == old else word for word in words]
        words[words.index("-o") + 1] = str(program)
        if target != TOOL:
            words.insert(1, str(self.tree.main))
        if self.tree.linker:
            words.append(f"-fuse-ld={self.tree.linker}")
        done = subprocess.run(words, cwd=self.tree.objects, capture_output=True, text=True)
        return program if done.returncode == 0 else None

    def shut_away(self, *words, seconds):
        """What a program prints and its end, or None for the end where it took too long."""
        box = ["bwrap", "--ro-bind", "/", "/", "--dev", "/dev", "--proc", "/proc", "--tmpfs", "/tmp", "--ro-bind", TOP, TOP,
               "--unshare-pid", "--unshare-net", "--die-with-parent", "--chdir", "/tmp"]
        tool = self.folder / TOOL
        if tool.exists():
            box += ["--ro-bind", tool, TREE / TOOL]
        box += ["prlimit", f"--as={MOST_MEMORY}", "--core=0", f"--fsize={1 << 30}"]
        process = subprocess.Popen([*map(str, box), *map(str, words)], stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                   stderr=subprocess.DEVNULL, text=True, errors="replace")
        try:
            return process.communicate(timeout=seconds)[0], process.returncode
        except subprocess.TimeoutExpired:
            return "", None
        finally:
            process.kill()
            process.wait()

    def scripts(self):
        return sorted((TOP / "tests" / "scripts").glob("*.script"))

    def compare(self, script, seconds):
        return self.shut_away(TOP / "tests/scripts/compare", TREE / TOOL, script, seconds=seconds)[1]
