#!/usr/bin/env python3
"""Checks of the rooms of src: who may include whom, where tests lie, and how large things may grow.
rooms.py CHECK"""
import os
import re

import draw_rooms
import tree

# Each room with those of src that it may include, lowest first; docs/architecture.md draws them.
SIBLING = 'base config code project editor'
ROOMS = {room: allowed.split() for room, allowed in {
    'base': '',
    'config': 'base',
    'tags': 'base',
    'code': 'base tags',
    'project': 'base config tags code',
    'lsp': 'base config code project tags',
    'build': 'base config project',
    'rescue': 'base project',
    'editor': 'base config code project rescue',
    'debug': 'base config project build editor',
    'frmedt': SIBLING,
    'search': SIBLING,
    'browser': SIBLING,
    'wizards': SIBLING,
    'help': SIBLING,
    'print': SIBLING,
}.items()}
ROOMS['frame'] = list(ROOMS)
# Folders of tests that mirror no room but a library, and the tools.
OTHER_TEST_FOLDERS = {'mavro', 'sci', 'tools'}

INCLUDE = re.compile(r'\s*#\s*include\s*"([^"]+)"')
# A table of the editing component's names and numbers: nothing in it is read from start to end.
TABLES = {'libs/mavro/sci/SciMessages.h'}
LONGEST_FUNCTION = 100
LONGEST_HEADER = 250
LONGEST_SOURCE = 900


def includes(path):
    for number, line in enumerate(tree.lines(path), 1):
        if match := INCLUDE.match(line):
            yield number, match.group(1)


def room_of(path):
    """The room of a file of src; empty for what lies in none."""
    parts = path.split('/')
    return parts[1] if len(parts) == 3 else ''


def rooms_include_downward_only():
    for path in tree.cpp_files('src'):
        room = room_of(path)
        if room not in ROOMS:
            yield f'{path}: lies in no room'
            continue
        for number, header in includes(path):
            other = header.split('/')[0] if '/' in header else ''
            if other in ROOMS and other != room and other not in ROOMS[room]:
                yield f'{path}:{number}: {room} may not include {header}'


def includes_name_the_room():
    """Of what lies in src; whoever includes it."""
    homes = {os.path.basename(path): path[len('src/'):] for path in tree.files('src', endings=('.h',))}
    for path in tree.cpp_files('src', 'tools', 'tests', 'bench'):
        if path.startswith('tests/data/'):
            continue
        for number, header in includes(path):
            home = homes.get(os.path.basename(header))
            if home and header != home:
                yield f'{path}:{number}: {header} is {home}'


def tests_mirror_the_rooms():
    for kind in ('unit', 'gui'):
        for path in tree.files(f'tests/{kind}', endings=('_test.cpp',)):
            folders = path.split('/')[2:-1]
            if len(folders) != 1 or folders[0] not in ROOMS.keys() | OTHER_TEST_FOLDERS:
                yield f'{path}: lies in no folder of a room or library'


def function_lengths(lines):
    """First line and length of each function body, told by the formatting: it ends with a brace that stands
    where its first line begins. Tables and types count for nothing, nor does what the form designer writes."""
    start, designed, is_designed = None, 0, False
    for number, line in enumerate(lines, 1):
        is_designed = line.strip() == '//!init' or (is_designed and line.strip() != '//!end')
        designed += is_designed
        if start is None:
            designed = 0
            is_head = re.match(r'(  )?[A-Za-z_~].*\)( const| override| final| noexcept| mutable)*( ->.*)? \{$', line)
            is_tail = re.match(r'(  )? {4,}.*\)( const| override| final| noexcept)*( ->.*)? \{$', line)
            if is_head and not re.match(r' *(if|for|while|switch|do|else|namespace|class|struct|enum)\b', line):
                start, indent = number, is_head.group(1) or ''
            elif is_tail and number > 1 and re.match(r'(  )?[A-Za-z_~]', lines[number - 2]):
                start, indent = number - 1, re.match(r'(  )?(?! )', lines[number - 2]).group(1) or ''
        elif line == indent + '}':
            yield start, number - start + 1 - designed
            start = None


def nothing_grows_beyond_the_edges():
    for path in tree.cpp_files('libs', 'src', 'tools'):
        lines = tree.lines(path)
        most = LONGEST_HEADER if path.endswith('.h') else LONGEST_SOURCE
        if len(lines) > most and path not in TABLES:
            yield f'{path}: {len(lines)} lines, more than {most}'
        for start, length in function_lengths(lines):
            if length > LONGEST_FUNCTION:
                yield f'{path}:{start}: a function of {length} lines, more than {LONGEST_FUNCTION}'


def drawing_shows_the_rooms():
    if tree.read(draw_rooms.DRAWING).decode() != draw_rooms.svg(ROOMS):
        yield f'{draw_rooms.DRAWING}: is not what tests/structure/draw_rooms.py draws'


CHECKS = {check.__name__: check for check in (
    rooms_include_downward_only, includes_name_the_room, tests_mirror_the_rooms, nothing_grows_beyond_the_edges,
    drawing_shows_the_rooms)}

if __name__ == '__main__':
    tree.run_named(CHECKS)
