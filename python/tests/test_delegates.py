# SPDX-FileCopyrightText: The vantix authors
# SPDX-License-Identifier: MIT
"""Delegates that Python derives."""

import datetime

from conftest import Lines
from PyQt6.QtCore import QDateTime, QLocale, Qt
from PyQt6.QtGui import QColor, QPixmapCache
from PyQt6.QtWidgets import QLineEdit

import vantix


class Coloured(vantix.ItemDelegate):
    """Cells of one colour, which is in their key too."""

    colour = QColor("red")

    def cacheKey(self, option, dpr):
        return super().cacheKey(option, dpr) + self.colour.name()

    def drawBackground(self, painter, option):
        painter.fillRect(option.rect, self.colour)

    def drawText(self, painter, option, index):
        pass


def pixel(view):
    view.viewport().update()
    return view.viewport().grab().toImage().pixelColor(30, 10).name()


def test_item_delegate_paints_from_python(app, view):
    QPixmapCache.clear()
    delegate = Coloured(view)
    view.setItemDelegate(delegate)
    assert pixel(view) == "#ff0000"
    delegate.colour = QColor("blue")
    assert pixel(view) == "#0000ff"


def test_cells_of_one_key_are_painted_once(app, view):
    class OneKey(vantix.ItemDelegate):
        painted = 0

        def cacheKey(self, option, dpr):
            return "ID:one"

        def drawBackground(self, painter, option):
            self.painted += 1
            super().drawBackground(painter, option)

    QPixmapCache.clear()
    delegate = OneKey(view)
    view.setItemDelegate(delegate)
    view.viewport().grab()
    assert delegate.painted == 1


def test_display_text_is_what_is_found(app, view):
    class Upper(vantix.StyledItemDelegate):
        def displayText(self, value, locale):
            return f"<{value}>"

    view.setItemDelegate(Upper(view))
    engine = vantix.AbstractItemViewFind(view)
    engine.setView(view)
    engine.setHeader(view.header())
    view.setCurrentFirst()
    assert engine.findNext("<row 12>")
    assert view.currentIndex().row() == 12


def test_size_hint_gives_the_row_height(app, view):
    class Tall(vantix.StyledItemDelegate):
        def sizeHint(self, option, index):
            size = super().sizeHint(option, index)
            size.setHeight(77)
            return size

    view.resetRowHeight()
    assert view.rowHeight() != 77
    view.setItemDelegate(Tall(view))
    view.updateItemHeight()
    assert view.rowHeight() == 77


def test_init_style_option(app, view):
    class Right(vantix.StyledItemDelegate):
        def initStyleOption(self, option, index):
            super().initStyleOption(option, index)
            option.text = "x" + option.text
            self.texts.add(option.text)

    delegate = Right(view)
    delegate.texts = set()
    view.setItemDelegate(delegate)
    view.viewport().grab()
    assert "xrow 0" in delegate.texts


def test_editor_commits_into_the_model(app, view, lines):
    class Editing(vantix.ItemDelegate):
        def createEditor(self, parent, option, index):
            editor = super().createEditor(parent, option, index)
            self.editors.append(editor)
            return editor

    class Editable(Lines):
        def flags(self, index):
            return super().flags(index) | Qt.ItemFlag.ItemIsEditable

        def setData(self, index, value, role=Qt.ItemDataRole.EditRole):
            written.append((index.row(), value))
            return True

    written = []
    lines = Editable(lines.rows)
    view.setModel(lines)
    delegate = Editing(view)
    delegate.editors = []
    view.setItemDelegate(delegate)
    view.edit(lines.index(2, 0))
    assert isinstance(delegate.editors[0], QLineEdit)
    delegate.editors[0].setText("typed")
    view.commitData(delegate.editors[0])
    assert written == [(2, "typed")]


def test_date_times(app, view):
    delegate = vantix.StyledItemDelegate(view)
    moment = QDateTime(datetime.datetime(2021, 3, 4, 5, 6, 7))
    assert delegate.displayText(moment, QLocale.c()) == delegate.dateTimeToWideText(moment)
    assert "05:06:07" in delegate.dateTimeToShortText(moment)
    assert delegate.dateTimeToShortText(QDateTime()) == ""
    vantix.installTranslations(QLocale("en"))
    assert vantix.StyledItemDelegate.expWeekToString(moment.date()) == "9th week"
