#!/usr/bin/env python3
"""What lies in an installation, and that it works wherever it lies."""
import os
import unittest

from desktop import wait_until
from fixture import STAGE, ZENDRY, ZENDRY_MAKE, ZendryTest, run, write, write_project

BUILD = os.environ.get('ZENDRY_BUILD', '')
IN_ROOT = ['bin/zendry', 'bin/zendry-console', 'bin/zendry-make', 'bin/zendry-tags', 'bin/zendry-form', 'bin/zendry-lsp', 'bin/Zendry.cfg', 'bin/first-start.ini', 'bin/Defs/stlref.tgd',
           'bin/Defs/stlref.tgx', 'bin/Defs/stlref.tgn', 'bin/Defs/cref.tgd', 'bin/Defs/cref.tgx', 'bin/Defs/cref.tgn', 'bin/Defs/mavroref.tgd', 'bin/Defs/mavroref.tgx', 'bin/Help/mavro.ch', 'bin/Help/stl.ch', 'bin/Help/clib.ch', 'bin/Help/stl.copyright', 'bin/Help/clib.copyright',
           'bin/Repos/demos/console/console.zpj', 'bin/Repos/items.def', 'bin/Repos/templates/static-lib/_.zpj',
           'libs/mavro/include/mavro', 'libs/mavro/libmavro.a', 'libs/mavro/mavro.rc', 'libs/basic', 'mylib',
           'libs/mavro/mavro-reference.md', 'tools/gcc', 'tools/g++', 'tools/ar', 'tools/gdb', 'tools/windres']
IN_PREFIX = ['bin/zendry', 'bin/zendry-make', 'bin/zendry-tags', 'bin/zendry-form', 'bin/zendry-lsp', 'share/applications/zendry.desktop', 'share/mime/packages/zendry-project.xml',
             'share/metainfo/org.zendry.zendry.metainfo.xml', 'share/icons/hicolor/scalable/apps/zendry.svg',
             'share/man/man1/zendry-windres.1', 'share/doc/zendry/mavro.md', 'lib/pkgconfig/mavro.pc',
             'lib/cmake/mavro/mavro-config.cmake', 'share/man/man1/zendry.1', 'share/man/man1/zendry-make.1', 'share/man/man1/zendry-tags.1', 'share/man/man1/zendry-form.1', 'share/man/man1/zendry-lsp.1',
             'share/man/man5/zpj.5', 'share/doc/zendry/LICENSE']
WINDOW_PROGRAM = '''#include <mavro>

int mavro::Application::Main(ArgumentList&) {
  Form form;
  form.text = "Made by a user";
  form.SetBounds(0, 0, 300, 200);
  form.Run(false);
  return 0;
}
'''


def missing(folder, names):
    return [name for name in names if not os.path.exists(os.path.join(folder, name))]


class Installation(ZendryTest):
    def installed(self, name):
        prefix = os.path.join(self.folder, name)
        result = run('cmake', '--install', BUILD, '--prefix', prefix)
        self.assertEqual(result.returncode, 0, result.stderr)
        return prefix

    def test_stage_holds_everything(self):
        self.assertEqual(missing(STAGE, IN_ROOT), [])

    @unittest.skipUnless(BUILD, 'no build folder is named')
    def test_prefix_holds_everything(self):
        prefix = self.installed('usr')
        self.assertEqual(missing(prefix, IN_PREFIX), [])
        self.assertEqual(missing(os.path.join(prefix, 'lib', 'zendry'), IN_ROOT), [])

    @unittest.skipUnless(BUILD, 'no build folder is named')
    def test_bare_name_on_the_path_finds_its_installation(self):
        prefix = self.installed('a place with blanks')
        project = self.demo()
        program = os.path.join(os.path.dirname(project), 'out-rel', 'console.exe')
        path = os.path.join(prefix, 'bin') + ':' + os.environ['PATH']
        window = self.desktop.start(['zendry', project], PATH=path)
        window.wait_for_main()
        window.key('F7')
        wait_until(lambda: os.path.exists(program), 'the program')
        window.wait_quiet()
        self.assertEqual(window.close(), 0)
        made = run('zendry-make', '--rebuild', project, env={**os.environ, 'PATH': path})
        self.assertEqual(made.returncode, 0, made.stderr)
        self.assertIn('lib/zendry/tools', made.stdout)

    @unittest.skipUnless(BUILD, 'no build folder is named')
    def test_link_of_any_name_starts_its_program(self):
        prefix = self.installed('linked')
        own = os.path.join(self.folder, 'own')
        os.mkdir(own)
        os.symlink(os.path.join(prefix, 'bin', 'zendry'), os.path.join(own, 'ide'))
        os.symlink('ide', os.path.join(own, 'z'))
        os.symlink(os.path.join(prefix, 'bin', 'zendry-make'), os.path.join(own, 'mk'))
        path = own + ':' + os.environ['PATH']
        for name in ['ide', 'z', os.path.join(own, 'z')]:
            self.assertRegex(run(name, '--version', env={**os.environ, 'PATH': path}).stdout, r'^zendry \d')
        self.assertRegex(run('mk', '--version', env={**os.environ, 'PATH': path}).stdout, r'^zendry-make \d')

    def test_help_and_version_need_no_display(self):
        bare = {key: value for key, value in os.environ.items()
                if key not in ('DISPLAY', 'WAYLAND_DISPLAY', 'QT_QPA_PLATFORM')}
        for option, answer in [('--help', 'Usage: zendry [FILE...]'), ('--version', 'zendry ')]:
            told = run(ZENDRY, option, env={**bare, 'HOME': os.path.join(self.folder, 'none')})
            self.assertEqual((told.returncode, told.stderr), (0, ''))
            self.assertTrue(told.stdout.startswith(answer), told.stdout)
        self.assertFalse(os.path.exists(os.path.join(self.folder, 'none')))

    def test_user_program_with_a_window_links_the_framework(self):
        folder = os.path.join(self.folder, 'windows')
        write(os.path.join(folder, 'main.cpp'), WINDOW_PROGRAM)
        project = write_project(os.path.join(folder, 'hello.zpj'), ['main.cpp'], library_set='mavro')
        made = run(ZENDRY_MAKE, project)
        self.assertEqual(made.returncode, 0, made.stdout + made.stderr)
        window = self.desktop.start([os.path.join(folder, 'out-rel', 'hello.exe')])
        shown = wait_until(lambda: self.desktop.ask('xdotool', 'search', '--onlyvisible', '--name', 'Made by a user'),
                           'the window')
        self.picture('user-program')
        self.assertTrue(shown.strip())
        wait_until(lambda: self.desktop.ask('xdotool', 'getactivewindow').strip() in shown.split(), 'the active window')
        self.assertEqual(window.close(), 0)


if __name__ == '__main__':
    unittest.main(verbosity=2)
