#!/usr/bin/env python3
"""The framework alone, as docs/mavro.md tells: installed, found by pkg-config and CMake, a form built and shown.

The page's blocks that have a name are what is done here: files are written, commands run as they stand."""
import os
import re
import shlex
import unittest

from desktop import wait_until
from fixture import STAGE, TOP, ZendryTest, read, run, write

BUILD = os.environ.get('ZENDRY_BUILD')
BLOCK = re.compile(r'^```\w+ (\S+)\n(.*?)^```$', re.MULTILINE | re.DOTALL)


@unittest.skipUnless(BUILD, 'no build folder is named')
class Package(ZendryTest):
    def setUp(self):
        super().setUp()
        self.blocks = dict(BLOCK.findall(read(os.path.join(TOP, 'docs', 'mavro.md'))))
        self.work = os.path.join(self.folder, 'work')
        for name, text in self.blocks.items():
            if '.' in name:
                write(os.path.join(self.work, name), text)

    def install(self, prefix):
        result = run('cmake', '--install', BUILD, '--prefix', prefix)
        self.assertEqual(result.returncode, 0, result.stderr)

    def shell(self, commands):
        result = run('sh', '-ec', commands, cwd=self.work, env=self.desktop.environment)
        self.assertEqual(result.returncode, 0, result.stdout + result.stderr)
        return result.stdout

    def do(self, block, program='hello'):
        """Runs a block but for its last line, which starts the program; answers the program's path."""
        *commands, started = self.blocks[block].replace('hello', program).splitlines()
        self.shell('\n'.join(commands))
        return os.path.join(self.work, started)

    def start(self, name):
        """Builds a program of the page and starts it."""
        self.install(os.path.join(self.desktop.home, 'mavro'))
        return self.desktop.start([self.do('pkg-config', name)])

    def greets(self, program):
        """The form works: what is typed stands in its title after the button is pressed."""
        form = self.desktop.start([program])
        self.wait_for_title('Hello')
        form.type('you')
        form.key('Tab', 'space')
        self.wait_for_title('Hello, you')
        self.picture('hello-' + self._testMethodName)
        form.key('alt+F4')
        self.assertEqual(form.process.wait(20), 0)

    def title(self):
        return self.desktop.ask('xdotool', 'getactivewindow', 'getwindowname').strip()

    def wait_for_title(self, title):
        wait_until(lambda: self.title() == title, f'the title "{title}"', 20)

    def test_page_installs_where_it_then_looks(self):
        self.assertIn('--prefix "$HOME/mavro"', self.blocks['install'])

    def test_form_built_by_pkg_config(self):
        self.install(os.path.join(self.desktop.home, 'mavro'))
        self.greets(self.do('pkg-config'))

    def test_form_built_by_cmake(self):
        self.install(os.path.join(self.desktop.home, 'mavro'))
        self.greets(self.do('cmake'))

    def test_commands_by_hotkey_menu_and_button(self):
        form = self.start('menu')
        self.wait_for_title('Counter 0')
        form.key('ctrl+u')
        self.wait_for_title('Counter 1')
        form.key('space')
        self.wait_for_title('Counter 2')
        form.key('F5')
        self.wait_for_title('Counter 1')
        form.key('alt+c', 'd')
        self.wait_for_title('Counter 0')
        self.picture('page-menu')
        form.key('ctrl+q')
        self.assertEqual(form.process.wait(20), 0)

    def test_dialog_takes_values_by_ok_only(self):
        form = self.start('dialog')
        self.wait_for_title('Nobody')
        form.key('alt+p')
        self.wait_for_title('Person')
        form.type('Ann')
        form.key('Escape')
        self.wait_for_title('Nobody')
        form.key('alt+p')
        self.wait_for_title('Person')
        form.key('Return')
        self.wait_for_title('Person: a name, please')
        form.type('Bob')
        form.key('Return')
        self.wait_for_title('Person: an age, please')
        form.type('4x2')
        self.picture('page-dialog')
        form.key('Return')
        self.wait_for_title('Bob, 42')
        form.key('alt+F4')
        self.assertEqual(form.process.wait(20), 0)

    def test_panes_and_timer(self):
        form = self.start('notes')
        self.wait_for_title('Notes')
        form.key('Down')
        wait_until(lambda: self.title().startswith('Notes: '), 'a topic', 20)
        topic = self.title()
        form.key('Tab')
        form.type('plant')
        self.wait_for_title(topic + '*')
        self.wait_for_title(topic)
        self.picture('page-notes')
        form.key('alt+F4')
        self.assertEqual(form.process.wait(20), 0)

    def test_every_program_of_the_page_is_run(self):
        self.assertEqual(sorted(name for name in self.blocks if name.endswith('.cpp')),
                         ['dialog.cpp', 'hello.cpp', 'menu.cpp', 'notes.cpp'])

    def test_prefix_with_a_blank_is_found_by_cmake(self):
        prefix = os.path.join(self.folder, 'a place with blanks')
        self.install(prefix)
        self.shell(f'cmake -B build -G Ninja -DCMAKE_PREFIX_PATH={shlex.quote(prefix)}\ncmake --build build\n')
        self.greets(os.path.join(self.work, 'build', 'hello'))

    def test_program_needs_no_development_files_of_the_toolkit_and_no_editor(self):
        self.install(os.path.join(self.desktop.home, 'mavro'))
        flags = self.shell('PKG_CONFIG_PATH="$HOME/mavro/lib/pkgconfig" pkg-config --cflags --libs mavro')
        opened = self.shell(f'g++ -std=c++20 -MD -MF deps hello.cpp -o hello {flags.strip()} -Wl,--trace\n')
        self.assertNotIn('qt6', read(os.path.join(self.work, 'deps')).lower())
        toolkit = [line for line in opened.splitlines() if 'libQt6' in line]
        self.assertTrue(toolkit)
        self.assertEqual([line for line in toolkit if line.strip().endswith('.so')], [])
        needed = self.shell('ldd hello')
        self.assertNotIn('qscintilla', needed)
        self.assertNotIn('not found', needed)

    def test_all_ways_link_the_same_libraries(self):
        self.install(os.path.join(self.desktop.home, 'mavro'))
        lib = os.path.join(self.desktop.home, 'mavro', 'lib')
        places = [os.path.join(lib, 'pkgconfig', 'mavro.pc'), os.path.join(lib, 'cmake', 'mavro', 'mavro-config.cmake'),
                  os.path.join(STAGE, 'bin', 'Zendry.cfg')]
        named = [re.findall(r'-l:[\w.]+', read(place)) for place in places]
        self.assertTrue(named[0])
        self.assertEqual(named[1], named[0])
        self.assertEqual(named[2], named[0])

    def test_reference_lies_beside_the_library(self):
        self.assertIn('### Button\n', read(os.path.join(STAGE, 'libs', 'mavro', 'mavro-reference.md')))


if __name__ == '__main__':
    unittest.main(verbosity=2)
