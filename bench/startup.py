#!/usr/bin/env python3
"""startup.py FIRST_WINDOW BARE_WINDOW ZENDRY [ROUNDS]
startup.py FIRST_WINDOW --forms QT_CALCULATOR CALCULATOR [ROUNDS]

Start-up to the mapped window and memory two seconds later, of Zendry and of programs that people would
start instead: a bare window of the same toolkit with one editor, SciTE and Geany where they are installed.
With --forms, of the demo "calculator" and of the same window made of the toolkit directly.
Each round starts each of them once, so that noise falls on all alike; the first round only fills the cache.
Prints medians with their range, and the ratios to the bare window."""
import os
import shutil
import statistics
import subprocess
import sys

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), '..', 'tests', 'e2e'))
from desktop import Desktop  # noqa: E402

ROUNDS = 15
LINES = 2000


def write_sample(folder):
    """A source of 2,000 lines, and a project of that source."""
    source = os.path.join(folder, 'sample.cpp')
    with open(source, 'w') as file:
        file.write('\n'.join(f'int Function{i}(int a, int b) {{ return a * {i} + b; }}  // line {i}' for i in range(LINES)))
    project = os.path.join(folder, 'sample.zpj')
    with open(project, 'w') as file:
        file.write('<ide>\n<set parse="y"/></ide>\n<src>\n\t<file name="sample.cpp"/>\n</src>\n')
    return source, project


def measure(desktop, first_window, command):
    """Milliseconds, MB in proportion, MB anonymous; nothing when no window came."""
    words = desktop.ask(first_window, *command).split()
    return [float(word) for word in words] if len(words) == 3 else None


def row(name, runs, floor):
    columns = list(zip(*runs))
    ms, pss, anonymous = (statistics.median(column) for column in columns)
    ratio = f'{ms / statistics.median(floor[0]):.2f} | {pss / statistics.median(floor[1]):.2f}'
    return f'| {name} | {ms:.0f} ({min(columns[0]):.0f}-{max(columns[0]):.0f}) | {pss:.1f} | {anonymous:.1f} | {ratio} |'


def programs(desktop, bare_window, zendry):
    """What is started, by name; the first is what the others are compared with."""
    source, project = write_sample(desktop.folder)
    return {'bare window, source': [bare_window, source], 'Zendry, no file': [zendry],
            'Zendry, source': [zendry, source], 'Zendry, project': [zendry, project],
            'SciTE, source': ['scite', source], 'Geany, source': ['geany', '-i', source]}


def main(first_window, *words):
    results = {}
    forms = words[0] == '--forms'
    peer, ours, *rest = words[1:] if forms else words
    rounds = rest[0] if rest else ROUNDS
    with Desktop() as desktop:
        if forms:
            commands = {'toolkit': [peer], 'mavro': [ours]}
        else:
            commands = programs(desktop, peer, ours)
        for name in [n for n, command in commands.items() if not shutil.which(command[0])]:
            print(f'{name}: not installed, left out')
            del commands[name]
        for number in range(int(rounds) + 1):
            for name, command in commands.items():
                run = measure(desktop, first_window, command)
                if run is None:
                    sys.exit(f'{name}: no window came')
                if number:
                    results.setdefault(name, []).append(run)
    floor = list(zip(*next(iter(results.values()))))
    print(f'Medians of {rounds} warm starts.\n')
    print('| program | window, ms | memory, MB | of it anonymous | time / first | memory / first |')
    print('|---|---|---|---|---|---|')
    for name, runs in results.items():
        print(row(name, runs, floor))


main(*sys.argv[1:])
