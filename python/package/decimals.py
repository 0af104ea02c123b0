# SPDX-FileCopyrightText: The vantix authors
# SPDX-License-Identifier: MIT
"""Packed decimals: exact fixed-point numbers of 1 to 63 digits."""

from __future__ import annotations

import decimal
import enum
from typing import Any, Callable, Union

from ._vantix import PackedDecimal


class Rounding(enum.IntEnum):
    """What happens to the last kept digit when digits are lost."""

    NEAREST = 0  #: up in magnitude when the first lost digit is 5 or more
    UP = 1  #: toward plus infinity
    DOWN = 2  #: toward minus infinity
    FROM_ZERO = 3  #: away from zero
    TRUNCATE = 4  #: toward zero


class Status(enum.IntFlag):
    """What an operation tells of its result; 0 is an exact positive number."""

    OVERFLOW = 0x01  #: the result does not fit, and is NaN
    ZERO = 0x02
    NEGATIVE = 0x04
    NO_RESULT = 0x10  #: the result is NaN
    INVALID = 0x20  #: bytes are no value of the type
    ROUNDED = 0x40  #: digits other than 0 were lost
    NAN_OPERAND = 0x80


Number = Union["Decimal", int, float, str, decimal.Decimal]

_STYLES = {
    Rounding.NEAREST: decimal.ROUND_HALF_UP,
    Rounding.UP: decimal.ROUND_CEILING,
    Rounding.DOWN: decimal.ROUND_FLOOR,
    Rounding.FROM_ZERO: decimal.ROUND_UP,
    Rounding.TRUNCATE: decimal.ROUND_DOWN,
}

# More digits than any type has, so that what does not fit is told by the type itself.
_PRECISION = 200


def _checked(digits: int, fraction: int) -> tuple[int, int]:
    if not 1 <= digits <= 63:
        raise ValueError(f"a decimal has 1 to 63 digits, not {digits}")
    if not -62 <= fraction <= 62:
        raise ValueError(f"-62 to 62 digits stand after the point, not {fraction}")
    return digits, fraction


def _exact(value: Union[int, float, str, decimal.Decimal]) -> decimal.Decimal:
    try:
        return decimal.Decimal(value)
    except decimal.InvalidOperation:
        raise ValueError(f"not a number: {value!r}") from None


def _at_place(
    number: decimal.Decimal, fraction: int, style: Rounding
) -> tuple[str, bool] | None:
    """The text of number with that many digits after the point, and whether others were lost.

    None when the number is too large for any type.
    """
    context = decimal.Context(
        prec=_PRECISION, rounding=_STYLES[style], traps=[decimal.InvalidOperation]
    )
    try:
        rounded = number.quantize(decimal.Decimal((0, (1,), -fraction)), context=context)
    except decimal.InvalidOperation:
        return None
    return format(rounded, "f"), bool(context.flags[decimal.Inexact])


class Decimal:
    """A number of ``digits`` digits, ``fraction`` of them after the point. Immutable.

    A negative fraction leaves the lowest integer digits out, one above digits leaves leading
    fraction digits out. Sums, differences and products have the type of the left operand
    that is a Decimal, rounded to nearest, halves away from zero; sum() and product() take any
    type and style. What does not fit becomes NaN, which is neither equal to nor less than
    anything. status tells what the operation did that made a value.
    """

    __slots__ = ("_packed", "_status")

    _packed: PackedDecimal
    _status: Status

    def __init__(
        self,
        value: Number,
        digits: int,
        fraction: int,
        rounding: Rounding = Rounding.NEAREST,
    ) -> None:
        """Takes value, rounded by rounding. A float counts as the binary fraction that it is.

        Raises ValueError for a type that is none and for a text that is no number.
        """
        _checked(digits, fraction)
        if isinstance(value, Decimal):
            packed = PackedDecimal.copy(value._packed, digits, fraction, rounding)
            self._set(packed, Status(packed.status()))
        else:
            self._read(_exact(value), digits, fraction, rounding)

    def _set(self, packed: PackedDecimal, status: Status) -> None:
        self._packed = packed
        self._status = status

    def _read(
        self, number: decimal.Decimal, digits: int, fraction: int, rounding: Rounding
    ) -> None:
        self._set(PackedDecimal(digits, fraction), Status.NO_RESULT | Status.OVERFLOW)
        if number.is_nan():
            self._status = Status.NO_RESULT | Status.INVALID | Status.NAN_OPERAND
        if not number.is_finite():
            return
        # A number that does not fit even when cut has not been rounded.
        cut = _at_place(number, fraction, Rounding.TRUNCATE)
        if cut is None:
            return
        packed = PackedDecimal.parse(cut[0], digits, fraction)
        status = Status(packed.status())
        if cut[1] and not status & Status.OVERFLOW:
            rounded = _at_place(number, fraction, rounding)
            assert rounded is not None
            packed = PackedDecimal.parse(rounded[0], digits, fraction)
            status = Status(packed.status()) | Status.ROUNDED
        self._set(packed, status)

    @classmethod
    def _of(cls, packed: PackedDecimal) -> Decimal:
        self = cls.__new__(cls)
        self._set(packed, Status(packed.status()))
        return self

    @classmethod
    def nan(cls, digits: int, fraction: int) -> Decimal:
        """Not a number."""
        return cls(decimal.Decimal("NaN"), digits, fraction)

    @classmethod
    def sum(
        cls,
        a: Decimal,
        b: Decimal,
        digits: int,
        fraction: int,
        rounding: Rounding = Rounding.NEAREST,
    ) -> Decimal:
        """a + b of any two types, exact and then rounded to the type given."""
        _checked(digits, fraction)
        return cls._of(PackedDecimal.sum(a._packed, b._packed, digits, fraction, rounding))

    @classmethod
    def product(
        cls,
        a: Decimal,
        b: Decimal,
        digits: int,
        fraction: int,
        rounding: Rounding = Rounding.NEAREST,
    ) -> Decimal:
        """a * b of any two types, exact and then rounded to the type given."""
        _checked(digits, fraction)
        return cls._of(PackedDecimal.product(a._packed, b._packed, digits, fraction, rounding))

    @classmethod
    def from_bytes(cls, data: bytes, digits: int, fraction: int) -> Decimal:
        """The value that packed bytes are; ValueError when they are none of the type."""
        _checked(digits, fraction)
        value = cls._of(PackedDecimal.fromBytes(bytes(data), digits, fraction))
        if value._status & Status.INVALID and not value._status & Status.NAN_OPERAND:
            raise ValueError(f"no value of {digits} digits, {fraction} of them after the point")
        return value

    def to_bytes(self) -> bytes:
        """The packed bytes, as other programs and files have them."""
        return self._packed.toBytes()

    @property
    def digits(self) -> int:
        """Digits in all."""
        return self._packed.digits()

    @property
    def fraction(self) -> int:
        """Digits after the point."""
        return self._packed.fraction()

    @property
    def status(self) -> Status:
        """What the operation did that made this value. Of no concern to equality."""
        return self._status

    def is_nan(self) -> bool:
        """Whether this is no number."""
        return self._packed.isNan()

    def rounded(
        self, digits: int, fraction: int, rounding: Rounding = Rounding.NEAREST
    ) -> Decimal:
        """The value in another type."""
        return Decimal(self, digits, fraction, rounding)

    def to_decimal(self) -> decimal.Decimal:
        """The value exactly, whatever the current context says."""
        return decimal.Decimal(str(self))

    def __str__(self) -> str:
        return self._packed.text()

    def __repr__(self) -> str:
        return f"Decimal('{self}', {self.digits}, {self.fraction})"

    def __format__(self, spec: str) -> str:
        return format(self.to_decimal(), spec) if spec else str(self)

    def __reduce__(self) -> tuple[Any, ...]:
        return type(self), (str(self), self.digits, self.fraction)

    def __float__(self) -> float:
        return float(self.to_decimal())

    def __int__(self) -> int:
        return int(self.to_decimal())

    def __bool__(self) -> bool:
        return bool(self.to_decimal())

    def __neg__(self) -> Decimal:
        return self._of(PackedDecimal.negated(self._packed))

    def __pos__(self) -> Decimal:
        return self

    def __abs__(self) -> Decimal:
        return -self if self._packed.isNegative() else self

    def _operand(self, other: object) -> Decimal | None:
        if isinstance(other, Decimal):
            return other
        if isinstance(other, int):
            return Decimal(other, 63, 0)
        return None

    def _in_own_type(self, a: Decimal, b: Decimal, operation: Callable[..., Decimal]) -> Decimal:
        return operation(a, b, self.digits, self.fraction)

    def __add__(self, other: Decimal | int) -> Decimal:
        b = self._operand(other)
        if b is None:
            return NotImplemented
        return self._in_own_type(self, b, self.sum)

    __radd__ = __add__

    def __sub__(self, other: Decimal | int) -> Decimal:
        b = self._operand(other)
        if b is None:
            return NotImplemented
        return self._in_own_type(self, -b, self.sum)

    def __rsub__(self, other: int) -> Decimal:
        a = self._operand(other)
        if a is None:
            return NotImplemented
        return self._in_own_type(a, -self, self.sum)

    def __mul__(self, other: Decimal | int) -> Decimal:
        b = self._operand(other)
        if b is None:
            return NotImplemented
        return self._in_own_type(self, b, self.product)

    __rmul__ = __mul__

    def _compared(self, other: object) -> int | None:
        """The sign of self - other; None when they are not to be compared."""
        if isinstance(other, Decimal):
            if self.is_nan() or other.is_nan():
                return None
            return PackedDecimal.compare(self._packed, other._packed)
        number = _exact(other)  # type: ignore[arg-type]
        if self.is_nan() or number.is_nan():
            return None
        own = self.to_decimal()
        return (own > number) - (own < number)

    def _is(self, other: object, wanted: Callable[[int], bool]) -> bool:
        if not isinstance(other, (Decimal, int, float, decimal.Decimal)):
            return NotImplemented
        order = self._compared(other)
        return order is not None and wanted(order)

    def __eq__(self, other: object) -> bool:
        return self._is(other, lambda order: order == 0)

    def __lt__(self, other: object) -> bool:
        return self._is(other, lambda order: order < 0)

    def __le__(self, other: object) -> bool:
        return self._is(other, lambda order: order <= 0)

    def __gt__(self, other: object) -> bool:
        return self._is(other, lambda order: order > 0)

    def __ge__(self, other: object) -> bool:
        return self._is(other, lambda order: order >= 0)

    def __hash__(self) -> int:
        # As Python's own numbers of the same value have it.
        return 0 if self.is_nan() else hash(self.to_decimal())
