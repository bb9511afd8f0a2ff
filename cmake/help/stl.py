#!/usr/bin/env python3
"""Makes the help index of the C++ library: of its classes from the manual pages of the package
libstdc++-12-doc, of its functions from the comments of the compiler's headers.

    cmake/help/stl.py OUTPUT MANUAL COPYRIGHT HEADERS

It puts the package's notice of copyrights beside OUTPUT. Without the pages or the notice the index has no
entries."""
import os
import re
import sys

import chfile
import roff

ORIGIN = '''C++ library: GCC's libstdc++, from the manual pages of Debian's package libstdc++-12-doc and from the
comments of the library's headers. Copyright (C) Free Software Foundation, Inc. Both are made from the
library's sources, under the GNU General Public License, version 3 or later, with the GCC Runtime Library
Exception; stl.copyright has the licences in full. Layout is changed.'''
INNER = re.compile(r'std::(__|_[A-Z]|experimental|tr1|tr2|pmr)|.*::(__|_[A-Z])')
MARKS = re.compile(r'[, ]*\[(?:inline|constexpr|noexcept|default|inherited|explicit|virtual|static|protected|private'
                   r'|delete|pure virtual|override|final|mutable|friend)\]')
NOT_TEXT = re.compile(r'(Definition at line|References |Referenced by |Implements |Implemented in |Reimplemented)')
BLOCKS = {'Parameters': 'params', 'Template Parameters': 'params', 'Returns': 'returns', 'Return values': 'returns', 'Todo': 'todo'}
CAPTIONS = re.compile(r'(Parameters|Template Parameters|Returns|Return values|Exceptions|Note|See also|Precondition'
                      r'|Postcondition|Todo|Deprecated:?|Remarks|Warning|Attention|Invariant|Since)$')
# The headers whose functions are documented, each in the module of the header that a program includes.
FUNCTIONS = {'bits/stl_algo.h': 'algorithm', 'bits/stl_algobase.h': 'algorithm', 'bits/stl_heap.h': 'algorithm',
             'bits/algorithmfwd.h': 'algorithm', 'bits/stl_numeric.h': 'numeric', 'bits/move.h': 'utility',
             'bits/stl_pair.h': 'utility', 'bits/unique_ptr.h': 'memory', 'bits/shared_ptr.h': 'memory',
             'bits/stl_iterator_base_funcs.h': 'iterator', 'bits/stl_iterator.h': 'iterator',
             'bits/range_access.h': 'iterator', 'bits/basic_string.h': 'string', 'bits/std_function.h': 'functional',
             'functional': 'functional', 'tuple': 'tuple', 'future': 'future', 'mutex': 'mutex', 'thread': 'thread',
             'complex': 'complex', 'iomanip': 'iomanip', 'ostream': 'ostream', 'istream': 'istream',
             'bits/ios_base.h': 'ios', 'optional': 'optional', 'variant': 'variant', 'any': 'any', 'bit': 'bit',
             'bits/regex.h': 'regex', 'chrono': 'chrono', 'charconv': 'charconv', 'bits/exception_ptr.h': 'exception',
             'numeric': 'numeric', 'cstddef': 'cstddef', 'system_error': 'system_error', 'array': 'array',
             'exception': 'exception'}
FUNCTION = re.compile(r'/\*\*(?P<comment>.*?)\*/\s*(?P<code>[^;{}#/]{3,600}?)[;{]', re.S)


def texts_of(lines):
    """The fields of a member from the lines of its section."""
    texts = {'params': [], 'returns': [], 'body': [], 'todo': []}  # the last isn't for readers
    to = 'body'
    for line in '\n'.join(lines).strip().split('\n'):
        if NOT_TEXT.match(line):
            continue
        if CAPTIONS.match(line):
            to = BLOCKS.get(line, 'body')
            if to == 'body':
                texts[to].append(line)
        elif line == '':
            to = 'body'
            if texts[to] and texts[to][-1]:
                texts[to].append('')
        else:
            texts[to].append(line)
    return {name: '\n'.join(some).strip('\n') for name, some in texts.items()}


def brief_first(texts):
    """The first paragraph is the brief."""
    brief, _, rest = texts['body'].partition('\n')
    return dict(texts, brief=brief, body=rest.strip('\n'))


def prototype(title):
    """The declaration in a title, without the templates around it."""
    text = re.sub(r'\s+', ' ', MARKS.sub('', roff.plain(title))).strip()
    return re.sub(r'^template<.*?> (?=(constexpr |static |virtual )*[\w:\\]+[ <&*])', '', text)


def joined(texts, field):
    """The different lines of a field of several texts."""
    return '\n'.join(dict.fromkeys(line for text in texts for line in text[field].split('\n') if line))


def merged(texts):
    """The texts of all declarations of a name as those of one entry."""
    brief = next((text['brief'] for text in texts if text['brief']), '')
    bodies = ['\n'.join(part for part in (text['brief'] if text['brief'] != brief else '', text['body']) if part)
              for text in texts]
    return {'brief': brief, 'type': joined(texts, 'type'), 'params': joined(texts, 'params'),
            'returns': joined(texts, 'returns'), 'body': '\n\n'.join(body for body in dict.fromkeys(bodies) if body)}


def member_name(declaration, owner):
    """The member's own name in "void std::vector< _Tp, _Alloc >::push_back (const value_type & __x)"."""
    at = declaration.find(owner)
    while at >= 0:
        end = at + len(owner)
        rest = declaration[end:].lstrip()
        if rest.startswith('<'):
            rest = rest[closing(rest):].lstrip()
        if match := re.match(r'::(~?\w+|operator ?[^\s(]+|operator ?\(\))\s*(\(|$)', rest):
            return match[1]
        at = declaration.find(owner, end)
    return ''


def closing(text):
    """The end of the brackets < > that a text begins with."""
    depth = 0
    for place, char in enumerate(text):
        depth += (char == '<') - (char == '>')
        if depth == 0:
            return place + 1
    return len(text)


def members(page, owner):
    """Each member of the class with the fields of all its declarations."""
    found = {}
    for title, level, lines in page.sections:
        if level != 'SS' or '[inherited]' in title or '::' not in title:
            continue
        name = member_name(MARKS.sub('', roff.plain(title)).replace('\n', ' ').strip(), owner)
        if not name or name.startswith('_') or name.startswith('~'):
            continue
        texts = brief_first(texts_of(lines))
        texts['type'] = prototype(title)
        found.setdefault(name, []).append(texts)
    return {name: merged(some) for name, some in found.items()}


def class_texts(page):
    brief = page.text('NAME').partition(' - ')[2].strip()
    titles = [title for title, _, _ in page.sections]
    at = titles.index('Detailed Description') if 'Detailed Description' in titles else len(titles)
    body = [line for _, level, lines in page.sections[at + 1:at + 2] if level == 'SS' for line in lines]
    # The text goes on behind the quote that ends the title: class std::vector< _Tp, _Alloc >"A standard container
    texts = texts_of([re.sub(r'^(class|struct|union) [^"]*"', '', line) for line in body])
    if texts['body'].startswith(brief):
        texts['body'] = texts['body'][len(brief):].strip()
    synopsis = page.text('SYNOPSIS').split('\n')[0]
    return dict(texts, brief=brief, type=synopsis if synopsis.startswith('#include') else '')


def class_names(name, others):
    """The class by its name with and without namespaces, and by the names it has for char."""
    names = [name] + [other for other in others if not other.startswith('std::w')] + others
    return names + [other.rpartition('::')[2] for other in names]


def add_classes(out, manual):
    folder = os.path.join(manual, 'man3')
    files = sorted(name for name in os.listdir(folder) if name.startswith('std::') and name.endswith('.3cxx.gz'))
    others, names = {}, []
    for file in files:
        name = file.removesuffix('.3cxx.gz')
        aim = roff.target(os.path.join(folder, file))
        if aim:
            others.setdefault(aim.removesuffix('.3cxx.gz').removesuffix('.gz').removesuffix('.3cxx'), []).append(name)
        elif not INNER.match(name):
            names.append(name)
    pages = [(name, roff.read_page(os.path.join(folder, name + '.3cxx.gz'), split_subsections=True)) for name in names]
    for name, page in pages:
        out.module(name)
        out.entry(class_names(name, others.get(name, [])), class_texts(page))
        for member, texts in members(page, name).items():
            out.entry([f'{name}@{member.replace(" ", "")}'], texts)


def comment_texts(comment):
    lines = [re.sub(r'^\s*\*? ?', '', line).rstrip() for line in comment.strip().split('\n')]
    texts = {'params': [], 'returns': [], 'brief': [], 'body': []}
    to = 'body'
    for line in lines:
        line = line.strip()
        if re.match(r'[@\\](ingroup|addtogroup|headerfile|relates|var|fn|defgroup|\{|\}|cond|if|endif|name)', line):
            continue
        if match := re.match(r'[@\\](brief|t?param|returns?|retval)\b(?:\[\w+\])?\s*(.*)', line):
            to = {'brief': 'brief', 'param': 'params', 'tparam': 'params'}.get(match[1], 'returns')
            line = match[2]
            texts[to].append(line)
        elif not line:
            to = 'body'
            texts[to].append('')
        elif texts[to] and texts[to][-1]:
            texts[to][-1] += ' ' + line
        else:
            texts[to].append(line)
    texts = {name: re.sub(r'[@\\](a|c|p|e|em|b)\s|</?(em|code|tt|b|i|p)>|%(?=\w)|[@\\](pre|post|throw|note|sa|since)\b', '',
                          '\n'.join(some)).strip('\n') for name, some in texts.items()}
    return texts if texts['brief'] else brief_first(texts)


def add_functions(out, headers):
    found = {}
    for header, module in FUNCTIONS.items():
        path = os.path.join(headers, header)
        if not os.path.isfile(path):
            continue
        with open(path, encoding='utf-8', errors='replace') as file:
            text = file.read()
        for match in FUNCTION.finditer(text):
            code = re.sub(r'\s+', ' ', re.sub(r'_GLIBCXX\w+(\([^)]*\))?', '', match['code'])).strip()
            code = re.sub(r'^template ?<.*?> (?=[\w:]+[ <&*])', '', code)
            name = re.search(r'\b(?!operator)([a-z]\w*) ?\((?!.*\)\s*\()', code)
            indent = match.start('code') - text.rfind('\n', 0, match.start('code')) - 1
            if not name or indent > 2 or re.match(r'(typedef|using|class|struct|namespace|enum)\b', code):
                continue
            if re.search(r'[=~]', code[:name.start()]):
                continue
            found.setdefault((module, name[1]), []).append(dict(comment_texts(match['comment']), type=code))
    modules = dict.fromkeys(module for module, _ in found)
    for module in modules:
        out.module(module)
        for (other, name), some in found.items():
            if other != module:
                continue
            texts = merged(some)
            texts['type'] = f'#include <{module}>\n' + texts['type']
            out.entry([f'{module}@{name}', f'{module}@std::{name}'], texts)


def add_streams(out, headers):
    """The standard streams: "extern ostream cout; /// Linked to standard output"."""
    path = os.path.join(headers, 'iostream')
    if not os.path.isfile(path):
        return
    out.module('iostream')
    with open(path, encoding='utf-8', errors='replace') as file:
        for kind, name, brief in re.findall(r'extern (\w+) (\w+);\s*///\s*(?:<\s*)?(.*)', file.read()):
            out.entry([f'iostream@{name}', f'iostream@std::{name}'],
                      {'brief': brief.strip(), 'type': f'#include <iostream>\nextern std::{kind} std::{name}'})


def main(output, manual, copyrights, headers):
    out = chfile.ChFile(ORIGIN)
    if os.path.isfile(copyrights) and os.path.isdir(os.path.join(manual, 'man3')):
        add_classes(out, manual)
    if out.names:
        add_functions(out, headers)
        add_streams(out, headers)
    if not out.names:
        print(f'{output}: no manual pages of the C++ library in {manual}: the index is empty', file=sys.stderr)
    out.write(output, copyrights)
    return 0


if __name__ == '__main__':
    sys.exit(main(*sys.argv[1:]))
