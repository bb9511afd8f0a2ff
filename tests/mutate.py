#!/usr/bin/env python3
"""Would the unit tests notice? Makes small changes to copies of the sources FILE (a condition turned, a limit
off by one, a statement dropped, a sign, "and" for "or", a returned truth ...), builds core_tests (or the program
of --tests) with them and says which changes no test notices. See docs/tests.md."""
import argparse
import collections
import json
import os
import random
import re
import resource
import shlex
import shutil
import subprocess
import sys
import time

TOP = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
MUTATION = os.path.join(TOP, 'tests', 'mutation')
sys.path.insert(0, MUTATION)
sys.dont_write_bytecode = True
import changes  # noqa: E402

PROGRAMS = {'core_tests': 'tests/unit', 'gui_tests': 'tests/gui', 'sci_tests': 'tests/gui', 'ide_tests': 'tests/gui'}
QUICK_MS = 60           # tests up to this long run first
LEAST_SECONDS = 8       # of processor time that any run may take
LARGEST_MEMORY = 4 << 30
SPARE = 8               # more changes than wanted, because some don't compile


class Source:
    """One file, its changes and their numbers."""

    def __init__(self, path, command):
        self.path, self.command = path, command
        self.name = os.path.relpath(path, TOP)
        self.text, self.numbered = '', []


def options():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument('files', nargs='+', metavar='FILE')
    parser.add_argument('--seed', type=int, default=1, help='chooses the changes (1)')
    parser.add_argument('--most', type=int, default=12, help='changes for each file (12)')
    parser.add_argument('--tests', choices=PROGRAMS, default='core_tests', help='the program to run (core_tests)')
    parser.add_argument('--build', default=os.path.join(TOP, 'build/dev'), help='a configured build folder')
    parser.add_argument('--built', action='store_true', help='the build folder is up to date')
    parser.add_argument('--again', action='store_true', help='only those that survived the last time')
    return parser.parse_args()


def run(command, folder, **more):
    return subprocess.run(command, cwd=folder, text=True, errors='replace', capture_output=True, **more)


def compile_commands(build):
    with open(os.path.join(build, 'compile_commands.json'), encoding='utf-8') as file:
        return {os.path.normpath(entry['file']): shlex.split(entry['command']) for entry in json.load(file)}


def arguments_for_clang(command):
    return [word for word in command if word.startswith(('-I', '-D', '-std', '-isystem'))]


def compile_source(source, build, folder):
    """Compiles a copy with all changes in it; leaves those out that can't be expressed so."""
    stem = os.path.join(folder, source.name.replace('/', '_'))
    command = [word for word in source.command if word not in ('-O2', '-g', '-Werror')]
    if 'ccache' in command[0]:
        command = command[1:]
    command[command.index('-c') + 1] = stem
    command[command.index('-o') + 1] = stem + '.o'
    command += ['-O1', '-w', '-Wno-narrowing', '-fpermissive', '-include', os.path.join(MUTATION, 'Mutant.h'), '-I',
                os.path.dirname(source.path)]
    while True:
        with open(stem, 'w', encoding='latin-1', newline='') as file:
            file.write(f'#line 1 "{source.path}"\n' + changes.render(source.text, source.numbered))
        done = run(command, build)
        if done.returncode == 0:
            return stem + '.o'
        lines = {int(n) for n in re.findall(re.escape(source.path) + r':(\d+):\d+: error', done.stderr)}
        kept = [(n, c) for n, c in source.numbered if not touches(source.text, c, lines)]
        if len(kept) == len(source.numbered):
            sys.exit(f'{source.path}: does not compile\n{done.stderr[:2000]}')
        source.numbered = kept


def touches(text, change, lines):
    """True if a change may be why one of the lines doesn't compile: its own place or, of a limit, a use."""
    if change.kind == 'limit declared':
        name = re.search(r'(\w+)\s*=', text[change.begin:change.end])
        rows = text.split('\n')
        if name and any(re.search(rf'\b{name.group(1)}\b', rows[n - 1]) for n in lines if n <= len(rows)):
            return True
    first = text.count('\n', 0, change.begin) + 1
    return any(first <= n <= first + text.count('\n', change.begin, change.end) for n in lines)


def link(build, folder, test, objects):
    """The test program with the changed objects before the libraries, which then give the others only."""
    commands = run(['ninja', '-t', 'commands', test], build).stdout.splitlines()
    command = next(part for part in commands[-1].split('&&') if f'-o {PROGRAMS[test]}/{test}' in part)
    words = shlex.split(command)
    program = os.path.join(folder, test)
    words[words.index('-o') + 1] = program
    words[1:1] = objects
    done = run(words, build)
    if done.returncode:
        sys.exit(f'{test} does not link\n{done.stderr[:2000]}')
    return program


class Runner:
    """Runs the test program where it can't do harm: with its own processes and temporary files."""

    def __init__(self, program, folder):
        self.program, self.folder = program, folder
        self.home = os.path.join(folder, 'home')
        os.makedirs(self.home, exist_ok=True)
        self.wrapped = ['unshare', '--pid', '--mount', '--fork', '--kill-child', '--mount-proc']
        if os.geteuid() != 0:
            self.wrapped[1:1] = ['--user', '--map-current-user']
        if run([*self.wrapped, 'true'], folder).returncode:
            sys.exit('mutate.py: needs unshare(1): a changed program may send signals to any process')

    def run(self, number, tests=None, seconds=600, reached=None):
        flags = os.path.join(self.folder, 'flags')
        with open(flags, 'w', encoding='utf-8') as file:
            file.write('--gtest_fail_fast\n' if number else '')
            if tests is not None:
                file.write(f'--gtest_filter={":".join(tests)}\n')
        environment = dict(os.environ, HOME=self.home, TMPDIR=self.home, ZENDRY_MUTANT=str(number))
        if reached:
            environment['ZENDRY_REACHED'] = reached
        script = 'mount -t tmpfs tmpfs "$1" && cd "$1" && "$2" --gtest_flagfile="$3"; exit $?'
        limit = int(seconds)

        def limits():
            resource.setrlimit(resource.RLIMIT_CPU, (limit, limit))
            resource.setrlimit(resource.RLIMIT_AS, (LARGEST_MEMORY, LARGEST_MEMORY))

        command = [*self.wrapped, 'nice', 'sh', '-c', script, 'sh', self.home, self.program, flags]
        try:
            done = subprocess.run(command, env=environment, preexec_fn=limits, timeout=6 * limit + 30,
                                  stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, start_new_session=True)
            return done.returncode == 0
        except subprocess.TimeoutExpired:
            return False


class Survivors:
    """What survived the last time, by file."""

    def __init__(self, path):
        self.path = path

    def all(self):
        if not os.path.exists(self.path):
            return {}
        with open(self.path, encoding='utf-8') as file:
            return json.load(file)

    def of(self, source):
        return self.all().get(source.name, [])

    def keep(self, source, alive):
        with open(self.path + '.new', 'w', encoding='utf-8') as file:
            json.dump(dict(self.all(), **{source.name: alive}), file, indent=1)
        os.replace(self.path + '.new', self.path)


class Reach:
    """Which tests come by a change, and how long they take."""

    def __init__(self, path):
        self.time, self.by, self.at_start = {}, collections.defaultdict(list), set()
        with open(path, encoding='utf-8') as file:
            for line in file:
                words = line.split()
                if words[0] == 'FAILED':
                    print(f'fails without any change, left out: {words[1]}')
                    continue
                numbers = [int(n) for n in words[2:]]
                if words[0] == 'START':
                    self.at_start.update(numbers)
                    continue
                self.time[words[0]] = int(words[1])
                for number in numbers:
                    self.by[number].append(words[0])

    def tests(self, number):
        """What is asked for before all tests, as the value of a constant, concerns each of them."""
        return sorted(self.time) if number in self.at_start else self.by[number]

    def is_noticed(self, number, runner):
        tests = self.tests(number)
        quick = [test for test in tests if self.time[test] <= QUICK_MS]
        for group in (quick, [test for test in tests if self.time[test] > QUICK_MS]):
            seconds = LEAST_SECONDS + 5 * sum(self.time[test] for test in group) / 1000
            if group and not runner.run(number, group, seconds):
                return True
        return False


def main():
    given = options()
    build = os.path.abspath(given.build)
    folder = os.path.join(build, 'mutants', str(os.getpid()))
    survivors = Survivors(os.path.join(build, 'mutants', 'alive.json'))
    os.makedirs(folder)
    try:
        mutate(given, build, folder, survivors)
    finally:
        shutil.rmtree(folder)


def mutate(given, build, folder, survivors):
    os.nice(10)
    if not given.built:
        done = run(['cmake', '--build', build, '--target', given.tests], build)
        if done.returncode:
            sys.exit(f'{given.tests} does not build\n{done.stdout[-2000:]}')
    commands = compile_commands(build)
    sources, number = [], 0
    for path in map(os.path.abspath, given.files):
        if path not in commands:
            sys.exit(f'{path}: nothing builds it')
        source = Source(path, commands[path])
        found, source.text = changes.find(path, arguments_for_clang(source.command))
        chooser = random.Random(f'{given.seed} {source.name}')
        for change in changes.choose(found, given.most + SPARE, chooser):
            number += 1
            source.numbered.append((number, change))
        if given.again:
            before = survivors.of(source)
            source.numbered = [(n, c) for n, c in source.numbered if changes.shown(source.text, c) in before]
        if source.numbered:
            sources.append(source)
        elif not given.again:
            print(f'{source.name}: nothing to change')
    objects = [compile_source(source, build, folder) for source in sources]
    for source in sources:
        del source.numbered[given.most:]
    watch = os.path.join(folder, 'MutantWatch.o')
    watcher = os.path.join(MUTATION, 'MutantWatch.cpp')
    done = run([compiler_of(commands), '-std=c++20', '-c', watcher, '-o', watch], folder)
    if done.returncode:
        sys.exit(done.stderr)
    runner = Runner(link(build, folder, given.tests, [*objects, watch]), folder)
    reached = os.path.join(folder, 'reached')
    runner.run(0, reached=reached)
    reach = Reach(reached)
    if not reach.by:
        sys.exit(f'{given.tests} does not run with the changes built in; is the build folder up to date?')
    report(sources, reach, runner, survivors)


def compiler_of(commands):
    command = next(iter(commands.values()))
    return command[1] if 'ccache' in command[0] else command[0]


def report(sources, reach, runner, survivors):
    """Runs every change and prints what no test notices."""
    noticed, total = 0, 0
    for source in sources:
        alive = []
        started = time.monotonic()
        for number, change in source.numbered:
            if not reach.is_noticed(number, runner):
                alive.append(changes.shown(source.text, change))
                tests = len(reach.tests(number))
                print(f'  survives: {source.name}:{alive[-1]}  [{tests} tests]', flush=True)
        count = len(source.numbered)
        seconds = time.monotonic() - started
        print(f'{source.name}: {count - len(alive)} of {count} noticed ({seconds:.0f} s)', flush=True)
        survivors.keep(source, alive)
        total += count
        noticed += count - len(alive)
    print(f'{noticed} of {total} noticed, {100 * noticed // max(total, 1)} in 100')


if __name__ == '__main__':
    main()
