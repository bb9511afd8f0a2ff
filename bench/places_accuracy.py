#!/usr/bin/env python3
"""How often "Find Symbol" goes where a compiler goes: zendry-lsp beside clangd, asked the same about other people's code.

    bench/places_accuracy.py --lsp build/dev/stage/bin/zendry-lsp --corpora FOLDER [--places N] [BASE...]

The code bases are those of bench/completion_requests, which must lie in the folder. In each, names are chosen by chance
(always the same ones). Both servers are asked for their definition and declaration. A place counts if clangd has one in
the code base for it: names of the system's headers and of macros' arguments are left out. The answer is right if one of
its places is one of clangd's, in the same line; "other" goes to another line, "none" to nowhere."""
import argparse
import collections
import glob
import os
import random
import re
import sys
import time
import urllib.parse

import language_server
from completion_accuracy import CLANGD, HERE, Base

WORD = re.compile(r'[A-Za-z_]\w*')
KEYWORDS = set('''alignas alignof auto bool break case catch char class const constexpr const_cast continue default delete
do double dynamic_cast else enum explicit extern false final float for friend goto if inline int long mutable namespace new
noexcept nullptr operator override private protected public register reinterpret_cast return short signed sizeof static
static_assert static_cast struct switch template this throw true try typedef typeid typename union unsigned using virtual
void volatile wchar_t while NULL'''.split())


def code_places(text):
    """Lines and columns of the names in the text's code."""
    text = re.sub(r'//[^\n]*|/\*.*?\*/|"(?:\\.|[^"\\\n])*"|\'(?:\\.|[^\'\\\n])*\'|^[ \t]*#(?:[^\n]*\\\n)*[^\n]*',
                  lambda match: re.sub(r'[^\n]', ' ', match.group()), text, flags=re.S | re.M)
    for number, line in enumerate(text.split('\n')):
        for match in WORD.finditer(line):
            if match.group() not in KEYWORDS:
                yield number, match.start(), match.group()


def targets(answer, root):
    """Files and lines of an answer that lie in the code base."""
    places = answer if isinstance(answer, list) else [answer] if answer else []
    found = set()
    for place in places:
        path = os.path.realpath(urllib.parse.unquote(place.get('uri', place.get('targetUri', ''))[len('file://'):]))
        line = place.get('range', place.get('targetSelectionRange'))['start']['line']
        if path.startswith(root):
            found.add((os.path.relpath(path, root), line))
    return found


def ask(client, address, line, column):
    where = {'textDocument': {'uri': address}, 'position': {'line': line, 'character': column}}
    begin = time.perf_counter()
    answers = [client.ask('textDocument/' + kind, where) for kind in ('definition', 'declaration')]
    return answers, (time.perf_counter() - begin) / 2 * 1e3


def compare(base, options, chance):
    files = sorted(path for pattern in base.sources.split() for path in glob.glob(os.path.join(base.root, pattern)))
    asked = collections.defaultdict(list)
    names = [(path, place) for path in files
             for place in code_places(open(path, encoding='utf-8', errors='surrogateescape').read())]
    for path, place in chance.sample(names, min(options.places, len(names))):
        asked[path].append(place)
    root = os.path.realpath(base.root)
    results = []
    with language_server.Client([os.path.abspath(options.lsp)], base.root) as ours, \
            language_server.Client(CLANGD, base.root) as theirs:
        for path, places in sorted(asked.items()):
            addresses = [client.open(path, 'c' if path.endswith('.c') else 'cpp') for client in (ours, theirs)]
            for line, column, name in places:
                judged, _ = ask(theirs, addresses[1], line, column)
                wanted = set().union(*(targets(answer, root) for answer in judged))
                if not wanted:
                    continue
                answers, took = ask(ours, addresses[0], line, column)
                found = set().union(*(targets(answer, root) for answer in answers))
                verdict = 'right' if found & wanted else 'other' if found else 'none'
                results.append((verdict, took))
                if options.verbose and verdict != 'right':
                    print(f'{os.path.relpath(path, root)}:{line + 1}:{column + 1}: {name}: {verdict} '
                          f'{sorted(found)} not {sorted(wanted)}')
    return results


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument('--lsp', required=True)
    parser.add_argument('--corpora', required=True)
    parser.add_argument('--places', type=int, default=150, help='names in each code base')
    parser.add_argument('--verbose', action='store_true', help='list what is not right')
    parser.add_argument('bases', nargs='*')
    options = parser.parse_args()
    total = collections.Counter()
    times = []
    for path in sorted(glob.glob(os.path.join(HERE, 'completion_requests', '*.txt'))):
        name = os.path.basename(path)[:-len('.txt')]
        if options.bases and name not in options.bases:
            continue
        base = Base(path)
        base.prepare(options.corpora)
        results = compare(base, options, random.Random(7))
        counts = collections.Counter(verdict for verdict, _ in results)
        total += counts
        times += [took for _, took in results]
        print(f'{name:20} {len(results):4} asked   right {counts["right"]:4}   other {counts["other"]:4}   '
              f'none {counts["none"]:4}', flush=True)
    asked = sum(total.values())
    if not asked:
        sys.exit('nothing was asked')
    print(f'{"all":20} {asked:4} asked   right {total["right"]:4}   other {total["other"]:4}   none {total["none"]:4}   '
          f'{100 * total["right"] / asked:.1f} of 100 right; median {sorted(times)[len(times) // 2]:.1f} ms')


if __name__ == '__main__':
    main()
