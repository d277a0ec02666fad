# SPDX-FileCopyrightText: 2026 The Vireo authors
# SPDX-License-Identifier: Apache-2.0
"""What the checks share: the files of a tree, blanked C++ text, reporting."""

import argparse
import os
import re
import subprocess
import sys
from pathlib import Path

REPOSITORY = Path(__file__).resolve().parent.parent


class CheckFailed(Exception):
    """The check itself could not be done."""


def tree_files(root):
    """Paths, relative to root with "/", of all files that belong to the tree.

    In a git checkout these are the tracked files and the new ones that are not ignored;
    elsewhere (an unpacked archive) all files but those below build/ and hidden folders.
    """
    root = Path(root)
    if (root / ".git").exists():
        result = subprocess.run(
            ["git", "-C", str(root), "ls-files", "-co", "--exclude-standard", "-z"],
            capture_output=True, check=False)
        if result.returncode != 0:
            raise CheckFailed("git ls-files: " + result.stderr.decode(errors="replace").strip())
        names = {os.fsdecode(name) for name in result.stdout.split(b"\0") if name}
    else:
        names = set()
        for folder, folders, files in os.walk(root):
            folders[:] = [f for f in folders
                          if f not in ("build", "__pycache__") and (f == ".ci" or f[0] != ".")]
            for name in files:
                names.add((Path(folder) / name).relative_to(root).as_posix())
    # A file that was deleted but is not yet removed from the index is no finding.
    return sorted(name for name in names if (root / name).is_file())


def is_cpp(path):
    return path.endswith((".h", ".cpp"))


def read_text(path):
    """The text of a file, or None if it is not text."""
    data = Path(path).read_bytes()
    if b"\0" in data:
        return None
    return data.decode("utf-8", errors="replace")


_TOKEN = re.compile(
    r"""
      //(?:\\\n|[^\n])*                                    # line comment
    | /\*.*?(?:\*/|\Z)                                     # block comment
    | \b(?:u8|[uUL])?R"(?P<mark>[^()\\\s]{0,16})\(.*?\)(?P=mark)"   # raw string
    | (?<![0-9a-fA-F])'(?:\\.|[^'\\\n])*'                  # character, not a digit separator
    | "(?:\\.|[^"\\\n])*"                                  # string
    """,
    re.VERBOSE | re.DOTALL)


def _spaces(text):
    return re.sub(r"[^\n]", " ", text)


def blank_cpp(text, strings=True):
    """The text with comments, and with strings=True literals too, turned into blanks.

    Offsets and line numbers stay what they were. Quotes remain, so that an empty string
    argument is still seen as an argument.
    """
    def replace(match):
        token = match.group(0)
        if token.startswith(("//", "/*")):
            return _spaces(token)
        if not strings or len(token) < 2:
            return token
        # `#include "name"` is no literal.
        start = text.rfind("\n", 0, match.start()) + 1
        if re.match(r"\s*#\s*include\b", text[start:match.start()]):
            return token
        return token[0] + _spaces(token[1:-1]) + token[-1]

    return _TOKEN.sub(replace, text)


_INCLUDE = re.compile(r"""^[ \t]*\#[ \t]*include[ \t]*(?:"([^"\n]+)"|<([^>\n]+)>)""",
                      re.MULTILINE | re.VERBOSE)


def includes(text):
    """(line, name, quoted) for each include directive outside comments."""
    blanked = blank_cpp(text, strings=False)
    return [(line_of(blanked, match.start()), match.group(1) or match.group(2),
             match.group(1) is not None)
            for match in _INCLUDE.finditer(blanked)]


def line_of(text, offset):
    return text.count("\n", 0, offset) + 1


def run(check, description, arguments=None):
    """Runs check(root) -> findings as a program; the exit status says if there were any."""
    parser = argparse.ArgumentParser(description=description)
    parser.add_argument("root", nargs="?", type=Path, default=REPOSITORY,
                        help="the source tree (default: the one this script is in)")
    root = parser.parse_args(arguments).root
    try:
        if not root.is_dir():
            raise CheckFailed(f"{root}: no such folder")
        findings = check(root)
    except (CheckFailed, OSError) as error:
        print(f"{parser.prog}: {error}", file=sys.stderr)
        return 2
    for finding in findings:
        print(finding)
    if findings:
        print(f"{parser.prog}: {len(findings)} finding{'s' if len(findings) > 1 else ''}",
              file=sys.stderr)
        return 1
    return 0
