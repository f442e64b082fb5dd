"""The example shows its colour bars as they are, white first."""

import os
import pathlib
import subprocess
import sys

import numpy as np
from PIL import Image

SCRIPT = pathlib.Path(__file__).parents[2] / "examples/python/show_frame.py"


def test_the_bars_have_their_colours(tmp_path):
    environment = {name: value for name, value in os.environ.items() if "DISPLAY" not in name}
    for arguments, path in ((["--save", "bars.bmp"], "bars.bmp"), ([], "frame.png")):
        run = [sys.executable, SCRIPT, *arguments]
        told = subprocess.run(run, cwd=tmp_path, env=environment, check=True, capture_output=True, text=True).stdout
        assert told == f"482 x 320 pixels: {path}\n"
        picture = np.asarray(Image.open(tmp_path / path)).astype(int)
        assert picture.shape == (320, 482, 3)
        full = 255 * 0.9
        bars = [(1, 1, 1), (1, 1, 0), (0, 1, 1), (0, 1, 0), (1, 0, 1), (1, 0, 0), (0, 0, 1), (0, 0, 0)]
        for i, bar in enumerate(bars):
            middle = picture[:, 482 * i // 8 + 8 : 482 * (i + 1) // 8 - 8]
            assert abs(middle - full * np.array(bar)).max() <= 3, (path, bar)
