#!/usr/bin/env python3
"""print_peers.py PRINT_BENCH [ROUNDS]

Time from the start of a process until 10,000 lines of C++ are a whole PDF file: Zendry's editor with
its printer, and SciTE where it is installed. The rounds take turns. Limit: 1.0 times the other's."""
import glob
import os
import shutil
import statistics
import subprocess
import sys
import time

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), '..', 'tests', 'e2e'))
from desktop import Desktop  # noqa: E402

LINES = 10000
LIMIT = 1.0
PATIENCE = 60


def write_source(folder):
    """10,000 lines of our own sources."""
    top = os.path.join(os.path.dirname(os.path.abspath(__file__)), '..')
    lines = []
    for path in sorted(glob.glob(os.path.join(top, 'src', '*', '*.cpp'))):
        with open(path) as file:
            lines += file.read().split('\n')
    source = os.path.join(folder, 'source.cpp')
    with open(source, 'w') as file:
        file.write('\n'.join(lines[:LINES]) + '\n')
    return source


def is_whole(path):
    if not os.path.exists(path):
        return False
    with open(path, 'rb') as file:
        return file.read().rstrip().endswith(b'%%EOF')


def until_written(command, pdf, environment):
    """Milliseconds from the start until the file is whole, and those of processor time."""
    if os.path.exists(pdf):
        os.remove(pdf)
    start = time.monotonic()
    process = subprocess.Popen(command, env=environment, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    while not is_whole(pdf) and time.monotonic() < start + PATIENCE:
        time.sleep(0.002)
    took = (time.monotonic() - start) * 1000
    process.kill()
    _, process.returncode, usage = os.wait4(process.pid, 0)
    return took, (usage.ru_utime + usage.ru_stime) * 1000


def main(print_bench, rounds='9'):
    with Desktop() as desktop:
        source = write_source(desktop.folder)
        pdf = os.path.join(desktop.folder, 'out.pdf')
        programs = {'Zendry': [print_bench, source, pdf]}
        if shutil.which('scite'):
            programs['SciTE'] = ['scite', source, f'-exportaspdf:{pdf}']
        times = {name: [] for name in programs}
        for _ in range(int(rounds) + 1):
            for name, command in programs.items():
                times[name].append(until_written(command, pdf, desktop.environment))
    medians = {}
    for name, runs in times.items():
        walls, busy = zip(*runs[1:])
        medians[name] = statistics.median(walls)
        print(f'| {name} | {medians[name]:.0f} ({min(walls):.0f}-{max(walls):.0f}) ms '
              f'| {statistics.median(busy):.0f} ms of processor time |')
    if 'SciTE' not in medians:
        return 0
    ratio = medians['Zendry'] / medians['SciTE']
    print(f'ratio {ratio:.2f}, limit {LIMIT}')
    return 0 if ratio <= LIMIT else 1


if __name__ == '__main__':
    sys.exit(main(*sys.argv[1:]))
