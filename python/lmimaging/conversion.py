"""Conversion of images that lie in buffers and NumPy arrays."""

from __future__ import annotations

import operator
from typing import Any, Optional, Sequence, Union

from . import _native
from .arguments import choice_for, full_depth, line_range, thread_count, tone_curve, triple
from .frames import frame_flags, resolve_pair
from .images import result_image, source_image
from .pixel_types import TypeLike

_FILTER_ORDERS = {"mosaic": _native.FILTER_FIRST, "colour": 0}


def convert(
    source: Any,
    from_: TypeLike,
    to: TypeLike,
    size: Optional[tuple[int, int]] = None,
    *,
    line_size: Optional[int] = None,
    black: Union[None, float, Sequence[float]] = None,
    gains: Optional[Sequence[float]] = None,
    offset: Optional[Sequence[int]] = None,
    tone: Union[None, str, float] = None,
    bayer: Optional[str] = None,
    demosaic: Optional[str] = None,
    filter_order: Optional[str] = None,
    yuv_range: Optional[str] = None,
    yuv_matrix: Optional[str] = None,
    field_order: Optional[str] = None,
    depth: Optional[int] = None,
    lines: Optional[tuple[int, int]] = None,
    threads: int = 1,
    out: Any = None,
) -> Any:
    """Converts an image from one pixel type to another.

    The interpreter lock is released meanwhile, so threads convert side by side.

    No bit is lost that the destination has room for: values of fewer bits are shifted up, so that white is white, and
    those of more bits are cut.

    :param source: a NumPy array, an object of the array interface such as a PIL image, or any other object with a
        buffer (bytes, bytearray, memoryview, mmap, ctypes array).
        The size is taken from an array of the shape and dtype of the type: (height, width) for one sample a pixel, uint8
        up to 8 bits and uint16 above; (height, width, samples) for several; (planes, height, width) for planar types.
        Anything else is taken as bytes, in one dimension or in rows, and needs ``size``. Rows may be padded or belong
        to a wider array; only arrays whose pixels do not lie side by side are copied.
    :param from_: the source's pixel type, such as "BayerRG10", 0x20011 or a camera's PixelFormat code
    :param to: the destination's pixel type, such as "RGB8" or "Mono8"; ``converters(from_)`` lists what is allowed
    :param size: (width, height) in pixels, for a source that has none
    :param line_size: bytes from one line of a one-dimensional source to the next, if lines are padded
    :param black: the level of black, one number or three of red, green and blue, which is taken off first; in steps of
        the samples as the camera counts them, each 0 to 65535
    :param gains: factors of red, green and blue, each 0 to 1000: the white balance. They act where colours are
        converted, not between grayscale types or mosaics.
    :param offset: added to red, green and blue after the gains, each -255 to 255, in steps of 8-bit values
    :param tone: the curve from light to values, after all that: "linear" (the default), "srgb" for screens, "bt709" for
        video, or a gamma of 0.1 to 10. `Development` has a matrix and more.
    :param bayer: colours of the first two pixels of a mosaic's top row, "GR", "RG", "GB" or "BG". Must be given to
        make colours of a mosaic, unless ``from_`` is a PFNC name or code, which says it.
    :param demosaic: of a mosaic: "adaptive" (the default) looks along edges, "mhc" uses linear 5 x 5 filters,
        "bilinear" the neighbours of each pixel, and "block" makes four equal pixels of a 2 x 2 cell; "half" makes one
        pixel of each cell, so that the result has half the width and height, rounded down
    :param filter_order: of a mosaic: whether gains and the like act on its samples, "mosaic" (the default), which makes
        better colours, or on the colours, "colour"
    :param yuv_range: of YUV: "studio" (brightness of 16 to 235) or "full"; by default as a YCbCr name says, else studio
    :param yuv_matrix: of YUV: "bt601" or "bt709"; by default as a YCbCr name says, else bt601
    :param field_order: which field comes first in the buffer of an interlaced type, "top" (the default) or "bottom"
    :param depth: 8 converts the upper 8 bits of each colour value alone, which are the low bits of a deeper
        destination then; None converts all bits
    :param lines: (first, count) of the lines to convert into ``out``, which keeps its others; by default all. So
        threads share a frame.
    :param threads: the most that work on the image, 1 to 256; more than 1 helps where one image is large
    :param out: where to write: an array of the result's shape and dtype whose pixels lie side by side in each row, or
        a writable buffer of at least as many bytes. It must not overlap the source.
    :return: ``out`` if given; otherwise a new array of the destination's shape and dtype, like those described for
        ``source``. Types whose pixels share bytes come as uint8 in one dimension.
        Pixels that a conversion leaves alone, such as half of a pair that shares its colour, are 0 in a new array.
    :raises ValueError: for a value that is not allowed, or an image that does not fit its buffer; nothing is written
    :raises TypeError: for an object that is not what an argument takes
    """
    source_type, destination_type = resolve_pair(from_, to)
    demosaics = source_type.bayer and not destination_type.bayer
    flags = (
        frame_flags(from_, to, bayer, yuv_range, yuv_matrix, field_order)
        | choice_for("demosaic", demosaic, _native.DEMOSAICS, source_type, source_type.bayer, "a mosaic")
        | choice_for("filter_order", filter_order, _FILTER_ORDERS, source_type, source_type.bayer, "a mosaic")
    )
    if demosaics and demosaic is None:
        flags |= _native.DEMOSAICS["adaptive"]
    if demosaics and filter_order is None:
        flags |= _native.FILTER_FIRST
    curve = None
    if any(value is not None for value in (black, gains, offset, tone)):
        curve = (
            triple("black", black, 0.0, 65535, float, one=True),
            triple("gains", gains, 1.0, 1000, float),
            triple("offset", offset, 0, 255, operator.index, least=-255),
            tone_curve(tone, "linear"),
        )
    image = source_image(source, source_type, size, line_size)
    halves = 2 if demosaics and demosaic == "half" else 1
    result = result_image(out, destination_type, image, halves, lines)
    _native.convert(
        source_type.id,
        image.native(),
        destination_type.id,
        result.native(),
        flags,
        line_range(lines, image.height),
        curve,
        full_depth(depth),
        thread_count(threads),
    )
    return result.array if out is None else out
