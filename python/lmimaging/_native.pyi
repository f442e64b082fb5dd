from typing import Any, Optional

BAYER: dict[str, int]
DEMOSAICS: dict[str, int]
TONES: dict[str, int]
GAMMA: int
FILTER_FIRST: int
FULL_RANGE: int
BT709: int
FIELD_ORDER: int

Image = tuple[Any, int, tuple[int, int]]
Values = tuple[float, ...]
Tone = tuple[int, float]

def type_ids() -> list[int]: ...
def describe(type: int) -> tuple[int, str, str, tuple[str, ...], int, int, bool, bool, bool, bool, bool]: ...
def find_name(argument: str, name: str) -> tuple[int, str, int]: ...
def find_number(argument: str, number: int) -> tuple[int, str, int]: ...
def converter_ids() -> list[tuple[int, int]]: ...
def has_converter(from_: int, to: int) -> bool: ...
def destinations(from_: int) -> str: ...
def required_size(type: int, width: int, height: int) -> Optional[int]: ...
def convert(
    from_: int,
    source: Image,
    to: int,
    out: Image,
    flags: int,
    lines: tuple[int, int],
    curve: Optional[tuple[Values, Values, Values, Tone]],
    full_depth: bool,
    threads: int,
) -> None: ...
def estimate_white_balance(
    from_: int, source: Image, flags: int, method: int, rectangle: tuple[int, ...], black: Values
) -> tuple[tuple[float, float, float], int, int, str]: ...

class Development:
    def __init__(
        self,
        defects: Optional[int],
        black: Values,
        gains: Values,
        method: int,
        matrix: list[float],
        tone: Tone,
        full_depth: bool,
    ) -> None: ...
    def develop(
        self, from_: int, source: Image, to: int, out: Image, flags: int, lines: tuple[int, int], threads: int
    ) -> None: ...
