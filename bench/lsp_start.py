#!/usr/bin/env python3
"""zendry-lsp in a generated project of 1,000 sources and 1,000 headers: from its start to the answer to initialize, to
the first list, then the next list without a change, and its memory; medians.
bench/lsp_start.py ZENDRY_LSP [RUNS]"""
import os
import statistics
import sys
import tempfile
import time

import language_server
import sources


def milliseconds_since(start):
    return (time.perf_counter() - start) * 1e3


def run(program, folder, source, line):
    start = time.perf_counter()
    with language_server.Client([program], folder) as client:
        initialized = milliseconds_since(start)
        place = {'textDocument': {'uri': client.open(source)}, 'position': {'line': line - 1, 'character': 3}}
        client.ask('textDocument/completion', place)
        first = milliseconds_since(start)
        start = time.perf_counter()
        client.ask('textDocument/completion', place)
        following = milliseconds_since(start)
        with open(f'/proc/{client.process.pid}/status') as status:
            kilobytes = next(int(row.split()[1]) for row in status if row.startswith('VmRSS'))
    return initialized, first, following, kilobytes / 1024


def main(program, runs='15'):
    with tempfile.TemporaryDirectory() as folder:
        _, source, line = sources.write_project(folder, 2000)
        os.remove(os.path.join(folder, 'compile_commands.json'))
        found = zip(*(run(os.path.abspath(program), folder, source, line) for _ in range(int(runs))))
    for name, values in zip(('initialize, ms', 'first list, ms', 'next list, ms', 'memory, MB'), found):
        print(f'{name:16}{statistics.median(values):8.2f}')


if __name__ == '__main__':
    main(*sys.argv[1:])
