#!/usr/bin/env python3
"""Makes the help index of the framework from the comments of its public headers.

    cmake/help/mavro.py OUTPUT"""
import os
import re
import sys

import chfile

sys.path.insert(0, os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
import reference  # noqa: E402

ORIGIN = '''The framework mavro, from the comments of its headers. It is under the MIT licence.'''
ELSEWHERE = 'mavro'  # the module of what belongs to no class


def name_of(text):
    """The name that a declaration declares; empty for an operator."""
    text = re.sub(r'^template <.*?> ?', '', text)
    if match := re.match(r'(?:class|struct|enum class|enum|using) (\w+)', text):
        return match[1]
    if match := re.search(r'(~?\b\w+)\s*\(', text):
        return match[1]
    match = re.search(r'(\w+)\s*(?:\[[^]]*\]\s*)?(?:=.*|\{.*)?;?$', text)
    return match[1] if match else ''


def enumerators(text):
    """The names in an enumeration."""
    body = text.partition('{')[2].rpartition('}')[0]
    return [name for part in body.split(',') if re.fullmatch(r'\w+', name := part.partition('=')[0].strip())]


def add_members(out, owner, members):
    """Adds the members of a class; overloads are one entry."""
    found = {}
    for entry in members:
        if entry.members is not None or reference.NOT_LISTED.search(entry.text):
            continue
        if name_of(entry.text) == owner.rpartition('::')[2] and not entry.own_comment:
            continue  # a constructor
        is_enum = entry.text.startswith('enum')
        names = ([name_of(entry.text)] if name_of(entry.text) != 'enum' else []) if is_enum else [name_of(entry.text)]
        names += enumerators(entry.text) if is_enum else []
        if names and (key := tuple(name for name in names if name)):
            found.setdefault(key, []).append(entry)
    for names, entries in found.items():
        comments = list(dict.fromkeys(entry.comment for entry in entries if entry.comment))
        out.entry([f'{owner}@{name}' for name in names],
                  {'brief': comments[0] if comments else '',
                   'body': '\n'.join(comments[1:] + ([f'Member of {owner}.'] if owner != ELSEWHERE else [])),
                   'type': '\n'.join(re.sub(r'\s+', ' ', entry.text).rstrip(';') for entry in entries)})


def add_class(out, entry, header, owner=''):
    name = entry.text.partition(' : ')[0].split()[-1]
    full = f'{owner}::{name}' if owner else name
    listed = [name_of(member.text) for member in entry.members if member.members is None]
    body = 'Members: ' + ', '.join(dict.fromkeys(word for word in listed if word and word != name)) if listed else ''
    out.module(full)
    out.entry([full, f'mavro::{full}'] + ([f'{full}@{name}'] if owner else []),
              {'brief': entry.comment, 'type': entry.text + (f'\n#include <{header}>' if header else ''), 'body': body})
    add_members(out, full, entry.members)
    for member in entry.members:
        if member.members is not None:
            add_class(out, member, '', full)


def main(output):
    out = chfile.ChFile(ORIGIN)
    others, classes = [], []
    for header, entries in reference.headers():
        for entry in entries:
            if entry.members is not None:
                classes.append((entry.text.partition(' : ')[0].split()[-1], entry, header))
            else:
                others.append(entry)
    for _, entry, header in sorted(classes, key=lambda one: one[0].lower()):
        add_class(out, entry, header)
    out.module(ELSEWHERE)
    add_members(out, ELSEWHERE, others)
    out.write(output)
    return 0


if __name__ == '__main__':
    sys.exit(main(sys.argv[1]))
