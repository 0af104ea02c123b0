// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "viewertable.h"

#include "basics/contrast.h"
#include "basics/sourceindex.h"
#include "basics/textfont.h"
#include "files/loglevel.h"
#include "files/textfilemodel.h"
#include "framestatistics.h"
#include "shorttextdelegate.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QStyle>
#include <QWheelEvent>

#include <cmath>
#include <utility>

namespace {

constexpr int s_widestColumn = 400;        // logical pixels, for a start
constexpr int s_widestLastColumn = 500000; // logical pixels: the longest text of a row
constexpr qsizetype s_measuredText = 1000; // characters
constexpr int s_markWidth = 4;             // logical pixels
constexpr double s_smallestText = 4;       // points
constexpr double s_largestText = 72;

} // namespace

ViewerTable::ViewerTable(FrameStatistics *statistics, QWidget *parent)
    : FrozenColumnView(parent)
    , m_delegate(new ShortTextDelegate(this))
    , m_statistics(statistics)
{
    setItemDelegate(m_delegate);
    setRowHeightFollowsFont(true);
    setFollowsCurrentRow(false);
    setStandardKeys(true);
    setSelectsVisualRanges(true);
    setPaintBufferEnabled(true);
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setFrameShape(NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setTextElideMode(Qt::ElideRight);
    header()->setSectionsMovable(true);
    updateHighlight();
    // What is at the edge does not move along with the columns.
    connect(horizontalScrollBar(), &QScrollBar::valueChanged, this, [this] {
        if (m_areMarksPainted)
            viewport()->update();
    });
}

void ViewerTable::setMarked(const TextMatcher &matcher, const QList<int> &columns)
{
    m_delegate->setMarked(matcher, columns);
    repaintCells();
}

void ViewerTable::setColorRules(const ColorRules &rules)
{
    m_delegate->setColorRules(rules);
    repaintCells();
}

//! Also those that the buffer holds.
void ViewerTable::repaintCells()
{
    const bool isBuffered = isPaintBufferEnabled();
    setPaintBufferEnabled(false);
    setPaintBufferEnabled(isBuffered);
    viewport()->update();
}

void ViewerTable::setRowMarks(std::function<bool(int row)> isMarked)
{
    m_isRowMarked = std::move(isMarked);
    viewport()->update();
}

void ViewerTable::setRowWarnings(std::function<bool(int row)> isWarned)
{
    m_isRowWarned = std::move(isWarned);
    viewport()->update();
}

//! Over the cells in \a area, which are kept as pictures without them.
void ViewerTable::paintRowMarks(const QRect &area)
{
    if ((!m_isRowMarked && !m_isRowWarned) || !model())
        return;
    QPainter painter(viewport());
    const QColor base = palette().color(QPalette::Base);
    const QColor warning = readable(levelColor(LogLevel::Warning), base, visibleContrast);
    int place = 0;
    const auto paint = [&](int top, const QColor &color) {
        const int left = isRightToLeft() ? viewport()->width() - place - s_markWidth : place;
        painter.fillRect(left, top, s_markWidth, rowHeight(), color);
        place += s_markWidth;
        m_areMarksPainted = true;
    };
    const QList<int> rows = rowsAt(area);
    for (const int row : rows) {
        place = 0;
        if (m_isRowMarked && m_isRowMarked(row))
            paint(rowViewportPosition(row), rowMarkColor(base));
        if (m_isRowWarned && m_isRowWarned(row))
            paint(rowViewportPosition(row), warning);
    }
}

void ViewerTable::useTextFont()
{
    m_hasTextFont = true;
    m_usualSize = 0;
    setFont(TextFont::font());
    m_widest.clear();
    growColumns();
}

void ViewerTable::zoom(int points)
{
    QFont larger = font();
    const double size = QFontInfo(larger).pointSizeF();
    if (m_usualSize == 0)
        m_usualSize = size;
    larger.setPointSizeF(qBound(s_smallestText, size + points, s_largestText));
    setFont(larger);
    m_widest.clear();
    growColumns();
}

void ViewerTable::resetZoom()
{
    if (m_usualSize == 0)
        return;
    QFont usual = font();
    usual.setPointSizeF(std::exchange(m_usualSize, 0));
    setFont(usual);
    m_widest.clear();
    growColumns();
}

void ViewerTable::wheelEvent(QWheelEvent *event)
{
    if (!(event->modifiers() & Qt::ControlModifier)) {
        FrozenColumnView::wheelEvent(event);
        return;
    }
    constexpr int step = QWheelEvent::DefaultDeltasPerStep;
    m_wheel += event->angleDelta().y();
    if (m_wheel / step != 0)
        zoom(m_wheel / step);
    m_wheel %= step;
    event->accept();
}

void ViewerTable::updateHighlight()
{
    QPalette palette = withReadableHighlights(QApplication::palette(this));
    palette.setResolveMask(0);
    for (const QPalette::ColorGroup group :
         {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        palette.setColor(group, QPalette::Highlight, palette.color(group, QPalette::Highlight));
    }
    setPalette(palette);
}

bool ViewerTable::event(QEvent *event)
{
    if (event->type() == QEvent::ApplicationPaletteChange)
        updateHighlight();
    return FrozenColumnView::event(event);
}

void ViewerTable::keyboardSearch(const QString &text)
{
    Q_EMIT typed(text);
}

void ViewerTable::keyPressEvent(QKeyEvent *event)
{
    const QPersistentModelIndex before = currentIndex();
    FrozenColumnView::keyPressEvent(event);
    selectFarEnd(*event, before);
    if (currentIndex().isValid() && currentIndex().row() != before.row())
        Q_EMIT rowReached();
}

//! Item views only move to the ends with Ctrl. Who goes to the end of a text copies that
//! row next, or with Shift all rows from \a before on.
void ViewerTable::selectFarEnd(const QKeyEvent &event, const QModelIndex &before)
{
    const QModelIndex current = currentIndex();
    const bool isFarEnd = event.key() == Qt::Key_Home || event.key() == Qt::Key_End;
    if (!isFarEnd || !(event.modifiers() & Qt::ControlModifier) || !current.isValid())
        return;
    const bool extends = event.modifiers().testFlag(Qt::ShiftModifier) && before.isValid();
    const auto command =
        extends ? QItemSelectionModel::Select : QItemSelectionModel::ClearAndSelect;
    selectionModel()->select(extends ? QItemSelection(before, current)
                                     : QItemSelection(current, current),
                             command | QItemSelectionModel::Rows);
}

void ViewerTable::mousePressEvent(QMouseEvent *event)
{
    FrozenColumnView::mousePressEvent(event);
    if (indexAt(event->pos()).isValid())
        Q_EMIT rowPressed();
}

void ViewerTable::setModel(QAbstractItemModel *model)
{
    currentFirst = false;
    currentLast = false;
    FrozenColumnView::setModel(model);
    freezeLineNumbers();
}

void ViewerTable::modelReset()
{
    FrozenColumnView::modelReset();
    freezeLineNumbers();
}

bool ViewerTable::hasLineNumbers() const
{
    const auto *file = qobject_cast<const TextFileModel *>(sourceModel(model()));
    return file && file->isLineNumber(0);
}

void ViewerTable::setKeepsLineNumbers(bool on)
{
    m_keepsLineNumbers = on;
    freezeLineNumbers();
}

void ViewerTable::freezeLineNumbers()
{
    setFrozenColumn(m_keepsLineNumbers && hasLineNumbers() ? 0 : -1);
}

void ViewerTable::paintEvent(QPaintEvent *event)
{
    QElapsedTimer timer;
    timer.start();
    m_delegate->forgetRows();
    const QModelIndex top = model() ? model()->index(firstSeenRow(), 0) : QModelIndex();
    if (m_frames.add(top, viewport()->height() / qMax(m_itemHeight, 1)))
        choosePaintBuffer();
    FrozenColumnView::paintEvent(event);
    if (event->rect() == viewport()->rect())
        m_areMarksPainted = false;
    paintRowMarks(event->rect());
    m_statistics->add(timer.nsecsElapsed());
    m_hasPaintedRows = m_hasPaintedRows || (model() && model()->rowCount() > 0);
}

void ViewerTable::resizeEvent(QResizeEvent *event)
{
    FrozenColumnView::resizeEvent(event);
    growColumns();
}

void ViewerTable::updateGeometries()
{
    QScrollBar *bar = verticalScrollBar();
    const bool isAtEnd = bar->value() == bar->maximum() && bar->maximum() > bar->minimum();
    const int page = bar->pageStep();
    const QScopedValueRollback fitting(m_isFitting, true);
    FrozenColumnView::updateGeometries();
    if (isAtEnd && bar->pageStep() != page)
        bar->setValue(bar->maximum());
}

// Unlike other item views, this one does not make a row current that nobody chose:
// with the current index at an edge the selection would follow the new rows.
void ViewerTable::focusInEvent(QFocusEvent *event)
{
    if (currentIndex().isValid())
        FrozenColumnView::focusInEvent(event);
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

void ViewerTable::fitColumn(int column)
{
    m_widest.remove(column);
    m_given.insert(column, header()->sectionSize(column));
    growColumn(column, 0, s_widestColumn);
    growColumns();
}

void ViewerTable::setColumnAlignment(int column, Qt::Alignment alignment)
{
    m_delegate->setAlignment(column, alignment);
    repaintCells();
}

Qt::Alignment ViewerTable::columnAlignment(int column) const
{
    return m_delegate->alignment(column);
}

bool ViewerTable::hasDigitGroups(int column) const
{
    return m_delegate->isGrouped(column);
}

void ViewerTable::setDigitGroups(int column, bool on)
{
    if (on == hasDigitGroups(column))
        return;
    m_delegate->setGrouped(column, on);
    repaintCells();
    m_widest.remove(column);
    growColumns();
}

QList<int> ViewerTable::groupedColumns() const
{
    QList<int> columns;
    for (int column = 0; column < header()->count(); ++column) {
        if (hasDigitGroups(column))
            columns.append(column);
    }
    return columns;
}

QString ViewerTable::shownText(int row, int column) const
{
    const QString text = model()->index(row, column).data().toString();
    return m_delegate->shownText(column, text, locale());
}

//! Width of the column's longest text on screen, margins included.
int ViewerTable::textWidth(int column) const
{
    const int first = getFirstVisibleItem();
    if (first < 0)
        return 0;
    const int visible = viewport()->height() / qMax(m_itemHeight, 1);
    const int last = qMin(first + visible, model()->rowCount() - 1);
    int widest = 0;
    for (int row = first; row <= last; ++row)
        widest = qMax(widest, measured(shownText(row, column)));
    return widest + fontMetrics().height();
}

//! Width of \a text; of a very long one it is an estimate.
int ViewerTable::measured(const QString &text) const
{
    if (text.size() <= s_measuredText)
        return fontMetrics().horizontalAdvance(text);
    const QFontMetricsF metrics(font());
    if (ShortTextDelegate::hasOneWidth(metrics, text))
        return int(std::ceil(metrics.horizontalAdvance(u'0') * double(text.size())));
    const double part = metrics.horizontalAdvance(text.left(s_measuredText));
    return int(part / s_measuredText * double(text.size()));
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
    // Pictures of such cells would be larger than all others together.
    m_arePicturesSmall = header()->sectionSize(column) <= ShortTextDelegate::widestPicture;
    choosePaintBuffer();
}

//! Where nothing comes back pictures of whole cells only cost; the delegate's, of texts, may do so
//! in other cells.
void ViewerTable::choosePaintBuffer()
{
    setPaintBufferEnabled(m_arePicturesSmall && !m_frames.areFresh());
}
