#!/usr/bin/env python3
"""The profile folder is a wish: without it, or where it can't be written, the program works."""
import os
import unittest

from desktop import wait_until
from fixture import ZendryTest, run, write

NOBODY = ['setpriv', '--reuid=65534', '--regid=65534', '--clear-groups']


class Homes(ZendryTest):
    def build_and_close(self, home, prefix=()):
        """A build by keys with this home; answers the picture's moment before the window closes."""
        project = self.demo()
        folder = os.path.dirname(project)
        if prefix:
            os.chmod(self.folder, 0o755)
            run('chown', '-R', '65534:65534', folder)
        program = os.path.join(folder, 'out-rel', 'console.exe')
        window = self.start(project, prefix=prefix, HOME=home)
        window.key('F7')
        wait_until(lambda: os.path.exists(program), 'the program')
        window.wait_quiet()
        self.picture(self._testMethodName)
        self.assertEqual(window.close(), 0)
        self.assertEqual(run(program).returncode, 0)

    def test_home_that_takes_no_folder(self):
        self.build_and_close('/proc')

    def test_home_that_is_missing(self):
        self.build_and_close(os.path.join(self.folder, 'nowhere'))
        self.assertFalse(os.path.exists(os.path.join(self.folder, 'nowhere')))

    def test_home_that_is_a_file(self):
        self.build_and_close(write(os.path.join(self.folder, 'file'), ''))

    def test_file_in_the_place_of_the_settings_folder(self):
        place = write(os.path.join(self.desktop.home, '.zendry'), 'mine')
        self.build_and_close(self.desktop.home)
        self.assertEqual(os.path.getsize(place), 4)

    def test_settings_that_are_a_folder(self):
        os.makedirs(self.ini)
        self.build_and_close(self.desktop.home)
        self.assertTrue(os.path.isdir(self.ini))

    @unittest.skipIf(os.geteuid() != 0, 'needs root, to become a user without a home')
    def test_home_unset_for_a_user_without_one(self):
        self.build_and_close(None, NOBODY)

    @unittest.skipIf(os.geteuid() != 0, 'needs root, to become a user who may not write')
    def test_home_of_somebody_else(self):
        os.chmod(self.desktop.home, 0o755)
        self.build_and_close(self.desktop.home, NOBODY)
        self.assertEqual(os.listdir(self.desktop.home), [])


if __name__ == '__main__':
    unittest.main(verbosity=2)
