#!/usr/bin/env python3
"""Checks the structure of src/ and tobbin_player/: which folder may include which, and what is
portable.

Prints each breach as file:line: text and exits 1 if there is one. The rules stand in
docs/architecture.md.
"""
import pathlib
import re
import sys

# Each folder may include itself and the folders before it.
LAYERS = ["util", "platform", "tags", "search", "catalogue", "jukebox", "player", "ui", "shell"]

# The player that comes with the program, beside src/, may include itself and these.
PLAYER = "tobbin_player"
PLAYER_LAYERS = ["util", "platform", "tags", PLAYER]

INCLUDE = re.compile(r'\s*#\s*include\s*(["<])([^">]+)[">]')
WINDOWS_CONDITION = re.compile(r"\s*#\s*(?:el)?if.*\b_?_?(?:WIN32|WIN64|MINGW)")
WINDOWS_HEADERS = re.compile(
    r"(?i)^(windows|windowsx|commctrl|shl\w+|obj\w+|win\w+|com\w+dlg|mm\w+|dbghelp|wincodec|tlhelp32)\.h$")


def sources(root):
    """Each source file, with its folder and the folders that it may include."""
    for path in sorted((root / "src").rglob("*")):
        if path.suffix in (".h", ".cpp"):
            folder = path.relative_to(root / "src").parts[0]
            known = folder in LAYERS
            yield path, folder, LAYERS[:LAYERS.index(folder) + 1] if known else None
    for path in sorted((root / PLAYER).glob("*")):
        if path.suffix in (".h", ".cpp"):
            yield path, PLAYER, PLAYER_LAYERS


def breaches(root):
    for path, folder, allowed in sources(root):
        if allowed is None:
            yield f"{path}:1: not in one of the folders {', '.join(LAYERS)}"
            continue
        portable = not path.stem.endswith("_win32")
        for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
            where = f"{path}:{number}: "
            if portable and WINDOWS_CONDITION.match(line):
                yield where + "a portable file asks which system it is built for"
            match = INCLUDE.match(line)
            if not match:
                continue
            quoted, name = match.group(1) == '"', match.group(2)
            if portable and (WINDOWS_HEADERS.match(name) or name.endswith("_win32.h")):
                yield where + f"a portable file includes {name}"
            if not quoted or (name == "resource.h" and not portable):
                continue
            included = name.split("/")[0]
            if "/" not in name or included not in [*LAYERS, PLAYER]:
                yield where + f'"{name}" is not named by its folder in src/'
            elif included not in allowed:
                yield where + f"{folder}/ may not include {included}/"


def main():
    root = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else ".")
    found = list(breaches(root))
    for breach in found:
        print(breach, file=sys.stderr)
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
