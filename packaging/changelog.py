"""CHANGELOG.md as data: its form is told in the file itself."""

import datetime
import pathlib
import re

FILE = pathlib.Path(__file__).resolve().parents[1] / "CHANGELOG.md"
HEADING = re.compile(r"^## \[(\d+\.\d+\.\d+)\] - (\d{4}-\d\d-\d\d)$")


class Entry:
    def __init__(self, version, date):
        self.version = version
        self.date = datetime.datetime.strptime(date, "%Y-%m-%d").replace(tzinfo=datetime.timezone.utc)
        self.groups = {}  # "Added" and so on -> texts, each on one line


def entries(text=None):
    """The versions with their date, the newest first; what is not released yet is none of them."""
    found, group, open_item = [], None, False
    for line in (FILE.read_text(encoding="utf-8") if text is None else text).splitlines():
        heading = HEADING.match(line)
        if heading:
            found.append(Entry(*heading.groups()))
            group = None
        elif line.startswith("## "):
            group, open_item = None, False
            found.append(None)  # a heading that is no version: what follows belongs to nobody
        elif not found or found[-1] is None:
            continue
        elif line.startswith("### "):
            group = found[-1].groups.setdefault(line[4:], [])
            open_item = False
        elif line.startswith("- ") and group is not None:
            group.append(line[2:])
            open_item = True
        elif line.startswith("  ") and open_item:
            group[-1] += " " + line.strip()
        else:
            open_item = False
    return [entry for entry in found if entry]


def entry(version, text=None):
    """The entry of a version. One that is missing or empty ends the program: such a version is not released."""
    for each in entries(text):
        if each.version == version and any(each.groups.values()):
            return each
    raise SystemExit(f"CHANGELOG.md has no entry '## [{version}] - DATE' with something in it.")
