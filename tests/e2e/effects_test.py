#!/usr/bin/env python3
"""What opening and closing a project does to the machine: nothing but its session and the settings."""
import os
import re
import shutil
import unittest

from fixture import ZendryTest, write

CALLS = 'execve,execveat,connect,open,openat,creat,rename,renameat,renameat2,unlink,unlinkat,mkdir,mkdirat,' \
        'link,linkat,symlink,symlinkat,truncate,chmod,fchmodat'
# A name as strace prints it, behind the folder that its descriptor stands for: AT_FDCWD</a>, "b"
NAME = re.compile(r'(?:(?:AT_FDCWD|\d+)<([^>]*)>, )?"([^"]*)"')
OPEN = re.compile(r'\b(?:open|openat|creat)\(')
WRITING = re.compile(r'O_(WRONLY|RDWR|CREAT|TRUNC|APPEND)')
CHANGE = re.compile(r'\b(?:rename\w*|unlink\w*|mkdir\w*|link\w*|symlink\w*|truncate|f?chmod\w*)\(')


class Effects(ZendryTest):
    def trace_of_opening(self, **environment):
        """The system calls of a session that opens the demo project and closes it again."""
        project = self.demo()
        log = os.path.join(self.folder, 'trace')
        window = self.start(project, prefix=['strace', '-f', '-y', '-qq', '-s', '400', '-e', 'trace=' + CALLS, '-o', log],
                            **environment)
        self.assertEqual(window.close(), 0)
        with open(log, errors='replace') as file:
            return os.path.dirname(project), file.read().splitlines()

    def names_changed(self, lines):
        """Full names of files that were opened for writing, and of what else was changed in a folder."""
        for line in lines:
            if line.endswith('= 0') and CHANGE.search(line) or OPEN.search(line) and WRITING.search(line):
                for folder, name in NAME.findall(line):
                    yield os.path.join(folder, name)

    def test_opening_and_closing_touches_session_and_settings_only(self):
        folder, lines = self.trace_of_opening()
        with self.subTest('no process is started'):
            started = [line for line in lines if 'execve' in line and line.endswith('= 0')]
            self.assertEqual(len(started), 1, started)
        with self.subTest('no connection but to the screen'):
            elsewhere = [line for line in lines if 'connect(' in line and '.X11-unix' not in line]
            self.assertEqual(elsewhere, [])
        with self.subTest('no file is written but session and settings'):
            allowed = (os.path.join(folder, 'console.zend'), os.path.join(folder, '.zendry-save-'),
                       os.path.join(self.desktop.home, '.zendry'), '/dev/', '/proc/self/', '/memfd:')
            changed = list(self.names_changed(lines))
            self.assertIn(os.path.join(folder, 'console.zend'), changed)
            self.assertEqual([name for name in changed if not name.startswith(allowed)], [])

    def test_no_program_of_the_project_is_run_where_path_leads_into_it(self):
        """The toolkit would start a session bus, where none is named, by the first "dbus-launch" on PATH."""
        for address in (None, '', 'autolaunch:', 'unix:path=/nowhere/bus;autolaunch:', 'unix:path=/nowhere/bus'):
            with self.subTest(address=address):
                shutil.rmtree(os.path.join(self.folder, 'console'), ignore_errors=True)
                bait = write(os.path.join(self.folder, 'bait', 'dbus-launch'), f'#!/bin/sh\ntouch {self.folder}/run-it\n')
                os.chmod(bait, 0o755)
                before = os.getcwd()
                os.chdir(os.path.dirname(bait))
                try:
                    _, lines = self.trace_of_opening(DBUS_SESSION_BUS_ADDRESS=address, PATH='.:' + os.environ['PATH'])
                finally:
                    os.chdir(before)
                started = [line for line in lines if 'execve' in line and line.endswith('= 0')]
                self.assertEqual(len(started), 1, started)
                self.assertFalse(os.path.exists(os.path.join(self.folder, 'run-it')))

    def test_project_folder_holds_one_file_more(self):
        project = self.demo()
        before = set(os.listdir(os.path.dirname(project)))
        window = self.start(project)
        self.assertEqual(window.close(), 0)
        self.assertEqual(set(os.listdir(os.path.dirname(project))) - before, {'console.zend'})
        self.assertEqual(set(os.listdir(self.desktop.home)), {'.zendry'})


if __name__ == '__main__':
    unittest.main(verbosity=2)
