# SPDX-FileCopyrightText: The vantix authors
# SPDX-License-Identifier: MIT
"""Line edits with buttons: their signals, and their menus, which are not theirs."""

import gc
import weakref

import pytest
from PyQt6 import sip
from PyQt6.QtCore import Qt
from PyQt6.QtGui import QPixmap
from PyQt6.QtTest import QTest
from PyQt6.QtWidgets import QMenu

import vantix

LEFT = vantix.FancyLineEdit.Side.Left
RIGHT = vantix.FancyLineEdit.Side.Right


@pytest.fixture
def edit(app):
    line = vantix.FancyLineEdit()
    for side in (LEFT, RIGHT):
        line.setButtonVisible(side, True)
        line.setButtonPixmap(side, QPixmap(8, 8))
    line.resize(200, 30)
    line.show()
    yield line
    line.close()


def button_at(edit, side):
    buttons = sorted(edit.findChildren(vantix.IconButton), key=lambda button: button.x())
    return buttons[0 if side == LEFT else -1]


@pytest.mark.parametrize("side", [LEFT, RIGHT])
def test_click_signals(edit, side):
    clicks = []
    edit.buttonClicked.connect(clicks.append)
    edit.leftButtonClicked.connect(lambda: clicks.append("left"))
    edit.rightButtonClicked.connect(lambda: clicks.append("right"))
    QTest.mouseClick(button_at(edit, side), Qt.MouseButton.LeftButton)
    assert clicks == [side, "left" if side == LEFT else "right"]


def test_menus_of_both_sides_are_kept(edit):
    menus = {LEFT: QMenu("left"), RIGHT: QMenu("right")}
    for side, menu in menus.items():
        edit.setButtonMenu(side, menu)
    kept = {side: weakref.ref(menu) for side, menu in menus.items()}
    del menu
    menus.clear()
    gc.collect()
    assert edit.buttonMenu(LEFT) is kept[LEFT]() and edit.buttonMenu(LEFT).title() == "left"
    assert edit.buttonMenu(RIGHT) is kept[RIGHT]() and edit.buttonMenu(RIGHT).title() == "right"
    edit.setButtonMenu(LEFT, None)
    gc.collect()
    assert kept[LEFT]() is None and kept[RIGHT]() is not None


def test_menu_is_not_owned(app):
    edit = vantix.FancyLineEdit()
    menu = QMenu()
    edit.setButtonMenu(LEFT, menu)
    sip.delete(edit)
    assert not sip.isdeleted(menu)


def test_destroyed_menu_no_longer_counts(edit):
    menu = QMenu()
    edit.setButtonMenu(LEFT, menu)
    sip.delete(menu)
    assert edit.buttonMenu(LEFT) is None


def test_filter_changed(app):
    edit = vantix.FilterLineEdit()
    texts = []
    edit.filterChanged.connect(texts.append)
    edit.setText("a")
    edit.setText("a")
    edit.setText("A")
    edit.clear()
    assert texts == ["a", "A", ""]
    assert edit.isButtonVisible(RIGHT) and edit.hasAutoHideButton(RIGHT)
