#!/usr/bin/env python3
"""editor_peers.py EDITOR_BENCH [MEGABYTES [ROUNDS]]

What a large source costs editors: processor time from the start until the window is at rest with the file
open, the same for a jump to its end, and the memory then. The editor of Zendry in a window of its own, beside
SciTE where that is installed. Each round starts both once."""
import os
import shutil
import statistics
import subprocess
import sys
import time

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), '..', 'tests', 'e2e'))
from desktop import Desktop, cpu_time, wait_until  # noqa: E402

QUIET = 1.5
LONGEST = 120


def write_source(path, megabytes):
    with open(path, 'w') as file:
        number = 0
        while file.tell() < megabytes * 1e6:
            file.write(''.join(f'// Function {i} of a generated source.\nint function{i}(int a, int b) {{\n'
                               f'\tfor (int i = 0; i < b; ++i) a += i * {i};\n\treturn a;\n}}\n\n'
                               for i in range(number, number + 1000)))
            number += 1000


def wait_for_rest(pid):
    """Processor time once the process has used next to none for a while."""
    start = time.monotonic()
    last, since = cpu_time(pid), time.monotonic()
    while time.monotonic() - since < QUIET and time.monotonic() - start < LONGEST:
        time.sleep(0.1)
        if cpu_time(pid) - last > 0.03:
            last, since = cpu_time(pid), time.monotonic()
    return cpu_time(pid)


def memory(pid):
    """Proportional memory in MB."""
    with open(f'/proc/{pid}/smaps_rollup') as file:
        return next(int(line.split()[1]) for line in file if line.startswith('Pss:')) / 1024


def has_window(desktop):
    return desktop.ask('xprop', '-root', '-notype', '_NET_CLIENT_LIST').partition('#')[2].strip()


def measure(desktop, command):
    process = subprocess.Popen(command, env=desktop.environment, stdout=subprocess.DEVNULL,
                               stderr=subprocess.DEVNULL)
    try:
        wait_until(lambda: has_window(desktop), 'a window of ' + command[0])
        opened = wait_for_rest(process.pid)
        desktop.ask('xdotool', 'key', 'ctrl+End')
        at_end = wait_for_rest(process.pid) - opened
        return opened * 1e3, at_end * 1e3, memory(process.pid)
    finally:
        process.kill()
        process.wait()
        wait_until(lambda: not has_window(desktop), 'the window of ' + command[0] + ' going')


def main(bench, megabytes=50, rounds=3):
    results = {}
    with Desktop() as desktop:
        source = os.path.join(desktop.folder, 'big.cpp')
        write_source(source, float(megabytes))
        commands = {'editor': [bench, '--show', source], 'SciTE': ['scite', source]}
        for name in [n for n, command in commands.items() if not shutil.which(command[0])]:
            print(f'{name}: not installed, left out')
            del commands[name]
        for _ in range(int(rounds)):
            for name, command in commands.items():
                results.setdefault(name, []).append(measure(desktop, command))
    print(f'{megabytes} MB, medians of {rounds}\n')
    print('| | open, ms | jump to the end, ms | memory, MB |')
    print('|---|---|---|---|')
    for name, runs in results.items():
        columns = [statistics.median(column) for column in zip(*runs)]
        print(f'| {name} | {columns[0]:.0f} | {columns[1]:.0f} | {columns[2]:.0f} |')


main(*sys.argv[1:])
