"""The photographs: where they come from, how they are reduced, and the pictures that are drawn."""
import glob
import os
import subprocess

import numpy
from PIL import Image, ImageDraw, ImageFont

# (set, Debian package, folder in it, files, width and height of the block whose mean becomes a pixel)
BACKGROUNDS = "usr/share/backgrounds/"
SETS = [
    ("lomiri", "lomiri-wallpapers-16.04", BACKGROUNDS, "*.jpg", 4),
    ("lomiri", "lomiri-wallpapers-20.04", BACKGROUNDS, "Kleiber*.jpg", 7),
    ("mate", "mate-backgrounds", BACKGROUNDS + "mate/nature/", "*.jpg", 3),
    ("skimage", "python3-skimage", "usr/lib/python3/dist-packages/skimage/data/", "astronaut.png", 1),
    ("skimage", "python3-skimage", "usr/lib/python3/dist-packages/skimage/data/", "chelsea.png", 1),
    ("skimage", "python3-skimage", "usr/lib/python3/dist-packages/skimage/data/", "coffee.png", 1),
    ("skimage", "python3-skimage", "usr/lib/python3/dist-packages/skimage/data/", "motorcycle_left.png", 1),
    ("jxl", "libjxl-testdata", "usr/share/libjxl-testdata/external/wesaturate/500px/", "*_srgb8.png", 1),
]
LEFT_OUT = ["umang"]
SMALLER = {"Picture_1A": 2, "Picture_0B": 3}  # these have fewer pixels than the others of their package


def fetch(folder):
    """Unpacks the packages below folder, once. Nothing is installed."""
    for package in dict.fromkeys(row[1] for row in SETS):
        place = os.path.join(folder, package)
        if os.path.isdir(place):
            continue
        download = place + ".download"
        os.makedirs(download, exist_ok=True)
        subprocess.run(["apt-get", "-qq", "download", package], cwd=download, check=True, stderr=subprocess.DEVNULL)
        archive = glob.glob(os.path.join(download, package + "_*.deb"))[0]
        subprocess.run(["dpkg-deb", "-x", archive, place + ".part"], check=True)
        os.rename(place + ".part", place)
        os.remove(archive)
        os.rmdir(download)


def reduce(picture, side):
    """The means of side x side pixels, rounded: an earlier demosaicing and JPEG's blocks do not show any more."""
    height, width = picture.shape[0] // side, picture.shape[1] // side
    blocks = picture[:height * side, :width * side].reshape(height, side, width, side, 3)
    return numpy.floor(blocks.mean((1, 3)) + 0.5).astype(numpy.uint8)


def photographs(folder):
    """[(set, name, red, green and blue of 8 bits)], in the order of SETS."""
    found = []
    for group, package, place, pattern, side in SETS:
        paths = sorted(glob.glob(os.path.join(folder, package, place, pattern)))
        for path in paths:
            name = os.path.basename(path).rsplit(".", 1)[0].split("_by_")[0].removesuffix("_srgb8")
            if name not in LEFT_OUT:
                picture = numpy.asarray(Image.open(path).convert("RGB"))
                found.append((group, name, reduce(picture, SMALLER.get(name, side))))
        if not paths:
            raise SystemExit(f"bench/quality: {package} has no {place}{pattern}")
    return found


def text_page():
    """Black text on white with strokes of 3, 2, 1.7, 1.3 and 1 pixels, as a lens without a fault would show it."""
    lines = []
    for scale in (9, 6, 5, 4, 3):
        line = Image.new("L", (600 // scale, 13), 255)
        ImageDraw.Draw(line).text((2, 1), "No colour in black text, 0123456789", 0, ImageFont.load_default())
        enlarged = numpy.asarray(line.resize((scale * line.width, scale * line.height), Image.NEAREST))
        lines.append(numpy.pad(enlarged, ((0, 0), (0, 600 - enlarged.shape[1])), constant_values=255))
    page = numpy.pad(numpy.concatenate(lines), 36, constant_values=255)
    return reduce(numpy.repeat(page[..., None], 3, 2), 3)


def test_scene(tool, folder, size):
    """The test scene of the command-line tool: a zone plate, edges and fine lines."""
    path = os.path.join(folder, "scene.png")
    subprocess.run([tool, "synth", path, "--size", "{}x{}".format(*size)], check=True, stdout=subprocess.DEVNULL)
    return numpy.asarray(Image.open(path).convert("RGB"))
