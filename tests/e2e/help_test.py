#!/usr/bin/env python3
"""Help in the installed program: F1 on words of a demo, with the installation's own indexes. build/shots/help-*.png
are what a person sees, at the plain scale and at twice that."""
import os
import unittest

from desktop import wait_until
from fixture import ZendryTest, write


class Help(ZendryTest):
    def begin(self, **environment):
        self.project = self.demo()
        write(self.project.replace('.zpj', '.zend'), '<state>\n\t<mode opt="rel"/>\n\t<open>\n'
              '\t\t<file name="report.cpp" id="1"/>\n\t</open>\n</state>\n')
        self.window = self.start(self.project, **environment)
        self.window.wait_quiet()

    def wait_for_help(self, is_shown=True):
        wait_until(lambda: ('Help' in self.window.titles().values()) == is_shown, 'the help window')
        self.window.wait_quiet()

    def help_on(self, line, steps, name):
        """F1 on the word that is so many words into a line."""
        self.window.key('ctrl+g')
        self.window.wait_for_message()
        self.window.type(str(line))
        self.window.key('Return')
        wait_until(lambda: len(self.window.titles()) == 1, 'the dialog has gone')
        self.window.key('Home', *['ctrl+Right'] * steps, 'F1')
        self.wait_for_help()
        self.picture('help-' + name)
        self.window.key('Escape')
        self.wait_for_help(is_shown=False)

    def line_of(self, text):
        with open(os.path.join(os.path.dirname(self.project), 'report.cpp')) as file:
            return next(number for number, line in enumerate(file, 1) if text in line)

    def test_word_at_the_caret_and_the_window_as_it_was(self):
        self.begin()
        self.help_on(self.line_of('std::string padding'), 3, 'string')
        self.window.key('ctrl+F1')
        self.wait_for_help()
        self.window.key('ctrl+a')
        self.window.type('prinft')
        self.window.key('Return')
        self.window.wait_quiet()
        self.picture('help-not-found')
        self.window.key('Escape')
        self.wait_for_help(is_shown=False)
        self.assertTrue(self.window.alive())

    def test_at_twice_the_scale(self):
        self.begin(QT_SCALE_FACTOR='2')
        self.help_on(self.line_of('std::setw'), 4, 'scale-2')
        self.assertTrue(self.window.alive())


if __name__ == '__main__':
    unittest.main()
