#!/usr/bin/env python3
"""Projects of sources that nobody here wrote, as Debian packages bring them, built without and with the
window. Their project files are made on the spot."""
import os
import shutil
import subprocess
import unittest

from desktop import wait_until
from fixture import ZENDRY_MAKE, ZendryTest, run, session, write_project

C_EXAMPLES = '/usr/share/doc/zlib1g-dev/examples'
CPP_EXAMPLES = '/usr/share/doc/libcppunit-doc/examples/cppunittest'
# These are a plug-in and the entry of another suite.
NOT_OF_THE_PROGRAM = {'CppUnitTestPlugIn.cpp'}


class Foreign(ZendryTest):
    def copied(self, examples):
        if not os.path.isdir(examples):
            self.skipTest(f'{examples} is not there: the package is missing, or documents are left out on this machine')
        folder = os.path.join(self.folder, 'foreign')
        shutil.copytree(examples, folder)
        return folder

    def c_project(self):
        """A filter that compresses standard input."""
        return write_project(os.path.join(self.copied(C_EXAMPLES), 'zpipe.zpj'), ['zpipe.c'], libraries='-lz')

    def c_project_of_two(self):
        """A log file that survives crashes: a C program of two sources and a header."""
        folder = self.copied(C_EXAMPLES)
        with open(os.path.join(folder, 'main.c'), 'w') as file:
            file.write('#include <stddef.h>\n#include "gzlog.h"\nint main(int n, char** v) {\n  gzlog* log = gzlog_open(v[1]);\n'
                       '  int bad = n < 2 || !log || gzlog_write(log, "hello", 5);\n  return gzlog_close(log) || bad;\n}\n')
        return write_project(os.path.join(folder, 'gzlog.zpj'), ['main.c', 'gzlog.c'], ['gzlog.h'], libraries='-lz')

    def cpp_project(self):
        """The tests of a test framework: some forty sources with a header each."""
        folder = self.copied(CPP_EXAMPLES)
        names = sorted(os.listdir(folder))
        sources = [n for n in names if n.endswith('.cpp') and n not in NOT_OF_THE_PROGRAM]
        return write_project(os.path.join(folder, 'cppunittest.zpj'), sources, [n for n in names if n.endswith('.h')],
                             libraries='-lcppunit -ldl', switches='-O0')

    def program_of(self, project):
        return os.path.join(os.path.dirname(project), 'out-rel', os.path.basename(project).replace('.zpj', '.exe'))

    def make(self, project):
        result = run(ZENDRY_MAKE, project)
        self.assertEqual(result.returncode, 0, result.stdout[-2000:] + result.stderr)
        return self.program_of(project)

    def make_by_keys(self, project):
        window = self.start(project)
        window.key('F7')
        program = self.program_of(project)
        wait_until(lambda: os.path.exists(program) or len(window.titles()) > 1, 'a program or a message', 240)
        window.wait_quiet()
        self.picture('foreign-' + os.path.basename(project))
        self.assertEqual(window.close(), 0)
        self.assertTrue(os.path.exists(program))
        return program

    def check_compresses(self, program):
        text = b'a line to be pressed flat\n' * 400
        packed = subprocess.run([program], input=text, stdout=subprocess.PIPE, check=True).stdout
        self.assertLess(len(packed), 200)
        self.assertEqual(subprocess.run([program, '-d'], input=packed, stdout=subprocess.PIPE, check=True).stdout, text)

    def check_logs(self, program):
        base = os.path.join(self.folder, 'log')
        self.assertEqual(run(program, base).returncode, 0)
        self.assertEqual(run('gzip', '-dc', base + '.gz').stdout, 'hello')

    def check_passes(self, program):
        result = run(program)
        self.assertIn('OK (', result.stdout + result.stderr)

    def test_c_program_without_window(self):
        self.check_compresses(self.make(self.c_project()))

    def test_c_program_by_keys(self):
        self.check_compresses(self.make_by_keys(self.c_project()))

    def test_c_program_of_two_sources_by_keys(self):
        self.check_logs(self.make_by_keys(self.c_project_of_two()))

    def test_cpp_program_without_window(self):
        self.check_passes(self.make(self.cpp_project()))

    def test_cpp_program_by_keys(self):
        self.check_passes(self.make_by_keys(self.cpp_project()))

    def test_error_planted_in_a_foreign_source_is_shown_at_its_line(self):
        project = self.c_project()
        source = os.path.join(os.path.dirname(project), 'zpipe.c')
        with open(source) as file:
            lines = file.read().split('\n')
        lines.insert(84, 'this is no C;')
        with open(source, 'w') as file:
            file.write('\n'.join(lines))
        window = self.start(project)
        window.key('F7')
        window.wait_for_message()
        window.key('Return')
        wait_until(lambda: len(window.titles()) == 1, 'the message is gone')
        self.assertEqual(window.close(), 0)
        self.assertEqual(dict(session(project.replace('.zpj', '.zend'))['files'])['zpipe.c'], '85')


if __name__ == '__main__':
    unittest.main(verbosity=2)
