# SPDX-FileCopyrightText: The vantix authors
# SPDX-License-Identifier: MIT
"""What the tests share: one application, and models written in Python."""

import os

os.environ.setdefault("QT_QPA_PLATFORM", "offscreen")

import pytest
from PyQt6.QtCore import QAbstractTableModel, QLocale, QModelIndex, Qt
from PyQt6.QtWidgets import QApplication

import vantix


class Lines(QAbstractTableModel):
    """Rows of texts, kept as lists."""

    def __init__(self, rows):
        super().__init__()
        self.rows = [list(row) for row in rows]

    def rowCount(self, parent=QModelIndex()):
        return 0 if parent.isValid() else len(self.rows)

    def columnCount(self, parent=QModelIndex()):
        return 0 if parent.isValid() else len(self.rows[0])

    def data(self, index, role=Qt.ItemDataRole.DisplayRole):
        if role in (Qt.ItemDataRole.DisplayRole, Qt.ItemDataRole.EditRole):
            return self.rows[index.row()][index.column()]
        return None

    def insert_above(self, rows):
        self.beginInsertRows(QModelIndex(), 0, len(rows) - 1)
        self.rows[:0] = [list(row) for row in rows]
        self.endInsertRows()

    def remove_above(self, count):
        self.beginRemoveRows(QModelIndex(), 0, count - 1)
        del self.rows[:count]
        self.endRemoveRows()


@pytest.fixture(scope="session")
def app():
    QLocale.setDefault(QLocale.c())
    yield QApplication.instance() or QApplication(["tests"])


@pytest.fixture
def lines():
    """500 rows "row N" and "odd" or "even"."""
    return Lines([f"row {n}", "odd" if n % 2 else "even"] for n in range(500))


@pytest.fixture
def view(app, lines):
    """Shown, with these rows; ten of them fit."""
    table = vantix.QTableFastView()
    table.setModel(lines)
    table.setRowHeight(20)
    table.resize(400, 230)
    table.show()
    app.processEvents()
    yield table
    table.close()
