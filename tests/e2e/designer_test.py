#!/usr/bin/env python3
"""The form designer by mouse and keys: from an empty form to the running program, changes, and undo."""
import os
import shutil
import unittest

from desktop import wait_until
from fixture import TOP, ZendryTest, read, write, write_project

FORM_APPLICATION = 1
TOOLS = ('Select', 'Label', 'Edit', 'Memo', 'ComboBox', 'Button', 'CheckBox', 'RichView', 'GroupBox', 'RadioGroup',
         'Panel', 'ListBox', 'TabCtrl')  # two in a row
# Places in the designer's window, which has the size that the main window gets here.
FIRST_TOOL, TOOL_WIDTH, TOOL_HEIGHT = (43, 85), 84, 48
PAGES = {'Toolbox': 36, 'Property': 106, 'Events': 176}
PAGES_TOP = 45
FIRST_ROW, ROW_HEIGHT = (172, 69), 26
SURFACE = (254, 32)
SAVE_AND_CLOSE = (333, 16)
BUTTON_TEXT, FORM_TEXT, TAB_PAGES = 11, 10, 11  # rows of the properties

MAIN = '''#include "{header}"

int Application::Main(const ArgumentList&) {{
  {form} form;
  form.{show};
  return 0;
}}
'''
EMPTY = '''#pragma once
#include<mavro>

class Card: public Form
{
	typedef Card This;
public:
	//!decl
	//!end
	Card() {
		Initialize();
	}
private:
	void Initialize() {
		//!init
		this->SetBounds(0, 0, 600, 400);
		//!end
	}
};
'''
DESIGNED = '''		this->SetBounds(0, 0, 600, 400);
		this->text = "Cards";
		//!<Label>
		label1.SetBounds(16, 20, 80, 18);
		label1.text = "Name:";
		this->Add(&label1);
		//!<Edit>
		edit1.SetBounds(104, 16, 80, 24);
		edit1.text = "edit1";
		this->Add(&edit1);
		//!<Button>
		button1.SetBounds(240, 12, 104, 34);
		button1.text = "Greet";
		button1.onClick.Add_H(this, &This::Button1DoOnClick);
		this->Add(&button1);
		//!<GroupBox>
		groupBox1.SetBounds(16, 64, 200, 100);
		groupBox1.text = "groupBox1";
		this->Add(&groupBox1);
		//!<CheckBox>
		checkBox1.SetBounds(14, 30, 120, 22);
		checkBox1.text = "checkBox1";
		groupBox1.Add(&checkBox1);
		//!<CheckBox>
		checkBox2.SetBounds(14, 60, 120, 22);
		checkBox2.text = "checkBox2";
		groupBox1.Add(&checkBox2);
		//!<TabCtrl>
		tabCtrl1.SetBounds(240, 60, 200, 120);
		this->Add(&tabCtrl1);
		//!<TabPage>
		tabCtrl1Page1.text = "Page1";
		tabCtrl1.Add(&tabCtrl1Page1);
		//!<Memo>
		memo1.SetBounds(0, 4, 180, 80);
		memo1.text = "memo1";
		tabCtrl1Page1.Add(&memo1);
		//!<ListBox>
		listBox1.SetBounds(16, 250, 180, 80);
		this->Add(&listBox1);
'''


class DesignerTest(ZendryTest):
    def open_project(self, sources, headers=(), shown='', **options):
        """Starts Zendry with a project of forms, one of its files in front."""
        self.project = os.path.join(self.folder, 'cards')
        path = write_project(os.path.join(self.project, 'cards.zpj'), sources, headers, kind=FORM_APPLICATION, **options)
        if shown:
            write(os.path.join(self.project, 'cards.zend'), '<state>\n\t<mode opt="rel"/>\n\t<open>\n'
                  f'\t\t<file name="{shown}" id="1"/>\n\t</open>\n</state>\n')
        self.window = self.start(path)
        self.window.wait_quiet()

    def source(self, name):
        return read(os.path.join(self.project, name))

    def mouse(self, window, x, y, *more):
        self.desktop.ask('xdotool', 'mousemove', '--sync', '--window', window, str(x), str(y), *more)

    def click(self, x, y):
        self.mouse(self.designer, x, y, 'click', '1')

    def open_designer(self):
        self.window.key('F11')
        self.designer = self.window.wait_for_window(besides=[self.window.main], seconds=20)
        self.window.wait_quiet()

    def wait_for_editor(self):
        wait_until(lambda: list(self.window.titles()) == [self.window.main], 'the designer is closed', 20)
        self.window.wait_quiet()

    def save_and_close(self):
        self.click(*SAVE_AND_CLOSE)
        self.wait_for_editor()

    def save_file(self, name, wanted):
        self.window.key('ctrl+s')
        wait_until(lambda: self.source(name) == wanted, f'{name} is written, which is {self.source(name)}', 20)

    def page(self, name):
        self.click(PAGES[name], PAGES_TOP)

    def row(self, number):
        """The middle of the editor in a row of properties or events."""
        return FIRST_ROW[0], FIRST_ROW[1] + ROW_HEIGHT * number

    def drop(self, tool, x, y):
        """Chooses a class in the toolbox, which is in front, and puts a control of it at a point of the form."""
        number = TOOLS.index(tool)
        self.click(FIRST_TOOL[0] + TOOL_WIDTH * (number % 2), FIRST_TOOL[1] + TOOL_HEIGHT * (number // 2))
        self.select(x, y)

    def select(self, x, y):
        self.click(SURFACE[0] + x, SURFACE[1] + y)

    def drag(self, x, y, to_x, to_y):
        left, top = SURFACE
        self.mouse(self.designer, left + x, top + y, 'mousedown', '1')
        self.mouse(self.designer, left + (x + to_x) // 2, top + (y + to_y) // 2)
        self.mouse(self.designer, left + to_x, top + to_y, 'mouseup', '1')

    def enter(self, row, text):
        """Sets a property of what is selected; the toolbox is in front again."""
        self.page('Property')
        self.click(*self.row(row))
        self.window.key('ctrl+a')
        self.window.type(text)
        self.window.key('Return')
        self.page('Toolbox')

    def shot(self, name, window=None):
        """A picture of a window for the user's guide."""
        self.window.wait_quiet()
        self.desktop.picture(os.path.join(TOP, 'build', 'shots', f'guide-{name}.png'), window or self.designer)

    def make(self):
        self.window.key('F7')
        program = os.path.join(self.project, 'out-rel', 'cards.exe')
        wait_until(lambda: os.path.exists(program), 'the program')
        self.window.wait_quiet()
        return program

    def run_program(self, program, title):
        self.program = self.desktop.start([program])
        found = wait_until(lambda: self.desktop.ask('xdotool', 'search', '--onlyvisible', '--name', f'^{title}$').split(),
                           f'the window "{title}"', 20)[0]
        wait_until(lambda: self.desktop.ask('xdotool', 'getactivewindow').strip() == found, 'it is active', 20)
        return found


class FromNothing(DesignerTest):
    def make_form(self):
        """Makes the class of a form with "New Dialog"."""
        self.window.key('shift+F11')
        dialog = self.window.wait_for_window(besides=[self.window.main], seconds=20)
        self.window.type('Card')
        self.window.key('Tab')
        self.window.type('card')
        self.shot('new-dialog', dialog)
        self.window.key('Return')
        self.wait_for_editor()
        self.shot('source', self.window.main)

    def design(self):
        """Ten controls: dropped, moved, sized, named; two in a group, one on a page."""
        self.drop('Label', 16, 20)
        self.enter(BUTTON_TEXT, 'Name:')
        self.drop('Edit', 104, 16)
        self.drop('Button', 240, 12)
        self.drag(322, 30, 342, 30)  # its right edge
        self.enter(BUTTON_TEXT, 'Greet')
        self.drop('GroupBox', 16, 60)
        self.drop('CheckBox', 30, 90)
        self.drop('CheckBox', 30, 120)
        self.select(190, 110)
        self.drag(190, 110, 190, 114)
        self.drop('TabCtrl', 240, 60)
        self.drag(340, 158, 340, 178)  # its lower edge
        self.page('Property')
        self.click(*self.row(TAB_PAGES))
        self.page('Toolbox')
        self.drop('Memo', 240, 90)
        self.drop('ListBox', 16, 250)
        self.shot('controls')
        self.select(550, 380)  # the form itself
        self.enter(FORM_TEXT, 'Cards')

    def greet(self, program):
        """Types a name in the running form and presses its button, whose handler shows the name as title."""
        form = self.run_program(program, 'Cards')
        self.mouse(form, 140, 28, 'click', '1')
        self.window.key('ctrl+a')
        self.window.type('Ada')
        self.mouse(form, 260, 30, 'click', '1')
        wait_until(lambda: self.desktop.ask('xdotool', 'getwindowname', form).strip() == 'Ada', 'the new title', 20)
        self.shot('program', form)
        self.window.key('alt+F4')
        self.assertEqual(self.program.process.wait(20), 0)

    def test_form_of_ten_controls_is_designed_built_run_and_changed(self):
        write(os.path.join(self.folder, 'cards', 'main.cpp'), MAIN.format(header='card.h', form='Card', show='Show()'))
        self.open_project(['main.cpp'])
        self.make_form()
        self.open_designer()
        self.design()
        self.select(260, 28)
        self.page('Property')
        self.shot('properties')
        self.page('Events')
        self.shot('events')
        self.mouse(self.designer, *self.row(0), 'click', '--repeat', '2', '--delay', '60', '1')
        self.wait_for_editor()
        self.window.type('text = edit1.text;')
        self.shot('handler', self.window.main)
        self.greet(self.make())
        text = self.source('card.h')
        self.assertEqual(text[text.index('\t\tthis->'):text.index('\t\t//!end')], DESIGNED)
        self.assertIn('\tvoid Button1DoOnClick(NotifyArgs &e)\n\t{\n\t\ttext = edit1.text;\n\t}\n', text)

        self.desktop.ask('xdotool', 'windowactivate', '--sync', self.window.main)
        self.open_designer()
        self.select(260, 28)
        self.window.key('ctrl+Right')
        self.save_and_close()
        self.save_file('card.h', text.replace('button1.SetBounds(240, 12,', 'button1.SetBounds(241, 12,'))
        self.window.key('alt+F4')
        self.assertEqual(self.window.wait_for_message(), 'Confirmation')  # of the file that the project has got
        self.window.key('Return')
        self.assertEqual(self.window.process.wait(20), 0)


class Undo(DesignerTest):
    def test_thirty_steps_back_to_the_empty_form_change_no_byte(self):
        for name, text in (('card.h', EMPTY), ('main.cpp', MAIN.format(header='card.h', form='Card', show='Show()'))):
            write(os.path.join(self.folder, 'cards', name), text)
        self.open_project(['main.cpp'], ['card.h'], shown='card.h')
        self.open_designer()
        for i in range(10):
            self.drop(('Label', 'Edit', 'Button', 'CheckBox', 'Panel')[i % 5], 60 * i, 40 * i)
            self.window.key('ctrl+Down', 'shift+Right')
        self.picture('designer-thirty-steps')
        self.desktop.ask('xdotool', 'key', '--repeat', '29', '--delay', '20', 'ctrl+z')
        self.save_and_close()
        one = EMPTY.replace('\t//!decl\n', '\t//!decl\n\tLabel label1;\n').replace(
            '400);\n', '400);\n\t\t//!<Label>\n\t\tlabel1.SetBounds(0, 0, 80, 18);\n\t\tlabel1.text = "label1";\n'
            '\t\tthis->Add(&label1);\n')
        self.save_file('card.h', one)
        self.window.key('ctrl+z')  # the editor's step, which is the whole use of the designer
        self.save_file('card.h', EMPTY)

        self.open_designer()
        self.drop('Label', 0, 0)
        for _ in range(29):
            self.window.key('ctrl+Right')
        self.desktop.ask('xdotool', 'key', '--repeat', '30', '--delay', '20', 'ctrl+z')
        self.save_and_close()
        self.window.key('ctrl+End')
        self.window.type('//')
        self.save_file('card.h', EMPTY + '//')
        self.assertEqual(self.window.close(), 0)


class OwnDialog(DesignerTest):
    def test_dialog_of_zendry_changed_on_the_surface_and_built_shows_the_change(self):
        """The dialog of an items property, copied into a project of its own."""
        folder = os.path.join(self.folder, 'cards')
        write(os.path.join(folder, 'main.cpp'), '#include "ItemsDlg.h"\n\nint Application::Main(const ArgumentList&) {\n'
              '  zendry::ItemsDlg dialog;\n  dialog.Run(false);\n  return 0;\n}\n')
        for name in ('ItemsDlg.h', 'ItemsDlg.cpp'):
            shutil.copy(os.path.join(TOP, 'src', 'frmedt', name), folder)
        source = os.path.join(folder, 'ItemsDlg.cpp')
        write(source, read(source).replace('frmedt/ItemsDlg.h', 'ItemsDlg.h'))
        before, header = read(source), read(os.path.join(folder, 'ItemsDlg.h'))
        self.open_project(['main.cpp', 'ItemsDlg.cpp'], ['ItemsDlg.h'], shown='ItemsDlg.cpp')
        self.open_designer()
        self.select(342, 278)  # the button "OK"
        self.window.key('ctrl+Left')
        self.enter(BUTTON_TEXT, 'Take them')
        self.page('Toolbox')
        self.drop('CheckBox', 20, 268)  # into the panel below
        self.picture('designer-own-dialog')
        self.save_and_close()
        after = before.replace('okButton.SetBounds(300, 5,', 'okButton.SetBounds(299, 5,').replace(
            'okButton.text = "OK";', 'okButton.text = "Take them";').replace(
            'buttonPanel.Add(&okButton);\n', 'buttonPanel.Add(&okButton);\n\t//!<CheckBox>\n'
            '\tcheckBox1.SetBounds(20, 12, 120, 22);\n\tcheckBox1.text = "checkBox1";\n'
            '\tbuttonPanel.Add(&checkBox1);\n')
        dialog = self.run_program(self.make(), 'Items')
        self.shot('own-dialog', dialog)
        self.assertEqual(self.source('ItemsDlg.cpp'), after)
        self.assertEqual(self.source('ItemsDlg.h'), header.replace('okButton;\n', 'okButton;\n\tCheckBox checkBox1;\n'))
        self.window.key('alt+F4')
        self.assertEqual(self.program.process.wait(20), 0)


if __name__ == '__main__':
    unittest.main(verbosity=2)
