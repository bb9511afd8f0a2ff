#!/usr/bin/env python3
"""The demos of forms, built by Zendry as they are shipped, and run under a window manager."""
import os
import shutil
import unittest

from desktop import wait_until
from fixture import TOP, ZENDRY_MAKE, ZendryTest, run


class DemosTest(ZendryTest):
    def start_demo(self, name, title):
        """Builds a copy of the demo, starts it and waits for its window."""
        folder = os.path.join(self.folder, name)
        shutil.copytree(os.path.join(TOP, 'dist', 'Repos', 'demos', name), folder)
        made = run(ZENDRY_MAKE, os.path.join(folder, f'{name}.zpj'))
        self.assertEqual(made.returncode, 0, made.stdout + made.stderr)
        self.assertIn('errors: 0  warnings: 0', made.stdout)
        demo = self.desktop.start([os.path.join(folder, 'out-rel', f'{name}.exe')])
        wait_until(lambda: self.desktop.ask('xdotool', 'getactivewindow', 'getwindowname').strip() == title,
                   f'the window "{title}"', 20)
        return demo

    def test_calculator_builds_without_a_warning_and_runs(self):
        demo = self.start_demo('calculator', 'Calculator')
        demo.type('12')
        self.picture('demo-calculator')
        demo.key('alt+F4')
        self.assertEqual(demo.process.wait(20), 0)

    def test_gallery_builds_without_a_warning_and_runs(self):
        demo = self.start_demo('gallery', 'Gallery')
        demo.key('ctrl+n')
        self.picture('demo-gallery')
        demo.key('ctrl+q')
        self.assertEqual(demo.process.wait(20), 0)


if __name__ == '__main__':
    unittest.main(verbosity=2)
