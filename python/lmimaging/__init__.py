"""Pixel formats of machine-vision cameras, as NumPy arrays.

    >>> import lmimaging
    >>> rgb = lmimaging.convert(frame, "BayerRG10", "RGB8", gains=(1.6, 1.0, 1.09), demosaic="bilinear")

`convert` takes frames from anything that has a buffer and answers with NumPy arrays; `types` and `converters` list
what there is to convert.

A pixel type is named by a `PixelType`, an id (0x20011), a registered name ("Bayer RGB10-bits"), a class name
("BayerRGB10"), or the name or code of the GenICam Pixel Format Naming Convention ("BayerRG10", 0x0110000D), which is
what a camera's PixelFormat feature holds. PFNC names are spelt exactly, others in any case. "RGB16" is refused: cameras
mean another type by it than the class of that name.
"""

from .conversion import convert
from .pixel_types import PixelType, converters, types
from .version import __version__

__all__ = ["PixelType", "__version__", "convert", "converters", "types"]
