#!/usr/bin/env python3
"""The first quarter of an hour: the demo is opened, changed with the editor's help, saved, built and mended, all by
keys. build/shots/editing-*.png are what a person sees meanwhile."""
import os
import unittest

from desktop import wait_until
from fixture import ZendryTest, read, write


class Editing(ZendryTest):
    def setUp(self):
        super().setUp()
        self.project = self.demo()
        self.main = os.path.join(os.path.dirname(self.project), 'main.cpp')
        self.program = os.path.join(os.path.dirname(self.project), 'out-rel', 'console.exe')
        write(self.project.replace('.zpj', '.zend'), '<state>\n\t<mode opt="rel"/>\n\t<open>\n'
              '\t\t<file name="report.cpp" id="1"/>\n\t\t<file name="main.cpp" id="10"/>\n\t</open>\n</state>\n')
        self.window = self.start(self.project)
        self.desktop.ask('xdotool', 'windowsize', '--sync', self.window.main, '1100', '860')
        self.window.wait_quiet()

    def type_line(self, text):
        self.window.type(text)
        self.window.key('Return')

    def look(self, name):
        """Keeps a picture of the whole screen: lists and tips are windows of their own."""
        self.window.wait_quiet()
        self.picture('editing-' + name)

    def go_to(self, line):
        self.window.key('ctrl+g')
        self.window.wait_for_message()
        self.window.type(str(line))
        self.window.key('Return')
        wait_until(lambda: len(self.window.titles()) == 1, 'the dialog has gone')

    def save(self):
        before = os.stat(self.main).st_ino
        self.window.key('ctrl+s')
        wait_until(lambda: os.stat(self.main).st_ino != before, 'the file is written')
        self.window.wait_quiet()
        return read(self.main).splitlines()

    def test_a_first_change_from_the_empty_line_to_the_program(self):
        self.look('opened')
        self.go_to(11)
        self.type_line('std::string text;')
        self.window.type('text.')
        self.look('list')
        self.window.type('app')
        self.window.key('Return')
        self.window.type('("a", ')
        self.look('tip')
        self.type_line('1);')
        lines = self.save()
        self.assertEqual(lines[10:12], ['std::string text;', 'text.append("a", 1);'])
        self.window.key('F7')
        wait_until(lambda: os.path.exists(self.program), 'the program')
        self.window.wait_quiet()
        self.assertEqual(self.window.close(), 0)

    def test_a_macro_and_a_bookmark_do_again_what_was_done(self):
        self.go_to(11)
        self.window.key('ctrl+shift+m')
        self.type_line('// note')
        self.window.key('ctrl+shift+m', 'ctrl+m', 'ctrl+m', 'ctrl+F2', 'ctrl+Home', 'F2')
        self.window.type('// marked ')
        self.look('bookmark')
        lines = self.save()
        self.assertEqual(lines[10:13], ['// note'] * 3)
        self.assertIn('// marked ', lines[13])
        self.assertEqual(self.window.close(), 0)

    def test_the_first_error_is_where_the_caret_stands(self):
        self.go_to(11)
        self.type_line('optoins.files;')
        self.save()
        self.window.key('ctrl+Home', 'F7')
        self.window.wait_for_message()
        self.window.key('Return')
        wait_until(lambda: len(self.window.titles()) == 1, 'the message has gone')
        self.look('error')
        self.window.type('// ')
        self.assertEqual(self.save()[10], '// optoins.files;')
        self.window.key('F7')
        wait_until(lambda: os.path.exists(self.program), 'the program')
        self.window.wait_quiet()
        self.assertEqual(self.window.close(), 0)


if __name__ == '__main__':
    unittest.main(verbosity=2)
