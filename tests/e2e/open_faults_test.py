#!/usr/bin/env python3
"""Opening what can't be opened, in the program's window: reads that fail, files that vanish or shrink meanwhile, pipes."""
import os
import unittest

from desktop import wait_until
from fixture import ZENDRY, ZendryTest, read, write

CHUNK = 128 * 1024  # as much as is read in one go
TEXT = 'int a;\n' * 60_000  # some chunks


class OpenFaults(ZendryTest):
    def start_with(self, *faults):
        """Starts with a file whose calls are changed: "openat:error=ENOENT:when=1"."""
        self.path = write(os.path.join(self.folder, 'a.cpp'), TEXT)
        arguments = [word for fault in faults for word in ('-e', 'inject=' + fault)]
        calls = ','.join(fault.partition(':')[0] for fault in faults)
        self.window = self.desktop.start(['strace', '-D', '-qq', '-o', os.path.join(self.folder, 'trace'), '-P', self.path,
                                          '-e', 'trace=' + calls, *arguments, ZENDRY, self.path])

    def expect_refused(self):
        """The failure is said; the window comes without the file, and takes the next one."""
        box = wait_until(lambda: [window for window, title in self.window.titles().items() if title == 'Error'],
                         'the message')[0]
        wait_until(lambda: self.desktop.ask('xdotool', 'getactivewindow').strip() == box, 'the active message')
        self.window.key('Return')
        wait_until(lambda: list(self.window.titles().values()) == ['Zendry'], 'the window without a file')
        self.window.wait_for_main()
        self.assertEqual(self.window.close(), 0)
        self.assertEqual(read(self.path), TEXT)

    def test_file_that_vanishes_before_it_is_opened(self):
        self.start_with('openat:error=ENOENT')
        self.expect_refused()

    def test_file_that_may_not_be_read(self):
        self.start_with('openat:error=EACCES')
        self.expect_refused()

    def test_disk_that_fails_at_the_first_read(self):
        self.start_with('read:error=EIO:when=1+')
        self.expect_refused()

    def test_disk_that_fails_at_a_later_read(self):
        self.start_with('read:error=EIO:when=2+')
        self.expect_refused()

    def test_file_that_shrinks_while_it_is_read(self):
        """What was there when it was read is what is shown; nothing is written unasked."""
        self.start_with('read:retval=0:when=2+')
        self.window.wait_for_main()
        self.window.wait_quiet()
        self.assertIn(self.path, self.window.title())
        self.assertEqual(read(self.path), TEXT)
        self.window.key('ctrl+End', 'x', 'ctrl+s')
        wait_until(lambda: read(self.path) == TEXT[:CHUNK] + 'x', 'what was read is saved, and a letter')
        self.assertEqual(self.window.close(), 0)

    def test_pipe_that_nobody_writes_to(self):
        self.path = os.path.join(self.folder, 'a.cpp')
        os.mkfifo(self.path)
        self.window = self.desktop.start([ZENDRY, self.path])
        wait_until(lambda: 'Error' in self.window.titles().values(), 'the message')
        self.window.key('Return')
        wait_until(lambda: list(self.window.titles().values()) == ['Zendry'], 'the window without a file')
        self.window.wait_for_main()
        self.assertEqual(self.window.close(), 0)


if __name__ == '__main__':
    unittest.main(verbosity=2)
