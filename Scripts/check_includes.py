#!/usr/bin/env python3
"""Checks who includes whom.

Each source folder names the other folders whose headers it may include in the USES line of its CMakeLists.txt. This script
compares that line with every #include of the folder, refuses a cycle, and refuses outside headers in folders they are not
meant for. It prints one line a fault and exits with 1 if there is any.
"""

import re
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
TREES = ["Library", "CommandLine", "Application"]

# Outside headers by their first path component or name, and where they may stand: folder prefixes, or a test on the file.
QT_FOLDERS = ("Images", "CommandLine", "Common", "Display", "Documents", "Dialogs", "Docks", "MainWindow", "Resources", "Application")
OUTSIDE = [
    (re.compile(r"^Q[A-Z]|^Qt"), lambda folder, path: folder in QT_FOLDERS, "Qt"),
    (re.compile(r"^(ft2build\.h|freetype/)"), lambda folder, path: folder == "Fonts", "FreeType"),
    (re.compile(r"^tinyxml2\.h"), lambda folder, path: folder == "Common", "tinyxml2"),
    (re.compile(r"^CLI/"), lambda folder, path: folder == "CommandLine", "CLI11"),
    (re.compile(r"^hwy/"), lambda folder, path: path.stem.endswith("Simd"), "Highway"),
    (re.compile(r"^thread$"), lambda folder, path: folder == "Core", "<thread>"),
]

INCLUDE = re.compile(r'^\s*#\s*include\s+(["<])([^">]+)[">]', re.MULTILINE)
FOLDER_CALL = re.compile(r"halvane_folder\((.*?)\)", re.DOTALL)
KEYWORDS = {"WIDGETS", "USES", "SOURCES", "TESTS", "TEST_USES", "LINK"}


def read_folders(root):
    """Folder name -> (directory, set of used folder names)."""
    folders = {}
    for tree in TREES:
        for cmake in sorted((root / tree).rglob("CMakeLists.txt")) if (root / tree).is_dir() else []:
            text = re.sub(r"#[^\n]*", "", cmake.read_text(encoding="utf-8"))
            for call in FOLDER_CALL.finditer(text):
                words = call.group(1).split()
                uses, current = set(), None
                for word in words[1:]:
                    if word in KEYWORDS:
                        current = word
                    elif current == "USES":
                        uses.add(word)
                folders[words[0]] = (cmake.parent, uses)
    return folders


def find_cycle(folders):
    state, path = {}, []

    def visit(name):
        state[name] = "open"
        path.append(name)
        for used in sorted(folders[name][1]):
            if state.get(used) == "open":
                return path[path.index(used):] + [used]
            if used in folders and used not in state:
                cycle = visit(used)
                if cycle:
                    return cycle
        path.pop()
        state[name] = "done"
        return None

    for name in folders:
        if name not in state:
            cycle = visit(name)
            if cycle:
                return cycle
    return None


def owner_of(header, folders):
    """The folder that an include such as "Codecs/BC/BcColours.h" names."""
    parent = header.rpartition("/")[0]
    return parent if parent in folders else None


def check(root):
    faults = []
    folders = read_folders(root)
    for name, (directory, uses) in folders.items():
        for used in sorted(uses - set(folders)):
            faults.append(f"{name}: USES names {used}, which is no folder")
        for path in sorted(directory.iterdir()):
            if path.suffix not in (".h", ".cpp"):
                continue
            for mark, header in INCLUDE.findall(path.read_text(encoding="utf-8")):
                place = path.relative_to(root)
                if mark == '"':
                    owner = owner_of(header, folders)
                    if owner is None and not header.startswith("ui_"):
                        faults.append(f'{place}: "{header}" is not a header of any folder (name it by folder)')
                    elif owner not in uses | {name, None}:
                        faults.append(f'{place}: "{header}": {owner} does not stand in the USES line of {name}')
                for pattern, allowed, what in OUTSIDE:
                    if pattern.search(header) and owner_of(header, folders) is None and not allowed(name, path):
                        faults.append(f"{place}: {header}: {what} does not belong here")
    cycle = find_cycle(folders)
    if cycle:
        faults.append("cycle: " + " -> ".join(cycle))
    if not folders:
        faults.append(f"no folders found below {root}")
    return faults


if __name__ == "__main__":
    found = check(Path(sys.argv[1]).resolve() if len(sys.argv) > 1 else ROOT)
    for fault in found:
        print(fault)
    sys.exit(1 if found else 0)
