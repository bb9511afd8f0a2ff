"""The files of the tree, as the structure checks see them."""
import os
import sys

TOP = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
NOT_OURS = {'.git', 'build', '__pycache__'}


def files(*folders, endings=None):
    """Paths relative to the top of the tree, sorted. Only of `folders` and with one of `endings`, if given."""
    found = []
    for start in folders or ('.',):
        for folder, subfolders, names in os.walk(os.path.join(TOP, start)):
            subfolders[:] = [s for s in subfolders if s not in NOT_OURS]
            for name in names:
                if endings is None or name.endswith(tuple(endings)):
                    found.append(os.path.relpath(os.path.join(folder, name), TOP))
    return sorted(found)


def cpp_files(*folders):
    return files(*folders, endings=('.cpp', '.h'))


def read(path):
    """The bytes of a file."""
    with open(os.path.join(TOP, path), 'rb') as file:
        return file.read()


def lines(path):
    return read(path).decode('utf-8', 'replace').splitlines()


def is_text(content):
    return b'\0' not in content


def finish(faults):
    """Ends the check: prints the faults, one a line as "file:line: what", and fails if there are any."""
    for fault in faults:
        print(fault)
    sys.exit(1 if faults else 0)


def run_named(checks):
    """Runs the check that the command line names, with the rest of the line as its arguments."""
    finish(list(checks[sys.argv[1]](*sys.argv[2:])))
