#!/usr/bin/env python3
"""key_latency.py SCREEN_METER ZENDRY [ROUNDS]

From a key to the first changed pixel while somebody types in the middle of a source of 5,000 lines; Zendry has
it open with its project of a thousand files and both reference libraries, SciTE, Geany and Kate (where they
are installed) have the source alone. And from the "." behind a name to the list of the class's members, beside the
time that clangd takes to answer the same question for the same source; the first list after the project was opened
counts for itself. Each round visits each program once. Ends with 1 when Zendry exceeds a limit, in milliseconds or as
a part of what SciTE and clangd take in the same run. `chrt --rr 10` before the command keeps other work of the machine
out."""
import os
import sys
import time

from editors import Desktop, Editor, PEERS, at_line, installed, load, median_and_last, settle
from language_server import LanguageServer
from sources import write_project

WORDS = ['x', 'y', 'space', 'z', 'w', 'space']
STATEMENT = [*'part', 'period', *'Add', 'parenleft', *'value', 'parenright', 'semicolon', 'space']
LINE = 40    # characters before the line is emptied again
LINES = 3    # of each kind in a round
LISTS = 40
# By what is measured: median and what 99 of 100 stay below.
LIMITS = {'letters': (2.5, 8), 'statement': (2.5, 8), 'part.': (3, 10), 'text.': (3, 10), 'first list': (5, 5)}
# By what is measured: a peer, and the parts of its median and of its 99 of 100 that Zendry may take at most.
RATIOS = {'letters': ('SciTE', 0.9, None), 'statement': ('SciTE', 1.0, 1.0), 'part.': ('clangd', 0.2, None),
          'text.': ('clangd', 0.2, None)}


def empty_line(editor):
    editor.key('Escape', 'End', 'shift+Home', 'shift+Home', 'Delete')
    time.sleep(0.3)


def type_lines(editor, keys):
    times = []
    for _ in range(LINES):
        times += editor.measured('type', LINE, *keys)[0]
        empty_line(editor)
    return times


def measure_lists(editor, results, name):
    for word in 'part', 'text':
        editor.key(*word)
        if word == 'part':
            results.setdefault((name, 'first list'), []).extend(editor.measured('list', 1, 'period')[0])
        mapped, painted = editor.measured('list', LISTS, 'period')
        results.setdefault((name, word + '.'), []).extend(mapped)
        results.setdefault((name, word + '. painted'), []).extend(painted)
        empty_line(editor)


def measure_editor(editor, results, name):
    editor.wait_for_file()
    editor.wait_for_rest(editor.opened(), 30)
    editor.place()
    editor.key('End', 'Return')
    if name == 'Zendry':
        measure_lists(editor, results, name)
    results.setdefault((name, 'letters'), []).extend(type_lines(editor, WORDS))
    results.setdefault((name, 'statement'), []).extend(type_lines(editor, STATEMENT))


def measure_server(folder, source, line, results):
    with LanguageServer(folder, source) as server:
        for word in 'part', 'text':
            times = [server.members(line, f'\t{word}.') for _ in range(LISTS + 5)]
            results.setdefault(('clangd', word + '.'), []).extend(times[5:])


def print_table(results):
    missed = False
    print('| | what | median, ms | 99 of 100, ms | keys | limits, ms |')
    print('|---|---|---|---|---|---|')
    for (name, what), times in results.items():
        median, last = median_and_last(times)
        limits = LIMITS.get(what) if name == 'Zendry' else None
        missed = missed or (limits and (median > limits[0] or last > limits[1]))
        print(f'| {name} | {what} | {median:.2f} | {last:.2f} | {len(times)} | '
              + (f'{limits[0]:g}, {limits[1]:g}' if limits else '') + ' |')
    return missed


def print_ratios(results):
    """Beside the peers that were there."""
    missed = False
    print('\n| what | peer | median to its | 99 of 100 to its | limits |')
    print('|---|---|---|---|---|')
    for what, (peer, *limits) in RATIOS.items():
        if (peer, what) not in results:
            continue
        pairs = zip(median_and_last(results['Zendry', what]), median_and_last(results[peer, what]))
        ratios = [ours / its for ours, its in pairs]
        missed = missed or any(limit and ratio > limit for ratio, limit in zip(ratios, limits))
        print(f'| {what} | {peer} | {ratios[0]:.2f} | {ratios[1]:.2f} | '
              + ', '.join(f'{limit:g}' for limit in limits if limit) + ' |')
    return missed


def main(meter, zendry, rounds=5):
    results = {}
    with Desktop() as desktop:
        settle(desktop)
        folder = os.path.join(desktop.folder, 'thousand')
        os.mkdir(folder)
        project, source, line = write_project(folder)
        with open(source) as file:
            text = file.read()
        commands = installed({'Zendry': [zendry, project], **PEERS})
        for _ in range(int(rounds)):
            for name, command in commands.items():
                with Editor(desktop, meter, at_line(command, source, line), os.path.basename(source)) as editor:
                    measure_editor(editor, results, name)
            if installed({'clangd': ['clangd']}):
                measure_server(folder, source, line, results)
            with open(source) as file:
                assert file.read() == text, 'an editor has saved'
    print(f'{rounds} rounds, {load()}\n')
    missed = [print_table(results), print_ratios(results)]
    sys.exit(1 if any(missed) else 0)


main(*sys.argv[1:])
