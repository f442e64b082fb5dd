"""Compares methods of demosaicing on photographs, and makes a page that shows crops of them.

Figures go to the standard output, the page to build/quality/index.html.
"""
import argparse
import os
import sys

import measures
import methods
import page
import photographs
import tables

ROOT = os.path.normpath(os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", ".."))
BUILD = os.path.join(ROOT, "build")


def chosen(options):
    ours = methods.Ours(os.path.join(BUILD, "release/bench/liblm_demosaic.so"))
    peers = methods.opencv() + methods.libdc1394() + [methods.wrapped(text) for text in options.peer]
    return ours, peers + ours.methods()


def main():
    parser = argparse.ArgumentParser(prog="bench/quality", description=__doc__)
    parser.add_argument("--update", action="store_true",
                        help="also put the tables into docs/demosaicing.md and README.md; wants a quiet machine")
    parser.add_argument("--rounds", type=int, default=20, help="rounds of timing (default: 20)")
    parser.add_argument("--peer", metavar="NAME=LIBRARY:FUNCTION", action="append", default=[],
                        help="also compare a method that you built, such as one of librtprocess: a function of C, "
                        "int f(const uint8_t* mosaic, uint8_t* rgb, unsigned width, unsigned height), 0 on success")
    options = parser.parse_args()

    ours, rows = chosen(options)
    packages = os.path.join(BUILD, "photographs")
    photographs.fetch(packages)
    pictures = photographs.photographs(packages)
    results = tables.Results(
        pictures=pictures,
        quality=measures.quality(rows, pictures),
        times=measures.times(rows, page.picture(pictures, "life"), options.rounds),
        orders=measures.filter_orders(ours, pictures),
        noise=measures.noise([row for row in rows if row.library == methods.OURS], pictures),
    )
    print(tables.full(results))
    if options.update:
        tables.put(os.path.join(ROOT, "docs/demosaicing.md"), tables.full(results))
        tables.put(os.path.join(ROOT, "README.md"), tables.short(results))

    folder = os.path.join(BUILD, "quality")
    os.makedirs(folder, exist_ok=True)
    scene = photographs.test_scene(os.path.join(BUILD, "release/tools/lmimaging"), folder, (640, 480))
    written = page.write(os.path.join(folder, "index.html"), page.crops(pictures, scene, photographs.text_page()), rows)
    print(f"The crops are in {written}", file=sys.stderr)


main()
