"""Changes that change nothing: a list in which each is known by its lines before and after it, so that none gets stale unseen."""

import pathlib

from changes import changes, enumerations

LIST = pathlib.Path(__file__).resolve().parents[2] / "tests" / "mutants" / "equivalent.txt"


def enumerations_of(top):
    return enumerations(file.read_text(encoding="utf-8") for folder in ("base", "core", "platform", "ui", "scanner", "repair", "cleanup", "uninstall", "internet")
                        for end in ("h", "cpp") for file in sorted((top / folder).rglob(f"*.{end}")))


def entries(text):
    """(file, before, after) -> reason. An entry is the file, "- before", "+ after", and the reason in lines of its own."""
    found = {}
    for block in "\n".join(line for line in text.splitlines() if not line.startswith("#")).split("\n\n"):
        lines = [line.strip() for line in block.splitlines() if line.strip()]
        if not lines:
            continue
        if len(lines) < 4 or not lines[1].startswith("- ") or not lines[2].startswith("+"):
            raise SystemExit(f"{LIST}: not an entry: {lines[0]}")
        found[lines[0], lines[1][2:].strip(), lines[2][1:].strip()] = " ".join(lines[3:])
    return found


def stale(listed, top):
    """Entries of which no change of the file tells any more."""
    told, known = {}, enumerations_of(top)
    for path, before, after in listed:
        if path not in told:
            file = top / path
            source = file.read_text(encoding="utf-8") if file.exists() else ""
            told[path] = {change.told(source) for change in changes(source, known)}
        if (before, after) not in told[path]:
            yield f"{path}: - {before} + {after}"
