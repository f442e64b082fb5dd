"""Components of GenTL consumers are converted as their pixels say, with and without padding."""

from dataclasses import dataclass
from typing import Any

import numpy as np
import pytest

import lmimaging


@dataclass
class Component:
    """A stand-in for the component of a buffer, with the attributes that consumers share."""

    data: Any
    data_format: Any
    width: Any
    height: Any
    x_padding: Any = 0


def padded(rows, padding):
    return np.hstack([rows, np.full((len(rows), padding), 0xEE, np.uint8)]).reshape(-1)


@pytest.mark.parametrize(
    "name, width, line, paddings",
    [
        ("Mono8", 7, 7, [0, 5]),
        ("Mono10p", 5, 7, [0, 5]),
        ("BayerGB10", 6, 12, [0, 4]),
        ("BayerRG12p", 8, 12, [0, 3]),
        ("BayerRG12p", 7, 11, [1]),
        ("RGB8", 3, 9, [0, 3]),
        ("YUV422_8", 4, 8, [0, 1]),
    ],
)
def test_components_are_converted_as_their_lines(random, name, width, line, paddings):
    rows = random.integers(0, 256, (4, line), np.uint8)
    expected = lmimaging.convert(rows, name, "RGB8", size=(width, 4))
    for padding in paddings:
        component = Component(padded(rows, padding), name, width, 4, padding or None)
        arguments = lmimaging.component_arguments(component)
        assert np.shares_memory(arguments["source"], component.data)
        assert (lmimaging.convert(**arguments, to="RGB8") == expected).all(), padding


def test_words_and_rows_are_taken_for_their_bytes(random):
    words = random.integers(0, 4096, (4, 6), np.uint16)
    component = Component(words.reshape(-1), "BayerRG12", 6, 4)
    for component.data in (words.reshape(-1), words, words.tobytes()):
        arguments = lmimaging.component_arguments(component)
        expected = lmimaging.convert(words, "BayerRG12", "RGB16")
        assert (lmimaging.convert(**arguments, to="RGB16") == expected).all()
    developed = lmimaging.Development().develop(**arguments, to="RGB8")
    assert (developed == lmimaging.Development().develop(words, "BayerRG12", "RGB8")).all()
    assert lmimaging.estimate_white_balance(**arguments) == lmimaging.estimate_white_balance(words, "BayerRG12")


@pytest.mark.parametrize(
    "fields, kind, mentions",
    [
        ({"data": None}, TypeError, ["component", "data", "x_padding"]),
        ({"data_format": "Coord3D_C16"}, ValueError, ["component.data_format", "no picture"]),
        ({"data_format": "Mono99"}, ValueError, ["component.data_format", "'Mono99'"]),
        ({"width": "7"}, TypeError, ["component.width", "'7'"]),
        ({"height": 0}, ValueError, ["component.height", "0"]),
        ({"x_padding": -1}, ValueError, ["component.x_padding", "-1"]),
        ({"height": 5}, ValueError, ["source", "28"]),
    ],
)
def test_refusals_name_the_attribute(fields, kind, mentions):
    component = Component(**{"data": np.zeros(28, np.uint8), "data_format": "Mono8", "width": 7, "height": 4, **fields})
    with pytest.raises(kind) as refusal:
        lmimaging.convert(**lmimaging.component_arguments(component), to="Mono8")
    assert all(mention in str(refusal.value) for mention in mentions), refusal.value


def test_threads_share_an_image(random):
    frame = random.integers(0, 1024, (301, 203), np.uint16)
    one = lmimaging.convert(frame, "BayerRG10", "RGB8")
    assert (lmimaging.convert(frame, "BayerRG10", "RGB8", threads=4) == one).all()
    development = lmimaging.Development(gains=(1.5, 1, 1.2))
    one = development.develop(frame, "BayerRG10", "RGB8")
    assert (development.develop(frame, "BayerRG10", "RGB8", threads=3) == one).all()
    for bad, kind in ((0, ValueError), (257, ValueError), ("2", TypeError)):
        with pytest.raises(kind, match="threads: .*allowed: 1 to 256"):
            lmimaging.convert(frame, "BayerRG10", "RGB8", threads=bad)
