#!/usr/bin/env python3
"""random_stops.py ZENDRY_MAKE [STOPS [SEED]]

Does a build that ends at any moment leave something wrong? STOPS (500) builds of a small project, with one to four
jobs, are stopped or killed at random moments: an interrupt, an interrupt and a termination, a termination, a kill of
the builder alone, a kill of its whole group. A stand-in for the tools writes each product in two parts, with a child
between them. After a stop no process of the build may run and no product may be cut. The build after it must succeed,
leave no process, and give the objects and the program that the sources say. Prints what is wrong, and ends with 1 if
something was."""
import os
import random
import shutil
import signal
import subprocess
import sys
import tempfile
import time

SOURCES, PATIENCE = 12, 60
MARK = 'RANDOM_STOPS'

# A product is "BEGIN", the texts of what it is made of, "END". The compiler tells what it has read.
TOOL = """#!/bin/sh
case $1 in -r) shift; set -- -o "$@";; esac
inputs=
while [ $# -gt 0 ]; do
  case $1 in -o) out=$2; shift;; -*) ;; *) inputs="$inputs $1";; esac
  shift
done
case $inputs in *.c)
  if [ -n "$DEPENDENCIES_OUTPUT" ]; then echo "read: $inputs h.h" >> "${DEPENDENCIES_OUTPUT% *}"; fi
  inputs="$inputs h.h";;
esac
{ echo BEGIN; cat $inputs; sleep 0.0DIGIT; cat $inputs; echo END; } > "$out"
"""


def expected_product(texts):
    return ('BEGIN\n' + ''.join(texts) * 2 + 'END\n').encode()


def running(mark):
    """The processes that have the mark of this run in their environment."""
    found = []
    for entry in os.listdir('/proc'):
        if not entry.isdigit():
            continue
        try:
            with open(f'/proc/{entry}/environ', 'rb') as file:
                is_ours = f'{MARK}={mark}\0'.encode() in file.read() + b'\0'
            with open(f'/proc/{entry}/stat') as file:
                is_zombie = file.read().rsplit(')', 1)[1].split()[0] == 'Z'
        except OSError:
            continue
        if is_ours and not is_zombie:
            found.append(entry)
    return found


def comes_true(condition):
    """A process that was killed needs a moment to go."""
    end = time.monotonic() + PATIENCE
    while not condition():
        if time.monotonic() > end:
            return False
        time.sleep(0.005)
    return True


class Project:
    def __init__(self, top, zendry_make, chance):
        self.folder, self.chance = f'{top}/p', chance
        self.mark = os.path.basename(top)
        for name in ('bin', 'tools', 'p', 'home'):
            os.makedirs(f'{top}/{name}')
        self.make = shutil.copy(zendry_make, f'{top}/bin/zendry-make')
        with open(f'{top}/bin/Zendry.cfg', 'w') as file:
            file.write('<gcc id="0" opt="stand-in" path="@/tools"/>\n')
        for number, name in enumerate(('gcc', 'g++', 'ar')):
            with open(f'{top}/tools/{name}', 'w') as file:
                file.write(TOOL.replace('DIGIT', str(2 + number)))
            os.chmod(f'{top}/tools/{name}', 0o755)
        self.environment = dict(os.environ, HOME=f'{top}/home', **{MARK: self.mark})
        self.texts = {}
        for name in [f's{n}.c' for n in range(SOURCES)] + ['h.h']:
            self.write(name)
        entries = ''.join(f'\t<file name="{name}"/>\n' for name in self.sources())
        with open(f'{self.folder}/p.zpj', 'w') as file:
            file.write(f'<ide>\n<set parse="n"/></ide>\n<src>\n{entries}</src>\n<opt>\n\t<gen>\n\t\t<targ id="0"/>\n\t</gen>\n</opt>\n')

    def sources(self):
        return sorted(name for name in self.texts if name.endswith('.c'))

    def write(self, name):
        self.texts[name] = f'{name} {self.chance.random()}\n' * 50
        with open(f'{self.folder}/{name}', 'w') as file:
            file.write(self.texts[name])

    def edit(self):
        for name in self.chance.sample(self.sources(), self.chance.randint(1, SOURCES)):
            self.write(name)
        if self.chance.random() < 0.2:
            self.write('h.h')

    def start(self):
        return subprocess.Popen([self.make, '-j', str(self.chance.randint(1, 4)), 'p.zpj'], cwd=self.folder, env=self.environment,
                                stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, start_new_session=True)

    def products(self):
        folder = f'{self.folder}/out-rel'
        names = [name for name in os.listdir(folder) if name.endswith(('.o', '.exe'))] if os.path.isdir(folder) else []
        products = {}
        for name in names:
            with open(f'{folder}/{name}', 'rb') as file:
                products[name] = file.read()
        return products

    def expected(self):
        objects = {name[:-2] + '.o': expected_product([self.texts[name], self.texts['h.h']]) for name in self.sources()}
        return dict(objects, **{'p.exe': expected_product([objects[name[:-2] + '.o'].decode() for name in self.listed()])})

    def listed(self):
        return self.sources()


def stop(program, kind):
    """True if the builder itself had a chance to end what runs."""
    if kind == 'kill':
        program.kill()
    elif kind == 'kill all':
        os.killpg(program.pid, signal.SIGKILL)
    else:
        for number in {'interrupt': [signal.SIGINT], 'both': [signal.SIGINT, signal.SIGTERM], 'terminate': [signal.SIGTERM]}[kind]:
            program.send_signal(number)
    return 'kill' not in kind


def one_round(project, longest):
    """Answers what was wrong, how the build ended and how long a whole one takes."""
    chance = project.chance
    project.edit()
    kind = chance.choice(['interrupt', 'both', 'terminate', 'kill', 'kill all'])
    program = project.start()
    try:
        program.communicate(timeout=chance.random() * longest * 0.8)
        kind = 'ended before'
    except subprocess.TimeoutExpired:
        is_stop = stop(program, kind)
        wrong = []
        if is_stop:
            try:
                program.communicate(timeout=PATIENCE)
            except subprocess.TimeoutExpired:
                return [f'does not end after {kind}'], kind, longest
            if running(project.mark):
                wrong.append(f'processes left after {kind}')
            wrong += [f'{name} is cut after {kind}' for name, text in project.products().items() if not text.endswith(b'END\n')]
        program.stdout.close()
        program.wait()
        if wrong:
            return wrong, kind, longest
    started = time.monotonic()
    program = project.start()
    output, _ = program.communicate()
    if program.returncode != 0:
        return [f'the build after {kind} ended with {program.returncode}', output.decode()[-2000:]], kind, longest
    longest = max(longest, time.monotonic() - started)
    wrong = [] if comes_true(lambda: not running(project.mark)) else [f'processes left by the build after {kind}']
    found, expected = project.products(), project.expected()
    wrong += [f'{name} is wrong after {kind}' for name in expected if found.get(name) != expected[name]]
    return wrong, kind, longest


def main(zendry_make, stops='500', seed='1'):
    kinds, bad, longest = {}, 0, 0.2
    with tempfile.TemporaryDirectory(prefix='stops-') as top:
        project = Project(top, zendry_make, random.Random(f'stops {seed}'))
        number = 0
        while sum(kinds.values()) - kinds.get('ended before', 0) < int(stops):
            number += 1
            wrong, kind, longest = one_round(project, longest)
            kinds[kind] = kinds.get(kind, 0) + 1
            if wrong:
                bad += 1
                print(f'round {number}:', *wrong, sep='\n  ', flush=True)
    print(f'seed {seed}, {number} builds: ' + ', '.join(f'{count} {kind}' for kind, count in sorted(kinds.items())) + f'; {bad} wrong')
    sys.exit(1 if bad else 0)


if __name__ == '__main__':
    if len(sys.argv) < 2:
        sys.exit(__doc__)
    main(*sys.argv[1:])
