#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The Vireo authors
# SPDX-License-Identifier: Apache-2.0
"""Renders the expected scene texts from the catalogue table.

This is a second statement of the text rules, independent of the program: the golden files come
from here, so that a test compares the program with something other than itself. It shares
nothing with the program but tests/data/catalogue.tsv.

    render_golden.py classes OUTDIR      one file per brick class
    render_golden.py export FILE.sskn    the text that the export command prints
    render_golden.py examples DIR        both texts of every network in a folder
"""

from __future__ import annotations

import argparse
import json
import sys
import threading
from pathlib import Path
from typing import List, NamedTuple, Optional, Sequence

from golden_bricks import (
    Brick, BrickClass, COLOR, Catalogue, FLOAT, FRESNEL, MATERIAL, NOTHING, VOLUME, make_brick,
    read_catalogue, set_count)
from golden_writer import Writer, code_for
from golden_files import read_network

# Export -----------------------------------------------------------------------------------------

SEPARATOR = "#" + 69 * "-"


class Sections(NamedTuple):
    """The two texts of a network."""

    material: str
    mesh: str


def render_network(bricks: Sequence[Brick], writer: Writer) -> Sections:
    """Writes a network from its root; of several roots the last counts."""
    roots = [brick for brick in bricks if brick.description.name == "VireoRootBrick"]
    if not roots:
        raise ValueError("the network has no root brick")
    mesh = code_for(writer, roots[-1]).name
    return Sections(writer.text(), mesh)


def export_text(sections: Sections) -> str:
    """The text that the export shows, ended by a newline."""
    paragraphs = [
        SEPARATOR,
        "# Material Settings",
        sections.material,
        "",
        SEPARATOR,
        "# Mesh Settings",
        sections.mesh,
    ]
    text = "\n".join(paragraphs)
    return text if text.endswith("\n") else text + "\n"


def render_file(catalogue: Catalogue, path: Path, literal: bool, map_files: bool) -> Sections:
    """Writes the network of a file."""
    document = json.loads(path.read_text(encoding="utf-8"))
    return render_network(read_network(catalogue, document), Writer(literal, map_files))


# Class files ------------------------------------------------------------------------------------

FEEDERS = {
    MATERIAL: "VireoMatMatteBrick",
    VOLUME: "VireoVolClearBrick",
    FLOAT: "VireoTexFltConstantBrick",
    COLOR: "VireoTexClrConstantBrick",
    FRESNEL: "VireoTexFnlCauchyBrick",
}


def lock_all(brick: Brick) -> None:
    """Locks every property."""
    own = [param.prop for param in brick.params if param.prop is not None]
    for prop in own + list(brick.plain.values()):
        prop.locked = True


def link_all(catalogue: Catalogue, brick: Brick) -> None:
    """Links a fresh brick to every input but the vectors."""
    for param in brick.params:
        if param.role != "output" and param.link_type in FEEDERS:
            param.links.append(make_brick(catalogue[FEEDERS[param.link_type]]))


def render_brick(brick: Brick, literal: bool) -> str:
    """A brick's text alone; for the root the mesh section follows."""
    writer = Writer(literal)
    result = code_for(writer, brick)
    return writer.text() + (result.name if result.kind == NOTHING else "")


def render_class(catalogue: Catalogue, description: BrickClass, count: int, title: str) -> str:
    """The four titled sections of a class."""

    def fresh() -> Brick:
        brick = make_brick(description)
        if count:
            set_count(brick, count)
        return brick

    locked, linked = fresh(), fresh()
    lock_all(locked)
    link_all(catalogue, linked)
    sections = [
        ("fresh literal", render_brick(fresh(), True)),
        ("fresh placeholders", render_brick(fresh(), False)),
        ("all locked", render_brick(locked, False)),
        ("every input linked", render_brick(linked, True)),
    ]
    return "".join("== %s%s ==\n%s" % (title, name, text) for name, text in sections)


def class_file(catalogue: Catalogue, description: BrickClass) -> str:
    """The whole file of a class."""
    text = render_class(catalogue, description, 0, "")
    if description.pair_rows:
        text += render_class(catalogue, description, 3, "count 3, ")
    return text


# Command line -----------------------------------------------------------------------------------


def write_file(path: Path, text: str) -> None:
    """Writes UTF-8 with the line ends as they are."""
    path.write_bytes(text.encode("utf-8"))


def run_classes(catalogue: Catalogue, arguments: argparse.Namespace) -> None:
    """Writes one file per class."""
    arguments.outdir.mkdir(parents=True, exist_ok=True)
    for description in catalogue.values():
        text = class_file(catalogue, description)
        write_file(arguments.outdir / (description.name + ".txt"), text)


def run_export(catalogue: Catalogue, arguments: argparse.Namespace) -> None:
    """Prints the export text or one section of a network file."""
    sections = render_file(
        catalogue, arguments.file, not arguments.placeholders, arguments.map_files
    )
    if arguments.section:
        text = getattr(sections, arguments.section)
    else:
        text = export_text(sections)
    sys.stdout.buffer.write(text.encode("utf-8"))


def run_examples(catalogue: Catalogue, arguments: argparse.Namespace) -> None:
    """Writes both export texts beside every network file of a folder."""
    for path in sorted(arguments.directory.glob("*.sskn")):
        for suffix, literal in ((".txt", True), (".placeholders.txt", False)):
            sections = render_file(catalogue, path, literal, False)
            write_file(path.with_name(path.stem + suffix), export_text(sections))


def parse_arguments(arguments: Optional[Sequence[str]]) -> argparse.Namespace:
    """Reads the command line."""
    parser = argparse.ArgumentParser(description="Render the expected scene texts.")
    modes = parser.add_subparsers(dest="mode", required=True)

    classes = modes.add_parser("classes", help="write one file per brick class")
    classes.add_argument("outdir", type=Path)
    classes.set_defaults(run=run_classes)

    export = modes.add_parser("export", help="print the export text of a network file")
    export.add_argument("file", type=Path)
    export.add_argument("--placeholders", action="store_true", help="unlocked values by name")
    export.add_argument("--section", choices=Sections._fields, help="one section, as it is")
    export.add_argument("--map-files", action="store_true", help='maps in "filename" by file')
    export.set_defaults(run=run_export)

    examples = modes.add_parser("examples", help="write the texts of every network in a folder")
    examples.add_argument("directory", type=Path)
    examples.set_defaults(run=run_examples)
    return parser.parse_args(arguments)


def main(arguments: Optional[Sequence[str]] = None) -> int:
    """Runs one mode; 0 done, 1 failed."""
    parsed = parse_arguments(arguments)
    try:
        parsed.run(read_catalogue(), parsed)
    except (OSError, ValueError) as error:
        where = getattr(parsed, "file", None)
        sys.stderr.write("render_golden: %s%s\n" % ("%s: " % where if where else "", error))
        return 1
    return 0


def main_on_deep_stack() -> int:
    """Runs main where a chain of many thousand bricks does not run out of stack."""
    codes: List[int] = []

    def run() -> None:
        try:
            codes.append(main())
        except SystemExit as end:
            codes.append(end.code if isinstance(end.code, int) else 1)

    sys.setrecursionlimit(1000000)
    threading.stack_size(512 * 1024 * 1024)
    thread = threading.Thread(target=run)
    thread.start()
    thread.join()
    return codes[0] if codes else 1


if __name__ == "__main__":
    sys.exit(main_on_deep_stack())
