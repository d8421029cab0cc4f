"""How long each test takes when nothing is changed: the order in which tests are asked, and the limits of their time."""

import hashlib
import json
import os
import re
import time

from programs import EVERY, TOOL, TOP, TREE

MOST_SECONDS = 120  # of a test when nothing is changed


def limit(seconds):
    """A change may make a test slower, and the machine may be busy; what is beyond that doesn't end."""
    return 5 + 10 * seconds


def all_seconds(tests):
    return sum(took for took, _ in tests.values())


def ordered(tests, path):
    """Those first whose source has a word of the changed source's name, then those that are quick."""
    words = set(re.findall(r"[^_/.]+", path.rpartition("/")[2].removesuffix(".cpp")))

    def rank(name):
        took, file = tests[name]
        others = set(re.findall(r"[^_/.]+", file.rpartition("/")[2]))
        return -len(words & others) if took < 5 else 0, took

    return sorted(tests, key=rank)


def measured(workshop):
    """suite -> {test: [seconds, its source]}, for tests that pass. Measured once for each program."""
    file = TREE / "seconds.json"
    known = json.loads(file.read_text()) if file.exists() else {}
    for suite in EVERY:
        is_program = suite != "scripts"
        mark = hashlib.sha256((TREE / (f"tests/test_{suite}" if is_program else TOOL)).read_bytes()).hexdigest()
        if known.get(suite, [""])[0] != mark:
            known[suite] = [mark, measure(workshop, suite) if is_program else measure_scripts(workshop)]
            print(f"{suite}: {len(known[suite][1])} tests, {all_seconds(known[suite][1]):.1f} s", flush=True)
            file.write_text(json.dumps(known))
    return {suite: tests for suite, (_, tests) in known.items()}


def measure(workshop, suite):
    program = workshop.link(f"test_{suite}")
    said, _ = workshop.shut_away(program, "--measure", MOST_SECONDS, seconds=3600)
    seconds = {}
    for line in said.splitlines():
        word, name, took, file = line.split(" ", 3)
        if word == "passed":
            seconds[name] = [float(took), os.path.relpath(file, TOP)]
        else:
            print(f"{suite}: {name} {word} without any change; it is left out", flush=True)
    return seconds


def measure_scripts(workshop):
    seconds = {}
    for script in workshop.scripts():
        start = time.monotonic()
        if workshop.compare(script, MOST_SECONDS) == 0:
            seconds[script.stem] = [time.monotonic() - start, str(script)]
        else:
            print(f"scripts: {script.stem} failed without any change; it is left out", flush=True)
    return seconds
