#!/usr/bin/env python3
"""zendry-lsp as a client starts it: the program itself, over its standard input and output."""
import json
import os
import shutil
import subprocess
import sys
import tempfile
import unittest
import urllib.parse

PROGRAM = os.environ.get('ZENDRY_LSP', '')
SOURCE = os.environ.get('ZENDRY_SOURCE', '')
BUILD = os.environ.get('ZENDRY_BUILD', '')
MOST_SECONDS = 60


def framed(message):
    body = message if isinstance(message, bytes) else json.dumps({'jsonrpc': '2.0', **message}).encode()
    return b'Content-Length: %d\r\n\r\n' % len(body) + body


def messages(output):
    """The messages in what the server has written."""
    found = []
    while output:
        head, _, rest = output.partition(b'\r\n\r\n')
        size = int(head.split(b':')[1])
        found.append(json.loads(rest[:size]))
        output = rest[size:]
    return found


def at(uri, line, character):
    return {'textDocument': {'uri': uri}, 'position': {'line': line, 'character': character}}


class ZendryLsp(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.mkdtemp(prefix='zendry lsp ä')
        self.addCleanup(shutil.rmtree, self.folder)

    def write(self, name, text):
        path = os.path.join(self.folder, name)
        os.makedirs(os.path.dirname(path), exist_ok=True)
        with open(path, 'w', encoding='utf-8') as file:
            file.write(text)
        return path

    def uri(self, name):
        return 'file://' + urllib.parse.quote(os.path.join(self.folder, name))

    def start(self, program=PROGRAM):
        process = subprocess.Popen([program], stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                                   cwd=self.folder, env={**os.environ, 'HOME': self.folder})
        self.addCleanup(self.end, process)
        return process

    def end(self, process):
        process.kill()
        process.communicate()

    def run_with(self, data, program=PROGRAM):
        """Everything that the server writes to this input, its exit status and its complaints."""
        process = self.start(program)
        output, complaints = process.communicate(data, timeout=MOST_SECONDS)
        return messages(output), process.returncode, complaints.decode()

    def talk(self, *told, program=PROGRAM):
        """Results by id, of a session in the folder that is ended well."""
        session = [{'id': 'i', 'method': 'initialize', 'params': {'rootUri': self.uri('')}},
                   {'method': 'initialized', 'params': {}}, *told,
                   {'id': 's', 'method': 'shutdown'}, {'method': 'exit'}]
        found, status, complaints = self.run_with(b''.join(framed(message) for message in session), program)
        self.assertEqual((status, complaints), (0, ''))
        return {message['id']: message.get('result', message.get('error')) for message in found if 'id' in message}

    def names(self, answer):
        return [item['label'] for item in answer['items']]

    def opened(self, name, text):
        return {'method': 'textDocument/didOpen', 'params': {
            'textDocument': {'uri': self.uri(name), 'languageId': 'cpp', 'version': 1, 'text': text}}}

    def changed(self, name, *changes):
        return {'method': 'textDocument/didChange', 'params': {
            'textDocument': {'uri': self.uri(name), 'version': 2}, 'contentChanges': list(changes)}}

    def complete(self, name, line, character, number=1):
        return {'id': number, 'method': 'textDocument/completion', 'params': at(self.uri(name), line, character)}

    def test_frames_in_pieces_are_messages(self):
        process = self.start()
        for byte in framed({'id': 1, 'method': 'initialize', 'params': {}}):
            process.stdin.write(bytes([byte]))
            process.stdin.flush()
        head = process.stdout.readline()
        self.assertTrue(head.startswith(b'Content-Length: '), head)
        process.stdout.readline()
        self.assertIn('capabilities', json.loads(process.stdout.read(int(head.split(b':')[1])))['result'])

    def test_input_that_ends_within_a_message_ends_the_program(self):
        found, status, complaints = self.run_with(framed({'id': 1, 'method': 'initialize', 'params': {}})
                                                  + b'Content-Length: 50\r\n\r\n{"id":')
        self.assertEqual(len(found), 1)
        self.assertEqual((status, complaints), (1, 'zendry-lsp: the input ended within a message\n'))

    def test_input_that_ends_without_exit_is_one(self):
        self.assertEqual(self.run_with(b''), ([], 1, ''))

    def test_frame_without_a_usable_length_ends_the_program(self):
        for header in (b'A: b', b'Content-Length: x', b'Content-Length: 99999999999999999999'):
            found, status, complaints = self.run_with(header + b'\r\n\r\n{}')
            self.assertEqual((found, status), ([], 1))
            self.assertEqual(complaints, 'zendry-lsp: the header of a message tells no length\n')

    def test_absurd_length_is_refused_before_anything_is_stored(self):
        found, status, complaints = self.run_with(b'Content-Length: 10000000000\r\n\r\n{}')
        self.assertEqual((found, status), ([], 1))
        self.assertEqual(complaints, 'zendry-lsp: a message of 10000000000 bytes is too long\n')

    def test_nonsense_is_answered_and_the_program_goes_on(self):
        found, status, _ = self.run_with(framed(b'{nonsense') + framed({'id': 1, 'method': 'initialize', 'params': {}}))
        self.assertEqual([message.get('error', {}).get('code') for message in found], [-32700, None])
        self.assertEqual(status, 1)

    def test_names_with_blanks_and_umlauts(self):
        name = 'a b ü.cpp'
        answers = self.talk(self.opened(name, 'struct A { int x; };\nvoid f(A a) { a. }\n'), self.complete(name, 1, 16))
        self.assertEqual(self.names(answers[1]), ['x'])

    def test_ranges_count_surrogates(self):
        text = 'struct A { int x; }; A a;\n/* \U0001F600 */ int b = q;\n'
        place = {'line': 1, 'character': 17}
        answers = self.talk(self.opened('a.cpp', text),
                            self.changed('a.cpp', {'range': {'start': place, 'end': {'line': 1, 'character': 18}},
                                                   'text': 'a.'}),
                            self.complete('a.cpp', 1, 19))
        self.assertEqual(self.names(answers[1]), ['x'])

    def test_places_outside_of_the_text_are_clamped(self):
        answers = self.talk(self.opened('a.cpp', 'struct A { int x; }; A a;\nint b = a'),
                            self.changed('a.cpp', {'range': {'start': {'line': 1, 'character': 999},
                                                             'end': {'line': 999, 'character': 0}}, 'text': '.'}),
                            self.complete('a.cpp', 7, 7))
        self.assertEqual(self.names(answers[1]), ['x'])

    def test_change_of_an_unknown_file_is_harmless(self):
        answers = self.talk(self.changed('other.cpp', {'text': 'int a;'}), self.complete('other.cpp', 0, 1))
        self.assertEqual(answers[1]['code'], -32602)

    def test_project_with_unsaved_changes(self):
        self.write('p.zpj', '<ide>\n<set parse="y"/></ide>\n<src>\n\t<file name="a.cpp"/>\n</src>\n'
                            '<hdr>\n\t<file name="a.h"/>\n</hdr>\n')
        self.write('a.h', 'struct A { int saved; };\n')
        self.write('a.cpp', '#include "a.h"\nvoid f(A a) { a. }\n')
        self.write('stray.h', 'struct A { int stray; };\n')
        answers = self.talk(self.complete('a.cpp', 1, 16, 1), self.opened('a.h', 'struct A { int typed; };\n'),
                            self.complete('a.cpp', 1, 16, 2))
        self.assertEqual(self.names(answers[1]), ['saved'])
        self.assertEqual(self.names(answers[2]), ['typed'])
        self.assertEqual(sorted(os.listdir(self.folder)), ['a.cpp', 'a.h', 'p.zpj', 'stray.h'])

    def test_requests_are_taken_back(self):
        ask = [self.complete('a.cpp', 0, 1, number) for number in range(1, 4)]
        answers = self.talk(self.opened('a.cpp', 'int a;\n'), *ask, {'method': '$/cancelRequest', 'params': {'id': 3}})
        self.assertEqual(answers[3]['code'], -32800)

    def test_installed_one_knows_the_standard_library(self):
        home = os.path.join(self.folder, 'bin')
        os.makedirs(home)
        for file in (PROGRAM, os.path.join(SOURCE, 'dist', 'Zendry.cfg')):
            shutil.copy(file, home)
        shutil.copytree(os.path.join(BUILD, 'dist', 'reference', 'Defs'), os.path.join(home, 'Defs'))
        text = '#include <string>\nvoid f(const std::string& text) { text. }\n'
        answers = self.talk(self.opened('a.cc', text), self.complete('a.cc', 1, 39),
                            program=os.path.join(home, os.path.basename(PROGRAM)))
        self.assertLessEqual({'size', 'substr', 'c_str'}, set(self.names(answers[1])))


if __name__ == '__main__':
    if not PROGRAM:
        sys.exit('ZENDRY_LSP names the program')
    unittest.main()
