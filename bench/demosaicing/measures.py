"""Figures of quality, in dB, and of speed."""
import statistics

import numpy

from methods import FILTER_FIRST, OUR_FLAGS, mosaic_of

BORDER = 10  # pixels that are left out at each edge
GAINS = [((1.9, 1, 1.6), ("lomiri", "skimage", "jxl")), ((2, 1, 1.6), ("lomiri", "mate"))]
NOISE = (5, 10, 20)  # standard deviations in steps of 8 bits


def psnr(truth, picture, border=BORDER):
    difference = (truth.astype(float) - picture)[border:truth.shape[0] - border, border:truth.shape[1] - border]
    return 10 * numpy.log10(255 ** 2 / max(numpy.mean(difference ** 2), 1e-9))


def chroma(picture):
    red, green, blue = (picture[..., i].astype(float) for i in range(3))
    luma = 0.299 * red + 0.587 * green + 0.114 * blue
    return numpy.stack([(blue - luma) / 1.772, (red - luma) / 1.402], -1)


def demosaiced(method, picture):
    rgb = numpy.empty_like(picture)
    method.run(mosaic_of(picture), rgb)
    return rgb


def quality(methods, photographs):
    """{method: [CPSNR of each photograph]}"""
    return {method: [psnr(picture, demosaiced(method, picture)) for _, _, picture in photographs] for method in methods}


def linear(value):
    return numpy.where(value <= 0.04045, value / 12.92, ((value + 0.055) / 1.055) ** 2.4)


def srgb(value):
    return numpy.where(value <= 0.0031308, value * 12.92, 1.055 * value ** (1 / 2.4) - 0.055)


def filter_orders(ours, photographs):
    """[(gains, sets, {method: (colours looked up, samples looked up)})]: mean CPSNR of linear 12-bit sensors, as sRGB."""
    tables = []
    for gains, sets in GAINS:
        counts = numpy.arange(4096)
        curves = numpy.stack([srgb(numpy.minimum(counts * gain / 4095, 1)) for gain in gains])
        curves = numpy.floor(curves * 255 + 0.5).astype(numpy.uint8)
        figures = {name: ([], []) for name in OUR_FLAGS}
        for _, _, picture in (row for row in photographs if row[0] in sets):
            sensor = numpy.floor(linear(picture / 255) / gains * 4095 + 0.5).astype(numpy.uint16)
            mosaic = mosaic_of(sensor)
            for name, flags in OUR_FLAGS.items():
                after, first = numpy.empty(picture.shape, numpy.uint16), numpy.empty_like(picture)
                ours(mosaic, after, flags, curves)
                ours(mosaic, first, flags | FILTER_FIRST, curves)
                figures[name][0].append(psnr(picture, after >> 8))
                figures[name][1].append(psnr(picture, first))
        means = {name: tuple(statistics.mean(values) for values in pair) for name, pair in figures.items()}
        tables.append((gains, sets, means))
    return tables


def noise(methods, photographs):
    """{method: [(CPSNR, PSNR of chroma) for each deviation]}, means, of mosaics with noise beside clean pictures."""
    figures = {method: [([], []) for _ in NOISE] for method in methods}
    random = numpy.random.default_rng(1)
    for _, _, picture in photographs:
        clean, true_chroma = mosaic_of(picture).astype(float), chroma(picture)
        for level, deviation in enumerate(NOISE):
            noisy = numpy.clip(numpy.rint(clean + random.normal(0, deviation, clean.shape)), 0, 255).astype(numpy.uint8)
            for method in methods:
                rgb = numpy.empty_like(picture)
                method.run(noisy, rgb)
                figures[method][level][0].append(psnr(picture, rgb))
                figures[method][level][1].append(psnr(true_chroma, chroma(rgb)))
    return {method: [tuple(statistics.mean(values) for values in pair) for pair in levels]
            for method, levels in figures.items()}


def times(methods, picture, rounds):
    """{method: least nanoseconds of processor time a pixel at 1920x1080}; the methods take turns."""
    repeats = (-(-1080 // picture.shape[0]), -(-1920 // picture.shape[1]), 1)
    frame = numpy.ascontiguousarray(numpy.tile(picture, repeats)[:1080, :1920])
    mosaic, rgb = mosaic_of(frame), numpy.empty_like(frame)
    least = {}
    for turn in range(rounds):
        for method in methods:
            slow = least.get(method, 0) > 0.1
            if slow and turn >= 3:
                continue
            elapsed = min(method.run(mosaic, rgb) for _ in range(1 if slow or turn == 0 else 5))
            least[method] = min(elapsed, least.get(method, elapsed))
    return {method: value * 1e9 / mosaic.size for method, value in least.items()}
