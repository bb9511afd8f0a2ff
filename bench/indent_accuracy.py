"""Types functions of other people's code without their leading blanks, and compares the indentation that the editor
gives each line with the one that clang-format gives it in the file's own style.

    python3 bench/indent_accuracy.py build/dev/bench/indent_typist FOLDER... [--functions 300] [--seed 1] [--shapes 30]

Each FOLDER is a code base. A file's style is the one, of the code base's own ".clang-format" and the known ones, that
changes the file's lines least; line breaks are kept. Files that no style fits, or with less than four functions, are
left out. The function is removed
from its file and typed again at its place. Lines that clang-format breaks in another way are not counted.
"""
import argparse
import collections
import difflib
import json
import os
import random
import subprocess
import sys
import tempfile

KERNEL = {'BasedOnStyle': 'LLVM', 'IndentWidth': 8, 'UseTab': 'Always', 'TabWidth': 8, 'BreakBeforeBraces': 'Linux',
          'ContinuationIndentWidth': 8, 'IndentCaseLabels': 'false'}
ALLMAN = {'BasedOnStyle': 'LLVM', 'IndentWidth': 4, 'BreakBeforeBraces': 'Allman', 'TabWidth': 4}
STYLES = {
    'LLVM': {'BasedOnStyle': 'LLVM'},
    'LLVM 4': {'BasedOnStyle': 'LLVM', 'IndentWidth': 4},
    'Google': {'BasedOnStyle': 'Google'},
    'GNU': {'BasedOnStyle': 'GNU'},
    'GNU tabs': {'BasedOnStyle': 'GNU', 'UseTab': 'Always', 'TabWidth': 8},
    'kernel': KERNEL,
    'Allman': ALLMAN,
    'Allman cases': {**ALLMAN, 'IndentCaseLabels': 'true'},
    'Allman tabs': {**ALLMAN, 'UseTab': 'Always'},
    'Allman tabs cases': {**ALLMAN, 'UseTab': 'Always', 'IndentCaseLabels': 'true'},
    'WebKit': {'BasedOnStyle': 'WebKit'},
}
KEPT = {'ColumnLimit': 0, 'ReflowComments': 'false', 'SortIncludes': 'Never', 'SortUsingDeclarations': 'false',
        'IndentPPDirectives': 'None', 'AlignEscapedNewlines': 'DontAlign', 'AlignTrailingComments': 'false',
        'FixNamespaceComments': 'false', 'MaxEmptyLinesToKeep': 9}
FEWEST = 4  # functions of a file: one alone in its file leaves nothing that tells the style
# Where code bases of one style differ.
FURTHER = [{'IndentCaseLabels': 'true'}, {'IndentCaseLabels': 'false'}, {'AlignAfterOpenBracket': 'DontAlign'},
           {'NamespaceIndentation': 'All'}, {'ConstructorInitializerIndentWidth': 2}, {'ContinuationIndentWidth': 2}]
ENDINGS = ('.c', '.cc', '.cpp', '.h', '.hpp')


def formatted(text, options):
    options = {**options, **KEPT}
    style = '{' + ', '.join(f'{key}: {value}' for key, value in options.items()) + '}'
    run = subprocess.run(['clang-format', '--style=' + style, '--assume-filename=a.cpp'], input=text,
                         capture_output=True, text=True, timeout=60)
    return run.stdout if run.returncode == 0 else None


def own_style(folder):
    """The code base's own style, resolved to all its options."""
    path = os.path.join(folder, '.clang-format')
    if not os.path.exists(path):
        return None
    run = subprocess.run(['clang-format', '--style=file', '--dump-config', '--assume-filename=' + path + '/../a.cpp'],
                         capture_output=True, text=True, timeout=60)
    options, section = {}, None
    for line in run.stdout.splitlines():
        key, _, value = line.partition(':')
        if line.startswith((' ', '-', '.')):
            if section == 'BraceWrapping' and line.startswith('  '):
                options['BraceWrapping'][key.strip()] = value.strip()
            continue
        section = key
        if key == 'BraceWrapping':
            options[key] = {}
        elif value.strip() and not value.strip().startswith(('[', "'", '"')):
            options[key] = value.strip()
    if 'BraceWrapping' in options:
        options['BraceWrapping'] = '{' + ', '.join(f'{k}: {v}' for k, v in options['BraceWrapping'].items()) + '}'
    return options


def columns(line, tab):
    blank = line[:len(line) - len(line.lstrip())]
    return len(blank.expandtabs(tab))


def places(source, result):
    """For each line of `source` that is in `result` too: its line there. Blanks inside lines don't count."""
    bare = [[''.join(line.split()) for line in lines] for lines in (source, result)]
    found = {}
    for a, b, size in difflib.SequenceMatcher(None, bare[0], bare[1], autojunk=False).get_matching_blocks():
        for i in range(size):
            found[a + i] = b + i
    return found


def changed(source, result):
    """The share of lines that a style changes."""
    if result is None:
        return 1
    matcher = difflib.SequenceMatcher(None, source, result.splitlines(), autojunk=False)
    same = sum(block.size for block in matcher.get_matching_blocks())
    return 1 - same / max(1, len(source))


def style_of(text, lines, own):
    """Name and options of the style that changes a text least, and what it makes of the text."""
    rows = dict(STYLES) if own is None else {'own': own, **STYLES}
    results = {name: formatted(text, options) for name, options in rows.items()}
    name = min(results, key=lambda key: changed(lines, results[key]))
    options, result = rows[name], results[name]
    for further in FURTHER:
        tried = formatted(text, {**options, **further})
        if changed(lines, tried) < changed(lines, result):
            options, result = {**options, **further}, tried
    return name, options, result


def functions(path, lines):
    """First and last line, from 0, of the functions of a file."""
    run = subprocess.run(['ctags', '-f', '-', '--language-force=C++', '--fields=+ne', '--kinds-C++=f', '--excmd=number',
                          path], capture_output=True, text=True, timeout=60, errors='replace')
    found = []
    for row in run.stdout.splitlines():
        fields = dict(f.split(':', 1) for f in row.split('\t')[3:] if ':' in f)
        if 'line' not in fields or 'end' not in fields:
            continue
        start, end = int(fields['line']) - 1, int(fields['end']) - 1
        while start > 0 and lines[start - 1].strip() and lines[start - 1].strip()[-1] not in ';{}:/\\' \
                and lines[start - 1].lstrip()[0] not in '#*/':
            start -= 1
        if start > 0 and 4 <= end - start <= 120 and not any('R"' in line for line in lines[start:end + 1]):
            found.append((start, end))
    return found


def sample(folders, count, rng):
    """Functions with their files and styles; as many from each code base."""
    jobs = []
    for folder in folders:
        own = own_style(folder)
        paths = sorted(os.path.join(where, name) for where, _, names in os.walk(folder) for name in names
                       if name.endswith(ENDINGS))
        rng.shuffle(paths)
        wanted = len(jobs) + count // len(folders)
        for path in paths:
            if len(jobs) >= wanted:
                break
            text = open(path, encoding='latin-1', newline='').read().replace('\r\n', '\n')
            if not 4000 < len(text) < 300000 or not text.isascii():
                continue
            lines = text.splitlines()
            places_of = functions(path, lines)
            if len(places_of) < FEWEST:
                continue
            name, options, result = style_of(text, lines, own)
            if changed(lines, result) > 0.3:
                continue
            for start, end in rng.sample(places_of, min(6, len(places_of))):
                jobs.append({'path': path, 'style': name, 'options': options, 'lines': lines, 'start': start,
                             'end': end, 'result': result.splitlines()})
        del jobs[wanted:]
    return jobs


def write_jobs(jobs, folder):
    for number, job in enumerate(jobs):
        stem = os.path.join(folder, str(number))
        lines, start, end = job['lines'], job['start'], job['end']
        job['tab'] = int(job['options'].get('TabWidth', 8))
        with open(stem + '.cpp', 'w', encoding='latin-1') as file:
            file.write('\n'.join(lines[:start] + lines[end + 1:]) + '\n')
        with open(stem + '.line', 'w', encoding='latin-1') as file:
            file.write(f'{start - 1} {job["tab"]}')
        with open(stem + '.typed', 'w', encoding='latin-1') as file:
            file.write(''.join('\n' + line.strip() for line in lines[start:end + 1]))


def compare(jobs, folder, shapes):
    counts = collections.defaultdict(lambda: [0, 0, 0])
    wrong = []
    uncounted = 0
    for number, job in enumerate(jobs):
        start, end = job['start'], job['end']
        out = open(os.path.join(folder, f'{number}.out'), encoding='latin-1').read().split('\n')
        typed = out[start:end + 1]
        match = places(job['lines'], job['result'])
        for i in range(start, end + 1):
            source = job['lines'][i]
            if not source.strip():
                continue
            if i not in match or typed[i - start].strip() != source.strip():
                uncounted += 1
                continue
            want = columns(job['result'][match[i]], job['tab'])
            got = columns(typed[i - start], job['tab'])
            key = (os.path.relpath(job['path'], os.path.commonpath([j['path'] for j in jobs])).split(os.sep)[0],
                   job['style'])
            counts[key][0] += 1
            counts[key][1] += want == got
            counts[key][2] += got in (want, columns(source, job['tab']))
            if want != got:
                wrong.append((number, job, i, want, got, typed))
    total = [sum(c[i] for c in counts.values()) for i in range(3)]
    for key in sorted(counts):
        all_, same, either = counts[key]
        print(f'{key[0]:16} {key[1]:18} {all_:6} lines  {100 * same / all_:6.2f} equal  {100 * either / all_:6.2f} '
              'equal to clang-format or the author')
    print(f'{"all":35} {total[0]:6} lines  {100 * total[1] / total[0]:6.2f} equal  {100 * total[2] / total[0]:6.2f} '
          f'equal to clang-format or the author; {uncounted} lines not counted')
    for number, job, i, want, got, typed in wrong[:shapes]:
        first = max(job['start'], i - 4)
        print(f'\n{number}: {job["path"]}:{i + 1} ({job["style"]}): {got} columns, clang-format {want}, '
              f'author {columns(job["lines"][i], job["tab"])}')
        for j in range(first, i + 1):
            print('   |' + typed[j - job['start']].expandtabs(job['tab']))
    return total


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument('typist')
    parser.add_argument('folders', nargs='+')
    parser.add_argument('--functions', type=int, default=300)
    parser.add_argument('--seed', type=int, default=1)
    parser.add_argument('--shapes', type=int, default=30, help='wrong lines to print')
    parser.add_argument('--kept', help='a file that keeps the sample for the next run')
    arguments = parser.parse_args()
    if arguments.kept and os.path.exists(arguments.kept):
        jobs = json.load(open(arguments.kept, encoding='utf-8'))
    else:
        jobs = sample(arguments.folders, arguments.functions, random.Random(arguments.seed))
    if arguments.kept:
        json.dump(jobs, open(arguments.kept, 'w', encoding='utf-8'))
    with tempfile.TemporaryDirectory() as folder:
        write_jobs(jobs, folder)
        subprocess.run([arguments.typist, folder, str(len(jobs))], check=True, timeout=3000,
                       env={**os.environ, 'QT_QPA_PLATFORM': 'offscreen', 'HOME': folder})
        total = compare(jobs, folder, arguments.shapes)
    print(f'\n{len(jobs)} functions')
    return 0 if total[1] >= 0.99 * total[0] else 1


if __name__ == '__main__':
    sys.exit(main())
