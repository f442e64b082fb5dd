"""Images of GenTL consumers, the Python packages that acquire frames from cameras through a producer."""

from __future__ import annotations

import operator
from typing import Any

import numpy as np

from . import _native
from .messages import shown
from .pixel_types import resolve


def component_arguments(component: Any) -> dict[str, Any]:
    """The arguments of ``convert``, ``Development.develop`` and ``estimate_white_balance`` for a component of a buffer.

    >>> with acquirer.fetch() as buffer:
    ...     for component in buffer.payload.components:
    ...         picture = lmimaging.convert(**lmimaging.component_arguments(component), to="RGB8")

    Nothing is copied: the source is the component's memory, which belongs to the producer again when the buffer is
    queued. The results of conversions are arrays of their own.

    :param component: an object with the attributes ``data``, a NumPy array or another buffer of the image's bytes,
        whatever its dtype and shape; ``data_format``, a name of the GenICam Pixel Format Naming Convention such as
        "BayerRG12p"; ``width`` and ``height`` in pixels; and ``x_padding``, bytes after each line, which may be
        missing or None where there are none
    :return: ``source``, ``from_``, ``size`` and ``line_size``
    :raises ValueError: for a format that is no picture or is unknown, and for sizes that are not allowed
    :raises TypeError: for an object without these attributes
    """
    missing = [name for name in ("data", "data_format", "width", "height") if getattr(component, name, None) is None]
    if missing:
        raise TypeError(
            f"component: a {type(component).__name__} has no {', '.join(missing)}; "
            "allowed: a component of a buffer, with data, data_format, width, height and x_padding"
        )
    pixel_type, _, _ = resolve("component.data_format", component.data_format)
    width, height = (_whole(component, name, 1) for name in ("width", "height"))
    padding = _whole(component, "x_padding", 0) if getattr(component, "x_padding", None) is not None else 0
    # Cameras fill lines up to whole bytes, and count the padding from there. Eight pixels of any format are whole bytes.
    line_size = (_native.required_size(pixel_type.id, 8, 1) * width + 7) // 8 + padding if padding else None
    data = component.data if isinstance(component.data, np.ndarray) else np.asarray(memoryview(component.data))
    return {
        "source": np.ascontiguousarray(data).reshape(-1).view(np.uint8),
        "from_": component.data_format,
        "size": (width, height),
        "line_size": line_size,
    }


def _whole(component: Any, name: str, least: int) -> int:
    value = getattr(component, name)
    allowed = f"allowed: whole numbers, {least} to {2**32 - 1}"
    try:
        number = operator.index(value)
    except TypeError:
        raise TypeError(f"component.{name}: {shown(value)} is a {type(value).__name__}; {allowed}") from None
    if not least <= number < 2**32:
        raise ValueError(f"component.{name}: {shown(value)} does not fit; {allowed}")
    return number
