# SPDX-FileCopyrightText: 2026 The Vireo authors
# SPDX-License-Identifier: Apache-2.0
"""Network files as bricks, for render_golden.py."""

from __future__ import annotations

from typing import Any, Dict, List, Optional, Tuple

from golden_text import to_single
from golden_bricks import (
    BLACK, Brick, COLOR, Catalogue, Color, FLOAT, FRESNEL, MATERIAL, Param, Property, STRING,
    UNKNOWN, VOLUME, Value, clamped, connect, count_of, make_brick, set_count)

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
