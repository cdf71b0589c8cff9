"""The ways in which mutate.py changes the library."""
import collections
import hashlib
import re

# Replacements of what stands between blanks; the layout keeps template brackets and unary operators
# away from blanks.
OPERATORS = {
    "<": ["<=", ">"], "<=": ["<", ">"], ">": [">=", "<"], ">=": [">", "<"],
    "==": ["!="], "!=": ["=="], "&&": ["||"], "||": ["&&"],
    "+": ["-"], "-": ["+"], "*": ["/"], "/": ["*"], "%": ["/"],
    "+=": ["-="], "-=": ["+="], "*=": ["/="], "/=": ["*="],
    "<<": [">>"], ">>": ["<<"], "&": ["|"], "|": ["&"], "^": ["|"],
}
WORDS = {"true": ["false"], "false": ["true"], "min": ["max"], "max": ["min"], "cos": ["sin"],
         "sin": ["cos"]}

OPERATOR = re.compile(r"(?<= )(" + "|".join(re.escape(o) for o in
                                            sorted(OPERATORS, key=len, reverse=True)) + r")(?= )")
WORD = re.compile(r"\b(" + "|".join(WORDS) + r")\b")
STEP = re.compile(r"\+\+|--")
NOT = re.compile(r"(?<=[( ])!(?=[\w(])")
NUMBER = re.compile(r"(?<![\w.])(\d+)(\.\d+(?:e[+-]?\d+)?)?([UL]*F?)(?![\w.])")
STATEMENT = re.compile(r"^( +)(?!return\b|using\b|static_assert\b|friend\b|public\b|private\b)"
                       r"((?:throw\b|[\w\]\[.>*()&-]+(?:\(| [-+*/|&^]?= |\+\+|--)|\+\+|--|break;|continue;)"
                       r".*;)$")
CONDITION = re.compile(r"\bif \((.*)\)(?= |$)")
# Nothing that runs: the preprocessor, static assertions, names from elsewhere.
PASSIVE = re.compile(r"^\s*(#|static_assert|using\b|template\b|friend\b|extern\b)")

# `state` tells one version of the file from another.
Mutant = collections.namedtuple("Mutant", "file state line old new")


def without_comments_and_texts(line):
    """The line with blanks in place of comments and of what is quoted."""
    line = re.sub(r'"(?:[^"\\]|\\.)*"', lambda m: '"' + "_" * (len(m[0]) - 2) + '"', line)
    return re.sub(r"//.*", lambda m: "_" * len(m[0]), line)


def variants(line):
    """Every way in which the line can be changed."""
    code = without_comments_and_texts(line)
    if PASSIVE.match(code):
        return

    def replaced(match, text, group=0):
        return line[:match.start(group)] + text + line[match.end(group):]

    for match in OPERATOR.finditer(code):
        for other in OPERATORS[match[0]]:
            yield replaced(match, other)
    for match in WORD.finditer(code):
        for other in WORDS[match[0]]:
            yield replaced(match, other)
    for match in STEP.finditer(code):
        yield replaced(match, "--" if match[0] == "++" else "++")
    for match in NOT.finditer(code):
        yield replaced(match, "")
    for match in NUMBER.finditer(code):
        yield replaced(match, str(int(match[1]) + 1), 1)
        if int(match[1]) > 0:
            yield replaced(match, str(int(match[1]) - 1), 1)
    for match in CONDITION.finditer(code):
        for other in ("true", "false"):
            yield replaced(match, other, 1)
    match = STATEMENT.match(code)
    if match:
        yield match[1] + ";"


def mutants(root, prefixes):
    """All of them, in the order of the tree."""
    for path in sorted((root / "filt").rglob("*")):
        file = str(path.relative_to(root))
        if path.suffix not in (".cpp", ".h"):
            continue
        # Public headers hold declarations, and changing them builds every test again.
        if not file.startswith(prefixes) or not (path.suffix == ".cpp" or "/internal/" in file):
            continue
        text = path.read_text(encoding="utf-8")
        state = hashlib.sha256(text.encode()).hexdigest()[:12]
        for number, line in enumerate(text.splitlines(), 1):
            for new in dict.fromkeys(variants(line)):
                if new != line:
                    yield Mutant(file, state, number, line, new)


def key(mutant):
    """How a mutant is named in files: without its line number, which moves."""
    return f"{mutant.file}: {mutant.old.strip()} -> {mutant.new.strip()}"
