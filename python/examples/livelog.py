#!/usr/bin/env python3
# SPDX-FileCopyrightText: The vantix authors
# SPDX-License-Identifier: MIT
"""A log whose newest lines arrive at the top, with a search panel: Ctrl+F opens it.

Scroll down, and the lines that you read stay while others arrive.
"""

import argparse
import sys

from PyQt6.QtCore import QAbstractTableModel, QModelIndex, Qt, QTimer
from PyQt6.QtGui import QColor, QKeySequence, QShortcut
from PyQt6.QtWidgets import QApplication, QMainWindow

import vantix


class Log(QAbstractTableModel):
    """Lines of a number, a level and a text; the newest is row 0."""

    TITLES = ("No.", "Level", "Message")

    def __init__(self, parent):
        super().__init__(parent)
        self.lines = []

    def rowCount(self, parent=QModelIndex()):
        return len(self.lines)

    def columnCount(self, parent=QModelIndex()):
        return len(self.TITLES)

    def data(self, index, role=Qt.ItemDataRole.DisplayRole):
        line = self.lines[-1 - index.row()]
        if role == Qt.ItemDataRole.DisplayRole:
            return line[index.column()]
        if role == Qt.ItemDataRole.ForegroundRole and line[1] == "error":
            return QColor("red")
        return None

    def headerData(self, section, orientation, role=Qt.ItemDataRole.DisplayRole):
        return self.TITLES[section] if role == Qt.ItemDataRole.DisplayRole else None

    def add_line(self):
        number = len(self.lines)
        level = "error" if number % 10 == 9 else "info"
        self.beginInsertRows(QModelIndex(), 0, 0)
        self.lines.append((number, level, f"request {number * 7919 % 10007} done"))
        self.endInsertRows()


parser = argparse.ArgumentParser(description=__doc__)
parser.add_argument("--rows", type=int, help="end when there are so many lines")
arguments = parser.parse_args()

app = QApplication(sys.argv[:1])
vantix.installTranslations()
window = QMainWindow()
log = Log(window)
proxy = vantix.SortFilterProxyModel(window)
proxy.setSourceModel(log)
view = vantix.QTableFastView()
view.setItemDelegate(vantix.ItemDelegate(view))
view.setPaintBufferEnabled(True)
view.setModel(proxy)
find = vantix.AbstractItemViewFind(view)
find.setView(view)
find.setHeader(view.header())
panel = vantix.ItemViewFindToolBar()
panel.setViewFind(find)
window.setCentralWidget(view)
window.addToolBar(Qt.ToolBarArea.BottomToolBarArea, panel)
panel.hide()
QShortcut(QKeySequence.StandardKey.Find, window).activated.connect(panel.openFind)
if arguments.rows:
    log.rowsInserted.connect(lambda: len(log.lines) >= arguments.rows and app.quit())
timer = QTimer(window)
timer.timeout.connect(log.add_line)
timer.start(10)
window.resize(600, 400)
window.show()
sys.exit(app.exec())
