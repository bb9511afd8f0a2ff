#!/usr/bin/env python3
"""Renews the pictures of docs/designer-guide.md: runs the designer's tests, which take them, and makes them small.

designer_pictures.py [NAME ...]    without names, all pictures
"""
import os
import subprocess
import sys

from fixture import SHOTS, TOP

TARGET = os.path.join(TOP, 'docs', 'pictures')
COLORS = 128
# Parts of the windows, as ImageMagick names them; the frame of the main window has a temporary folder's name.
PARTS = {'new-dialog': None, 'controls': '898x480+0+0', 'properties': '898x480+0+0', 'events': '898x300+0+0',
         'handler': '660x208+200+320', 'program': None}


def main(names):
    test = os.path.join(os.path.dirname(os.path.abspath(__file__)), 'designer_test.py')
    if subprocess.run([sys.executable, '-B', test, 'FromNothing']).returncode:
        return 1
    for name in names or PARTS:
        part = ['-crop', PARTS[name], '+repage'] if PARTS[name] else []
        subprocess.run(['convert', os.path.join(SHOTS, f'guide-{name}.png'), *part, '+dither', '-colors', str(COLORS), '-strip',
                        '-define', 'png:exclude-chunks=date,time', os.path.join(TARGET, f'designer-{name}.png')],
                       check=True)
    return 0


if __name__ == '__main__':
    sys.exit(main(sys.argv[1:]))
