#!/usr/bin/env python3
"""How often completion has the names that a programmer expects: zendry-lsp beside clangd, asked the same.

    bench/completion_accuracy.py --lsp build/dev/stage/bin/zendry-lsp --corpora FOLDER [REQUESTS...]

The requests lie in bench/completion_requests, a file for each code base: its Debian package, how its sources are
compiled, the headers that its build would make ("made": empty ones are put there), and then by file and place what is
typed there and what must and must not be offered:

    file src/a.cc
    at int main() {                        the one line (without its indentation) after which the text is typed
    member    box.size().  => width !Box   category, text up to the caret ("\\n" between lines), names; "!": not this one

The expectations come from reading the code. An answer is right if it has all the names that must come and none that
must not; it is empty if it has no names, else wrong. Sources that aren't in the folder are fetched by apt-get source."""
import argparse
import collections
import glob
import json
import os
import statistics
import subprocess
import sys
import time

import language_server

HERE = os.path.dirname(os.path.abspath(__file__))
CLANGD = ['clangd', '-j=1', '--background-index=false', '--limit-results=0', '--completion-parse=always', '-log=error']
# clangd offers some keywords as snippets only.
CAPABILITIES = {'textDocument': {'completion': {'completionItem': {'snippetSupport': True}}}}

Request = collections.namedtuple('Request', 'base file place category text wanted unwanted')
Result = collections.namedtuple('Result', 'request verdict missing surplus milliseconds')


class Base:
    """A code base with its requests."""

    def __init__(self, path):
        self.requests = []
        self.made = ''
        file = place = ''
        with open(path) as lines:
            for number, line in enumerate(lines, 1):
                line = line.strip()
                if not line or line.startswith('#'):
                    continue
                if ' => ' in line:
                    self.requests.append(self.read(line, file, place))
                    continue
                word, _, rest = line.partition(' ')
                rest = rest.strip()
                if word == 'file':
                    file = rest
                elif word == 'at':
                    place = rest
                elif word in ('package', 'folder', 'flags', 'sources', 'made'):
                    setattr(self, word, rest)
                else:
                    sys.exit(f'{path}:{number}: not understood: {line}')

    def read(self, line, file, place):
        asked, _, names = line.partition(' => ')
        category, _, text = asked.partition('  ')
        names = names.split()
        if not text.strip() or not names:
            sys.exit(f'{self.package}: text or names are missing: {line}')
        return Request(self, file, place, category, text.strip().replace('\\n', '\n'),
                       [n for n in names if not n.startswith('!')], [n[1:] for n in names if n.startswith('!')])

    def prepare(self, corpora):
        """Fetches the sources if they aren't there, and tells both servers how they are compiled."""
        self.root = os.path.join(corpora, self.folder)
        if not os.path.isdir(self.root):
            os.makedirs(corpora, exist_ok=True)
            subprocess.run(['apt-get', 'source', self.package], cwd=corpora, check=True, stdout=subprocess.DEVNULL)
        if not os.path.isdir(self.root):
            sys.exit(f'{self.package}: the source that apt-get has is not {self.folder}')
        for name in self.made.split():
            open(os.path.join(self.root, name), 'a').close()
        commands = []
        for pattern in self.sources.split():
            for source in sorted(glob.glob(os.path.join(self.root, pattern))):
                compiler = 'gcc' if source.endswith('.c') else 'g++'
                commands.append({'directory': self.root, 'file': source,
                                 'command': f'{compiler} {self.flags} -c {source}'})
        with open(os.path.join(self.root, 'compile_commands.json'), 'w') as file:
            json.dump(commands, file, indent=1)


def name_of(item):
    return item.get('filterText') or item['label'].strip(' •').split('(')[0].split('<')[0]


def line_after(text, request):
    lines = text.split('\n')
    places = [i for i, line in enumerate(lines) if line.strip() == request.place]
    if len(places) != 1:
        sys.exit(f'{request.base.package}: {request.file}: {len(places)} lines are "{request.place}"')
    return places[0] + 1


def ask_at(client, address, request, text, method, parameters):
    """Types the text of a request and asks at its end; the answer and its milliseconds. The text is gone after."""
    line = line_after(text, request)
    typed = request.text.split('\n')
    end = {'line': line + len(typed) - 1, 'character': len(typed[-1])}
    start = {'line': line, 'character': 0}

    def change(span, new):
        client.version += 1
        client.tell('textDocument/didChange', {'textDocument': {'uri': address, 'version': client.version},
                                               'contentChanges': [{'range': span, 'text': new}]})

    change({'start': start, 'end': start}, request.text + '\n')
    begin = time.perf_counter()
    answer = client.ask(method, {'textDocument': {'uri': address}, 'position': end, **parameters})
    took = (time.perf_counter() - begin) * 1e3
    change({'start': start, 'end': {'line': line + len(typed), 'character': 0}}, '')
    return answer, took


def ask(client, address, request, text):
    answer, took = ask_at(client, address, request, text, 'textDocument/completion', {'context': {'triggerKind': 1}})
    items = answer['items'] if isinstance(answer, dict) else answer or []
    names = {name_of(item) for item in items}
    missing = [name for name in request.wanted if name not in names]
    surplus = [name for name in request.unwanted if name in names]
    verdict = 'right' if not missing and not surplus else 'wrong' if names else 'empty'
    return Result(request, verdict, missing, surplus, took)


def open_file(command, base, file, waits):
    """A fresh server with a file open, its address and text."""
    client = language_server.Client(command, base.root, CAPABILITIES)
    source = os.path.join(base.root, file)
    with open(source, encoding='utf-8', errors='replace') as opened:
        text = opened.read()
    address = client.open(source, 'c' if file.endswith('.c') else 'cpp')
    if waits:
        client.wait_for('textDocument/publishDiagnostics')
    return client, address, text


def run(command, base, waits, ask_one):
    """The results of one server for a code base, each from `ask_one`; `waits`: until it has said what it thinks of a
    file. A server that ends when it is asked has given an empty answer, and is started anew."""
    results = []
    for file in dict.fromkeys(request.file for request in base.requests):
        client, address, text = open_file(command, base, file, waits)
        for request in base.requests:
            if request.file != file:
                continue
            try:
                results.append(ask_one(client, address, request, text))
            except (EOFError, BrokenPipeError):
                client.end()
                print(f'{command[0]} ended: {request.file}: {request.text!r}', file=sys.stderr)
                results.append(Result(request, 'empty', request.wanted, [], 0))
                client, address, text = open_file(command, base, file, waits)
        client.end()
    return results


def print_table(results):
    """A row for each category: right, wrong and empty of each server."""
    categories = sorted({result.request.category for one in results.values() for result in one})
    print(f'{"":16}' + ''.join(f'{name:>26}' for name in results))
    print(f'{"category":16}' + f'{"right  wrong  empty":>26}' * len(results))
    for category in [*categories, 'all']:
        row = f'{category:16}'
        for one in results.values():
            counts = collections.Counter(r.verdict for r in one if category in ('all', r.request.category))
            row += f'{counts["right"]:>12} {counts["wrong"]:>6} {counts["empty"]:>6}'
        print(row)
    print(f'{"median, ms":16}' + ''.join(
        f'{statistics.median(r.milliseconds for r in one):>26.2f}' for one in results.values()))


def write_failures(path, results, peer):
    """What ours doesn't answer right, with what the peer says to the same."""
    verdicts = {id(result.request): result.verdict for result in peer}
    with open(path, 'w') as file:
        for result in sorted(results, key=lambda r: r.request.category):
            if result.verdict == 'right':
                continue
            request = result.request
            typed = request.text.replace('\n', '\\n')
            file.write(f'{request.category}: {request.base.package} {request.file} after "{request.place}": {typed}\n'
                       f'    {result.verdict}; missing: {" ".join(result.missing) or "-"};'
                       f' not wanted: {" ".join(result.surplus) or "-"}; peer: {verdicts.get(id(request), "-")}\n')


def measure(subject, requests, read_base, ask_one):
    """Asks both servers all that the command line says, and prints what came."""
    parser = argparse.ArgumentParser(description=f'{subject} accuracy beside clangd.')
    parser.add_argument('--lsp', required=True, help='zendry-lsp of an installation')
    parser.add_argument('--corpora', required=True, help='folder with the sources of Debian packages')
    parser.add_argument('--no-peer', action='store_true', help='ask zendry-lsp only')
    parser.add_argument('--failures', help='write what zendry-lsp has wrong to this file')
    parser.add_argument('--peer-failures', help='the same for clangd')
    parser.add_argument('requests', nargs='*', default=sorted(glob.glob(f'{HERE}/{requests}/*.txt')))
    options = parser.parse_args()
    servers = {'zendry-lsp': ([os.path.abspath(options.lsp)], False)}
    if not options.no_peer:
        servers['clangd'] = (CLANGD, True)
    results = {name: [] for name in servers}
    for path in options.requests:
        base = read_base(path)
        base.prepare(os.path.abspath(options.corpora))
        for name, (command, waits) in servers.items():
            results[name] += run(command, base, waits, ask_one)
    print_table(results)
    if options.failures:
        write_failures(options.failures, results['zendry-lsp'], results.get('clangd', []))
    if options.peer_failures and not options.no_peer:
        write_failures(options.peer_failures, results['clangd'], results['zendry-lsp'])


def main():
    measure('Completion', 'completion_requests', Base, ask)


if __name__ == '__main__':
    main()
