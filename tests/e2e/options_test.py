#!/usr/bin/env python3
"""Options of a project by keys alone: the next build uses them."""
import os
import unittest

from desktop import wait_until
from fixture import ZendryTest, read, run, settings, write, write_project

SOURCE = '''#ifndef CODE
#define CODE 1
#endif

int main() { return CODE; }
'''


class Options(ZendryTest):
    def make(self, window, code):
        """Presses the key of "&Make" and waits for a new program, which must have this exit status."""
        def time():
            return os.stat(self.program).st_mtime_ns if os.path.exists(self.program) else 0
        before = time()
        window.key('F7')
        wait_until(lambda: time() != before, 'a new program')
        window.wait_quiet()
        self.assertEqual(run(self.program).returncode, code)

    def test_changed_switches_are_those_of_the_next_build(self):
        folder = os.path.join(self.folder, 'p')
        write(os.path.join(folder, 'main.cpp'), SOURCE)
        project = write_project(os.path.join(folder, 'p.zpj'), ['main.cpp'])
        self.program = os.path.join(folder, 'out-rel', 'p.exe')
        window = self.start(project)
        self.make(window, 1)
        window.key('alt+p', 'p')
        dialog = window.wait_for_window(besides=[window.main])
        self.assertEqual(window.titles()[dialog], 'Project options')
        window.key('Tab', 'Tab', 'Tab', 'Tab', 'End')  # past type, library set and output name, to the include path
        window.type(' -DCODE=7')
        self.picture('project-options')
        window.key('Return')
        wait_until(lambda: '-DCODE=7' in read(project), 'the project file')
        wait_until(lambda: len(window.titles()) == 1, 'the dialog is gone')
        self.make(window, 7)
        window.key('alt+t', 'Up', 'Return')  # the last row of "&Tools"
        dialog = window.wait_for_window(besides=[window.main])
        self.assertEqual(window.titles()[dialog], 'Ide Options')
        self.picture('ide-options')
        window.key('Return')
        wait_until(lambda: os.path.exists(self.ini) and 'ed-tabsize' in settings(self.ini), 'the settings')
        wait_until(lambda: len(window.titles()) == 1, 'the dialog is gone')
        self.assertEqual(window.close(), 0)


if __name__ == '__main__':
    unittest.main()
