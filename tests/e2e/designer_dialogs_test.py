#!/usr/bin/env python3
"""Each dialog of the form designer by mouse and keys: given up by Escape, which changes nothing, and taken.

ZENDRY_LOOK=light, dark or large (scale 2) takes a picture of each as well: build/shots/dialog-NAME-LOOK.png.
"""
import os
import unittest

import desktop
from desktop import wait_until
from debug_test import DARK
from designer_test import DesignerTest
from fixture import SHOTS, read, write

LOOK = os.environ.get('ZENDRY_LOOK', '')
SCALE = 2 if LOOK == 'large' else 1
if LOOK == 'large':
    desktop.SCREEN = '2560x1920x24'

FORM = '''class {name}: public Form
{{
	typedef {name} This;
public:
	//!decl
{decl}	//!end
	{name}() {{
		Initialize();
	}}
private:
	void Initialize() {{
		//!init
{init}		//!end
{kept}	}}
{methods}}};
'''
DECL = '\tLabel label1;\n\tListBox listBox1;\n\tToolBar toolBar1;\n\tButton button1;\n'
INIT = '''		this->SetBounds(0, 0, 600, 400);
		//!<Label>
		label1.SetBounds(16, 40, 80, 18);
{label}		label1.text = "label1";
{label_event}		this->Add(&label1);
		//!<ListBox>
		listBox1.SetBounds(16, 70, 180, 80);
{list}		this->Add(&listBox1);
		//!<ToolBar>
		toolBar1.dock = Dock::cTop;
		toolBar1.height = 32;
{bar}		this->Add(&toolBar1);
		//!<Button>
		button1.SetBounds(240, 40, 104, 34);
		button1.text = "{button}";
{button_event}		this->Add(&button1);
'''
BEFORE = INIT.format(label='', label_event='', list='', bar='', button='Go', button_event='')
AFTER = INIT.format(label='\t\tlabel1.foreColor = Color::cRed;\n\t\tlabel1.font = Font(18);\n',
                    label_event='\t\tlabel1.onDblClick.Add_H(this, &This::Greet);\n',
                    list='\t\tlistBox1.items.Add("one");\n\t\tlistBox1.items.Add("say \\"hi\\"");\n',
                    bar='\t\ttoolBar1.items.Add(Icons::icoOpen, "Open");\n\t\ttoolBar1.items.Add(_separator_);\n',
                    button='Take', button_event='\t\tbutton1.onClick.Add_H(this, &This::Button1DoOnClick);\n')
NOTE = '\t\t// a note\n'
PLAIN = '\t\tthis->SetBounds(0, 0, 300, 200);\n'
METHOD = '\tvoid Button1DoOnClick(NotifyArgs &e)\n\t{\n\t\t\n\t}\n'

LABEL, LIST, BAR, BUTTON = (30, 48), (60, 100), (400, 16), (280, 56)  # on the surface
FORE_COLOR, FONT, TEXT, ITEMS = 9, 10, 11, 12  # rows of the properties
DBL_CLICK, CLICK = 0, 0  # rows of the events of a label and of a button


def source(init=BEFORE, plain=PLAIN + NOTE, kept='', methods=''):
    """The file with two forms; the second one has a line that the designer can't take."""
    return ('#pragma once\n#include<mavro>\n\n' +
            FORM.format(name='Desk', decl=DECL, init=init, kept='', methods=methods) + '\n' +
            FORM.format(name='Plain', decl='', init=plain, kept=kept, methods=''))


class Dialogs(DesignerTest):
    def setUp(self):
        super().setUp()
        self.maxDiff = None
        look = {}
        if LOOK == 'dark':
            write(os.path.join(self.desktop.home, '.config', 'kdeglobals'), DARK)
            look = {'XDG_CURRENT_DESKTOP': 'KDE', 'KDE_SESSION_VERSION': '5'}
        if LOOK == 'large':
            look = {'QT_SCALE_FACTOR': '2'}
        self.desktop.environment.update(look)
        write(os.path.join(self.folder, 'cards', 'desk.h'), source())
        self.open_project([], ['desk.h'], shown='desk.h')

    def mouse(self, window, x, y, *more):
        super().mouse(window, x * SCALE, y * SCALE, *more)

    def dialog(self, title, picture=''):
        """Waits for a dialog; answers its window."""
        known = [self.window.main, self.designer] if self.designer else [self.window.main]
        window = self.window.wait_for_window(besides=known, seconds=20)
        self.assertEqual(self.window.titles()[window], title)
        if picture:
            self.look(picture, window)
        return window

    def look(self, name, window='root'):
        if LOOK:
            self.window.wait_quiet()
            self.desktop.picture(os.path.join(SHOTS, f'dialog-{name}-{LOOK}.png'), window)

    def wait_gone(self, window):
        wait_until(lambda: window not in self.window.titles(), 'the dialog has gone', 20)

    def give_up(self, window):
        self.window.key('Escape')
        self.wait_gone(window)

    def press(self, window, x, y):
        self.mouse(window, x, y, 'click', '1')

    def take(self, window, x, y):
        self.press(window, x, y)
        self.wait_gone(window)

    def choose_form(self, *keys):
        """Begins to design and chooses a form of the file by keys."""
        self.designer = None
        self.window.key('F11')
        dialog = self.dialog('Choose a form', 'select')
        self.window.key(*keys)
        self.wait_gone(dialog)

    def wait_for_designer(self):
        self.designer = self.window.wait_for_window(besides=[self.window.main], seconds=20)
        self.assertEqual(self.window.titles()[self.designer], 'Form designer')
        self.window.wait_quiet()

    def open_row(self, control, page, row):
        """Selects a control and clicks the editor in one of its rows."""
        self.select(*control)
        self.page(page)
        self.click(*self.row(row))

    def is_saved(self, wanted):
        self.window.wait_quiet()
        self.window.key('ctrl+s')
        try:
            wait_until(lambda: self.source('desk.h') == wanted, 'the source is written', 20)
        except desktop.Timeout:
            self.assertEqual(self.source('desk.h'), wanted)

    def give_up_all(self):
        """Opens each dialog of the designer, types into it, and presses Escape."""
        self.open_row(LABEL, 'Property', FORE_COLOR)
        self.window.type('cR')
        self.look('colors')
        self.window.key('Escape')
        self.open_row(LABEL, 'Property', FONT)
        dialog = self.dialog('Font', 'font')
        self.window.type('18')
        self.give_up(dialog)
        self.open_row(LIST, 'Property', ITEMS)
        dialog = self.dialog('Items')
        self.window.type('one')
        self.give_up(dialog)
        self.open_row(BAR, 'Property', ITEMS)
        dialog = self.dialog('Tool bar items')
        self.press(dialog, 138, 33)
        self.give_up(dialog)
        self.open_row(BUTTON, 'Events', CLICK)
        dialog = self.dialog('Event handler')
        self.window.type('Greet')
        self.give_up(dialog)
        self.open_row(BUTTON, 'Property', TEXT)
        self.window.key('ctrl+a')
        self.window.type('Gone')
        self.window.key('Escape')

    def take_all(self):
        """Opens each dialog, gives it a value, and takes that."""
        self.open_row(LABEL, 'Property', FORE_COLOR)
        self.window.type('cR')
        self.window.key('Return')
        self.open_row(LABEL, 'Property', FONT)
        dialog = self.dialog('Font')
        self.window.type('18')
        self.window.key('Return')
        self.wait_gone(dialog)
        self.open_row(LIST, 'Property', ITEMS)
        dialog = self.dialog('Items')
        self.window.type('one')
        self.window.key('Return')
        self.window.type('say "hi"')
        self.look('items', dialog)
        self.take(dialog, 342, 278)
        self.open_row(BAR, 'Property', ITEMS)
        dialog = self.dialog('Tool bar items')
        self.window.type('icoO')
        self.press(dialog, 138, 33)
        self.press(dialog, 185, 33)
        self.look('tool-bar', dialog)
        self.take(dialog, 254, 32)
        self.open_row(BUTTON, 'Property', TEXT)
        self.window.key('ctrl+a')
        self.window.type('Take')
        self.window.key('Return')
        self.open_row(LABEL, 'Events', DBL_CLICK)
        dialog = self.dialog('Event handler')
        self.window.type('Greet')
        self.look('event', dialog)
        self.window.key('Return')
        self.wait_gone(dialog)

    def design(self):
        """The dialogs of the designer's window, in a form of four controls."""
        self.choose_form('Escape')
        self.assertEqual(list(self.window.titles()), [self.window.main])
        self.choose_form('Return')
        self.wait_for_designer()
        self.give_up_all()
        self.save_and_close()
        self.assertFalse(self.window.title().endswith('*'))
        self.is_saved(source())

        self.choose_form('Return')
        self.wait_for_designer()
        self.select(*LABEL)
        self.window.key('ctrl+Right', 'alt+F4')
        self.give_up(self.dialog('Confirmation', 'confirm'))
        self.window.key('ctrl+Left')
        self.take_all()
        self.open_row(BUTTON, 'Events', CLICK)
        self.press(self.dialog('Event handler'), 47, 17)  # "Add new", which ends the designer
        self.wait_for_editor()
        self.is_saved(source(init=AFTER, methods=METHOD))

    def keep_what_would_be_lost(self):
        self.choose_form('Down', 'Return')
        self.give_up(self.dialog('Form designer', 'losses'))
        self.assertEqual(list(self.window.titles()), [self.window.main])
        self.choose_form('Down', 'Return')
        dialog = self.dialog('Form designer')
        self.press(dialog, 698, 332)  # "Keep"
        self.wait_gone(dialog)
        self.wait_for_designer()
        self.save_and_close()
        self.is_saved(source(init=AFTER, methods=METHOD, plain=PLAIN, kept=NOTE))

    def make_form(self):
        self.designer = None
        made = os.path.join(self.project, 'card.h')
        for answer in ('Escape', 'Return'):
            self.window.key('shift+F11')
            dialog = self.dialog('New Dialog')
            self.press(dialog, 174, 87)  # "Create in a new file"
            self.press(dialog, 60, 34)
            self.window.type('Card')
            self.window.key('Tab')
            self.window.type('card')
            self.look('new', dialog)
            self.window.key(answer)
            self.wait_gone(dialog)
            self.window.wait_quiet()
            self.assertEqual(os.path.exists(made), answer == 'Return')
        self.assertIn('class Card: public Form', read(made))

    def test_each_dialog_is_given_up_and_taken(self):
        """In one program: its start takes as long as ten dialogs."""
        self.design()
        self.keep_what_would_be_lost()
        self.make_form()
        self.assertEqual(self.source('desk.h'), source(init=AFTER, methods=METHOD, plain=PLAIN, kept=NOTE))
        self.window.key('alt+F4')
        self.assertEqual(self.window.wait_for_message(), 'Confirmation')  # of the file that the project has got
        self.window.key('Return')
        self.assertEqual(self.window.process.wait(20), 0)


if __name__ == '__main__':
    unittest.main(verbosity=2)
