"""Where the text of a C++ source can be changed, one expression at a time, and to what."""
import collections
import re

# kind of change; file below src; from and to which character; the text that stands there then
Site = collections.namedtuple("Site", "kind file start end text")

COMPARED = {"<": ("<=", ">="), "<=": ("<", ">"), ">": (">=", "<="), ">=": (">", "<"),
            "==": ("!=",), "!=": ("==",)}
LOGIC = {"&&": "||", "||": "&&", "true": "false", "false": "true", "TRUE": "FALSE", "FALSE": "TRUE"}
ARITHMETIC = {"+": "-", "-": "+", "*": "+", "/": "*", "&": "|", "|": "&", "<<": ">>", ">>": "<<",
              "%": "/", "+=": "-=", "-=": "+=", "|=": "&=", "&=": "|="}
UNCHANGED = re.compile(r"//[^\n]*|/\*.*?\*/|L?\"(?:\\.|[^\"\\\n])*\"|L?'(?:\\.|[^'\\\n])+'|^[ \t]*#[^\n]*",
                       re.S | re.M)
DECLARATION = re.compile(
    r"(?:return|break|continue|case|default|using|static|constexpr|const|struct|typedef|goto|do|else|"
    r"auto|enum|namespace|extern|template|switch|while|for|if|class|public|private)\b|"
    r"[A-Za-z_][\w:<>, ]*[\s*&]+[A-Za-z_]\w*\s*(?:=|;|\(|\[|\{|$)|[A-Za-z_][\w:<>]*[\s*&]+\w+\s*,")
PARAMETER = re.compile(r"(const )?[A-Za-z_]\w*[ *&]+[A-Za-z_]\w*( = .*)?$")
CLOSING = {"(": ")", "{": "}", "[": "]"}


def masked(text):
    """The text with comments, strings and directives blanked, as long as before."""
    return UNCHANGED.sub(lambda match: re.sub(r"[^\n]", "\x01", match.group()), text)


def closing(text, at):
    """Where what opens there is closed."""
    depth = 0
    for index in range(at, len(text)):
        depth += (text[index] == text[at]) - (text[index] == CLOSING[text[at]])
        if depth == 0:
            return index
    return -1


def comparisons(code, _):
    for match in re.finditer(r" (<=|>=|<|>|==|!=) ", code):
        for new in COMPARED[match[1]]:
            yield match.start(1), match.end(1), new


def constants(code, _):
    for match in re.finditer(r"(?<![\w.\x01])(0[xX][0-9A-Fa-f]+|\d+)(?![\w.\x01])", code):
        value = int(match[1], 0)
        for new in (value + 1, value - 1):
            yield match.start(), match.end(), str(new) if new >= 0 else f"({new})"


def conditions(code, text):
    for match in re.finditer(r"\bif (constexpr )?\(", code):
        start, end = match.end() - 1, closing(code, match.end() - 1) + 1
        yield start, end, f"(!{text[start:end]})"
    simple = r"[\w.\->:()\[\]]+"
    for match in re.finditer(rf" \? ({simple}) : ({simple})(?=[;,)])", code):
        if match[1] != match[2] and all(part.count("(") == part.count(")") for part in match.groups()):
            yield match.start(1), match.end(2), f"{match[2]} : {match[1]}"


def logic(code, _):
    for match in re.finditer(r"(?<= )(&&|\|\|)(?= )|\b(?:true|false|TRUE|FALSE)\b", code):
        yield match.start(), match.end(), LOGIC[match[0]]
    for match in re.finditer(r"(?<=[( ])!(?=[A-Za-z_(])", code):
        yield match.start(), match.end(), ""


def arithmetic(code, _):
    for match in re.finditer(r"(?<= )(\+|-|\*|/|&|\||<<|>>|%)(?= [\w(~*])|(?<= )(?:\+|-|\||&)=(?= )", code):
        yield match.start(), match.end(), ARITHMETIC[match[0]]


def statements(code, _):
    """Statements that do something, each left out."""
    start = index = 0
    while index < len(code):
        letter = code[index]
        if letter == "(":
            heading = re.search(r"\b(if|while|for|switch)(?: constexpr)?$", code[start:index].strip())
            index = closing(code, index)
            if heading:
                start = index + 1
        elif letter in "{}":
            start = index + 1
        elif letter == ":" and re.match(r"\s*(case\b[^?]*|default)$", code[start:index]):
            start = index + 1
        elif letter == ";":
            statement = re.match(r"\s*(else )?\s*(.*)", code[start:index], re.S)
            told = statement[2]
            if not DECLARATION.match(told) and re.search(r"[(=]|\+\+|--", told):
                yield start + statement.start(2), index + 1, "{}"
            start = index + 1
        index += 1


def arguments(code, text):
    """Two neighbouring arguments exchanged."""
    for match in re.finditer(r"\b([A-Za-z_]\w*)\(|\breturn (?=\{)|= (?=\{)", code):
        if match[1] in ("if", "for", "while", "switch", "sizeof", "static_assert"):
            continue
        opened = match.end() - 1 if match[1] else match.end()
        parts = list(split(code, opened))
        words = [text[start:end].strip() for start, end in parts]
        if any(PARAMETER.match(word) for word in words):
            continue
        for (start, end), (next_start, next_end), one, other in zip(parts, parts[1:], words, words[1:]):
            if one != other:
                yield start, next_end, f"{other}, {one}"


def split(code, opened):
    end = closing(code, opened)
    depth, start = 0, opened + 1
    for index in range(opened + 1, end + 1):
        if (code[index] == "," and depth == 0) or index == end:
            yield start, index
            start = index + 1
        elif code[index] in CLOSING:
            depth += 1
        elif code[index] in CLOSING.values():
            depth -= 1


KINDS = {"comparison": comparisons, "constant": constants, "condition": conditions,
         "statement": statements, "arguments": arguments, "logic": logic, "arithmetic": arithmetic}
# How often each kind is drawn: calls that are left out show most.
WEIGHTS = {"comparison": 20, "constant": 16, "condition": 18, "statement": 24, "arguments": 8,
           "logic": 8, "arithmetic": 6}


def all_sites(file, text):
    code = masked(text)
    for kind, find in KINDS.items():
        for start, end, new in find(code, text):
            yield Site(kind, file, start, end, new)
