#!/usr/bin/env python3
"""A class is found in the tree, gets a method by the wizard, and a call of it is followed and left again, all by keys and
clicks. build/shots/browsing-*.png are what a person sees meanwhile."""
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

    def test_round_trip_builds(self):
        self.begin()
        self.find_class_in_tree(self.look)
        self.round_trip(self.look)
        self.assertIn('  virtual int area(int height = 1) const;\n', read(self.path('shape.h')))
        self.assertIn('int Shape::area(int height) const {\n    return its_width * height;\n}\n'
                      .replace('    ', '  '), read(self.path('shape.cpp')))
        compiled = run('g++', '-std=c++17', '-Wall', '-Werror', '-Wno-non-virtual-dtor', '-o', self.path('out'),
                       self.path('shape.cpp'), self.path('main.cpp'))
        self.assertEqual(compiled.returncode, 0, compiled.stderr)
        self.assertEqual(run(self.path('out')).returncode, 6)
        self.assertEqual(self.window.close(), 0)


if __name__ == '__main__':
    unittest.main()
