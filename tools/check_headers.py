#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The Vireo authors
# SPDX-License-Identifier: Apache-2.0
"""Checks the licence lines of every source, and that no file points at private papers.

Sources and documents speak for themselves: they do not refer to working notes, numbered
tasks or folders of one machine, which a reader of the repository does not have.
"""

import re
import sys

from check_common import CheckFailed, read_text, run, tree_files

SPDX_LINES = (
    "SPDX-FileCopyrightText: 2026 The Vireo authors",
    "SPDX-License-Identifier: Apache-2.0",
)
# A first line "#!", and a line that opens a comment, may stand before them.
SPDX_WITHIN = 5

SOURCE = re.compile(r"(\.(h|cpp|py|sh|cmake)|(^|/)(CMakeLists\.txt|Makefile))$")

# Put together from pieces, so that this file passes its own check.
_THE, _SPEC, _WORK = "the ", "spec", "/wo" + "rk/"
PRIVATE = [
    (r"\b" + _SPEC + r"\.md\b", 0),
    (r"\b" + _THE + _SPEC + r"(?:ification)?\b", re.IGNORECASE),
    (r"\b[Pp]arts? [1-7]\.[1-9]\b", 0),
    (r"\bdeci" + r"sions\.md\b", 0),
    (r"\biss" + r"ue #?[0-9]+\b", re.IGNORECASE),
    (_WORK + r"(?:main|shared)\b", 0),
    (r"/tmp/bash" + r"_jobs\b", 0),
]
PRIVATE = [re.compile(pattern, flags) for pattern, flags in PRIVATE]


def needs_licence(path, text):
    return bool(SOURCE.search(path)) or text.startswith("#!")


def check_licence(path, text):
    lines = [line.strip() for line in text.splitlines()[:SPDX_WITHIN]]
    return [f"{path}:1: the line \"{wanted}\" is missing at the top"
            for wanted in SPDX_LINES
            if not any(line.lstrip("/*# ").removesuffix("*/").rstrip() == wanted
                       for line in lines)]


def check_private(path, text):
    return [f"{path}:{number}: \"{match.group(0)}\" points at something that the reader does "
            "not have: say what is meant"
            for number, line in enumerate(text.splitlines(), 1)
            for pattern in PRIVATE
            for match in pattern.finditer(line)]


def check(root):
    findings = []
    paths = tree_files(root)
    if not paths:
        raise CheckFailed(f"{root}: no files")
    for path in paths:
        text = read_text(root / path)
        if text is None:
            continue
        if needs_licence(path, text):
            findings += check_licence(path, text)
        findings += check_private(path, text)
    return findings


if __name__ == "__main__":
    sys.exit(run(check, "Checks licence lines and references in all files."))
