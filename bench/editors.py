"""Editors of source text as black boxes on a virtual screen: started with a file, typed into, watched by
`screen_meter` and by what the kernel says of their processes.

    with Desktop() as desktop, Editor(desktop, meter, at_line(PEERS['SciTE'], path, 7), 'main.cpp') as editor:
        editor.wait_for_file()
        editor.place()
        first, last = editor.measured('type', 100, 'x', 'space')
"""
import bisect
import collections
import os
import shutil
import statistics
import subprocess
import sys
import threading
import time

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), '..', 'tests', 'e2e'))
from desktop import Desktop, Timeout, children, wait_until  # noqa: E402, F401

# The commands that open one file, and no other, in a process and a window of their own.
PEERS = {'SciTE': ['scite', '{file}', '-goto:{line}'], 'Geany': ['geany', '-i', '-s', '-l', '{line}', '{file}'],
         'Kate': ['kate', '-n', '-l', '{line}', '{file}']}
# Kate would ask in each window whether to start this; no editor is measured with a server.
KATE_SETTINGS = """[lspclient]
BlockedServerCommandLines=/usr/bin/clangd -log=error --background-index --limit-results=500 --completion-style=bundled
"""
WIDTH, HEIGHT = 1100, 800
LARGE = 30000    # pixels of a change that is no caret, line or status
BURST = 0.4      # seconds without a large change end what belongs together
REST = 1.0       # seconds that a process uses less than LITTLE of a core, as the blinking caret does, and
MOMENT = 0.04    # at once less than HALF: it is at rest
LITTLE, HALF = 0.1, 0.4

Change = collections.namedtuple('Change', 'time x y width height')


def settle(desktop):
    """Answers in the home folder what editors would ask in a window."""
    folder = os.path.join(desktop.home, '.config')
    os.makedirs(folder, exist_ok=True)
    with open(os.path.join(folder, 'katerc'), 'w') as file:
        file.write(KATE_SETTINGS)


def at_line(command, path, line=1):
    return [word.format(file=path, line=line) for word in command]


def installed(commands):
    """What is left of the commands by name; says what isn't on this machine."""
    for name in [name for name, command in commands.items() if not shutil.which(command[0])]:
        print(f'{name}: not installed, left out')
    return {name: command for name, command in commands.items() if shutil.which(command[0])}


def median_and_last(values):
    """The median, and what 99 of 100 values don't exceed."""
    return statistics.median(values), sorted(values)[len(values) * 99 // 100]


def load():
    """The load of the machine, for the heading of a table."""
    return f'load {os.getloadavg()[0]:.1f}, {os.cpu_count()} cores'


class Editor:
    """A program from its start on. Times are seconds from there unless they are told otherwise."""

    def __init__(self, desktop, meter, command, file):
        """`file` is what the title says once the file is open."""
        self.desktop = desktop
        self.meter = meter
        self.file = file
        self.changes, self.titles, self.work = [], [], []
        self.watch = subprocess.Popen([meter, 'watch', str(LARGE)], env=desktop.environment,
                                      stdout=subprocess.PIPE, text=True)
        threading.Thread(target=self.follow_screen, daemon=True).start()
        time.sleep(0.2)
        self.start = time.monotonic()
        self.process = subprocess.Popen(command, env=desktop.environment, stdin=subprocess.DEVNULL,
                                        stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        threading.Thread(target=self.follow_work, daemon=True).start()

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.watch.kill()
        self.watch.wait()
        self.process.kill()
        self.process.wait()
        # What a killed Zendry had not saved would be offered at the next start.
        shutil.rmtree(os.path.join(self.desktop.home, '.zendry', 'rescue'), ignore_errors=True)
        wait_until(lambda: '0x' not in self.desktop.ask('xprop', '-root', '-notype', '_NET_CLIENT_LIST'),
                   'the going of all windows')

    def follow_screen(self):
        for line in self.watch.stdout:
            kind, when, rest = line.rstrip('\n').split(' ', 2)
            if kind == 'D':
                self.changes.append(Change(float(when), *map(int, rest.split())))
            else:
                self.titles.append((float(when), *rest.split(' ', 1)))

    def follow_work(self):
        clock = ~self.process.pid << 3 | 2  # of the time that another process works, as the kernel numbers it
        while self.process.poll() is None:
            self.work.append((time.monotonic(), time.clock_gettime(clock)))
            time.sleep(0.01)

    def opened(self):
        """When a title named the file first."""
        return next((when - self.start for when, _, title in self.titles if self.file in title), None)

    def wait_for_file(self, seconds=30):
        wait_until(self.opened, f'{self.file} in a title of {self.process.args[0]}', seconds)
        self.window = next(window for _, window, title in self.titles if self.file in title)

    def text_place(self):
        """A point that lies in the text in all editors, whatever they have beside and below it."""
        geometry = self.desktop.ask('xdotool', 'getwindowgeometry', '--shell', self.window)
        values = dict(line.split('=') for line in geometry.split())
        return (int(values['X']) + int(values['WIDTH']) * 6 // 10, int(values['Y']) + int(values['HEIGHT']) * 3 // 10)

    def painted(self, since):
        """The end of the first burst of changes of the text that ends after `since`; nothing without one."""
        x, y = self.text_place()
        last = None
        for change in list(self.changes):
            if not (change.x <= x < change.x + change.width and change.y <= y < change.y + change.height):
                continue
            when = change.time - self.start
            if last is not None and last > since and when - last > BURST:
                break
            last = when
        return last if last is not None and last > since else None

    def rest(self, since):
        """When the process first did next to nothing; nothing while that isn't known."""
        work = [sample for sample in list(self.work) if sample[0] - self.start >= since]
        times = [when for when, _ in work]

        def share(first, seconds):
            last = bisect.bisect(times, times[first] + seconds)
            return (work[last][1] - work[first][1]) / seconds if last < len(work) else None

        for number, when in enumerate(times):
            average = share(number, REST)
            if average is None:
                return None
            if average < LITTLE and share(number, MOMENT) < HALF:
                return when - self.start
        return None

    def wait_for_rest(self, since, seconds):
        """When it came to rest, nothing if it didn't."""
        try:
            return wait_until(lambda: self.rest(since), 'rest', seconds)
        except Timeout:
            return None

    def now(self):
        return time.monotonic() - self.start

    def memory(self):
        """Proportional memory of the process and of those it started, in MB."""
        total = 0
        for pid in [self.process.pid, *children(self.process.pid)]:
            with open(f'/proc/{pid}/smaps_rollup') as file:
                total += next(int(line.split()[1]) for line in file if line.startswith('Pss:'))
        return total / 1024

    def place(self):
        """Ends what watches the opening, gives all editors the same window and clicks into the text."""
        self.watch.kill()
        for words in (['windowactivate', self.window], ['windowmove', self.window, '20', '20'],
                      ['windowsize', self.window, str(WIDTH), str(HEIGHT)]):
            self.desktop.ask('xdotool', *words)
            time.sleep(0.2)
        x, y = self.text_place()
        self.desktop.ask('xdotool', 'mousemove', str(x), str(y), 'click', '1', 'mousemove', '1270', '950')
        time.sleep(0.5)

    def key(self, *names):
        self.desktop.ask('xdotool', 'key', '--clearmodifiers', '--delay', '0', *names)

    def measured(self, *words):
        """What the meter says of keys, as columns of milliseconds; without those that changed nothing."""
        lines = self.desktop.ask(self.meter, *map(str, words)).splitlines()
        rows = [[float(word) for word in line.split()] for line in lines]
        return list(zip(*[row for row in rows if min(row) >= 0])) or [[], []]
