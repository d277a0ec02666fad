# SPDX-FileCopyrightText: 2026 The Vireo authors
# SPDX-License-Identifier: Apache-2.0
"""How lines of text are filled in: templates and numbers, for render_golden.py."""

from __future__ import annotations

import math
import struct
import unicodedata
from decimal import ROUND_HALF_UP, Context, Decimal
from typing import Iterator, List, NamedTuple

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
