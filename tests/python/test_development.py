"""Developments and white balance against plain formulas."""

import json

import numpy as np
import pytest

import lmimaging


def srgb(light):
    return np.where(light <= 0.0031308, 12.92 * light, 1.055 * np.power(light, 1 / 2.4) - 0.055)


def field(gray, shape=(24, 32)):
    """A mosaic of 10 bits, its first pixel red, of a grey field under a weak red and blue, on a black level of 64."""
    frame = np.full(shape, 64 + gray, np.uint16)
    frame[::2, ::2] = 64 + gray // 2
    frame[1::2, 1::2] = 64 + gray * 4 // 5
    return frame


def test_a_development_is_as_its_formula_and_as_a_file_says(tmp_path):
    frame = field(400)
    white = (srgb(np.array(400 / 1023)) * 65535).round()
    camera = lmimaging.Development(black=64, gains=(2, 1, 1.25))
    deep = camera.develop(frame, "BayerRG10", "RGB16")
    assert deep.dtype == np.uint16 and (deep == white).all()
    assert (camera.develop(frame, "BayerRG10", "Mono16") == white).all()
    assert camera.develop(frame, 0x20011, "RGB8", bayer="RG").shape == (24, 32, 3)
    file = tmp_path / "camera.json"
    file.write_text('{"black": [64, 64, 64], "gains": [2, 1, 1.25], "demosaic": "half", "depth": "full", "defects": true}')
    half = lmimaging.Development(**json.loads(file.read_text())).develop(frame, "BayerRG10", "RGB16")
    assert half.shape == (12, 16, 3) and (half == white).all()
    red = lmimaging.Development(black=64, matrix=[[0, 1, 0]] * 3, tone=2.0).develop(frame, "BayerRG10", "RGB8")
    assert abs(red.astype(int) - (np.sqrt(400 / 1023) * 255)).max() <= 1


def test_curves_of_convert():
    frame = field(400)
    got = lmimaging.convert(frame, "BayerRG10", "RGB8", black=64, gains=(2, 1, 1.25), tone="srgb")
    assert abs(got.astype(int) - srgb(np.array(400 / 1023)) * 255).max() <= 1
    dark = lmimaging.convert(frame, "BayerRG10", "RGB8", gains=(2, 1, 1.25), offset=(-255, -255, -255))
    assert not dark.any()
    deep = lmimaging.convert(np.arange(4096, dtype=np.uint16).reshape(1, 4096).repeat(2, 0), "BayerRG12", "RGB16", tone="srgb")
    assert len(np.unique(deep[..., 1])) > 4000


def test_white_balance_finds_the_gains():
    found = lmimaging.estimate_white_balance(field(400), "BayerRG10", black=64)
    assert found.message == "" and found.usable_cells == found.cells == 12
    assert np.allclose(found.gains, np.array([2, 1, 1.25]) * 1023 / 959)
    frame = field(400)
    frame[:12] = 1023
    assert lmimaging.estimate_white_balance(frame, "BayerRG10", gray=(4, 14, 10, 8), black=64).gains == found.gains
    dark = lmimaging.estimate_white_balance(np.zeros((8, 8, 3), np.uint8), "RGB8", gray="white")
    assert dark.gains == (1, 1, 1) and "0 of 4 cells" in dark.message


@pytest.mark.parametrize(
    "error, call, message",
    [
        (ValueError, lambda: lmimaging.Development(gains=(1, 2)), r"gains: \(1, 2\) does not fit; allowed"),
        (ValueError, lambda: lmimaging.Development(black=-1), "black: .* each 0.* to 65535"),
        (ValueError, lambda: lmimaging.Development(tone="film"), "tone: 'film' is unknown; allowed: 'linear'"),
        (ValueError, lambda: lmimaging.Development(tone=0), "tone: 0 does not fit"),
        (ValueError, lambda: lmimaging.Development(demosaic="best"), "demosaic: 'best' is unknown"),
        (ValueError, lambda: lmimaging.Development(matrix=[[8, 0, 0]] * 3), "matrix: .* sum to 7 at most"),
        (ValueError, lambda: lmimaging.Development(defects=-3), "defects: -3 does not fit"),
        (TypeError, lambda: lmimaging.Development(whites=3), "whites"),
        (ValueError, lambda: lmimaging.Development().develop(field(4), 0x20011, "RGB8"), "bayer: is missing"),
        (ValueError, lambda: lmimaging.Development().develop(field(4), "Mono10", "RGB8"), "source.type"),
        (ValueError, lambda: lmimaging.estimate_white_balance(field(4), "BayerRG10", gray="sun"), "gray: 'sun'"),
        (ValueError, lambda: lmimaging.estimate_white_balance(field(4), "BayerRG10", gray=(30, 0, 9, 9)), "inside"),
        (ValueError, lambda: lmimaging.convert(field(4), "BayerRG10", "RGB8", offset=(-256, 0, 0)), "each -255 to 255"),
    ],
)
def test_refusals_name_the_argument_and_what_is_allowed(error, call, message):
    with pytest.raises(error, match=message):
        call()
