#!/usr/bin/env python3
"""What is there again at the next start."""
import os
import re
import signal
import unittest

from desktop import wait_until
from fixture import ZendryTest, session, settings, write, write_project


class Session(ZendryTest):
    def geometry(self, window):
        text = self.desktop.ask('xdotool', 'getwindowgeometry', '--shell', window.main)
        return {key: int(value) for key, value in re.findall(r'(\w+)=(-?\d+)', text) if key in ('WIDTH', 'HEIGHT')}

    # 70 percent of the virtual screen of 1280 by 960, as the installation says.
    FIRST_SIZE = r'^-?\d+;-?\d+;896;672;$'

    def test_first_start_has_the_size_that_the_installation_says(self):
        window = self.start()
        self.assertEqual(window.close(), 0)
        kept = settings(self.ini)
        self.assertRegex(kept['Bounds'], self.FIRST_SIZE)
        self.assertEqual(kept['ed-usemono'], '1')

    def test_window_files_and_mode_come_back(self):
        project = self.demo()
        session_file = project.replace('.zpj', '.zend')
        write(session_file, '<state>\n\t<mode opt="dbg"/>\n\t<open>\n\t\t<file name="main.cpp" id="7"/>\n'
              '\t\t<file name="report.h" id="2"/>\n\t</open>\n</state>\n')
        window = self.start(project)
        self.desktop.ask('xdotool', 'windowsize', '--sync', window.main, '1000', '700')
        self.desktop.ask('xdotool', 'windowmove', '--sync', window.main, '60', '80')
        wait_until(lambda: self.geometry(window) == {'WIDTH': 1000, 'HEIGHT': 700}, 'the new size')
        window.wait_quiet()
        self.assertEqual(window.close(), 0)
        kept, settled = session(session_file), settings(self.ini)
        self.assertEqual(kept['mode'], 'dbg')
        self.assertEqual(kept['files'], [('main.cpp', '7'), ('report.h', '2')])
        self.assertRegex(settled['Bounds'], r';1000;\d+;$')
        self.assertEqual(settled['projA'], project)

        again = self.start(project)
        self.assertEqual(self.geometry(again), {'WIDTH': 1000, 'HEIGHT': 700})
        self.picture('second-start')
        self.assertEqual(again.close(), 0)
        self.assertEqual(session(session_file), kept)
        self.assertEqual(settings(self.ini), settled)

    def is_maximised(self, window):
        return 'MAXIMIZED_VERT' in self.desktop.ask('xprop', '-id', window.main, '_NET_WM_STATE')

    def toggle_maximised(self, window, key):
        """By the window manager's menu of the window."""
        before = self.is_maximised(window)
        self.desktop.ask('xdotool', 'key', 'alt+space', key)
        wait_until(lambda: self.is_maximised(window) != before, 'the window is maximised, or no longer')
        window.wait_quiet()

    def test_maximised_window_is_so_again_and_knows_its_size(self):
        window = self.start()
        size = self.geometry(window)
        self.toggle_maximised(window, 'x')
        self.desktop.minimise(window.main)
        self.desktop.ask('xdotool', 'windowactivate', window.main)
        wait_until(lambda: self.desktop.ask('xdotool', 'getactivewindow').strip() == window.main, 'the window is back')
        self.assertTrue(self.is_maximised(window))
        self.assertEqual(window.close(), 0)

        again = self.start()
        wait_until(lambda: self.is_maximised(again), 'the window is maximised')
        self.picture('second-start-maximised')
        self.toggle_maximised(again, 'e')
        wait_until(lambda: self.geometry(again) == size, 'the size that it had')
        self.assertEqual(again.close(), 0)
        self.assertFalse(self.is_maximised(self.start()))

    def test_window_that_ends_minimised_is_shown_again_in_its_size(self):
        window = self.start()
        size = self.geometry(window)
        self.desktop.minimise(window.main)
        window.wait_quiet()
        window.process.send_signal(signal.SIGTERM)
        window.process.wait(20)
        again = self.start()  # is active, so not minimised
        self.assertEqual(self.geometry(again), size)
        self.assertEqual(again.close(), 0)

    def test_settings_that_mean_nothing_are_passed_over(self):
        write(self.ini, 'Bounds=huge\nno equals sign\n\x01\x02=\x03\nown-key=kept\nsplit-h=-5\n')
        window = self.start()
        self.assertEqual(window.close(), 0)
        kept = settings(self.ini)
        self.assertEqual(kept['own-key'], 'kept')
        self.assertRegex(kept['Bounds'], self.FIRST_SIZE)

    def test_every_recognised_argument_is_opened(self):
        project = self.demo()
        window = self.start(os.path.join(os.path.dirname(project), 'main.cpp'), project, 'notes.txt')
        self.assertEqual(window.close(), 0)
        self.assertEqual(settings(self.ini)['projA'], project)
        self.assertEqual(session(project.replace('.zpj', '.zend'))['files'], [('main.cpp', '1')])

    def test_signals_keep_what_a_normal_end_keeps(self):
        for number in (signal.SIGTERM, signal.SIGHUP):
            with self.subTest(number):
                folder = os.path.join(self.folder, str(number))
                project = write_project(os.path.join(folder, 'p.zpj'), ['a.cpp'])
                source = write(os.path.join(folder, 'a.cpp'), 'int a;\n')
                write(os.path.join(folder, 'p.zend'), '<state>\n<file name="a.cpp" id="1"/>\n</state>\n')
                window = self.start(project)
                window.wait_for_title('a.cpp')
                window.wait_quiet()
                window.type('x')
                window.wait_quiet()
                window.process.send_signal(number)
                self.assertEqual(window.process.wait(20), -number)
                self.assertEqual(session(os.path.join(folder, 'p.zend'))['active'], source)
                self.assertIn('Bounds', settings(self.ini))
                self.assertIn(source, settings(self.ini).values())
                self.assertIn(project, settings(self.ini).values())
                rescue = os.path.join(self.desktop.home, '.zendry', 'rescue')
                texts = [name for name in os.listdir(rescue) if name.startswith('text-')]
                self.assertTrue(texts)
                for name in os.listdir(rescue):
                    os.remove(os.path.join(rescue, name))


if __name__ == '__main__':
    unittest.main(verbosity=2)
