"""Conversions against what NumPy makes of the same frames."""

import numpy as np

import lmimaging

# Where a 2 x 2 cell has red, its two greens and blue: row, column.
LAYOUTS = {
    "RG": {"red": (0, 0), "blue": (1, 1)},
    "GR": {"red": (0, 1), "blue": (1, 0)},
    "GB": {"red": (1, 0), "blue": (0, 1)},
    "BG": {"red": (1, 1), "blue": (0, 0)},
}


def mosaic(rgb, layout, dtype):
    """One sample a pixel of a picture, as a sensor sees it."""
    frame = rgb[..., 1].astype(dtype)
    for channel, name in ((0, "red"), (2, "blue")):
        row, column = LAYOUTS[layout][name]
        frame[row::2, column::2] = rgb[row::2, column::2, channel]
    return frame


def test_cells_of_each_layout_keep_their_colour_and_gains_whiten_it():
    # Cells of one colour: what the sensor sees of a grey field under a light that is weak in red.
    cells = np.zeros((6, 10, 3), np.uint16)
    cells[:] = 400, 800, 640  # 10 bits; 100, 200 and 160 of 8 bits
    for layout in LAYOUTS:
        for demosaic in ("block", "bilinear"):
            frame = mosaic(cells, layout, np.uint16)
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
            assert gray.dtype == np.uint16 and (gray == samples >> 4).all(), name
