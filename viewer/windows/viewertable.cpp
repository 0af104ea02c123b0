// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "viewertable.h"

#include "framestatistics.h"

#include <QElapsedTimer>
#include <QHeaderView>
#include <QScrollBar>

namespace {

constexpr int s_widestColumn = 400;        // logical pixels, for a start
constexpr int s_widestLastColumn = 3000;   // logical pixels
constexpr qsizetype s_measuredText = 1000; // characters
constexpr int s_narrowestCharacter = 2;    // logical pixels

// Somewhat more than fits, so that there still is a text to elide.
qsizetype shownCharacters(const QRect &rect)
{
    return rect.isEmpty() ? s_measuredText
                          : qMax<qsizetype>(rect.width() / s_narrowestCharacter, 1);
}

} // namespace

ShortTextDelegate::ShortTextDelegate(QAbstractItemView *view)
    : Vantix::ItemDelegate(view)
{
    setDrawFrame(false);
}

void ShortTextDelegate::initStyleOption(QStyleOptionViewItem *option,
                                        const QModelIndex &index) const
{
    Vantix::ItemDelegate::initStyleOption(option, index);
    option->text.truncate(shownCharacters(option->rect));
}

void ShortTextDelegate::drawCustomText(QPainter *painter, const QStyleOptionViewItem &opt,
                                       const QVariant &value) const
{
    if (value.metaType() == QMetaType::fromType<QString>())
        Vantix::ItemDelegate::drawCustomText(painter, opt,
                                             value.toString().left(shownCharacters(opt.rect)));
    else
        Vantix::ItemDelegate::drawCustomText(painter, opt, value);
}

ViewerTable::ViewerTable(FrameStatistics *statistics, QWidget *parent)
    : QTableFastView(parent)
    , m_statistics(statistics)
{
    setItemDelegate(new ShortTextDelegate(this));
    setRowHeightFollowsFont(true);
    setFollowsCurrentRow(false);
    setPaintBufferEnabled(true);
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setFrameShape(NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setTextElideMode(Qt::ElideRight);
    header()->setSectionsMovable(true);
}

void ViewerTable::setModel(QAbstractItemModel *model)
{
    currentFirst = false;
    currentLast = false;
    QTableFastView::setModel(model);
}

void ViewerTable::paintEvent(QPaintEvent *event)
{
    QElapsedTimer timer;
    timer.start();
    QTableFastView::paintEvent(event);
    m_statistics->add(timer.nsecsElapsed());
    m_hasPaintedRows = m_hasPaintedRows || (model() && model()->rowCount() > 0);
}

void ViewerTable::resizeEvent(QResizeEvent *event)
{
    QTableFastView::resizeEvent(event);
    growColumns();
}

void ViewerTable::updateGeometries()
{
    QScrollBar *bar = verticalScrollBar();
    const bool isAtEnd = bar->value() == bar->maximum() && bar->maximum() > bar->minimum();
    const int page = bar->pageStep();
    QTableFastView::updateGeometries();
    if (isAtEnd && bar->pageStep() != page)
        bar->setValue(bar->maximum());
}

// Unlike other item views, this one does not make a row current that nobody chose:
// with the current index at an edge the selection would follow the new rows.
void ViewerTable::focusInEvent(QFocusEvent *event)
{
    if (currentIndex().isValid())
        QTableFastView::focusInEvent(event);
    else
        QAbstractScrollArea::focusInEvent(event);
}

void ViewerTable::fitColumns()
{
    m_widest.clear();
    m_given.clear();
    for (int column = 0; column < header()->count(); ++column)
        m_given.insert(column, header()->sectionSize(column));
    growColumns();
}

//! Width of the column's longest text on screen, margins included.
int ViewerTable::textWidth(int column) const
{
    const int first = getFirstVisibleItem();
    if (first < 0)
        return 0;
    const int visible = viewport()->height() / qMax(m_itemHeight, 1);
    const int last = qMin(first + visible, model()->rowCount() - 1);
    const QFontMetrics metrics = fontMetrics();
    int widest = 0;
    for (int row = first; row <= last; ++row) {
        const QString text = model()->index(row, column).data().toString();
        widest = qMax(widest, metrics.horizontalAdvance(text.left(s_measuredText)));
    }
    return widest + metrics.height();
}

//! Gives a column the width that it has needed so far, unless the user chose another.
void ViewerTable::growColumn(int column, int atLeast, int atMost)
{
    const int present = header()->sectionSize(column);
    if (m_given.value(column, present) != present)
        return;
    int &widest = m_widest[column];
    widest = qMax(widest, qMax(textWidth(column), header()->sectionSizeHint(column)));
    header()->resizeSection(column, qMax(atLeast, qMin(widest, atMost)));
    m_given.insert(column, header()->sectionSize(column));
}

void ViewerTable::growColumns()
{
    if (!model() || header()->count() == 0)
        return;
    const auto [from, to] = startAndEndColumns(viewport()->rect());
    const int last = header()->count() - 1;
    for (int visual = qMax(from, 0); visual <= qMin(to, last - 1); ++visual) {
        if (!header()->isSectionHidden(header()->logicalIndex(visual)))
            growColumn(header()->logicalIndex(visual), 0, s_widestColumn);
    }
    const int column = header()->logicalIndex(last);
    if (!header()->isSectionHidden(column))
        growColumn(column, viewport()->width() - header()->sectionPosition(column),
                   s_widestLastColumn);
}
