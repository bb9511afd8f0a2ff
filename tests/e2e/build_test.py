#!/usr/bin/env python3
"""Building from the window, by keys alone, with the machine's real compiler."""
import os
import unittest

from desktop import wait_until
from fixture import ZendryTest, read, run, session, write, write_project

BROKEN_MAIN = '''#include "part.h"

int main() {
  int count = "three";
  return count + Undeclared(2);
}
'''
BROKEN_PART = '''#include "part.h"

int Part() {
  return 1
}
'''


class Build(ZendryTest):
    def make(self, window, program):
        """Presses the key of "&Make" and waits for the program."""
        window.key('F7')
        wait_until(lambda: os.path.exists(program), f'{program} is built')
        window.wait_quiet()

    def test_make_builds_the_demo_and_it_runs(self):
        project = self.demo()
        program = os.path.join(os.path.dirname(project), 'out-rel', 'console.exe')
        window = self.start(project)
        self.make(window, program)
        self.picture('demo-built')
        self.assertEqual(len(window.titles()), 1, 'no message came')
        self.assertEqual(window.close(), 0)
        built = run(program)
        self.assertEqual(built.returncode, 0)
        self.assertIn('words', built.stdout)

    def test_make_of_a_built_project_runs_no_tool_and_rebuild_runs_all(self):
        project = self.demo()
        program = os.path.join(os.path.dirname(project), 'out-rel', 'console.exe')
        window = self.start(project)
        self.make(window, program)
        first = os.stat(program).st_mtime_ns
        window.key('F7')
        window.wait_quiet()
        self.assertEqual(os.stat(program).st_mtime_ns, first)
        window.key('shift+F7')
        wait_until(lambda: os.path.exists(program) and os.stat(program).st_mtime_ns != first, 'a new program')
        window.wait_quiet()
        self.assertEqual(window.close(), 0)

    def test_mode_of_the_session_decides_the_folder(self):
        project = self.demo()
        folder = os.path.dirname(project)
        write(os.path.join(folder, 'console.zend'), '<state>\n\t<mode opt="dbg"/>\n</state>\n')
        window = self.start(project)
        self.make(window, os.path.join(folder, 'out-dbg', 'console.exe'))
        self.assertEqual(window.close(), 0)
        self.assertFalse(os.path.exists(os.path.join(folder, 'out-rel')))
        self.assertEqual(session(os.path.join(folder, 'console.zend'))['mode'], 'dbg')

    def objects(self, project):
        folder = os.path.join(os.path.dirname(project), 'out-rel')
        return sorted(name for name in os.listdir(folder) if name.endswith('.o')) if os.path.isdir(folder) else []

    def test_compile_file_compiles_the_file_in_front(self):
        project = self.demo()
        write(project.replace('.zpj', '.zend'), '<state>\n\t<open>\n\t\t<file name="main.cpp" id="1"/>\n'
              '\t\t<file name="reader.cpp" id="1"/>\n\t</open>\n</state>\n')
        window = self.start(project)
        window.key('ctrl+F7')
        wait_until(lambda: self.objects(project), 'an object')
        window.wait_quiet()
        self.assertEqual(window.close(), 0)
        self.assertEqual(self.objects(project), ['reader.o'])

    def test_clear_output_deletes_the_objects_and_keeps_the_program(self):
        project = self.demo()
        program = os.path.join(os.path.dirname(project), 'out-rel', 'console.exe')
        window = self.start(project)
        self.make(window, program)
        self.assertEqual(len(self.objects(project)), 6)
        window.key('ctrl+shift+F7')
        wait_until(lambda: not self.objects(project), 'no object')
        self.assertEqual(window.close(), 0)
        self.assertTrue(os.path.exists(program))

    def test_header_touched_compiles_only_what_includes_it(self):
        project = self.demo()
        folder = os.path.dirname(project)
        window = self.start(project)
        self.make(window, os.path.join(folder, 'out-rel', 'console.exe'))
        before = {name: os.stat(os.path.join(folder, 'out-rel', name)).st_mtime_ns for name in self.objects(project)}
        os.utime(os.path.join(folder, 'options.h'))
        window.key('F7')
        wait_until(lambda: os.stat(os.path.join(folder, 'out-rel', 'options.o')).st_mtime_ns != before['options.o'],
                   'a new object')
        window.wait_quiet()
        self.assertEqual(window.close(), 0)
        made = {name for name in before if os.stat(os.path.join(folder, 'out-rel', name)).st_mtime_ns != before[name]}
        including = {os.path.splitext(name)[0] + '.o' for name in os.listdir(folder)
                     if name.endswith('.cpp') and '"options.h"' in read(os.path.join(folder, name))}
        self.assertEqual(made, including)

    def broken_project(self):
        folder = os.path.join(self.folder, 'broken')
        write(os.path.join(folder, 'part.h'), 'int Part();\n')
        write(os.path.join(folder, 'main.cpp'), BROKEN_MAIN)
        write(os.path.join(folder, 'part.cpp'), BROKEN_PART)
        return write_project(os.path.join(folder, 'broken.zpj'), ['main.cpp', 'part.cpp'], ['part.h'])

    def place_after(self, project, *keys):
        """Where the caret stands at the end of a build with errors and these keys: file and line."""
        window = self.start(project)
        window.key('F7')
        self.assertEqual(window.wait_for_message(), 'Information')
        self.picture('errors-message')
        window.key('Return')
        wait_until(lambda: len(window.titles()) == 1, 'the message is gone')
        for key in keys:
            window.key(key)
        window.wait_quiet()
        self.picture('errors-' + ('-'.join(keys) or 'first'))
        self.assertEqual(window.close(), 0)
        kept = session(project.replace('.zpj', '.zend'))
        active = os.path.basename(kept['active'])
        return active, int(dict(kept['files'])[active])

    def test_errors_are_listed_and_walked(self):
        project = self.broken_project()
        self.assertEqual(self.place_after(project), ('main.cpp', 4))
        self.assertEqual(self.place_after(project, 'F4'), ('main.cpp', 5))
        self.assertEqual(self.place_after(project, 'F4', 'shift+F4'), ('main.cpp', 4))
        self.assertFalse(os.path.exists(os.path.join(os.path.dirname(project), 'out-rel', 'broken.exe')))

    def test_errors_mended_build_again(self):
        project = self.broken_project()
        folder = os.path.dirname(project)
        self.place_after(project)
        write(os.path.join(folder, 'main.cpp'), '#include "part.h"\n\nint main() {\n  return Part() - 1;\n}\n')
        write(os.path.join(folder, 'part.cpp'), read(os.path.join(folder, 'part.cpp')).replace('return 1', 'return 1;'))
        program = os.path.join(folder, 'out-rel', 'broken.exe')
        window = self.start(project)
        self.make(window, program)
        self.assertEqual(window.close(), 0)
        self.assertEqual(run(program).returncode, 0)


if __name__ == '__main__':
    unittest.main(verbosity=2)
