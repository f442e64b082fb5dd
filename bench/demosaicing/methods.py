"""Methods of demosaicing: ours and those of other libraries, as functions of a mosaic that begins with red, green."""
import collections
import ctypes
import time

import numpy

# run(mosaic, rgb) writes red, green, blue of bytes, and returns the seconds that the method took.
Method = collections.namedtuple("Method", "library name run")

BAYER8, BAYER12, RGB24, RGB48 = 0x20010, 0x20012, 0x420002, 0x20004
FILTER_FIRST = 0x1000
OUR_FLAGS = {"block": 0, "bilinear": 0x100, "mhc": 0x200, "adaptive": 0x400}
OURS = "LmImagingLib"


def mosaic_of(picture):
    """The samples that a sensor with red in its first pixel has."""
    samples = picture[..., 1].copy()
    samples[0::2, 0::2] = picture[0::2, 0::2, 0]
    samples[1::2, 1::2] = picture[1::2, 1::2, 2]
    return samples


def address(array):
    return array.ctypes.data_as(ctypes.c_void_p)


def seconds(function, *arguments):
    begin = time.thread_time()
    failed = function(*arguments)
    elapsed = time.thread_time() - begin
    if isinstance(failed, int) and failed != 0:
        raise RuntimeError(f"{function} returned {failed}")
    return elapsed


class Ours:
    """The methods of this tree's library."""

    def __init__(self, path):
        self.demosaic = ctypes.CDLL(path).Demosaic
        long, pointer = ctypes.c_ulong, ctypes.c_void_p
        self.demosaic.argtypes = [long, pointer, long, pointer, long, long, long, pointer]

    def __call__(self, mosaic, rgb, flags, curves=None):
        height, width = mosaic.shape
        source = BAYER8 if mosaic.dtype == numpy.uint8 else BAYER12
        destination = RGB24 if rgb.dtype == numpy.uint8 else RGB48
        return seconds(self.demosaic, source, address(mosaic), destination, address(rgb), width, height, flags,
                       None if curves is None else address(curves))

    def methods(self):
        def method(name, flags):
            return Method(OURS, name, lambda mosaic, rgb: self(mosaic, rgb, flags))
        return [method(*row) for row in OUR_FLAGS.items()]


def opencv():
    import cv2
    cv2.setNumThreads(1)

    def method(name, code, lines_too_high=0):
        def run(mosaic, rgb):
            elapsed = seconds(cv2.cvtColor, mosaic, code, rgb)
            if lines_too_high:
                rgb[lines_too_high:] = rgb[:-lines_too_high].copy()
            return elapsed
        return Method("OpenCV", name, run)
    # OpenCV names a layout by the second and third pixel of the second line. Its VNG writes all lines two too high.
    return [method("bilinear", cv2.COLOR_BayerBG2RGB), method("EA", cv2.COLOR_BayerBG2RGB_EA),
            method("VNG", cv2.COLOR_BayerBG2RGB_VNG, 2)]


def libdc1394():
    decode = ctypes.CDLL("libdc1394.so.25").dc1394_bayer_decoding_8bit
    red_first, spare = 512, 1 << 16

    def method(name, number):
        def run(mosaic, rgb):
            # Some of its methods write past the image.
            height, width = mosaic.shape
            source = numpy.zeros(mosaic.size + 2 * spare, numpy.uint8)
            result = numpy.ones(rgb.size + 2 * spare, numpy.uint8)
            source[spare:-spare] = mosaic.ravel()
            elapsed = seconds(decode, address(source[spare:]), address(result[spare:]), width, height, red_first,
                              number)
            rgb[:] = result[spare:-spare].reshape(rgb.shape)
            return elapsed
        return Method("libdc1394", name, run)
    rows = {"nearest": 0, "simple": 1, "bilinear": 2, "HQLinear": 3, "edge sense": 5, "VNG": 6, "AHD": 7}
    return [method(*row) for row in rows.items()]


def wrapped(description):
    """A method that somebody built by hand, by NAME=LIBRARY:FUNCTION."""
    name, equals, place = description.partition("=")
    path, colon, function = place.rpartition(":")
    if not (name and equals and path and colon and function):
        raise SystemExit(f"bench/quality: --peer {description}: allowed: NAME=LIBRARY:FUNCTION")
    try:
        demosaic = getattr(ctypes.CDLL(path), function)
    except (OSError, AttributeError) as error:
        raise SystemExit(f"bench/quality: --peer {description}: {error}") from None
    return Method("built by hand", name, lambda mosaic, rgb: seconds(demosaic, address(mosaic), address(rgb),
                                                                     mosaic.shape[1], mosaic.shape[0]))
