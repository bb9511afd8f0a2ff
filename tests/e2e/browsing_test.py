#!/usr/bin/env python3
"""A class is found in the tree, gets a method by the wizard, a call of it is followed and left again, and the method is
renamed in the whole project and named back, all by keys and clicks, with builds in between. build/shots/browsing-*.png
are what a person sees meanwhile."""
import os
import unittest

from desktop import wait_until
from fixture import ZendryTest, read, run, write, write_project

HEADER = '''#pragma once

#define SHAPE_LIMIT 100

namespace shapes {

class Shape {
 public:
  explicit Shape(int width);
  int width() const;

 private:
  int its_width;
};

}  // namespace shapes
'''
SOURCE = '''#include "shape.h"

namespace shapes {

Shape::Shape(int width) : its_width(width) {
}

int Shape::width() const {
  return its_width;
}

}  // namespace shapes
'''
MAIN = '''#include <cstdio>

#include "shape.h"

int main() {
  shapes::Shape shape(3);
  std::printf("%d\\n", shape.width());
}
'''


class Browsing(ZendryTest):
    def setUp(self):
        super().setUp()
        self.dir = os.path.join(self.folder, 'shapes')
        for name, text in (('shape.h', HEADER), ('shape.cpp', SOURCE), ('main.cpp', MAIN)):
            write(self.path(name), text)
        self.project = write_project(self.path('shapes.zpj'), ['shape.cpp', 'main.cpp'], ['shape.h'])

    def path(self, name):
        return os.path.join(self.dir, name)

    scale = os.environ.get('QT_SCALE_FACTOR', '1')

    def begin(self, **environment):
        self.window = self.start(self.project, self.path('main.cpp'), **environment)
        self.desktop.ask('xdotool', 'windowsize', '--sync', self.window.main, '1100', '860')
        self.window.wait_quiet()

    def look(self, name):
        self.window.wait_quiet()
        self.picture('browsing-' + name)

    def front(self, name):
        self.window.wait_for_title(name)

    def save(self, name):
        before = os.stat(self.path(name)).st_ino
        self.window.key('ctrl+s')
        wait_until(lambda: os.stat(self.path(name)).st_ino != before, 'the file is written')

    def wait_for_one_window(self):
        wait_until(lambda: len(self.window.titles()) == 1, 'the dialog has gone')
        self.window.wait_quiet()

    def click(self, x, y):
        """Clicks a place of the main window, whose scale counts."""
        scale = int(self.scale)
        self.desktop.ask('xdotool', 'mousemove', '--window', self.window.main, str(x * scale), str(y * scale), 'click', '1')

    def find_class_in_tree(self, look):
        self.click(100, 88)
        self.window.wait_quiet()
        self.click(45, 110)
        self.window.key('Right', 'Down', 'Right')
        self.window.wait_quiet()
        look('tree')
        self.window.key('Return')
        self.front('shape.h')
        self.window.key('alt+Left')
        self.front('main.cpp')

    def call_it(self, look):
        self.window.key('alt+Left')
        self.front('main.cpp')
        self.window.key('End', 'Return')
        self.window.type('return shape.area(2);')
        self.save('main.cpp')
        self.window.key('Left', 'Left', 'Left', 'Left', 'Left', 'F12')
        self.front('shape.h')
        look('called')
        self.window.key('alt+Left')
        self.front('main.cpp')

    def round_trip(self, look):
        self.window.key('ctrl+g')
        self.window.wait_for_message()
        self.window.type('6')
        self.window.key('Return')
        self.wait_for_one_window()
        self.window.key('End', 'Left', 'Left', 'Left', 'Left', 'Left', 'Left', 'ctrl+Left', 'ctrl+Left', 'F12')
        self.front('shape.h')
        look('symbol')
        self.window.key('alt+Left')
        self.front('main.cpp')
        self.window.key('alt+Right')
        self.front('shape.h')
        self.window.key('shift+F12')
        self.window.wait_for_message()
        look('wizard')
        self.window.type('virtual int area(int height = 1) const')
        self.window.key('Return')
        self.front('shape.cpp')
        self.wait_for_one_window()
        self.window.type('return its_width * height;')
        look('definition')
        self.save('shape.cpp')
        self.window.key('alt+Left')
        self.front('shape.h')
        self.save('shape.h')
        self.window.key('ctrl+F12')
        self.window.wait_for_message()
        look('browser')
        self.window.key('Escape')
        self.wait_for_one_window()
        self.call_it(look)

    def files(self):
        return {name: read(self.path(name)) for name in ('shape.h', 'shape.cpp', 'main.cpp')}

    def program_answers(self, what):
        """Builds; the new program must have been made and must answer 6."""
        program = self.path('out-rel/shapes.exe')
        before = os.stat(program).st_mtime_ns if os.path.exists(program) else 0
        self.window.key('F7')
        wait_until(lambda: os.path.exists(program) and os.stat(program).st_mtime_ns != before,
                   'a program is built ' + what)
        self.window.wait_quiet()
        self.assertEqual(len(self.window.titles()), 1, 'no message came ' + what)
        self.assertEqual(run(program).returncode, 6, what)

    def dialog(self, title, besides=()):
        found = self.window.wait_for_window(besides=[self.window.main, *besides])
        self.assertEqual(self.window.titles()[found], title)
        return found

    def rename_everywhere(self, look):
        self.window.key('ctrl+shift+r')
        asking = self.dialog('Repace in project')
        self.window.type('area')
        self.window.key('alt+p')
        self.window.type('surface')
        look('rename')
        self.window.key('Return')
        self.dialog('Repace in project', besides=[asking])
        look('rename-list')
        self.window.key('Return')
        self.wait_for_one_window()
        self.program_answers('with the new name')
        for name, text in self.files().items():
            self.assertIn('surface', text, name)
            self.assertNotIn('area', text, name)

    def name_back(self, before):
        self.window.key('alt+t', 'u')
        self.window.wait_quiet()
        self.program_answers('with the old name')
        for name in before:
            compared = run('cmp', self.path(name), self.path(name + '.before'))
            self.assertEqual(compared.returncode, 0, compared.stdout)

    def test_round_trip_builds(self):
        self.begin()
        self.find_class_in_tree(self.look)
        self.round_trip(self.look)
        before = self.files()
        self.assertIn('  virtual int area(int height = 1) const;\n', before['shape.h'])
        self.assertIn('int Shape::area(int height) const {\n  return its_width * height;\n}\n', before['shape.cpp'])
        for name, text in before.items():
            write(self.path(name + '.before'), text)
        self.program_answers('with the new method')
        self.window.key('ctrl+w')  # replaced on the disk, the others in their editors
        self.window.wait_quiet()
        self.rename_everywhere(self.look)
        self.look('renamed')
        self.name_back(before)
        self.assertEqual(self.window.close(), 0)


if __name__ == '__main__':
    unittest.main()
