#!/usr/bin/env python3
"""Draws docs/rooms.svg from the table of rooms.py: which room includes which. Rooms that have no file yet are
left out, and so are arrows that others already imply (a room that includes "project" reaches "base" through it)."""
import os

import tree

DRAWING = 'docs/rooms.svg'
# Row and column of each room, chosen so that no arrow crosses a box.
PLACES = {'frame': (0, 3), 'frmedt': (1, 0), 'search': (1, 1), 'browser': (1, 2), 'wizards': (1, 3), 'help': (1, 4),
          'print': (1, 5), 'debug': (1, 6), 'editor': (2, 2), 'build': (2, 5), 'rescue': (3, 2), 'lsp': (3, 4),
          'project': (4, 3), 'code': (5, 2), 'config': (5, 4), 'tags': (6, 2), 'base': (7, 3)}
COLUMN, ROW, BOX = 112, 76, (96, 40)
SIZE = (7 * COLUMN, 8 * ROW)


def drawn(rooms):
    """The rooms that exist, each with those it includes without another between."""
    there = {room for room in rooms if os.path.isdir(os.path.join(tree.TOP, 'src', room))}
    direct = {}
    for room in there:
        below = [other for other in rooms[room] if other in there and other != room]
        direct[room] = sorted(other for other in below if not any(other in rooms[between] for between in below
                                                                  if between != room))
    return direct


def svg(rooms):
    direct = drawn(rooms)
    place = {room: (COLUMN * column + COLUMN // 2, ROW * row + ROW // 2)
             for room, (row, column) in PLACES.items() if room in direct}
    width, height = BOX
    lines = [f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {SIZE[0]} {SIZE[1]}" '
             'font-family="DejaVu Sans, sans-serif" font-size="14">',
             '  <title>The rooms of src: an arrow means "includes"</title>',
             '  <defs>\n    <marker id="head" viewBox="0 0 10 10" refX="9" refY="5" markerWidth="8" markerHeight="8" '
             'orient="auto">\n      <path d="M0,0 L10,5 L0,10 z" fill="#444"/>\n    </marker>\n  </defs>',
             '  <rect width="100%" height="100%" fill="#fff"/>',
             '  <g fill="none" stroke="#444" stroke-width="1.5" marker-end="url(#head)">']
    for room in sorted(direct):
        x, y = place[room]
        for other in direct[room]:
            to_x, to_y = place[other]
            lines.append(f'    <path d="M{x},{y + height // 2} C{x},{y + ROW // 2 + 14} {to_x},{to_y - ROW // 2 - 14} '
                         f'{to_x},{to_y - height // 2}"/>')
    lines.append('  </g>\n  <g stroke="#666" fill="#eef3fa">')
    lines += [f'    <rect x="{x - width // 2}" y="{y - height // 2}" width="{width}" height="{height}" rx="6"/>'
              for _, (x, y) in sorted(place.items())]
    lines.append('  </g>\n  <g text-anchor="middle" fill="#222">')
    lines += [f'    <text x="{x}" y="{y + 5}">{room}</text>' for room, (x, y) in sorted(place.items())]
    return '\n'.join(lines + ['  </g>', '</svg>', ''])


if __name__ == '__main__':
    import rooms as table
    with open(os.path.join(tree.TOP, DRAWING), 'w') as file:
        file.write(svg(table.ROOMS))
