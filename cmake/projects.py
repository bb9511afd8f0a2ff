#!/usr/bin/env python3
"""Zendry's own project files: which files they list.

    cmake/projects.py            writes the lists anew, from what lies in the folders
    cmake/projects.py --check    says what is missing or too much, and fails if anything is

Options and switches in the files are kept as they stand."""
import os
import re
import sys

TOP = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
# Each project with the folders, relative to its own, whose files it lists; "*" stands for all of them.
PROJECTS = {
    'libs/mavro/mavro.zpj': ('src', 'srcw', 'include'),
    'libs/mavro/sci/mavro-sci.zpj': ('.',),
    'src/zendry.zpj': ('.', '*'),
}
SECTIONS = (('src', '.cpp'), ('hdr', '.h'))


def files(project, ending):
    """The files with that ending, relative to the project's folder."""
    base = os.path.join(TOP, os.path.dirname(project))
    found = []
    folders = PROJECTS[project]
    if '*' in folders:
        folders = [f for f in folders if f != '*'] + sorted(entry.name for entry in os.scandir(base) if entry.is_dir())
    for folder in folders:
        path = os.path.join(base, folder)
        names = sorted(os.listdir(path)) if os.path.isdir(path) else []
        found += [os.path.normpath(os.path.join(folder, name)) for name in names if name.endswith(ending)]
    return found


def renewed(project, text):
    for section, ending in SECTIONS:
        lines = ''.join(f'\t<file name="{name}"/>\n' for name in files(project, ending))
        text = re.sub(f'<{section}>\n.*?</{section}>', lambda _: f'<{section}>\n{lines}</{section}>', text,
                      flags=re.DOTALL)
    return text


def differences(project, text):
    listed = set(re.findall(r'<file name="([^"]*)"', re.sub(r'<res>.*?</res>', '', text, flags=re.DOTALL)))
    there = {name for _, ending in SECTIONS for name in files(project, ending)}
    for name in sorted(there - listed):
        yield f'{project}: {name} is not listed; run cmake/projects.py'
    for name in sorted(listed - there):
        yield f'{project}: {name} is listed and does not exist; run cmake/projects.py'


def main(arguments):
    faults = []
    for project in PROJECTS:
        path = os.path.join(TOP, project)
        with open(path) as file:
            text = file.read()
        faults += differences(project, text)
        if arguments != ['--check'] and text != renewed(project, text):
            with open(path, 'w') as file:
                file.write(renewed(project, text))
            print(f'{project}: renewed')
    if arguments == ['--check']:
        print('\n'.join(faults), end='\n' if faults else '')
        return 1 if faults else 0
    return 0


if __name__ == '__main__':
    sys.exit(main(sys.argv[1:]))
