// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "viewertable.h"

#include "framestatistics.h"

#include <QElapsedTimer>
#include <QHeaderView>

namespace {

constexpr int s_widestColumn = 400;        // logical pixels, for a start
constexpr int s_widestLastColumn = 6000;   // logical pixels
constexpr qsizetype s_measuredText = 1000; // characters
constexpr int s_narrowestCharacter = 2;    // logical pixels

} // namespace

void ShortTextDelegate::initStyleOption(QStyleOptionViewItem *option,
                                        const QModelIndex &index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    // Somewhat more than fits, so that the style still sees a text to elide.
    const qsizetype shown =
        option->rect.isEmpty() ? s_measuredText : option->rect.width() / s_narrowestCharacter;
    option->text.truncate(qMax<qsizetype>(shown, 1));
}

ViewerTable::ViewerTable(FrameStatistics *statistics, QWidget *parent)
    : QTableFastView(parent)
    , m_statistics(statistics)
{
    setItemDelegate(new ShortTextDelegate(this));
    updateItemHeight();
    setPaintBufferEnabled(true);
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setFrameShape(NoFrame);
    setTextElideMode(Qt::ElideRight);
    header()->setSectionsMovable(true);
}

void ViewerTable::paintEvent(QPaintEvent *event)
{
    QElapsedTimer timer;
    timer.start();
    QTableFastView::paintEvent(event);
    m_statistics->add(timer.nsecsElapsed());
}

void ViewerTable::resizeEvent(QResizeEvent *event)
{
    QTableFastView::resizeEvent(event);
    growColumns();
}

void ViewerTable::fitColumns()
{
    if (!model())
        return;
    const int last = model()->columnCount() - 1;
    for (int column = 0; column < last; ++column) {
        const int wanted = qMax(sizeHintForColumn(column), header()->sectionSizeHint(column));
        header()->resizeSection(column, qMin(wanted, s_widestColumn));
    }
    m_widestText = 0;
    if (last >= 0)
        header()->resizeSection(last, header()->sectionSizeHint(last));
    growColumns();
}

//! Width of the column's longest text on screen, margins included.
int ViewerTable::textWidth(int column) const
{
    const int first = getFirstVisibleItem();
    if (first < 0)
        return 0;
    int last = itemAtCoordinate(viewport()->height() - 1);
    if (last < 0)
        last = model()->rowCount() - 1;
    const QFontMetrics metrics = fontMetrics();
    int widest = 0;
    for (int row = first; row <= last; ++row) {
        const QString text = model()->index(row, column).data().toString();
        widest = qMax(widest, metrics.horizontalAdvance(text.left(s_measuredText)));
    }
    return widest + metrics.height();
}

void ViewerTable::growColumns()
{
    if (!model() || header()->count() == 0)
        return;
    const int first = header()->logicalIndex(0);
    const int last = header()->logicalIndex(header()->count() - 1);
    if (first != last && header()->sectionSize(first) < s_widestColumn)
        header()->resizeSection(first, qMax(header()->sectionSize(first), textWidth(first)));
    m_widestText = qMax(m_widestText, qMin(textWidth(last), s_widestLastColumn));
    const int left = viewport()->width() - header()->sectionPosition(last);
    const int wanted = qMax(left, m_widestText);
    // A width that was not the user's choice may shrink with the viewport.
    if (wanted > header()->sectionSize(last) || header()->sectionSize(last) == m_filledWidth)
        header()->resizeSection(last, wanted);
    m_filledWidth = wanted;
}
