"""The shape and dtype in which NumPy holds an image of a pixel type."""

from __future__ import annotations

from typing import NamedTuple, Optional

import numpy as np

from .pixel_types import PixelType

# Samples of a pixel: their dtype and how many there are, by the name of a class, or of a type that has none. A format that is not here shares bytes between pixels.
_SAMPLES = {
    name: (np.dtype(dtype), count)
    for dtype, count, names in [
        ("i1", 1, "Grayscale8Signed"),
        ("u1", 1, "Grayscale4 Grayscale8 Grayscale8_DualQuadMultiplexed BayerRGB8"),
        ("u1", 2, "YUV8 YUV8_422_GEV"),
        ("u1", 3, "RGB24 BGR24 RGB8_3 YUV8_444 YUV8_444_GEV YCrCb"),
        ("u1", 4, "RGB32 BGR32 RGB8_4"),
        ("<u2", 1, "Grayscale10 Grayscale12 Grayscale14 Grayscale16 Grayscale10_DualQuadMultiplexed RGB16 RGB565p"),
        ("<u2", 1, "BayerRGB10 BayerRGB12 BayerRGB14 BayerRGB16"),
        ("<u2", 2, "YUV10"),
        ("<u2", 3, "RGB48 RGB48_10Bits RGB48_12Bits BGR48_10Bits BGR48_12Bits BGR48"),
        ("<u2", 4, "RGB64 RGB64_10Bits RGB64_12Bits BGR64"),
        ("<u4", 1, "BGR10PackedV1 BGR10PackedV2 RGB10p32 RGB10V1Packed"),
    ]
    for name in names.split()
}


class Layout(NamedTuple):
    """Whole samples: (height, width), with a third axis of samples, or of planes in front."""

    dtype: np.dtype
    samples: int
    planar: bool

    def shape(self, width: int, height: int) -> tuple[int, ...]:
        if self.samples == 1:
            return (height, width)
        return (self.samples, height, width) if self.planar else (height, width, self.samples)

    def has_samples(self, array: np.ndarray) -> bool:
        """Whether the array is made of this layout's samples, signed or not."""
        return array.dtype.str.replace("i", "u") == self.dtype.str.replace("i", "u")

    def size(self, array: np.ndarray) -> Optional[tuple[int, int]]:
        """Width and height of an array; None if it is no image of this layout."""
        if not self.has_samples(array) or array.ndim != (2 if self.samples == 1 else 3):
            return None
        height, width = array.shape[-2:] if self.planar else array.shape[:2]
        return (width, height) if array.shape == self.shape(width, height) else None

    def line_size(self, array: np.ndarray) -> Optional[int]:
        """Bytes from one line of an image of this layout to the next; None if its pixels or planes lie apart."""
        rows = -2 if self.planar else 0
        height = array.shape[rows]
        line = array[0, 0] if self.planar else array[0]
        step = array.strides[rows] if height > 1 else line.nbytes
        planes_follow = not self.planar or array.strides[0] == height * step
        return step if line.flags.c_contiguous and step >= line.nbytes and planes_follow else None

    def __str__(self) -> str:
        axes = "height, width"
        if self.samples > 1:
            axes = f"{self.samples}, {axes}" if self.planar else f"{axes}, {self.samples}"
        return f"({axes}) of {self.dtype}"


def layout_of(type: PixelType) -> Optional[Layout]:
    """None for formats whose pixels share bytes."""
    dtype, samples = _SAMPLES.get(type.class_name or type.name, (None, 0))
    if dtype is None or (type.packed and samples == 1):
        return None
    return Layout(dtype, samples, type.planar)
