#!/usr/bin/env python3
"""Saves that fail in the program's window: each system call of a save, a full disk, a killed program."""
import os
import random
import re
import time
import unittest

from desktop import PATIENCE, wait_until
from fixture import ZENDRY, ZendryTest, read, run, write
from injection import Injection, Tracing, calls_in

BASE = '//\nint a;\n' + '// a line that makes the file longer\n' * 100
RANDOM_NAME = re.compile(r'(save-|old-)[0-9a-f]{16}')
# A descriptor with its path, a name in its folder, or a name alone.
PLACE = re.compile(r'(?:(?:AT_FDCWD|\d+)<(/[^>]*)>(?:, )?)?(?:"([^"]*)")?')
ERRORS = ('ENOSPC', 'EIO', 'EACCES')
IMPORTANT = ('openat', 'write', 'fsync', 'renameat')


def what_of(name, rest):
    """The name of the file that a call works on, without its random part; empty for something else."""
    match = PLACE.match(rest)
    if not match:
        return ''
    folder, relative = match.group(1) or '/', match.group(2) or ''
    path = os.path.join(folder, relative) if name.endswith('at') or folder == '/' else folder
    return RANDOM_NAME.sub(r'\1', os.path.basename(os.path.normpath(path)))


class SaveFaults(ZendryTest):
    def open(self, *names):
        """A window with a file that has these names in one folder; the caret behind the "//"."""
        self.work = os.path.join(self.folder, 'work')
        self.path = write(os.path.join(self.work, names[0]), BASE)
        for name in names[1:]:
            os.link(self.path, os.path.join(self.work, name))
        os.chmod(self.path, 0o640)
        self.names = set(names)
        self.log = os.path.join(self.folder, 'trace')
        self.window = self.start(self.path)
        self.window.wait_quiet()
        self.window.key('End')
        self.typed = ''

    def whole(self, *typed):
        """Whether the file is the last one saved well with one of these behind the "//"."""
        text = read(self.path)
        return any(text == '//' + self.typed + more + BASE[2:] for more in typed)

    def keys(self, *names):
        """Presses keys in a row, faster than one by one."""
        self.desktop.ask('xdotool', 'key', *names)

    def box_is_open(self):
        return self.desktop.ask('xdotool', 'getactivewindow').strip() not in ('', self.window.main)

    def dismiss(self):
        """Accepts the box that is open, and those that come after it: the second save waits behind the first one's."""
        answered = set()

        def closed():
            active = self.desktop.ask('xdotool', 'getactivewindow').strip()
            if active not in ('', self.window.main) and active not in answered:
                answered.add(active)
                self.window.key('Return')
            return active == self.window.main
        wait_until(closed, 'the boxes are closed')

    def save_twice(self, call, what, number, path=''):
        """Saves two changes in a row while a call is changed. Answers what was hit."""
        with Injection(self.window.process.pid, call, what, number, self.log, path) as injection:
            self.keys('1', 'ctrl+s', '2', 'ctrl+s')
            wait_until(lambda: self.whole('12') or self.box_is_open(), f'{call} {number} {what}: saved or said')
        self.assertTrue(self.whole('', '1', '12'), f'{call} {number} {what}')
        if self.box_is_open():
            self.dismiss()
        return injection.hits()

    def save_well(self, when):
        """Saves what the window holds and looks at everything around the file."""
        saved = [start + '3' * count for start in ('', '1', '12') for count in (1, 2, 3)]
        self.keys('3', 'ctrl+s')
        wait_until(lambda: self.whole(*saved) or self.box_is_open(), 'the next save works ' + when)
        while self.box_is_open():  # that of the save before, which came late, or a question after it
            self.dismiss()
            if not self.whole(*saved):
                self.keys('3', 'ctrl+s')
            wait_until(lambda: self.whole(*saved) or self.box_is_open(), 'the next save works ' + when)
        self.typed = read(self.path).split('\n')[0][2:]
        self.assertEqual(set(os.listdir(self.work)), self.names, when)
        status = os.stat(self.path)
        self.assertEqual((status.st_mode & 0o7777, status.st_nlink), (0o640, len(self.names)), when)

    def good_save(self):
        """The calls of one save that works: names with what they work on, in their order."""
        with Tracing(self.window.process.pid, self.log, '-e', 'trace=file,desc,%fstat'):
            self.keys('1', 'ctrl+s')
            wait_until(lambda: self.whole('1'), 'a save')
            # The last thing of a save is a look at the file's new state.
            wait_until(lambda: any('/' + os.path.basename(self.path) + '", {' in rest
                                   for _, rest in self.calls_from('renameat', 'ftruncate')), 'the end of the save')
        self.typed += '1'
        work = {*self.names, 'work', '.zendry-save-', 'rescue'}
        calls = [(name, what_of(name, rest)) for name, rest in calls_in(self.log)]
        return [(name, what) for name, what in calls if what in work or what.startswith('old-')]

    def calls_from(self, *names):
        """The calls traced so far, from the last one of these on."""
        calls = calls_in(self.log)
        last = max((i for i, (name, _) in enumerate(calls) if name in names), default=len(calls))
        return calls[last:]

    def sweep(self, important):
        """Lets each call of a save fail, by its name and its number, until all have been hit: with each error those
        that are important, with one of them the others."""
        calls = self.good_save()
        self.assertGreater(len(calls), 15)
        for turn, name in enumerate(sorted({name for name, _ in calls})):
            for error in ERRORS if name in important else [ERRORS[turn % 3]]:
                targets = [what for call, what in calls if call == name]
                (self.sweep_content if name in ('read', 'write') else self.sweep_call)(name, error, targets)

    def sweep_call(self, name, error, targets):
        """The calls of one name, one after the other. Others of that name, the toolkit's, may lie between."""
        for number in range(1, 60):
            hits = self.save_twice(name, 'error=' + error, number)
            self.save_well(f'after {name} {number} {error}')
            for what in {what_of(name, hit) for hit in hits} & set(targets):
                targets.remove(what)
            if not targets or not hits:
                break
        self.assertEqual(targets, [], f'{name} was never made to fail there')

    def sweep_content(self, name, error, targets):
        """Reads and writes. The toolkit has some of its own, now more and now fewer, to wake itself up: those of
        a file with a fixed name are told from them by it; where the name is random, all are made to fail."""
        own = os.path.basename(self.path)
        plan = [(number + 1, self.path, own) for number in range(targets.count(own))]
        plan += [('1+', '', what) for what in set(targets) - {own}]
        for number, path, what in plan:
            hits = self.save_twice(name, 'error=' + error, number, path)
            self.save_well(f'after {name} {number} {error}')
            self.assertIn(what, {what_of(name, hit) for hit in hits})

    def test_each_call_of_a_plain_file(self):
        self.open('a.cpp')
        self.sweep(IMPORTANT)
        self.assertEqual(self.window.close(), 0)

    def test_each_call_of_a_file_with_two_names(self):
        self.open('a.cpp', 'b.cpp')
        self.sweep(())
        self.assertEqual(self.window.close(), 0)


class KilledSaves(ZendryTest):
    """The program is killed somewhere in a save of some megabytes. How 200 moments end is tested without a window;
    these few have all of it: the file, what the next start offers, and what it leaves."""

    LINES = '// ' + 'a long line ' * 1000 + '\n'

    def setUp(self):
        super().setUp()
        self.random = random.Random(5)
        self.work = os.path.join(self.folder, 'work')
        self.path = write(os.path.join(self.work, 'a.cpp'), '//\n' + self.LINES * 500)
        self.rescue = os.path.join(self.desktop.home, '.zendry', 'rescue')

    def written(self):
        """Bytes of the new file that a save is writing; -1 when there is none."""
        for name in os.listdir(self.work):
            if name.startswith('.zendry-save-'):
                try:
                    return os.path.getsize(os.path.join(self.work, name))
                except OSError:  # it has its last name by now
                    pass
        return -1

    def kill_in_a_save(self, part):
        """Kills the program when a save has written that part of the text; from 1 on, when the file is the new one."""
        before, size = os.stat(self.path).st_ino, part * os.path.getsize(self.path)
        # The new text has the file's old name: it is killed there or shortly after.
        self.window.key('ctrl+s')
        end = time.monotonic() + PATIENCE
        while os.stat(self.path).st_ino == before and not (part < 1 and self.written() >= size):
            self.assertLess(time.monotonic(), end, 'the save never came so far')
        self.window.process.kill()
        self.window.process.wait()

    def copies(self):
        """The copies of unsaved texts."""
        names = os.listdir(self.rescue) if os.path.isdir(self.rescue) else []
        return [name for name in names if name.startswith('text-')]

    def answer(self, key, what):
        asked = wait_until(lambda: [window for window, title in self.window.titles().items()
                                    if title == 'Confirmation'], what)[0]
        wait_until(lambda: self.desktop.ask('xdotool', 'getactivewindow').strip() == asked, what + ' is active')
        self.window.key(key)
        wait_until(lambda: asked not in self.window.titles(), what + ' is answered')

    def start_and_take_the_copy(self, file_is_newer):
        self.window = self.desktop.start([ZENDRY, self.path])
        self.answer('alt+y', 'the question for the unsaved text')
        self.window.wait_for_main()
        if file_is_newer:
            self.answer('alt+n', 'the question for the newer file')
        self.window.wait_quiet()

    def test_text_is_whole_and_offered_again(self):
        text = read(self.path)
        for part in [0, 1] + [self.random.random() for _ in range(4)]:
            text = self.kill_and_start_again(text, part)

    def kill_and_start_again(self, text, part):
        new = text.replace('\n', '1' * 250 + '\n', 1)
        self.window = self.start(self.path)
        self.window.wait_quiet()
        self.desktop.ask('xdotool', 'key', 'End')
        self.desktop.ask('xdotool', 'type', '--delay', '1', '1' * 250)
        wait_until(self.copies, 'the copy for a bad end')
        self.window.wait_quiet()
        self.kill_in_a_save(part)
        after = read(self.path)
        self.assertTrue(after in (text, new), 'neither the old nor the new text')

        is_offered, file_is_newer = bool(self.copies()), after == new
        if is_offered:
            self.start_and_take_the_copy(file_is_newer)
        else:
            self.assertTrue(file_is_newer, 'killed behind the end of the save')
            self.window = self.start(self.path)
            self.window.wait_quiet()
        self.window.key('End', 'x', 'ctrl+s')
        if is_offered and file_is_newer:
            self.answer('alt+y', 'the question whether the newer file is replaced')
        wait_until(lambda: read(self.path) != after, 'the text is saved')
        saved = read(self.path)
        # The copy may be behind by 200 letters.
        kept = saved.index('\n') - text.index('\n') - 1
        self.assertIn(kept, range(50, 251))
        self.assertEqual(saved.partition('\n')[2], text.partition('\n')[2])
        self.assertEqual(os.listdir(self.work), ['a.cpp'])
        self.assertEqual(self.window.close(), 0)
        self.assertEqual(self.copies(), [])
        return saved


class FullDisk(ZendryTest):
    """A window that sees a small disk in the place of a folder."""

    TEXT = '//\n' + '// a line that makes the file longer\n' * 3000

    def start_on_small_disk(self):
        folder = os.path.join(self.folder, 'disk')
        os.mkdir(folder)
        self.path = os.path.join(folder, 'a.cpp')
        source = write(os.path.join(self.folder, 'source'), self.TEXT)
        script = ('mount -t tmpfs -o size=300k tmpfs "$0" && cp "$1" "$0/a.cpp" && head -c 120000 /dev/zero >"$0/large" '
                  '&& shift && exec "$@"')
        world = ['unshare', '--mount'] if os.getuid() == 0 else ['unshare', '--map-root-user', '--mount']
        if run(*world, 'mount', '-t', 'tmpfs', 'tmpfs', folder).returncode:
            self.skipTest('no disk can be mounted here')
        self.window = self.start(self.path, prefix=[*world, 'sh', '-c', script, folder, source])
        self.seen = f'/proc/{self.window.process.pid}/root{folder}'
        self.window.wait_quiet()

    def test_old_text_stays_and_the_failure_is_said(self):
        self.start_on_small_disk()
        self.desktop.ask('xdotool', 'key', 'End', '1', 'ctrl+s')
        self.assertEqual(self.window.wait_for_message(), 'Error')
        self.picture('full-disk')
        self.window.key('Return')
        wait_until(lambda: len(self.window.titles()) == 1, 'the box is closed')
        self.assertEqual(read(os.path.join(self.seen, 'a.cpp')), self.TEXT)
        self.assertEqual(sorted(os.listdir(self.seen)), ['a.cpp', 'large'])
        with self.subTest('the tab is marked: closing it asks'):
            self.window.key('ctrl+F4')
            self.assertEqual(self.window.wait_for_message(), 'Confirmation')
            self.window.key('alt+y')
            wait_until(lambda: 'Error' in self.window.titles().values(), 'the save fails again')
            self.window.key('Return')
            wait_until(lambda: len(self.window.titles()) == 1, 'the box is closed')
        with self.subTest('with room it is saved'):
            os.remove(os.path.join(self.seen, 'large'))
            self.window.key('ctrl+s')
            wait_until(lambda: read(os.path.join(self.seen, 'a.cpp')) == '//1' + self.TEXT[2:], 'the file is saved')
            self.assertEqual(os.listdir(self.seen), ['a.cpp'])
        self.assertEqual(self.window.close(), 0)


if __name__ == '__main__':
    unittest.main(verbosity=2)
