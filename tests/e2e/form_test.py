#!/usr/bin/env python3
"""A program of the user's own with forms, built by Zendry with its default options, under a window manager."""
import os
import shutil
import struct
import unittest
import zlib

from desktop import wait_until
from fixture import TOP, ZENDRY_MAKE, ZendryTest, read, run, write, write_project

FORM_APPLICATION = 1
PNG_MARK = b'\x89PNG\r\n\x1a\n'
SCALES = 4  # in which the stock icons are drawn
EMPTY_FORM = '''#include <mavro>

int Application::Main(const ArgumentList&) {
  Form form;
  form.Show();
  return 0;
}
'''


def png(side, rgba):
    """A picture of one colour."""
    def chunk(kind, data):
        body = kind + data
        return struct.pack('>I', len(data)) + body + struct.pack('>I', zlib.crc32(body))
    rows = (b'\0' + bytes(rgba) * side) * side
    return (PNG_MARK + chunk(b'IHDR', struct.pack('>IIBBBBB', side, side, 8, 6, 0, 0, 0)) +
            chunk(b'IDAT', zlib.compress(rows)) + chunk(b'IEND', b''))


def icon_file(side):
    picture = png(side, (255, 0, 0, 255))
    return struct.pack('<HHHBBBBHHII', 0, 1, 1, side, side, 0, 0, 1, 32, len(picture), 22) + picture


class FormTest(ZendryTest):
    def project(self, resource='forms.rc', folder=''):
        """A copy of the program with its project file; answers that."""
        folder = folder or os.path.join(self.folder, 'forms')
        shutil.copytree(os.path.join(TOP, 'tests', 'e2e', 'forms'), folder)
        with open(os.path.join(folder, 'forms.ico'), 'wb') as file:
            file.write(icon_file(32))
        self.program = os.path.join(folder, 'out-rel', 'forms.exe')
        return write_project(os.path.join(folder, 'forms.zpj'), ['main.cpp', 'Dialog.cpp'], ['Dialog.h'],
                             switches='-O2 -s', kind=FORM_APPLICATION, resource=resource)

    def make(self, project):
        made = run(ZENDRY_MAKE, project)
        self.assertEqual(made.returncode, 0, made.stdout + made.stderr)
        return made.stdout

    def start_forms(self):
        self.log = os.path.join(self.folder, 'log')
        write(self.log, '')
        self.forms = self.desktop.start([self.program, self.log])
        self.shown('Forms')

    def lines(self):
        return read(self.log).splitlines()

    def logged(self, line, count=1):
        wait_until(lambda: self.lines().count(line) >= count, f'"{line}" in the log: {self.lines()}', 20)

    def windows(self, title):
        """Ids of the visible windows of that title."""
        return self.desktop.ask('xdotool', 'search', '--onlyvisible', '--name', f'^{title}$').split()

    def shown(self, title):
        """Waits until the window of that title is the active one."""
        wait_until(lambda: self.desktop.ask('xdotool', 'getactivewindow').strip() in self.windows(title),
                   f'the window "{title}"', 20)

    def gone(self, title):
        wait_until(lambda: not self.windows(title), f'the window "{title}" is gone', 20)

    def key(self, *names):
        self.forms.key(*names)

    def ended(self):
        self.assertEqual(self.forms.process.wait(20), 0)


class FormProgram(FormTest):
    def test_project_of_forms_builds_with_its_own_resources_and_shows_them(self):
        output = self.make(self.project())
        self.assertIn('Compiling resource', output)
        self.start_forms()
        self.picture('form-program')
        icon = self.desktop.ask('xprop', '-id', self.windows('Forms')[0], '-notype', '_NET_WM_ICON')
        self.assertIn('32 x 32', icon)
        self.key('alt+F4')
        self.ended()
        self.assertEqual(self.lines(), ['shown, first handler', 'shown, second handler', 'main returned'])

    def test_project_without_resources_gets_those_of_the_framework(self):
        output = self.make(self.project(resource=''))
        self.assertIn('mavro.rc', output)
        self.assertTrue(os.path.exists(os.path.join(os.path.dirname(self.program), 'mavro.res')))
        self.start_forms()
        self.key('alt+F4')
        self.ended()

    def test_make_in_the_window_builds_it(self):
        window = self.start(self.project())
        window.key('F7')
        wait_until(lambda: os.path.exists(self.program), 'the program')
        window.wait_quiet()
        self.assertEqual(len(window.titles()), 1, 'no message came')
        self.assertEqual(window.close(), 0)
        self.start_forms()
        self.key('alt+F4')
        self.ended()

    def pictures_in(self, name, script='', **options):
        """How many pictures an empty form holds that is built with a resource script and options of a project."""
        folder = os.path.join(self.folder, name)
        write(os.path.join(folder, 'main.cpp'), EMPTY_FORM)
        if script:
            write(os.path.join(folder, 'own.rc'), script)
            with open(os.path.join(folder, 'own.png'), 'wb') as file:
                file.write(png(24, (0, 0, 0, 255)))
        self.make(write_project(os.path.join(folder, 'p.zpj'), ['main.cpp'], resource='own.rc' if script else '', **options))
        with open(os.path.join(folder, 'out-rel', 'p.exe'), 'rb') as file:
            return file.read().count(PNG_MARK)

    def test_stock_icons_are_in_every_program_once(self):
        self.assertEqual(self.pictures_in('form', kind=FORM_APPLICATION), SCALES)
        self.assertEqual(self.pictures_in('library', library_set='mavro'), SCALES)
        self.assertEqual(self.pictures_in('including', '#include "mavro.rc"\n', kind=FORM_APPLICATION), SCALES)

    def test_stock_icons_give_way_to_the_programs_own(self):
        self.assertEqual(self.pictures_in('own', '1 PNG "own.png"\n', kind=FORM_APPLICATION), 1)

    def test_error_in_a_resource_script_shows_its_line(self):
        project = self.project()
        write(os.path.join(os.path.dirname(project), 'forms.rc'), '\n1 ICON "none.ico"\n')
        made = run(ZENDRY_MAKE, project)
        self.assertEqual(made.returncode, 1)
        self.assertIn('forms.rc:2: can\'t read none.ico', made.stdout)


class FormsUnderAWindowManager(FormTest):
    def setUp(self):
        super().setUp()
        self.make(self.project())
        self.start_forms()

    def open(self, key, title):
        self.key(key)
        self.shown(title)

    def test_two_handlers_of_one_event_run_in_the_order_they_were_added(self):
        self.logged('shown, second handler')
        self.assertEqual(self.lines(), ['shown, first handler', 'shown, second handler'])

    def test_refused_close_keeps_the_form_its_windows_and_their_state(self):
        self.desktop.ask('xdotool', 'key', 'Tab')
        self.forms.type('kept')
        self.key('F5')
        self.logged('refuses')
        self.key('alt+F4')
        wait_until(lambda: any(line.startswith('refused with') for line in self.lines()), 'the refusal', 20)
        self.assertIn('refused with kept in state 5', self.lines())
        self.shown('Forms')
        self.key('F5')
        self.logged('allows')
        self.key('alt+F4')
        self.ended()

    def test_enter_in_a_memo_makes_a_line_and_presses_no_button(self):
        self.open('F2', 'Modal')
        self.key('Tab', 'Return')
        self.logged('memo has lines 2')
        self.assertNotIn('ok pressed', self.lines())
        self.shown('Modal')
        self.key('Escape')
        self.gone('Modal')

    def test_enter_in_an_edit_presses_the_default_button(self):
        self.open('F2', 'Modal')
        self.key('Return')
        self.logged('modal gave 1')
        self.assertIn('ok pressed', self.lines())
        self.gone('Modal')
        self.shown('Forms')

    def test_escape_closes_by_the_cancel_button(self):
        self.open('F2', 'Modal')
        self.key('Escape')
        self.logged('modal gave 2')
        self.gone('Modal')

    def test_escape_without_a_cancel_button_sets_the_result_and_closes_nothing(self):
        self.open('F4', 'Plain')
        self.key('Escape', 'F9')
        self.logged('result 2')
        self.shown('Plain')
        self.key('alt+F4')
        self.logged('modal gave 2')

    def test_second_form_shows_at_once_and_its_end_is_not_the_programs(self):
        self.open('F3', 'Second')
        self.logged('second shown, forms 2')
        self.key('alt+F4')
        self.gone('Second')
        self.logged('Second destroyed')
        self.shown('Forms')
        self.assertTrue(self.forms.alive())
        self.key('alt+F4')
        self.ended()

    def test_program_lives_until_its_last_form_has_gone(self):
        self.open('F3', 'Second')
        self.desktop.ask('xdotool', 'windowactivate', '--sync', self.windows('Forms')[0])
        self.key('alt+F4')
        self.gone('Forms')
        self.shown('Second')
        self.assertTrue(self.forms.alive())
        self.key('alt+F4')
        self.ended()
        self.assertEqual(self.lines()[-2:], ['Second destroyed', 'main returned'])

    def test_key_that_the_preview_clears_is_no_dialog_key_and_reaches_the_control(self):
        self.open('F2', 'Modal')
        self.key('F8', 'Tab')
        self.logged('edit key 9')
        self.forms.type('x')
        wait_until(lambda: any(line.startswith('edit holds') and line.endswith('x') for line in self.lines()),
                   'the letter in the edit', 20)

    def test_nested_modal_forms_end_one_loop_each(self):
        self.open('F2', 'Modal')
        self.open('F2', 'Inner')
        self.key('Return')
        self.logged('inner gave 1')
        self.gone('Inner')
        self.shown('Modal')
        self.assertNotIn('modal gave', ' '.join(self.lines()))
        self.key('Escape')
        self.logged('modal gave 2')
        self.shown('Forms')
        self.key('alt+F4')
        self.ended()


if __name__ == '__main__':
    unittest.main(verbosity=2)
