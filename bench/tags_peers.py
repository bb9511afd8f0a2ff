#!/usr/bin/env python3
"""Processor time of zendry-tags beside ctags over the same C and C++ files: the same kinds and fields, lines in place of
patterns, sorted, into a file. Both in turns, the shortest of the rounds; ends with 1 if the limit isn't kept.
bench/tags_peers.py ZENDRY_TAGS FOLDER... [--rounds 5]"""
import argparse
import os
import resource
import subprocess
import sys
import tempfile

EXTENSIONS = ('.c', '.cc', '.cpp', '.cxx', '.h', '.hh', '.hpp', '.hxx')
LIMIT = 6
CTAGS = ['ctags', '--languages=C,C++', '--c-kinds=+p', '--c++-kinds=+p', '--fields=+aiSn', '--excmd=number', '--sort=yes']


def sources_below(folders):
    for folder in folders:
        for place, _, names in os.walk(folder):
            yield from (os.path.join(place, name) for name in sorted(names) if name.endswith(EXTENSIONS))


def seconds(command):
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    subprocess.run(command, check=True, stderr=subprocess.DEVNULL)
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    return after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime


def lines_of(path):
    with open(path, 'rb') as file:
        return sum(not line.startswith(b'!_') for line in file)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument('program')
    parser.add_argument('folder', nargs='+')
    parser.add_argument('--rounds', type=int, default=5)
    options = parser.parse_args()
    files = list(sources_below(options.folder))
    with tempfile.TemporaryDirectory() as folder:
        names, ours, theirs = (os.path.join(folder, name) for name in ('files', 'ours', 'theirs'))
        with open(names, 'w') as listed:
            listed.writelines(name + '\n' for name in files)
        times = [(seconds([options.program, '-L', names, '-o', ours]), seconds([*CTAGS, '-L', names, '-f', theirs]))
                 for _ in range(options.rounds)]
        own, peer = (min(column) for column in zip(*times))
        megabytes = sum(os.path.getsize(name) for name in files) / 1e6
        print(f'{len(files):,} files, {megabytes:.1f} MB\n')
        print('| | processor time, s | tags |\n|---|---|---|')
        print(f'| zendry-tags | {own:.3f} | {lines_of(ours):,} |\n| ctags | {peer:.3f} | {lines_of(theirs):,} |')
    print(f'\nctags takes {peer / own:.1f} times as long, limit {LIMIT}')
    return peer / own < LIMIT


if __name__ == '__main__':
    sys.exit(main())
