#!/usr/bin/env python3
"""What tests/mutate.py finds to change in a small source, and how it is compiled in."""
import os
import sys
import tempfile
import unittest

sys.dont_write_bytecode = True
sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import changes  # noqa: E402

SOURCE = '''#define LESS(a, b) ((a) < (b))
namespace zendry {
constexpr int cMost = 7;
constexpr int Constant(int a) { return a + 1; }
int Count(int a, bool b) {
  if (a < cMost &&
      b) return 1;
  while (LESS(a, 3)) ++a;
  a += 2;
  return a;
}
}  // namespace zendry
'''


class Changes(unittest.TestCase):
    def setUp(self):
        with tempfile.NamedTemporaryFile('w', suffix='.cpp', delete=False) as file:
            file.write(SOURCE)
        self.addCleanup(os.unlink, file.name)
        self.found, self.source = changes.find(file.name, ['-std=c++20'])
        self.shown = [f'{c.kind} {changes.shown(self.source, c)}' for c in self.found]

    def test_each_kind_is_found(self):
        for expected in ('limit declared 3: one more: constexpr int cMost = 7', 'limit 6: a < cMost  ->  a <= cMost',
                         'and-or 6: a < cMost && b  ->  a < cMost || b', 'half 6: a < cMost && b  ->  b',
                         'condition 6: a < cMost && b  ->  !(a < cMost && b)', 'statement 7: dropped: return 1;',
                         'number 7: 1  ->  2', 'number 7: 1  ->  0', 'sign 8: ++a  ->  --a', 'sign 9: a += 2  ->  a -= 2',
                         'statement 9: dropped: a += 2;'):
            self.assertIn(expected, self.shown)

    def test_what_is_needed_while_compiling_and_macros_are_left_alone(self):
        self.assertFalse([line for line in self.shown if ' 4:' in line or 'LESS' in line or ' 1:' in line])

    def test_rendered_source_keeps_its_lines_and_names_every_change(self):
        text = changes.render(self.source, list(enumerate(self.found, 1)))
        self.assertEqual(text.count('\n'), self.source.count('\n'))
        for number in range(1, len(self.found) + 1):
            self.assertEqual(text.count(f'mutant::Is({number})'), 1, self.shown[number - 1])


if __name__ == '__main__':
    unittest.main()
