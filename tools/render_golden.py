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
import math
import struct
import sys
import threading
import unicodedata
from dataclasses import dataclass, field
from decimal import ROUND_HALF_UP, Context, Decimal
from pathlib import Path
from typing import Any, Callable, Dict, Iterator, List, NamedTuple, Optional, Sequence, Tuple, Union

CATALOGUE = Path(__file__).resolve().parent.parent / "tests" / "data" / "catalogue.tsv"

# Link types.
MATERIAL, VOLUME, FLOAT, COLOR, STRING, FRESNEL = 1007, 1008, 1009, 1010, 1015, 1016

# Kinds of a code result.
NOTHING, TEXTURE_RESULT, MATERIAL_RESULT, VOLUME_RESULT = 0, 6, 7, 8


# Templates --------------------------------------------------------------------------------------

STATEMENT = '%1 "%2"\n'
STATEMENT2 = '%1 "%2" "%3"\n'
TEXTURE = 'Texture "%1" "%2" "%3"\n'

FLOAT_LINE = '\t"float   %1" [%2]\n'
BOOL_LINE = '\t"bool    %1" ["%2"]\n'
COLOR_LINE = '\t"color   %1" [%2 %3 %4]\n'
INTEGER_LINE = '\t"integer %1" [%2]\n'
STRING_LINE = '\t"string  %1" ["%2"]\n'
TEXTURE_LINE = '\t"texture %1" ["%2"]\n'
VECTOR_LINE = '\t"vector  %1" [%2 %3 %4]\n'

VALUE_OR_MAP_LINE = '\t"string  %1" [%(%2)]\n'
COLOR_PARTS_LINE = '\t"color   %1" [$(%2) $(%3) $(%4)]\n'
PLACEHOLDER_LINES = {
    "float": '\t"float   %1" [$(%2)]\n',
    "bool": '\t"bool    %1" [$(%2)]\n',
    "color": '\t"color   %1" [$(%2)]\n',
    "int": '\t"integer %1" [$(%2)]\n',
    "enum": '\t"string  %1" [$(%2)]\n',
    "string": '\t"string  %1" [$(%2)]\n',
    "image": '\t"string  %1" [$(%2)]\n',
    "file": '\t"string  %1" [$(%2)]\n',
}


class Marker(NamedTuple):
    """A numbered place in a template."""

    start: int
    end: int
    number: int


def digit_value(text: str, index: int) -> int:
    """The digit at an index, -1 for none; Qt looks at 16-bit units, so higher planes have none."""
    if index >= len(text) or ord(text[index]) > 0xFFFF:
        return -1
    return unicodedata.digit(text[index], -1)


def find_markers(text: str) -> Iterator[Marker]:
    """Yields the markers of a template: a per cent sign, perhaps an L, one or two digits."""
    index = text.find("%")
    while index >= 0:
        end = index + 1
        if text[end : end + 1] == "L":
            end += 1
        number = digit_value(text, end)
        if number >= 0:
            end += 1
            second = digit_value(text, end)
            if second >= 0:
                number = number * 10 + second
                end += 1
            yield Marker(index, end, number)
        index = text.find("%", end)


def fill_one(template: str, argument: str) -> str:
    """Puts an argument in the place of every marker with the lowest number."""
    markers = list(find_markers(template))
    if not markers:
        return template
    lowest = min(marker.number for marker in markers)
    parts: List[str] = []
    position = 0
    for marker in markers:
        if marker.number == lowest:
            parts += [template[position : marker.start], argument]
            position = marker.end
    return "".join(parts) + template[position:]


def fill(template: str, *arguments: str) -> str:
    """Fills a template one argument at a time, so that markers inside arguments take part."""
    for argument in arguments:
        template = fill_one(template, argument)
    return template


# Numbers ----------------------------------------------------------------------------------------

SIX_DIGITS = Context(prec=6, rounding=ROUND_HALF_UP)


def to_single(value: float) -> float:
    """Rounds to single precision, in which float properties keep their values."""
    try:
        return struct.unpack("f", struct.pack("f", value))[0]
    except OverflowError:
        return math.copysign(math.inf, value)


def format_float(value: float) -> str:
    """Formats as Qt's 'g' with six digits; unlike C's, ties go up and zero has no sign."""
    if not math.isfinite(value):
        return "%g" % value
    if value == 0:
        return "0"
    rounded = SIX_DIGITS.plus(Decimal(value))
    exponent = rounded.adjusted()
    if -5 < exponent < 6:
        return format(rounded.normalize(), "f")
    mantissa = rounded.scaleb(-exponent).normalize()
    return "%se%s%02d" % (format(mantissa, "f"), "-" if exponent < 0 else "+", abs(exponent))


# Catalogue --------------------------------------------------------------------------------------


class Color(NamedTuple):
    """A colour of 8-bit components."""

    red: int
    green: int
    blue: int
    alpha: int = 255


WHITE = Color(255, 255, 255)
BLACK = Color(0, 0, 0)
Vector = Tuple[float, float, float]
Value = Union[float, int, bool, str, Color, Vector]


class Row(NamedTuple):
    """One property or input of a class."""

    name: str
    pkind: str
    value: str
    minimum: str
    maximum: str
    clamped: bool
    mappable: bool
    items: Tuple[str, ...]
    link: str


@dataclass
class BrickClass:
    """One brick class with its rows in creation order."""

    name: str
    kind: str
    type_word: str
    output: Optional[int]
    rows: List[Row] = field(default_factory=list)
    pair_rows: List[Row] = field(default_factory=list)


Catalogue = Dict[str, BrickClass]

UNKNOWN = BrickClass("", "unknown", "", None)


def parse_row(cells: Sequence[str]) -> Row:
    """Reads the cells of a row after its class name."""
    name, _label, pkind, value, _default, minimum, maximum, clamped, mappable, items, link = cells
    split_items = tuple(items.split("|")) if items else ()
    return Row(
        name, pkind, value, minimum, maximum, clamped == "1", mappable == "1", split_items, link
    )


def read_catalogue(path: Path = CATALOGUE) -> Catalogue:
    """Reads the table; the classes keep its order."""
    classes: Catalogue = {}
    for line in path.read_text(encoding="utf-8").splitlines():
        if not line or line.startswith("#"):
            continue
        record, class_name, *cells = line.split("\t")
        if record == "B":
            _base, kind, type_word, _label, _category, output, _identifier, _converted = cells
            link_type = int(output) if output else None
            classes[class_name] = BrickClass(class_name, kind, type_word, link_type)
        elif record == "P":
            classes[class_name].rows.append(parse_row(cells))
        elif record == "D":
            classes[class_name].pair_rows.append(parse_row(cells))
        else:
            raise ValueError("%s: unknown record '%s'" % (path, record))
    return classes


# Network ----------------------------------------------------------------------------------------


@dataclass(eq=False)
class Property:
    """A value that a user edits."""

    name: str
    kind: str
    value: Any
    mappable: bool = False
    items: Tuple[str, ...] = ()
    clamp: Optional[Tuple[int, int]] = None
    locked: bool = False
    map_file: str = ""


@dataclass(eq=False)
class Param:
    """A parameter of a brick.

    The role is "property", "vector" (a vector of a block), "link" (a material or volume input),
    "output", or "silent" (a custom vector or matrix, of which nothing is written). An input takes
    links of its link type; without one it takes none.
    """

    name: str
    role: str
    link_type: Optional[int] = None
    prop: Optional[Property] = None
    vector: Vector = (0.0, 0.0, 0.0)
    custom: bool = False
    connected_only: bool = False
    links: List[Brick] = field(default_factory=list)


@dataclass(eq=False)
class Brick:
    """A brick; one of an unknown class writes nothing.

    The keys name the parameters in a file, also when the file gives them another order.
    """

    description: BrickClass
    params: List[Param] = field(default_factory=list)
    keys: Dict[str, Param] = field(default_factory=dict)
    plain: Dict[str, Property] = field(default_factory=dict)
    feeders: List[Brick] = field(default_factory=list)

    def find(self, name: str) -> Optional[Param]:
        """The first parameter of a name."""
        return next((param for param in self.params if param.name == name), None)

    def find_own(self, name: str) -> Optional[Param]:
        """The first parameter of a name that is not a custom one."""
        own = (param for param in self.params if not param.custom)
        return next((param for param in own if param.name == name), None)

    def own_property(self, name: str) -> Property:
        """The property of an input that the class is known to have."""
        param = self.find_own(name)
        if param is None or param.prop is None:
            raise KeyError(name)
        return param.prop


def parse_value(row: Row) -> Value:
    """The start value that a row states."""
    if row.pkind == "float":
        return to_single(float(row.value))
    if row.pkind in ("int", "enum"):
        return int(row.value)
    if row.pkind == "bool":
        return row.value == "true"
    if row.pkind == "color":
        return Color(*(int(part) for part in row.value.split()))
    return row.value


def make_property(row: Row, name: str) -> Property:
    """A property with the start value of its row."""
    clamp = (int(row.minimum), int(row.maximum)) if row.clamped else None
    return Property(name, row.pkind, parse_value(row), row.mappable, row.items, clamp)


def make_param(row: Row, name: str) -> Param:
    """A parameter with the start value of its row."""
    link_type = None if row.link == "none" else int(row.link)
    if row.pkind in ("material-input", "volume-input"):
        return Param(name, "link", link_type)
    if row.pkind == "vector":
        x, y, z = (to_single(float(part)) for part in row.value.split())
        return Param(name, "vector", link_type, vector=(x, y, z))
    return Param(name, "property", link_type, make_property(row, name))


def make_brick(description: BrickClass) -> Brick:
    """A fresh brick."""
    brick = Brick(description)
    if description.output is not None:
        brick.params.append(Param("result", "output", description.output))
    for row in description.rows:
        if row.link == "plain":
            brick.plain[row.name] = make_property(row, row.name)
        else:
            brick.params.append(make_param(row, row.name))
    displacement = brick.find("displacementmap")
    if displacement is not None and displacement.prop is not None:
        displacement.connected_only = displacement.prop.locked = True
    return brick


def count_of(brick: Brick) -> int:
    """The number of pairs that a brick should have."""
    return brick.plain["count"].value


def set_count(brick: Brick, count: int) -> None:
    """Sets "count", within its limits, and adds the pairs that are missing."""
    brick.plain["count"].value = clamped(brick.plain["count"], count)
    for number in range(1, count_of(brick) + 1):
        names = [fill(row.name, str(number)) for row in brick.description.pair_rows]
        if brick.find(names[0]) is None:
            rows = zip(brick.description.pair_rows, names)
            brick.params += [make_param(row, name) for row, name in rows]


def clamped(prop: Property, value: int) -> int:
    """A value within the limits that a clamped property has."""
    return min(max(value, prop.clamp[0]), prop.clamp[1]) if prop.clamp else value


def is_upstream(candidate: Brick, brick: Brick) -> bool:
    """Whether a brick is another one or feeds it, directly or through others."""
    seen = {id(brick)}
    waiting = [brick]
    while waiting:
        current = waiting.pop()
        if current is candidate:
            return True
        for feeder in current.feeders:
            if id(feeder) not in seen:
                seen.add(id(feeder))
                waiting.append(feeder)
    return False


def accepts(param: Param, feeder: Brick, output: Optional[Param]) -> bool:
    """Whether an input takes a feeder's output; what an unknown brick puts out is not checked."""
    if param.role == "output" or param.link_type is None:
        return False
    if feeder.description is UNKNOWN:
        return True
    return output is not None and output.role == "output" and output.link_type == param.link_type


def connect(brick: Brick, input_key: str, feeder: Brick, output_key: str) -> None:
    """Links an input to an output, unless the link is illegal, there already or closes a loop."""
    if is_upstream(brick, feeder):
        return
    if brick.description is not UNKNOWN:
        param, output = brick.keys.get(input_key), feeder.keys.get(output_key)
        if param is None or not accepts(param, feeder, output) or feeder in param.links:
            return
        param.links.append(feeder)
    brick.feeders.append(feeder)


# Writing ----------------------------------------------------------------------------------------


class Result(NamedTuple):
    """What writing a brick gives; for the root the name is the mesh section."""

    kind: int
    name: str


class Writer:
    """The state of one run: counters, open buffers, finished text, placeholders, results."""

    def __init__(self, literal: bool, map_files: bool = False) -> None:
        self.literal = literal
        self.map_files = map_files
        self.output: List[str] = []
        self.buffers: List[List[str]] = []
        self.numbers = {"material": 0, "volume": 0, "texture": 0}
        self.placeholders: Dict[Property, str] = {}
        self.results: Dict[Brick, Result] = {}

    def text(self) -> str:
        """The finished statements, in order of completion."""
        return "".join(self.output)

    def push(self) -> None:
        """Opens a buffer."""
        self.buffers.append([])

    def emit(self) -> None:
        """Closes the top buffer; its text joins the finished text."""
        self.output += self.buffers.pop()

    def drop(self) -> str:
        """Closes the top buffer and returns its text."""
        return "".join(self.buffers.pop())

    def line(self, template: str, *arguments: str) -> None:
        """Appends a filled template to the top buffer."""
        self.buffers[-1].append(fill(template, *arguments))

    def next_name(self, family: str) -> str:
        """The next statement name of a family."""
        self.numbers[family] += 1
        return "Lm_%s%d" % (family, self.numbers[family])

    def placeholder(self, prop: Property) -> str:
        """The name that stands for a property, the same throughout a run."""
        if prop not in self.placeholders:
            number = "%03d" % (len(self.placeholders) + 1)
            self.placeholders[prop] = fill("%1%2_%3", "LuxRender_Lm_", number, prop.name)
        return self.placeholders[prop]

    def is_literal(self, prop: Property) -> bool:
        """Whether a property is written as its value."""
        return self.literal or prop.locked

    def color_line(self, name: str, color: Color, scale: float = 1.0) -> None:
        """Writes a colour, each component divided by 255; the alpha is left out."""
        parts = [scale * component / 255.0 for component in color[:3]]
        self.line(COLOR_LINE, name, *(format_float(part) for part in parts))

    def vector_line(self, name: str, vector: Vector) -> None:
        """Writes a vector."""
        self.line(VECTOR_LINE, name, *(format_float(part) for part in vector))

    def literal_line(self, name: str, prop: Property) -> None:
        """Writes a property's value."""
        value = prop.value
        if self.map_files and name == "filename" and prop.map_file:
            self.line(STRING_LINE, name, prop.map_file)
        elif prop.kind == "float":
            self.line(FLOAT_LINE, name, format_float(value))
        elif prop.kind == "int":
            self.line(INTEGER_LINE, name, str(value))
        elif prop.kind == "bool":
            self.line(BOOL_LINE, name, "true" if value else "false")
        elif prop.kind == "color":
            self.color_line(name, value)
        elif prop.kind == "enum":
            item = prop.items[value] if 0 <= value < len(prop.items) else ""
            self.line(STRING_LINE, name, item)
        else:
            self.line(STRING_LINE, name, value)

    def property_line(self, name: str, prop: Property) -> None:
        """Writes a property as its value or as its placeholder."""
        if self.is_literal(prop):
            self.literal_line(name, prop)
        elif prop.mappable:
            self.line(VALUE_OR_MAP_LINE, name, self.placeholder(prop))
        else:
            self.line(PLACEHOLDER_LINES[prop.kind], name, self.placeholder(prop))


def code_for(writer: Writer, brick: Brick) -> Result:
    """Writes a brick at its first use; later uses get the same result."""
    if brick not in writer.results:
        writer.results[brick] = write_brick(writer, brick)
    return writer.results[brick]


def linked_result(writer: Writer, param: Param) -> Optional[Result]:
    """The result of the only brick linked to an input; none for several or an unknown one."""
    if len(param.links) != 1 or param.links[0].description is UNKNOWN:
        return None
    return code_for(writer, param.links[0])


def write_property_param(writer: Writer, param: Param) -> None:
    """Writes the line of an input with a property: a reference when linked, else its value."""
    if param.links:
        result = linked_result(writer, param)
        if result is not None and result.kind == TEXTURE_RESULT:
            is_displacement = param.name == "displacementmap"
            writer.line(STRING_LINE if is_displacement else TEXTURE_LINE, param.name, result.name)
    elif param.prop is not None and not param.connected_only:
        writer.property_line(param.name, param.prop)


def write_link_param(writer: Writer, param: Param, on_root: bool) -> None:
    """Writes the line of a material or volume input."""
    result = linked_result(writer, param)
    if result is None:
        return
    if not on_root:
        if result.kind == MATERIAL_RESULT:
            writer.line(STRING_LINE, param.name, result.name)
        return
    keyword = "NamedMaterial" if result.kind == MATERIAL_RESULT else param.name
    writer.line("\n")
    writer.line(STATEMENT, keyword, result.name)


def write_param(writer: Writer, brick: Brick, param: Param) -> None:
    """Writes the line of any parameter that has one."""
    if param.role == "property":
        write_property_param(writer, param)
    elif param.role == "link":
        write_link_param(writer, param, brick.description.name == "VireoRootBrick")
    elif param.role == "vector":
        writer.vector_line(param.name, param.vector)


def write_parameters(writer: Writer, brick: Brick) -> None:
    """Writes a brick's lines in parameter order; a plain property precedes the parameters."""
    if brick.description.pair_rows:
        write_pairs(writer, brick)
        return
    for prop in brick.plain.values():
        writer.property_line(prop.name, prop)
    for param in brick.params:
        # The colour constant multiplies by its scale in a statement of its own.
        if brick.description.name != "VireoTexClrConstantBrick" or param.name != "scale":
            write_param(writer, brick, param)


def write_pairs(writer: Writer, brick: Brick) -> None:
    """Writes a band or multi-mix: "amount" if it has one, the textures, then all numbers."""
    amount = brick.find_own("amount")
    if amount is not None:
        write_param(writer, brick, amount)
    number_row, texture_row = brick.description.pair_rows
    numbers: List[str] = []
    for index in range(1, count_of(brick) + 1):
        number = brick.find_own(fill(number_row.name, str(index)))
        if number is not None and number.prop is not None:
            numbers.append(format_float(number.prop.value))
        texture = brick.find_own(fill(texture_row.name, str(index)))
        if texture is not None:
            write_param(writer, brick, texture)
    if numbers:
        array_name = {"offset%1": "offsets", "weight%1": "weights"}[number_row.name]
        writer.line(FLOAT_LINE, array_name, " ".join(numbers))


def write_material(writer: Writer, brick: Brick) -> Result:
    """Writes a material; its type line is the last."""
    writer.push()
    name = writer.next_name("material")
    writer.line("\n")
    writer.line(STATEMENT, "MakeNamedMaterial", name)
    write_parameters(writer, brick)
    writer.line(STRING_LINE, "type", brick.description.type_word)
    writer.emit()
    return Result(MATERIAL_RESULT, name)


def write_volume(writer: Writer, brick: Brick) -> Result:
    """Writes a volume; its type stands in the head."""
    writer.push()
    name = writer.next_name("volume")
    writer.line("\n")
    writer.line(STATEMENT2, "MakeNamedVolume", name, brick.description.type_word)
    write_parameters(writer, brick)
    writer.emit()
    return Result(VOLUME_RESULT, name)


def begin_texture(writer: Writer, brick: Brick, type_word: str) -> str:
    """Opens a texture statement of the brick's kind and returns its name."""
    writer.push()
    name = writer.next_name("texture")
    writer.line("\n")
    writer.line(TEXTURE, name, brick.description.kind, type_word)
    return name


def write_texture(writer: Writer, brick: Brick) -> Result:
    """Writes a texture."""
    name = begin_texture(writer, brick, brick.description.type_word)
    write_parameters(writer, brick)
    writer.emit()
    return Result(TEXTURE_RESULT, name)


def write_image_map(writer: Writer, brick: Brick) -> Result:
    """Writes an image map: as a constant without a map, with a scale texture when tinted."""
    tint = brick.own_property("filename")
    if writer.literal and not tint.map_file:
        name = begin_texture(writer, brick, "constant")
        writer.literal_line("value", tint)
        writer.emit()
        return Result(TEXTURE_RESULT, name)

    image = write_texture(writer, brick)
    neutral: Value = WHITE if tint.kind == "color" else 1.0
    filename = brick.find_own("filename")
    if (filename and filename.links) or (writer.is_literal(tint) and tint.value == neutral):
        return image

    name = begin_texture(writer, brick, "scale")
    writer.line(TEXTURE_LINE, "tex1", image.name)
    if writer.is_literal(tint):
        writer.literal_line("tex2", tint)
    else:
        # The tint alone, without the map: not the form of a mappable property.
        writer.line(PLACEHOLDER_LINES[tint.kind], "tex2", writer.placeholder(tint))
    writer.emit()
    return Result(TEXTURE_RESULT, name)


def write_color_constant(writer: Writer, brick: Brick) -> Result:
    """Writes a colour constant: scaled when literal, else with a scale texture."""
    color, scale = brick.own_property("value"), brick.own_property("scale")
    if writer.literal:
        name = begin_texture(writer, brick, "constant")
        writer.color_line("value", color.value, scale.value)
        writer.emit()
        return Result(TEXTURE_RESULT, name)

    constant = write_texture(writer, brick)
    name = begin_texture(writer, brick, "scale")
    writer.line(TEXTURE_LINE, "tex1", constant.name)
    if scale.locked:
        # The line's name is "value" here and "tex2" below.
        writer.line(COLOR_LINE, "value", *[format_float(scale.value)] * 3)
    else:
        writer.line(COLOR_PARTS_LINE, "tex2", *[writer.placeholder(scale)] * 3)
    writer.emit()
    return Result(TEXTURE_RESULT, name)


def write_root(writer: Writer, brick: Brick) -> Result:
    """Writes the root: the material section is emitted, the mesh section returned."""
    own = [brick.find_own(row.name) for row in brick.description.rows]
    params = [param for param in own if param is not None]
    writer.push()
    for param in params:
        if param.role == "link":
            write_param(writer, brick, param)
    writer.emit()
    # A displacement texture is finished while the mesh buffer is open: it comes after the above.
    writer.push()
    for param in params:
        if param.role == "property":
            write_param(writer, brick, param)
    return Result(NOTHING, writer.drop())


BrickWriter = Callable[[Writer, Brick], Result]

OWN_WRITERS: Dict[str, BrickWriter] = {
    "VireoTexFltImageMapBrick": write_image_map,
    "VireoTexClrImageMapBrick": write_image_map,
    "VireoTexClrConstantBrick": write_color_constant,
}
KIND_WRITERS: Dict[str, BrickWriter] = {
    "root": write_root,
    "material": write_material,
    "volume": write_volume,
}


def write_brick(writer: Writer, brick: Brick) -> Result:
    """Writes a brick with its class's writer."""
    kind_writer = KIND_WRITERS.get(brick.description.kind, write_texture)
    return OWN_WRITERS.get(brick.description.name, kind_writer)(writer, brick)


# Network files ----------------------------------------------------------------------------------

# Property kind and mappability of the custom inputs that have a property.
CUSTOM_PROPERTIES: Dict[int, Tuple[str, Value, bool]] = {
    FLOAT: ("float", 0.0, True),
    COLOR: ("color", BLACK, True),
    STRING: ("string", "", False),
    FRESNEL: ("float", 0.0, True),
}


def nested(value: Any) -> Dict[str, Any]:
    """The entries of a nested settings value, none for anything else."""
    if isinstance(value, dict) and value.get("type") == "settings":
        entries = value.get("value")
        if isinstance(entries, dict):
            return entries
    return {}


def is_nested(value: Any) -> bool:
    """Whether a value is a nested settings value."""
    return isinstance(value, dict) and value.get("type") == "settings"


def number_of(value: Any, default: Any) -> Any:
    """A number, written bare or as an integer pair."""
    if isinstance(value, list) and len(value) == 2 and value[0] == "i":
        value = value[1]
    if isinstance(value, bool) or not isinstance(value, (int, float)):
        return default
    return value


def stored_value(prop: Property, value: Any) -> Value:
    """A stored value in the property's kind; the value that it has when the form is wrong."""
    current = prop.value
    if prop.kind == "float":
        return to_single(float(number_of(value, current)))
    if prop.kind in ("int", "enum"):
        return clamped(prop, int(number_of(value, current)))
    if prop.kind == "bool":
        return value if isinstance(value, bool) else bool(number_of(value, current))
    if prop.kind == "color":
        parts = nested(value)
        names = ("Red", "Green", "Blue", "Alpha")
        return Color(*(int(number_of(parts.get(n), c)) for n, c in zip(names, current)))
    return value if isinstance(value, str) else current


def read_property(prop: Property, members: Dict[str, Any]) -> None:
    """Gives a property its stored members."""
    if "Value" in members:
        prop.value = stored_value(prop, members["Value"])
    if isinstance(members.get("Locked"), bool):
        prop.locked = members["Locked"]
    if prop.mappable and isinstance(members.get("MapImage"), str):
        prop.map_file = members["MapImage"]


def make_custom(link_type: int, name: str) -> Optional[Param]:
    """A custom input; none for an unknown type."""
    if link_type in CUSTOM_PROPERTIES:
        kind, value, mappable = CUSTOM_PROPERTIES[link_type]
        prop = Property(name, kind, value, mappable)
        return Param(name, "property", link_type, prop, custom=True)
    if link_type in (MATERIAL, VOLUME):
        return Param(name, "link", link_type, custom=True)
    if MATERIAL <= link_type <= FRESNEL:
        return Param(name, "silent", link_type, custom=True)
    return None


def read_customs(brick: Brick, entries: Dict[str, Any]) -> None:
    """Adds the stored custom inputs; one without a name is called after its position."""
    for position, entry in enumerate(entries.values()):
        if not is_nested(entry):
            continue
        members = nested(entry)
        name = members.get("Name")
        if not isinstance(name, str):
            name = "arg_%d" % position
        param = make_custom(int(number_of(members.get("ExtTypeID"), 0)), name)
        if param is not None:
            brick.params.append(param)


def keyed_params(brick: Brick) -> Dict[str, Param]:
    """The parameters by stored key: the second of a name is name#2, the third name#3."""
    seen: Dict[str, int] = {}
    keyed: Dict[str, Param] = {}
    for param in brick.params:
        seen[param.name] = seen.get(param.name, 0) + 1
        count = seen[param.name]
        keyed.setdefault(param.name if count == 1 else "%s#%d" % (param.name, count), param)
    return keyed


def read_params(brick: Brick, entries: Dict[str, Any]) -> None:
    """Gives the parameters their stored values and order; those not stored keep their places."""
    brick.keys = keyed_params(brick)
    listed: List[Param] = []
    for key, entry in entries.items():
        if key not in brick.keys or not is_nested(entry):
            continue
        param, members = brick.keys[key], nested(entry)
        listed.append(param)
        if param.prop is not None:
            read_property(param.prop, nested(members.get("Prop_0")))
        elif param.role == "vector":
            stored = [nested(members.get("Prop_%d" % index)).get("Value") for index in range(3)]
            x, y, z = (to_single(number_of(s, old)) for s, old in zip(stored, param.vector))
            param.vector = (x, y, z)
    # Parameters of equal names stay in the order in which they were made.
    of_name: Dict[str, List[Param]] = {}
    for param in brick.params:
        of_name.setdefault(param.name, []).append(param)
    listed = [of_name[param.name].pop(0) for param in listed]
    places = iter(listed)
    is_listed = {id(param) for param in listed}
    brick.params = [next(places) if id(param) in is_listed else param for param in brick.params]


def read_brick(catalogue: Catalogue, entry: Dict[str, Any]) -> Brick:
    """Builds a brick from its stored entry."""
    description = catalogue.get(entry.get("DAZStudioClassName", ""))
    if description is None:
        return Brick(UNKNOWN)
    brick = make_brick(description)
    attributes = nested(entry.get("Attributes"))
    read_customs(brick, nested(attributes.get("VireoExtCustomParameters")))
    plain = nested(attributes.get("BrickProperties"))
    for name, prop in brick.plain.items():
        read_property(prop, nested(plain.get(name)))
    if "count" in brick.plain:
        set_count(brick, count_of(brick))
    read_params(brick, nested(entry.get("Parameters")))
    return brick


def read_network(catalogue: Catalogue, document: Any) -> List[Brick]:
    """Builds the bricks of a network file, linked, in the file's order."""
    if not isinstance(document, dict) or document.get("format") != "sskn":
        raise ValueError("not a network file")
    setup = nested(document.get("BrickSetup"))
    bricks = {
        key: read_brick(catalogue, nested(entry))
        for key, entry in nested(setup.get("Bricks")).items()
        if is_nested(entry)
    }
    for entry in nested(setup.get("Connections")).values():
        members = nested(entry)
        # "Source" is the side of the input, "Target" the brick that feeds it.
        brick = bricks.get(members.get("SourceBrick", ""))
        feeder = bricks.get(members.get("TargetBrick", ""))
        if brick is not None and feeder is not None:
            connect(brick, members.get("SourceParam", ""), feeder, members.get("TargetParam", ""))
    return list(bricks.values())


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
