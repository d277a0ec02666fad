#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The Vireo authors
# SPDX-License-Identifier: Apache-2.0
"""Checks that includes only point down the layers.

A header includes headers of lower ranks, and of its own rank only within its folder. A
source includes headers of its own rank or lower. Beyond the ranks:

  * host/ includes nothing of the layers above and does not name them;
  * the plug-in's folders include only the host's public headers, their own, Qt and the C++
    standard library;
  * mixer/ knows the plug-in only through the host's interface.

tests/, benchmarks/ and tools/ stand outside the ranks and may include anything.
"""

import posixpath
import re
import sys

from check_common import includes, is_cpp, read_text, run, tree_files

# First match wins; paths are relative to the tree. A file of a ranked folder that no row
# names is a finding: whoever adds it says where it belongs.
RANKS = [
    (r"host/(include|src)/", 0),
    (r"codegen/(SceneCodeWriter|LinkTypes|CodeResult)\.", 1),
    (r"codegen/BrickCodeCache\.h$", 2),
    (r"codegen/BrickCodeCache\.cpp$", 3),
    (r"codegen/ExportText\.", 3),
    (r"codegen/(VireoRootBrick|VireoExportCodeAction)\.", 4),
    (r"bricks/catalogue/", 4),
    (r"bricks/[^/]+$", 3),
    (r"material/", 5),
    (r"import/", 5),
    (r"plugin/", 6),
    (r"cli/", 7),
    # The mixer's model has no widgets.
    (r"mixer/model/", 7.0),
    (r"mixer/widgets/", 7.1),
    (r"mixer/", 7.2),
]

RANKED_FOLDERS = ("host/", "codegen/", "bricks/", "material/", "import/", "plugin/", "cli/",
                  "mixer/")
PLUGIN_FOLDERS = ("codegen/", "bricks/", "material/", "import/", "plugin/")

# Written by the build, not found in the tree.
GENERATED = re.compile(r"(^|/)(moc_|ui_|qrc_)[^/]*$|\.moc$")

QT_HEADER = re.compile(r"(Qt?[A-Z]\w*/)?(Q[A-Za-z]\w*|q[a-z]\w*\.h)$")

STANDARD_HEADERS = frozenset("""
    algorithm array atomic bitset cassert cctype cerrno cfenv cfloat chrono cinttypes climits
    clocale cmath codecvt complex condition_variable csetjmp csignal cstdarg cstddef cstdint
    cstdio cstdlib cstring ctime cuchar cwchar cwctype deque exception forward_list fstream
    functional future initializer_list iomanip ios iosfwd iostream istream iterator limits list
    locale map memory mutex new numeric ostream queue random ratio regex scoped_allocator set
    shared_mutex sstream stack stdexcept streambuf string system_error thread tuple type_traits
    typeindex typeinfo unordered_map unordered_set utility valarray vector
""".split())

ABOVE_HOST = re.compile("vireo|luxrender", re.IGNORECASE)


def rank_of(path):
    for pattern, rank in RANKS:
        if re.match(pattern, path):
            return rank
    return None


class Headers:
    """Finds the header of the tree that an include means."""

    def __init__(self, paths):
        self.paths = {path for path in paths if path.endswith(".h")}
        self.by_name = {}
        for path in sorted(self.paths):
            self.by_name.setdefault(posixpath.basename(path), []).append(path)

    def resolve(self, source, name):
        """Paths that the name can stand for; more than one if the name is ambiguous."""
        beside = posixpath.normpath(posixpath.join(posixpath.dirname(source), name))
        for path in (beside, posixpath.normpath(name), "host/include/" + name):
            if path in self.paths:
                return [path]
        # Found through an include folder that the build passes.
        return [path for path in self.by_name.get(posixpath.basename(name), [])
                if path.endswith("/" + name)]


def check_include(source, rank, name, quoted, headers):
    """What is wrong with one include, or None."""
    targets = headers.resolve(source, name)
    in_plugin = source.startswith(PLUGIN_FOLDERS)
    if not targets:
        if GENERATED.search(name):
            return None
        if in_plugin and not (QT_HEADER.match(name) or (not quoted and name in STANDARD_HEADERS)):
            return (f"{name} is not a header of the host, of the plug-in, of Qt or of the C++ "
                    "standard library")
        return None
    if len(targets) > 1:
        return f"{name} may be any of {', '.join(targets)}: write the folder too"

    target = targets[0]
    if target == source:
        return "includes itself"
    if in_plugin and not target.startswith(PLUGIN_FOLDERS + ("host/include/",)):
        return f"{target} is out of bounds for the plug-in: use the host's public headers"
    if source.startswith("mixer/") and target.startswith(PLUGIN_FOLDERS):
        return f"{target}: the mixer knows the plug-in only through the host's interface"

    target_rank = rank_of(target)
    if target_rank is None:
        if target.startswith(RANKED_FOLDERS):
            return None  # Reported once, at the file without a rank.
        return f"{target} is outside the layers"
    if target_rank < rank:
        return None
    same_rank = target_rank == rank
    if source.endswith(".h"):
        if same_rank and posixpath.dirname(source) == posixpath.dirname(target):
            return None
        # The host's private headers may stand on the public ones; not the other way round.
        if source.startswith("host/src/") and target.startswith("host/include/"):
            return None
        if same_rank:
            return (f"{target} has the same rank ({rank:g}) in another folder: a header takes "
                    "lower ranks only; declare the class and include in the source")
    elif same_rank:
        return None
    return f"{target} has rank {target_rank:g}, this file {rank:g}: includes point down only"


def check(root):
    files = tree_files(root)
    headers = Headers(files)
    findings = []
    for path in files:
        if not is_cpp(path) or not path.startswith(RANKED_FOLDERS):
            continue
        text = read_text(root / path)
        if text is None:
            continue
        rank = rank_of(path)
        if rank is None:
            findings.append(f"{path}:1: no rank is stated for this file: add it to the table in "
                            "tools/check_ranks.py")
            continue
        for line, name, quoted in includes(text):
            problem = check_include(path, rank, name, quoted, headers)
            if problem:
                findings.append(f"{path}:{line}: {problem}")
        if path.startswith("host/"):
            findings += check_host_words(path, text)
    return findings


def check_host_words(path, text):
    findings = []
    for number, line in enumerate(text.splitlines(), 1):
        if line.lstrip(" /*#").startswith("SPDX-"):
            continue
        match = ABOVE_HOST.search(line)
        if match:
            findings.append(f"{path}:{number}: the host does not name what stands on it: "
                            f"\"{match.group(0)}\"")
    return findings


if __name__ == "__main__":
    sys.exit(run(check, "Checks that includes only point down the layers."))
