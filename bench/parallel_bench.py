#!/usr/bin/env python3
"""parallel_bench.py ZENDRY_MAKE [SOURCES [ROUNDS]]

Full builds of SOURCES (300) small sources by zendry-make and by ninja with the same command lines, in the same
run: with two jobs and with one; after a touch of a header that a third of the sources include; and, if it is
installed, with ccache that knows all objects. Prints medians of ROUNDS (5) with their range, the ratios to
ninja, and the peak memory of both programs without their compilers. Wants an idle machine."""
import os
import shutil
import statistics
import subprocess
import sys
import tempfile
import time

SOURCES, ROUNDS = 300, 5
SHARE = 3  # one source of so many includes the header that is touched

SOURCE = """#include <stdio.h>
%s
static int table%d[] = {1, 2, 3, 5, 8, 13};

int f%d(int x) {
	for (unsigned i = 0; i < sizeof table%d / sizeof *table%d; ++i) x += table%d[i] * x;
	if (x == 42) printf("%%d\\n", x);
	return x;
}
"""


def write(path, text):
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, 'w') as file:
        file.write(text)


def generate(folder, sources):
    write(f'{folder}/inc/shared.h', '#pragma once\nenum { cShared = 1 };\n')
    names = []
    for n in range(sources):
        include = '#include "shared.h"' if n % SHARE == 0 else ''
        write(f'{folder}/src/f{n}.c', SOURCE % (include, n, n, n, n, n))
        names.append(f'src/f{n}.c')
    write(f'{folder}/src/main.c', 'int main(void) { return 0; }\n')
    names += ['src/main.c', 'inc/shared.h']
    entries = ''.join(f'\t<file name="{name}"/>\n' for name in names)
    write(f'{folder}/p.zpj', f'<ide>\n<set parse="y"/></ide>\n<src>\n{entries}</src>\n<opt>\n\t<gen>\n\t\t<targ id="0"/>\n'
                             '\t\t<inc value="-Iinc"/>\n\t</gen>\n</opt>\n')


def install(folder, zendry_make, launcher=''):
    """An installation with the machine's compilers."""
    os.makedirs(f'{folder}/bin')
    os.makedirs(f'{folder}/tools')
    os.makedirs(f'{folder}/home')
    shutil.copy(zendry_make, f'{folder}/bin/zendry-make')
    name = f' name="{launcher}"' if launcher else ''
    write(f'{folder}/bin/Zendry.cfg', f'<gcc id="0"{name} opt="GCC" path="@/tools" value="-fno-diagnostics-show-caret"/>\n')
    for tool in ('gcc', 'g++', 'ar'):
        os.symlink(shutil.which(tool), f'{folder}/tools/{tool}')
    return f'{folder}/bin/zendry-make'


def ninja_file(folder, output, launcher):
    """The commands that zendry-make has printed, as ninja's. Those of a launcher ask for the read files already."""
    commands = [line[len('------ '):-len(' --> ')] for line in output.splitlines()
                if line.startswith('------ ') and line.endswith(' --> ') and ' -c ' in line]
    link = next(line for line in output.splitlines() if line.startswith('------ Linking --> '))[len('------ Linking --> '):]
    rules = ['rule cc\n  command = $line\n  depfile = $dep\n  deps = gcc\nrule link\n  command = $line\n']
    objects = []
    for line in commands:
        words = line.split()
        target = words[words.index('-o') + 1]
        source = words[words.index('-o') - 1]
        objects.append(target)
        dep = words[words.index('-MF') + 1] if launcher else f'{target}.d'
        flags = '' if launcher else f' -MMD -MF {dep}'
        rules.append(f'build {target}: cc {source}\n  line = {line}{flags}\n  dep = {dep}\n'.replace(' -MT read', ''))
    rules.append('build out-rel/p.exe: link ' + ' '.join(objects) + f'\n  line = cd out-rel && {link}\n')
    write(f'{folder}/build.ninja', ''.join(rules))


def run(command, folder, environment):
    """The milliseconds that a command takes, and its own peak memory in kilobytes."""
    start = time.perf_counter()
    process = subprocess.Popen(command, cwd=folder, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, env=environment)
    peak = 0
    while process.poll() is None:
        try:
            with open(f'/proc/{process.pid}/status') as status:
                peak = max([peak] + [int(line.split()[1]) for line in status if line.startswith('VmHWM')])
            process.wait(0.01)
        except (OSError, subprocess.TimeoutExpired):
            pass
    assert process.returncode == 0, command
    return (time.perf_counter() - start) * 1000, peak


def measure(title, folders, commands, prepare, environment, rounds):
    times, peaks = {name: [] for name in commands}, {name: 0 for name in commands}
    for number in range(rounds + 1):
        for name, command in commands.items():
            prepare(folders[name])
            passed, peak = run(command, folders[name], environment)
            if number:
                times[name].append(passed)
            peaks[name] = max(peaks[name], peak)
    peer = statistics.median(times['ninja'])
    for name, runs in times.items():
        middle = statistics.median(runs)
        print(f'| {title}, {name} | {middle:.0f} ({min(runs):.0f}-{max(runs):.0f}) | {middle / peer:.3f} | {peaks[name] / 1024:.1f} |',
              flush=True)


def clean(folder):
    shutil.rmtree(f'{folder}/out-rel', ignore_errors=True)
    os.makedirs(f'{folder}/out-rel')
    for name in ('.ninja_deps', '.ninja_log'):
        if os.path.exists(f'{folder}/{name}'):
            os.remove(f'{folder}/{name}')


def touch(folder):
    os.utime(f'{folder}/inc/shared.h')


def compare(top, zendry_make, sources, rounds, launcher):
    base = f'{top}/{launcher or "plain"}'
    make = install(f'{base}/install', zendry_make, launcher)
    environment = dict(os.environ, HOME=f'{base}/install/home', CCACHE_DIR=f'{base}/cache')
    folders = {'ninja': f'{base}/ninja', 'zendry-make': f'{base}/zendry'}
    for folder in folders.values():
        generate(folder, sources)
    output = subprocess.run([make, '-j1', 'p.zpj'], cwd=folders['zendry-make'], stdout=subprocess.PIPE, check=True, text=True,
                            env=environment).stdout
    ninja_file(folders['ninja'], output.replace(folders['zendry-make'], folders['ninja']), launcher)
    for jobs in (2,) if launcher else (2, 1):
        commands = {'ninja': ['ninja', f'-j{jobs}'], 'zendry-make': [make, f'-j{jobs}', 'p.zpj']}
        title = f'{sources} sources' + (f', {launcher} warm' if launcher else '') + f', -j {jobs}'
        measure(f'full build of {title}', folders, commands, clean, environment, rounds)
        if not launcher:
            measure(f'header of {sources // SHARE} of {title}', folders, commands, touch, environment, rounds)


def main(zendry_make, sources=SOURCES, rounds=ROUNDS):
    top = tempfile.mkdtemp(prefix='parallel-')
    try:
        print('| work | ms (range) | to ninja | peak MB |\n|---|---|---|---|')
        compare(top, zendry_make, int(sources), int(rounds), '')
        if shutil.which('ccache'):
            compare(top, zendry_make, int(sources), int(rounds), 'ccache')
    finally:
        shutil.rmtree(top)


if __name__ == '__main__':
    if len(sys.argv) < 2:
        sys.exit(__doc__)
    main(*sys.argv[1:])
