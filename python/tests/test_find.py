# SPDX-FileCopyrightText: The vantix authors
# SPDX-License-Identifier: MIT
"""Search engine, panel and filter over a model written in Python."""

import gc
import weakref

import pytest
from PyQt6.QtCore import Qt
from PyQt6.QtTest import QTest

import vantix


@pytest.fixture
def find(view):
    engine = vantix.AbstractItemViewFind(view)
    engine.setView(view)
    engine.setHeader(view.header())
    view.setCurrentFirst()
    return engine


def test_finds_forward_and_back(view, find):
    assert find.findNext("ROW 25")
    assert view.currentIndex().data() == "row 25"
    assert find.findNext("row 25")
    assert view.currentIndex().data() == "row 250"
    assert find.findPrev("row 25")
    assert view.currentIndex().data() == "row 25"
    assert not find.findNext("nowhere")
    find.setCaseSensitivity(Qt.CaseSensitivity.CaseSensitive)
    assert not find.findNext("ROW 25")


def test_hidden_columns_are_not_searched(view, find):
    assert find.findNext("odd")
    view.hideColumn(1)
    assert not find.findNext("odd")
    assert find.columnList() == [0]


def test_accepts_data_can_be_overridden(view):
    class Whole(vantix.AbstractItemViewFind):
        def acceptsData(self, data, text, column):
            return str(data) == text

    engine = Whole(view)
    engine.setView(view)
    engine.setHeader(view.header())
    view.setCurrentFirst()
    assert not engine.findNext("row")
    assert engine.findNext("row 49")
    assert view.currentIndex().row() == 49


def test_dofilter_can_be_overridden(view):
    class Noted(vantix.AbstractItemViewFind):
        def dofilter(self, text):
            self.text = text

    engine = Noted()
    engine.setView(view)
    engine.filter("even")
    assert engine.text == "even"


def test_view_is_not_kept_by_its_engine(app):
    view = vantix.QTableFastView()
    engine = vantix.AbstractItemViewFind()
    engine.setView(view)
    assert engine.view() is view
    del view
    assert engine.view() is None


def test_panel_keeps_its_engine(app, view):
    panel = vantix.ItemViewFindToolBar()
    engine = vantix.AbstractItemViewFind()
    engine.setView(view)
    engine.setHeader(view.header())
    kept = weakref.ref(engine)
    panel.setViewFind(engine)
    del engine
    gc.collect()
    assert kept() is not None
    assert panel.findNext("row 7")
    panel.setViewFind(None)
    gc.collect()
    assert kept() is None


def test_panel_finds_and_filters(app, lines, view):
    proxy = vantix.SortFilterProxyModel()
    proxy.setSourceModel(lines)
    view.setModel(proxy)
    view.setCurrentFirst()
    engine = vantix.AbstractItemViewFind(view)
    engine.setView(view)
    engine.setHeader(view.header())
    panel = vantix.ItemViewFindToolBar()
    panel.setViewFind(engine)
    panel.openFind()
    field = panel.findChild(vantix.FilterLineEdit)
    QTest.keyClicks(field, "row 33")
    panel.findNext()
    assert view.currentIndex().data() == "row 33"
    assert panel.isFilterAvailable()
    panel.filter()
    assert proxy.rowCount() == 11
    panel.close()
    assert proxy.rowCount() == 500


def test_panel_of_ones_own(app):
    class Panel(vantix.AbstractFindToolBar):
        def __init__(self):
            super().__init__()
            self.calls = []

        def findIncremental(self, text):
            self.calls.append(("typed", text))
            return True

        def findPrev(self, *text):
            self.calls.append(("back", *text))
            return False

        def findNext(self, text):
            self.calls.append(("forward", text))
            return True

        def resetSearch(self):
            self.calls.append(("reset",))

    with pytest.raises(TypeError):
        vantix.AbstractFindToolBar()
    panel = Panel()
    panel.openFind()
    QTest.keyClicks(panel.findChild(vantix.FilterLineEdit), "ab")
    assert panel.calls[-1] == ("typed", "ab")
    vantix.AbstractFindToolBar.findNext(panel)
    assert panel.calls[-1] == ("forward", "ab")
    panel.close()
    assert panel.calls[-1] == ("reset",)


def test_proxy_hooks(lines):
    class Proxy(vantix.SortFilterProxyModel):
        def filterAboutToBeReset(self):
            self.steps = ["before"]

        def filterReset(self):
            self.steps.append("after")

        def filterAcceptsRow(self, row, parent):
            return row != 3 and super().filterAcceptsRow(row, parent)

    proxy = Proxy()
    proxy.setSourceModel(lines)
    proxy.setVisibleColumns([1])
    proxy.setFilter("odd")
    assert proxy.steps == ["before", "after"]
    assert proxy.rowCount() == 249
    proxy.setFilterCaseSensitivity(Qt.CaseSensitivity.CaseInsensitive)
    proxy.setFilter("ODD")
    assert proxy.rowCount() == 249
