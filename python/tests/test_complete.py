# SPDX-FileCopyrightText: The vantix authors
# SPDX-License-Identifier: MIT
"""Whether Python sees what the headers declare."""

import pathlib
import re

import pytest

import vantix

SOURCE = pathlib.Path(__file__).resolve().parents[2] / "src"
HEADERS = [
    "abstractfindtoolbar.h",
    "abstractitemviewfind.h",
    "fancylineedit.h",
    "filterlineedit.h",
    "itemdelegate.h",
    "itemviewfindtoolbar.h",
    "qprogressindicator.h",
    "qtablefastview.h",
    "sortfilterproxymodel.h",
    "styleditemdelegate.h",
]

# rowsAt() gives what atRegion() does; QString's own functions do what trim() does.
ELSEWHERE = {"atRegion", "trim"}


def classes(text):
    """Names and bodies of the classes that a header exports."""
    return re.findall(r"^class VANTIX_EXPORT (\w+) : .*?\n\{(.*?)^\};", text, re.M | re.S)


def visible(body):
    """The names of the functions that a class declares and does not keep to itself."""
    names = set()
    for part in re.split(r"^(?=(?:public|protected|private|Q_SIGNALS)\b.*:$)", body, flags=re.M)[1:]:
        if not part.startswith("private"):
            names |= set(re.findall(r"^    (?! )(?!//|Q_[A-Z]+\()[^(\n]*?(\w+)\(", part, re.M))
    return names


@pytest.mark.parametrize("header", HEADERS)
def test_functions_of_the_headers(header):
    found = classes((SOURCE / header).read_text(encoding="utf-8"))
    assert found
    for name, body in found:
        wanted = visible(body) - ELSEWHERE - {name}
        assert wanted
        assert sorted(wanted - set(vars(getattr(vantix, name)))) == []
