"""Checks of the arguments that name choices and numbers."""

from __future__ import annotations

import operator
from typing import Any, Callable, Optional

import numpy as np

from . import _native
from .messages import shown
from .pixel_types import PixelType

_MOST_PIXELS = 2**32 - 1  # the library counts in 32 bits


def choice(argument: str, value: Any, choices: dict[str, int]) -> int:
    """What one of several words stands for."""
    allowed = "allowed: " + ", ".join(map(repr, choices))
    if not isinstance(value, str):
        raise TypeError(f"{argument}: {shown(value)} is a {type(value).__name__}; {allowed}")
    if value not in choices:
        raise ValueError(f"{argument}: {shown(value)} is unknown; {allowed}")
    return choices[value]


def choice_for(
    argument: str, value: Any, choices: dict[str, int], source: PixelType, applies: bool, kind: str
) -> int:
    """The same for a choice that only some sources have; None leaves it to the conversion."""
    if value is None:
        return 0
    flag = choice(argument, value, choices)
    if not applies:
        raise ValueError(f"{argument}: {value!r} is given, but {source} is not {kind}; allowed: None")
    return flag


def full_depth(depth: Any) -> bool:
    """Whether all bits are converted."""
    if depth is not None and (isinstance(depth, bool) or depth != 8):
        raise ValueError(f"depth: {shown(depth)} is unknown; allowed: 8, or None for all bits")
    return depth is None


def layout_flag(
    source: PixelType, destination: PixelType, bayer: Optional[str], named: Optional[str], wanted: Optional[str]
) -> int:
    """The conversion flag of a mosaic's layout, which is never guessed: a wrong one swaps red and blue.

    :param named, wanted: the layouts that the names of the source and the destination say
    """
    if bayer is not None:
        choice("bayer", bayer, _native.BAYER)
        if not source.bayer:
            raise ValueError(f"bayer: {bayer!r} is given, but {source} is no mosaic; allowed: None")
        if named not in (None, bayer):
            raise ValueError(f"bayer: {bayer!r} is given, but from_ says {named!r}; allowed: {named!r} or None")
    layout = named or bayer
    if wanted is not None and layout not in (None, wanted):
        raise ValueError(f"to: the mosaic's layout is {wanted!r}, but the source's is {layout!r}, which stays")
    if layout is None and source.bayer and not destination.bayer:
        allowed = ", ".join(map(repr, _native.BAYER))
        hint = f", or a from_ that says it, such as {source.pfnc[0]!r}" if source.pfnc else ""
        raise ValueError(f"bayer: is missing, and {source} does not say the mosaic's layout; allowed: {allowed}{hint}")
    return _native.BAYER[layout] if layout else 0


def line_range(lines: Any, height: int) -> tuple[int, int]:
    """First line and count."""
    if lines is None:
        return 0, height
    allowed = f"allowed: (first, count) within the {height} lines of the image"
    try:
        first, count = (operator.index(value) for value in lines)
    except (TypeError, ValueError):
        raise TypeError(f"lines: {shown(lines)} is no pair of whole numbers; {allowed}") from None
    if first < 0 or count < 1 or first + count > height:
        raise ValueError(f"lines: {shown(lines)} does not fit; {allowed}")
    return first, count


def whole_number(argument: str, value: Any, least: int, most: int, allowed: str) -> int:
    """A whole number from ``least`` to ``most``.

    :param allowed: the end of the message for other values
    """
    try:
        number = operator.index(value)
    except TypeError:
        raise TypeError(f"{argument}: {shown(value)} is a {type(value).__name__}; {allowed}") from None
    if not least <= number <= most:
        raise ValueError(f"{argument}: {shown(value)} does not fit; {allowed}")
    return number


def thread_count(threads: Any) -> int:
    """The most threads that work on an image."""
    return whole_number("threads", threads, 1, 256, "allowed: 1 to 256")


def triple(
    argument: str, values: Any, default: Any, most: int, number: Callable[[Any], Any], least: int = 0, one: bool = False
) -> tuple:
    """Numbers for red, green and blue.

    :param one: whether a single number stands for three equal ones
    """
    if values is None:
        return (default,) * 3
    whole = "" if number is float else "whole "
    single = "a number, or " if one else ""
    allowed = f"allowed: {single}{whole}numbers for red, green and blue, each {least} to {most}"
    if one and isinstance(values, (int, float, np.number)) and not isinstance(values, bool):
        values = (values,) * 3
    try:
        numbers = tuple(number(value) for value in values)
    except OverflowError:  # a whole number that is too large for a float
        numbers = ()
    except (TypeError, ValueError):
        raise TypeError(f"{argument}: {shown(values)} is something else; {allowed}") from None
    if len(numbers) != 3 or not all(least <= value <= most for value in numbers):
        raise ValueError(f"{argument}: {shown(values)} does not fit; {allowed}")
    return numbers


def tone_curve(tone: Any, default: str) -> tuple[int, float]:
    """The kind of a curve, and its gamma."""
    allowed = "allowed: " + ", ".join(map(repr, _native.TONES)) + ", or a gamma of 0.1 to 10"
    if isinstance(tone, str) or tone is None:
        word = default if tone is None else tone
        if word not in _native.TONES:
            raise ValueError(f"tone: {shown(tone)} is unknown; {allowed}")
        return _native.TONES[word], 1.0
    if isinstance(tone, bool) or not isinstance(tone, (int, float, np.number)):
        raise TypeError(f"tone: {shown(tone)} is a {type(tone).__name__}; {allowed}")
    if not 0.1 <= tone <= 10:
        raise ValueError(f"tone: {shown(tone)} does not fit; {allowed}")
    return _native.GAMMA, float(tone)


def image_size(size: Any) -> tuple[int, int]:
    """Width and height."""
    allowed = f"allowed: (width, height) in pixels, each 1 to {_MOST_PIXELS}"
    try:
        width, height = (operator.index(value) for value in size)
    except (TypeError, ValueError):
        raise TypeError(f"size: {shown(size)} is no pair of whole numbers; {allowed}") from None
    if not (1 <= width <= _MOST_PIXELS and 1 <= height <= _MOST_PIXELS):
        raise ValueError(f"size: {shown(size)} does not fit; {allowed}")
    return width, height
