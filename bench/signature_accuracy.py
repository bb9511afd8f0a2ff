#!/usr/bin/env python3
"""How often signature help shows the declaration that a programmer expects: zendry-lsp beside clangd, asked the same.

    bench/signature_accuracy.py --lsp build/dev/stage/bin/zendry-lsp --corpora FOLDER [REQUESTS...]

The requests lie in bench/signature_requests, in the form of those of completion_accuracy.py. What is expected:

    overloads    v.find('a',  => (Vector &pattern, int offset) *(char c, int offset) @1 !append

    (a, b)   a signature with two parameters must be there, the first with "a" and the second with "b" in its text
    *(a)     it must be the active one too, as it fits the arguments so far
    @1       the active parameter, from 0
    !append  no signature has this name

Blanks don't count. The expectations come from reading the code. An answer is right if all this holds; it is empty if it
has no signature, else wrong."""
import re

import completion_accuracy
from completion_accuracy import Request, Result


def closing(text, start):
    """The place of the bracket that closes the one at `start`."""
    depth = 0
    for at in range(start, len(text)):
        depth += (text[at] in '([{<') - (text[at] in ')]}>')
        if depth == 0:
            return at
    raise ValueError(f'no bracket closes {text[start:]}')


def parameters_of(text):
    """The parameters of a list without its brackets."""
    parts = ['']
    depth = 0
    for letter in text:
        depth += (letter in '([{<') - (letter in ')]}>')
        if letter == ',' and depth == 0:
            parts.append('')
        else:
            parts[-1] += letter
    return [''.join(part.split()) for part in parts] if text.strip() else []


class Base(completion_accuracy.Base):
    """A code base with its requests."""

    def read(self, line, file, place):
        asked, _, expected = line.partition(' => ')
        category, _, text = asked.partition('  ')
        wanted, unwanted = [], []
        at = 0
        while at < len(expected):
            found = re.compile(r'\s*(?:(\*?)(?=\()|@(\d+)|!(\w+))').match(expected, at)
            if not found:
                raise ValueError(f'not understood: {expected[at:]}')
            at = found.end()
            star, number, name = found.groups()
            if number:
                wanted.append(f'@{number}')
            elif name:
                unwanted.append(name)
            else:
                end = closing(expected, at)
                wanted.append((star or '') + expected[at:end + 1])
                at = end + 1
        return Request(self, file, place, category, text.strip().replace('\\n', '\n'), wanted, unwanted)


def shown_parameters(signature):
    label = signature['label']
    for parameter in signature.get('parameters', []):
        text = parameter['label']
        if not isinstance(text, str):
            # The ends count UTF-16, which no label here needs.
            text = label[text[0]:text[1]]
        yield ''.join(text.split())


def fits(signature, wanted):
    shown = list(shown_parameters(signature))
    expected = parameters_of(wanted.lstrip('*')[1:-1])
    return len(shown) == len(expected) and all(part in text for part, text in zip(expected, shown))


def ask(client, address, request, text):
    answer, took = completion_accuracy.ask_at(client, address, request, text, 'textDocument/signatureHelp', {})
    signatures = answer['signatures'] if answer else []
    if not signatures:
        return Result(request, 'empty', request.wanted, [], took)
    first = signatures[answer.get('activeSignature') or 0]
    parameter = first.get('activeParameter', answer.get('activeParameter'))

    def is_there(wanted):
        if wanted.startswith('@'):
            return parameter == int(wanted[1:])
        return any(fits(signature, wanted) for signature in ([first] if wanted.startswith('*') else signatures))

    missing = [wanted for wanted in request.wanted if not is_there(wanted)]
    surplus = [name for name in request.unwanted if any(re.search(rf'\b{name}\(', s['label']) for s in signatures)]
    if missing:
        surplus.append(f'(active: {first["label"]} @{parameter}; {len(signatures)} in all)')
    return Result(request, 'wrong' if missing or surplus else 'right', missing, surplus, took)


if __name__ == '__main__':
    completion_accuracy.measure('Signature', 'signature_requests', Base, ask)
