"""Makes mutants of a C++ source file: small changes that a test ought to notice."""

import re
from dataclasses import dataclass

from .lexer import closing, tokens_of

COMPARISONS = {
    "<": ("<=", ">="),
    "<=": ("<", ">"),
    ">": (">=", "<="),
    ">=": (">", "<"),
    "==": ("!=",),
    "!=": ("==",),
}
ARITHMETIC = {"+": ("-",), "-": ("+",), "*": ("/",), "/": ("*",), "%": ("*",)}
ASSIGNMENTS = {"+=": ("-=",), "-=": ("+=",), "*=": ("/=",), "/=": ("*=",)}
LOGIC = {"&&": ("||",), "||": ("&&",)}
BINARY = {**COMPARISONS, **ARITHMETIC, **ASSIGNMENTS, **LOGIC}
CONDITIONAL = set(COMPARISONS) | set(LOGIC) | {"!", "=", ";"}
KEYWORDS = {
    "return", "if", "else", "for", "while", "do", "switch", "case", "default", "break", "continue", "using",
    "const", "constexpr", "auto", "static", "delete", "throw", "template", "typename", "struct", "class", "enum",
    "friend", "try", "catch", "goto", "namespace",
}  # fmt: skip
SAME_AS_NOTHING = ("", "{}", "true", "false", "nullptr", "std::nullopt")
NO_CALLS = {"Q_UNUSED", "Q_ASSERT", "Q_ASSERT_X", "static_assert", "Q_STATIC_ASSERT", "Q_UNREACHABLE"}


@dataclass(frozen=True)
class Mutant:
    """A change of the text from `start` to `end`; `scope` is the statement around it, as offsets, and `is_value` tells
    that it changes a constant, or what a member begins with."""

    file: str
    line: str
    change: str
    start: int
    end: int
    text: str
    number: int
    scope: tuple
    is_value: bool

    @property
    def key(self):
        """What stays when lines move: the file, the line's text, and the change in it."""
        return f"{self.file}\t{self.line}\t{self.change}"

    def applied_to(self, source):
        """The mutated text."""
        return source[: self.start] + self.text + source[self.end :]


def mutants_of(name, source):
    """All mutants of a file, in its order."""
    return _Maker(name, source).made()


class _Maker:
    def __init__(self, name, source):
        self.name = name
        self.source = source
        self.tokens = tokens_of(source, name.endswith(("_p.h", ".cpp")))
        self.found = []
        self.skipped = self._skipped()

    def made(self):
        """Visits each token that runs."""
        for i, token in enumerate(self.tokens):
            if token.runs and i not in self.skipped:
                if token.kind == "op":
                    self._operator(i, token)
                elif token.kind == "number":
                    self._number(i, token)
                elif token.kind == "name":
                    self._word(i, token)
        return self._numbered()

    def _text(self, i):
        return self.tokens[i].text if 0 <= i < len(self.tokens) else ""

    def _skipped(self):
        """Tokens within checks of the compiler, and the steps in the heads of loops."""
        skipped = set()
        for i, token in enumerate(self.tokens):
            if token.kind != "name" or self._text(i + 1) != "(":
                continue
            end = closing(self.tokens, i + 1)
            if token.text in NO_CALLS:
                skipped.update(range(i, end + 1))
            # How much memory is asked for beforehand shows nowhere.
            if token.text == "reserve" and self._text(i - 1) == ".":
                skipped.update(range(self._operand_start(i), end + 1))
            if token.text == "for":
                ends = [k for k in range(i, end) if self._text(k) == ";"]
                if len(ends) == 2:
                    skipped.update(k for k in range(ends[1], end) if self._text(k) in ("++", "--"))
        return skipped

    def _is_spaced(self, token):
        return self.source[token.start - 1].isspace() and self.source[token.end : token.end + 1].isspace()

    def _add(self, i, change, start, end, text):
        self.found.append((i, change, start, end, text))

    def _replace(self, i, text, change=None):
        token = self.tokens[i]
        self._add(i, change or f"{token.text} -> {text}", token.start, token.end, text)

    def _operator(self, i, token):
        if token.text in BINARY and self._is_spaced(token) and self._text(i - 1) != "operator":
            for other in BINARY[token.text]:
                self._replace(i, other)
        elif token.text in ("++", "--"):
            self._replace(i, "--" if token.text == "++" else "++")
        elif token.text == "!":
            self._replace(i, "", "! removed")
        elif token.text == "-" and not self.source[token.end].isspace():
            if self.tokens[i + 1].kind != "number" and self._text(i - 1) not in (")", "]"):
                self._replace(i, "", "- removed")
        elif token.text == "?":
            self._choice(i, token)
        elif token.text == "(" and self._begins_statement(i):
            self._call(i)

    def _choice(self, i, token):
        """A choice by a plain name or call; the others are covered by the operators of their conditions."""
        start = self._operand_start(i - 1)
        before = self._text(start - 1)
        if before not in ("!", "==", "!=", "<", "<=", ">", ">=", "+", "-", "*", "/"):
            self._add(i, "? negated", token.start, token.start, "== false ")

    def _operand_start(self, i):
        """The first token of the names, dots and calls that end at an index."""
        while i > 0:
            if self._text(i) in (")", "]"):
                depth = 0
                while i > 0:
                    depth += (self._text(i) in (")", "]")) - (self._text(i) in ("(", "["))
                    if depth == 0:
                        break
                    i -= 1
                if self.tokens[i - 1].kind != "name" or self._text(i - 1) in KEYWORDS:
                    return i
                i -= 1
            elif self._text(i - 1) in (".", "->", "::"):
                i -= 2
            else:
                return i
        return i

    def _number(self, i, token):
        digits = token.text.rstrip("uUlLfF")
        suffix = token.text[len(digits) :]
        if re.match("0[xX]", digits):
            return
        if re.fullmatch(r"[\d']+", digits):
            value = int(digits.replace("'", ""))
            others = ["1", "-1"] if value == 0 else ["2", "0"] if value == 1 else [str(value + 1), "0"]
        else:
            value = float(digits.replace("'", ""))
            others = ["1.0", "-1.0"] if value == 0.0 else [self._next_number(value), "0.0"]
        for other in others:
            self._replace(i, other + suffix)

    @staticmethod
    def _next_number(value):
        return repr(value + 1.0) if 1e-3 < value < 1e9 else repr(value * 2.0)

    def _word(self, i, token):
        if token.text in ("true", "false"):
            self._replace(i, "false" if token.text == "true" else "true")
        elif token.text == "return":
            self._return(i)
        elif token.text in ("if", "while"):
            self._condition(i)
        elif self._begins_statement(i):
            self._call(i)

    def _statement_end(self, i):
        while i < len(self.tokens) and self._text(i) != ";":
            i = closing(self.tokens, i) + 1 if self._text(i) in ("(", "[", "{") else i + 1
        return i

    def _return(self, i):
        end = self._statement_end(i)
        value = self.tokens[i + 1 : end]
        text = "".join(token.text for token in value)
        is_plain = len(value) == 1 and value[0].kind == "number"
        if is_plain or text in SAME_AS_NOTHING or re.fullmatch(r"[A-Z]\w*(<.*>)?\(\)", text):
            return
        self._add(i, "return {}", value[0].start, value[-1].end, "{}")

    def _condition(self, i):
        if self._text(i + 1) != "(":
            return
        end = closing(self.tokens, i + 1)
        inside = self.tokens[i + 2 : end]
        if any(token.kind == "op" and token.text in CONDITIONAL for token in inside):
            return
        start, stop = inside[0].start, inside[-1].end
        self._add(i, "condition negated", start, stop, f"!({self.source[start:stop]})")

    def _begins_statement(self, i):
        before = self._text(i - 1)
        if before == ")":
            depth = 0
            k = i - 1
            while k > 0:
                depth += (self._text(k) == ")") - (self._text(k) == "(")
                if depth == 0:
                    break
                k -= 1
            return self._text(k - 1) in ("if", "for", "while", "constexpr")
        return before in (";", "{", "}", "else") or (before == ":" and self._ends_label(i - 1))

    def _ends_label(self, i):
        """Whether a colon ends the label of a case."""
        i -= 1
        while i > 0 and self._text(i) not in ("case", "default", ";", "{", "}", "?", ":", "("):
            i -= 1
        return self._text(i) in ("case", "default")

    def _call(self, i):
        if self.tokens[i].text in KEYWORDS or self.tokens[i].text in NO_CALLS:
            return
        end = self._statement_end(i)
        k = i + 1 if self.tokens[i].text == "Q_EMIT" else i
        while k < end:
            token = self.tokens[k]
            if token.text in ("(", "["):
                k = closing(self.tokens, k) + 1
            elif token.kind == "name" and self.tokens[k + 1].kind != "name":
                k += 1
            elif token.text in (".", "->", "::") or token.text in ("<", ">") and not self._is_spaced(token):
                k += 1
            else:
                return
        if end < len(self.tokens) and self._text(end - 1) == ")" and self._text(i + 1) != ";":
            names = [token.text for token in self.tokens[i:end] if token.kind == "name" and token.text != "Q_EMIT"]
            self._add(i, f"{names[0]} removed", self.tokens[i].start, self.tokens[end - 1].end, "")

    def _scope(self, i):
        """The offsets of the statement around a token."""
        first = i
        while first > 0 and self._text(first - 1) not in (";", "{", "}"):
            first -= 1
        last = i
        while last < len(self.tokens) - 1 and self._text(last) not in (";", "{", "}"):
            last += 1
        return self.tokens[first].start, self.tokens[last].start

    def _numbered(self):
        """Equal changes of a line, and of equal lines, get numbers."""
        lines = self.source.split("\n")
        numbers = {}
        result = []
        for i, change, start, end, text in self.found:
            number = self.source.count("\n", 0, self.tokens[i].start)
            line = lines[number].strip()
            count = numbers[line, change] = numbers.get((line, change), 0) + 1
            if count > 1:
                change = f"{change} #{count}"
            is_value = self.tokens[i].is_value or "constexpr" in line
            result.append(Mutant(self.name, line, change, start, end, text, number + 1, self._scope(i), is_value))
        return result
