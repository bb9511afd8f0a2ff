"""System calls of a running program that fail because a test says so.

    with Injection(window.process.pid, 'fsync', 'error=EIO', 1, log) as injection:
        window.key('ctrl+s')
        ...
    injection.hits()   # ['10</tmp/a/.zendry-save-01>) = -1 EIO (Input/output error) (INJECTED)']
"""
import re
import subprocess

from desktop import wait_until

# "openat(9</tmp/a>, "." ..." without the pid that strace puts in front of it
CALL = re.compile(r'^(?:\d+ +)?(\w+)\((.*)$')


def calls_in(log):
    """The calls of a trace in their order: name, and the rest of the line."""
    with open(log, errors='replace') as file:
        return [match.groups() for line in file if (match := CALL.match(line))]


def is_traced(pid):
    with open(f'/proc/{pid}/task/{pid}/status') as file:
        return not re.search(r'^TracerPid:\t0$', file.read(), re.MULTILINE)


class Tracing:
    """Follows the main thread of a running program as long as it lasts."""

    def __init__(self, pid, log, *arguments):
        self.pid = pid
        self.log = log
        self.arguments = arguments

    def __enter__(self):
        self.strace = subprocess.Popen(
            ['strace', '-y', '-p', str(self.pid), '-o', self.log, *self.arguments], stdin=subprocess.DEVNULL,
            stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True)
        if 'attached' not in self.strace.stderr.readline():
            raise OSError('strace does not attach')
        wait_until(lambda: is_traced(self.pid), 'the program is traced')
        return self

    def __exit__(self, *_):
        self.strace.terminate()
        self.strace.wait()
        self.strace.stderr.close()


class Injection(Tracing):
    """Does something to one call of the main thread: the call of that name with the number `number`, from 1, or
    as strace tells numbers. With a path only those that work on it count."""

    def __init__(self, pid, call, what, number, log, path=''):
        super().__init__(pid, log, '-e', f'trace={call}', '-e', f'inject={call}:{what}:when={number}',
                         *(['-P', path] if path else []))

    def hits(self):
        """The calls hit, as strace prints them without their name. To be asked afterwards."""
        return [rest for _, rest in calls_in(self.log) if 'INJECTED' in rest]
