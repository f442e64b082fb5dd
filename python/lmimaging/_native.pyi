from typing import Any, Optional

BAYER: dict[str, int]
BILINEAR: int
FIELD_ORDER: int

def type_ids() -> list[int]: ...
def describe(type: int) -> tuple[int, str, str, tuple[str, ...], int, int, bool, bool, bool, bool, bool]: ...
def find_name(argument: str, name: str) -> tuple[int, str]: ...
def find_number(argument: str, number: int) -> tuple[int, str]: ...
def converter_ids() -> list[tuple[int, int]]: ...
def has_converter(from_: int, to: int) -> bool: ...
def required_size(type: int, width: int, height: int) -> Optional[int]: ...
def convert(
    from_: int,
    source: Any,
    source_line_size: int,
    to: int,
    out: Any,
    out_line_size: int,
    width: int,
    height: int,
    flags: int,
    lines: tuple[int, int],
    balance: Optional[tuple[tuple[float, ...], tuple[int, ...]]],
    full_depth: bool,
) -> None: ...
