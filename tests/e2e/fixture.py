"""What the tests of the whole program share: a desktop, the demo project, projects made on the spot."""
import os
import re
import shutil
import subprocess
import unittest

from desktop import Desktop

TOP = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
SHOTS = os.path.join(TOP, 'build', 'shots')
STAGE = os.environ.get('ZENDRY_STAGE', os.path.join(TOP, 'build', 'stage'))
ZENDRY = os.path.join(STAGE, 'bin', 'zendry')
ZENDRY_MAKE = os.path.join(STAGE, 'bin', 'zendry-make')


def write(path, text):
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, 'w') as file:
        file.write(text)
    return path


def read(path):
    with open(path) as file:
        return file.read()


PROJECT = """<ide>
<set parse="y"/></ide>
<src>
{sources}</src>
<hdr>
{headers}</hdr>
{resources}<opt>
	<gen>
		<targ id="{kind}" opt="{library_set}"/>
		<inc/>
		<arch/>
		<lib value="{libraries}"/>
		<out/>
		<pars/>
	</gen>
	<dbg>
		<gcc id="0"/>
		<comp opt="-g"/>
		<link opt="-g"/>
	</dbg>
	<rel>
		<gcc id="0"/>
		<comp opt="{switches}"/>
		<link opt="-s"/>
	</rel>
</opt>
"""


def write_project(path, sources, headers=(), libraries='', switches='-O2', library_set='', kind=0, resource=''):
    """Writes the file of a project, of console programs if `kind` isn't given. Names are relative to its folder;
    `switches` are those of the release mode."""
    def listed(names):
        return ''.join(f'\t<file name="{name}"/>\n' for name in names)

    return write(path, PROJECT.format(sources=listed(sources), headers=listed(headers), libraries=libraries,
                                      switches=switches, library_set=library_set, kind=kind,
                                      resources=f'<res>\n\t<file name="{resource}"/>\n</res>\n' if resource else ''))


def session(path):
    """What a session file says: mode, open files with their lines, active file."""
    text = read(path)
    return {'mode': re.search(r'<mode opt="(\w+)"', text).group(1),
            'files': re.findall(r'<file name="([^"]*)" id="(\d+)"', text),
            'active': (re.findall(r'<active name="([^"]*)"', text) or [''])[0]}


def settings(path):
    """The keys and values of an ini file."""
    return dict(line.split('=', 1) for line in read(path).splitlines() if '=' in line)


def run(*command, **options):
    """Runs a command to its end; answers it with its output as text."""
    return subprocess.run(command, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True,
                          timeout=120, **options)


class ZendryTest(unittest.TestCase):
    """Each test has a desktop of its own; of one that fails a picture is kept."""

    def setUp(self):
        self.desktop = self.enterContext(Desktop())
        self.folder = self.desktop.folder
        self.ini = os.path.join(self.desktop.home, '.zendry', 'zendry.ini')
        self.addCleanup(self.keep_picture_of_failure)

    def run(self, result=None):
        self.result = result
        return super().run(result)

    def keep_picture_of_failure(self):
        if any(test.id().startswith(self.id()) for test, _ in self.result.errors + self.result.failures):
            self.picture('failed-' + self._testMethodName)

    def picture(self, name):
        self.desktop.picture(os.path.join(SHOTS, name + '.png'))

    def start(self, *arguments, prefix=(), **environment):
        """Starts Zendry and waits for its window."""
        window = self.desktop.start([*prefix, ZENDRY, *arguments], **environment)
        window.wait_for_main()
        return window

    def demo(self):
        """A copy of the demo project, its library built; answers the project file."""
        folder = os.path.join(self.folder, 'console')
        shutil.copytree(os.path.join(TOP, 'dist', 'Repos', 'demos', 'console'), folder)
        library = run(ZENDRY_MAKE, os.path.join(folder, 'textstat', 'libtextstat.zpj'))
        self.assertEqual(library.returncode, 0, library.stdout + library.stderr)
        return os.path.join(folder, 'console.zpj')
