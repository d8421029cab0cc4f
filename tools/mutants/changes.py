"""What can be changed in a C++ source: one operator, condition, constant, text or statement at a time."""

import re
from typing import NamedTuple

from tokens import tokens


class Change(NamedTuple):
    start: int
    end: int
    new: str

    def line(self, source):
        return source.count("\n", 0, self.start) + 1

    def applied(self, source):
        return source[:self.start] + self.new + source[self.end:]

    def told(self, source):
        """The lines that it touches, before and after, with single spaces."""
        first = source.rfind("\n", 0, self.start) + 1
        last = source.find("\n", self.end)
        last = len(source) if last < 0 else last
        before, after = source[first:last], source[first:self.start] + self.new + source[self.end:last]
        return " ".join(before.split()), " ".join(after.split())


# Binary ones stand between spaces (.clang-format sees to it), so that templates, references and pointers are none.
OPERATORS = {
    "==": ["!="], "!=": ["=="], "<": ["<=", ">="], "<=": ["<", ">"], ">": [">=", "<="], ">=": [">", "<"],
    "&&": ["||"], "||": ["&&"], "+": ["-"], "-": ["+"], "*": ["+"], "/": ["*"], "%": ["/"],
    "&": ["|"], "|": ["&"], "^": ["&"], "<<": [">>"], ">>": ["<<"],
    "+=": ["-="], "-=": ["+="], "|=": ["&="], "&=": ["|="], "*=": ["+="], "/=": ["*="], "<<=": [">>="], ">>=": ["<<="],
}
STEPS = {"++": "--", "--": "++"}
NUMBER = re.compile(r"(0[xX][0-9a-fA-F']+|0[bB][01']+|[0-9']+)([uUlLzZ]*)")
# Statements that do nothing when the program runs, and those without which a function has no end.
NO_STATEMENTS = {"using", "typedef", "static_assert", "namespace", "struct", "class", "enum", "union", "template", "friend",
                 "extern", "case", "default", "public", "private", "protected", "if", "for", "while", "do", "switch", "else", "try",
                 "catch", "goto", "[[", "[", "co_return"}
SCOPES = {"namespace", "struct", "class", "enum", "union", "extern"}
HEADS = {"if", "for", "while", "switch", "catch"}


def constants(token):
    if token.kind == "number":
        whole = NUMBER.fullmatch(token.text)
        if whole:
            value = int(whole[1].replace("'", ""), 0 if not whole[1].isdigit() or whole[1] == "0" else 8 if whole[1][0] == "0" else 10)
            return [str(value + 1) + whole[2]] + ([str(value - 1) + whole[2]] if value > 0 else [])
        return ["(" + token.text + " + 1)"]
    if token.kind == "character":
        quote = token.text.index("'")
        return [token.text[:quote] + ("'y'" if token.text[quote:] == "'x'" else "'x'")]
    return {"true": ["false"], "false": ["true"]}.get(token.text, []) if token.kind == "word" else []


def texts(token, before):
    """A text without its words, and one whose last character is another."""
    whole = re.fullmatch(r'([^"R]*)"((?:\\.|[^\\])*)"(\w*)', token.text, re.S)
    if token.kind != "text" or not whole or not whole[2] or before == "extern":
        return []
    prefix, words, suffix = whole.groups()
    last = re.search(r"(?:\\(?:x[0-9a-fA-F]+|u[0-9a-fA-F]{4}|U[0-9a-fA-F]{8}|[0-7]{1,3}|.)|[^\\])$", words, re.S).start()
    return [f'{prefix}""{suffix}', f'{prefix}"{words[:last]}{"#" if words[last:] != "#" else "+"}"{suffix}']


def of_tokens(source, found):
    for at, token in enumerate(found):
        before = found[at - 1].text if at else ""
        spaced = source[token.start - 1:token.start].isspace() and source[token.end:token.end + 1].isspace()
        if token.kind == "mark":
            if spaced and token.text in OPERATORS and before != "operator":
                yield from (Change(token.start, token.end, new) for new in OPERATORS[token.text])
            elif token.text in STEPS and before != "operator":
                yield Change(token.start, token.end, STEPS[token.text])
            elif token.text == "!" and not spaced:
                yield Change(token.start, token.end, "")
        yield from (Change(token.start, token.end, new) for new in constants(token) + texts(token, before))


def enumerations(sources):
    """Name of an enum class -> its values, of all that these sources declare."""
    known = {}
    for source in sources:
        for name, body in re.findall(r"\benum class (\w+)[^{};]*\{(.*?)\}", source, re.S):
            known[name] = re.findall(r"(?:^|,)\s*([A-Za-z_]\w*)", re.sub(r"//[^\n]*|/\*.*?\*/", "", body, flags=re.S))
    return known


def of_enumerations(found, known):
    """A value stands for the one that is declared behind it, the last for the first."""
    for scope, mark, value in zip(found, found[1:], found[2:]):
        values = known.get(scope.text, []) if mark.text == "::" else []
        if value.text in values and len(values) > 1:
            yield Change(value.start, value.end, values[(values.index(value.text) + 1) % len(values)])


def partners(found):
    """Index of an opening bracket -> index of its closing one."""
    opened, pairs = [], {}
    for at, token in enumerate(found):
        if token.kind == "mark" and token.text in "([{":
            opened.append(at)
        elif token.kind == "mark" and token.text in ")]}" and opened:
            pairs[opened.pop()] = at
    return pairs


def of_conditions(found, pairs):
    for at, token in enumerate(found[:-2]):
        first = at + 1 + (found[at + 1].text == "constexpr")
        if token.text in ("if", "while") and token.kind == "word" and first == at + 1 and first in pairs:
            inside = found[first + 1:pairs[first]]
            semicolons = [i for i, part in enumerate(inside) if part.text == ";" and part.kind == "mark"]
            inside = inside[semicolons[-1] + 1:] if semicolons else inside
            declares = any(part.text == "=" and part.kind == "mark" for part in inside)
            if inside and not declares:
                yield inside[0].start, inside[-1].end


def code_blocks(found, pairs):
    """Indices of the braces that hold statements."""
    blocks, begin = set(), 0
    for at, token in enumerate(found):
        if token.kind != "mark":
            continue
        if token.text == "{":
            said = {part.text for part in found[begin:at] if part.kind == "word"}
            before = found[at - 1].text if at else ""
            ends_a_head = before in (")", "]", "const", "noexcept", "override", "mutable", "else", "do", "try", "{", ";", "}", ":")
            returns = any(part.text == "->" for part in found[max(begin, at - 8):at]) and not ends_a_head
            scope = said & SCOPES and ")" not in {part.text for part in found[begin:at]}
            if (ends_a_head or returns) and not scope:
                blocks.add(at)
            begin = at + 1
        elif token.text in ";}":
            begin = at + 1
    return blocks


def of_statements(found, pairs):
    """Statements that are calls, assignments, jumps or objects: without them the rest goes on."""
    blocks = code_blocks(found, pairs)
    heads = {pairs[at + 1] for at, token in enumerate(found[:-1])
             if token.text in HEADS and token.kind == "word" and at + 1 in pairs}
    for block in blocks:
        at, end = block + 1, pairs.get(block, len(found))
        begin = at
        while at < end:
            token = found[at]
            if token.kind == "mark" and token.text == ";":
                if begin < at and found[begin].text not in NO_STATEMENTS and not (found[begin].text == "return" and at > begin + 1):
                    yield found[begin].start, token.end
                begin = at + 1
            elif token.kind == "mark" and token.text in "([{" and at in pairs:
                inner, at = at, pairs[at]
                if inner in blocks or at in heads:
                    begin = at + 1
            elif token.text == "else" or (token.text == ":" and found[begin].text in ("case", "default")):
                begin = at + 1
            at += 1


def of_memory_ahead(found, pairs):
    """Places of the calls that only ask for memory before it is needed: without them all is as before."""
    for at, token in enumerate(found[:-2]):
        if token.text == "reserve" and at and found[at - 1].text in (".", "->") and at + 1 in pairs:
            first = at
            while first and found[first - 1].text not in (";", "{", "}", ")"):
                first -= 1
            yield found[first].start, found[pairs[at + 1]].end


def changes(source, known=None):
    """All of them, in the order of the text; `known` are the enumerations."""
    found = tokens(source)
    pairs = partners(found)
    every = list(of_tokens(source, found))
    every += of_enumerations(found, known or {})
    every += [Change(start, end, f"!({source[start:end]})") for start, end in of_conditions(found, pairs)]
    every += [Change(start, end, ";") for start, end in of_statements(found, pairs)]
    ahead = list(of_memory_ahead(found, pairs))
    return sorted(each for each in set(every) if not any(start <= each.start < end for start, end in ahead))
