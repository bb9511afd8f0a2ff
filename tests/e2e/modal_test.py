#!/usr/bin/env python3
"""Modal dialogs of a user's program under a window manager: where they are, and who has the keyboard."""
import os
import tempfile
import unittest

from form_test import FormTest


class Modal(FormTest):
    @classmethod
    def setUpClass(cls):
        """The program is built once."""
        cls.built = cls.enterClassContext(tempfile.TemporaryDirectory())

    def setUp(self):
        super().setUp()
        built = os.path.join(self.built, 'forms')
        self.program = os.path.join(built, 'out-rel', 'forms.exe')
        if not os.path.exists(self.program):
            self.make(self.project(folder=built))

    def raised(self):
        """Ids of the windows on the screen, the lowest first."""
        listed = self.desktop.ask('xprop', '-root', '-notype', '_NET_CLIENT_LIST_STACKING').partition('#')[2]
        return [str(int(window, 16)) for window in listed.replace(',', ' ').split()]

    def window(self, title):
        return self.windows(title)[0]

    def open(self, key, title):
        self.key(key)
        self.shown(title)

    def click(self, title, x, y):
        self.desktop.ask('xdotool', 'mousemove', '--window', self.window(title), str(x), str(y), 'click', '1')

    def is_above(self, upper, lower):
        raised = self.raised()
        return raised.index(self.window(upper)) > raised.index(self.window(lower))

    def edit_of_the_dialog_gets_the_keys(self, text):
        self.desktop.ask('xdotool', 'key', 'a')
        self.logged('edit holds ' + text)

    def test_owner_that_is_clicked_or_raised_stays_below_and_gets_no_key(self):
        self.start_forms()
        self.open('F2', 'Modal')
        owner = self.window('Forms')
        self.assertIn(hex(int(owner)), self.desktop.ask('xprop', '-id', self.window('Modal'), 'WM_TRANSIENT_FOR'))
        for count, act in enumerate((lambda: self.click('Forms', 40, 130), lambda: self.click('Forms', 40, 75),
                                     lambda: self.desktop.ask('xdotool', 'windowactivate', owner),
                                     lambda: self.desktop.ask('xdotool', 'windowraise', owner)), 1):
            act()
            self.shown('Modal')
            self.edit_of_the_dialog_gets_the_keys('a' * count)
            self.assertTrue(self.is_above('Modal', 'Forms'))
        self.assertNotIn('name holds a', self.lines())

    def test_keyboard_comes_back_to_the_control_that_had_it(self):
        self.start_forms()
        self.click('Forms', 40, 130)
        self.desktop.ask('xdotool', 'key', 'x')
        self.logged('name holds x')
        for key, way in (('F2', 'Return'), ('F2', 'Escape'), ('F2', 'alt+F4'), ('F4', 'alt+F4')):
            with self.subTest(key=key, way=way):
                before = [line for line in self.lines() if line.startswith('name holds')][-1]
                self.open(key, 'Modal' if key == 'F2' else 'Plain')
                self.key(way)
                self.shown('Forms')
                self.desktop.ask('xdotool', 'key', 'x')
                self.logged(before + 'x')

    def test_nested_dialogs_stand_above_each_other(self):
        self.start_forms()
        self.open('F2', 'Modal')
        self.open('F2', 'Inner')
        self.desktop.ask('xdotool', 'windowmove', '--sync', self.window('Inner'), '700', '500')
        for clicked in ('Forms', 'Modal'):
            self.click(clicked, 12, 12)
            self.shown('Inner')
            self.assertTrue(self.is_above('Inner', 'Modal') and self.is_above('Modal', 'Forms'))
        self.edit_of_the_dialog_gets_the_keys('a')
        self.key('Escape')
        self.shown('Modal')
        self.edit_of_the_dialog_gets_the_keys('a')
        self.logged('edit holds a', 2)
        self.key('Escape')
        self.shown('Forms')

    def test_minimised_and_restored_the_dialog_has_the_keyboard_again(self):
        self.start_forms()
        self.open('F2', 'Modal')
        owner = self.window('Forms')
        self.desktop.minimise(owner)
        self.desktop.ask('xdotool', 'windowactivate', owner)
        self.shown('Modal')
        self.edit_of_the_dialog_gets_the_keys('a')
        self.assertTrue(self.is_above('Modal', 'Forms'))

    def start_with_a_dialog(self):
        self.log = os.path.join(self.folder, 'log')
        self.forms = self.desktop.start([self.program, self.log, 'first'])
        self.shown('First')

    def test_first_form_ends_by_enter_and_by_escape(self):
        for key, result in (('Return', 1), ('Escape', 2), ('alt+F4', -1)):
            with self.subTest(key):
                self.start_with_a_dialog()
                self.key(key)
                self.logged(f'first gave {result}')
                self.shown('Forms')
                self.key('alt+F4')
                self.ended()


if __name__ == '__main__':
    unittest.main(verbosity=2)
