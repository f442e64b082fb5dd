"""Conversion of images that lie in buffers and NumPy arrays."""

from __future__ import annotations

import operator
from typing import Any, Optional, Sequence

from . import _native
from .arguments import choice_for, full_depth, layout_flag, line_range, triple
from .images import destination_image, source_image
from .messages import shown
from .pixel_types import TypeLike, converters, resolve

_DEMOSAICS = _native.DEMOSAICS
_FILTER_ORDERS = {"mosaic": _native.FILTER_FIRST, "colour": 0}
_YUV_RANGES = {"studio": 0, "full": _native.FULL_RANGE}
_YUV_MATRICES = {"bt601": 0, "bt709": _native.BT709}
_FIELD_ORDERS = {"top": 0, "bottom": _native.FIELD_ORDER}


def convert(
    source: Any,
    from_: TypeLike,
    to: TypeLike,
    size: Optional[tuple[int, int]] = None,
    *,
    line_size: Optional[int] = None,
    gains: Optional[Sequence[float]] = None,
    offset: Optional[Sequence[int]] = None,
    bayer: Optional[str] = None,
    demosaic: Optional[str] = None,
    filter_order: Optional[str] = None,
    yuv_range: Optional[str] = None,
    yuv_matrix: Optional[str] = None,
    field_order: Optional[str] = None,
    depth: Optional[int] = None,
    lines: Optional[tuple[int, int]] = None,
    out: Any = None,
) -> Any:
    """Converts an image from one pixel type to another.

    The interpreter lock is released meanwhile, so threads convert side by side.

    No bit is lost that the destination has room for: values of fewer bits are shifted up, so that white is white, and
    those of more bits are cut.

    :param source: a NumPy array, an object of the array interface such as a PIL image, or any other object with a
        buffer (bytes, bytearray, memoryview, mmap, ctypes array).
        An array of the shape and dtype of the type tells its own size: (height, width) for one sample a pixel, uint8
        up to 8 bits and uint16 above; (height, width, samples) for several; (planes, height, width) for planar types.
        Anything else is taken as bytes, in one dimension or in rows, and needs ``size``. Rows may be padded or belong
        to a wider array; only arrays whose pixels do not lie side by side are copied.
    :param from_: the source's pixel type, such as "BayerRG10", 0x20011 or a camera's PixelFormat code
    :param to: the destination's pixel type, such as "RGB8" or "Mono8"; ``converters(from_)`` lists what is allowed
    :param size: (width, height) in pixels, for a source that does not tell it
    :param line_size: bytes from one line of a one-dimensional source to the next, if lines are padded
    :param gains: factors of red, green and blue, each 0 to 1000: the white balance. They act where colours are
        converted, not between grayscale types or mosaics.
    :param offset: added to red, green and blue after the gains, each 0 to 255
    :param bayer: colours of the first two pixels of a mosaic's top row, "GR", "RG", "GB" or "BG". Must be given to
        make colours of a mosaic, unless ``from_`` is a PFNC name or code, which tells it.
    :param demosaic: of a mosaic: "adaptive" (the default) looks along edges, "mhc" uses linear 5 x 5 filters,
        "bilinear" the neighbours of each pixel, and "block" makes four equal pixels of a 2 x 2 cell; "half" makes one
        pixel of each cell, so that the result has half the width and height, rounded down
    :param filter_order: of a mosaic: whether gains and offset act on its samples, "mosaic" (the default), which makes
        better colours, or on the colours, "colour"
    :param yuv_range: of YUV: "studio" (brightness of 16 to 235) or "full"; by default as a YCbCr name says, else studio
    :param yuv_matrix: of YUV: "bt601" or "bt709"; by default as a YCbCr name says, else bt601
    :param field_order: which field comes first in the buffer of an interlaced type, "top" (the default) or "bottom"
    :param depth: 8 converts the upper 8 bits of each colour value alone, which are the low bits of a deeper
        destination then; None converts all bits
    :param lines: (first, count) of the lines to convert into ``out``, which keeps its others; by default all. So
        threads share a frame.
    :param out: where to write: an array of the result's shape and dtype whose pixels lie side by side in each row, or
        a writable buffer of at least as many bytes. It must not overlap the source.
    :return: ``out`` if given; otherwise a new array of the destination's shape and dtype, like those told for
        ``source``. Types whose pixels share bytes come as uint8 in one dimension.
        Pixels that a conversion leaves alone, such as half of a pair that shares its colour, are 0 in a new array.
    :raises ValueError: for a value that is not allowed, or an image that does not fit its buffer; nothing is written
    :raises TypeError: for an object that is not what an argument takes
    """
    source_type, named_layout, named_flags = resolve("from_", from_)
    destination_type, wanted_layout, _ = resolve("to", to)
    if not _native.has_converter(source_type.id, destination_type.id):
        reached = ", ".join(str(type) for _, type in converters(source_type))
        raise ValueError(f"to: {source_type} does not convert to {destination_type}; allowed: {reached}")
    demosaics = source_type.bayer and not destination_type.bayer
    is_yuv = source_type.id & 0x70000 == 0x40000

    def flags_of(argument: str, value: Optional[str], words: dict[str, int], fits: bool, needed: str) -> int:
        return choice_for(argument, value, words, source_type, fits, needed)

    flags = (
        layout_flag(source_type, destination_type, bayer, named_layout, wanted_layout)
        | flags_of("demosaic", demosaic, _DEMOSAICS, source_type.bayer, "a mosaic")
        | flags_of("filter_order", filter_order, _FILTER_ORDERS, source_type.bayer, "a mosaic")
        | flags_of("yuv_range", yuv_range, _YUV_RANGES, is_yuv, "YUV")
        | flags_of("yuv_matrix", yuv_matrix, _YUV_MATRICES, is_yuv, "YUV")
        | flags_of("field_order", field_order, _FIELD_ORDERS, source_type.interlaced, "interlaced")
    )
    if yuv_range is None:
        flags |= named_flags & _native.FULL_RANGE
    if yuv_matrix is None:
        flags |= named_flags & _native.BT709
    if demosaics and demosaic is None:
        flags |= _DEMOSAICS["adaptive"]
    if demosaics and filter_order is None:
        flags |= _native.FILTER_FIRST
    balance = None
    if gains is not None or offset is not None:
        balance = triple("gains", gains, 1, 1000, float), triple("offset", offset, 0, 255, operator.index)
    image = source_image(source, source_type, size, line_size)
    if lines is not None and out is None:
        raise ValueError(f"lines: {shown(lines)} is given without out, which keeps the other lines; allowed: None")
    halves = 2 if demosaics and demosaic == "half" else 1
    result = destination_image(out, destination_type, image.width // halves, image.height // halves)
    _native.convert(
        source_type.id,
        image.array,
        image.line_size,
        destination_type.id,
        result.array,
        result.line_size,
        (image.width, image.height),
        (result.width, result.height),
        flags,
        line_range(lines, image.height),
        balance,
        full_depth(depth),
    )
    return result.array if out is None else out
