#!/usr/bin/env python3
"""The primary selection: what is selected here is pasted by the middle button, here and in other programs."""
import os
import unittest

from desktop import wait_until
from fixture import ZENDRY, ZendryTest, read, write

# Between two lines of text in the window.
LINE_HEIGHT = 16


class PrimarySelection(ZendryTest):
    def open(self, name, text):
        path = write(os.path.join(self.folder, 'work', name), text)
        window = self.start(path)
        window.path = path
        window.wait_quiet()
        return window

    def click_middle(self, window, line):
        """Clicks with the middle button at the right of a line, counted from 0."""
        self.desktop.ask('xdotool', 'mousemove', '--window', window.main, '600', str(88 + LINE_HEIGHT * line),
                         'click', '2')

    def expect_saved(self, window, text):
        window.key('ctrl+s')
        wait_until(lambda: read(window.path) != window.before, 'the file is saved')
        self.assertEqual(read(window.path), text)

    def test_selected_by_keys_and_pasted_by_the_middle_button(self):
        window = self.open('a.cpp', 'one\n\nthree\n')
        window.before = read(window.path)
        window.key('shift+End')
        self.click_middle(window, 1)
        self.expect_saved(window, 'one\none\nthree\n')
        self.assertEqual(window.close(), 0)

    def test_selected_by_the_mouse(self):
        window = self.open('a.cpp', 'one\n\nthree\n')
        window.before = read(window.path)
        self.desktop.ask('xdotool', 'mousemove', '--window', window.main, '275', '88', 'click', '--repeat', '2', '1')
        self.click_middle(window, 1)
        self.expect_saved(window, 'one\none\nthree\n')
        self.assertEqual(window.close(), 0)

    def test_selection_of_another_program_whose_window_is_hidden(self):
        other = self.open('other.cpp', 'theirs \xe4\n')
        other.key('shift+End')
        self.desktop.ask('xdotool', 'windowminimize', '--sync', other.main)
        window = self.open_second('a.cpp', '// one\n\n', other)
        window.before = read(window.path)
        self.click_middle(window, 1)
        self.expect_saved(window, '// one\ntheirs \xe4\n')
        self.assertEqual(window.close(), 0)
        other.process.terminate()

    def open_second(self, name, text, other):
        path = write(os.path.join(self.folder, 'work', name), text)
        window = self.desktop.start([ZENDRY, path])
        window.main = window.wait_for_window(besides=[other.main])
        window.path = path
        window.wait_quiet()
        return window


if __name__ == '__main__':
    unittest.main(verbosity=2)
