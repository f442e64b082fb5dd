"""Pixel formats of machine-vision cameras, as NumPy arrays.

    >>> import lmimaging
    >>> deep = lmimaging.convert(frame, "BayerRG12p", "RGB16", size=(1920, 1080), demosaic="bilinear")
    >>> rgb = lmimaging.convert(frame, "BayerRG10", "RGB8", gains=(1.6, 1.0, 1.09), demosaic="bilinear")

    >>> light = lmimaging.estimate_white_balance(frame, "BayerRG10")
    >>> picture = lmimaging.Development(gains=light.gains).develop(frame, "BayerRG10", "RGB8")

`convert` takes frames from anything that has a buffer and answers with NumPy arrays; `types` and `converters` list
what there is to convert. `component_arguments` reads the buffers of GenTL consumers. `Development` makes pictures of raw frames, with white balance, colours and tone.

A pixel type is named by a `PixelType`, an id (0x20011), a registered name ("Bayer RGB10-bits"), a class name
("BayerRGB10"), the name or code of the GenICam Pixel Format Naming Convention ("BayerRG10", 0x0110000D), which is the
value of a camera's PixelFormat feature, or a V4L2 fourcc ("RG10", "pRAA"). Names are found in any case. Where a camera's name and a class share one ("RGB16"), the camera's wins:
"RGB16" is 3 x 16 bits (0x20004); the 5-6-5 type is "RGB565", its registered name, or its id.
"""

from .components import component_arguments
from .conversion import convert
from .development import Development, WhiteBalance, estimate_white_balance
from .images import required_size
from .pixel_types import PixelType, converters, types
from .version import __version__

__all__ = [
    "Development",
    "PixelType",
    "WhiteBalance",
    "__version__",
    "component_arguments",
    "convert",
    "converters",
    "estimate_white_balance",
    "required_size",
    "types",
]
