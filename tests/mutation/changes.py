"""The small changes that can be made to a source, found in clang's syntax tree of it."""
import collections
import json
import re
import subprocess

# kind: what sort of change, for an even choice; begin, end: bytes of the source; text: what stands there
# then; of "statement" and "limit" the text is made by render() itself.
Change = collections.namedtuple('Change', 'kind begin end text')

LIMITS = {'<': '<=', '<=': '<', '>': '>=', '>=': '>', '==': '!=', '!=': '=='}
SIGNS = {'+': '-', '-': '+', '+=': '-=', '-=': '+=', '++': '--', '--': '++', '&&': '||', '||': '&&'}
# What is needed while compiling can't depend on a variable.
UNTOUCHED = {'ConstantExpr', 'StaticAssertDecl', 'UnaryExprOrTypeTraitExpr', 'CXXNoexceptExpr', 'EnumDecl',
             'TemplateArgument', 'CXXDefaultArgExpr'}
STATEMENTS = {'CallExpr', 'CXXMemberCallExpr', 'CXXOperatorCallExpr', 'BinaryOperator', 'CompoundAssignOperator',
              'UnaryOperator', 'ExprWithCleanups', 'BreakStmt', 'ContinueStmt', 'CXXDeleteExpr'}
NUMBER = re.compile(r'0|[1-9]\d*')  # what begins with 0 is octal, mostly a file's mode
ARITHMETIC = re.compile(r'(const )?((unsigned |signed )?(int|long|short|char|long long)|unsigned|double|float|'
                        r'std::\w+|u?int\d+_t|size_t|ssize_t|off_t|size_type|difference_type|pid_t)$')


def syntax_trees(path, arguments, spaces=('zendry', 'mavro')):
    """The trees of what the source itself declares in our namespaces."""
    for space in spaces:
        done = subprocess.run(['clang++', *arguments, '-w', '-fsyntax-only', '-Xclang', '-ast-dump=json', '-Xclang',
                               f'-ast-dump-filter={space}', path], capture_output=True)
        text, at = done.stdout.decode('utf-8', 'replace'), 0
        while (at := text.find('{', at)) >= 0:
            tree, at = json.JSONDecoder().raw_decode(text, at)
            if 'includedFrom' not in tree['loc'] and tree.get('name', '').startswith(space):
                yield tree


class Finder:
    """Walks a tree and collects changes."""

    def __init__(self, source):
        self.source = source
        self.found = {}

    def span(self, node):
        """The bytes of a node, or nothing if a macro wrote it."""
        first, last = (node.get('range', {}).get(end, {}) for end in ('begin', 'end'))
        if 'offset' not in first or 'offset' not in last or 'includedFrom' in first:
            return None
        return first['offset'], last['offset'] + last['tokLen']

    def text(self, node):
        span = self.span(node)
        return self.source[span[0]:span[1]] if span else ''

    def add(self, kind, node, text):
        span = self.span(node)
        if span and text and '//' not in text and 'R"' not in text:
            self.found[kind, *span, ' '.join(text.split('\n'))] = None

    def walk(self, node, function=None):
        kind = node.get('kind', '')
        if kind in UNTOUCHED or (kind.endswith('Stmt') and node.get('isConstexpr')):
            return
        if kind == 'VarDecl' and node.get('constexpr'):
            return self.declared_limit(node)
        if node.get('constexpr') and kind != 'CXXConstructorDecl':
            return
        if node.get('isImplicit') or node.get('explicitlyDefaulted'):
            return
        inner = [child for child in node.get('inner', [])]
        if visit := getattr(self, kind, None):
            visit(node, inner)
        for child in inner:
            if child:
                self.walk(child)

    def declared_limit(self, node):
        values = [n for n in node.get('inner', []) if n.get('kind') in ('IntegerLiteral', 'ImplicitCastExpr')]
        if values and NUMBER.fullmatch(self.text(values[0])) and self.text(node).startswith('constexpr'):
            self.add('limit declared', node, self.text(values[0]))

    # Kinds of nodes, named as clang names them.

    def BinaryOperator(self, node, inner):
        self.operator(node, inner, node['opcode'])

    CompoundAssignOperator = BinaryOperator

    def UnaryOperator(self, node, inner):
        sign = node['opcode']
        if sign == '!':
            self.add('condition', node, self.text(inner[0]))
        elif sign in SIGNS and '*' not in node['type']['qualType']:
            text = self.text(node)
            other = SIGNS[sign]
            if sign in ('++', '--'):
                self.add('sign', node, text[:-2] + other if node.get('isPostfix') else other + text[2:])

    def operator(self, node, inner, sign):
        left, right = self.span(inner[0]), self.span(inner[1])
        whole = self.span(node)
        if not (left and right and whole):
            return
        between = self.source[left[1]:right[0]]
        if between.count(sign) != 1:
            return
        plain = all(ARITHMETIC.match(n.get('type', {}).get('qualType', '')) for n in (node, *inner))
        if sign in LIMITS and node['type']['qualType'] == 'bool':
            self.swap('limit', node, left, right, between, sign, LIMITS[sign])
        elif sign in ('&&', '||'):
            self.swap('and-or', node, left, right, between, sign, SIGNS[sign])
            self.add('half', node, self.text(inner[0]))
            self.add('half', node, self.text(inner[1]))
        elif sign in SIGNS and plain:
            self.swap('sign', node, left, right, between, sign, SIGNS[sign])

    def swap(self, kind, node, left, right, between, sign, other):
        first, last = self.span(node)
        text = self.source[first:left[1]] + between.replace(sign, other) + self.source[right[0]:last]
        self.add(kind, node, text)

    def CXXOperatorCallExpr(self, node, inner):
        if node.get('type', {}).get('qualType') == 'bool':
            self.add('condition', node, f'!({self.text(node)})')

    CXXRewrittenBinaryOperator = CXXOperatorCallExpr

    def IntegerLiteral(self, node, inner):
        text = self.text(node)
        if NUMBER.fullmatch(text):
            self.add('number', node, str(int(text) + 1))
            if int(text) > 0:
                self.add('number', node, str(int(text) - 1))

    def CharacterLiteral(self, node, inner):
        if re.fullmatch(r"'[a-zA-Z0-9:;,.(){}<>=/*&|-]'", self.text(node)):
            self.add('number', node, "'\\x01'")

    def CXXBoolLiteralExpr(self, node, inner):
        if self.text(node) in ('true', 'false'):
            self.add('truth', node, 'false' if self.text(node) == 'true' else 'true')

    def ConditionalOperator(self, node, inner):
        self.turned(inner[0])

    def turned(self, node):
        if node and node.get('kind') != 'DeclStmt' and self.text(node):
            self.add('condition', node, f'!({self.text(node)})')

    def ReturnStmt(self, node, inner):
        if inner and inner[0].get('type', {}).get('qualType') == 'bool':
            if self.text(inner[0]) not in ('true', 'false', ''):
                self.add('truth', inner[0], f'!({self.text(inner[0])})')

    def CompoundStmt(self, node, inner):
        for place, child in enumerate(inner):
            self.droppable(child)
            if child.get('kind') == 'IfStmt' and place + 1 < len(inner) and not child.get('hasElse'):
                body = child['inner'][-1]
                if body.get('kind') == 'CompoundStmt' and body.get('inner'):
                    body = body['inner'][-1]
                if body.get('kind') == 'ReturnStmt':
                    self.dropped(body)

    def IfStmt(self, node, inner):
        rest = inner[1 if node.get('hasInit') else 0:]
        if not node.get('hasVar'):
            self.turned(rest[0])
            for child in rest[1:]:
                self.droppable(child)

    def WhileStmt(self, node, inner):
        if not node.get('hasVar'):
            self.turned(inner[0])
        self.droppable(inner[-1])

    def ForStmt(self, node, inner):
        if len(inner) == 5 and inner[2]:
            self.turned(inner[2])
        self.droppable(inner[-1])

    def CXXForRangeStmt(self, node, inner):
        self.droppable(inner[-1])

    CaseStmt = DefaultStmt = CXXForRangeStmt

    def droppable(self, node):
        if node and node.get('kind') in STATEMENTS:
            self.dropped(node)

    def dropped(self, node):
        span = self.span(node)
        if not span:
            return
        semicolon = re.compile(r'\s*;').match(self.source, span[1])
        if semicolon:
            self.found['statement', span[0], semicolon.end(), ''] = None


def find(path, arguments):
    """All changes of a source and its text, in the order of their places."""
    with open(path, encoding='latin-1', newline='') as file:
        source = file.read()
    finder = Finder(source)
    for tree in syntax_trees(path, arguments):
        finder.walk(tree)
    return [Change(*c) for c in sorted(finder.found, key=lambda c: (c[1], -c[2], c[0], c[3]))], source


def choose(changes, most, random):
    """`most` of the changes, of each kind about as many; the first few are as good a choice."""
    kinds = collections.defaultdict(list)
    for change in changes:
        kinds[change.kind].append(change)
    for group in kinds.values():
        random.shuffle(group)
    chosen = []
    while len(chosen) < most and any(kinds.values()):
        for kind in sorted(kinds):
            if kinds[kind] and len(chosen) < most:
                chosen.append(kinds[kind].pop())
    return chosen


def render(source, numbered, begin=0, end=None):
    """The source with all changes in it, each behind a question for its number. Lines stay where they are."""
    end = len(source) if end is None else end
    spans = collections.defaultdict(list)
    for number, change in numbered:
        if begin <= change.begin and change.end <= end:
            spans[change.begin, change.end].append((number, change))
    text, at = [], begin
    for (first, last), here in sorted(spans.items(), key=lambda s: (s[0][0], -s[0][1])):
        if first < at:
            continue
        within = [(n, c) for n, c in numbered if (n, c) not in here]
        text += [source[at:first], guarded(here, render(source, within, first, last))]
        at = last
    return ''.join(text) + source[at:end]


def guarded(here, text):
    for number, change in here:
        question = f'mutant::Is({number})'
        if change.kind == 'statement':
            text = f'{{ if (!{question}) {{ {text} }} }}'
        elif change.kind == 'limit declared':
            value = int(change.text)
            head, _, tail = text.removeprefix('constexpr').rpartition(change.text)
            text = f'const{head}({question} ? {value + 1} : {value}){tail}'
        elif change.kind in ('condition', 'half'):
            # What is asked may be no bool, but a pointer or what converts to one.
            text = f'({question} ? !!({change.text}) : !!({text}))'
        else:
            text = f'({question} ? ({change.text}) : ({text}))'
    return text


def shown(source, change):
    """A change in words, on one line."""
    line = source.count('\n', 0, change.begin) + 1
    before = ' '.join(source[change.begin:change.end].split())
    if change.kind == 'statement':
        return f'{line}: dropped: {before}'
    if change.kind == 'limit declared':
        return f'{line}: one more: {before}'
    return f'{line}: {before}  ->  {" ".join(change.text.split())}'
