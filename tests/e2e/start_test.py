#!/usr/bin/env python3
"""What the next start does after one that was killed while it opened a file."""
import os
import signal
import unittest

from desktop import wait_until
from fixture import ZENDRY, ZendryTest, read, session, settings, write, write_project

SENTENCE = 'Zendry ended the last time while it opened {}, which is left closed this time.'


class Start(ZendryTest):
    def setUp(self):
        super().setUp()
        self.rescue = os.path.join(self.desktop.home, '.zendry', 'rescue')
        self.project = write_project(os.path.join(self.folder, 'p', 'p.zpj'), ['main.cpp'])
        self.main = write(os.path.join(self.folder, 'p', 'main.cpp'), 'int main() {}\n')
        self.bad = write(os.path.join(self.folder, 'p', 'bad.txt'), 'what kills the program\n')
        self.session = self.project.replace('.zpj', '.zend')
        write(self.session, '<state>\n\t<mode opt="rel"/>\n\t<open>\n\t\t<file name="bad.txt" id="1"/>\n'
              '\t\t<file name="main.cpp" id="1"/>\n\t</open>\n</state>\n')

    def marks(self):
        return [name for name in os.listdir(self.rescue) if name.startswith('start-')]

    def start_that_dies_over(self, path):
        """A start that is killed by the system call that opens the file."""
        strace = ['strace', '-f', '-qq', '-o', os.devnull, '-P', path, '-e', 'trace=openat',
                  '-e', 'inject=openat:signal=KILL']
        process = self.desktop.start([*strace, ZENDRY, self.project]).process
        self.assertIn(process.wait(60), (-signal.SIGKILL, 128 + signal.SIGKILL))

    def output_of(self, window):
        """What the Output panel says, put by way of the clipboard into the file in front."""
        self.desktop.ask('xdotool', 'mousemove', '--window', window.main, '400', '600', 'click', '1')
        window.key('ctrl+a', 'ctrl+c')
        self.desktop.ask('xdotool', 'mousemove', '--window', window.main, '500', '300', 'click', '1')
        before = read(self.main)
        window.key('ctrl+a', 'ctrl+v', 'ctrl+s')
        wait_until(lambda: read(self.main) != before, 'the file is saved')
        return read(self.main)

    def test_the_file_is_left_closed_once_and_said(self):
        listed = session(self.session)['files']
        self.start_that_dies_over(self.bad)
        self.assertEqual(len(self.marks()), 1)
        self.assertEqual(read(os.path.join(self.rescue, self.marks()[0])), self.bad + '\0')

        window = self.start(self.project)
        window.wait_for_title('main.cpp')
        wait_until(lambda: not self.marks(), 'the start is got past')
        self.picture('left-closed')
        window.wait_quiet()
        self.assertEqual(len(window.titles()), 1, 'no message stands in the way')
        self.assertIn(SENTENCE.format(self.bad), self.output_of(window))
        window.key('ctrl+Next')
        window.wait_quiet()
        self.assertNotIn('bad.txt', window.title())
        self.assertEqual(window.close(), 0)
        self.assertEqual([name for name, _ in session(self.session)['files']], [name for name, _ in listed])
        self.assertIn(self.bad, settings(self.ini).values())

        again = self.start(self.project)
        again.wait_for_title('main.cpp')
        wait_until(lambda: not self.marks(), 'the start is got past')
        again.wait_quiet()
        again.key('ctrl+Prior')
        again.wait_for_title('bad.txt')
        self.assertEqual(again.close(), 0)

    def test_a_program_that_runs_is_not_disturbed(self):
        window = self.start(self.project)
        wait_until(lambda: not self.marks(), 'the start is got past')
        self.start_that_dies_over(self.bad)
        self.assertEqual(len(self.marks()), 1)
        self.assertEqual(window.close(), 0)
        self.assertEqual(len(self.marks()), 1)


if __name__ == '__main__':
    unittest.main(verbosity=2)
