"""How messages show the values that they are about."""

from __future__ import annotations

from typing import Any

_MOST_CHARACTERS = 80


def shown(value: Any) -> str:
    """A wrong value, cut where it becomes too long to read."""
    try:
        text = repr(value)
    except ValueError:  # Python refuses to print whole numbers of thousands of digits
        return f"a {type(value).__name__} with thousands of digits"
    return text if len(text) <= _MOST_CHARACTERS else text[:_MOST_CHARACTERS] + "..."
