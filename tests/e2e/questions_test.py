#!/usr/bin/env python3
"""Questions about unsaved text under a window manager, answered by keys: one at a time, and none loses a text."""
import os
import signal
import unittest

from desktop import wait_until
from fixture import ZendryTest, read, session, write, write_project

ELSEWHERE = 'from elsewhere\n'


class Questions(ZendryTest):
    def open(self, *arguments):
        self.window = self.start(*arguments)
        self.window.wait_quiet()

    def source(self, name, text='old\n'):
        return write(os.path.join(self.folder, 'work', name), text)

    def change_elsewhere(self, path):
        """As another program does it, so that the new text has another file's number."""
        os.replace(write(path + '.other', ELSEWHERE), path)

    def boxes(self):
        return {window: title for window, title in self.window.titles().items() if window != self.window.main}

    def press(self, *keys):
        self.desktop.ask('xdotool', 'key', *keys)

    def asked(self, *keys):
        """Presses keys that bring one question; answers its window."""
        self.press(*keys)
        box = self.window.wait_for_window(besides=[self.window.main])
        self.assertEqual(list(self.boxes().values()), ['Confirmation'])
        return box

    def answer(self, box, *keys):
        self.press(*keys)
        wait_until(lambda: box not in self.window.titles(), 'the question is closed')

    def nothing_asks(self):
        wait_until(lambda: self.desktop.ask('xdotool', 'getactivewindow').strip() == self.window.main,
                   'the main window is active')
        self.window.wait_quiet()
        self.assertEqual(self.boxes(), {})

    def copies(self):
        folder = os.path.join(self.desktop.home, '.zendry', 'rescue')
        return [name for name in os.listdir(folder) if name.startswith('text-')] if os.path.isdir(folder) else []

    def ended(self):
        self.assertEqual(self.window.process.wait(20), 0)

    def test_file_changed_elsewhere(self):
        path = self.source('a.cpp')
        self.open(path)
        self.window.type('mine ')
        self.change_elsewhere(path)
        with self.subTest('the save command asks once, and its default answer replaces nothing'):
            self.answer(self.asked('ctrl+s'), 'Return')
            self.nothing_asks()
            self.assertEqual(read(path), ELSEWHERE)
        with self.subTest('from the menu too; no key that closes a box is an answer'):
            box = self.asked('alt+f', 's')
            self.press('Escape', 'alt+F4')
            self.window.wait_quiet()
            self.assertEqual(list(self.boxes()), [box])
            self.answer(box, 'alt+n')
            self.nothing_asks()
            self.assertEqual(read(path), ELSEWHERE)
        with self.subTest('the default of closing is to save, which asks in its turn'):
            box = self.asked('alt+F4')
            self.press('Return')
            second = self.window.wait_for_window(besides=[self.window.main, box])
            self.assertEqual(list(self.boxes()), [second])
            self.answer(second, 'Return')
            self.nothing_asks()
            self.assertEqual(read(path), ELSEWHERE)
        self.answer(self.asked('ctrl+s'), 'alt+y')
        wait_until(lambda: read(path) == 'mine old\n', 'the text is saved')
        self.nothing_asks()
        self.assertEqual(self.window.close(), 0)

    def test_window_that_comes_back_asks_for_one_file_after_the_other(self):
        paths = [self.source('a.cpp'), self.source('b.cpp')]
        self.open(*paths)
        self.window.type('mine ')
        for path in paths:
            self.change_elsewhere(path)
        self.desktop.minimise(self.window.main)
        self.window.wait_quiet()  # the toolkit waits a moment before it believes that no window is active
        self.desktop.ask('xdotool', 'windowactivate', self.window.main)
        first = self.window.wait_for_window(besides=[self.window.main])
        self.assertEqual(list(self.boxes()), [first])
        self.press('alt+n')
        second = self.window.wait_for_window(besides=[self.window.main, first])
        self.assertEqual(list(self.boxes()), [second])
        self.answer(second, 'Return')  # b.cpp has unsaved text: no
        self.nothing_asks()
        with self.subTest('the text is still there'):
            self.answer(self.asked('ctrl+s'), 'alt+y')
            wait_until(lambda: read(paths[1]) == 'mine old\n', 'the text is saved')
        self.assertEqual(self.window.close(), 0)

    def test_escape_on_the_save_question_keeps_the_text(self):
        path = self.source('a.cpp')
        self.open(path)
        self.window.type('mine ')
        for keys in (['ctrl+F4'], ['alt+F4'], ['alt+f', 'c'], ['alt+f', 'x']):
            for cancel in ('Escape', 'alt+F4'):
                with self.subTest(keys=keys, cancel=cancel):
                    self.answer(self.asked(*keys), cancel)
                    self.nothing_asks()
                    self.assertIn('a.cpp', self.window.title())
        wait_until(self.copies, 'the copy for a bad end')
        self.assertEqual(read(path), 'old\n')
        self.asked('alt+F4')
        self.press('Return')
        self.ended()
        self.assertEqual(read(path), 'mine old\n')
        self.assertEqual(self.copies(), [])

    def choose(self, *keys_and_path):
        """Presses keys that open a file dialog and gives it a path."""
        *keys, path = keys_and_path
        self.press(*keys)
        box = self.window.wait_for_window(besides=[self.window.main])
        self.window.type(path)
        self.answer(box, 'Return')
        self.nothing_asks()

    def project_with_two_texts(self):
        self.project = write_project(os.path.join(self.folder, 'work', 'p.zpj'), ['a.cpp', 'b.cpp'])
        self.paths = [self.source('a.cpp'), self.source('b.cpp')]
        self.open(self.project, self.paths[0])
        self.window.type('mine ')
        self.choose('ctrl+o', self.paths[1])
        self.window.type('mine ')

    def test_cancel_at_the_last_question_keeps_every_text_and_the_project(self):
        self.project_with_two_texts()
        self.choose('alt+p', 'a', self.source('c.cpp'))  # the project is modified too
        before = read(self.project)
        for cancelled in range(3):
            box, seen = self.asked('alt+F4'), [self.window.main]
            for _ in range(cancelled):
                seen.append(box)
                self.press('alt+n')
                box = self.window.wait_for_window(besides=seen)
                self.assertEqual(list(self.boxes()), [box])
            self.answer(box, 'Escape')
            self.nothing_asks()
        self.press('alt+F4')
        seen = [self.window.main]
        for _ in range(3):
            seen.append(self.window.wait_for_window(besides=seen))
            self.press('Return')
        self.ended()
        self.assertEqual([read(path) for path in self.paths], ['mine old\n'] * 2)
        self.assertNotIn('c.cpp', before)
        self.assertIn('c.cpp', read(self.project))
        self.assertEqual(len(session(self.project.replace('.zpj', '.zend'))['files']), 2)

    def test_a_signal_while_a_question_is_open_keeps_everything(self):
        self.project_with_two_texts()
        self.asked('alt+F4')
        self.window.process.send_signal(signal.SIGTERM)
        self.assertEqual(self.window.process.wait(20), -signal.SIGTERM)
        self.assertEqual(len(self.copies()), 2)
        self.assertEqual([read(path) for path in self.paths], ['old\n'] * 2)
        self.assertEqual(len(session(self.project.replace('.zpj', '.zend'))['files']), 2)


if __name__ == '__main__':
    unittest.main(verbosity=2)
