"""What is known of a frame beside its pixels: the flags of conversions."""

from __future__ import annotations

from typing import Optional

from . import _native
from .arguments import choice_for, layout_flag
from .pixel_types import PixelType, TypeLike, resolve

_YUV_RANGES = {"studio": 0, "full": _native.FULL_RANGE}
_YUV_MATRICES = {"bt601": 0, "bt709": _native.BT709}
_FIELD_ORDERS = {"top": 0, "bottom": _native.FIELD_ORDER}


def resolve_pair(from_: TypeLike, to: TypeLike) -> tuple[PixelType, PixelType]:
    """The types of a conversion that there is."""
    source, _, _ = resolve("from_", from_)
    destination, _, _ = resolve("to", to)
    if not _native.has_converter(source.id, destination.id):
        allowed = _native.destinations(source.id)
        raise ValueError(f"to: {source} does not convert to {destination}; allowed: {allowed}")
    return source, destination


def frame_flags(
    from_: TypeLike,
    to: Optional[TypeLike],
    bayer: Optional[str],
    yuv_range: Optional[str],
    yuv_matrix: Optional[str],
    field_order: Optional[str],
) -> int:
    """The flags that describe a frame, from the arguments and from the names of its types.

    :param to: None where colours are wanted
    """
    source, named_layout, named_flags = resolve("from_", from_)
    destination, wanted_layout, _ = resolve("to", "RGB8" if to is None else to)
    is_yuv = source.id & 0x70000 == 0x40000
    flags = (
        layout_flag(source, destination, bayer, named_layout, wanted_layout)
        | choice_for("yuv_range", yuv_range, _YUV_RANGES, source, is_yuv, "YUV")
        | choice_for("yuv_matrix", yuv_matrix, _YUV_MATRICES, source, is_yuv, "YUV")
        | choice_for("field_order", field_order, _FIELD_ORDERS, source, source.interlaced, "interlaced")
    )
    if yuv_range is None:
        flags |= named_flags & _native.FULL_RANGE
    if yuv_matrix is None:
        flags |= named_flags & _native.BT709
    return flags
