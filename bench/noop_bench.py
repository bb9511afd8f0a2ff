#!/usr/bin/env python3
"""noop_bench.py ZENDRY_MAKE CHECK_BENCH FAKE_TOOL [SIZES [ROUNDS]]

What it costs to find out that nothing is to be done, beside ninja over the same files in the same run.
Generates a project of SIZES (1000,5000) sources and 200 headers: each source includes five headers, the
headers include each other in chains ten deep, each of which ends in a cycle. Objects are made by a
stand-in for the compiler. Prints medians with their range, and the ratios to ninja. At the end one header
is touched, and what is compiled is compared with what includes it."""
import os
import random
import shutil
import statistics
import subprocess
import sys
import tempfile
import time

HEADERS, INCLUDES, CHAIN = 200, 5, 10
REST = 3  # seconds: lists of folders that were written to just now are not kept
ROUNDS = 15


def header_includes(number):
    """Header 10 k + i includes its successor in chain k; the last one closes the cycle."""
    chain, place = divmod(number, CHAIN)
    return [chain * CHAIN + (place + 1) % CHAIN]


def reach(headers):
    found, todo = set(), list(headers)
    while todo:
        header = todo.pop()
        if header not in found:
            found.add(header)
            todo += header_includes(header)
    return found


def write(path, text):
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, 'w') as file:
        file.write(text)


def generate(folder, sources, tool):
    """Writes both kinds of project files; answers the headers that each source includes."""
    choice = random.Random(sources)
    included = [choice.sample(range(HEADERS), INCLUDES) for _ in range(sources)]
    for number in range(HEADERS):
        includes = ''.join(f'#include "h{h}.h"\n' for h in header_includes(number))
        write(f'{folder}/inc/h{number}.h', f'#pragma once\n{includes}int h{number}(int x);\n')
    for number, headers in enumerate(included):
        includes = ''.join(f'#include "h{h}.h"\n' for h in headers)
        write(f'{folder}/src/f{number}.cpp', f'{includes}int f{number}(int x) {{ return x; }}\n')
    files = [f'src/f{n}.cpp' for n in range(sources)] + [f'inc/h{n}.h' for n in range(HEADERS)]
    entries = ''.join(f'\t<file name="{name}"/>\n' for name in files)
    write(f'{folder}/p.zpj', f'<ide>\n<set parse="y"/></ide>\n<src>\n{entries}</src>\n<opt>\n\t<gen>\n\t\t<targ id="0"/>\n'
                             '\t</gen>\n</opt>\n')
    rules = [f'rule cxx\n  command = {tool} -c $in -o $out\n  depfile = $out.d\n  deps = gcc\n'
             f'rule link\n  command = {tool} -o $out\n']
    for number, headers in enumerate(included):
        rules.append(f'build obj/f{number}.o: cxx src/f{number}.cpp\n')
        read = f'src/f{number}.cpp ' + ' '.join(f'inc/h{h}.h' for h in sorted(reach(headers))) + '\n'
        write(f'{folder}/obj/f{number}.o.d', f'obj/f{number}.o: {read}')
        write(f'{folder}/src/f{number}.cpp.d', f'read: {read}')
    rules.append('build obj/p.exe: link ' + ' '.join(f'obj/f{n}.o' for n in range(sources)) + '\n')
    write(f'{folder}/build.ninja', ''.join(rules))
    return included


def install(folder, zendry_make, fake_tool):
    """An installation whose compiler is the stand-in."""
    os.makedirs(f'{folder}/bin')
    os.makedirs(f'{folder}/tools')
    shutil.copy(zendry_make, f'{folder}/bin/zendry-make')
    write(f'{folder}/bin/Zendry.cfg', '<gcc id="0" opt="stand-in" path="@/tools"/>\n')
    for name in ('gcc', 'g++', 'ar'):
        os.symlink(os.path.abspath(fake_tool), f'{folder}/tools/{name}')
    return f'{folder}/bin/zendry-make', f'{folder}/tools/g++'


def milliseconds(command, folder):
    start = time.perf_counter()
    subprocess.run(command, cwd=folder, stdout=subprocess.DEVNULL, check=True)
    return (time.perf_counter() - start) * 1000


def compiled(make, project):
    output = subprocess.run([make, project], stdout=subprocess.PIPE, check=True, text=True).stdout
    return {os.path.basename(line.split(' --> ')[1]) for line in output.splitlines() if line.startswith('------ Compiling')}


def measure(folder, sources, make, tool, check_bench, rounds):
    included = generate(folder, sources, tool)
    project = f'{folder}/p.zpj'
    subprocess.run(['ninja', '--quiet'], cwd=folder, check=True)
    assert len(compiled(make, project)) == sources
    commands = {'ninja': ['ninja'], 'zendry-make': [make, project]}
    times = {name: [] for name in commands}
    for number in range(rounds + 1):
        for name, command in commands.items():
            passed = milliseconds(command, folder)
            if number:
                times[name].append(passed)
    peer = statistics.median(times['ninja'])
    for name, runs in times.items():
        middle = statistics.median(runs)
        print(f'| {sources} sources, {name} | {middle:.1f} ({min(runs):.1f}-{max(runs):.1f}) | {middle / peer:.2f} |')
    time.sleep(REST)
    words = subprocess.run([check_bench, project, str(rounds), os.path.dirname(make) + '/'], check=True, stdout=subprocess.PIPE, text=True).stdout.split()
    middle, least, most = (float(word) for word in words)
    print(f'| {sources} sources, check inside the program | {middle:.1f} ({least:.1f}-{most:.1f}) | {middle / peer:.2f} |')
    touched = 7
    os.utime(f'{folder}/inc/h{touched}.h')
    expected = {f'f{n}.cpp' for n, headers in enumerate(included) if touched in reach(headers)}
    found = compiled(make, project)
    print(f'  one header touched: {len(found)} of {sources} compiled, '
          + ('exactly those that include it' if found == expected else 'NOT those that include it'))
    return found == expected


def main(zendry_make, check_bench, fake_tool, sizes='1000,5000', rounds=ROUNDS):
    top = tempfile.mkdtemp(prefix='noop-')
    try:
        make, tool = install(f'{top}/install', zendry_make, fake_tool)
        print('| nothing to do | ms (range) | to ninja |\n|---|---|---|')
        good = [measure(f'{top}/p{size}', int(size), make, tool, os.path.abspath(check_bench), int(rounds))
                for size in sizes.split(',')]
    finally:
        shutil.rmtree(top)
    sys.exit(0 if all(good) else 1)


if __name__ == '__main__':
    if len(sys.argv) < 4:
        sys.exit(__doc__)
    main(*sys.argv[1:])
