"""The examples show colour bars as they are, white first, and each pixel format of a camera."""

import os
import pathlib
import subprocess
import sys

import numpy as np
import pytest
from PIL import Image

EXAMPLES = pathlib.Path(__file__).parents[2] / "examples/python"


def test_the_bars_have_their_colours(tmp_path):
    environment = {name: value for name, value in os.environ.items() if "DISPLAY" not in name}
    for arguments, path in ((["--save", "bars.bmp"], "bars.bmp"), ([], "frame.png")):
        run = [sys.executable, EXAMPLES / "show_frame.py", *arguments]
        told = subprocess.run(run, cwd=tmp_path, env=environment, check=True, capture_output=True, text=True).stdout
        assert told == f"482 x 320 pixels: {path}\n"
        picture = np.asarray(Image.open(tmp_path / path)).astype(int)
        assert picture.shape == (320, 482, 3)
        full = 255 * 0.9
        bars = [(1, 1, 1), (1, 1, 0), (0, 1, 1), (0, 1, 0), (1, 0, 1), (1, 0, 0), (0, 0, 1), (0, 0, 0)]
        for i, bar in enumerate(bars):
            middle = picture[:, 482 * i // 8 + 8 : 482 * (i + 1) // 8 - 8]
            assert abs(middle - full * np.array(bar)).max() <= 3, (path, bar)


def test_each_format_of_the_fake_camera_becomes_its_ramp(tmp_path):
    gi = pytest.importorskip("gi")
    try:
        gi.require_version("Aravis", "0.8")
    except ValueError as missing:
        pytest.skip(str(missing))
    subprocess.run([sys.executable, EXAMPLES / "aravis_camera.py", tmp_path], check=True, capture_output=True)
    pictures = {path.stem: np.asarray(Image.open(path)).astype(int) for path in tmp_path.iterdir()}
    assert {"BayerBG8", "BayerGB8", "BayerGR8", "BayerRG8", "Mono8", "Mono16", "RGB8"} <= set(pictures)
    assert (np.diff(pictures["Mono8"][..., 0], axis=1) % 255 <= 1).all()
    for name in ("BayerGR8", "BayerGB8"):  # taken a few steps of the ramp before the colours
        picture, colors = pictures[name][8:-8], pictures["RGB8"][8:-8]
        distances = [abs(picture[:, 20:400] - colors[:, 20 + k : 400 + k]).mean() for k in range(-9, 9)]
        assert min(distances) < 1, (name, distances)
