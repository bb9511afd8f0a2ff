#!/usr/bin/env python3
"""A large source in the real program: its first screen comes before its last byte, it takes little more memory than
its bytes, and what is typed at both ends is what the file has after the save. build/shots/large-file.png is the
window."""
import os
import unittest

from desktop import wait_until
from fixture import ZendryTest, read, write

LINE = 'int Number(int n) { return n + 1; }\n'
SIZE = 24 << 20


class LargeFile(ZendryTest):
    def anonymous(self):
        """Bytes of the process that belong to no file."""
        with open(f'/proc/{self.window.process.pid}/smaps_rollup') as file:
            return next(int(line.split()[1]) * 1024 for line in file if line.startswith('Anonymous:'))

    def test_it_is_shown_typed_into_and_saved(self):
        text = LINE * (SIZE // len(LINE))
        path = write(os.path.join(self.folder, 'large.cpp'), text)
        self.window = self.start(path)
        self.window.wait_for_title('large.cpp')
        self.window.wait_quiet()
        self.picture('large-file')
        if not self.is_sanitized():
            # The text, and the table of its lines; no bytes for the styles of what nobody has seen.
            self.assertLess(self.anonymous(), SIZE * 1.6)
        self.window.type('x')
        self.window.key('ctrl+End')
        self.window.type('y')
        before = os.stat(path).st_ino
        self.window.key('ctrl+s')
        wait_until(lambda: os.stat(path).st_ino != before, 'the file is written')
        self.assertEqual(read(path), 'x' + text + 'y')
        self.assertEqual(self.window.close(), 0)

    def is_sanitized(self):
        with open(f'/proc/{self.window.process.pid}/maps') as file:
            return 'libasan' in file.read()


if __name__ == '__main__':
    unittest.main()
