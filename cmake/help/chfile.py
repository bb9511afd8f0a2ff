"""Writes help indexes ("*.ch"); docs/help.md describes their format."""
import os
import re

# Lines that the reader of indexes would not take as text.
MARK = re.compile(r'[#@]|/\*[-/]')
LONGEST_HEADING = 500
FIELDS = (('b', 'brief'), ('t', 'type'), ('p', 'params'), ('r', 'returns'))


class ChFile:
    """The text of an index. Entries of one text have several names."""

    def __init__(self, origin):
        # One line, which the window breaks where it needs to, and an empty one before the next index's.
        self.out = [safe(' '.join(origin.split())), '']
        self.names = set()

    def module(self, name, brief='', body=''):
        self.out.append('##@' + name)
        self.texts({'brief': brief, 'body': body})

    def entry(self, keys, texts, notice=()):
        """Adds an entry. A key that an earlier entry has is left out. `notice` stays in the file and is not shown."""
        keys = [key for key in dict.fromkeys(keys) if key not in self.names and not re.search(r'\s', key)]
        if not keys:
            return
        self.names.update(keys)
        self.out += ['# ' + line for line in notice]
        for some in pieces(keys):
            self.out.append('#-' + some[0] if len(some) == 1 else '#=' + ' '.join(some))
            self.texts(texts)

    def texts(self, texts):
        for letter, field in FIELDS:
            self.out += [f'@{letter}:{line}' for line in texts.get(field, '').splitlines()]
        self.out += [safe(line) for line in texts.get('body', '').splitlines()]

    def write(self, path, copyrights=''):
        """Writes the index, and beside it a copy of its sources' notice of copyrights."""
        with open(path, 'w', encoding='utf-8', newline='\n') as file:
            file.write('\n'.join(self.out) + '\n')
        if copyrights:
            notice = b''
            if os.path.isfile(copyrights):
                with open(copyrights, 'rb') as file:
                    notice = file.read()
            with open(os.path.splitext(path)[0] + '.copyright', 'wb') as file:
                file.write(notice)


def pieces(keys):
    """The keys in lists that fit into a heading each."""
    some = []
    for key in keys:
        if some and len(' '.join(some + [key]).encode()) > LONGEST_HEADING:
            yield some
            some = []
        some.append(key)
    yield some


def safe(line):
    """A text line that begins like a mark gets a blank before it."""
    return ' ' + line if MARK.match(line) else line
