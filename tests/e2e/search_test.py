#!/usr/bin/env python3
"""Find and replace in a project, with sed as the judge of what is on the disk; undone after the program was killed."""
import os
import unittest

from desktop import wait_until
from fixture import ZendryTest, run, write, write_project

SOURCES = {'a.cpp': 'int oldName();\nint main() {\n  return oldName() + oldName();\n}\n',
           'b.cpp': '// oldName, oldNames\r\nint oldName() { return 1; }\r\n',
           'c.cpp': 'int other;\n'}


class Search(ZendryTest):
    def make_project(self):
        self.work = os.path.join(self.folder, 'work')
        for name, text in SOURCES.items():
            write(os.path.join(self.work, name), text)
        return write_project(os.path.join(self.work, 'p.zpj'), SOURCES)

    def on_disk(self):
        contents = {}
        for name in SOURCES:
            with open(os.path.join(self.work, name), newline='') as file:
                contents[name] = file.read()
        return contents

    def dialog(self, window, title, besides=()):
        """Waits for a dialog; answers its id."""
        found = window.wait_for_window(besides=[window.main, *besides])
        self.assertEqual(window.titles()[found], title)
        window.wait_quiet()
        return found

    def shots_of_dialogs(self, window, suffix):
        for key, title, name in (('ctrl+f', 'Find', 'find'), ('ctrl+r', 'Replace', 'replace'),
                                 ('ctrl+shift+f', 'Find In Project', 'find-in-project')):
            window.key(key)
            self.dialog(window, title)
            window.type('oldName')
            window.wait_quiet()
            self.picture(f'search-{name}{suffix}')
            window.key('Escape')
            wait_until(lambda: list(window.titles()) == [window.main], 'the dialog is closed')

    def test_replace_and_undo_after_a_kill(self):
        project = self.make_project()
        before = self.on_disk()
        expected = {name: run('sed', 's/oldName/newName/g', os.path.join(self.work, name)).stdout for name in SOURCES}
        window = self.start(project)
        window.wait_quiet()
        window.key('ctrl+shift+f')
        self.dialog(window, 'Find In Project')
        window.type('oldName')
        window.key('Return')
        window.wait_quiet()
        window.key('F4')
        window.wait_for_title('a.cpp')
        self.picture('search-results')
        window.key('ctrl+w')
        window.key('ctrl+shift+r')
        asking = self.dialog(window, 'Repace in project')
        window.type('oldName')
        window.key('alt+p')
        window.type('newName')
        window.key('Return')
        self.dialog(window, 'Repace in project', besides=[asking])
        self.picture('search-replace-list')
        window.key('Return')
        wait_until(lambda: self.on_disk() != before and window.wait_quiet() is None, 'files are written')
        changed = {name: text.replace('\r\n', '\n') for name, text in self.on_disk().items()}
        self.assertEqual(changed, {name: text.replace('\r\n', '\n') for name, text in expected.items()})
        self.assertEqual(self.on_disk()['b.cpp'].count('\r\n'), 2)
        window.process.kill()
        window.process.wait()
        again = self.start(project)
        again.wait_quiet()
        again.key('alt+t', 'u')
        wait_until(lambda: self.on_disk() == before, 'the old texts are back')
        again.wait_quiet()
        self.assertEqual(again.close(), 0)
        rescue = os.path.join(self.desktop.home, '.zendry', 'rescue')
        self.assertEqual([name for name in os.listdir(rescue) if name.startswith('replace')], [])

    def test_dialogs_at_scale_two(self):
        project = self.make_project()
        window = self.start(project, os.path.join(self.work, 'a.cpp'), QT_SCALE_FACTOR='2')
        window.wait_quiet()
        self.shots_of_dialogs(window, '-2')
        self.assertEqual(window.close(), 0)


if __name__ == '__main__':
    unittest.main(verbosity=2)
