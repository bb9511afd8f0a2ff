#!/usr/bin/env python3
"""Checks of what was built: who links what. binaries.py CHECK FILE..."""
import re
import subprocess

import tree

TOOLKIT_SYMBOL = re.compile(r'\b(Q[A-Z]\w*|q[A-Z]\w+|Qsci\w*)\b')


def output_of(*command):
    return subprocess.run(command, stdout=subprocess.PIPE, text=True, check=True).stdout


def foreign_symbols(library, pattern):
    for line in output_of('nm', '--undefined-only', '--demangle', library).splitlines():
        if line.strip().startswith('U ') and (match := pattern.search(line)):
            yield f'{library}: needs {match.group(0)}: {line.strip()}'


def libraries_need_no_toolkit(*libraries):
    for library in libraries:
        yield from foreign_symbols(library, TOOLKIT_SYMBOL)


def libraries_need_no_editor(*libraries):
    """The editor library has another licence than what users' programs link."""
    for library in libraries:
        yield from foreign_symbols(library, re.compile(r'Qsci|Scintilla'))


tree.run_named({check.__name__: check for check in (
    libraries_need_no_toolkit, libraries_need_no_editor)})
