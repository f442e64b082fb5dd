"""Images in buffers: their pixels, where each line begins, and how large they are."""

from __future__ import annotations

import operator
from typing import Any, NamedTuple, Optional

import numpy as np

from . import _native
from .arguments import image_size
from .layout import Layout, layout_of
from .messages import shown
from .pixel_types import PixelType, TypeLike, resolve


class Image(NamedTuple):
    """An image whose pixels lie side by side in each line."""

    array: np.ndarray
    width: int
    height: int
    line_size: int
    """Bytes from one line to the next; 0 for lines without padding."""

    def native(self) -> tuple[np.ndarray, int, tuple[int, int]]:
        return self.array, self.line_size, (self.width, self.height)


def required_size(type: TypeLike, size: tuple[int, int]) -> int:
    """The bytes that an image needs, in lines without padding.

    :param type: such as "BayerRG12p"
    :param size: (width, height) in pixels
    :raises ValueError: for a type that is unknown, and for sizes that are not allowed
    """
    pixel_type, _, _ = resolve("type", type)
    width, height = image_size(size)
    bytes = _native.required_size(pixel_type.id, width, height)
    if bytes is None:
        raise ValueError(f"size: {(width, height)} is too large for {pixel_type}; allowed: images below 4 GiB")
    return bytes


def source_image(source: Any, type: PixelType, size: Any, line_size: Optional[int]) -> Image:
    """The image that a source holds, copied only if its pixels lie apart."""
    array = _source_array(source)
    if array.size == 0:
        raise ValueError(f"source: {_described(array)} is empty; allowed: 1 pixel or more")
    wanted = None if size is None else image_size(size)
    layout = layout_of(type)
    known = layout.size(array) if layout else None
    if line_size is not None and (known or array.ndim != 1):
        raise ValueError(f"line_size: {shown(line_size)} is given, but {_described(array)} has one; allowed: None")
    if layout and known:
        if wanted not in (None, known):
            raise ValueError(f"size: {shown(size)} is given, but the source is an array of {known[0]} x {known[1]}")
        step = layout.line_size(array)
        return Image(array, *known, step) if step else Image(np.ascontiguousarray(array), *known, 0)
    if array.ndim not in (1, 2) or not _holds_bytes(array, layout):
        raise ValueError(f"source: {_described(array)} is no image of {type}; allowed: {_allowed(layout)}")
    if wanted is None:
        shape = f", or an array of shape {layout}" if layout else ""
        raise ValueError(f"size: is missing, and {_described(array)} has none; allowed: (width, height){shape}")
    if array.ndim == 1:
        return Image(np.ascontiguousarray(array), *wanted, _line_size(line_size))
    rows = wanted[1] * (layout.samples if layout and layout.planar else 1)
    if len(array) != rows:
        raise ValueError(f"source: {_described(array)} does not fit; needed for size {wanted} of {type}: {rows} rows")
    if not array[0].flags.c_contiguous or array.strides[0] < array[0].nbytes:
        array = np.ascontiguousarray(array)
    return Image(array, *wanted, array.strides[0])


def destination_image(out: Any, type: PixelType, width: int, height: int) -> Image:
    """The image to write to: the caller's, or a new one."""
    layout = layout_of(type)
    if out is None:
        size = _native.required_size(type.id, width, height)
        if size is None:
            raise ValueError(f"size: {(width, height)} is too large for {type}; allowed: images below 4 GiB")
        array = np.zeros(layout.shape(width, height), layout.dtype) if layout else np.zeros(size, np.uint8)
        return Image(array, width, height, 0)
    array = _array_over("out", out)
    if not array.flags.writeable:
        raise ValueError(f"out: {_described(array)} is read-only; allowed: a writable array or buffer")
    if layout and layout.size(array) == (width, height):
        step = layout.line_size(array)
        if step is None:
            raise ValueError(
                f"out: the pixels of {_described(array)} lie apart (strides {array.strides}); "
                "allowed: pixels side by side in each row, and planes one after the other"
            )
        return Image(array, width, height, step)
    if array.ndim == 1 and array.itemsize == 1 and array.flags.c_contiguous:
        return Image(array, width, height, 0)
    shape = f"shape {layout.shape(width, height)} of {layout.dtype}, or " if layout else ""
    raise ValueError(f"out: {_described(array)} does not fit; allowed: {shape}one dimension of bytes")


def result_image(out: Any, type: PixelType, source: Image, divisor: int, lines: Any) -> Image:
    """The image that a whole source, or some of its lines, become."""
    if lines is not None and out is None:
        raise ValueError(f"lines: {shown(lines)} is given without out, which keeps the other lines; allowed: None")
    return destination_image(out, type, source.width // divisor, source.height // divisor)


def _source_array(source: Any) -> np.ndarray:
    """A source as an array; that of an image, such as PIL's, may be a copy that the image makes."""
    if hasattr(source, "__array_interface__"):
        return np.asarray(source)
    return _array_over("source", source)


def _array_over(argument: str, buffer: Any) -> np.ndarray:
    """An object's buffer as an array, without a copy."""
    if isinstance(buffer, np.ndarray):
        return buffer
    try:
        return np.asarray(memoryview(buffer))
    except TypeError:
        raise TypeError(
            f"{argument}: a {type(buffer).__name__} has no buffer; allowed: a NumPy array, bytes, bytearray, "
            "memoryview, mmap, or another object with the buffer protocol"
        ) from None


def _holds_bytes(array: np.ndarray, layout: Optional[Layout]) -> bool:
    return array.itemsize == 1 or (layout is not None and layout.has_samples(array))


def _line_size(line_size: Optional[int]) -> int:
    if line_size is None:
        return 0
    allowed = "allowed: bytes from one line to the next, 1 or more"
    try:
        step = operator.index(line_size)
    except TypeError:
        raise TypeError(f"line_size: {shown(line_size)} is no whole number; {allowed}") from None
    if not 1 <= step < 2**32:
        raise ValueError(f"line_size: {shown(line_size)} does not fit; {allowed}")
    return step


def _described(array: np.ndarray) -> str:
    return f"an array of shape {array.shape} and dtype {array.dtype}"


def _allowed(layout: Optional[Layout]) -> str:
    shape = f"an array of shape {layout}, or " if layout else ""
    return f"{shape}bytes in one dimension or in rows, with size=(width, height)"
