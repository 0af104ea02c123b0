# SPDX-FileCopyrightText: The vantix authors
# SPDX-License-Identifier: MIT
"""The view: rows that arrive, functions that Python overrides, who keeps what."""

import gc
import weakref

import pytest
from conftest import Lines
from PyQt6 import sip
from PyQt6.QtCore import QItemSelectionModel, QLocale, QPoint, Qt
from PyQt6.QtGui import QPixmap
from PyQt6.QtWidgets import QHeaderView, QToolButton

import vantix


def first_text(view):
    return view.indexAt(QPoint(1, 1)).data()


def shown_texts(view):
    return [view.model().index(row, 0).data() for row in view.rowsAt(view.viewport().visibleRegion())]


def test_keeps_rows_while_others_arrive_above(app, view, lines):
    view.verticalScrollBar().setValue(100)
    before = shown_texts(view)
    assert before[0] == "row 100"
    lines.insert_above([["new", "row"]] * 7)
    assert shown_texts(view) == before
    lines.remove_above(5)
    assert shown_texts(view) == before
    assert view.verticalScrollBar().value() == 102


def test_stays_at_the_top(app, view, lines):
    view.verticalScrollBar().setValue(1)
    view.verticalScrollBar().setValue(0)
    lines.insert_above([["newest", "row"]])
    assert first_text(view) == "newest"


@pytest.mark.parametrize("buffered", [False, True])
def test_paints_what_it_painted_before(app, view, lines, buffered):
    view.setPaintBufferEnabled(buffered)
    view.verticalScrollBar().setValue(100)
    app.processEvents()
    before = view.viewport().grab().toImage()
    lines.insert_above([["new", "row"]] * 3)
    app.processEvents()
    assert view.viewport().grab().toImage() == before


def test_draw_row_is_called_for_each_row_in_sight(app, lines):
    class View(vantix.QTableFastView):
        def drawRow(self, painter, option, index):
            self.drawn.append((index.row(), option.rect.height()))
            super().drawRow(painter, option, index)

    view = View()
    view.drawn = []
    view.setModel(lines)
    view.setRowHeight(30)
    view.viewport().resize(200, 90)
    view.resize(200, 150)
    view.grab()
    rows = [row for row, _ in view.drawn]
    assert rows == sorted(set(rows)) and rows[0] == 0 and 3 <= len(rows) <= 6
    assert {height for _, height in view.drawn} == {30}


def test_frozen_columns_leave_room(app):
    class View(vantix.QTableFastView):
        def frozenColumnWidth(self):
            return 120

    view = View()
    view.setModel(Lines([[str(n) for n in range(20)]]))
    view.resize(400, 200)
    view.show()
    for column in range(20):
        view.setColumnWidth(column, 100)
    app.processEvents()
    view.scrollTo(view.model().index(0, 19))
    view.scrollTo(view.model().index(0, 5))
    assert view.columnViewportPosition(5) == 120
    assert view.property("frozenColumnWidth") == 120
    view.close()


def test_slots_can_be_overridden(app, lines):
    class View(vantix.QTableFastView):
        def rowsInserted(self, parent, start, end):
            self.told = (start, end)
            super().rowsInserted(parent, start, end)

        def dataChanged(self, top_left, bottom_right, roles=()):
            self.changed = (top_left.row(), bottom_right.row(), list(roles))
            super().dataChanged(top_left, bottom_right, roles)

    view = View()
    view.setModel(lines)
    lines.insert_above([["a", "b"]] * 2)
    assert view.told == (0, 1)
    lines.dataChanged.emit(lines.index(1, 0), lines.index(2, 1), [int(Qt.ItemDataRole.DisplayRole)])
    assert view.changed == (1, 2, [0])


def test_signals(app, view):
    heights = []
    view.rowHeightChanged.connect(lambda: heights.append(view.rowHeight()))
    view.setRowHeight(31)
    assert heights == [31]
    headers = []
    view.headerChanged.connect(headers.append)
    header = QHeaderView(Qt.Orientation.Horizontal)
    view.setHeader(header)
    assert headers == [header]


def test_keeps_model_delegate_and_selection_model(app):
    view = vantix.QTableFastView()
    model = Lines([["a", "b"]])
    selection = QItemSelectionModel(model)
    delegate = vantix.ItemDelegate(None)
    view.setModel(model)
    view.setSelectionModel(selection)
    view.setItemDelegate(delegate)
    kept = [weakref.ref(model), weakref.ref(selection), weakref.ref(delegate)]
    del model, selection, delegate
    gc.collect()
    assert [ref() for ref in kept] == [view.model(), view.selectionModel(), view.itemDelegate()]
    assert view.model().rows == [["a", "b"]]
    view.setModel(None)
    gc.collect()
    assert kept[0]() is None


def test_owns_its_header(app):
    view = vantix.QTableFastView()
    header = QHeaderView(Qt.Orientation.Horizontal)
    header.setObjectName("given")
    view.setHeader(header)
    del header
    gc.collect()
    header = view.header()
    assert header.objectName() == "given" and header.parent() is view
    sip.delete(view)
    assert sip.isdeleted(header)


def test_objects_of_the_library_have_their_classes(app, view):
    assert type(view.verticalScrollBar()) is vantix.QTableFastScrollBar
    view.verticalScrollBar().setValue(view.verticalScrollBar().maximum())
    assert view.verticalScrollBar().isMax()
    panel = vantix.ItemViewFindToolBar()
    assert panel.findChild(vantix.FilterLineEdit) is not None
    assert panel.findChild(vantix.QProgressIndicator) is not None
    assert type(panel.findChild(vantix.FilterLineEdit).findChild(vantix.IconButton)) is vantix.IconButton


def test_visible_columns(app, view):
    view.header().moveSection(1, 0)
    assert vantix.getVisibleColumns(view.header()) == [1, 0]
    view.hideColumn(0)
    assert vantix.getVisibleColumns(view.header()) == [1]
    with pytest.raises(TypeError):
        vantix.getVisibleColumns(None)


def tool_tips(panel):
    return [button.toolTip() for button in panel.findChildren(QToolButton)]


def test_translations(app):
    assert vantix.installTranslations(QLocale("ru"))
    assert "Найти следующее" in tool_tips(vantix.ItemViewFindToolBar())
    assert vantix.installTranslations(QLocale("en"))
    assert "Find next" in tool_tips(vantix.ItemViewFindToolBar())


def test_progress_indicator(app):
    indicator = vantix.QProgressIndicator()
    indicator.startAnimation()
    assert indicator.isAnimated() and indicator.sizeHint().width() == 20
    indicator.stopAnimation()
    assert not indicator.isAnimated()


def middle(widget):
    image = widget.grab().toImage()
    return image.pixelColor(image.width() // 2, image.height() // 2).name()


def test_icon_button(app):
    button = vantix.IconButton()
    button.resize(40, 40)
    picture = QPixmap(8, 8)
    picture.fill(Qt.GlobalColor.red)
    button.setPixmap(picture)
    button.setAutoHide(True)
    assert button.pixmap().size() == picture.size() and button.hasAutoHide()
    button.setIconOpacity(1.0)
    assert middle(button) == "#ff0000"
    button.setIconOpacity(0.0)
    assert middle(button) != "#ff0000"
