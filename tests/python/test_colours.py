"""Conversions against what NumPy makes of the same frames."""

import numpy as np
from PIL import Image

import lmimaging


def test_cells_of_each_layout_keep_their_colour_and_gains_whiten_it():
    # What a sensor of 10 bits sees of a grey field under a light that is weak in red: 100, 200 and 160 of 8 bits.
    cell = np.array([[400, 800], [800, 640]], np.uint16)
    for layout, cell in {"RG": cell, "GR": cell[:, ::-1], "GB": cell[::-1], "BG": cell[::-1, ::-1]}.items():
        frame = np.tile(cell, (3, 5))
        for demosaic in ("block", "bilinear"):
            plain = lmimaging.convert(frame, f"Bayer{layout}10", "RGB8", demosaic=demosaic)
            assert plain[1:-1, 1:-1].reshape(-1, 3).tolist() == [[100, 200, 160]] * 32, (layout, demosaic)
            white = lmimaging.convert(frame, "BayerRGB10", "BGR8", bayer=layout, demosaic=demosaic, gains=(2, 1, 1.25))
            assert np.unique(white[1:-1, 1:-1]).tolist() == [200], (layout, demosaic)


def test_offset_and_clamping(random):
    rgb = random.integers(0, 256, (5, 7, 3), np.uint8)
    got = lmimaging.convert(rgb, "RGB8", "BGR8", gains=(1.5, 0, 0.5), offset=(10, 20, 0))
    model = np.minimum(np.floor(rgb * np.array([1.5, 0, 0.5])) + [10, 20, 0], 255).astype(np.uint8)
    assert (got == model[..., ::-1]).all()


def test_fields_are_sorted():
    fields = np.array([[1], [2], [3], [4]], np.uint8)
    assert lmimaging.convert(fields, 0x210001, "Mono8").ravel().tolist() == [1, 3, 2, 4]
    assert lmimaging.convert(fields, 0x210001, "Mono8", field_order="bottom").ravel().tolist() == [3, 1, 4, 2]


def test_half_of_a_pair_that_shares_its_colour_is_black():
    assert not lmimaging.convert(b"\xff" * 4, "YUV422_8", "RGB8", size=(1, 2)).any()


def test_packed_frames_are_bytes(random):
    samples = random.integers(0, 1 << 12, (6, 8), np.uint16)
    low, high = samples[:, 0::2], samples[:, 1::2]
    lsb = np.stack([low & 0xFF, low >> 8 | (high & 0xF) << 4, high >> 4], axis=-1).astype(np.uint8)
    gev = np.stack([low >> 4, low & 0xF | (high & 0xF) << 4, high >> 4], axis=-1).astype(np.uint8)
    for name, packed in (("Mono12p", lsb), ("Mono12Packed", gev)):
        for source in (packed.tobytes(), packed.reshape(6, 12), packed.reshape(-1)):
            gray = lmimaging.convert(source, name, "Mono16", size=(8, 6))
            assert gray.dtype == np.uint16 and (gray == samples << 4).all(), name
            assert (lmimaging.convert(source, name, "Mono12", size=(8, 6)) == samples).all(), name
            low = lmimaging.convert(source, name, "Mono16", size=(8, 6), depth=8)
            assert (low == samples >> 4).all(), name


def test_no_bit_is_lost_that_the_destination_has_room_for(random):
    white = np.full((2, 2), 4095, np.uint16)
    assert (lmimaging.convert(white, "Mono12", "Mono16") == 4095 << 4).all()
    for name, planar in (("RGB16", False), ("RGBa16", False), (0x20A40, False), ("RGB16_Planar", True)):
        colours = lmimaging.convert(white, "BayerRG12", name)
        channels = colours[:3] if planar else colours[..., :3]
        assert colours.dtype == np.uint16 and (channels == 4095 << 4).all(), name
    frame = random.integers(0, 1024, (64, 64), np.uint16)
    balanced = lmimaging.convert(frame, "BayerRG12", "RGB16", gains=(4, 1, 4))
    assert (balanced[::2, ::2, 0] == frame[::2, ::2] << 6).all()
    assert len(np.unique(balanced[..., 0])) > 512


def test_images_of_the_array_interface_are_sources(random):
    rgb = random.integers(0, 256, (5, 7, 3), np.uint8)
    assert (lmimaging.convert(Image.fromarray(rgb), "RGB8", "RGB16") == rgb.astype(np.uint16) << 8).all()
    deep = random.integers(0, 1 << 16, (5, 7), np.uint16)
    assert (lmimaging.convert(Image.fromarray(deep), "Mono16", "Mono8") == deep >> 8).all()
