#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The Vireo authors
# SPDX-License-Identifier: Apache-2.0
"""Checks where programs, libraries and modules look for libraries.

Every entry of their search paths begins with $ORIGIN, the file's own folder. An empty entry, or one
that begins otherwise, is sought from the current directory or in a folder of the building machine,
where anybody may have put a library of the right name.
"""

import argparse
import re
import subprocess
import sys
from pathlib import Path

from check_common import CheckFailed

ELF_MAGIC = b"\x7fELF"
# Bytes 16 and 17 of an ELF file: its kind, in the byte order of the machine. 2 is a program, 3 a
# library, a module or a program at no fixed address.
LINKED_KINDS = (2, 3)

_FILE = re.compile(r"^File: (.*)$")
_PATH = re.compile(r"\((?:RPATH|RUNPATH)\).*\[(.*)\]$")


def is_linked(path):
    """True for an ELF file that the loader takes; object files have no search path."""
    with open(path, "rb") as file:
        start = file.read(18)
    return (len(start) == 18 and start.startswith(ELF_MAGIC)
            and int.from_bytes(start[16:18], sys.byteorder) in LINKED_KINDS)


def linked_files(folder):
    return sorted(path for path in Path(folder).rglob("*")
                  if path.is_file() and not path.is_symlink() and is_linked(path))


def search_paths(files):
    """(file, search path) of each file that has one."""
    # With one file alone no heading is printed: a second one makes sure of it.
    result = subprocess.run(["readelf", "-dW", *map(str, files), sys.executable],
                            capture_output=True, text=True, check=False)
    if result.returncode != 0:
        raise CheckFailed("readelf: " + result.stderr.strip())
    current = None
    for line in result.stdout.splitlines():
        if heading := _FILE.match(line):
            current = heading.group(1)
        elif (path := _PATH.search(line)) and current != sys.executable:
            yield current, path.group(1)


def check_search_path(file, path):
    findings = []
    for entry in path.split(":"):
        if not entry:
            findings.append(f"{file}: an empty entry in the search path [{path}]")
        elif entry != "$ORIGIN" and not entry.startswith("$ORIGIN/"):
            findings.append(f"{file}: \"{entry}\" in the search path does not begin with $ORIGIN")
    return findings


def check(folders):
    findings = []
    for folder in folders:
        files = linked_files(folder)
        if not files:
            raise CheckFailed(f"{folder}: no programs and no libraries")
        for file, path in search_paths(files):
            findings += check_search_path(file, path)
    return findings


def main(arguments=None):
    parser = argparse.ArgumentParser(
        description="Checks where programs, libraries and modules look for libraries.")
    parser.add_argument("folder", nargs="+", type=Path, help="is searched with all below it")
    try:
        findings = check(parser.parse_args(arguments).folder)
    except (CheckFailed, OSError) as error:
        print(f"{parser.prog}: {error}", file=sys.stderr)
        return 2
    for finding in findings:
        print(finding)
    return 1 if findings else 0


if __name__ == "__main__":
    sys.exit(main())
