#!/usr/bin/env python3
"""Checks of the sources: who may include what, and how files look. sources.py CHECK [ARGUMENT...]"""
import collections
import json
import os
import re
import subprocess
import sys
import tempfile

import tree

INCLUDE = re.compile(r'\s*#\s*include\s*([<"])([^>"]+)[>"]')
TOOLKIT_HEADER = re.compile(r'(Q[A-Z]\w*|Qt\w*/.*|Qsci/.*|q[a-z]+\.h|private/q.*)$')
TOOLKIT_NAME = re.compile(r'\b(Q[A-Z][a-z]\w*|Qsci\w*)\b')
# Where the toolkit is known, and the program of the build that draws the picture strips with it.
TOOLKIT_HOME = re.compile(r'(libs/mavro/(srcw|sci)/Qt\w*\.(cpp|h)|tools/MakeStrip\.cpp)$')
PRODUCT = ('libs', 'src', 'tools')
LONGEST_FILE = 700
MOST_BEFORE_SOURCES = 12


def includes(path):
    for number, line in enumerate(tree.lines(path), 1):
        if match := INCLUDE.match(line):
            yield number, match.group(2)


def toolkit_stays_behind_the_seam():
    for path in tree.cpp_files(*PRODUCT):
        if TOOLKIT_HOME.match(path):
            continue
        for number, header in includes(path):
            if TOOLKIT_HEADER.match(header):
                yield f'{path}:{number}: includes <{header}>'


def public_headers_name_no_toolkit_type():
    for path in tree.files('libs/mavro/include'):
        for number, line in enumerate(tree.lines(path), 1):
            if match := TOOLKIT_NAME.search(line.split('//')[0]):
                yield f'{path}:{number}: names {match.group(1)}'


def layers_include_downward_only():
    """The framework includes nothing of the program, the program only the framework's public headers."""
    program = {os.path.basename(p) for p in tree.cpp_files('src')}
    inner = {os.path.basename(p) for p in tree.cpp_files('libs/mavro/src', 'libs/mavro/srcw')}
    public = {os.path.basename(p) for p in tree.files('libs/mavro/include')}
    for path in tree.cpp_files('libs'):
        for number, header in includes(path):
            if os.path.basename(header) in program - inner - public:
                yield f'{path}:{number}: includes {header} of the program'
    for path in tree.cpp_files('src', 'tools'):
        for number, header in includes(path):
            if os.path.basename(header) in inner - public - program:
                yield f'{path}:{number}: includes {header}, which is not public'


def public_headers_compile_alone(compiler):
    folder = os.path.join(tree.TOP, 'libs/mavro/include')
    for name in sorted(os.listdir(folder)):
        command = [compiler, '-std=c++20', '-Wall', '-Wextra', '-Wpedantic', '-Werror', '-fsyntax-only', '-I', folder,
                   '-x', 'c++', '-']
        result = subprocess.run(command, input=f'#include "{name}"\n', text=True, stderr=subprocess.PIPE)
        if result.returncode:
            yield f'libs/mavro/include/{name}: doesn\'t compile alone\n{result.stderr}'


def handlers_elsewhere_are_refused_by_a_sentence(compiler):
    """A class that is no object can't have handlers: the compiler says so in words, and nothing else."""
    code = ('#include <mavro>\nstruct Plain%s {\n  Button button;\n  ActionList acts;\n  void On(NotifyArgs&) {}\n'
            '  void Over(MouseArgs&) {}\n  void Do(int) {}\n  void Tie() { %s; }\n};\n')
    ties = ('button.onClick.Add_H(this, &Plain::On)', 'button.onMouseEnter.Add_H(this, &Plain::On)',
            'button.onMouseLeave.Add_H(this, &Plain::Over)', 'acts.SetTarget(this, &Plain::Do)')
    command = [compiler, '-std=c++20', '-fsyntax-only', '-I', os.path.join(tree.TOP, 'libs/mavro/include'),
               '-x', 'c++', '-']
    for tie in ties:
        for base in ('', ' : object'):
            said = subprocess.run(command, input=code % (base, tie), text=True, stderr=subprocess.PIPE).stderr
            errors = [line for line in said.splitlines() if ' error: ' in line]
            if bool(errors) == bool(base):
                yield f'{tie}{base}: {"refused" if errors else "taken"}'
            elif errors and (len(errors) > 1 or 'derives from mavro::object' not in errors[0]):
                yield f'{tie}: ' + ' / '.join(errors)


def no_stem_stands_twice():
    """A project puts all objects into one folder, this one too if it is built with itself."""
    places = collections.defaultdict(list)
    for path in tree.files(*PRODUCT, endings=('.cpp', '.cp', '.c')):
        places[os.path.splitext(os.path.basename(path))[0].lower()].append(path)
    for paths in places.values():
        if len(paths) > 1:
            yield 'one stem: ' + ', '.join(paths)


def editor_messages_are_the_components(header):
    """Names and numbers of messages that portable code sends, beside the component's own header."""
    value = re.compile(r'^\s*((?:SCI|SC|SCWS|SCFIND|STYLE|CARET)_\w+)\s*=\s*(-?\w+)', re.M)
    with open(header, encoding='utf-8', errors='replace') as file:
        known = {name: int(number, 0) for name, number in value.findall(file.read())
                 if re.fullmatch(r'-?(0x[0-9a-fA-F]+|\d+)', number)}
    path = 'libs/mavro/sci/SciMessages.h'
    for name, number in value.findall(tree.read(path).decode()):
        if known.get(name) != int(number, 0):
            yield f'{path}: {name} is {known.get(name)}'


def every_source_is_built(build_folder):
    with open(os.path.join(build_folder, 'compile_commands.json')) as file:
        built = {os.path.realpath(os.path.join(c['directory'], c['file'])) for c in json.load(file)}
    for path in tree.files(*PRODUCT, endings=('.cpp',)):
        if os.path.realpath(os.path.join(tree.TOP, path)) not in built:
            yield f'{path}: is part of no target'


def formatted():
    paths = [path for path in tree.cpp_files('libs', 'src', 'tools', 'tests', 'bench')
             if not path.startswith('tests/data/')]
    result = subprocess.run(['clang-format', '--dry-run', '--Werror', *paths], cwd=tree.TOP, text=True,
                            stderr=subprocess.PIPE)
    return [line for line in result.stderr.splitlines() if ' error: ' in line]


def text_files():
    for path in tree.files():
        content = tree.read(path)
        if not path.startswith('tests/data/') and '/seeds/' not in path and tree.is_text(content):
            yield path, content


def lines_end_well():
    for path, content in text_files():
        if content and not content.endswith(b'\n'):
            yield f'{path}: no newline at the end'
        if b'\r\n' in content:
            yield f'{path}: CR LF'
        for number, line in enumerate(content.split(b'\n'), 1):
            if line != line.rstrip(b' \t'):
                yield f'{path}:{number}: blanks at the end of the line'


def no_path_of_this_machine():
    """Nothing that works on one developer's machine only. Tests may invent a user "somebody"."""
    path_of_machine = re.compile(re.escape(tree.TOP + '/') + r'|(?<![\w.])/(root|Users|home)/(?!somebody\b|u\b)\w+')
    for path, content in text_files():
        for number, line in enumerate(content.decode('utf-8', 'replace').splitlines(), 1):
            if match := path_of_machine.search(line):
                yield f'{path}:{number}: {match.group(0)}'


def files_have_one_screenful_of_purpose():
    for path in tree.files(endings=('.cpp', '.h', '.py', '.sh', '.cmake')):
        if len(tree.lines(path)) > LONGEST_FILE:
            yield f'{path}: {len(tree.lines(path))} lines'


def root_folder_is_short():
    entries = sorted(e for e in os.listdir(tree.TOP) if not e.startswith('.') and e not in tree.NOT_OURS)
    if entries.index('src') > MOST_BEFORE_SOURCES:
        yield 'too many entries before src: ' + ' '.join(entries)


def says_nothing(*command):
    """What a check of another script finds."""
    result = subprocess.run([sys.executable, '-B', *command], cwd=tree.TOP, text=True, stdout=subprocess.PIPE,
                            stderr=subprocess.STDOUT)
    return result.stdout.splitlines() or ([] if result.returncode == 0 else [f'{command[0]} failed'])


def projects_list_every_source():
    """Zendry's own project files, by which it builds itself."""
    return says_nothing('cmake/projects.py', '--check')


def public_interfaces_have_comments():
    return says_nothing('cmake/reference.py', '--check')


def public_functions():
    """Class and name of each, as a look at our way of writing headers tells."""
    named = re.compile(r'  (?!friend|using|static_assert|~|virtual ~)\S.*?(operator\W+|\w+)\(')
    for path in tree.files('libs/mavro/include', endings=('.h',)):
        owner, is_open = '', False
        for line in (line.split('//')[0] for line in tree.lines(path)):
            if match := re.match(r'(class|struct) (\w+).*\{$', line):
                owner, is_open = match.group(2), match.group(1) == 'struct'
            elif match := re.match(r' (public|protected|private):', line):
                is_open = match.group(1) == 'public'
            elif line.startswith('};'):
                owner = ''
            elif owner and is_open and '= delete' not in line and (match := named.match(line)):
                yield owner, match.group(1).strip()


def reference_lists_every_public_function():
    with tempfile.TemporaryDirectory() as folder:
        made = os.path.join(folder, 'reference.md')
        subprocess.run([sys.executable, '-B', 'cmake/reference.py', made], cwd=tree.TOP, check=True)
        with open(made) as file:
            sections = dict(section.split('\n', 1) for section in file.read().split('\n### ')[1:])
    for owner, name in public_functions():
        if owner in sections and f'{name}(' not in sections[owner]:
            yield f'{owner}: {name} is not listed'
    if not {'Button', 'Event', 'Key'} <= sections.keys():
        yield 'classes are not listed'


def scripts_parse():
    for path, content in text_files():
        if content.startswith(b'#!') and b'sh' in content.split(b'\n', 1)[0].rsplit(b'/', 1)[1] or path.endswith('.sh'):
            if subprocess.run(['bash', '-n', os.path.join(tree.TOP, path)]).returncode:
                yield f'{path}: doesn\'t parse'


tree.run_named({check.__name__: check for check in (
    toolkit_stays_behind_the_seam, public_headers_name_no_toolkit_type, layers_include_downward_only,
    public_headers_compile_alone, handlers_elsewhere_are_refused_by_a_sentence,
    no_stem_stands_twice, every_source_is_built, formatted, lines_end_well,
    editor_messages_are_the_components, no_path_of_this_machine, files_have_one_screenful_of_purpose,
    root_folder_is_short, projects_list_every_source,
    public_interfaces_have_comments, reference_lists_every_public_function, scripts_parse)})
