#!/usr/bin/env python3
"""How long an empty form takes to build, with mavro and with Qt Widgets directly, by the switches of a release build.

    bench/compile_form.py STAGE [ROUNDS]

STAGE is a laid out installation. Each round builds both, one after the other; medians of the processor time are
printed, with the range. Ends with 1 if the form with mavro takes longer than the other."""
import os
import re
import statistics
import subprocess
import sys
import tempfile

MAVRO = '''#include <mavro>

class MainForm : public Form {
 public:
  MainForm() {
    text = "Empty";
    SetBounds(100, 100, 320, 200);
  }
};

int Application::Main(const ArgumentList&) {
  MainForm form;
  form.Show();
  return 0;
}
'''
WIDGETS = '''#include <QApplication>
#include <QWidget>

class MainForm : public QWidget {
 public:
  MainForm() {
    setWindowTitle("Empty");
    setGeometry(100, 100, 320, 200);
  }
};

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  MainForm form;
  form.show();
  return application.exec();
}
'''


def framework_flags(stage):
    """Switches of the library set "mavro" of the installation."""
    with open(os.path.join(stage, 'bin', 'Zendry.cfg')) as file:
        compile_flags, link_flags = re.search(r'<library name="mavro" path="([^"]*)" value="([^"]*)"', file.read()).groups()
    return [flags.replace('@', os.path.abspath(stage)).split() for flags in (compile_flags, link_flags)]


def toolkit_flags():
    """Switches that a build by hand needs: the folders of two modules, and position-independent code."""
    machine = subprocess.run(['g++', '-print-multiarch'], stdout=subprocess.PIPE, text=True).stdout.strip()
    base = f'/usr/include/{machine}/qt6'
    folders = [f'-I{base}'] + [f'-I{base}/Qt{module}' for module in ('Core', 'Gui', 'Widgets')]
    return ['-std=c++20', '-fPIC'] + folders, ['-lQt6Widgets', '-lQt6Gui', '-lQt6Core']


def timed(*command):
    """Milliseconds of processor time, of the tools that the command starts too."""
    process = subprocess.Popen(command)
    _, status, usage = os.wait4(process.pid, 0)
    process.returncode = os.waitstatus_to_exitcode(status)
    if process.returncode:
        sys.exit(process.returncode)
    return (usage.ru_utime + usage.ru_stime) * 1000


def main(stage, rounds):
    with tempfile.TemporaryDirectory() as folder:
        os.chdir(folder)
        programs = {'mavro': (MAVRO, *framework_flags(stage)), 'Qt Widgets': (WIDGETS, *toolkit_flags())}
        figures = {(name, step): [] for name in programs for step in ('compile', 'link')}
        for round_number in range(rounds + 1):
            for name, (source, compile_flags, link_flags) in programs.items():
                with open('form.cpp', 'w') as file:
                    file.write(source)
                times = {'compile': timed('g++', '-c', '-O2', *compile_flags, 'form.cpp', '-o', 'form.o'),
                         'link': timed('g++', '-o', 'form', 'form.o', *link_flags, '-s')}
                for step, value in times.items():
                    if round_number:  # the first one fills the caches
                        figures[name, step].append(value)
        for (name, step), values in figures.items():
            print(f'{name:<11} {step:<8} {statistics.median(values):7.0f} ms ({min(values):.0f}-{max(values):.0f})')
        totals = {name: sum(statistics.median(figures[name, step]) for step in ('compile', 'link')) for name in programs}
        ratio = totals['mavro'] / totals['Qt Widgets']
        print(f'both        mavro to Qt Widgets {ratio:.2f}')
        return 0 if ratio <= 1 else 1


if __name__ == '__main__':
    sys.exit(main(sys.argv[1], int(sys.argv[2]) if len(sys.argv) > 2 else 11))
