#!/usr/bin/python3
"""How many declarations of real files zendry-tags finds, judged by clang's own tree.

    tags_accuracy.py --tags build/dev/bin/zendry-tags --corpora FOLDER [--only NAME] [--most 300]

Each file is parsed by clang alone (libclang 14: the tree that `-ast-dump=json` prints, which takes
700 MB for one header of Qt). Declarations of the main file are compared by kind, name and line. A
file that clang can't parse alone is left out. The judgement of a file is kept under
FOLDER/judged, so that a later run only asks zendry-tags.

Left out on both sides: names that begin with an underscore, since the store drops them; names that
a macro makes up, since they don't stand in the file; text of branches that clang didn't take.
Names in the arguments of a macro are counted apart: `DECLARE(name)` doesn't say what it declares.

FOLDER/root holds unpacked packages (libboost1.74-dev, libfmt-dev, librange-v3-dev), FOLDER itself
the sources of lua and sqlite3, FOLDER/made the headers that the build of sqlite3 makes (`make
sqlite3.h opcodes.h parse.h keywordhash.h`). Debian's lua also needs its lua5.4-deb-multiarch.h
beside its sources, with `#define DEB_HOST_MULTIARCH "x86_64-linux-gnu"`. Qt, glibc and Linux are
read where the machine has them.
"""

import argparse
import collections
import ctypes
import glob
import hashlib
import json
import os
import re
import subprocess
import sys

import clang.cindex as ci
from clang.cindex import CursorKind as K

QT = '/usr/include/x86_64-linux-gnu/qt6'
GLIBC_FOLDERS = ['', 'sys', 'arpa', 'net', 'netinet', 'rpc', 'protocols', 'bits']

# What a declaration of clang's tree is for the tags.
CLASS_KINDS = {K.CLASS_DECL: 'c', K.STRUCT_DECL: 's', K.UNION_DECL: 'u', K.ENUM_DECL: 'g'}
TEMPLATES = (K.CLASS_TEMPLATE, K.CLASS_TEMPLATE_PARTIAL_SPECIALIZATION)
FUNCTIONS = (K.FUNCTION_DECL, K.CXX_METHOD, K.CONSTRUCTOR, K.DESTRUCTOR, K.CONVERSION_FUNCTION,
             K.FUNCTION_TEMPLATE)
ALIASES = (K.TYPEDEF_DECL, K.TYPE_ALIAS_DECL, K.TYPE_ALIAS_TEMPLATE_DECL)
SCOPES = (K.NAMESPACE, K.LINKAGE_SPEC, K.UNEXPOSED_DECL, K.FRIEND_DECL)
ROW_OF = {'c': 'classes', 's': 'classes', 'u': 'classes', 'g': 'classes', 'm': 'members',
          'f': 'functions', 'p': 'prototypes', 't': 'typedefs', 'e': 'enumerators'}
ROWS = ['classes', 'members', 'functions', 'prototypes', 'typedefs', 'enumerators']
WITH_SKIPPED_RANGES = 0x01


class SourceRangeList(ctypes.Structure):
    _fields_ = [('count', ctypes.c_uint), ('ranges', ctypes.POINTER(ci.SourceRange))]


def corpora(folder):
    """Name, flags and files of each corpus."""
    root = os.path.join(folder, 'root/usr/include')
    qt = [f for part in ('QtCore', 'QtGui', 'QtWidgets', 'QtNetwork', 'QtXml', 'QtSql', 'QtTest',
                         'QtPrintSupport', 'QtDBus', 'QtConcurrent')
          for f in sorted(glob.glob(f'{QT}/{part}/*.h'))]
    qt_flags = ['-x', 'c++', '-std=c++17', '-fPIC', f'-I{QT}'] + [
        f'-I{QT}/{part}' for part in os.listdir(QT)]
    boost = sorted(f for kind in ('hpp', 'h') for f in glob.glob(f'{root}/boost/**/*.{kind}',
                                                                 recursive=True)
                   if '/preprocessed/' not in f and '/mpl/aux_/' not in f)
    glibc = [f for part in GLIBC_FOLDERS for base in ('/usr/include', '/usr/include/x86_64-linux-gnu')
             for f in sorted(glob.glob(os.path.join(base, part, '*.h'))) if is_of_glibc(f)]
    uapi = [f for part in ('linux', 'linux/netfilter', 'asm-generic', 'drm', 'rdma', 'scsi', 'sound',
                           'mtd', 'video', 'x86_64-linux-gnu/asm')
            for f in sorted(glob.glob(f'/usr/include/{part}/*.h'))]
    lua = glob.glob(f'{folder}/lua-*/src/*.[ch]')
    sqlite = ['/usr/include/sqlite3.h', '/usr/include/sqlite3ext.h'] + sorted(
        glob.glob(f'{folder}/sqlite3-*/src/*.[ch]') +
        glob.glob(f'{folder}/sqlite3-*/ext/*/*.[ch]'))
    sqlite_flags = ['-x', 'c', '-DSQLITE_CORE=1'] + [
        f'-I{f}' for f in glob.glob(f'{folder}/sqlite3-*/src') + glob.glob(f'{folder}/made')]
    return {
        'qt': (qt_flags, qt),
        'boost': (['-x', 'c++', '-std=c++17', f'-I{root}'], spread(boost, 700)),
        'fmt': (['-x', 'c++', '-std=c++20', f'-I{root}'], sorted(glob.glob(f'{root}/fmt/*.h'))),
        'range-v3': (['-x', 'c++', '-std=c++20', f'-I{root}'],
                     sorted(glob.glob(f'{root}/**/*.hpp', recursive=True)) and
                     sorted(f for part in ('range', 'concepts', 'meta', 'std')
                            for f in glob.glob(f'{root}/{part}/**/*.hpp', recursive=True))),
        'glibc': (['-x', 'c', '-D_GNU_SOURCE'], glibc),
        'uapi': (['-x', 'c'], uapi),
        'lua': (['-x', 'c'], sorted(lua)),
        'sqlite': (sqlite_flags, sqlite),
    }


def spread(files, most):
    """As many files, evenly from the whole list."""
    if len(files) <= most:
        return files
    return [files[i * len(files) // most] for i in range(most)]


def is_of_glibc(path):
    if not hasattr(is_of_glibc, 'files'):
        out = subprocess.run(['dpkg', '-L', 'libc6-dev'], capture_output=True, text=True).stdout
        is_of_glibc.files = set(out.split())
    return path in is_of_glibc.files


def plain_name(name):
    """As it stands in the file, without blanks and template arguments."""
    if not name.startswith('operator'):
        name = name.split('<')[0]
    elif re.match(r'operator\s*[\w:]', name) and not re.match(r'operator\s*(new|delete|co_await)\b',
                                                               name):
        return 'operator""' if '"' in name else 'operator type'
    elif '""' in name:
        return 'operator""'
    return name.replace(' ', '')


def our_name(name):
    name = name.split('::')[-1] if not name.startswith('operator') else name
    if re.match(r'operator\s+[\w:]', name) and not re.match(
            r'operator\s+(new|delete|co_await)\b', name):
        return 'operator type'
    if '"' in name:
        return 'operator""'
    return name.replace(' ', '')


class Judge:
    """Reads a file by clang."""

    def __init__(self):
        self.index = ci.Index.create()
        ci.conf.lib.clang_getSkippedRanges.restype = ctypes.POINTER(SourceRangeList)
        ci.conf.lib.clang_getFileLocation.argtypes = [
            ci.SourceLocation, ctypes.POINTER(ctypes.c_void_p), ctypes.POINTER(ctypes.c_uint),
            ctypes.POINTER(ctypes.c_uint), ctypes.POINTER(ctypes.c_uint)]
        ci.conf.lib.clang_Location_isFromMainFile.argtypes = [ci.SourceLocation]
        ci.conf.lib.clang_Location_isFromMainFile.restype = ctypes.c_int

    def read(self, path, flags):
        """Declarations and skipped lines; None if clang can't parse the file alone."""
        try:
            unit = self.index.parse(path, flags, options=WITH_SKIPPED_RANGES)
        except ci.TranslationUnitLoadError:
            return None
        if any(d.severity >= ci.Diagnostic.Error for d in unit.diagnostics):
            return None
        self.unit = unit
        with open(path, 'rb') as file:
            self.text = file.read()
        self.found = []
        self.renamed = set()
        self.seen = set()
        for cursor in unit.cursor.get_children():
            if self.is_of_file(cursor, path):
                self.visit(cursor)
            elif cursor.location.file is not None and cursor.location.file.name == path:
                self.renamed.add(cursor.location.line)
        return {'declared': sorted(self.found), 'renamed': sorted(self.renamed),
                'skipped': self.skipped(path)}

    @staticmethod
    def is_of_file(cursor, path):
        """A namespace that a macro opens has its place in the macro: the call counts."""
        if ci.conf.lib.clang_Location_isFromMainFile(cursor.location):
            return True
        file = cursor.location.file if cursor.kind in SCOPES else None
        return file is not None and file.name == path

    def skipped(self, path):
        file = self.unit.get_file(path)
        ranges = ci.conf.lib.clang_getSkippedRanges(self.unit, file)
        if not ranges:
            return []
        found = ranges.contents
        return [[found.ranges[i].start.line, found.ranges[i].end.line]
                for i in range(found.count)]

    def place(self, cursor):
        """Offset and line of the name in the file, and true if it is in a macro's arguments."""
        file, line, column, offset = (ctypes.c_void_p(), ctypes.c_uint(), ctypes.c_uint(),
                                      ctypes.c_uint())
        ci.conf.lib.clang_getFileLocation(cursor.location, ctypes.byref(file), ctypes.byref(line),
                                          ctypes.byref(column), ctypes.byref(offset))
        return offset.value, line.value, cursor.location.offset != offset.value

    def note(self, cursor, kinds, name=None):
        name = name or cursor.spelling
        if not name or name.startswith('(') or '(anonymous' in name.split('<')[0]:
            return
        name = plain_name(name)
        offset, line, is_argument = self.place(cursor)
        written = self.text[offset:offset + len(name) + 20].decode('latin-1')
        word = 'operator' if name.startswith('operator') else name
        if name.startswith('~'):
            word = '~'
        if not written.startswith(word) or re.match(r'\w', written[len(word):]) and word != '~':
            self.renamed.add(line)
            return
        if name.startswith('_') or (offset, kinds) in self.seen:
            return
        self.seen.add((offset, kinds))
        self.found.append([line, name, kinds, is_argument])

    def visit(self, cursor):
        kind = cursor.kind
        if kind in CLASS_KINDS or kind in TEMPLATES:
            self.visit_class(cursor)
        elif kind in FUNCTIONS:
            if kind == K.FUNCTION_TEMPLATE and cursor.spelling.startswith('<deduction'):
                return
            is_special = cursor.is_default_method() or self.is_deleted(cursor)
            self.note(cursor, 'pf' if is_special else 'f' if cursor.is_definition() else 'p')
            self.visit_types(cursor)
        elif kind in ALIASES:
            if kind == K.TYPE_ALIAS_TEMPLATE_DECL:
                for child in cursor.get_children():
                    if child.kind == K.TYPE_ALIAS_DECL:
                        self.visit(child)
                return
            self.note(cursor, 't')
            self.visit_types(cursor)
        elif kind == K.ENUM_CONSTANT_DECL:
            self.note(cursor, 'e')
        elif kind == K.FIELD_DECL:
            self.note(cursor, 'm')
            self.visit_types(cursor)
        elif kind == K.VAR_DECL:
            if self.is_of_class(cursor):
                self.note(cursor, 'm')
            self.visit_types(cursor)
        elif kind == K.UNEXPOSED_DECL and cursor.spelling and self.is_of_class(cursor):
            self.note(cursor, 'm')  # libclang has no kind for a template of a variable
        elif kind in SCOPES:
            for child in cursor.get_children():
                self.visit(child)

    @staticmethod
    def is_of_class(cursor):
        parent = cursor.semantic_parent
        return parent is not None and (parent.kind in CLASS_KINDS or parent.kind in TEMPLATES)

    def is_deleted(self, cursor):
        tokens = self.text[cursor.extent.end.offset - 12:cursor.extent.end.offset + 12]
        return b'delete' in tokens

    def visit_types(self, cursor):
        """Classes that are defined within another declaration."""
        for child in cursor.get_children():
            if child.kind in CLASS_KINDS and child.is_definition():
                self.visit(child)

    def visit_class(self, cursor):
        if not cursor.is_definition():
            return
        kind = cursor.kind
        if kind in TEMPLATES:
            kind = ci.CursorKind.from_id(ci.conf.lib.clang_getTemplateCursorKind(cursor))
        self.note(cursor, CLASS_KINDS.get(kind, 'c'))
        for child in cursor.get_children():
            self.visit(child)


def judged(folder, judge, path, flags):
    """The judgement of a file, from the folder if it is there."""
    status = os.stat(path)
    key = hashlib.sha1(f'7 {path} {status.st_mtime_ns} {flags}'.encode()).hexdigest()
    kept = os.path.join(folder, 'judged', key[:2], key + '.json')
    if os.path.exists(kept):
        with open(kept, encoding='utf-8') as file:
            return json.load(file)
    if judge is None:
        return None
    result = judge.read(path, flags)
    os.makedirs(os.path.dirname(kept), exist_ok=True)
    with open(kept + '.new', 'w', encoding='utf-8') as file:
        json.dump(result, file)
    os.replace(kept + '.new', kept)
    return result


def ours(program, files):
    """The tags of each file: line, name and kind."""
    tags = collections.defaultdict(list)
    for start in range(0, len(files), 200):
        out = subprocess.run([program] + files[start:start + 200], capture_output=True,
                             check=False).stdout.decode('latin-1')
        for row in out.split('\n'):
            fields = row.split('\t')
            if row.startswith('!') or len(fields) < 4 or fields[3] not in ROW_OF:
                continue
            tags[fields[1]].append((int(fields[2].rstrip(';"')), our_name(fields[0]), fields[3]))
    return tags


class Score:
    def __init__(self):
        self.right, self.missed, self.false = (collections.Counter() for _ in range(3))
        self.arguments = collections.Counter()  # names in the arguments of macros: all and found
        self.misses = collections.defaultdict(list)
        self.falses = collections.defaultdict(list)
        self.files = 0

    def add(self, path, truth, tags):
        self.files += 1
        # A header that includes itself on a detour is skipped the second time.
        skipped = [(first, last) for first, last in truth['skipped']
                   if not any(first <= row[0] <= last for row in truth['declared'])]
        renamed = set(truth['renamed']) - {row[0] for row in truth['declared']}
        left = collections.Counter(
            tag for tag in set(tags)
            if tag[0] not in renamed
            and not any(first <= tag[0] <= last for first, last in skipped))
        with open(path, encoding='latin-1') as file:
            lines = file.read().split('\n')
        for line, name, kinds, is_argument in truth['declared']:
            hits = [k for k in kinds if (line, name, k) in left]
            if is_argument:
                self.arguments['all'] += 1
                self.arguments['found'] += bool(hits)
            elif hits:
                self.right[ROW_OF[hits[0]]] += 1
            else:
                self.missed[ROW_OF[kinds[0]]] += 1
                self.misses[ROW_OF[kinds[0]]].append((path, line, name, lines[line - 1].strip()))
            for k in hits:
                left[(line, name, k)] = 0
        for (line, name, kind), count in left.items():
            if count:
                self.false[ROW_OF[kind]] += 1
                self.falses[ROW_OF[kind]].append((path, line, name, lines[line - 1].strip()))

    def print(self, title):
        print(f'{title}: {self.files} files, names in macro arguments '
              f'{self.arguments["found"]} of {self.arguments["all"]}')
        for row in ROWS:
            right, missed, false = self.right[row], self.missed[row], self.false[row]
            print(f'  {row:12} {right + missed:7} missed {missed:6} ({share(missed, right + missed)})'
                  f'  false {false:6} ({share(false, right + false)})')

    def join(self, other):
        self.files += other.files
        for mine, its in ((self.right, other.right), (self.missed, other.missed),
                          (self.false, other.false), (self.arguments, other.arguments)):
            mine.update(its)


def share(part, whole):
    return f'{100 * part / whole:5.2f} %' if whole else '    - '


def shape(name, text):
    """A line with its words made alike, so that lines of one shape fall together."""
    text = re.sub(r'(?<!\w)' + re.escape(name) + r'(?!\w)', '@', text)
    text = re.sub(r'"[^"]*"', '""', text)
    text = re.sub(r'\b[A-Z][A-Z0-9_]{2,}\b', 'MACRO', text)
    return re.sub(r'\b(?!(?:typedef|using|struct|class|enum|union|template|operator|friend|static|'
                  r'extern|const|virtual|constexpr|inline|noexcept|delete|default|MACRO)\b)'
                  r'[A-Za-z_]\w*', 'w', text)[:60]


def show(title, rows, most):
    shapes = collections.defaultdict(list)
    for row in rows:
        shapes[shape(row[2], row[3])].append(row)
    for key in sorted(shapes, key=lambda k: -len(shapes[k]))[:most]:
        path, line, name, text = shapes[key][0]
        print(f'    {title} {len(shapes[key]):5}  {name}: {text[:100]}   {path}:{line}')


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument('--tags', required=True)
    parser.add_argument('--corpora', required=True)
    parser.add_argument('--only', action='append', help='only this corpus')
    parser.add_argument('--most', type=int, default=0, help='so many files of each corpus')
    parser.add_argument('--shapes', type=int, default=0, help='show the commonest misses')
    parser.add_argument('--kept', action='store_true', help='only files that are judged already')
    options = parser.parse_args()
    judge = None if options.kept else Judge()
    total = Score()
    for name, (flags, files) in corpora(options.corpora).items():
        if options.only and name not in options.only:
            continue
        files = spread(files, options.most) if options.most else files
        truths = {}
        for path in files:
            truth = judged(options.corpora, judge, path, flags)
            if truth is not None:
                truths[path] = truth
        tags = ours(options.tags, list(truths))
        score = Score()
        for path, truth in truths.items():
            score.add(path, truth, tags[path])
        score.print(name)
        for row in ROWS if options.shapes else []:
            print(f'   {row}')
            show('missed', score.misses[row], options.shapes)
            show('false ', score.falses[row], options.shapes)
        total.join(score)
    total.print('all')
    return 0


if __name__ == '__main__':
    sys.exit(main())
