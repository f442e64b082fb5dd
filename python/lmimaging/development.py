"""Pictures from the raw frames of a camera: white balance, defects, colours and tone in one call."""

from __future__ import annotations

import operator
from typing import Any, NamedTuple, Optional, Sequence, Union

from . import _native
from .arguments import choice, full_depth, line_range, thread_count, tone_curve, triple, whole_number
from .frames import frame_flags, resolve_pair
from .images import result_image, source_image
from .messages import shown
from .pixel_types import TypeLike, resolve

Triple = Union[float, Sequence[float]]


class Development:
    """How the frames of a camera become pictures. An object never changes; threads may share it.

    >>> camera = lmimaging.Development(black=64, gains=(1.6, 1, 1.09), defects=True)
    >>> rgb = camera.develop(frame, "BayerRG10", "RGB8")

    The arguments are those of the files that the command-line tool's ``--development`` reads, so
    ``Development(**json.load(file))`` is what a file says. The steps come in this order:

    :param defects: of mosaics: True corrects samples that are outside of the range of the eight around of their colour
        by more than 1/64 of all values; a whole number of 1 to 65535 is another threshold, in steps of the samples
    :param black: the level of black, one number or three of red, green and blue, in steps of the samples as the camera
        counts them, each 0 to 65535
    :param gains: the white balance: factors of red, green and blue, each 0 to 1000
    :param demosaic: of mosaics: "adaptive" (the default), "mhc", "bilinear", "block", or "half", as ``convert`` has them
    :param matrix: three rows of three numbers, from the colours of the camera to those of the picture, in linear light;
        rows that sum to 1 keep gray. The absolute values of a row sum to 7 at most.
    :param tone: the curve from light to values: "srgb" (the default) for screens, "linear", "bt709" for video, or a
        gamma of 0.1 to 10
    :param depth: 8 gives destinations of more than 8 bits the upper 8 alone; None and "full" give all
    :raises ValueError: for a value that is not allowed
    :raises TypeError: for an object that is not what an argument takes
    """

    def __init__(
        self,
        *,
        defects: Union[bool, int] = False,
        black: Triple = 0,
        gains: Sequence[float] = (1, 1, 1),
        demosaic: str = "adaptive",
        matrix: Optional[Sequence[Sequence[float]]] = None,
        tone: Union[str, float] = "srgb",
        depth: Union[None, int, str] = None,
    ) -> None:
        self._half = demosaic == "half"
        self._native = _native.Development(
            _defect_threshold(defects),
            triple("black", black, 0.0, 65535, float, one=True),
            triple("gains", gains, 1.0, 1000, float),
            choice("demosaic", demosaic, _native.DEMOSAICS),
            _matrix(matrix),
            tone_curve(tone, "srgb"),
            full_depth(None if depth == "full" else depth),
        )

    def develop(
        self,
        source: Any,
        from_: TypeLike,
        to: TypeLike,
        size: Optional[tuple[int, int]] = None,
        *,
        line_size: Optional[int] = None,
        bayer: Optional[str] = None,
        yuv_range: Optional[str] = None,
        yuv_matrix: Optional[str] = None,
        field_order: Optional[str] = None,
        lines: Optional[tuple[int, int]] = None,
        threads: int = 1,
        out: Any = None,
    ) -> Any:
        """Makes a picture of a frame in one pass. The interpreter lock is released meanwhile.

        The arguments are those of ``convert``. Sources are mosaics and images in colour, destinations colours and gray.
        Results use the whole range of the destination: white is 255 of 8 bits, 65535 of 16.

        :return: ``out`` if given; otherwise a new array
        :raises ValueError: for a value that is not allowed, or an image that does not fit its buffer; nothing is written
        :raises TypeError: for an object that is not what an argument takes
        """
        source_type, destination_type = resolve_pair(from_, to)
        flags = frame_flags(from_, to, bayer, yuv_range, yuv_matrix, field_order)
        image = source_image(source, source_type, size, line_size)
        halves = 2 if source_type.bayer and self._half else 1
        result = result_image(out, destination_type, image, halves, lines)
        self._native.develop(
            source_type.id,
            image.native(),
            destination_type.id,
            result.native(),
            flags,
            line_range(lines, image.height),
            thread_count(threads),
        )
        return result.array if out is None else out


class WhiteBalance(NamedTuple):
    """An estimate of the white balance."""

    gains: tuple[float, float, float]
    """The factors of red, green and blue that make the light white; all 1 if ``message`` is not empty."""
    cells: int
    """The cells that were looked at: of 2 x 2 samples of a mosaic, else pixels."""
    usable_cells: int
    """Those that are neither too dark nor overexposed."""
    message: str
    """Why there are no gains; empty if there are."""


def estimate_white_balance(
    source: Any,
    from_: TypeLike,
    size: Optional[tuple[int, int]] = None,
    *,
    gray: Union[str, tuple[int, int, int, int]] = "gray",
    black: Triple = 0,
    line_size: Optional[int] = None,
    bayer: Optional[str] = None,
    yuv_range: Optional[str] = None,
    yuv_matrix: Optional[str] = None,
    field_order: Optional[str] = None,
) -> WhiteBalance:
    """Estimates the gains that make gray things gray, from a frame in colour or a mosaic.

    Every fourth cell along lines and columns is looked at, of a rectangle every one. Cells count whose samples are all
    between 1/50 and 49/50 of their range; at least a hundredth must do so. The least gain is 1, or just as much more as
    brings a saturated sample to white after its black level was taken off.

    :param gray: what is taken to be gray: "gray" the mean of the picture, "white" its brightest hundredth, or a
        rectangle (x, y, width, height) in pixels
    :param black: the level of black, one number or three, in steps of the samples
    :raises ValueError: for a value that is not allowed, or an image that does not fit its buffer
    :raises TypeError: for an object that is not what an argument takes

    The other arguments are those of ``convert``.
    """
    source_type, _, _ = resolve("from_", from_)
    flags = frame_flags(from_, None, bayer, yuv_range, yuv_matrix, field_order)
    image = source_image(source, source_type, size, line_size)
    method, rectangle = _gray(gray)
    found = _native.estimate_white_balance(
        source_type.id, image.native(), flags, method, rectangle, triple("black", black, 0.0, 65535, float, one=True)
    )
    return WhiteBalance(*found)


def _gray(gray: Any) -> tuple[int, tuple[int, ...]]:
    """The number of a method, and a rectangle."""
    methods = {"gray": 0, "white": 1}
    if isinstance(gray, str) and gray in methods:
        return methods[gray], (0, 0, 0, 0)
    allowed = "allowed: 'gray', 'white', or a rectangle (x, y, width, height) in pixels"
    try:
        rectangle = tuple(operator.index(value) for value in gray)
    except TypeError:
        raise ValueError(f"gray: {shown(gray)} is unknown; {allowed}") from None
    if len(rectangle) != 4 or not all(0 <= value < 2**32 for value in rectangle):
        raise ValueError(f"gray: {shown(gray)} does not fit; {allowed}")
    return 2, rectangle


def _defect_threshold(defects: Any) -> Optional[int]:
    if isinstance(defects, bool):
        return 0 if defects else None
    return whole_number("defects", defects, 1, 65535, "allowed: True, False, or a threshold of 1 to 65535")


def _matrix(matrix: Any) -> list[float]:
    """The numbers of a matrix, row by row."""
    if matrix is None:
        return [1, 0, 0, 0, 1, 0, 0, 0, 1]
    allowed = "allowed: three rows of three numbers, the absolute values of a row sum to 7 at most"
    try:
        rows = [[float(value) for value in row] for row in matrix]
    except (TypeError, ValueError, OverflowError):
        raise TypeError(f"matrix: {shown(matrix)} is something else; {allowed}") from None
    if len(rows) != 3 or not all(len(row) == 3 and sum(map(abs, row)) <= 7 for row in rows):
        raise ValueError(f"matrix: {shown(matrix)} does not fit; {allowed}")
    return [value for row in rows for value in row]
