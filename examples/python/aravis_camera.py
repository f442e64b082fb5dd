#!/usr/bin/env python3
"""Converts one frame of each pixel format of a camera that Aravis finds.

Aravis is a library for GigE Vision and USB3 Vision cameras (Debian: gir1.2-aravis-0.8 python3-gi). Without --camera the
script starts its fake camera, so that it runs anywhere. Each buffer says its size and its pixel format as a code of the
GenICam Pixel Format Naming Convention, and `lmimaging.convert` takes that code as it is.

All pictures of the fake camera show the same ramp of colours. Those of BayerRG8 and BayerBG8 have red and blue
exchanged: Aravis 0.8.26 stores blue first in the former, and red in the latter, against the meaning of their codes.
"""

import argparse
import pathlib
import sys

import gi

gi.require_version("Aravis", "0.8")
from gi.repository import Aravis
from PIL import Image

import lmimaging


def open_camera(name):
    if name is None:
        Aravis.enable_interface("Fake")
        name = "Fake_1"
    return Aravis.Camera.new(name)


def picture_of(buffer):
    """The picture of a buffer, as an array of its own that outlives the buffer."""
    code = buffer.get_image_pixel_format()
    width, height = buffer.get_image_width(), buffer.get_image_height()
    padding, _ = buffer.get_image_padding()  # bytes after each line
    bits = code >> 16 & 0xFF  # the code says the bits of a pixel
    line_size = (width * bits + 7) // 8 + padding if padding else None
    return lmimaging.convert(buffer.get_data(), code, "RGB8", size=(width, height), line_size=line_size)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("directory", type=pathlib.Path, help="where to write the pictures, one for each pixel format")
    parser.add_argument("--camera", metavar="NAME", help="name or address of a camera (default: the fake camera)")
    arguments = parser.parse_args()
    arguments.directory.mkdir(parents=True, exist_ok=True)

    camera = open_camera(arguments.camera)
    failures = 0
    for code in camera.dup_available_pixel_formats():
        camera.set_pixel_format(code)
        buffer = camera.acquisition(2_000_000)  # microseconds
        name = camera.get_pixel_format_as_string()
        try:
            picture = picture_of(buffer)
        except ValueError as error:  # the library has no such format, and says why
            print(f"{name} (0x{code:08X}): {error}")
            failures += 1
            continue
        path = arguments.directory / f"{name}.png"
        Image.fromarray(picture).save(path)
        print(f"{name} (0x{code:08X}): {picture.shape[1]} x {picture.shape[0]} pixels, {path}")
    sys.exit(1 if failures else 0)


if __name__ == "__main__":
    main()
