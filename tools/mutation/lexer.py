"""Splits C++ into tokens, as far as mutations need it, and tells which of them are code that runs."""

import re
from dataclasses import dataclass

PATTERN = re.compile(
    r"""(?P<comment>//[^\n]*|/\*.*?\*/)
      |(?P<directive>(?<![^\n])[ \t]*\#(?:[^\n\\]|\\.)*)
      |(?P<string>(?:u8|u|U|L)?(?:R"(?P<delimiter>[^(]*)\(.*?\)(?P=delimiter)"|"(?:[^"\\]|\\.)*"))
      |(?P<char>(?:u8|u|U|L)?'(?:[^'\\]|\\.)+')
      |(?P<number>(?:0[xX][0-9a-fA-F']+|(?:\d[\d']*\.?[\d']*|\.\d+)(?:[eE][+-]?\d+)?)[uUlLfF]*)
      |(?P<name>[A-Za-z_]\w*)
      |(?P<op><<=|>>=|->\*|->|\+\+|--|<<|>>|<=|>=|==|!=|&&|\|\||::|[-+*/%&|^]=|.)
      |(?P<space>\s+)""",
    re.VERBOSE | re.DOTALL,
)
OPENING = {"(": ")", "[": "]", "{": "}"}
ACCESS = {"public", "private", "protected", "Q_SLOTS", "Q_SIGNALS"}
CLASS_WORDS = {"class", "struct", "union", "enum"}
ZEROS = {"0", "0.0", "false", "nullptr"}


@dataclass
class Token:
    """A token of a source text, and where it stands there; a value is that of a constant, or what a member begins
    with."""

    kind: str
    text: str
    start: int
    runs: bool = False
    is_value: bool = False

    @property
    def end(self):
        """The offset behind the token."""
        return self.start + len(self.text)


def tokens_of(source, is_private):
    """The tokens of a text, without space, comments and directives; those that run are marked. So is what members begin
    with, but for the zeros of a private record's fields: {} would give them as well, and who makes one sets them all."""
    tokens = []
    offset = 0
    while offset < len(source):
        match = PATTERN.match(source, offset)
        # A space is tried last, as a directive begins with one.
        kind = match.lastgroup if match.lastgroup != "delimiter" else "string"
        text = match.group()
        if kind == "op" and text.isspace():
            kind = "space"
        if kind not in ("space", "comment", "directive"):
            tokens.append(Token(kind, text, offset))
        offset = match.end()
    _Marker(tokens, is_private).mark()
    return tokens


def closing(tokens, index):
    """The index of the bracket that closes the one at an index."""
    depth = 0
    for i in range(index, len(tokens)):
        if tokens[i].kind == "op" and tokens[i].text in OPENING:
            depth += 1
        elif tokens[i].kind == "op" and tokens[i].text in OPENING.values():
            depth -= 1
            if depth == 0:
                return i
    return len(tokens) - 1


class _Marker:
    """Marks what runs: the bodies of functions, what constructors initialise, and what constants and members begin
    with."""

    def __init__(self, tokens, is_private):
        self.tokens = tokens
        self.is_private = is_private
        self.head = []

    def mark(self):
        """Walks over all declarations; what stands in namespaces and classes is a declaration too."""
        i = 0
        while i < len(self.tokens):
            text = self.tokens[i].text if self.tokens[i].kind == "op" else ""
            if text == "{":
                i = self._open(i)
            elif text == "}":
                self.head = []
                i += 1
            elif text == ";":
                self._mark_value(i)
                i += 1
            elif text in ("(", "["):
                end = closing(self.tokens, i)
                self.head.extend(range(i, end + 1))
                i = end + 1
            else:
                if text != ":" or not self._is_access():
                    self.head.append(i)
                else:
                    self.head = []
                i += 1

    def _texts(self):
        return [self.tokens[i].text for i in self.head]

    def _is_access(self):
        return bool(self.head) and self.tokens[self.head[-1]].text in ACCESS

    def _open(self, i):
        """A brace opens: the index after what it opens, where that is passed over."""
        texts = self._texts()
        first = self._first_word(texts)
        if first in CLASS_WORDS or "namespace" in texts[:2] or first == "extern":
            if first == "enum":
                self.head = []
                return closing(self.tokens, i) + 1
            self.head = []
            return i + 1
        end = closing(self.tokens, i)
        start = self._initialisers()
        in_list = start is not None and self.tokens[i - 1].kind == "name"
        is_value = "=" in texts and "(" not in texts[: texts.index("=")] and "operator" not in texts
        if in_list or is_value or "(" not in texts:
            self.head.extend(range(i, end + 1))
            return end + 1
        for body in range(i, end + 1):
            self.tokens[body].runs = True
        for k in self.head[start:] if start is not None else []:
            self.tokens[k].runs = True
        self.head = []
        return end + 1

    @staticmethod
    def _first_word(texts):
        """The first word behind template<...>."""
        i = 0
        while i < len(texts) and texts[i] == "template":
            depth = 0
            for k in range(i + 1, len(texts)):
                depth += (texts[k] == "<") - (texts[k] == ">")
                if depth == 0:
                    i = k + 1
                    break
            else:
                return ""
        return texts[i] if i < len(texts) else ""

    def _initialisers(self):
        """The place in the head at which a constructor's initialisers begin, or None."""
        texts = self._texts()
        for k in range(len(texts) - 1):
            if texts[k] == ")" and texts[k + 1] == ":":
                return k + 2
        return None

    def _mark_value(self, end):
        """Behind a sign of equality, or in the braces right before the semicolon."""
        texts = self._texts()
        sign = next((k for k, text in enumerate(texts) if text in ("=", "{")), len(texts))
        is_zero = len(texts[sign + 1 :]) == 1 and texts[-1] in ZEROS and not texts[sign - 1].startswith("m_")
        is_zero = is_zero and self.is_private and not {"const", "constexpr"} & set(texts)
        begins = texts[sign : sign + 1] == ["="] or texts[sign:] and texts[-1] == "}"
        if begins and not is_zero and "(" not in texts[:sign] and not {"operator", "using", "template"} & set(texts):
            for i in range(self.head[sign] + 1, end):
                self.tokens[i].runs = self.tokens[i].is_value = True
        self.head = []
