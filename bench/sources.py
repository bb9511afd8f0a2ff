"""Generated sources, always the same: the text of a large file, and a project of a thousand files with one of
5,000 lines among them."""
import json
import os

FUNCTION = """// Function {0} of a generated source.
int function{0}(int a, int b) {{
	for (int i = 0; i < b; ++i) a += i * {0};
	return a;
}}

"""

HEADER = """#pragma once
#include <string>
#include <vector>
#include "base.h"

// Keeps what belongs to part {0} together.
class Part{0} : public Base {{
 public:
	explicit Part{0}(int newCount);
	const std::string& Name() const {{ return name; }}
	void Add(int value);
	int Total{0}() const;
	std::vector<int> values;
	int count = 0;

 private:
	std::string name;
}};
"""

SOURCE = """#include "part{0}.h"

#define LIMIT_{0} 100

Part{0}::Part{0}(int newCount) : count(newCount) {{
	values.reserve(10);
}}

void Part{0}::Add(int value) {{
	if (value > LIMIT_{0}) return;
	values.push_back(value);
}}

int Part{0}::Total{0}() const {{
	int total = 0;
	for (int value : values) total += value;
	return total;
}}

"""

BASE = """#pragma once

class Base {
 public:
	virtual ~Base() = default;
	int identity = 0;
	bool IsEmpty() const { return identity == 0; }
};
"""

# So long that a click into the text hits it once its middle is shown.
TYPED_LINES = 160
TYPED = 'static int typed(Part0& part, std::string& text, int value) {\n%s\treturn value;\n}\n\n' % ''.join(
    f'\tvalue += part.count * {i} + static_cast<int>(text.size());\n' for i in range(TYPED_LINES))

OPTIONS = '\t<{0}>\n\t\t<gcc id="0"/>\n\t\t<comp opt="-O2"/>\n\t\t<link opt=""/>\n\t</{0}>\n'


def write(path, text):
    with open(path, 'w') as file:
        file.write(text)
    return path


def write_large(path, megabytes):
    with open(path, 'w') as file:
        number = 0
        while file.tell() < megabytes * 1e6:
            file.write(''.join(FUNCTION.format(i) for i in range(number, number + 1000)))
            number += 1000
    return path


def source_to_type_in(lines):
    """A source of so many lines, and a line of it (from 1) in the middle of a function that is there to be typed
    in, with the parameters `part`, `text` and `value`."""
    text = '#include <string>\n#include <vector>\n#include "part0.h"\n\n'
    number, place = 0, 0
    while text.count('\n') < lines:
        if not place and text.count('\n') > lines // 2:
            place = text.count('\n') + TYPED_LINES // 2
            text += TYPED
        text += FUNCTION.format(number)
        number += 1
    return text, place


def write_project(folder, files=1000, lines=5000):
    """A project of so many files, with main.cpp among them; it uses the window library, so that both reference
    libraries are loaded. Opening it opens main.cpp at the line to type in. Answers project, source and line."""
    pairs = (files - 2) // 2
    write(f'{folder}/base.h', BASE)
    for i in range(pairs):
        write(f'{folder}/part{i}.h', HEADER.format(i))
        write(f'{folder}/part{i}.cpp', SOURCE.format(i) + ''.join(FUNCTION.format(1000 * i + k) for k in range(80)))
    text, line = source_to_type_in(lines)
    source = write(f'{folder}/main.cpp', text)

    def listed(section, names):
        return f'<{section}>\n' + ''.join(f'\t<file name="{name}"/>\n' for name in names) + f'</{section}>\n'

    general = '\t<gen>\n\t\t<targ id="1"/>\n\t\t<inc/>\n\t\t<arch/>\n\t\t<lib value=""/>\n\t\t<out/>\n\t\t<pars/>\n\t</gen>\n'
    project = write(f'{folder}/thousand.zpj', '<ide>\n<set parse="y"/></ide>\n'
                    + listed('src', ['main.cpp', *(f'part{i}.cpp' for i in range(pairs))])
                    + listed('hdr', ['base.h', *(f'part{i}.h' for i in range(pairs))])
                    + '<opt>\n' + general + OPTIONS.format('dbg') + OPTIONS.format('rel') + '</opt>\n')
    write(f'{folder}/thousand.zend', '<state>\n\t<mode opt="rel"/>\n\t<open>\n'
          f'\t\t<file name="main.cpp" id="{line}"/>\n\t\t<active name="main.cpp"/>\n\t</open>\n</state>\n')
    command = {'directory': folder, 'file': source, 'command': f'g++ -std=c++17 -c {source}'}
    write(f'{folder}/compile_commands.json', json.dumps([command]))
    return project, source, line
