"""Language servers, as an editor speaks to them; clangd with one source open among them."""
import json
import os
import subprocess
import time
import urllib.parse


class Client:
    """Speaks to a server of the protocol in the foreground: each question waits for its answer."""

    def __init__(self, command, folder, capabilities=None):
        self.process = subprocess.Popen(command, cwd=folder, stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                        stderr=subprocess.DEVNULL)
        self.number = 0
        self.version = 1
        self.ask('initialize', {'processId': os.getpid(), 'rootUri': 'file://' + folder,
                                'capabilities': capabilities or {}})
        self.tell('initialized', {})

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.end()

    def end(self):
        self.process.kill()
        self.process.wait()

    def send(self, message):
        body = json.dumps({'jsonrpc': '2.0', **message}).encode()
        self.process.stdin.write(b'Content-Length: %d\r\n\r\n' % len(body) + body)
        self.process.stdin.flush()

    def read(self):
        size = 0
        while (line := self.process.stdout.readline()) != b'\r\n':
            if not line:
                raise EOFError('the server has ended')
            if line.lower().startswith(b'content-length:'):
                size = int(line.split(b':')[1])
        return json.loads(self.process.stdout.read(size))

    def tell(self, method, parameters):
        self.send({'method': method, 'params': parameters})

    def ask(self, method, parameters):
        self.number += 1
        self.send({'id': self.number, 'method': method, 'params': parameters})
        while True:
            answer = self.read()
            if answer.get('id') == self.number and 'method' not in answer:
                return answer['result']

    def wait_for(self, method):
        while self.read().get('method') != method:
            continue

    def open(self, source, language='cpp'):
        """Opens a file with its text on the disk; answers its address."""
        address = 'file://' + urllib.parse.quote(source)
        with open(source, encoding='utf-8', errors='replace') as file:
            self.tell('textDocument/didOpen', {'textDocument': {'uri': address, 'languageId': language,
                                                                'version': 1, 'text': file.read()}})
        return address


class LanguageServer(Client):
    """clangd with one source open."""

    def __init__(self, folder, source):
        super().__init__(['clangd', '--background-index=false', '-log=error', '--limit-results=0'], folder)
        self.address = self.open(source)
        self.wait_for('textDocument/publishDiagnostics')

    def set_line(self, line, text):
        """Replaces a line (from 1)."""
        self.version += 1
        self.tell('textDocument/didChange', {
            'textDocument': {'uri': self.address, 'version': self.version},
            'contentChanges': [{'range': {'start': {'line': line - 1, 'character': 0},
                                          'end': {'line': line, 'character': 0}}, 'text': text + '\n'}]})

    def members(self, line, text):
        """Milliseconds from a changed line that ends with "." to the answer of what can follow."""
        self.set_line(line, '')
        time.sleep(0.03)
        start = time.perf_counter()
        self.set_line(line, text)
        answer = self.ask('textDocument/completion', {
            'textDocument': {'uri': self.address}, 'position': {'line': line - 1, 'character': len(text)},
            'context': {'triggerKind': 2, 'triggerCharacter': '.'}})
        took = (time.perf_counter() - start) * 1e3
        assert answer['items'], f'no members after "{text}"'
        return took
