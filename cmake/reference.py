#!/usr/bin/env python3
"""The reference of the framework's public classes, made from the comments of its headers.

    cmake/reference.py OUTPUT    writes it as Markdown
    cmake/reference.py --check   names what has no comment, and fails if anything hasn't

It lists all that programs can call, commented or not; destructors and what is deleted are left out.

A comment stands above a declaration or behind it. One above the first of several lines that no blank line
separates speaks for all of them. Constructors, destructors, operators, what overrides something and questions
without parameters, which are called what they answer, need none."""
import os
import re
import sys

TOP = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
HEADERS = os.path.join(TOP, 'libs', 'mavro', 'include')
CLASS = re.compile(r'(?:template <.*?>\s*)?(class|struct)\s+(\w+)\s*(?:final\s*)?(?::\s*(.*?))?\s*\{')
ACCESS = re.compile(r'(public|protected|private):$')
NEEDS_NONE = re.compile(r'\boverride\b|\boperator\b|= delete|= default|^~|^virtual ~|^friend\b|^explicit \w+\(\)|^using\b'
                        r'|^static_assert|^typedef\b|^extern template|\w+\(\) const$')
NOT_LISTED = re.compile(r'= delete|^~|^virtual ~|^friend \w+|^using\b|^static_assert|^typedef\b|^extern template')


class Entry:
    """A declaration with its comment; of a class also what is public in it."""

    def __init__(self, text, comment, place, own_comment):
        self.text = text
        self.comment = comment
        self.place = place
        self.own_comment = own_comment  # else one that it shares with lines above
        self.members = None

    def is_function(self):
        return self.members is None and '(' in self.text and not self.text.startswith('enum')


class Header:
    """Reads a header that is formatted as ours are: one declaration a line, or over several."""

    def __init__(self, path, text):
        self.path = path
        self.lines = text.splitlines()
        self.index = 0
        self.entries = []

    def read(self):
        self.read_block(self.entries, is_open=True, owner='')
        return self.entries

    def read_block(self, entries, is_open, owner):
        """Reads up to the brace that closes the block. What isn't open to programs is skipped."""
        comment, shared = [], []
        while self.index < len(self.lines):
            line = self.lines[self.index].strip()
            number = self.index + 1
            if line.startswith('}'):
                self.index += 1
                return
            if not line or line.startswith('#'):
                comment, shared = [], []
                while self.lines[self.index].endswith('\\'):  # a macro of several lines
                    self.index += 1
                self.index += 1
            elif line.startswith('//'):
                comment.append(line[2:].strip())
                self.index += 1
            elif match := ACCESS.match(line):
                is_open = match.group(1) == 'public'
                comment, shared = [], []
                self.index += 1
            elif re.match(r'(inline )?namespace\b.*\{$', line) or line.startswith('extern "C" {'):
                self.index += 1
                hidden = 'detail' in line or line == 'namespace {'
                self.read_block([] if hidden else entries, is_open and not hidden, '')
            else:
                if comment:
                    shared = comment
                entry = self.read_declaration(number, comment, shared, owner)
                if is_open and entry:
                    entries.append(entry)
                comment = []

    def read_declaration(self, number, comment, shared, owner):
        text, trailing = '', ''
        while self.index < len(self.lines):
            code, _, behind = self.lines[self.index].partition('//')
            self.index += 1
            trailing += behind.strip() + ' ' if behind else ''
            text = (text + ' ' + code.strip()).strip()
            if text.endswith('{') or text.endswith(';') or self.balanced_body(text):
                break
        own = ' '.join(comment) or trailing.strip()
        entry = Entry(text, own or ' '.join(shared), f'{self.path}:{number}', bool(own))
        if match := CLASS.match(text):
            if not text.endswith('{'):
                return entry  # a class of one line
            entry.text = match.group(1) + ' ' + match.group(2) + (f' : {match.group(3)}' if match.group(3) else '')
            entry.members = []
            self.read_block(entry.members, is_open=match.group(1) == 'struct', owner=match.group(2))
            return entry
        if text.startswith('enum') and text.endswith('{'):
            entry.text = text + self.skip_body()
            return entry
        if text.endswith('{'):
            self.skip_body()
            text = text[:-1].strip()
        entry.text = self.plain(text)
        is_forward = re.match(r'(class|struct|enum class) \w+(::\w+)?( : \w+)?;$', text)
        return None if is_forward else entry

    @staticmethod
    def balanced_body(text):
        return text.endswith('}') and text.count('{') == text.count('}')

    def skip_body(self):
        """The text of a body up to its closing brace."""
        depth, text = 1, ''
        while depth and self.index < len(self.lines):
            line = self.lines[self.index].partition('//')[0].strip()
            self.index += 1
            depth += line.count('{') - line.count('}')
            text += ' ' + line
        return text

    @staticmethod
    def plain(text):
        """Without a body and without the values of members."""
        text = re.sub(r'\)\s*:\s*\w+[({].*$', ')', text)  # the constructor's initialisers
        text = re.sub(r'(\)(?: const| noexcept)*)\s*\{.*\}$', r'\1', text)
        return text.rstrip(';').strip()


def headers():
    for name in sorted(os.listdir(HEADERS)):
        if name != 'mavro':
            with open(os.path.join(HEADERS, name)) as file:
                yield name, Header(f'libs/mavro/include/{name}', file.read()).read()


def lacking(entries, owner=''):
    is_constructor = re.compile(rf'(constexpr |explicit )*{owner}\(' if owner else '$^')
    for entry in entries:
        if entry.members is not None:
            if not entry.own_comment:
                yield f'{entry.place}: {entry.text} has no comment'
            yield from lacking(entry.members, entry.text.split()[1])
        elif (entry.is_function() and not entry.comment and not NEEDS_NONE.search(entry.text)
              and not is_constructor.match(entry.text)):
            yield f'{entry.place}: {entry.text} has no comment'


def write_entry(out, entry):
    text = re.sub(r'\s+', ' ', entry.text)
    comment = f' — {entry.comment}' if entry.comment and entry.own_comment else ''
    out.append(f'- `{text}`{comment}')


def write_class(out, entry, header, level):
    out += ['', '#' * level + ' ' + entry.text.split(' : ')[0].split()[1], '', entry.comment, '',
            f'`{entry.text}`' + (f', in `{header}`' if header else ''), '']
    for member in entry.members:
        if member.members is None and not NOT_LISTED.search(member.text):
            write_entry(out, member)
    for member in entry.members:
        if member.members is not None:
            write_class(out, member, '', level + 1)


def reference():
    classes, others = [], []
    for name, entries in headers():
        for entry in entries:
            if entry.members is not None:
                classes.append((entry, name))
            elif not NOT_LISTED.search(entry.text):
                others.append(entry)
    out = ['# Reference of mavro', '', 'Made from the comments of the headers. All names stand in the namespace `mavro`; '
           '`#include <mavro>` takes them all.', '', '## Classes']
    for entry, header in sorted(classes, key=lambda pair: pair[0].text.split()[1].lower()):
        write_class(out, entry, header, 3)
    out += ['', '## Functions, constants and variables', '']
    for entry in others:
        write_entry(out, entry)
    return '\n'.join(out) + '\n'


def main(arguments):
    if arguments == ['--check']:
        faults = [fault for _, entries in headers() for fault in lacking(entries)]
        print('\n'.join(faults), end='\n' if faults else '')
        return 1 if faults else 0
    with open(arguments[0], 'w') as file:
        file.write(reference())
    return 0


if __name__ == '__main__':
    sys.exit(main(sys.argv[1:]))
