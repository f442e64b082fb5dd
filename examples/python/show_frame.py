#!/usr/bin/env python3
"""Shows a frame from the buffer of a GenICam producer.

Acquisition libraries hand out buffers with their payload, the image's size, a pixel format code of the GenICam
Pixel Format Naming Convention, and the padding after each line. That is all `lmimaging.convert` needs. The camera of
this script is a stand-in, so that it runs anywhere; with a real one, `shown` stays as it is.
"""

import argparse
import os
from dataclasses import dataclass

import numpy as np
from PIL import Image

import lmimaging


@dataclass
class Buffer:
    """A frame as a producer delivers it; the names are those of a GenTL buffer's information."""

    payload: bytearray  # the producer's memory, only lent
    width: int
    height: int
    pixel_format: int  # PFNC code
    padding_x: int  # bytes after each line
    timestamp: int


class StandInCamera:
    """A 12-bit colour camera under warm light that looks at colour bars; its lines are padded to 64 bytes."""

    BAYER_GB12 = 0x01100012
    LIGHT = (1.0, 0.8, 0.5)  # red, green and blue of the light

    def __init__(self, width=482, height=320):
        self._width, self._height = width, height

    def fetch(self):
        bars = [(1, 1, 1), (1, 1, 0), (0, 1, 1), (0, 1, 0), (1, 0, 1), (1, 0, 0), (0, 0, 1), (0, 0, 0)]
        scene = np.array(bars)[np.arange(self._width) * len(bars) // self._width] * self.LIGHT * 4095 * 0.9
        line = (2 * self._width + 63) // 64 * 32  # in words
        frame = np.zeros((self._height, line), np.uint16)
        mosaic = frame[:, : self._width]
        mosaic[:] = scene[:, 1]
        mosaic[0::2, 1::2] = scene[1::2, 2]  # G B
        mosaic[1::2, 0::2] = scene[0::2, 0]  # R G
        padding = 2 * (line - self._width)
        return Buffer(bytearray(frame.tobytes()), self._width, self._height, self.BAYER_GB12, padding, timestamp=0)


def line_size(buffer):
    bits = buffer.pixel_format >> 16 & 0xFF  # these bits of the code are the bits of a pixel
    return (buffer.width * bits + 7) // 8 + buffer.padding_x


def shown(buffer, gains):
    """The buffer's picture, as an array of its own that outlives the buffer."""
    return lmimaging.convert(
        buffer.payload,
        buffer.pixel_format,
        "RGB8",
        size=(buffer.width, buffer.height),
        line_size=line_size(buffer),
        gains=gains,
        demosaic="bilinear",
    )


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--save", metavar="FILE", help="write a picture file instead of opening a window")
    parser.add_argument("--gains", metavar="R,G,B", default="1,1.25,2", help="white balance (default: %(default)s)")
    arguments = parser.parse_args()

    gains = [float(gain) for gain in arguments.gains.split(",")]
    picture = Image.fromarray(shown(StandInCamera().fetch(), gains))
    has_display = os.environ.get("DISPLAY") or os.environ.get("WAYLAND_DISPLAY") or os.name == "nt"
    if arguments.save or not has_display:
        path = arguments.save or "frame.png"
        picture.save(path)
        print(f"{picture.width} x {picture.height} pixels: {path}")
    else:
        picture.show()


if __name__ == "__main__":
    main()
