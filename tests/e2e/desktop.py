"""A virtual desktop and the program on it, as a person has them: keys go in, windows and files come out.

    with Desktop() as desktop:
        zendry = desktop.start([program, project])
        zendry.key('F7')
        wait_until(lambda: os.path.exists(built), 'the program is built')
        zendry.close()
"""
import os
import re
import shutil
import subprocess
import tempfile
import time

SCREEN = '1280x960x24'
# What xprop says of a window of Zendry.
NAMES = re.compile(r'WM_CLASS = "zendry",.*\n_NET_WM_NAME = "(.*)"')
PATIENCE = 60


class Timeout(Exception):
    pass


def wait_until(condition, what, seconds=PATIENCE):
    """Answers the first true value of the condition."""
    end = time.monotonic() + seconds
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > end:
            raise Timeout(f'not seen within {seconds} s: {what}')
        time.sleep(0.02)


def children(pid):
    """Ids of the processes that a process has started and that have not been collected."""
    found = []
    try:
        for task in os.listdir(f'/proc/{pid}/task'):
            with open(f'/proc/{pid}/task/{task}/children') as file:
                found += [int(child) for child in file.read().split()]
    except OSError:
        pass
    return found


def cpu_time(pid):
    """Seconds of processor time that a process has used, -1 when it is gone."""
    try:
        with open(f'/proc/{pid}/stat') as file:
            fields = file.read().rsplit(')', 1)[1].split()
    except OSError:
        return -1
    return (int(fields[11]) + int(fields[12])) / os.sysconf('SC_CLK_TCK')


def asleep(pid):
    """True if a process waits for something; one that could run and isn't let to has work left."""
    try:
        with open(f'/proc/{pid}/stat') as file:
            return file.read().rsplit(')', 1)[1].split()[0] == 'S'
    except OSError:
        return True


class Window:
    """A started program and the windows it shows."""

    def __init__(self, desktop, process):
        self.desktop = desktop
        self.process = process

    def alive(self):
        return self.process.poll() is None

    def titles(self):
        """Titles of the program's windows on the screen, by id."""
        listed = self.desktop.ask('xprop', '-root', '-notype', '_NET_CLIENT_LIST').partition('#')[2]
        windows = {}
        for window in listed.replace(',', ' ').split():
            words = self.desktop.ask('xprop', '-id', window, '-notype', 'WM_CLASS', '_NET_WM_NAME')
            if match := NAMES.search(words):
                windows[str(int(window, 16))] = match.group(1)
        return windows

    def wait_for_window(self, besides=(), seconds=PATIENCE):
        """Waits for a window that is none of `besides` and for its becoming the active one."""
        def seen():
            if not self.alive():
                raise Timeout(f'the program ended with {self.process.returncode} before its window came')
            return next((window for window in self.titles() if window not in besides), None)
        window = wait_until(seen, 'a window', seconds)
        wait_until(lambda: self.desktop.ask('xdotool', 'getactivewindow').strip() == window, 'the active window')
        return window

    def wait_for_main(self):
        self.main = self.wait_for_window()

    def wait_for_message(self):
        """Waits for a message box over the main window; answers its title."""
        window = self.wait_for_window(besides=[self.main])
        return self.titles()[window]

    def title(self):
        return self.desktop.ask('xdotool', 'getwindowname', self.main).strip()

    def wait_for_title(self, part):
        wait_until(lambda: part in self.title(), f'"{part}" in the title, which is "{self.title()}"')

    def key(self, *names):
        for name in names:
            self.desktop.ask('xdotool', 'key', '--clearmodifiers', name)

    def type(self, text):
        self.desktop.ask('xdotool', 'type', '--delay', '5', text)

    def wait_quiet(self, seconds=PATIENCE):
        """Waits until the program has no child and has used no processor time for a while."""
        def quiet():
            before = cpu_time(self.process.pid)
            time.sleep(0.25)
            return (not children(self.process.pid) and cpu_time(self.process.pid) - before < 0.02 and
                    asleep(self.process.pid))
        wait_until(quiet, 'the program has nothing more to do', seconds)

    def picture(self, path):
        self.desktop.picture(path, self.main)

    def close(self):
        """Closes the main window as its close box does; answers the exit status."""
        self.key('alt+F4')
        try:
            return self.process.wait(20)
        except subprocess.TimeoutExpired:
            raise Timeout(f'the window does not close; on the screen: {self.titles()}')


class Desktop:
    """An X server with a window manager, a home folder and a runtime folder of its own."""

    def __init__(self):
        self.folder = tempfile.mkdtemp(prefix='zendry-desktop-')
        self.home = os.path.join(self.folder, 'home')
        os.mkdir(self.home)
        os.mkdir(os.path.join(self.folder, 'run'), 0o700)
        self.processes = []

    def __enter__(self):
        try:
            self.start_screen()
        except BaseException:
            self.__exit__()
            raise
        return self

    def __exit__(self, *_):
        for process in reversed(self.processes):
            if process.poll() is None:
                process.terminate()
                try:
                    process.wait(5)
                except subprocess.TimeoutExpired:
                    process.kill()
                    process.wait()
        shutil.rmtree(self.folder, ignore_errors=True)

    def start_screen(self):
        read_end, write_end = os.pipe()
        self.processes.append(subprocess.Popen(
            ['Xvfb', '-displayfd', str(write_end), '-screen', '0', SCREEN, '-nolisten', 'tcp', '-noreset'],
            pass_fds=[write_end], stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL))
        os.close(write_end)
        with os.fdopen(read_end) as file:  # a free number, chosen by the server
            number = file.readline().strip()
        if not number:
            raise Timeout('Xvfb did not start')
        self.environment = {key: value for key, value in os.environ.items()
                            if key not in ('WAYLAND_DISPLAY', 'QT_QPA_PLATFORM', 'DBUS_SESSION_BUS_ADDRESS')}
        self.environment.update(DISPLAY=f':{number}', HOME=self.home, XDG_RUNTIME_DIR=os.path.join(self.folder, 'run'),
                                NO_AT_BRIDGE='1', LC_ALL='C.UTF-8')
        self.processes.append(subprocess.Popen(  # its log must not lie in our home
            ['openbox', '--sm-disable'], env={**self.environment, 'HOME': self.folder}, stdin=subprocess.DEVNULL,
            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL))
        wait_until(lambda: 'window id' in self.ask('xprop', '-root', '_NET_SUPPORTING_WM_CHECK'), 'the window manager')
        # The first key of all changes the keyboard's map, and the window manager misses keys while it takes it over.
        self.ask('xdotool', 'key', 'Shift_L')

    def ask(self, *command):
        """Standard output of a command that looks at this screen; empty when it fails."""
        return subprocess.run(command, env=self.environment, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                              stderr=subprocess.DEVNULL, text=True).stdout

    def minimise(self, window):
        """Minimises a window; answers when neither it nor a dialog of it is active."""
        self.ask('xdotool', 'windowminimize', window)
        wait_until(lambda: 'Iconic' in self.ask('xprop', '-id', window, 'WM_STATE'), 'the window is minimised')
        wait_until(lambda: not self.ask('xdotool', 'getactivewindow').strip(), 'no window is active')

    def start(self, command, **changed_environment):
        """Starts a program here. A variable that is None is taken out of its environment."""
        environment = {**self.environment, **changed_environment}
        environment = {key: value for key, value in environment.items() if value is not None}
        process = subprocess.Popen(command, env=environment, stdin=subprocess.DEVNULL, start_new_session=True)
        self.processes.append(process)
        return Window(self, process)

    def picture(self, path, window='root'):
        """Keeps a picture of the screen, or of what it shows in the place of a window with its frame."""
        os.makedirs(os.path.dirname(path), exist_ok=True)
        self.ask('import', '-frame', '-window', window, path)
        if not os.path.exists(path):
            raise Timeout(f'no picture could be taken as {path}')
