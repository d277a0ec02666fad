# SPDX-FileCopyrightText: 2026 The Vireo authors
# SPDX-License-Identifier: Apache-2.0
"""What each brick writes, for render_golden.py."""

from __future__ import annotations

from typing import Callable, Dict, List, NamedTuple, Optional

from golden_text import (
    BOOL_LINE, COLOR_LINE, COLOR_PARTS_LINE, FLOAT_LINE, INTEGER_LINE, PLACEHOLDER_LINES,
    STATEMENT, STATEMENT2, STRING_LINE, TEXTURE, TEXTURE_LINE, VALUE_OR_MAP_LINE, VECTOR_LINE,
    fill, format_float)
from golden_bricks import (
    Brick, Color, MATERIAL_RESULT, NOTHING, Param, Property, TEXTURE_RESULT, UNKNOWN,
    VOLUME_RESULT, Value, Vector, WHITE, count_of)

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
