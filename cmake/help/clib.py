#!/usr/bin/env python3
"""Makes the help index of the C library from the manual pages of the package manpages-dev.

    cmake/help/clib.py OUTPUT MANUAL COPYRIGHT

It puts the package's notice of copyrights beside OUTPUT. Without the pages or the notice the index has no
entries."""
import os
import re
import sys

import chfile
import roff

FOLDERS = ('man2', 'man3', 'man2type', 'man3type', 'man3const', 'man3head')
# The licences that a collection of texts under the GPL 3 may hold; a page names its own.
LICENCES = {'Linux-man-pages-copyleft', 'GPL-2.0-or-later', 'GPL-1.0-or-later', 'BSD-4-Clause-UC', 'BSD-3-Clause',
            'BSD-2-Clause', 'MIT'}
ORIGIN = '''C library and system calls: the Linux man-pages, from Debian's package manpages-dev.
Each page is free to copy under the licence that is named above its entry in clib.ch;
clib.copyright has the licences in full. Sections, fonts and layout are changed.'''
LEFT_OUT = {'NAME', 'LIBRARY', 'SYNOPSIS', 'RETURN VALUE', 'ATTRIBUTES', 'COLOPHON', 'VERSIONS', 'STANDARDS',
            'CONFORMING TO', 'HISTORY'}
NAME = re.compile(r'[A-Za-z_]\w*(\.h)?$')
ELSEWHERE = 'C library'  # the module of what no header declares


def licence(page):
    for line in page.notice:
        if match := re.match(r'SPDX-License-Identifier:\s*(\S+)', line):
            return match[1]
    return ''


def names_of(page):
    names, _, brief = page.text('NAME').replace('\n', ' ').partition(' - ')
    return [name.strip() for name in names.split(',')], brief.strip()


def headers(synopsis, names):
    """The header that declares each name: the include nearest above it."""
    found, include, first = {}, '', ''
    for line in synopsis.splitlines():
        if match := re.match(r'\s*#include <([^>]+)>', line):
            include = match[1]
            first = first or include
        for name in re.findall(r'\b[A-Za-z_]\w*', line) if include else ():
            if name in names:
                found.setdefault(name, include)
    return lambda name: name if name.endswith('.h') else found.get(name, first) or ELSEWHERE


def body_of(page):
    parts = []
    for title, _, lines in page.sections:
        text = '\n'.join(lines).strip('\n')
        if title in LEFT_OUT or not text:
            continue
        parts.append(text if title == 'DESCRIPTION' else title + '\n' + text)
    return '\n\n'.join(parts)


def pages(manual):
    """Each page with the names of the files that refer to it."""
    others = {}
    files = []
    for folder in FOLDERS:
        for name in sorted(os.listdir(os.path.join(manual, folder))) if os.path.isdir(
                os.path.join(manual, folder)) else ():
            path = os.path.join(manual, folder, name)
            if aim := roff.target(path):
                others.setdefault(aim, []).append(name.split('.')[0])
            else:
                files.append((name, path))
    for name, path in files:
        yield name, path, others.get(name, [])


def make(manual):
    out = chfile.ChFile(ORIGIN)
    entries = []
    for file, path, others in pages(manual):
        page = roff.read_page(path)
        if not page or licence(page) not in LICENCES:
            continue  # of other packages, or not free enough
        names, brief = names_of(page)
        names = [name for name in dict.fromkeys(names + [file.split('.')[0]] + others) if NAME.match(name)]
        synopsis = page.text('SYNOPSIS').partition('Feature Test Macro Requirements')[0].rstrip()
        header = headers(synopsis, set(names))
        texts = {'brief': brief, 'type': synopsis, 'returns': page.text('RETURN VALUE'), 'body': body_of(page)}
        notice = [re.sub(r'^%+', '', line) for line in page.notice if line and line != 't']
        entries.append(([f'{header(name)}@{name}' for name in names], texts, notice))
    for module in sorted({key.split('@')[0] for keys, _, _ in entries for key in keys}):
        out.module(module)
    for keys, texts, notice in entries:
        out.entry(keys, texts, notice)
    return out


def main(output, manual, copyrights):
    out = make(manual) if os.path.isfile(copyrights) else chfile.ChFile(ORIGIN)
    if not out.names:
        print(f'{output}: no manual pages of the C library in {manual}: the index is empty', file=sys.stderr)
    out.write(output, copyrights)
    return 0


if __name__ == '__main__':
    sys.exit(main(*sys.argv[1:]))
