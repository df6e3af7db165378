"""mutants.py SAMPLE SEED FILE...: prints every small change of C++ sources that tests should notice, or so many of them as
SAMPLE says where it is not 0, one a line: file, line (from 1), column and length in bytes (from 0) of what is changed, what
takes its place, tabs between them. What is in headers comes last, for all that includes them is compiled anew.

Changed are operators, numbers, true and false, conditions (made their opposite) and statements (left out). Comments,
literals of text, directives, declarations of templates and static_assert stay as they are, and so do how much room is kept
for what comes (reserve) and the distances and sizes of what is drawn where a constant or a call that is named for it has
them: no rule says them. What does not compile is for the compiler to find.
"""

import random
import re
import sys

SKIPPED = re.compile(
    r'//[^\n]*|/\*.*?\*/|R"(\w*)\(.*?\)\1"|"(?:\\.|[^"\\\n])*"|(?<![0-9A-Fa-f])\'(?:\\.|[^\'\\\n])+\'|^[ \t]*#(?:[^\n\\]|\\.|\\\n)*'
    r'|\bstatic_assert\b[^;]*;|\btemplate <[^\n]*|\bnamespace\b[^\n]*|\busing\b[^\n]*|\boperator\S+|\bcase [^\n:]*:',
    re.DOTALL | re.MULTILINE)

# How much is kept room for, and how far widgets stand apart and how large what is drawn is, which no rule says.
ROOM = re.compile(r'\breserve\([^;]*;|\bmallopt\([^;]*;')
DRAWN = re.compile(
    r'\b(?:set(?:ContentsMargins|Spacing|HorizontalSpacing|VerticalSpacing)|addSpacing)\([^;]*;'
    r'|\bconstexpr (?:int|double) \w+(?:Margin|Gap|Edge|Width|Height|Side|Distance|Rows|Lines|Letters|Column|Columns|Reach) = [^;]*;'
    r'|\bconstexpr QSize \w+(?:Size|Room)\([^;]*;')

# A value that something has before it gets its own; most never show.
INITIAL = re.compile(r' = 0[uUlL]*;')

# Operators stand between blanks here, as clang-format has them; the brackets of templates do not.
OPERATORS = {
    '<': ['<='], '<=': ['<'], '>': ['>='], '>=': ['>'], '==': ['!='], '!=': ['=='], '&&': ['||'], '||': ['&&'],
    '+': ['-'], '-': ['+'], '*': ['+'], '/': ['*'], '%': ['/'], '<<': ['>>'], '>>': ['<<'], '|': ['&'], '&': ['|'],
    '^': ['|'], '+=': ['-='], '-=': ['+='], '|=': ['&='], '&=': ['|=']}
OPERATOR = re.compile(r'(?<= )(?:<<|>>|[<>=!]=|&&|\|\||[-+|&]=|[-+*/%<>|&^])(?= )')
STEP = re.compile(r'\+\+|--')
NUMBER = re.compile(r"(?<![\w.'])(?:0[xX][0-9A-Fa-f']+|\d[\d']*)(?=[uUlL]*(?![\w.']))")
TRUTH = re.compile(r'\b(?:true|false)\b')
# One that declares what it asks has no opposite.
CONDITION = re.compile(r'\b(?:if|while) \((?!constexpr|(?:const )?[\w:<>]+[ &*]+\w+ = )')
STATEMENT = re.compile(r'^[ \t]+(?![ \t]|return [^;]|case\b|default\b|const\b|constexpr\b|static\b|auto\b|throw\b'
                       r'|friend\b|else\b|if\b|for\b|while\b|do\b|[}\]):?.&|])[^\n{}]*[^\s{}();,][^\n{}]*;[ \t]*$', re.MULTILINE)
# What declares is left: a name after a type.
DECLARATION = re.compile(r'^[ \t]+(?:\[\[[^\]]*\]\] )?(?:explicit )?[\w:]+(?:<[^;=]*>)?[ &*]+\w+(?:\[[^\]]*\])?(?:\([^;]*\) const'
                         r'|\([^;]*\)(?: = default| = delete)?| = [^;]*|\{\})?;[ \t]*$'
                         r'|^[ \t]+(?:\[\[|mutable\b|~|[\w:]+ \(\*)|\b(?:override|noexcept);[ \t]*$')
CLASS = re.compile(r'\b(?:class|struct) (\w+)')


def blanked(source, isDrawn):
    """The source with all that stays made blank, each byte in its place; isDrawn: of the window."""
    def blank(found):
        return re.sub(r'[^\n]', ' ', found.group())
    code = INITIAL.sub(blank, ROOM.sub(blank, SKIPPED.sub(blank, source)))
    return DRAWN.sub(blank, code) if isDrawn else code


def closing(source, opening):
    depth = 0
    for at in range(opening, len(source)):
        depth += {'(': 1, ')': -1}.get(source[at], 0)
        if depth == 0:
            return at
    return None


def changes(source, isDrawn):
    """Start, end and what takes the place of it."""
    code = blanked(source, isDrawn)
    for found in OPERATOR.finditer(code):
        for other in OPERATORS.get(found.group(), []):
            yield found.start(), found.end(), other
    for found in STEP.finditer(code):
        yield found.start(), found.end(), '--' if found.group() == '++' else '++'
    for found in NUMBER.finditer(code):
        digits = found.group().replace("'", '')
        isOctal = digits.startswith('0') and digits.isdigit()
        yield found.start(), found.end(), str((int(digits, 8) if isOctal else int(digits, 0)) + 1)
    for found in TRUTH.finditer(code):
        yield found.start(), found.end(), 'false' if found.group() == 'true' else 'true'
    for found in CONDITION.finditer(code):
        opening = found.end() - 1
        end = closing(code, opening)
        if end is not None and ';' not in code[opening:end]:
            yield opening, end + 1, '(!(' + source[opening + 1:end] + '))'
    classes = set(CLASS.findall(code))
    for found in STATEMENT.finditer(code):
        text = found.group()
        # What goes on from the line before is no statement; what is said to a stream or an object further is one more.
        isBegun = code[:found.start()].rstrip()[-1:] in ';{}:' or text.lstrip().startswith(('<<', '->'))
        isConstructor = text.split('(')[0].strip() in classes and ').' not in text
        isDeclared = isConstructor or DECLARATION.search(text) or re.search('= (?:delete|default);', text)
        if isBegun and not isDeclared:
            start = found.start() + len(text) - len(text.lstrip())
            yield start, found.end(), ';'


def changes_of(path):
    with open(path, encoding='utf-8') as file:
        source = file.read()
    for start, end, other in sorted(changes(source, path.startswith('app/'))):
        if '\n' in other or '\n' in source[start:end]:
            continue
        line = source.count('\n', 0, start) + 1
        column = start - (source.rfind('\n', 0, start) + 1)
        prefix = source[start - column:start]
        yield [path, line, len(prefix.encode()), len(source[start:end].encode()), other]


def main():
    found = [change for path in sorted(sys.argv[3:]) for change in changes_of(path)]
    sample = int(sys.argv[1])
    if 0 < sample < len(found):
        found = random.Random(int(sys.argv[2])).sample(found, sample)
    for change in sorted(found, key=lambda change: (change[0].endswith('.h'), change)):
        print(*change, sep='\t')


main()
