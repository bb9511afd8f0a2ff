#!/usr/bin/env python3
"""run_shown.py ZENDRY PICTURE FILE...

Shows Zendry on a virtual screen with the files of its command line. If there is a project among them,
builds it by the key of "&Make" and starts what was built. Says what it does; succeeds if all of it did."""
import os
import subprocess
import sys
import time

from desktop import Desktop, Timeout, wait_until


def say(text):
    print(text, flush=True)


def product(project):
    """The program that a project builds in the release mode."""
    stem = os.path.splitext(os.path.basename(project))[0]
    return os.path.join(os.path.dirname(project), 'out-rel', stem + '.exe')


def build(window, project):
    program = product(project)
    if os.path.exists(program):
        os.remove(program)
    say('Pressing F7, the key of "Make"')
    started = time.monotonic()
    window.key('F7')
    try:
        wait_until(lambda: os.path.exists(program) or len(window.titles()) > 1, 'a program or a message')
    finally:
        window.wait_quiet()
    if not os.path.exists(program):
        raise Timeout(f'{program} was not built; on the screen: {list(window.titles().values())}')
    say(f'Built {program} in {time.monotonic() - started:.1f} s')
    return program


def run(program):
    say('Running what was built:')
    result = subprocess.run([program], stdin=subprocess.DEVNULL, timeout=20)
    if result.returncode:
        raise Timeout(f'the program ended with {result.returncode}')


def main(zendry, picture, *files):
    with Desktop() as desktop:
        say(f'Started a virtual screen {desktop.environment["DISPLAY"]} with a window manager')
        window = desktop.start([zendry, *files])
        window.wait_for_main()
        say('Zendry shows its window')
        program = None
        projects = [file for file in files if file.endswith('.zpj')]
        try:
            if projects:
                program = build(window, projects[-1])
        finally:
            window.picture(picture)
            say(f'Picture of the window: {picture}')
        status = window.close()
        say(f'Closed the window; Zendry ended with {status}')
    if program:
        run(program)
    return status


try:
    sys.exit(main(*sys.argv[1:]))
except Timeout as problem:
    sys.exit(f'run: {problem}')
