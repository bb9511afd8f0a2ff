#!/usr/bin/env python3
"""editor_peers.py SCREEN_METER ZENDRY [MEGABYTES [ROUNDS]]

A large source in Zendry and, where they are installed, in SciTE, Geany and Kate, all on one virtual screen:
from the start of the process until the text is painted and until the process is at rest, its memory then; a
jump to the end until it is at rest again; a key typed there until the first changed pixel; saving until the
file is the new one, beside `cp` and `sync` of it. Each round visits each program once, with a first one that
doesn't count; an editor that doesn't come to rest is not asked again.
`chrt --rr 10` before the command keeps other work of the machine out."""
import os
import shutil
import statistics
import subprocess
import sys
import time

from editors import Desktop, Editor, PEERS, at_line, installed, load, median_and_last, settle
from sources import write_large

LONGEST = 60  # seconds to come to rest
KEYS = 60
COLUMNS = ['title', 'painted', 'at rest', 'MB', 'end at rest', 'key', '99 of 100', 'MB then', 'save']


def save(editor, path, size):
    """Milliseconds until the file has the size that it has with what was typed; some end the last line too."""
    before = os.stat(path)

    def is_saved():
        now = os.stat(path)
        return now.st_mtime_ns != before.st_mtime_ns and now.st_size >= size

    start = time.monotonic()
    editor.key('ctrl+s')
    while not is_saved() and time.monotonic() - start < LONGEST:
        time.sleep(0.0005)
    return (time.monotonic() - start) * 1e3 if is_saved() else None


def measure(editor, path):
    """The columns as far as the editor comes, and the times of all keys."""
    editor.wait_for_file(LONGEST)
    opened = editor.opened()
    rest = editor.wait_for_rest(opened, LONGEST)
    columns = [opened * 1e3, editor.painted(opened) * 1e3, rest and rest * 1e3, editor.memory()]
    if not rest:
        return columns, []
    editor.place()
    editor.wait_for_rest(editor.now(), LONGEST)
    start = editor.now()
    editor.key('ctrl+End')
    end = editor.wait_for_rest(start, LONGEST)
    columns.append(end and (end - start) * 1e3)
    if not end:
        return columns, []
    size = os.path.getsize(path)
    keys = editor.measured('type', KEYS, 'x', 'y')[0]
    columns += [*median_and_last(keys), editor.memory(), save(editor, path, size + KEYS)]
    return columns, keys


def copy_and_sync(path):
    start = time.monotonic()
    subprocess.run(f'cp "{path}" "{path}.copy" && sync "{path}.copy"', shell=True, check=True)
    return (time.monotonic() - start) * 1e3


def print_table(results, copies):
    print('| | ' + ' | '.join(COLUMNS) + ' |\n|---|' + '---|' * len(COLUMNS))
    for name, runs in results.items():
        cells = []
        for number in range(len(COLUMNS)):
            values = [columns[number] for columns, _ in runs if len(columns) > number and columns[number] is not None]
            cells.append(f'{statistics.median(values):.1f}' if values else 'not in time')
        keys = [key for _, times in runs for key in times]
        if keys:
            cells[5:7] = [f'{value:.2f}' for value in median_and_last(keys)]
        print(f'| {name} | ' + ' | '.join(cells) + ' |')
    print(f'\ncp and sync: {statistics.median(copies):.1f} ms')


def main(meter, zendry, megabytes=50, rounds=3):
    results, copies = {}, []
    with Desktop() as desktop:
        settle(desktop)
        original = write_large(os.path.join(desktop.folder, 'original'), float(megabytes))
        commands = installed({'Zendry': [zendry, '{file}'], **PEERS})
        for number in range(int(rounds) + 1):
            path = os.path.join(desktop.folder, f'big{number}.cpp')  # some remember where they were in a file
            for name, command in list(commands.items()):
                shutil.copyfile(original, path)
                os.sync()
                with Editor(desktop, meter, at_line(command, path), os.path.basename(path)) as editor:
                    run = measure(editor, path)
                if None in run[0]:
                    del commands[name]
                if number or None in run[0]:
                    results.setdefault(name, []).append(run)
            copies.append(copy_and_sync(path))
    print(f'{megabytes} MB, {rounds} rounds, {load()}; ms and MB\n')
    print_table(results, copies[1:])


main(*sys.argv[1:])
