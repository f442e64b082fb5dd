"""The registered pixel types, and how arguments name them."""

from __future__ import annotations

import functools
import operator
from typing import NamedTuple, Optional, SupportsIndex, Union

from . import _native
from .messages import shown


class PixelType(NamedTuple):
    """A pixel format that the library knows."""

    id: int
    name: str
    class_name: str
    """The C++ class that describes the format, such as "BayerRGB10"; empty if it has none."""
    pfnc: tuple[str, ...]
    """Its names in the GenICam Pixel Format Naming Convention; of a mosaic one for each layout."""
    bits: int
    """Significant bits of a pixel; of some wide RGB types, of a sample."""
    bytes: int
    """Bytes of a pixel in memory; of packed formats nominal."""
    bayer: bool
    normalized: bool
    interlaced: bool
    packed: bool
    planar: bool

    @property
    def gray(self) -> bool:
        """Whether it has no colours; mosaics have them."""
        return self.id & 0x70000 == 0x10000

    def __index__(self) -> int:
        return self.id

    def __str__(self) -> str:
        return f"0x{self.id:X} ({self.name})"


TypeLike = Union[PixelType, SupportsIndex, str]
"""What names a pixel type; see the module's own documentation."""

_ALLOWED = "allowed: a PixelType, an id, a name, a PFNC code or a V4L2 fourcc"


def resolve(argument: str, wanted: TypeLike) -> tuple[PixelType, Optional[str], int]:
    """The type that an argument names, the Bayer layout if the name says it ("RG"), and the conversion flags of a YCbCr
    name."""
    if isinstance(wanted, str) and not wanted.isprintable():  # such as a name up to a null character
        raise ValueError(f"{argument}: {shown(wanted)} is no name of a pixel type; {_ALLOWED}")
    if isinstance(wanted, str) and not wanted[:1].isdigit():
        id, layout, flags = _native.find_name(argument, wanted)
    else:
        id, layout, flags = _native.find_number(argument, _number(argument, wanted))
    return _pixel_type(id), layout or None, flags


@functools.lru_cache(maxsize=None)  # the registry never changes or removes a type
def _pixel_type(id: int) -> PixelType:
    return PixelType(*_native.describe(id))


def _number(argument: str, wanted: TypeLike) -> int:
    try:
        number = int(wanted, 0) if isinstance(wanted, str) else operator.index(wanted)
    except ValueError:
        raise ValueError(f"{argument}: {shown(wanted)} is no number; {_ALLOWED}") from None
    except TypeError:
        raise TypeError(f"{argument}: {shown(wanted)} is a {type(wanted).__name__}; {_ALLOWED}") from None
    if not 0 <= number < 2**63:
        raise ValueError(f"{argument}: {shown(wanted)} is no id; {_ALLOWED}")
    return number


def types() -> list[PixelType]:
    """All registered pixel types, ascending by id."""
    return [_pixel_type(id) for id in _native.type_ids()]


def converters(from_: Optional[TypeLike] = None, to: Optional[TypeLike] = None) -> list[tuple[PixelType, PixelType]]:
    """The pairs (source, destination) that `convert` knows, ascending by ids.

    :param from_: only those from this type
    :param to: only those to this type
    """
    source = None if from_ is None else resolve("from_", from_)[0].id
    destination = None if to is None else resolve("to", to)[0].id
    by_id = {known.id: known for known in types()}
    return [
        (by_id[a], by_id[b]) for a, b in _native.converter_ids() if source in (None, a) and destination in (None, b)
    ]
