#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The Vireo authors
# SPDX-License-Identifier: Apache-2.0
"""Checks that every source has its two licence lines at the top."""

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


def needs_licence(path, text):
    return bool(SOURCE.search(path)) or text.startswith("#!")


def check_licence(path, text):
    lines = [line.strip() for line in text.splitlines()[:SPDX_WITHIN]]
    return [f"{path}:1: the line \"{wanted}\" is missing at the top"
            for wanted in SPDX_LINES
            if not any(line.lstrip("/*# ").removesuffix("*/").rstrip() == wanted
                       for line in lines)]


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
    return findings


if __name__ == "__main__":
    sys.exit(run(check, "Checks the licence lines of all sources."))
