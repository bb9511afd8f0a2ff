#!/usr/bin/env python3
"""packages.py ZENDRY_MAKE FOLDER [NAME...]

Builds packages of other people by projects of ours, two sources at once, and runs their own tests, in both modes. FOLDER holds the
sources (apt-get source, names below). Each is copied first. Prints one row for each package and mode, and ends
with 1 if something wasn't built, reported an error, or failed its tests."""
import glob
import os
import shutil
import subprocess
import sys
import tempfile
import time

# name, folder; sources (patterns, those with "!" are left out), switches, libraries, a command that prepares the
# folder, a command that runs the tests: $P is the program.
PACKAGES = [
    ('zlib', 'zlib-1*', '*.c test/example.c', '-I. -D_LARGEFILE64_SOURCE=1 -DHAVE_UNISTD_H', '', '', '$P'),
    ('bzip2', 'bzip2-*', 'blocksort.c huffman.c crctable.c randtable.c compress.c decompress.c bzlib.c bzip2.c',
     '-D_FILE_OFFSET_BITS=64', '', '',
     'for i in 1 2 3; do $P -$i < sample$i.ref | cmp - sample$i.bz2 && $P -d < sample$i.bz2 | cmp - sample$i.ref || exit 1; done'),
    ('lua5.4', 'lua-5*/src', 'l*.c !luac.c', '-DLUA_USE_POSIX', '-lm', '',
     """echo 'local t = {} for i = 1, 1e5 do t[i] = i * 7 % 1009 end table.sort(t) assert(t[1] == 0 and t[100000] == 1008)
     assert(string.rep("ab", 3, ","):gsub("a", "x") == "xb,xb,xb") assert(load("return 6 * 7")() == 42)
     assert(not pcall(error, "x")) assert(coroutine.wrap(function() coroutine.yield(5) end)() == 5)' > t.lua && $P t.lua"""),
    ('double-conversion', 'double-conversion-3*', 'double-conversion/*.cc test/cctest/*.cc', '-I. -Itest/cctest', '', '',
     '$P --list | tr -d "<" | while read t; do $P "$t" || exit 1; done'),
    ('tinyxml2', 'tinyxml2-9*', 'tinyxml2.cpp xmltest.cpp', '', '', 'mkdir -p resources/out', '$P | tee t.log; grep -q "Fail 0" t.log'),
    ('pugixml', 'pugixml-1*', 'src/pugixml.cpp tests/*.cpp !tests/fuzz*', '-Isrc', '', '', '$P'),
    ('expat', 'expat-2*/expat', 'lib/*.c tests/chardata.c tests/memcheck.c tests/minicheck.c tests/structdata.c tests/runtests.c',
     '-I. -Ilib -DHAVE_EXPAT_CONFIG_H', '', """printf '%s\\n' '#define XML_NS 1' '#define XML_DTD 1' '#define XML_CONTEXT_BYTES 1024' \
     '#define BYTEORDER 1234' '#define HAVE_GETRANDOM 1' '#define HAVE_MEMMOVE 1' '#define PACKAGE_STRING "expat 2.5.0"' \
     '#define VERSION "2.5.0"' > expat_config.h""", '$P -q'),
    ('libpng', 'libpng1*', 'png*.c intel/*.c', '-I. -DPNG_INTEL_SSE_OPT=0', '-lz -lm',
     'cp scripts/pnglibconf.h.prebuilt pnglibconf.h', '$P pngtest.png'),
    ('jsoncpp', 'libjsoncpp-1*', 'src/lib_json/*.cpp src/test_lib_json/*.cpp', '-Iinclude -Isrc/lib_json', '', '', '$P'),
    ('lz4', 'lz4-1*', 'lib/*.c programs/datagen.c tests/frametest.c', '-Ilib -Iprograms', '', '', '$P -i200 -t0'),
    ('re2', 're2-2*', 're2/*.cc util/rune.cc util/strutil.cc util/test.cc util/pcre.cc re2/testing/*.cc !re2/fuzzing* !re2/testing/regexp_benchmark.cc '
     '!re2/testing/exhaust*_test.cc !re2/testing/random_test.cc', '-I. -std=c++17', '-lpthread', '', '$P'),
    ('snappy', 'snappy-1*', 'snappy.cc snappy-c.cc snappy-sinksource.cc snappy-stubs-internal.cc snappy-test.cc snappy_test_data.cc snappy_unittest.cc',
     '-I. -DHAVE_CONFIG_H', '-lgtest -lgtest_main -lpthread',
     """sed -e 's/\\${HAVE_SYS_UIO_H_01}/1/; s/\\${PROJECT_VERSION_MAJOR}/1/; s/\\${PROJECT_VERSION_MINOR}/1/; s/\\${PROJECT_VERSION_PATCH}/9/'
     snappy-stubs-public.h.in > snappy-stubs-public.h; printf '%s\\n' '#define HAVE_BUILTIN_CTZ 1' '#define HAVE_FUNC_MMAP 1'
     '#define HAVE_UNISTD_H 1' '#define HAVE_SYS_UIO_H 1' '#define HAVE_SYS_TIME_H 1' > config.h""".replace('\n', ' '), '$P'),
]


def matching(folder, patterns):
    found, out = [], set()
    for pattern in patterns.split():
        names = sorted(os.path.relpath(path, folder) for path in glob.glob(os.path.join(folder, pattern.lstrip('!'))))
        if pattern.startswith('!'):
            out.update(names)
        else:
            found += names
    return [name for name in dict.fromkeys(found) if name not in out and not name.endswith('.h')]


def write_project(folder, sources, switches, libraries):
    files = ''.join(f'\t<file name="{name}"/>\n' for name in sources)
    modes = ''.join(f'\t<{mode}>\n\t\t<gcc id="0"/>\n\t\t<comp opt="{level} -w {switches}"/>\n\t</{mode}>\n'
                    for mode, level in (('dbg', '-g'), ('rel', '-O2')))
    with open(os.path.join(folder, 'p.zpj'), 'w') as file:
        file.write(f'<ide>\n<set parse="n"/></ide>\n<src>\n{files}</src>\n<opt>\n\t<gen>\n\t\t<targ id="0"/>\n'
                   f'\t\t<lib value="{libraries}"/>\n\t</gen>\n{modes}</opt>\n')


def install(top, zendry_make):
    """An installation with the machine's tools that knows .cc."""
    os.makedirs(f'{top}/bin')
    shutil.copy(zendry_make, f'{top}/bin/zendry-make')
    with open(f'{top}/bin/Zendry.cfg', 'w') as file:
        file.write('<kind id="1" value="cc"/>\n')
    return f'{top}/bin/zendry-make'


def try_package(make, corpus, name, folder, patterns, switches, libraries, prepare, tests):
    origins = sorted(path for path in glob.glob(os.path.join(corpus, folder)) if os.path.isdir(path))
    if not origins:
        print(f'| {name} | no sources | | | | |')
        return False
    good = True
    with tempfile.TemporaryDirectory(prefix='package-') as top:
        copy = os.path.join(top, name)
        shutil.copytree(origins[-1], copy, symlinks=True)
        if prepare:
            subprocess.run(prepare, shell=True, cwd=copy, check=True)
        sources = matching(copy, patterns)
        write_project(copy, sources, switches, libraries)
        for mode, out in (('release', 'out-rel'), ('debug', 'out-dbg')):
            started = time.monotonic()
            built = subprocess.run([make, '-j', '2', '--mode', mode, 'p.zpj'], cwd=copy, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                                   text=True, errors='replace')
            seconds = time.monotonic() - started
            programs = glob.glob(f'{copy}/{out}/*.exe')
            ok = built.returncode == 0 and len(programs) == 1
            tested = ok and subprocess.run(tests, shell=True, cwd=copy, env=dict(os.environ, P=programs[0]), stdin=subprocess.DEVNULL,
                                           stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, errors='replace')
            passed = ok and tested.returncode == 0
            print(f'| {name} | {mode} | {len(sources)} | {seconds:.1f} s | {"built" if ok else "NOT BUILT"} | '
                  f'{"passed" if passed else "FAILED"} |', flush=True)
            if not ok:
                print(built.stdout[-1500:])
            elif not passed:
                print(tested.stdout[-1500:])
            good = good and passed
    return good


def main(zendry_make, corpus, *names):
    with tempfile.TemporaryDirectory(prefix='package-install-') as top:
        make = install(top, zendry_make)
        print('| package | mode | sources | time | | its tests |\n|---|---|---|---|---|---|', flush=True)
        good = [try_package(make, corpus, *package) for package in PACKAGES if not names or package[0] in names]
    sys.exit(0 if all(good) else 1)


if __name__ == '__main__':
    if len(sys.argv) < 3:
        sys.exit(__doc__)
    main(*sys.argv[1:])
