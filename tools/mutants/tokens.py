"""C++ text as tokens: what is comment, text or number is never taken for something else."""

import re
from typing import NamedTuple

LEXEMES = re.compile(r"""
  (?P<space>\s+|\\\n)
| (?P<comment>//(?:\\\n|[^\n])*|/\*.*?\*/)
| (?P<text>(?:u8|[uUL])?R"(?P<fence>[^()\\\s]{0,16})\(.*?\)(?P=fence)"|(?:u8|[uUL])?"(?:\\.|[^"\\\n])*"(?:s|sv)?)
| (?P<character>(?:u8|[uUL])?'(?:\\.|[^'\\\n])+')
| (?P<number>\.?\d(?:'[0-9a-zA-Z]|[eEpP][+-]|[0-9a-zA-Z_.])*)
| (?P<word>[A-Za-z_\u00a1-\uffff][A-Za-z_0-9\u00a1-\uffff]*)
| (?P<mark><=>|<<=|>>=|->\*|\.\.\.|::|->|\+\+|--|<<|>>|<=|>=|==|!=|&&|\|\||[-+*/%&|^]=|\S)
""", re.X | re.S)
DIRECTIVE = re.compile(r"[ \t]*#(?:\\\n|[^\n])*")


class Token(NamedTuple):
    kind: str
    text: str
    start: int

    @property
    def end(self):
        return self.start + len(self.text)


def tokens(source):
    """The tokens without space, comments and directives of the preprocessor."""
    found, place, line_begins = [], 0, True
    while place < len(source):
        directive = DIRECTIVE.match(source, place) if line_begins else None
        if directive:
            place = directive.end()
            continue
        lexeme = LEXEMES.match(source, place)
        kind = lexeme.lastgroup if lexeme.lastgroup != "fence" else "text"
        if kind == "space":
            line_begins = "\n" in lexeme.group() or (line_begins and place == 0)
        elif kind != "comment":
            found.append(Token(kind, lexeme.group(), place))
            line_begins = False
        place = lexeme.end()
    return found
