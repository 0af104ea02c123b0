# SPDX-FileCopyrightText: The vantix authors
# SPDX-License-Identifier: MIT
"""Table views for models of any size, a search panel, line edits and packed decimals.

The classes are those of the C++ library, whose headers tell what each function does.
Widgets are used in the thread of the QApplication.
"""

from ._vantix import (
    AbstractFindToolBar,
    AbstractItemViewFind,
    FancyLineEdit,
    FilterLineEdit,
    IconButton,
    ItemDelegate,
    ItemViewFindToolBar,
    QProgressIndicator,
    QTableFastScrollBar,
    QTableFastView,
    SortFilterProxyModel,
    StyledItemDelegate,
    getVisibleColumns,
    installTranslations,
)
from .decimals import Decimal, Rounding, Status

__all__ = [
    "AbstractFindToolBar",
    "AbstractItemViewFind",
    "Decimal",
    "FancyLineEdit",
    "FilterLineEdit",
    "IconButton",
    "ItemDelegate",
    "ItemViewFindToolBar",
    "QProgressIndicator",
    "QTableFastScrollBar",
    "QTableFastView",
    "Rounding",
    "SortFilterProxyModel",
    "Status",
    "StyledItemDelegate",
    "getVisibleColumns",
    "installTranslations",
]
