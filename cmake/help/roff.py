"""Reads manual pages (man macros, as much of roff as they use) into sections of plain text."""
import gzip
import os
import re

SPECIAL = {'aq': "'", 'dq': '"', 'cq': '\u2019', 'oq': '\u2018', 'lq': '\u201c', 'rq': '\u201d', 'em': '\u2014',
           'en': '\u2013', 'bu': '\u2022', 'co': '\u00a9', 'mu': '\u00d7', '+-': '\u00b1', '<=': '\u2264',
           '>=': '\u2265', '!=': '\u2260', '->': '\u2192', '<-': '\u2190', 'ha': '^', 'ti': '~', 'rs': '\\',
           'if': '\u221e', 'pi': '\u03c0', 'sr': '\u221a', 'ga': '`', 'mc': '\u00b5', 'de': '\u00b0', 'fm': '\u2032',
           '*p': '\u03c0', '*e': '\u03b5', '*m': '\u03bc', '12': '\u00bd', 'sc': '\u00a7', '==': '\u2261', 'at': '@',
           'lB': '[', 'rB': ']', 'lC': '{', 'rC': '}', 'la': '\u27e8', 'ra': '\u27e9', 'or': '|', 'ba': '|', 'sl': '/',
           "'e": '\u00e9', "'a": '\u00e1', ':u': '\u00fc', ':o': '\u00f6', ':a': '\u00e4', 'ss': '\u00df', 'hy': '-',
           'Fo': '\u00ab', 'Fc': '\u00bb', 'mi': '-', 'eq': '=', 'nm': '\u2209', 'mo': '\u2208', 'ua': '\u2191',
           'da': '\u2193', 'no': '\u00ac', 'tm': '\u2122', 'rg': '\u00ae', 'lh': '\u261c', 'rh': '\u261e', ',c': '\u00e7'}
ESCAPE = re.compile(r'''\\(?:f(?:\[[^]]*\]|\(..|.) | s[-+]?\d{1,2} | s.\d? | \*(?:\[[^]]*\]|\(..|.)
                     | \[(?P<long>[^]]*)\] | \((?P<two>..) | [hvw]'[^']*' | m\[[^]]*\] | (?P<one>.) | $)''', re.X)
ONE = {'e': '\\', '-': '-', '&': '', '/': '', ',': '', '|': '', '^': '', ' ': '\u00a0', '~': '\u00a0', '0': ' ',
       'c': '', ':': '', '%': '', 't': '\t', '\\': '\\', "'": '\u00b4', '`': '`', '.': '.', 'p': '', 'd': '', 'u': ''}
FONTS = {'B', 'I', 'BR', 'BI', 'IB', 'IR', 'RB', 'RI', 'SM', 'SB'}
PARAGRAPHS = {'PP', 'P', 'LP', 'sp', 'RS', 'RE', 'br', 'HP', 'ti', 'in'}
ARGUMENTS = re.compile(r'"((?:[^"]|"")*)"?|((?:\\ |\S)+)')


def plain(text):
    """A text without its escapes."""
    def one(match):
        if (name := match['long'] or match['two']) is not None:
            if re.fullmatch(r'u[0-9A-F]{4,5}', name):
                return chr(int(name[1:], 16))
            return SPECIAL.get(name, '')
        return ONE.get(match['one'], match['one']) if match['one'] else ''
    text = re.sub(r'\\".*', '', text)
    return ESCAPE.sub(one, text)


def arguments(text):
    text = re.sub(r'\s*\\".*', '', text)
    return [(match[1] or '').replace('""', '"') if match[1] is not None else match[2]
            for match in ARGUMENTS.finditer(text)]


class Page:
    """A page: its comments, and its sections as (title, text). Subsections of doxygen's kind can stay apart."""

    def __init__(self, lines, split_subsections=False):
        self.split = split_subsections
        self.sections = []  # [title, level, lines]
        self.notice = []
        self.fill = True
        self.line = ''
        self.tag_next = False
        self.indent = ''
        self.lines = lines
        for line in self.unfolded():
            self.take(line)
        self.end_line()

    def unfolded(self):
        """Lines without the blocks that only the printer wants."""
        skip = None
        for line in self.lines:
            if skip:
                if re.match(skip, line):
                    skip = None
                continue
            if re.match(r"['.]\s*(de1?|am|ig)\b", line):
                skip = r'\.\.'
            elif re.match(r"['.]\s*(if|ie|el)\b.*\\\{", line):
                skip = r'.*\\\}'
            elif line.startswith('.EQ'):
                skip = r'\.EN'
            else:
                yield line

    def text(self, title):
        return '\n'.join('\n'.join(lines).strip('\n') for name, _, lines in self.sections if name == title)

    def take(self, line):
        if line.startswith(('.\\"', "'\\\"")):
            self.notice.append(line[3:].strip())
        elif line.startswith(('.', "'")):
            match = re.match(r"['.]\s*(\S*)\s*(.*)", line)
            self.macro(match[1], match[2])
        elif not self.sections:
            pass
        elif not self.fill:
            self.out(plain(line))
        elif not line.strip():
            self.end_paragraph()
        else:
            self.add(plain(line), starts_line=line.startswith(' '), joined=line.endswith('\\c'))

    def macro(self, name, rest):
        if name in ('SH', 'SS') and (name == 'SH' or self.split):
            self.end_line()
            self.fill, self.indent = True, ''
            self.sections.append((plain(' '.join(arguments(rest)) if name == 'SH' else rest.strip('"')), name, []))
        elif not self.sections:
            pass
        elif name == 'SS':
            self.end_paragraph()
            self.indent = ''
            self.out(plain(' '.join(arguments(rest))))
        elif name in FONTS:
            parts = arguments(rest)
            text = ''.join(parts) if len(name) == 2 and name not in ('SM', 'SB') else ' '.join(parts)
            self.out(plain(text)) if not self.fill else self.add(plain(text))
        elif name in ('nf', 'EX', 'fi', 'EE', 'TS', 'TE'):
            self.end_line()
            self.fill = name in ('fi', 'EE', 'TE')
            if name == 'TS':
                self.table()
        elif name in ('TP', 'TQ'):
            self.end_paragraph() if name == 'TP' else self.end_line()
            self.tag_next = True
        elif name == 'IP':
            self.end_paragraph()
            tag = arguments(rest)[:1]
            self.indent = ''
            if tag and plain(tag[0]).strip():
                self.line = plain(tag[0]) + ' '
                if len(self.line) > 3:
                    self.end_line()
                    self.indent = '    '
        elif name in PARAGRAPHS:
            self.end_line() if name in ('br', 'RS', 'RE', 'ti', 'in') or self.tag_next else self.end_paragraph()
            self.indent = '' if name in ('PP', 'P', 'LP', 'RE') else self.indent
        elif name in ('UR', 'MT'):
            self.add(plain(rest))

    def table(self):
        """Skips the format of a table; its rows follow as lines."""
        self.sections[-1][2].append('')

    def add(self, text, starts_line=False, joined=False):
        if starts_line:
            self.end_line()
        if self.tag_next:
            self.tag_next = False
            self.indent = ''
            self.sections[-1][2].append(text.strip())
            self.indent = '    '
            return
        glue = '' if not self.line or self.line.endswith('\u0001') else ' '
        self.line = self.line.rstrip('\u0001 ' if glue == '' else ' ') + glue + text.strip() + ('\u0001' if joined else '')

    def out(self, line):
        self.end_line()
        self.sections[-1][2].append(line.rstrip())

    def end_line(self):
        if self.line.strip('\u0001 '):
            self.sections[-1][2].append(self.indent + self.line.strip('\u0001 '))
        self.line = ''

    def end_paragraph(self):
        self.end_line()
        lines = self.sections[-1][2]
        if lines and lines[-1]:
            lines.append('')


def read_page(path, **options):
    """The page in a compressed file; null for one that only refers to another one."""
    with gzip.open(path, 'rt', encoding='utf-8', errors='replace') as file:
        lines = file.read().split('\n')
    return None if any(line.startswith('.so ') for line in lines[:5]) else Page(lines, **options)


def target(path):
    """The file name of the page that a file refers to, by a link or by its text."""
    if os.path.islink(path):
        return os.path.basename(os.readlink(path))
    if os.path.getsize(path) < 120:
        with gzip.open(path, 'rt', encoding='utf-8', errors='replace') as file:
            if match := re.search(r'^\.so\s+(\S+)', file.read(), re.M):
                return os.path.basename(match[1]).removesuffix('.gz') + '.gz'
    return None
