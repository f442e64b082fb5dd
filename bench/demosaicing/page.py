"""A page that shows crops of the methods' pictures beside each other, in one file."""
import base64
import io
import json
import os

import numpy
from PIL import Image

from measures import demosaiced, psnr

# (title, photograph, left, top)
SIZE = (160, 120)
PLACES = [
    ("Siding", "friends", 120, 400),
    ("Fabric", "astronaut", 0, 190),
    ("Badge with text", "astronaut", 110, 310),
    ("Engine", "motorcycle_left", 340, 190),
    ("Water and leaves", "life", 300, 180),
]
CHARTS = [("Zone plate", "scene", 240, 212), ("Fine lines", "scene", 480, 360)]
# These two are compared first.
LEFT, RIGHT = "OpenCV, bilinear", "LmImagingLib, adaptive"


def picture(pictures, name):
    return next(pixels for _, found, pixels in pictures if found == name)


def crops(pictures, scene, text):
    """[(title, whole picture, left, top)]"""
    rows = [(title, picture(pictures, name), left, top) for title, name, left, top in PLACES]
    return rows + [(title, scene, left, top) for title, _, left, top in CHARTS] + [("Text", text, 12, 10)]


def data_address(pixels):
    file = io.BytesIO()
    Image.fromarray(pixels).save(file, "PNG", optimize=True)
    return "data:image/png;base64," + base64.b64encode(file.getvalue()).decode()


def write(path, scenes, methods):
    """Writes the page whole or not at all, and returns its path."""
    content = []
    for title, whole, left, top in scenes:
        def crop(pixels):
            return numpy.ascontiguousarray(pixels[top:top + SIZE[1], left:left + SIZE[0]])
        shown = [{"name": "Original", "image": data_address(crop(whole)), "psnr": None}]
        for method in methods:
            made = crop(demosaiced(method, whole))
            shown.append({"name": f"{method.library}, {method.name}", "image": data_address(made),
                          "psnr": round(float(psnr(crop(whole), made, border=0)), 1)})
        content.append({"title": title, "pictures": shown})
    with open(os.path.join(os.path.dirname(os.path.abspath(__file__)), "page.html")) as file:
        template = file.read()
    data = json.dumps({"scenes": content, "left": LEFT, "right": RIGHT, "size": SIZE})
    with open(path + ".part", "w") as file:
        file.write(template.replace("/* data */ null", data))
    os.replace(path + ".part", path)
    return path
