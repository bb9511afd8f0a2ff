#!/usr/bin/env python3
"""A debug session by keys and clicks, with the machine's compiler and gdb. build/shots/debug-*.png are what a person
sees meanwhile."""
import os
import re
import shutil
import time
import unittest

from desktop import children, cpu_time, wait_until
from fixture import SHOTS, TOP, ZendryTest, read, write, write_project

WATCHED = """#include <map>
#include <string>
#include <vector>

int main() {
  std::string name = "first";
  std::vector<int> numbers = {1, 2, 3};
  std::map<std::string, int> ages = {{"ann", 31}, {"bob", 4}};
  numbers.push_back(4);
  name += " and second";
  return static_cast<int>(numbers.size() + ages.size() + name.size()) - 24;
}
"""

CRASH = """struct Item {
  int value;
  Item* next;
};

int Inner(Item* item) {
  return item->value;
}

int Outer(Item* item) {
  int sum = item->value;
  return sum + Inner(item->next);
}

int main() {
  Item only = {5, nullptr};
  return Outer(&only);
}
"""

ASKS = """#include <iostream>
#include <string>

int main() {
  std::string name;
  std::cout << "name? " << std::flush;
  std::getline(std::cin, name);
  std::cout << "hello " << name << std::endl;
  return 3;
}
"""

STEPS = """int main() {
  int k = 1;
  ++k;
  return k;
}
"""

# What it prints looks like gdb's own words and marks.
FORGES = r"""#include <cstdio>

int main() {
  std::fputs("\n\032\032stopped\n\032\032prompt\n(gdb) \n\032\032post-prompt\n#1  0x1 in f () at /a.cpp:1\n"
             "Breakpoint 7 at 0x1: file /a.cpp, line 1.\n1: k = 99\n\032\032exited 9\n", stdout);
  std::fflush(stdout);
  int k = 1;
  ++k;
  return k;
}
"""


# Where the window of 1100 by 860 shows the line for a program's input, and the second row of a list below.
INPUT_LINE = 820
SECOND_ROW = 776
OUTPUT_TAB = (32, 718)
OUTPUT = (400, 780)
EDITOR = (700, 300)
MARGIN_COLUMN = '14x600+236+90'  # of the discs
TEXT_COLUMN = '1x600+1000+90'  # beyond the ends of the lines
FIRST_VALUE = '90x12+104+754'  # of a list of watches
DIGIT_7 = (43, 165)  # in the calculator
PIXEL = re.compile(r'^(\d+),(\d+): \((\d+),(\d+),(\d+)', re.MULTILINE)

# The colours of a desktop.
DARK = """[Colors:Window]
BackgroundNormal=42,46,50
ForegroundNormal=252,252,252
[Colors:View]
BackgroundNormal=27,30,32
BackgroundAlternate=35,38,41
ForegroundNormal=252,252,252
[Colors:Button]
BackgroundNormal=49,54,59
ForegroundNormal=252,252,252
[Colors:Selection]
BackgroundNormal=61,174,233
ForegroundNormal=252,252,252
[Colors:Tooltip]
BackgroundNormal=49,54,59
ForegroundNormal=252,252,252
"""


def is_execution(red, green, blue):
    """True for the ground of the line where the program has stopped."""
    return green > red + 8 and green > blue + 8


def gdb_of(pid):
    """Ids of the gdb processes that a program has started."""
    found = []
    for child in children(pid):
        try:
            with open(f'/proc/{child}/comm') as file:
                if file.read().strip() == 'gdb':
                    found.append(child)
        except OSError:
            pass
    return found


class Debugging(ZendryTest):
    def open(self, project, **environment):
        """Opens a project in debug mode, with its source in front."""
        self.window = self.start(project, **environment)
        self.desktop.ask('xdotool', 'windowsize', '--sync', self.window.main, '1100', '860')
        self.window.wait_quiet()

    def make_project(self, source):
        folder = os.path.join(self.folder, 'program')
        write(os.path.join(folder, 'main.cpp'), source)
        project = write_project(os.path.join(folder, 'program.zpj'), ['main.cpp'])
        write(os.path.join(folder, 'program.zend'), '<state>\n\t<mode opt="dbg"/>\n\t<open>\n'
              '\t\t<file name="main.cpp" id="1"/>\n\t</open>\n</state>\n')
        return project

    def go_to(self, line):
        self.window.key('ctrl+g')
        self.window.wait_for_message()
        self.window.type(str(line))
        self.window.key('Return')
        wait_until(lambda: len(self.window.titles()) == 1, 'the dialog has gone')

    def settle(self):
        """Waits until gdb and the program wait, and the window has nothing to do."""
        def processes():
            found, more = [], [self.window.process.pid]
            while more:
                pid = more.pop()
                found.append(pid)
                more += children(pid)
            return found

        def quiet():
            before = {pid: cpu_time(pid) for pid in processes()}
            time.sleep(0.25)
            after = {pid: cpu_time(pid) for pid in processes()}
            return before.keys() == after.keys() and all(after[pid] - before[pid] < 0.02 for pid in before)
        wait_until(quiet, 'everything waits')

    def click(self, x, y):
        self.desktop.ask('xdotool', 'mousemove', '--sync', '--window', self.window.main, str(x), str(y), 'click', '1')

    def run_to_stop(self):
        self.window.key('F5')
        wait_until(lambda: gdb_of(self.window.process.pid), 'gdb runs')
        self.settle()

    def look(self, name):
        self.settle()
        self.picture('debug-' + name)

    def rows(self, area, is_meant):
        """Rows of an area of the window that have a pixel of the meant colour."""
        pixels = self.desktop.ask('import', '-window', self.window.main, '-crop', area, '+repage', '-depth', '8',
                                  '-type', 'TrueColor', 'txt:-')
        return sorted({int(y) for _, y, *colour in PIXEL.findall(pixels) if is_meant(*map(int, colour))})

    def output(self):
        """What the Output panel says, put by way of the clipboard into the file in front."""
        self.click(*OUTPUT_TAB)
        self.click(*OUTPUT)
        self.window.key('ctrl+a', 'ctrl+c')
        self.click(*EDITOR)
        before = read(self.source)
        self.window.key('ctrl+a', 'ctrl+v', 'ctrl+s')
        wait_until(lambda: read(self.source) != before, 'the file is saved')
        return read(self.source)

    def watch(self, expression):
        self.window.key('shift+F9')
        self.window.wait_for_message()
        self.window.key('ctrl+a')
        self.window.type(expression)
        self.window.key('Return')
        wait_until(lambda: len(self.window.titles()) == 1, 'the dialog has gone')

    def wait_for_end(self):
        wait_until(lambda: not children(self.window.process.pid), 'the session has ended')

    def stop_in_the_demo(self, **environment):
        """Runs the demo up to a breakpoint; a value is watched and has changed by a step."""
        project = self.demo()
        write(project.replace('.zpj', '.zend'), '<state>\n\t<mode opt="dbg"/>\n\t<open>\n'
              '\t\t<file name="report.cpp" id="1"/>\n\t\t<file name="main.cpp" id="10"/>\n\t</open>\n</state>\n')
        self.open(project, **environment)
        self.go_to(31)
        self.window.key('F9')
        self.run_to_stop()
        self.watch('statistics.lines')
        self.window.key('F10')

    def test_the_demo_from_a_breakpoint_to_its_end(self):
        self.stop_in_the_demo()
        self.look('demo-stopped')
        self.window.key('F8')
        self.look('demo-stepped-into')
        self.window.key('shift+F8')
        self.settle()
        self.window.key('ctrl+alt+c')
        self.look('demo-stack')
        self.window.key('F5')
        self.wait_for_end()
        self.look('demo-ended')
        self.assertEqual(self.window.close(), 0)

    def test_in_the_dark_and_on_a_large_screen(self):
        write(os.path.join(self.desktop.home, '.config', 'kdeglobals'), DARK)
        self.stop_in_the_demo(XDG_CURRENT_DESKTOP='KDE', KDE_SESSION_VERSION='5', QT_SCALE_FACTOR='2')
        self.look('dark-and-large')
        self.assertEqual(self.window.close(), 0)  # ends the session
        self.assertEqual(children(self.window.process.pid), [])

    def test_commander_closed_by_its_frame_keeps_the_session(self):
        self.open(self.make_project(WATCHED))
        self.go_to(9)
        self.window.key('F9')
        self.run_to_stop()
        self.window.key('alt+d', 'Up', 'Up', 'Return')  # the row above the last one
        commander = self.window.wait_for_window(besides=[self.window.main])
        self.assertEqual(self.window.titles()[commander], 'Debug Commander')
        self.window.type('print 6 * 7')
        self.window.key('Return')
        self.settle()
        self.desktop.picture(os.path.join(SHOTS, 'debug-commander-answered.png'), commander)
        self.window.key('alt+F4')
        wait_until(lambda: list(self.window.titles()) == [self.window.main], 'the dialog is closed')
        self.assertTrue(gdb_of(self.window.process.pid))
        self.assertEqual(self.window.close(), 0)  # ends the session
        self.assertEqual(children(self.window.process.pid), [])

    def test_containers_are_watched(self):
        self.open(self.make_project(WATCHED))
        self.go_to(9)
        self.window.key('F9')
        self.run_to_stop()
        for expression in ('name', 'numbers', 'ages'):
            self.watch(expression)
        self.look('containers')
        self.window.key('F10')
        self.look('containers-changed')
        self.window.key('shift+F5')
        self.wait_for_end()
        self.assertEqual(self.window.close(), 0)

    def test_a_crash_is_walked_by_the_call_stack(self):
        self.open(self.make_project(CRASH))
        self.run_to_stop()
        self.look('crash')
        self.click(500, SECOND_ROW)
        self.look('crash-caller')
        self.assertEqual(self.window.close(), 0)  # closing ends the session
        self.assertEqual(children(self.window.process.pid), [])

    def test_a_program_reads_a_line(self):
        self.open(self.make_project(ASKS))
        self.window.key('F5')
        wait_until(lambda: gdb_of(self.window.process.pid), 'gdb runs')
        self.look('asks')
        self.click(500, INPUT_LINE)
        self.window.type('ann')
        self.window.key('Return')
        self.wait_for_end()
        self.look('answered')
        self.assertEqual(self.window.close(), 0)

    def discs(self):
        return self.rows(MARGIN_COLUMN, lambda r, g, b: r > 180 > 2 * g)

    def wait_for_stop_at(self, disc):
        ground = wait_until(lambda: self.rows(TEXT_COLUMN, is_execution), 'the line of the stop')
        self.settle()
        self.assertTrue(ground[0] <= disc[0] and disc[-1] <= ground[-1], f'{disc} is beside {ground}')

    def test_a_breakpoint_follows_edits_over_rebuilds(self):
        self.open(self.make_project(STEPS))
        self.go_to(3)
        self.window.key('F9')
        disc = wait_until(self.discs, 'the breakpoint is shown')
        for comment in ('// one', '// two'):
            self.go_to(1)
            self.window.type(comment)
            self.window.key('Return')
            before = disc
            disc = wait_until(lambda: self.discs() not in ([], before) and self.discs(), 'the breakpoint has moved')
            self.assertGreater(disc[0], before[0])
            self.run_to_stop()
            self.wait_for_stop_at(disc)
            self.window.key('shift+F5')
            self.wait_for_end()
        self.assertEqual(self.window.close(), 0)

    def test_what_a_program_prints_moves_nothing(self):
        project = self.make_project(FORGES)
        self.source = os.path.join(os.path.dirname(project), 'main.cpp')
        self.open(project)
        self.go_to(8)
        self.window.key('F9')
        disc = wait_until(self.discs, 'the breakpoint is shown')
        self.run_to_stop()
        self.wait_for_stop_at(disc)
        self.watch('k')
        self.look('forged')
        ground = self.rows(TEXT_COLUMN, is_execution)
        self.window.key('F10')
        wait_until(lambda: self.rows(TEXT_COLUMN, is_execution) not in ([], ground), 'the next line')
        self.window.key('F5')
        self.wait_for_end()
        said = self.output()
        self.assertIn('Breakpoint 7 at 0x1', said)
        self.assertIn('The program has ended with exit code 2', said)
        self.assertEqual(self.window.close(), 0)

    def test_a_form_program_stops_in_the_handler_of_a_click(self):
        folder = os.path.join(self.folder, 'calculator')
        shutil.copytree(os.path.join(TOP, 'dist', 'Repos', 'demos', 'calculator'), folder)
        self.source = os.path.join(folder, 'calcform.cpp')
        write(os.path.join(folder, 'calculator.zend'), '<state>\n\t<mode opt="dbg"/>\n\t<open>\n'
              '\t\t<file name="calcform.cpp" id="1"/>\n\t</open>\n</state>\n')
        lines = read(self.source).splitlines()
        handler = next(i for i, line in enumerate(lines, 2) if line.startswith('void CalcForm::ClickKey'))
        pressing = next(i for i, line in enumerate(lines, 1) if 'bool calculates' in line)
        self.open(os.path.join(folder, 'calculator.zpj'))
        self.go_to(handler)
        self.window.key('F9')
        disc = wait_until(self.discs, 'the breakpoint is shown')
        self.window.key('F5')

        def calculators():
            return self.desktop.ask('xdotool', 'search', '--onlyvisible', '--name', '^Calculator$').split()
        calculator = wait_until(calculators, 'the calculator')[0]
        self.settle()
        self.assertEqual(self.rows(TEXT_COLUMN, is_execution), [])
        x, y = map(str, DIGIT_7)
        self.desktop.ask('xdotool', 'mousemove', '--sync', '--window', calculator, x, y, 'click', '1')
        wait_until(lambda: self.desktop.ask('xdotool', 'getactivewindow').strip() == self.window.main, 'the stop')
        ground = wait_until(lambda: self.rows(TEXT_COLUMN, is_execution), 'the line of the stop')
        self.assertTrue(ground[0] <= disc[0] and disc[-1] <= ground[-1], f'{disc} is beside {ground}')

        self.go_to(pressing)
        self.settle()
        ground = self.rows(TEXT_COLUMN, is_execution)  # the text may have been scrolled
        self.window.key('ctrl+F10')
        wait_until(lambda: self.rows(TEXT_COLUMN, is_execution) not in ([], ground), 'another line')
        self.settle()
        self.watch('key')
        wait_until(lambda: self.rows(FIRST_VALUE, lambda r, g, b: r + g + b < 150), 'the value')
        self.look('calculator')
        self.window.key('F5')
        wait_until(lambda: not self.rows(TEXT_COLUMN, is_execution), 'the program runs on')
        self.desktop.ask('xdotool', 'windowactivate', '--sync', calculator, 'key', 'alt+F4')
        self.wait_for_end()
        self.desktop.ask('xdotool', 'windowactivate', '--sync', self.window.main)
        self.assertIn('The program has ended with exit code 0', self.output())
        self.assertEqual(self.window.close(), 0)


if __name__ == '__main__':
    unittest.main(verbosity=2)
