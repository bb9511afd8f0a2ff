#!/usr/bin/env python3
"""Does what docs/how-to-add-a-command.md says, in a copy, to the letter: puts each block where its line says,
compiles what changed and runs the test of the last block.

    how_to_add_a_command.py COMPILER FAKE_TOOL LIBRARY..."""
import os
import re
import subprocess
import sys
import tempfile

TOP = os.path.abspath(os.path.join(os.path.dirname(__file__), '../../..'))
PAGE = os.path.join(TOP, 'docs/how-to-add-a-command.md')
STEP = re.compile(r'In `([^`]+)` (after|before) `([^`]+)`:\n\n   ```cpp\n(.*?)\n   ```', re.S)
TEST = 'BuildTest.CountErrors_SaysHowManyRowsThereAre'


def apply(lines, where, place, block):
    """The lines with the block behind, or before, the one line that holds `place`; before the last one of several."""
    at = [number for number, line in enumerate(lines) if place in line]
    if not at or (where == 'after' and len(at) > 1):
        sys.exit(f'"{place}" is on {len(at)} lines')
    number = at[-1] + 1 if where == 'after' else next(n for n in at if lines[n] == place)
    return lines[:number] + block + lines[number:]


def main(compiler, fake_tool, *libraries):
    with open(PAGE) as page:
        steps = STEP.findall(page.read())
    if len(steps) < 6:
        sys.exit(f'{PAGE}: {len(steps)} steps with code')
    changed = {}
    for path, where, place, block in steps:
        if path not in changed:
            with open(os.path.join(TOP, path)) as file:
                changed[path] = file.read().split('\n')
        # The blocks are as far to the right as their list is.
        changed[path] = apply(changed[path], where, place, [line[3:] for line in block.split('\n')])
    with tempfile.TemporaryDirectory() as folder:
        for path, lines in changed.items():
            os.makedirs(os.path.join(folder, os.path.dirname(path)), exist_ok=True)
            with open(os.path.join(folder, path), 'w') as file:
                file.write('\n'.join(lines))
        program = os.path.join(folder, 'program')
        includes = [os.path.join(folder, 'src')] + [os.path.join(TOP, path) for path in (
            'src', 'libs/mavro/include', 'libs/mavro/src', 'libs/mavro/sci', 'tests/support')]
        sources = [os.path.join(folder, path) for path in changed if path.endswith('.cpp')]
        subprocess.run([compiler, '-std=c++20', '-O0', *(f'-I{path}' for path in includes), f'-DFAKE_TOOL="{fake_tool}"',
                        *sources, '-o', program, *libraries, '-lgmock', '-lgtest', '-lgtest_main'], check=True)
        result = subprocess.run([program, f'--gtest_filter={TEST}'], stdout=subprocess.PIPE, text=True)
        print(result.stdout)
        sys.exit(0 if result.returncode == 0 and '[  PASSED  ] 1 test.' in result.stdout else 1)


main(*sys.argv[1:])
