#!/usr/bin/env python3
"""Zendry builds Zendry: its own projects, with its own build, and what comes out works."""
import os
import shutil
import subprocess
import unittest

from desktop import wait_until
from fixture import STAGE, TOP, ZENDRY, ZENDRY_MAKE, ZendryTest, run, write

LONG = 1500  # seconds that building the framework may take on a busy machine


class SelfBuild(ZendryTest):
    """The projects are built without optimisation: it is their lists and switches that are looked at."""

    def sources(self):
        """A copy of the sources, in which debug is the mode of every project; answers its folder."""
        tree = os.path.join(self.folder, 'tree')
        for name in ('libs', 'src'):
            shutil.copytree(os.path.join(TOP, name), os.path.join(tree, name), ignore=shutil.ignore_patterns('out-*'))
        for project in ('libs/mavro/mavro', 'libs/mavro/sci/mavro-sci', 'src/zendry'):
            write(os.path.join(tree, project + '.zend'), '<state>\n\t<mode opt="dbg"/>\n</state>\n')
        return tree

    def make_by_tool(self, project):
        made = subprocess.run([ZENDRY_MAKE, project], stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                              stderr=subprocess.PIPE, text=True, timeout=LONG)
        self.assertEqual(made.returncode, 0, made.stdout[-4000:] + made.stderr)

    def make_in_window(self, project, product):
        window = self.start(project)
        window.key('F7')
        wait_until(lambda: os.path.exists(product), product, LONG)
        window.wait_quiet()
        self.assertEqual(window.close(), 0)

    def installation_with(self, program):
        """The installation with another program in it; answers the program's place."""
        root = os.path.join(self.folder, 'self')
        shutil.copytree(STAGE, root, symlinks=True)
        place = os.path.join(root, 'bin', os.path.basename(ZENDRY))
        shutil.copy(program, place)
        return place

    def test_projects_build_the_framework_and_the_program_which_then_builds_the_demo(self):
        tree = self.sources()
        self.make_by_tool(os.path.join(tree, 'libs/mavro/mavro.zpj'))
        self.make_in_window(os.path.join(tree, 'libs/mavro/sci/mavro-sci.zpj'),
                            os.path.join(tree, 'libs/mavro/sci/out-dbg/mavro-sci.a'))
        built = os.path.join(tree, 'src/out-dbg/zendry')
        self.make_in_window(os.path.join(tree, 'src/zendry.zpj'), built)
        project = self.demo()
        program = os.path.join(os.path.dirname(project), 'out-rel', 'console.exe')
        window = self.desktop.start([self.installation_with(built), project])
        window.wait_for_main()
        window.key('F7')
        wait_until(lambda: os.path.exists(program), 'the demo, built by the Zendry that Zendry built')
        window.wait_quiet()
        self.picture('built-by-itself')
        self.assertEqual(window.close(), 0)
        self.assertIn('words', run(program).stdout)


if __name__ == '__main__':
    unittest.main(verbosity=2)
