"""What names a type, what is listed, and what a wrong argument is told."""

import re

import numpy as np
import pytest

import lmimaging

GRAY10 = np.zeros((4, 6), np.uint16)
RGB = np.zeros((4, 6, 3), np.uint8)


def test_types_and_converters_are_those_of_the_registry(all_types):
    assert list(all_types) == sorted(all_types)
    bayer = all_types[0x220011]
    assert (bayer.name, bayer.class_name, bayer.bits, bayer.bytes) == (
        "Bayer RGB10-bits, Interlaced",
        "BayerRGB10",
        10,
        2,
    )
    assert bayer.bayer and bayer.interlaced and not (bayer.packed or bayer.planar or bayer.normalized)
    assert str(all_types[0x20011]) == "0x20011 (Bayer RGB10-bits)"
    assert all_types[0x20011].pfnc == ("BayerGR10", "BayerRG10", "BayerGB10", "BayerBG10")
    assert all_types[0x10001].pfnc == ("Mono8",)

    pairs = lmimaging.converters()
    assert pairs == sorted(set(pairs))
    assert {(type, type) for type in all_types.values()} < set(pairs)
    assert lmimaging.converters("BayerRG10") == [pair for pair in pairs if pair[0].id == 0x20011]
    assert lmimaging.converters(to=all_types[0x10005]) == [pair for pair in pairs if pair[1].id == 0x10005]
    assert lmimaging.converters("Mono8", "YUV8") == []


def test_names_ids_and_codes_name_the_same_type(random):
    frame = random.integers(0, 1024, (6, 8), np.uint16)
    expected = lmimaging.convert(frame, "BayerRG10", 0x420002)
    assert (lmimaging.convert(frame, "BayerRG10", 0x420002, demosaic="bilinear") != expected).any()
    for from_ in (0x0110000D, np.int64(0x0110000D), "0x0110000D"):
        assert (lmimaging.convert(frame, from_, "RGB8") == expected).all(), from_
    assert lmimaging.converters("bgr 24-BITS", 0x420002) == lmimaging.converters(0x20006, "RGB8")
    for from_ in (0x20011, "0x20011", "bayerRGB10", lmimaging.converters("BayerRG10")[0][0]):
        assert (lmimaging.convert(frame, from_, "RGB8", bayer="RG") == expected).all(), from_


def test_no_code_is_the_id_of_another_type(all_types):
    for type in all_types.values():
        for name in type.pfnc:
            assert lmimaging.converters(name)[0][0] == type, name
    assert lmimaging.converters("rgb16")[0][0].id == 0x20004 and lmimaging.converters("RGB565")[0][0].id == 0x20001


@pytest.mark.parametrize(
    "name, dtype, samples",
    [
        ("Mono8s", "i1", ()),
        ("Mono12", "<u2", ()),
        ("BayerRG16", "<u2", ()),
        (0x20001, "<u2", ()),
        ("BGR10V2Packed", "<u4", ()),
        ("YUV422_8", "u1", (2,)),
        (0x40002, "<u2", (2,)),
        ("YUV8_UYV", "u1", (3,)),
        ("BGR8", "u1", (3,)),
        ("BGRa8", "u1", (4,)),
        ("BGR12", "<u2", (3,)),
        ("RGBa16", "<u2", (4,)),
        ("BGR16", "<u2", (3,)),
        ("RGB10p32", "<u4", ()),
        ("RGB565p", "<u2", ()),
    ],
)
def test_arrays_hold_samples(name, dtype, samples):
    array = lmimaging.convert(bytes(8 * 4 * 2), name, name, size=(4, 2))
    assert array.shape == (2, 4, *samples) and array.dtype == np.dtype(dtype)


def test_arrays_are_as_large_as_the_images_that_they_hold(all_types):
    """Each type to itself: the shape of an array tells the size, and the bytes survive."""
    width, height = 12, 6
    for type in all_types.values():
        room = np.arange(8 * width * height, dtype=np.uint32).astype(np.uint8)
        copy = lmimaging.convert(room, type, type, size=(width, height))
        assert copy.nbytes == room[: copy.nbytes].size
        if copy.ndim > 1:
            again = lmimaging.convert(copy, type, type)
            assert again.shape == copy.shape and again.dtype == copy.dtype
            assert copy.shape[-2 if type.planar else 0] == height
        if not type.interlaced:
            assert copy.tobytes() == room[: copy.nbytes].tobytes(), type


WRONG = [
    # what is wrong, the arguments, and what the message says: argument, value, what is allowed
    (ValueError, (GRAY10, "Mono11", "Mono8"), {}, "from_: .*'Mono11'.*allowed"),
    (ValueError, (GRAY10, "Mono10", "Moni8"), {}, "to: .*'Moni8'.*allowed"),
    (ValueError, (GRAY10, 0x999999, "Mono8"), {}, "from_: .*0x999999"),
    (ValueError, (GRAY10, -1, "Mono8"), {}, "from_: .*-1"),
    (ValueError, (GRAY10, 10**5000, "Mono8"), {}, "from_: .*digits.*allowed"),
    (ValueError, (GRAY10, "Mono10\0", "Mono8"), {}, r"from_: 'Mono10\\x00'.*allowed"),
    (ValueError, (GRAY10, "Mono10", "Mono8\udc80"), {}, r"to: 'Mono8\\udc80'.*allowed"),
    (ValueError, (bytes(48), "RGB14", "Mono8"), {"size": (6, 4)}, "from_: .*'RGB14'.*14 bits"),
    (ValueError, (bytes(48), 0x0230005E, "Mono8"), {"size": (6, 4)}, "from_: .*0x230005E; .*14 bits.*allowed"),
    (TypeError, (GRAY10, 1.5, "Mono8"), {}, "from_: 1.5 is a float; allowed"),
    (TypeError, (GRAY10, None, "Mono8"), {}, "from_: None"),
    (ValueError, (RGB, "RGB8", "YUV8"), {}, r"RGB24-bits, Packed.*0x40001.*allowed.*0x420006"),
    (ValueError, (bytes(48), "Mono10", "Mono8"), {}, "size: is missing"),
    (ValueError, (GRAY10, "Mono10", "Mono8"), {"size": (4, 6)}, r"size: \(4, 6\).*6 x 4"),
    (ValueError, (bytes(48), "Mono10", "Mono8"), {"size": (0, 4)}, r"size: \(0, 4\).*allowed"),
    (TypeError, (bytes(48), "Mono10", "Mono8"), {"size": 24}, "size: 24.*allowed"),
    (TypeError, (bytes(48), "Mono10", "Mono8"), {"size": (6.0, 4)}, r"size: \(6.0, 4\)"),
    (ValueError, (bytes(47), "Mono10", "Mono8"), {"size": (6, 4)}, "source.*47.*48"),
    (ValueError, (bytes(48), "Mono10", "Mono8"), {"size": (2**31, 2**31)}, "source|size"),
    (ValueError, (bytes(48), "Mono10", "Mono8"), {"size": (2**32, 1)}, "size: "),
    (ValueError, (bytes(48), "Mono10", "Mono8"), {"size": (6, 4), "line_size": 11}, "11.*12"),
    (ValueError, (bytes(48), "Mono10", "Mono8"), {"size": (6, 4), "line_size": 0}, "line_size: 0"),
    (TypeError, (bytes(48), "Mono10", "Mono8"), {"size": (6, 4), "line_size": "12"}, "line_size: '12'"),
    (ValueError, (GRAY10, "Mono10", "Mono8"), {"line_size": 12}, "line_size: 12"),
    (ValueError, (GRAY10.astype(np.uint8), "Mono10", "Mono8"), {"size": (6, 4)}, "12"),
    (ValueError, (np.zeros((3, 12), np.uint8), "Mono10", "Mono8"), {"size": (6, 4)}, "source: .*needed.* 4 rows"),
    (ValueError, (GRAY10.astype(np.float32), "Mono10", "Mono8"), {}, r"float32.*\(height, width\) of uint16"),
    (ValueError, (GRAY10.astype(">u2"), "Mono10", "Mono8"), {}, ">u2"),
    (ValueError, (GRAY10.reshape(2, 2, 6), "Mono10", "Mono8"), {}, r"\(2, 2, 6\)"),
    (ValueError, (GRAY10[:0], "Mono10", "Mono8"), {}, r"source: .*\(0, 6\).*empty"),
    (ValueError, (b"", "Mono10", "Mono8"), {"size": (6, 4)}, "source: .*empty"),
    (TypeError, ([1, 2, 3], "Mono10", "Mono8"), {}, "source: a list has no buffer"),
    (ValueError, (GRAY10, "BayerRGB10", "RGB8"), {}, "bayer: is missing.*'GR'.*'BayerGR10'"),
    (ValueError, (GRAY10, "BayerRGB10", "RGB8"), {"bayer": "rg"}, "bayer: 'rg' is unknown; allowed: 'GR'"),
    (TypeError, (GRAY10, "BayerRGB10", "RGB8"), {"bayer": 1}, "bayer: 1 is a int; allowed: 'GR'"),
    (ValueError, (GRAY10, "BayerRG10", "RGB8"), {"bayer": "BG"}, "bayer: 'BG'.*'RG'"),
    (ValueError, (GRAY10, "Mono10", "RGB8"), {"bayer": "BG"}, "bayer: 'BG'.*no mosaic"),
    (ValueError, (GRAY10, "BayerRG10", "BayerBG8"), {}, "to: .*'BG'.*'RG'"),
    (ValueError, (GRAY10, "Mono10", "Mono8"), {"lines": (0, 2)}, r"lines: \(0, 2\).*out"),
    (ValueError, (GRAY10, "Mono10", "Mono8"), {"lines": (3, 2), "out": bytearray(24)}, r"lines: \(3, 2\).*4 lines"),
    (TypeError, (GRAY10, "Mono10", "Mono8"), {"lines": 2, "out": bytearray(24)}, "lines: 2"),
    (ValueError, (GRAY10[:1], "BayerRG10", "RGB8"), {}, "Bayer|mosaic|cell"),
    (ValueError, (GRAY10, "BayerRG10", "RGB8"), {"demosaic": "best"}, "demosaic: 'best'.*'bilinear'"),
    (ValueError, (GRAY10, "Mono10", "RGB8"), {"demosaic": "block"}, "demosaic: 'block'.*0x10002.*not a mosaic.*None"),
    (ValueError, (GRAY10, 0x210002, "RGB8"), {"field_order": "odd"}, "field_order: 'odd'.*'top'"),
    (ValueError, (GRAY10, "Mono10", "RGB8"), {"field_order": "top"}, "field_order: 'top'.*0x10002.*not interlaced"),
    (ValueError, (GRAY10, "Mono10", "RGB8"), {"depth": 12}, "depth: 12 is unknown; allowed: 8"),
    (ValueError, (RGB, "RGB8", "BGR8"), {"gains": (1, 2)}, r"gains: \(1, 2\).*0 to 1000"),
    (ValueError, (RGB, "RGB8", "BGR8"), {"gains": (1, -1, 1)}, r"gains: \(1, -1, 1\)"),
    (ValueError, (RGB, "RGB8", "BGR8"), {"gains": (1, float("nan"), 1)}, "gains: .*nan"),
    (ValueError, (RGB, "RGB8", "BGR8"), {"gains": (1, 10**400, 1)}, r"gains: \(1, 10{70,80}\.\.\. .*0 to 1000"),
    (ValueError, (RGB, "RGB8", "BGR8"), {"gains": (1, 10**5000, 1)}, "gains: .*digits.*0 to 1000"),
    (TypeError, (RGB, "RGB8", "BGR8"), {"gains": 2}, "gains: 2.*allowed"),
    (ValueError, (RGB, "RGB8", "BGR8"), {"offset": (1, 256, 1)}, "offset: .*256.*-255 to 255"),
    (TypeError, (RGB, "RGB8", "BGR8"), {"offset": (1, 0.5, 1)}, "offset: .*0.5.*whole"),
]


@pytest.mark.parametrize("kind, positional, named, message", WRONG, ids=[case[3] for case in WRONG])
def test_a_wrong_argument_is_named(kind, positional, named, message):
    with pytest.raises(kind) as error:
        lmimaging.convert(*positional, **named)
    assert re.search(message, str(error.value)), error.value
