#!/usr/bin/env python3
"""Records what the machine's gdb prints: record.py [CASE...] writes CASE.gdb-VERSION.txt beside itself.

A transcript is gdb's output with the byte 0x1A shown as U+241A. A line that begins with U+00BB is a command that was
written to gdb at that place. The temporary folder reads /project, process numbers read 1000. Review what has changed,
then run the test GdbTranscripts.* and rename the .new files that it leaves."""
import os
import re
import subprocess
import sys
import tempfile

HERE = os.path.dirname(os.path.abspath(__file__))

STEPS = '''#include <cstdio>
int add(int a, int b) {
  int sum = a + b;

  return sum;
}
int depth(int n) {
  if (n == 0) return 0;
  return depth(n - 1) + 1;
}
int main() {
  int k = 1;
  k = add(k, 2);
  k += depth(6);
  return k - 6;
}
'''
VALUES = '''#include <map>
#include <memory>
#include <string>
#include <vector>
struct Inner { char text[8]; double ratio; };
struct Point { int x; int y; Inner inner; };
struct Node { int value; Node* next; };
int calls = 0;
int count() { return ++calls; }
int main() {
  std::string word = "a \\"quoted\\" word";
  std::vector<int> numbers{1, 2, 3};
  std::map<std::string, int> ages{{"ann", 31}, {"bob", 42}};
  std::vector<std::string> words{"one", "two"};
  std::unique_ptr<int> owned = std::make_unique<int>(7);
  int zeros[300] = {};
  int counted[250];
  for (int i = 0; i < 250; ++i) counted[i] = i;
  Point point{1, -2, {"abc", 0.5}};
  Node second{2, nullptr}, first{1, &second};
  second.next = &first;
  Node* none = nullptr;
  const char* text = "line\\nline";
  const char* wild = reinterpret_cast<const char*>(8);
  bool same = point.x == 1;
  point.x = 9;
  numbers.push_back(4);
  return 0 * (zeros[0] + counted[0] + same + *owned + (none != nullptr) + (text != nullptr) + (wild == text));
}
'''
CRASH = '''struct Item { int value; };
int read(const Item* item) { return item->value; }
int outer(const Item* item) { return read(item) + 1; }
int main() { return outer(nullptr); }
'''
SIGNALS = '''#include <csignal>
#include <cstdlib>
int main() {
  std::signal(SIGUSR1, SIG_IGN);
  std::raise(SIGUSR1);
  std::raise(SIGINT);
  std::abort();
}
'''
THREADS = '''#include <pthread.h>
static int done;
static void* work(void* given) {
  int here = *(int*)given;
  done += here;
  return nullptr;
}
int main() {
  int value = 3;
  pthread_t thread;
  pthread_create(&thread, nullptr, work, &value);
  pthread_join(thread, nullptr);
  return done - 3;
}
'''
THROWS = '''#include <stdexcept>
template <class T>
T twice(T value) {
  return value + value;
}
inline int half(int value) {
  if (value < 0) throw std::runtime_error("negative");
  return value / 2;
}
int main() {
  int sum = twice(2) + int(twice(1.5));
  sum += half(sum);
  half(-sum);
  return sum;
}
'''
FORKS = '''#include <sys/wait.h>
#include <unistd.h>
int main() {
  int child = fork();
  if (child == 0) {
    execl("/bin/true", "true", nullptr);
    _exit(1);
  }
  int status = 0;
  waitpid(child, &status, 0);
  return status;
}
'''
PRINTS = '''#include <cstdio>
int main() {
  std::setbuf(stdout, nullptr);
  std::puts("#1");
  std::puts("1: x = 2");
  std::puts("Breakpoint 1 at 0x1: file a.cpp, line 9.");
  std::puts("(gdb) Breakpoint 7 at 0x1: file a.cpp, line 9.");
  std::puts("\\032\\032prompt");
  std::printf("no end of line");
  return 0;
}
'''
SETTINGS = ['set edit off', 'set confirm off', 'set height 0', 'set width 0']
OLDER = ['set edit off', 'set confirm off']  # lines are cut at 80 columns

# name: (source, compiler options, name of the source file, commands)
CASES = {
    'steps': (STEPS, '', 'steps.cpp', SETTINGS + [
        'break steps.cpp:4', 'tbreak main', 'run', 'next', 'step', 'backtrace', 'next', 'finish', 'next', 'info break',
        'clear steps.cpp:5', 'continue']),
    'steps_cut_at_80': (STEPS, '', 'a_rather_long_name_of_a_source_file_so_that_lines_are_cut.cpp', OLDER + [
        'break add', 'run', 'backtrace', 'finish', 'info break', 'continue']),
    'pending': (STEPS, '', 'steps.cpp', SETTINGS + [
        'break nowhere.cpp:3', 'set breakpoint pending on', 'break nowhere.cpp:3', 'break steps.cpp:900',
        'set confirm on', 'set breakpoint pending auto', 'break nowhere.cpp:4', 'delete', 'break 1 1 1',
        'condition 99 1', 'break steps.cpp:12 if nosuch', 'tbreak steps.cpp:12 if k == 0', 'run', 'kill']),
    'recursion': (STEPS, '', 'steps.cpp', SETTINGS + [
        'break steps.cpp:8 if n == 0', 'run', 'backtrace', 'backtrace 2', 'backtrace -1', 'frame 3', 'up', 'down',
        'info locals', 'until', 'finish']),
    'values': (VALUES, '', 'values.cpp', SETTINGS + [
        'tbreak 25', 'run', 'display word', 'display numbers', 'display ages', 'display words', 'display owned',
        'display zeros', 'display point', 'display *none', 'display none', 'display wild', 'display nosuch',
        'display point.x == 1', 'display/x point.x', 'display', 'next', 'next', 'undisplay', 'next']),
    'print': (VALUES, '', 'values.cpp', SETTINGS + [
        'tbreak 25', 'run', 'print word', 'print numbers', 'print counted', 'print point', 'print &point',
        'print first', 'print *none', 'print none->value', 'print nosuch', 'print 1/0', 'print (', 'print text',
        'print wild', 'print same', 'print count()', 'output point.x', 'set print pretty on', 'print point',
        'print ages', 'display point', 'display words', 'print point', 'next', 'set print raw-values on', 'print word',
        'display word', 'set print pretty off', 'print word', 'print sizeof(int)', 'print $nosuch', 'print $_exitcode',
        'print -elements 5 -- counted', 'whatis point', 'call count()', 'break count', 'print count()', 'backtrace']),
    'crash': (CRASH, '', 'crash.cpp', SETTINGS + [
        'run', 'backtrace', 'up', 'print item', 'print *item', 'frame 0', 'continue', 'backtrace', 'next']),
    'signals': (SIGNALS, '', 'signals.cpp', SETTINGS + [
        'run', 'continue', 'backtrace', 'continue', 'backtrace', 'continue', 'info program']),
    'threads': (THREADS, '-pthread', 'threads.cpp', SETTINGS + [
        'break threads.cpp:5', 'run', 'info threads', 'next', 'thread 1', 'backtrace', 'continue']),
    'throws': (THROWS, '', 'throws.cpp', SETTINGS + [
        'break twice', 'break throws.cpp:3', 'run', 'continue', 'delete', 'catch throw', 'break throws.cpp:999',
        'continue', 'backtrace', 'continue', 'continue']),
    'watchpoints': (STEPS, '', 'steps.cpp', SETTINGS + [
        'tbreak steps.cpp:13', 'run', 'watch k', 'continue', 'rwatch k', 'continue', 'delete', 'jump steps.cpp:12']),
    'forks': (FORKS, '', 'forks.cpp', SETTINGS + ['run', 'start', 'set follow-fork-mode child', 'continue']),
    'prints': (PRINTS, '', 'prints.cpp', SETTINGS + ['break 9', 'run', 'next', 'continue']),
    'killed': (STEPS, '', 'steps.cpp', SETTINGS + [
        'tbreak main', 'run', 'kill', 'next', 'backtrace', 'frame 1', 'run', 'starti', 'stepi', 'nexti', 'kill']),
    'no_debug_data': (CRASH, '-g0 -s', 'crash.cpp', SETTINGS + [
        'break crash.cpp:2', 'tbreak main', 'run', 'backtrace', 'next', 'step']),
    'no_program': (None, '', 'missing', SETTINGS + ['break main', 'run', 'next', 'backtrace']),
    'annotations_of_level_2': (STEPS, '', 'steps.cpp', ['set annotate 2'] + OLDER + [
        'break add', 'run', 'backtrace', 'display a', 'print a', 'print nosuch', 'next', 'finish', 'info break',
        'continue']),
    'names_with_blanks': (STEPS, '', 'my steps at (1), x:9.cpp', SETTINGS + [
        'break "/project/my steps at (1), x:9.cpp":3', 'run', 'backtrace', 'next']),
    'names_with_quotes': (STEPS, '', 'it\'s "it", x.cpp', SETTINGS + [
        """break "/project/it's \\"it\\", x.cpp":3""",
        """python gdb.Breakpoint(source="/project/it's \\"it\\", x.cpp", line=3)""", 'run', 'backtrace', 'next']),
    'not_executable': (STEPS, '', 'steps.cpp', SETTINGS + [
        'shell chmod 644 /project/steps', 'break add', 'run', 'next', 'backtrace', 'set startup-with-shell off', 'run']),
}


def wait_for_prompt(gdb, recorded):
    """Reads up to the next prompt, in single bytes: nothing of what follows it may be taken."""
    while not recorded.endswith(b'\x1a\x1aprompt\n'):
        byte = gdb.stdout.read(1)
        if not byte:
            return False
        recorded += byte
    return True


def normalised(text, folder):
    text = text.replace(folder, '/project')
    text = re.sub(r'(process |LWP |pid |expected=)\d+', r'\g<1>1000', text)
    return text.replace('\x1a', '\u241a')


def record(name, version):
    source, options, source_name, commands = CASES[name]
    with tempfile.TemporaryDirectory(dir='/tmp', prefix='gdb') as folder:
        program = f'{folder}/{os.path.splitext(source_name)[0].split()[0]}'
        if source is not None:
            path = f'{folder}/{source_name}'
            with open(path, 'w', encoding='utf-8') as file:
                file.write(source)
            subprocess.run(['g++', '-g', '-O0', *options.split(), '-o', program, path], check=True, cwd=folder)
        home = f'{folder}/home'
        os.mkdir(home)
        environment = {'HOME': home, 'PATH': '/usr/bin:/bin', 'TERM': 'dumb', 'LC_MESSAGES': 'C', 'SHELL': '/bin/sh'}
        gdb = subprocess.Popen(['gdb', '--annotate=3', '--quiet', program], stdin=subprocess.PIPE, cwd=folder,
                               stdout=subprocess.PIPE, stderr=subprocess.STDOUT, env=environment, bufsize=0)
        recorded = bytearray()
        alive = wait_for_prompt(gdb, recorded)
        for command in commands:
            if not alive:
                break
            recorded += f'\u00bb{command}\n'.encode()
            gdb.stdin.write(command.replace('/project', folder).encode() + b'\n')
            alive = wait_for_prompt(gdb, recorded)
        gdb.stdin.close()
        recorded += gdb.stdout.read()
        gdb.wait()
        text = normalised(recorded.decode('utf-8', 'surrogateescape'), folder)
    with open(f'{HERE}/{name}.gdb-{version}.txt', 'w', encoding='utf-8', errors='surrogateescape') as file:
        file.write(text)


def main():
    banner = subprocess.run(['gdb', '--version'], check=True, stdout=subprocess.PIPE, text=True).stdout.splitlines()[0]
    version = banner.split()[-1]
    for name in sys.argv[1:] or CASES:
        record(name, version)


if __name__ == '__main__':
    main()
