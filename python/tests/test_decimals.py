# SPDX-FileCopyrightText: The vantix authors
# SPDX-License-Identifier: MIT
"""Packed decimals beside decimal.Decimal."""

import copy
import decimal
import pickle
import random

import pytest
from vantix import Decimal, Rounding, Status

STYLES = {
    Rounding.NEAREST: decimal.ROUND_HALF_UP,
    Rounding.UP: decimal.ROUND_CEILING,
    Rounding.DOWN: decimal.ROUND_FLOOR,
    Rounding.FROM_ZERO: decimal.ROUND_UP,
    Rounding.TRUNCATE: decimal.ROUND_DOWN,
}


def exactly():
    return decimal.localcontext(decimal.Context(prec=300))


def rounded(number, digits, fraction, style):
    """number in a type, by decimal's own rounding; None where it does not fit."""
    with exactly() as context:
        context.rounding = STYLES[style]
        scaled = number.quantize(decimal.Decimal((0, (1,), -fraction)))
        return scaled if len(str(abs(int(scaled.scaleb(fraction))))) <= digits else None


def random_type(rng):
    digits = rng.randint(1, 63)
    return digits, rng.randint(max(-62, digits - 63), min(62, digits + 8))


def random_value(rng):
    digits, fraction = random_type(rng)
    used = rng.randint(1, digits)
    number = decimal.Decimal((rng.randint(0, 1), [rng.randint(0, 9) for _ in range(used)], -fraction))
    return Decimal(number, digits, fraction), number


def agree(result, number, digits, fraction, style):
    if abs(number) < decimal.Decimal("1e-62"):  # as far as the library looks
        number = decimal.Decimal(0)
    wanted = rounded(number, digits, fraction, style)
    assert (result.digits, result.fraction) == (digits, fraction)
    if wanted is None:
        assert result.is_nan() and Status.OVERFLOW in result.status
        return
    assert result.to_decimal() == wanted
    assert (Status.ROUNDED in result.status) == (wanted != number)
    assert (Status.ZERO in result.status) == (wanted == 0)
    assert (Status.NEGATIVE in result.status) == (wanted < 0)


@pytest.mark.parametrize("style", list(Rounding))
def test_operations(style):
    rng = random.Random(20 + style)
    for _ in range(2000):
        (a, exact_a), (b, exact_b) = random_value(rng), random_value(rng)
        digits, fraction = random_type(rng)
        with exactly():
            total, product = exact_a + exact_b, exact_a * exact_b
        agree(Decimal.sum(a, b, digits, fraction, style), total, digits, fraction, style)
        agree(Decimal.product(a, b, digits, fraction, style), product, digits, fraction, style)
        agree(a.rounded(digits, fraction, style), exact_a, digits, fraction, style)
        assert Decimal(exact_a, digits, fraction, style).to_bytes() == a.rounded(
            digits, fraction, style
        ).to_bytes()


def test_conversions_are_exact_whatever_the_context():
    rng = random.Random(3)
    with decimal.localcontext(decimal.Context(prec=1)):
        for _ in range(2000):
            value, number = random_value(rng)
            assert value == number and value.to_decimal() == number
            assert Decimal(value.to_decimal(), value.digits, value.fraction) == value
            assert Decimal(str(value), value.digits, value.fraction) == value
            assert Decimal.from_bytes(value.to_bytes(), value.digits, value.fraction) == value
            assert not value.status & Status.ROUNDED


def test_order_and_hash():
    rng = random.Random(4)
    for _ in range(2000):
        (a, exact_a), (b, exact_b) = random_value(rng), random_value(rng)
        assert (a < b, a <= b, a == b, a >= b, a > b) == (
            exact_a < exact_b, exact_a <= exact_b, exact_a == exact_b,
            exact_a >= exact_b, exact_a > exact_b,
        )
        assert a == exact_a and hash(a) == hash(exact_a)
        assert (a < exact_b) == (exact_a < exact_b)


@pytest.mark.parametrize(
    ("value", "digits", "fraction", "text", "status"),
    [
        ("19.90", 4, 2, "19.90", 0),
        ("-0.5", 2, 1, "-0.5", 4),
        ("-0", 3, 1, "0.0", 2),
        (0, 3, 0, "0", 2),
        (1249, 5, -2, "1200", 64),
        ("0.00512", 2, 4, "0.0051", 64),
        ("-0.004", 5, 2, "0.00", 66),
        ("1000", 5, 2, "NaN", 17),
        ("1000.001", 5, 2, "NaN", 17),
        ("999.995", 5, 2, "NaN", 81),
        ("1e999999999", 5, 2, "NaN", 17),
        ("1e-999999999", 5, 2, "0.00", 66),
        (0.1, 20, 18, "0.100000000000000006", 64),
        (float("inf"), 5, 2, "NaN", 17),
        (float("nan"), 5, 2, "NaN", 176),
        (True, 3, 1, "1.0", 0),
    ],
)
def test_texts_and_status(value, digits, fraction, text, status):
    result = Decimal(value, digits, fraction)
    assert (str(result), result.status) == (text, status)


def test_operators():
    price = Decimal("19.90", 15, 2)
    assert str(price * 3 + Decimal("4.505", 6, 3)) == "64.21"
    assert str(2 - price) == "-17.90" and str(price - 2) == "17.90"
    assert str(abs(-price)) == "19.90" and bool(price) and not Decimal(0, 3, 0)
    assert (price * Decimal("0.333", 3, 3)).status == Status.ROUNDED
    assert (Decimal(999, 3, 0) + 1).status == Status.OVERFLOW | Status.NO_RESULT
    assert 1 + price == 1 + decimal.Decimal("19.9")
    assert int(price) == 19 and float(price) == 19.9 and f"{price:10.1f}" == "      19.9"
    with pytest.raises(TypeError):
        price + 0.5
    with pytest.raises(TypeError):
        price < "20"
    assert price != "19.90"


def test_nan_is_unordered():
    nan = Decimal.nan(5, 2)
    for other in (nan, Decimal(1, 5, 2), 1, decimal.Decimal(1), float("nan")):
        assert not (nan == other or nan < other or nan <= other or nan > other or nan >= other)
        assert nan != other
    assert (nan + 1).is_nan() and (nan * nan).status == 176 and (-nan).is_nan()
    assert nan.to_decimal().is_nan() and hash(nan) == hash(Decimal.nan(9, 0))
    assert Decimal(nan, 7, 1).is_nan()


def test_equal_values_of_different_types_are_one_key():
    prices = {Decimal("1.5", 3, 1): "a"}
    assert prices[Decimal("1.50", 9, 4)] == "a" and prices[decimal.Decimal("1.50")] == "a"
    assert {Decimal(7, 2, 0): "b"}[7] == "b"


def test_bytes():
    value = Decimal("-123.45", 5, 2)
    assert value.to_bytes() == bytes((0x81, 0x17, 0x2D))
    assert Decimal.from_bytes(bytes((0, 1, 2)), 5, 2) == decimal.Decimal("1.02")
    assert Decimal.from_bytes(bytes((101, 0, 0)), 5, 2).is_nan()
    for wrong in (b"", bytes((0, 1)), bytes((0, 1, 100)), bytes((0x80, 0, 0))):
        with pytest.raises(ValueError):
            Decimal.from_bytes(wrong, 5, 2)


@pytest.mark.parametrize(("digits", "fraction"), [(0, 0), (64, 0), (5, 63), (5, -63)])
def test_types_that_are_none(digits, fraction):
    one = Decimal(1, 1, 0)
    for make in (
        lambda: Decimal(1, digits, fraction),
        lambda: Decimal(one, digits, fraction),
        lambda: Decimal.sum(one, one, digits, fraction),
        lambda: Decimal.product(one, one, digits, fraction),
        lambda: Decimal.from_bytes(b"", digits, fraction),
    ):
        with pytest.raises(ValueError):
            make()


@pytest.mark.parametrize("text", ["", "abc", "1,5", "1.2.3", "--1"])
def test_texts_that_are_no_numbers(text):
    with pytest.raises(ValueError):
        Decimal(text, 5, 2)


def test_copies():
    for value in (Decimal("-12.5", 5, 2), Decimal.nan(5, 2)):
        for other in (pickle.loads(pickle.dumps(value)), copy.deepcopy(value)):
            assert repr(other) == repr(value)
    assert repr(Decimal("-12.5", 5, 2)) == "Decimal('-12.50', 5, 2)"
