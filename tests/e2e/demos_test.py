#!/usr/bin/env python3
"""The templates and demos, built by Zendry as they are shipped, and run; those with forms under a window manager."""
import os
import re
import shutil
import subprocess
import unittest

from desktop import wait_until
from fixture import TOP, ZENDRY_MAKE, ZendryTest, read, run, write


REPOS = os.path.join(TOP, 'dist', 'Repos')


class ListTest(unittest.TestCase):
    def test_each_row_has_its_test_here(self):
        rows = re.findall(r'^([a-z]+/[^=]+)=', read(os.path.join(REPOS, 'items.def')), re.MULTILINE)
        self.assertGreater(len(rows), 0)
        here = read(__file__)
        self.assertEqual([row for row in rows if f"'{row}'" not in here], [])


class DemosTest(ZendryTest):
    def build(self, source, mode='release'):
        """Builds a copy of a template or demo as the project "mine"; answers its output folder."""
        folder = os.path.join(self.folder, 'mine')
        shutil.copytree(os.path.join(REPOS, source), folder)
        project = os.path.join(folder, 'mine.zpj')
        own = [name for name in ('_.zpj', os.path.basename(source) + '.zpj') if os.path.exists(os.path.join(folder, name))]
        os.rename(os.path.join(folder, own[0]), project)
        made = run(ZENDRY_MAKE, '--mode', mode, project)
        self.assertEqual(made.returncode, 0, made.stdout + made.stderr)
        self.assertIn('errors: 0  warnings: 0', made.stdout)
        return os.path.join(folder, 'out-rel' if mode == 'release' else 'out-dbg')

    def start_demo(self, source, title, *arguments):
        """Builds a copy, starts it and waits for its window."""
        demo = self.desktop.start([os.path.join(self.build(source, 'debug'), 'mine.exe'), *arguments])
        self.wait_for_title(title)
        return demo

    def wait_for_title(self, title):
        wait_until(lambda: self.desktop.ask('xdotool', 'getactivewindow', 'getwindowname').strip() == title,
                   f'the window "{title}"', 20)

    def test_calculator_builds_without_a_warning_and_runs(self):
        demo = self.start_demo('demos/calculator', 'Calculator')
        demo.type('12')
        self.picture('demo-calculator')
        demo.key('alt+F4')
        self.assertEqual(demo.process.wait(20), 0)

    def test_gallery_builds_without_a_warning_and_runs(self):
        demo = self.start_demo('demos/gallery', 'Gallery')
        demo.key('ctrl+n')
        self.picture('demo-gallery')
        demo.key('ctrl+q')
        self.assertEqual(demo.process.wait(20), 0)

    def test_editor_builds_without_a_warning_and_saves(self):
        path = write(os.path.join(self.folder, 'text.txt'), 'first\nsecond\n')
        demo = self.start_demo('demos/editor', f'{path} - Editor', path)
        demo.type('new ')
        self.picture('demo-editor')
        demo.key('ctrl+s')
        wait_until(lambda: read(path) == 'new first\nsecond\n', 'the file is saved')
        demo.key('ctrl+q')
        self.assertEqual(demo.process.wait(20), 0)

    def test_plotter_builds_without_a_warning_and_runs(self):
        demo = self.start_demo('demos/plotter', 'Plotter', 'x^2')
        demo.key('Return')
        self.picture('demo-plotter')
        demo.key('alt+F4')
        self.assertEqual(demo.process.wait(20), 0)

    def test_form_with_menu_and_tool_bar(self):
        demo = self.start_demo('templates/form-menu', 'Lines')
        demo.key('ctrl+n')
        self.picture('template-form-menu')
        demo.key('ctrl+q')
        self.assertEqual(demo.process.wait(20), 0)

    def test_forms_with_data_links(self):
        demo = self.start_demo('templates/form-links', 'People')
        demo.key('alt+e')
        self.wait_for_title('Person')
        self.picture('template-form-links')
        demo.key('Escape')
        self.wait_for_title('People')
        demo.key('alt+F4')
        self.assertEqual(demo.process.wait(20), 0)

    def test_console_program_with_a_library(self):
        program = os.path.join(self.build('templates/console-lib'), 'mine.exe')
        self.assertEqual(run(program, 'Ada').stdout, 'Hello, Ada!\n')
        library = run(ZENDRY_MAKE, os.path.join(self.folder, 'mine', 'greeting', 'libgreeting.zpj'))
        self.assertEqual(library.returncode, 0, library.stdout + library.stderr)

    def test_static_library_can_be_linked(self):
        library = os.path.join(self.build('templates/static-lib'), 'mine.a')
        source = write(os.path.join(self.folder, 'use.cpp'),
                       '#include "mine/interval.h"\nint main() { return !Common({1, 3}, {2, 5}) || Common({0, 1}, {2, 3}); }\n')
        program = os.path.join(self.folder, 'use')
        self.assertEqual(run('g++', '-std=c++17', source, library, '-o', program).stderr, '')
        self.assertEqual(run(program).returncode, 0)

    def test_c_program(self):
        program = os.path.join(self.build('templates/c-program'), 'mine.exe')
        result = subprocess.run([program], input='1 2 6\n', capture_output=True, text=True, timeout=20)
        self.assertEqual(result.stdout, '3 numbers, sum 9, mean 3\n')

    @unittest.skipUnless(os.path.exists('/usr/include/gtest/gtest.h'), 'GoogleTest is not installed')
    def test_unit_tests(self):
        result = run(os.path.join(self.build('templates/unit-tests', 'debug'), 'mine.exe'))
        self.assertEqual(result.returncode, 0)
        self.assertIn('[  PASSED  ] 3 tests', result.stdout)

    def test_console_demo_builds_at_once(self):
        self.assertIn('words', run(os.path.join(self.build('demos/console'), 'mine.exe')).stdout)

    def test_debugger_exercise_has_its_bug_and_no_other(self):
        folder = self.build('demos/bughunt', 'debug')
        result = run(os.path.join(folder, 'mine.exe'))
        self.assertEqual(result.returncode, 1)
        self.assertEqual(result.stdout.count('expected'), 1)
        self.assertIn('lowest: 0, expected 23', result.stdout)
        shelf = os.path.join(os.path.dirname(folder), 'shelf.cpp')
        write(shelf, read(shelf).replace('int lowest = 0;', 'int lowest = 1000;'))
        self.assertEqual(run(ZENDRY_MAKE, '--mode', 'debug', os.path.join(os.path.dirname(folder), 'mine.zpj')).returncode, 0)
        self.assertIn('All is well', run(os.path.join(folder, 'mine.exe')).stdout)


if __name__ == '__main__':
    unittest.main(verbosity=2)
