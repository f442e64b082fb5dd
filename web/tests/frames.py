"""Frames of photographs as cameras deliver them, made without the library."""

import numpy as np

PHOTOS = "/usr/lib/python3/dist-packages/skimage/data"
CAST = (0.55, 1.0, 0.72)  # of a sensor without white balance


def linear(rgb):
    """IEC 61966-2-1, from 0..255 to light of 0..1."""
    light = rgb / 255
    return np.where(light <= 0.04045, light / 12.92, ((light + 0.055) / 1.055) ** 2.4)


def counts(light, bits, noise=0.004):
    """The counts of a sensor, with the noise of light."""
    light = light + np.random.default_rng(1).normal(0, noise, light.shape) * np.sqrt(light + 0.01)
    return np.clip(np.round(light * (2**bits - 1)), 0, 2**bits - 1).astype(np.uint32)


def mosaic(light, order):
    rows = np.empty(light.shape[:2])
    for i, color in enumerate(order):
        rows[i // 2::2, i % 2::2] = light[i // 2::2, i % 2::2, "RGB".index(color)]
    return rows


def words(samples):
    return samples.astype("<u2").tobytes()


def octets(samples):
    return samples.astype(np.uint8).tobytes()


def stream(samples, bits):
    """Low bits first, without a gap."""
    each = (samples.reshape(-1, 1) >> np.arange(bits)) & 1
    return np.packbits(each.astype(np.uint8).reshape(-1), bitorder="little").tobytes()


def gige(samples, bits):
    """Two in three bytes: top 8 bits, the low bits of both, top 8 bits."""
    first, second = samples.reshape(-1, 2).T
    low, mask = bits - 8, (1 << bits - 8) - 1
    return octets(np.stack([first >> low, first & mask | (second & mask) << 4, second >> low], axis=1))


def yuv422(rgb):
    """ITU-R BT.601, studio range: Y0 U Y1 V."""
    y, u, v = (rgb @ np.array(row) / 255 + offset for row, offset in (
        ((65.481, 128.553, 24.966), 16), ((-37.797, -74.203, 112), 128), ((112, -93.786, -18.214), 128)))
    frame = np.empty(y.shape + (2,))
    frame[..., 0], frame[:, ::2, 1], frame[:, 1::2, 1] = y, (u[:, ::2] + u[:, 1::2]) / 2, (v[:, ::2] + v[:, 1::2]) / 2
    return octets(np.round(frame))


def of_photo(rgb):
    """Formats by their names, of a photograph of an even width and height."""
    light = linear(rgb)
    raw, gray = light * CAST, light @ (0.2126, 0.7152, 0.0722)
    return {
        "Mono8": octets(counts(gray, 8)), "Mono10": words(counts(gray, 10)), "Mono12p": stream(counts(gray, 12), 12),
        "Mono12Packed": gige(counts(gray, 12), 12), "Mono16": words(counts(gray, 16)),
        "BayerRG8": octets(counts(mosaic(raw, "RGGB"), 8)), "BayerGR10": words(counts(mosaic(raw, "GRBG"), 10)),
        "BayerBG12": words(counts(mosaic(raw, "BGGR"), 12)), "BayerGB10p": stream(counts(mosaic(raw, "GBRG"), 10), 10),
        "BayerRG12p": stream(counts(mosaic(raw, "RGGB"), 12), 12),
        "BayerRG12Packed": gige(counts(mosaic(raw, "RGGB"), 12), 12), "RGB8": octets(rgb),
        "RGB8_Planar": octets(np.moveaxis(rgb, 2, 0)), "RGB16": words(counts(light, 16)), "YUV422_8": yuv422(rgb),
        "YUV422_8_UYVY": np.frombuffer(yuv422(rgb), np.uint8).reshape(-1, 2)[:, ::-1].tobytes(),
    }
