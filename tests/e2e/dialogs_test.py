#!/usr/bin/env python3
"""Every dialog outside the designer under a window manager: opened by mouse and keys, changed by the mouse, and closed
by its close box, which leaves the disk as it was. Then the main window's close box while a dialog is open."""
import os
import subprocess
import unittest

from desktop import children, wait_until
from fixture import TOP, ZendryTest, read, write, write_project

SOURCE = '''#include "a.h"

int A::Twice(int n) { return 2 * n; }

int main() { return A().Twice(0); }
'''
HEADER = '''class A {
public:
  int Twice(int n);
};
'''

# Places of the main window, which has its first size here.
MENUS = {'File': 20, 'Project': 254, 'Debug': 309, 'Tools': 358, 'Help': 402}
MENU_BAR, FIRST_ROW, ROW_HEIGHT, SEPARATOR_HEIGHT = 8, 29, 22, 2
TABLES = {'File': 'FileActs', 'Project': 'PrjActs', 'Debug': 'Debugger', 'Tools': 'ToolActs', 'Help': 'HelpActs'}
# The close box in the frame that the window manager draws: from the right end and the top of what is inside.
CLOSE_BOX = (-9, -11)
FRAME_OF_A_SWITCH = (18, 16)


class Dialog:
    """How a dialog is opened, by a row of a menu or by keys, where it is clicked, and the left end of a field that is
    clicked and typed into: each click and the letter must change what is seen there. Last the place of a button with
    the title of the dialog that it opens."""

    def __init__(self, title, opened_by, *clicks, field=None, opens=None):
        self.title, self.opened_by, self.clicks, self.field, self.opens = title, opened_by, clicks, field, opens


DIALOGS = (
    Dialog('New...p.zpj', ('File', '&New'), (25, 104), (31, 172), field=(24, 78)),
    Dialog('Open...', ('File', '&Open...')),
    Dialog('Save as', ('File', 'Save &As...')),
    Dialog('Print a.cpp', ('File', 'Print file'), (60, 164)),
    Dialog('Print preview - a.cpp', ('File', 'Print preview'), opens=((309, 23), 'Page set-up')),
    Dialog('Page set-up', ('File', 'Page set-up'), (23, 203), (23, 231)),
    Dialog('New project', ('File', 'New project'), (107, 104), (179, 104), (252, 104), (325, 104), (42, 104),
           field=(20, 74)),
    Dialog('Clone project', ('File', 'Clone project'), field=(20, 82)),
    Dialog('Open project', ('File', 'Open project')),
    Dialog('Recent files', ('File', 'Recent files')),
    Dialog('Recent projects', ('File', 'Recent projects')),
    Dialog('Open...', ('Project', '&Add file')),
    Dialog('Project options', ('Project', '&Project options'), (174, 60), (109, 60), (36, 60), field=(18, 200)),
    Dialog('Breakpoints', ('F9', 'ctrl+alt+b'), opens=((138, 20), 'Condtion:')),
    Dialog('watch', ('shift+F9',), field=(24, 28)),
    Dialog('Program parameters', ('Debug', 'Set program parameters'), field=(24, 28)),
    Dialog('Find In Project', ('Tools', 'Find In Project'), (118, 98), (118, 122), field=(118, 27)),
    Dialog('Repace in project', ('Tools', 'Replace In Project'), (118, 134), (118, 158), field=(118, 27)),
    Dialog('New Dialog', ('Tools', 'Insert New Form '), (30, 110), field=(25, 34)),
    Dialog('Ide Options', ('Tools', 'Ide Options'), (137, 12), (20, 205), (20, 229), (29, 12), (38, 69)),
    Dialog('Find', ('ctrl+f',), (118, 61), (118, 85), (278, 61), field=(118, 27)),
    Dialog('Replace', ('ctrl+r',), (118, 97), (118, 121), (278, 97), field=(118, 61)),
    Dialog('Go to', ('ctrl+g',), field=(118, 27)),
    Dialog('Open tabs', ('ctrl+shift+o',), field=(10, 12)),
    Dialog('Class wizard', ('shift+F12',), field=(20, 312)),
    Dialog('Browser', ('ctrl+F12',), (30, 76)),
    Dialog('Zendry', ('Help', '&About Zendry...')),
    Dialog('Help', ('Help', '&Programer help'), (60, 180)),
)


def menu_rows(name):
    """The rows of a menu, as the table of all commands has them; a line between rows is an empty one."""
    rows = []
    commands = read(os.path.join(TOP, 'tests', 'data', 'commands.golden'))
    for line in commands.partition(TABLES[name] + '\n')[2].splitlines():
        if not line.startswith('  '):
            break
        rows.append(line.partition('"')[2].partition('"')[0])
    return rows


def content(path):
    with open(path, 'rb') as file:
        return file.read()


class DialogTest(ZendryTest):
    def open_program(self, source=SOURCE):
        folder = os.path.join(self.folder, 'work')
        self.source = write(os.path.join(folder, 'a.cpp'), source)
        write(os.path.join(folder, 'a.h'), HEADER)
        self.project = write_project(os.path.join(folder, 'p.zpj'), ['a.cpp'], ['a.h'])
        self.window = self.start(self.project, self.source)
        self.main = self.window.main
        self.window.wait_for_title('a.cpp')
        wait_until(lambda: os.path.exists(self.ini), 'the recent files are kept')
        self.window.wait_quiet()


    def files(self):
        """What lies in the folder of the project and in the home folder, but for what the toolkit keeps there: caches,
        and which folders its file dialog has shown."""
        found = {}
        for top in (os.path.join(self.folder, 'work'), self.desktop.home):
            for folder, inner, names in os.walk(top):
                inner[:] = [name for name in inner if name not in ('.cache', '.config')]
                found.update((path, content(path)) for path in (os.path.join(folder, name) for name in names))
        return found

    def click(self, window, x, y):
        self.desktop.ask('xdotool', 'mousemove', '--window', window, str(x), str(y), 'click', '1')

    def close_by_frame(self, window):
        """Clicks the close box of the window manager's frame."""
        place = self.desktop.ask('xwininfo', '-id', window)
        number = {line.partition(':')[0].strip(): line.partition(':')[2].strip() for line in place.splitlines()}
        right = int(number['Absolute upper-left X']) + int(number['Width'])
        top = int(number['Absolute upper-left Y'])
        self.desktop.ask('xdotool', 'mousemove', str(right + CLOSE_BOX[0]), str(top + CLOSE_BOX[1]), 'click', '1')

    def popups(self):
        """Windows on the screen that the window manager doesn't manage, such as menus."""
        listed = self.desktop.ask('xdotool', 'search', '--onlyvisible', '--class', 'zendry').split()
        return [window for window in listed if window not in self.window.titles()]

    def choose(self, menu, caption):
        """Chooses a row of the menu bar with the mouse."""
        rows = menu_rows(menu)
        at = rows.index(caption)
        separators = rows[:at].count('')
        y = FIRST_ROW + (at - separators) * ROW_HEIGHT + separators * SEPARATOR_HEIGHT
        self.click(self.main, MENUS[menu], MENU_BAR)
        wait_until(self.popups, f'the menu {menu}')
        self.click(self.main, MENUS[menu] + 20, y)

    def opened(self, title, besides=()):
        window = self.window.wait_for_window(besides=[self.main, *besides])
        self.assertEqual(self.window.titles()[window], title)
        return window

    def closed(self, window):
        wait_until(lambda: window not in self.window.titles(), 'the dialog is closed')

    def is_active(self, window):
        wait_until(lambda: self.desktop.ask('xdotool', 'getactivewindow').strip() == window, 'the active window')

    def seen(self, window, x, y):
        """What is seen around a place of a window, with the pointer elsewhere."""
        width, height = FRAME_OF_A_SWITCH
        self.desktop.ask('xdotool', 'mousemove', '0', '0')
        return subprocess.run(
            ['import', '-window', window, '-crop', f'{width}x{height}+{x - width // 2}+{y - height // 2}', 'ppm:-'],
            env=self.desktop.environment, stdout=subprocess.PIPE, check=True).stdout

    def change(self, window, x, y, typed=''):
        before = self.seen(window, x, y)
        self.click(window, x, y)
        if typed:
            self.window.type(typed)
        wait_until(lambda: self.seen(window, x, y) != before, f'another picture at {x}, {y}')

    def use(self, dialog):
        """Opens a dialog, changes it by the mouse, and closes it by its frame."""
        if dialog.opened_by[0] in MENUS:
            self.choose(*dialog.opened_by)
        else:
            self.desktop.ask('xdotool', 'key', *dialog.opened_by)
        window = self.opened(dialog.title)
        for place in dialog.clicks:
            self.change(window, *place)
        if dialog.field:
            self.change(window, *dialog.field, typed='3')
        if dialog.opens:
            place, title = dialog.opens
            self.click(window, *place)
            upper = self.opened(title, besides=[window])
            self.close_by_frame(upper)
            self.closed(upper)
            self.is_active(window)
        self.close_by_frame(window)
        self.closed(window)
        self.is_active(self.main)


class EveryDialog(DialogTest):
    def test_closed_by_its_frame_writes_nothing(self):
        self.open_program()
        before = self.files()
        for dialog in DIALOGS:
            with self.subTest(dialog.title):
                self.use(dialog)
                self.assertEqual(self.files(), before)
        self.close_by_frame(self.main)
        self.assertEqual(self.window.process.wait(20), 0)

    def test_list_of_replacements_closed_by_its_frame_replaces_nothing(self):
        self.open_program()
        before = self.files()
        self.desktop.ask('xdotool', 'key', 'ctrl+shift+r')
        question = self.opened('Repace in project')
        self.window.type('Twice')
        self.change(question, 118, 63, typed='Thrice')
        self.window.key('Return')
        self.closed(question)
        found = self.opened('Repace in project')
        self.close_by_frame(found)
        self.closed(found)
        self.is_active(self.main)
        self.window.wait_quiet()
        self.assertEqual(self.files(), before)
        self.assertEqual(self.window.close(), 0)


class MainWindow(DialogTest):
    """Its close box while a dialog is open."""

    def answer(self, keys):
        box = self.opened('Confirmation')
        self.desktop.ask('xdotool', 'key', keys)
        self.closed(box)

    def test_modal_dialog_has_to_be_closed_first_and_unsaved_text_is_asked_about(self):
        self.open_program()
        self.window.type('x')
        self.choose('Tools', 'Ide Options')
        options = self.opened('Ide Options')
        self.close_by_frame(self.main)
        self.change(options, 29, 12)  # the dialog goes on, whatever came before this click
        self.assertEqual(set(self.window.titles()), {self.main, options})
        self.close_by_frame(options)
        self.closed(options)
        self.close_by_frame(self.main)
        self.answer('Escape')
        self.is_active(self.main)
        self.close_by_frame(self.main)
        self.answer('alt+n')
        self.assertEqual(self.window.process.wait(20), 0)
        self.assertEqual(read(self.source), SOURCE)

    def test_window_of_the_help_stays_with_the_main_window(self):
        self.open_program()
        self.window.type('x')
        self.desktop.ask('xdotool', 'key', 'ctrl+F1')
        shown = self.opened('Help')
        self.close_by_frame(self.main)
        box = self.opened('Confirmation', besides=[shown])
        self.desktop.ask('xdotool', 'key', 'Escape')
        self.closed(box)
        self.assertEqual(set(self.window.titles()), {self.main, shown})
        self.close_by_frame(self.main)
        self.opened('Confirmation', besides=[shown])
        self.desktop.ask('xdotool', 'key', 'alt+n')
        self.assertEqual(self.window.process.wait(20), 0)
        self.assertEqual(read(self.source), SOURCE)

    def test_dialog_over_a_running_build(self):
        self.open_program('#include "pipe.inc"\n' + SOURCE)
        os.mkfifo(os.path.join(self.folder, 'work', 'pipe.inc'))  # the compiler waits for its text
        self.window.key('F7')
        wait_until(lambda: children(self.window.process.pid), 'the compiler runs')
        self.choose('File', 'Page set-up')
        dialog = self.opened('Page set-up')
        self.close_by_frame(self.main)
        self.change(dialog, 23, 203)
        self.assertTrue(children(self.window.process.pid))
        self.close_by_frame(dialog)
        self.closed(dialog)
        self.is_active(self.main)
        self.close_by_frame(self.main)  # lets the compiler end
        self.close_by_frame(self.main)  # ends it
        wait_until(lambda: not children(self.window.process.pid), 'the build is stopped')
        self.window.wait_quiet()
        self.assertEqual(self.window.close(), 0)


if __name__ == '__main__':
    unittest.main(verbosity=2)
