#!/usr/bin/env python3
"""startup.py FIRST_WINDOW BARE_WINDOW ZENDRY [ROUNDS]
startup.py FIRST_WINDOW --forms QT_CALCULATOR CALCULATOR [ROUNDS]
startup.py FIRST_WINDOW --project BARE_WINDOW ZENDRY [ROUNDS]

Start-up to the mapped window and memory two seconds later, of Zendry and of programs that people would
start instead: a bare window of the same toolkit with one editor, SciTE and Geany where they are installed.
With --project, of a project of 1,000 files beside its limit; it fails if that is missed.
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
from sources import write_project  # noqa: E402

ROUNDS = 15
LINES = 2000
MOST_MEGABYTES = 42  # of a project of 1,000 files


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


def large_project(desktop, bare_window, zendry):
    """A project of a source or two, and one of 1,000 files."""
    commands = {'bare window, source': [bare_window, write_sample(desktop.folder)[0]]}
    for files in (4, 1000):
        folder = os.path.join(desktop.folder, f'project{files}')
        os.mkdir(folder)
        commands[f'Zendry, {files} files'] = [zendry, write_project(folder, files)[0]]
    return commands


def check_project(results):
    megabytes = statistics.median(run[1] for run in results['Zendry, 1000 files'])
    print(f'\n1,000 files: {megabytes:.1f} MB, limit {MOST_MEGABYTES}')
    if megabytes > MOST_MEGABYTES:
        sys.exit('the limit is missed')


def main(first_window, *words):
    results = {}
    forms, project = words[0] == '--forms', words[0] == '--project'
    peer, ours, *rest = words[1:] if forms or project else words
    rounds = rest[0] if rest else ROUNDS
    with Desktop() as desktop:
        if forms:
            commands = {'toolkit': [peer], 'mavro': [ours]}
        elif project:
            commands = large_project(desktop, peer, ours)
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
    if project:
        check_project(results)


main(*sys.argv[1:])
