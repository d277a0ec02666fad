#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The Vireo authors
# SPDX-License-Identifier: Apache-2.0
"""Checks that includes only point down the layers.

A folder is a room and has one rank. A file includes from its own room and from rooms of lower
rank; two rooms of one rank do not know each other. Beyond the ranks:

  * host/ includes nothing of the layers above and does not name them;
  * the plug-in's folders include only the host's public headers, their own, Qt and the C++
    standard library;
  * mixer/ knows the plug-in only through the host's interface.

A public header of the host stands in the room of the source of its name. One without a source
stands as high as the highest header that it includes.

tests/, benchmarks/ and tools/ stand outside the ranks and may include anything.
"""

import posixpath
import re
import sys

from check_common import includes, is_cpp, read_text, run, tree_files

# Room and rank. A C++ file of a ranked folder that stands in none of them is a finding: whoever
# makes a room says where it belongs.
ROOMS = {
    "host/src/files": 10,
    "host/src/core": 11,
    "host/src/modules": 12,
    "host/src/scene": 12,
    "host/src/bricks": 12,
    "host/src/layout": 13,
    "host/src/networkfile": 13,
    "host/src/scenefile": 13,
    "host/src/script": 14,
    "plugin/codegen": 20,
    "plugin/bricks": 21,
    "plugin/bricks/catalogue": 22,
    "plugin/actions": 23,
    "plugin/material": 23,
    "plugin/entry": 24,
    "lux/text": 30,
    "lux/check": 31,
    "lux/render": 31,
    "cli": 40,
    "mixer/base": 40,
    "mixer/model": 40,
    "mixer/canvas": 41,
    "mixer/panels": 41,
    "mixer/window": 42,
    "mixer": 43,
}

RANKED_FOLDERS = ("host/", "plugin/", "lux/", "cli/", "mixer/")
HOST_INCLUDE = "host/include/"
# Below every room: public headers that stand on nothing of the host.
LOWEST = 0

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


class Rooms:
    """Says in which room a file stands, and how high."""

    def __init__(self, root, paths, headers):
        self.root = root
        self.headers = headers
        sources = {posixpath.basename(path): posixpath.dirname(path)
                   for path in paths if path.startswith("host/src/") and path.endswith(".cpp")}
        self.public = {path: sources.get(posixpath.basename(path)[:-2] + ".cpp")
                       for path in paths if path.startswith(HOST_INCLUDE)}

    def room_of(self, path):
        """The folder that the file belongs to; None for a header that stands on no room."""
        if path not in self.public:
            return posixpath.dirname(path)
        if self.public[path] is None:
            self.public[path] = ""  # For headers that include each other.
            rooms = [self.room_of(target) for target in self.included(path)]
            self.public[path] = max(filter(None, rooms), key=lambda room: ROOMS.get(room, LOWEST),
                                    default="")
        return self.public[path] or None

    def rank_of(self, path):
        """The rank of the file's room, None if no rank is stated for it."""
        room = self.room_of(path)
        return LOWEST if room is None else ROOMS.get(room)

    def included(self, path):
        return [target for _, name, _ in includes(read_text(self.root / path) or "")
                for target in self.headers.resolve(path, name)]


def check_include(source, name, quoted, headers, rooms):
    """What is wrong with one include, or None."""
    targets = headers.resolve(source, name)
    in_plugin = source.startswith("plugin/")
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
    if in_plugin and not target.startswith(("plugin/", HOST_INCLUDE)):
        return f"{target} is out of bounds for the plug-in: use the host's public headers"
    if source.startswith(HOST_INCLUDE) and not target.startswith(HOST_INCLUDE):
        return f"{target} is private: a public header includes public headers only"
    if source.startswith("mixer/") and target.startswith("plugin/"):
        return f"{target}: the mixer knows the plug-in only through the host's interface"

    rank, target_rank = rooms.rank_of(source), rooms.rank_of(target)
    if target_rank is None:
        if target.startswith(RANKED_FOLDERS):
            return None  # Reported once, at the file without a rank.
        return f"{target} is outside the layers"
    if rooms.room_of(target) == rooms.room_of(source) or target_rank < rank:
        return None
    if target_rank == rank:
        return (f"{target} has the same rank ({rank}) in another room: rooms of one rank do not "
                "know each other")
    return f"{target} has rank {target_rank}, this file {rank}: includes point down only"


def check(root):
    files = tree_files(root)
    headers = Headers(files)
    rooms = Rooms(root, files, headers)
    findings = []
    for path in files:
        if not is_cpp(path) or not path.startswith(RANKED_FOLDERS):
            continue
        text = read_text(root / path)
        if text is None:
            continue
        if rooms.rank_of(path) is None:
            findings.append(f"{path}:1: no rank is stated for its folder: add it to the table in "
                            "tools/check_ranks.py")
            continue
        for line, name, quoted in includes(text):
            problem = check_include(path, name, quoted, headers, rooms)
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
