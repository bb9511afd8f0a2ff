#!/usr/bin/env python3
"""random_edits.py ZENDRY_MAKE FOLDER [EDITS [SEED [PACKAGE...]]]

Does a build ever miss a change? EDITS (2000) random edits of three packages, whose sources lie in FOLDER
(apt-get source lua5.4 zlib double-conversion): texts of sources and headers, includes in 27 forms, renames,
removals, headers that hide others, times touched, in the past, in the future and equal to the object's,
switches, libraries, builds that are killed. After each one to three edits the project is built as it stands
and in a fresh copy; every object and the program are compared byte by byte. Prints each difference with the
edits before it, and ends with 1 if there was one. The compiler goes through ccache, if there is one."""
import copy
import filecmp
import os
import random
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import time

HOUR = 3600
# Each names an include of NAME, at the beginning of a source; "VALUE" is defined by the header.
FORMS = ['#include "{0}"', '#include <{0}>', '#include "./{0}"', '#include "inc/../{0}"', '   #include "{0}"',
         '#  include   "{0}"', '#\tinclude\t"{0}"', '/* c */ #include "{0}"', '#/**/include/**/"{0}"',
         '#include "{0}" // more', '#define NAME "{0}"\n#include NAME', '#define NAME <{0}>\n#include NAME',
         '#inc\\\nlude "{0}"', '#include \\\n"{0}"', '%:include "{0}"', '#import "{0}"',
         '#if 1\n#include "{0}"\n#endif', '#if __has_include("{0}")\n#include "{0}"\n#endif',
         '#if 0\n#else\n#include "{0}"\n#endif', '#include "{0}"\n#include "{0}"', '#ifdef EDIT\n#endif\n#include "{0}"',
         '#include/**/<{0}>', '\n\n\n#include "{0}"', '#define H(x) <x>\n#include H({0})', '#include <./{0}>',
         '#line 7\n#include "{0}"', '#pragma once_more\n#include "{0}"']

# ccache does nothing for a compiler that is asked by its environment for what it reads, and its direct mode doesn't
# see a header that hides another.
COMPILER = """#!/bin/sh
if [ -n "$DEPENDENCIES_OUTPUT" ]; then
  set -- -MD -MF "${{DEPENDENCIES_OUTPUT% *}}" -MT read "$@"
  unset DEPENDENCIES_OUTPUT
fi
CCACHE_NODIRECT=1 exec {launcher} {name} "$@"
"""


class Package:
    """A copy of a package with a project, and what the edits have made of it."""

    def __init__(self, top, source, sources, switches, libraries):
        self.folder = os.path.join(top, 'work')
        shutil.copytree(source, self.folder)
        self.sources = sorted(name for pattern in sources for name in self.matching(pattern))
        self.base, self.libraries = switches, libraries
        self.define, self.level, self.order, self.linked, self.with_math = 0, '-O0', 0, 0, False
        self.headers = {}  # name of an own header: the folder that it lies in
        self.left_out = []
        for folder in ('inc', 'inc2', 'ext'):
            os.makedirs(os.path.join(self.folder, folder), exist_ok=True)
        self.write_library(1)
        self.counter = 0
        self.edited = []

    def matching(self, pattern):
        folder = os.path.join(self.folder, os.path.dirname(pattern))
        name = re.compile(os.path.basename(pattern) + '$')
        return [os.path.join(os.path.dirname(pattern), found) for found in os.listdir(folder) if name.match(found)]

    def path(self, name):
        return os.path.join(self.folder, name)

    def read(self, name):
        with open(self.path(name), encoding='latin-1') as file:
            return file.read()

    def write(self, name, text):
        with open(self.path(name), 'w', encoding='latin-1') as file:
            file.write(text)

    def write_library(self, value):
        """A library beside the project, which no object is made of."""
        self.write('ext/ext.c', f'int edit_ext(void) {{ return {value}; }}\n')
        subprocess.run('gcc -c ext.c -o ext.o && rm -f libext.a && ar rc libext.a ext.o && rm ext.o', shell=True,
                       cwd=self.path('ext'), check=True)

    def write_project(self):
        folders = ['inc', 'inc2'] if self.order else ['inc2', 'inc']
        switches = f'-w {self.level} -DEDIT={self.define} {self.base} -I. ' + ' '.join('-I' + name for name in folders)
        libraries = self.libraries + (' -L../ext -lext' if self.linked else '') + (' -lm' if self.with_math else '')
        files = ''.join(f'\t<file name="{name}"/>\n' for name in self.sources)
        headers = ''.join(f'\t<file name="{place}/{name}"/>\n' for name, place in sorted(self.headers.items())[::2])
        self.write('p.zpj', '<ide>\n<set parse="n"/></ide>\n<src>\n' + files + '</src>\n<hdr>\n' + headers + '</hdr>\n<opt>\n'
                   f'\t<gen>\n\t\t<targ id="0"/>\n\t\t<lib value="{libraries}"/>\n\t</gen>\n'
                   f'\t<rel>\n\t\t<gcc id="0"/>\n\t\t<comp opt="{switches}"/>\n\t</rel>\n</opt>\n')


class Edits:
    """The ways to change a package; each method is one."""

    def __init__(self, package, chance):
        self.p, self.chance = package, chance

    def number(self):
        self.p.counter += 1
        return self.p.counter

    def source(self):
        return self.chance.choice(self.p.sources)

    def any_header(self):
        return self.chance.choice(self.p.matching('.*\\.h') or self.p.sources)

    def own_header(self):
        while not self.p.headers:
            self.include_added()
        return self.chance.choice(sorted(self.p.headers))

    def own_path(self, name):
        return os.path.join(self.p.headers[name], name)

    def text_of_source(self):
        name, n = self.source(), self.number()
        self.p.write(name, self.p.read(name) + f'\nint edit_{n}(void) {{ return {n}; }}\n')
        return name

    def text_of_header(self):
        name = self.any_header()
        self.p.write(name, f'/* edit {self.number()} */\n' + self.p.read(name))
        return name

    def include_added(self):
        n = self.number()
        header, name = f'e{n}.h', self.source()
        form = self.chance.choice(FORMS)
        if './{' in form:
            header = f'fixed{n}.h'  # a place that is named can't be moved
            self.p.write(header, f'#undef VALUE\n#define VALUE {n}\n')
        else:
            self.p.headers[header] = self.chance.choice(['.', 'inc', 'inc2'])
            self.p.write(self.own_path(header), f'#undef VALUE\n#define VALUE {n}\n')
        text = '#undef NAME\n#undef H\n' + form.format(header) + f'\nint edit_f{n}(void) {{ return VALUE; }}\n'
        self.p.write(name, self.p.read(name) + '\n' + text)
        return f'{name}: {text!r}'

    def value_of_header(self):
        name = self.own_header()
        self.p.write(self.own_path(name), f'#undef VALUE\n#define VALUE {self.number()}\n')
        return self.own_path(name)

    def header_moved(self):
        name = self.own_header()
        old = self.own_path(name)
        self.p.headers[name] = self.chance.choice(['.', 'inc', 'inc2'])
        os.rename(self.p.path(old), self.p.path(self.own_path(name)))
        return f'{old} to {self.own_path(name)}'

    def header_renamed(self):
        name = self.own_header()
        new = f'r{self.number()}.h'
        for source in self.p.sources + self.p.left_out:
            text = self.p.read(source)
            if name in text:
                self.p.write(source, text.replace(name, new))
        self.p.headers[new] = self.p.headers[name]
        os.rename(self.p.path(self.own_path(name)), self.p.path(self.own_path(new)))
        del self.p.headers[name]
        return f'{name} to {new}'

    def header_hidden(self):
        """Another header of the name, which a folder that is searched earlier may hold."""
        name = self.own_header()
        places = [place for place in ('.', 'inc', 'inc2') if place != self.p.headers[name]]
        path = os.path.join(self.chance.choice(places), name)
        if os.path.exists(self.p.path(path)):
            os.unlink(self.p.path(path))
            return f'{path} removed again'
        self.p.write(path, f'#undef VALUE\n#define VALUE {self.number()}\n')
        return path

    def time_set(self):
        name = self.chance.choice([self.source(), self.any_header(), self.own_path(self.own_header())])
        objects = self.p.matching('out-rel/.*\\.o')
        now = os.stat(self.p.path(name)).st_mtime_ns
        times = {'past': now - 50 * HOUR * 10**9, 'future': now + HOUR * 10**9, 'touched': time.time_ns()}
        if objects:
            times['object'] = os.stat(self.p.path(self.chance.choice(objects))).st_mtime_ns
        kind = self.chance.choice(sorted(times))
        if self.chance.random() < 0.5:
            self.p.write(name, self.p.read(name) + f'\n#define EDIT_T {self.number()}\n')
        os.utime(self.p.path(name), ns=(times[kind], times[kind]))
        return f'{name} {kind}'

    def object_touched(self):
        objects = self.p.matching('out-rel/.*\\.o')
        if not objects:
            return 'none'
        name = self.chance.choice(objects)
        if self.chance.random() < 0.3:
            os.unlink(self.p.path(name))
        else:
            os.utime(self.p.path(name))
        return name

    def switches(self):
        kind = self.chance.choice(['define', 'level', 'order'])
        if kind == 'define':
            self.p.define = self.chance.randrange(4)
        elif kind == 'level':
            self.p.level = self.chance.choice(['-O0', '-O0 -fno-common', '-O1'])
        else:
            self.p.order = 1 - self.p.order
        return kind

    def library_set(self):
        if self.chance.random() < 0.5:
            self.p.linked = 1 - self.p.linked
            return 'set'
        self.p.with_math = not self.p.with_math
        return 'math'

    def library_changed(self):
        self.p.write_library(self.number())
        return ''

    def source_added(self):
        n = self.number()
        name = self.chance.choice(['', 'inc/', 'ext/']) + self.chance.choice([f's{n}', 'same']) + '.c'
        self.p.write(name, f'int edit_ext(void);\nint edit_s{n}(void) {{ return {n} + EDIT; }}\n')
        if name not in self.p.sources:
            self.p.sources.append(name)
        return name

    def source_removed(self):
        own = [name for name in self.p.sources if re.search(r'(^|/)(s\d+|same)\.c$', name)]
        if not own:
            return self.source_added()
        name = self.chance.choice(own)
        self.p.sources.remove(name)
        self.p.left_out.append(name)
        return name

    def source_back(self):
        if not self.p.left_out:
            return 'none'
        name = self.p.left_out.pop()
        if name not in self.p.sources:
            self.p.sources.append(name)
        return name

    def all(self):
        names = [name for name in vars(Edits) if name not in ('number', 'source', 'any_header', 'own_header', 'own_path', 'all')]
        return [(name, getattr(self, name)) for name in names if not name.startswith('_')]


def killed_build(make, package, chance):
    package.write_project()
    program = subprocess.Popen([make, 'p.zpj'], cwd=package.folder, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                               start_new_session=True)
    try:
        program.wait(chance.random() * 0.4)
        return 'ended before'
    except subprocess.TimeoutExpired:
        kind = chance.choice([signal.SIGKILL, signal.SIGTERM])
        (os.killpg if chance.random() < 0.3 else os.kill)(program.pid, kind)
        program.wait()
        return kind.name


def build(make, folder):
    result = subprocess.run([make, 'p.zpj'], cwd=folder, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                            errors='replace')
    return result.returncode, result.stdout


def differences(make, package, top):
    """Builds the package and a fresh copy; answers what differs and whether they were built."""
    clean = os.path.join(top, 'clean')
    shutil.rmtree(clean, ignore_errors=True)
    status, output = build(make, package.folder)
    shutil.copytree(package.folder, clean, ignore=shutil.ignore_patterns('out-rel'))
    expected, clean_output = build(make, clean)
    if status != expected:
        return [f'ended with {status}, the clean build with {expected}', output[-2000:], clean_output[-2000:]], False
    if expected:
        return [], False
    made = [name for name in os.listdir(f'{clean}/out-rel') if not name.startswith('.')]
    return [name for name in made if not os.path.exists(f'{package.folder}/out-rel/{name}')
            or not filecmp.cmp(f'{clean}/out-rel/{name}', f'{package.folder}/out-rel/{name}', shallow=False)], True


def restore(package, good, top, chance):
    """Takes back edits that don't build, as a version control program does: each file with its old text, with its
    old time or a new one."""
    kept = os.path.join(top, 'good')
    for folder, _, names in os.walk(package.folder):
        if 'out-rel' in folder:
            continue
        relative = os.path.relpath(folder, package.folder)
        for name in names:
            old = os.path.join(kept, relative, name)
            if not os.path.exists(old):
                os.unlink(os.path.join(folder, name))
    for folder, _, names in os.walk(kept):
        relative = os.path.relpath(folder, kept)
        if relative.startswith('out-rel'):
            continue
        for name in names:
            old, new = os.path.join(folder, name), os.path.join(package.folder, relative, name)
            if not os.path.exists(new) or not filecmp.cmp(old, new, shallow=False):
                chance.choice([shutil.copy, shutil.copy2])(old, new)
    for key, value in copy.deepcopy(good).items():
        setattr(package, key, value)


def install(top, zendry_make):
    """An installation whose compiler goes through ccache."""
    os.makedirs(f'{top}/bin')
    os.makedirs(f'{top}/tools')
    shutil.copy(zendry_make, f'{top}/bin/zendry-make')
    with open(f'{top}/bin/Zendry.cfg', 'w') as file:
        file.write('<gcc id="0" opt="gcc" path="@/tools"/>\n<kind id="1" value="cc"/>\n')
    os.symlink(shutil.which('ar'), f'{top}/tools/ar')
    for name in ('gcc', 'g++'):
        with open(f'{top}/tools/{name}', 'w') as file:
            file.write(COMPILER.format(launcher='ccache' if shutil.which('ccache') else '', name=shutil.which(name)))
        os.chmod(f'{top}/tools/{name}', 0o755)
    return f'{top}/bin/zendry-make'


def packages(folder):
    def found(name):
        return next(os.path.join(folder, entry) for entry in sorted(os.listdir(folder))
                    if entry.startswith(name) and os.path.isdir(os.path.join(folder, entry)))
    return {'lua': (found('lua') + '/src', [r'l(?!uac).*\.c'], '-DLUA_USE_POSIX', '-lm'),
            'zlib': (found('zlib'), [r'[a-z0-9]*\.c', r'test/example\.c'], '-D_LARGEFILE64_SOURCE=1', ''),
            'double-conversion': (found('double'), [r'double-conversion/.*\.cc', r'test/cctest/cctest\.cc', r'test/cctest/test-ieee\.cc',
                                                     r'test/cctest/gay.*\.cc', r'test/cctest/test-d.*\.cc'], '-Itest/cctest', '')}


def run(name, source, sources, switches, libraries, make, edits, seed):
    chance = random.Random(f'{name} {seed}')
    bad = done = builds = failed = killed = 0
    with tempfile.TemporaryDirectory(prefix='edits-') as top:
        package = Package(top, source, sources, switches, libraries)
        ways = Edits(package, chance).all()
        package.write_project()
        found, is_built = differences(make, package, top)
        if found or not is_built:
            sys.exit(f'{name} is not built: {found} {build(make, package.folder)[1]}')
        log = []
        while True:
            shutil.rmtree(f'{top}/good', ignore_errors=True)
            os.rename(f'{top}/clean', f'{top}/good')
            good = copy.deepcopy({key: value for key, value in vars(package).items() if key not in ('folder', 'counter')})
            is_built = False
            while not is_built and done < edits:
                for _ in range(chance.randint(1, 3)):
                    kind, edit = chance.choice(ways)
                    log.append(f'{kind}: {edit()}')
                    done += 1
                if chance.random() < 0.25:
                    log.append('killed build: ' + killed_build(make, package, chance))
                    killed += 1
                package.write_project()
                found, is_built = differences(make, package, top)
                builds += 1
                failed += not is_built
                if found:
                    bad += 1
                    print(f'{name}, after {done} edits, differs: {found}\n  ' + '\n  '.join(log[-8:]))
                    shutil.rmtree(package.path('out-rel'), ignore_errors=True)
                if not is_built:
                    log.append('taken back')
                    restore(package, good, top, chance)
            if done >= edits:
                break
        print(f'| {name} | {len(package.sources)} | {done} | {builds} | {killed} | {failed} | {bad} |', flush=True)
    return bad


def main(zendry_make, folder, edits='2000', seed='1', *names):
    with tempfile.TemporaryDirectory(prefix='edits-install-') as top:
        make = install(top, zendry_make)
        print('| package | sources | edits | builds compared | killed | that failed in both | differences |\n'
              '|---|---|---|---|---|---|---|', flush=True)
        bad = sum(run(name, *package, make, int(edits) // 3 + 1, seed) for name, package in packages(folder).items()
                  if not names or name in names)
    sys.exit(1 if bad else 0)


if __name__ == '__main__':
    if len(sys.argv) < 3:
        sys.exit(__doc__)
    main(*sys.argv[1:])
