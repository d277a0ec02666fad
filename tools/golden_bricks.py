# SPDX-FileCopyrightText: 2026 The Vireo authors
# SPDX-License-Identifier: Apache-2.0
"""The catalogue table and the bricks made of it, for render_golden.py."""

from __future__ import annotations

from dataclasses import dataclass, field
from pathlib import Path
from typing import Any, Dict, List, NamedTuple, Optional, Sequence, Tuple, Union

from golden_text import fill, to_single

CATALOGUE = Path(__file__).resolve().parent.parent / "tests" / "data" / "catalogue.tsv"

# Link types.
MATERIAL, VOLUME, FLOAT, COLOR, STRING, FRESNEL = 1007, 1008, 1009, 1010, 1015, 1016

# Kinds of a code result.
NOTHING, TEXTURE_RESULT, MATERIAL_RESULT, VOLUME_RESULT = 0, 6, 7, 8


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
