"""The mutants of a source file: small changes of its text, each of which some test should notice."""

import dataclasses
import re

# What is compared, joined or counted differently. Sources are formatted, so operators stand between blanks.
OPERATORS = {
    "==": "!=",
    "!=": "==",
    "<": "<=",
    "<=": "<",
    ">": ">=",
    ">=": ">",
    "&&": "||",
    "||": "&&",
    "+": "-",
    "-": "+",
    "&": "|",
    "|": "&",
    "+=": "-=",
    "-=": "+=",
}
WORDS = {"true": "false", "false": "true", "break": "continue"}

TOKEN = re.compile(
    r"""//.*$                                      # a comment ends the line
      | "(?:[^"\\]|\\.)*" | '(?:[^'\\]|\\.)*'
      | [A-Za-z_]\w*
      | \d[\w.']*
      | \#.*$
      | (?P<operator>(?<=\ )(?:==|!=|<=|>=|&&|\|\||\+=|-=|[<>+\-&|])(?=\ |$))
      | \+\+|--|->|<<|>>
      | .""",
    re.VERBOSE,
)
CALL = re.compile(r"^(?:\(void\))?(?:\w+::|\w+(?:\.|->))*\w+\(.*\);$")
ASSIGNMENT = re.compile(r"^[\w.\->\[\]*]+ = [^{]*;$")
ARRAY = re.compile(r"^(?:static |const |constexpr |constinit )*[\w:]+(?: const)? \w+\[")
INDEX = re.compile(r"(?<=[\w)\]])\[([^\[\]]+)\]")


@dataclasses.dataclass(frozen=True)
class Mutant:
    file: str
    line: int  # from 1
    before: str  # the line, without its indentation
    change: str
    nth: int  # the same change of the same line text: which of them, from 1
    text: str  # what replaces the line
    swallowed: int = 1  # how many lines it replaces

    @property
    def name(self):
        """Holds while the line stays as it is, wherever it moves to."""
        nth = "" if self.nth == 1 else f" #{self.nth}"
        return f"{self.file}: {self.before} : {self.change}{nth}"


def _are_ordered(first, second):
    """Statements that have a name in common; the order of others is nobody's business."""
    if not all((CALL.match(text) or ASSIGNMENT.match(text)) and "static_assert" not in text for text in (first, second)):
        return False
    names = [set(re.findall(r"[A-Za-z_]\w*", re.sub(r'"[^"]*"', "", text))) - {"std", "void"} for text in (first, second)]
    return bool(names[0] & names[1])


def _number_changed(token):
    digits = re.match(r"^(0[xX][0-9a-fA-F]+|\d+)([uUlL]*)$", token)
    if not digits:
        return None
    if digits[1][:2] in ("0x", "0X"):
        return f"0x{int(digits[1], 16) + 1:x}{digits[2]}"
    if digits[1][0] == "0" and len(digits[1]) > 1:
        return f"0{int(digits[1], 8) + 1:o}{digits[2]}"
    return f"{int(digits[1]) + 1}{digits[2]}"


def _text_changed(token):
    """One character less: a message, key or command that is not the agreed one."""
    # Whether a file is closed on exec shows only to what another thread starts meanwhile.
    if len(token) < 3 or token in ('"re"', '"we"', '"r+e"', '"w+e"'):
        return None
    last = re.match(r'^(".*?)((?:\\(?:[0-7]{1,3}|x[0-9a-fA-F]+|.))|[^\\])"$', token)
    return last[1] + '"' if last else None


def _changes(line):
    """(change, new line) of everything within one line."""
    is_array = ARRAY.match(line.strip()) is not None
    depth = 0
    before = ""
    for found in TOKEN.finditer(line):
        token = found[0]
        if token.startswith("//") or token.startswith("#"):
            break
        changed = None
        if token == "[":
            depth += 1
        elif token == "]":
            depth -= 1
        elif found["operator"]:
            changed = OPERATORS[token]
        elif token in WORDS:
            changed = WORDS[token]
        elif token[0] == '"' and before != "extern":
            changed = _text_changed(token)
        elif token[0].isdigit() and not (is_array and depth > 0):
            changed = _number_changed(token)
        elif token == "!":
            changed = ""
        elif token in ("++", "--"):
            changed = "--" if token == "++" else "++"
        if changed is not None:
            yield f"{token} -> {changed or 'nothing'}", line[: found.start()] + changed + line[found.end() :]
        before = before if token == " " else token
    if not is_array:
        for found in INDEX.finditer(line):
            if re.search(r'"[^"]*$', line[: found.start()]) or not re.search(r"\w", found[1]):
                continue
            if re.match(r"^\s*(?:char|unsigned|uint\w+|int)\b", line) and line.rstrip().endswith(("{", ",", ")")):
                continue  # a parameter that is an array
            if re.search(r"sizeof [\w.>-]*$", line[: found.start()]):
                continue
            changed = f"[({found[1]}) + 1]"
            yield f"{found[0]} -> {changed}", line[: found.start()] + changed + line[found.end() :]


def mutants_of(file, text):
    lines = text.split("\n")
    seen = {}

    def made(number, change, new, swallowed=1):
        before = lines[number].strip()
        key = (before, change)
        seen[key] = seen.get(key, 0) + 1
        return Mutant(file, number + 1, before, change, seen[key], new, swallowed)

    in_comment = False
    in_assertion = False
    for number, line in enumerate(lines):
        stripped = line.strip()
        if in_comment or stripped.startswith("/*"):
            in_comment = "*/" not in stripped
            continue
        in_assertion = in_assertion or stripped.startswith(("static_assert", "using ", "template"))
        if in_assertion:
            in_assertion = not stripped.endswith((";", ">"))
            continue
        if not stripped or stripped.startswith(("//", "#")):
            continue
        for change, new in _changes(line):
            yield made(number, change, new)
        if CALL.match(stripped):
            yield made(number, "removed", line[: len(line) - len(line.lstrip())] + ";")
        following = lines[number + 1] if number + 1 < len(lines) else ""
        if _are_ordered(stripped, following.strip()):
            indentation = len(line) - len(line.lstrip())
            if len(following) - len(following.lstrip()) == indentation:
                yield made(number, f"after {following.strip()}", following + "\n" + line, 2)


def apply(mutant, text):
    lines = text.split("\n")
    lines[mutant.line - 1 : mutant.line - 1 + mutant.swallowed] = [mutant.text]
    return "\n".join(lines)
