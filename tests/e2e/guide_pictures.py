#!/usr/bin/env python3
"""Makes the pictures of the user's guide anew, with the program of build/stage (or of $ZENDRY_STAGE), under a virtual
screen of its own: tests/e2e/guide_pictures.py [NAME...]. Needs the packages that the tests of the whole program need."""
import os
import subprocess
import sys
import tempfile
import time

from desktop import Desktop, children, wait_until
from fixture import TOP, ZENDRY, write, write_project

COLOURS = '96'  # enough for a window, and a quarter of the bytes

HELLO = """#include <iostream>
#include <string>

std::string greeting(const std::string& name)
{
    return "Hello, " + name + "!";
}

int main()
{
    std::cout << greeting("world") << std::endl;
    return 0;
}
"""
SHAPES = """#pragma once

class Shape
{
public:
    double area() const;
    void grow(double factor);

private:
    double width = 1, height = 1;
};
"""
SHAPES_SOURCE = """#include "shapes.h"

double Shape::area() const
{
    return width * height;
}

void Shape::grow(double factor)
{
    width *= factor;
    height *= factor;
}
"""


class Guide:
    """A started program with a project of three files; each picture has its own."""

    def __init__(self, desktop, main=HELLO):
        self.desktop = desktop
        folder = tempfile.mkdtemp(dir=desktop.folder)
        write(os.path.join(folder, 'hello', 'shapes.h'), SHAPES)
        write(os.path.join(folder, 'hello', 'shapes.cpp'), SHAPES_SOURCE)
        self.source = write(os.path.join(folder, 'hello', 'hello.cpp'), main)
        self.project = write_project(os.path.join(folder, 'hello', 'hello.zpj'), ['hello.cpp', 'shapes.cpp'],
                                     ['shapes.h'])

    def start(self, *arguments):
        self.window = self.desktop.start([ZENDRY, *arguments])
        self.window.wait_for_main()
        self.window.wait_quiet()
        return self.window

    def open(self):
        window = self.start(self.project, self.source)
        window.wait_for_title('hello.cpp')
        window.wait_quiet()
        return window

    def wait_for_still_picture(self):
        """Waits until the window has looked alike for two seconds, but for the caret."""
        seen = []

        def is_still():
            time.sleep(0.5)
            seen.append(self.desktop.ask('sh', '-c', f'import -window {self.window.main} -resize 25% ppm:- | md5sum'))
            return len(seen) > 8 and len(set(seen[-4:])) <= 2
        wait_until(is_still, 'a picture that stays')

    def keep(self, name, window=None, quiet=True):
        """Keeps a picture of a window, with few colours."""
        if quiet:
            self.window.wait_quiet()
        path = os.path.join(TOP, 'docs', 'pictures', f'guide-{name}.png')
        self.desktop.picture(path, window or self.window.main)
        subprocess.run(['convert', path, '+dither', '-colors', COLOURS, '-strip', f'PNG8:{path}'], check=True)
        print(f'{path}: {os.path.getsize(path)} bytes')

    def end(self):
        self.window.process.kill()
        self.window.process.wait()

    def start_page(self):
        self.start()
        self.keep('start')

    def errors(self):
        window = self.open()
        window.key('F7')
        window.wait_for_message()
        window.key('Return')
        self.keep('errors')

    def debug(self):
        window = self.open()
        window.key('F7')
        window.wait_quiet()
        window.key('ctrl+g')
        window.wait_for_message()
        window.type('6')
        window.key('Return')
        window.wait_quiet()
        window.key('F9', 'F5')
        # gdb and the program stay, so the window is never quiet: it is done when the stop has been said.
        wait_until(lambda: children(window.process.pid), 'gdb')
        self.wait_for_still_picture()
        self.keep('debug', quiet=False)

    def search(self):
        window = self.open()
        window.key('ctrl+shift+f')
        window.wait_for_message()
        window.type('width')
        window.key('Return')
        window.wait_quiet()
        window.key('F4')
        self.keep('search')

    def new_project(self, name, *keys):
        """The dialog "New project" after these keys and texts in lower case; its first field is that of the name."""
        window = self.start()
        window.key('alt+f', *['Down'] * 3, 'Return')
        window.wait_for_message()
        for key in keys:
            window.wait_quiet()
            window.type(key) if key.islower() else window.key(key)
        self.keep(name, window.wait_for_window(besides=[window.main]))

    def import_dialog(self):
        """The page "From files" with a folder of sources."""
        folder = os.path.dirname(self.project)
        os.remove(self.project)
        write(os.path.join(folder, 'tests', 'shapes_test.cpp'), '#include "../shapes.h"\n\nint main() {}\n')
        self.new_project('import', 'Tab', *['Right'] * 4, 'Tab', folder, 'Tab')

    def dialog(self, name, *keys, in_it=()):
        """A dialog that keys of the main window open, after more keys in it."""
        window = self.open()
        window.key(*keys)
        dialog = window.wait_for_window(besides=[window.main])
        for key in in_it:
            window.wait_quiet()
            window.key(key)
        self.keep(name, dialog)


def main():
    pictures = {
        'start': Guide.start_page,
        'errors': Guide.errors,
        'search': Guide.search,
        'debug': Guide.debug,
        'browse': lambda guide: guide.dialog('browse', 'ctrl+F12'),
        'options': lambda guide: guide.dialog('options', 'alt+t', 'Up', 'Return'),
        'more-options': lambda guide: guide.dialog('more-options', 'alt+t', 'Up', 'Return',
                                                     in_it=['Right']),
        'new-form': lambda guide: guide.new_project('new-form', 'card', 'Tab', 'Right'),
        'import': Guide.import_dialog,
        'preview': lambda guide: guide.dialog('preview', 'alt+f', 'Down', *['Down'] * 6, 'Return'),
    }
    wanted = sys.argv[1:] or list(pictures)
    for name in wanted:
        with Desktop() as desktop:
            guide = Guide(desktop, HELLO.replace('greeting("world")', 'greting("world")') if name == 'errors' else HELLO)
            pictures[name](guide)
            guide.end()


main()
