// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "sidebyside.h"

#include "activation.h"
#include "viewpictures.h"

#include <QApplication>
#include <QBackingStore>
#include <QHBoxLayout>
#include <QPainter>
#include <QPixmapCache>
#include <QScrollBar>
#include <QTableView>
#include <QTest>
#include <QTreeView>
#include <QVBoxLayout>
#include <QWheelEvent>

#include <algorithm>
#include <cstdlib>
#include <map>
#include <utility>

namespace {

//! A point of the viewport where every row on screen has a cell.
int firstX(const QAbstractItemView &view)
{
    return view.isRightToLeft() ? view.viewport()->width() - 1 : 0;
}

//! Column 0 of all rows that are seen whole.
QModelIndexList wholeRows(const QAbstractItemView &view)
{
    QModelIndexList rows;
    const int height = view.viewport()->height();
    for (int y = 0; y < height;) {
        const QModelIndex index = view.indexAt(QPoint(firstX(view), y));
        if (!index.isValid())
            break;
        const QRect rect = view.visualRect(index);
        const QModelIndex row = index.siblingAtColumn(0);
        if (rect.top() >= 0 && rect.bottom() < height && (rows.isEmpty() || rows.last() != row))
            rows.append(row);
        y = std::max(rect.bottom(), y) + 1; // Qt's rectangles may lack the line of the grid
    }
    return rows;
}

QString nameOf(const QModelIndex &index)
{
    if (!index.isValid())
        return QStringLiteral("none");
    QString name = QString::number(index.row());
    for (QModelIndex parent = index.parent(); parent.isValid(); parent = parent.parent())
        name.prepend(QStringLiteral("%1/").arg(parent.row()));
    return name + QLatin1Char(' ') + index.siblingAtColumn(0).data().toString();
}

//! Rows as in "3-5 9", of ranges in any order that may overlap.
QString mergedRows(QList<std::pair<int, int>> ranges)
{
    std::sort(ranges.begin(), ranges.end());
    QStringList texts;
    for (qsizetype i = 0; i < ranges.size();) {
        int last = ranges.at(i).second;
        const int first = ranges.at(i).first;
        while (++i < ranges.size() && ranges.at(i).first <= last + 1)
            last = std::max(last, ranges.at(i).second);
        texts.append(first == last ? QString::number(first)
                                   : QStringLiteral("%1-%2").arg(first).arg(last));
    }
    return texts.join(QLatin1Char(' '));
}

//! The rows selected; as in "1-2: 3-5" if not in all columns.
QString selectionOf(const QAbstractItemView &view)
{
    std::map<int, QList<std::pair<int, int>>> ofColumns;
    QStringList children;
    const QItemSelection selection = view.selectionModel()->selection();
    for (const QItemSelectionRange &range : selection) {
        if (range.parent().isValid()) {
            children.append(nameOf(range.topLeft()) + QLatin1Char('-')
                            + nameOf(range.bottomRight()));
            continue;
        }
        for (int column = range.left(); column <= range.right(); ++column)
            ofColumns[column].append({range.top(), range.bottom()});
    }
    children.sort();
    std::map<QString, QList<std::pair<int, int>>> columnsByRows;
    for (const auto &[column, rows] : ofColumns)
        columnsByRows[mergedRows(rows)].append({column, column});
    const QString all = mergedRows({{0, view.model()->columnCount() - 1}});
    QStringList texts;
    for (const auto &[rows, columns] : columnsByRows) {
        const QString which = mergedRows(columns);
        texts.append(which == all ? rows : which + QStringLiteral(": ") + rows);
    }
    return (texts + children).join(QStringLiteral(", "));
}

//! The columns on screen, as in "2@0+100" for one of 100 pixels at the left edge.
QString columnsShown(const QAbstractItemView &view)
{
    const QHeaderView *header = columnsOf(view);
    QStringList texts;
    for (int visual = 0; visual < header->count(); ++visual) {
        const int column = header->logicalIndex(visual);
        const int x = header->sectionViewportPosition(column);
        const int width = header->sectionSize(column);
        if (header->isSectionHidden(column) || x + width <= 0 || x >= view.viewport()->width())
            continue;
        texts.append(QStringLiteral("%1@%2+%3").arg(column).arg(x).arg(width));
    }
    return texts.join(QLatin1Char(' '));
}

//! Where two pictures differ. Gradients that are painted in parts are rounded otherwise.
QRect differenceOf(const QImage &a, const QImage &b)
{
    QRect wrong;
    if (a == b)
        return wrong;
    const auto isFar = [](int x, int y) { return std::abs(x - y) > 1; };
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            const QRgb p = a.pixel(x, y);
            const QRgb q = b.pixel(x, y);
            if (isFar(qRed(p), qRed(q)) || isFar(qGreen(p), qGreen(q)) || isFar(qBlue(p), qBlue(q)))
                wrong |= QRect(x, y, 1, 1);
        }
    }
    return wrong;
}

QPoint cellOnScreen(const QAbstractItemView &view, int row, int column)
{
    const QModelIndex index =
        wholeRows(view).value(row).siblingAtColumn(column); // invalid: outside of everything
    const QRect cell = view.visualRect(index);
    return index.isValid() ? cell.center() : QPoint(cell.left(), view.viewport()->height() - 1);
}

void sendMouse(QWidget *widget, QEvent::Type type, const QPoint &at)
{
    const bool isPressed = type != QEvent::MouseButtonRelease;
    QMouseEvent event(type, at, widget->mapToGlobal(at),
                      type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton,
                      isPressed ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(widget, &event);
}

void drag(QWidget *widget, const QPoint &from, const QPoint &to)
{
    sendMouse(widget, QEvent::MouseButtonPress, from);
    for (int part = 1; part <= 4; ++part)
        sendMouse(widget, QEvent::MouseMove, from + (to - from) * part / 4);
    sendMouse(widget, QEvent::MouseButtonRelease, to);
}

//! The edge of a column where it is resized.
QPoint edgeOf(const QHeaderView &header, int column)
{
    const int x = header.sectionViewportPosition(column);
    return {header.isRightToLeft() ? x + 1 : x + header.sectionSize(column) - 2,
            header.height() / 2};
}

QPoint middleOf(const QHeaderView &header, int column)
{
    return {header.sectionViewportPosition(column) + header.sectionSize(column) / 2,
            header.height() / 2};
}

//! The widget with the focus if it is inside of \a view.
QWidget *focusIn(const QAbstractItemView &view)
{
    QWidget *focus = QApplication::focusWidget();
    return focus && view.isAncestorOf(focus) ? focus : nullptr;
}

} // namespace

QHeaderView *columnsOf(const QAbstractItemView &view)
{
    if (const auto *fast = qobject_cast<const QTableFastView *>(&view))
        return fast->header();
    if (const auto *table = qobject_cast<const QTableView *>(&view))
        return table->horizontalHeader();
    const auto *tree = qobject_cast<const QTreeView *>(&view);
    return tree ? tree->header() : nullptr;
}

void settle(const QAbstractItemView &view)
{
    for (int rows = -1; rows != view.model()->rowCount();) {
        rows = view.model()->rowCount();
        settleEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); // editors
    }
}

// ProgramView

QImage ProgramView::paintedAnew()
{
    const bool isBuffered = std::exchange(m_usePixmapCacheIndexed, false);
    QPixmapCache::clear(); // a picture kept under a wrong key would be right here as well
    QImage picture(window()->size(), QImage::Format_RGB32);
    window()->render(&picture);
    m_usePixmapCacheIndexed = isBuffered;
    return picture.copy(QRect(mapTo(window(), QPoint(0, 0)), size()));
}

// SideBySide

SideBySide::SideBySide(ProgramView *ours, QAbstractItemView *peer, QList<Difference> expected)
    : m_ourColumn(new QVBoxLayout)
    , m_peerColumn(new QVBoxLayout)
    , m_ours(ours)
    , m_peer(peer)
    , m_expected(std::move(expected))
{
    // Views scroll to a cell that was clicked once no double click may follow: never here.
    QApplication::setDoubleClickInterval(24 * 60 * 60 * 1000);
    auto *layout = new QHBoxLayout(this);
    layout->addLayout(m_ourColumn);
    layout->addLayout(m_peerColumn);
    m_ourColumn->addWidget(ours);
    m_peerColumn->addWidget(peer);
    peer->setVerticalScrollBarPolicy(ours->verticalScrollBarPolicy());
    peer->setHorizontalScrollBarPolicy(ours->horizontalScrollBarPolicy());
    peer->setHorizontalScrollMode(ours->horizontalScrollMode());
    // Headers go on scrolling for a while after a section was dragged near an edge.
    ours->header()->setAutoScroll(false);
    QHeaderView *columns = columnsOf(*peer);
    columns->setAutoScroll(false);
    columns->setSectionsMovable(true);
    columns->setStretchLastSection(false);
    columns->setDefaultAlignment(ours->header()->defaultAlignment());
    columns->setHighlightSections(false);
    columns->setResizeContentsPrecision(0); // as ours: what is on screen counts
    compareToo(QStringLiteral("first"),
               [](QAbstractItemView &view) { return nameOf(wholeRows(view).value(0)); });
    compareToo(QStringLiteral("last"), [](QAbstractItemView &view) {
        const QModelIndexList rows = wholeRows(view);
        return nameOf(rows.isEmpty() ? QModelIndex() : rows.last());
    });
    compareToo(QStringLiteral("columns"), columnsShown);
    compareToo(QStringLiteral("current"), [](QAbstractItemView &view) {
        const QModelIndex current = view.currentIndex();
        return nameOf(current) + QStringLiteral(", column %1").arg(current.column());
    });
    compareToo(QStringLiteral("selected"), selectionOf);
    compareToo(QStringLiteral("rows"),
               [](QAbstractItemView &view) { return QString::number(view.model()->rowCount()); });
}

void SideBySide::addBelow(const QAbstractItemView &view, QWidget *widget)
{
    (&view == m_ours ? m_ourColumn : m_peerColumn)->addWidget(widget);
}

void SideBySide::compareToo(const QString &name, Field value)
{
    m_fields.append({name, std::move(value)});
}

void SideBySide::showWith(int rows, int rest)
{
    const QSize wanted(460, rows * m_ours->rowHeight() + rest);
    show();
    activate(this);
    settleEvents();
    for (QAbstractItemView *view : {static_cast<QAbstractItemView *>(m_ours), m_peer})
        view->setFixedSize(view->size() + wanted - view->viewport()->size());
    settle(*m_ours);
    settle(*m_peer);
    if (m_ours->viewport()->size() != wanted || m_peer->viewport()->size() != wanted)
        report(QStringLiteral("the viewports do not have the size that was wanted"));
    m_peer->setFocus(); // a view that gets the focus makes a cell current
    m_ours->setFocus();
    settleEvents();
    check(QStringLiteral("show"));
}

void SideBySide::both(const QString &name, const Step &step)
{
    for (QAbstractItemView *view : {static_cast<QAbstractItemView *>(m_ours), m_peer}) {
        step(*view);
        settle(*view);
    }
    check(name);
}

void SideBySide::mine(const QString &name, const Step &step)
{
    step(*m_ours);
    settle(*m_ours);
    comparePictures(name);
}

void SideBySide::once(const QString &name, const std::function<void()> &step)
{
    step();
    settle(*m_ours);
    settle(*m_peer);
    check(name);
}

QStringList SideBySide::problems()
{
    for (const Difference &difference : std::as_const(m_expected)) {
        report(QStringLiteral("%1: %2 was to differ and did not")
                   .arg(difference.step, difference.field));
    }
    m_expected.clear();
    return m_problems;
}

void SideBySide::check(const QString &step)
{
    comparePictures(step);
    compareStates(step);
}

void SideBySide::report(const QString &problem)
{
    qWarning("%s", qUtf8Printable(problem));
    m_problems.append(problem);
}

void SideBySide::compareStates(const QString &step)
{
    bool isSame = true;
    for (const auto &[field, value] : std::as_const(m_fields)) {
        if (m_isPlaceIgnored && (field == QLatin1String("first") || field == QLatin1String("last")))
            continue;
        const QString ours = value(*m_ours);
        const QString theirs = value(*m_peer);
        const auto it = std::find_if(m_expected.begin(), m_expected.end(),
                                     [&, name = field](const Difference &difference) {
                                         return difference.step == step && difference.field == name;
                                     });
        const bool isExpected = it != m_expected.end();
        isSame = isSame && ours == theirs;
        if (ours != (isExpected ? it->ours : theirs) || (isExpected && ours == theirs)) {
            report(
                QStringLiteral("%1: %2 is \"%3\", in Qt's view \"%4\"%5")
                    .arg(step, field, ours, theirs,
                         isExpected ? QStringLiteral(", to be \"%1\"").arg(it->ours) : QString()));
        }
        if (isExpected)
            m_expected.erase(it);
    }
    if (!isSame)
        alignPeer();
}

void SideBySide::comparePictures(const QString &step)
{
    const auto *onScreen = static_cast<const QImage *>(backingStore()->paintDevice());
    QImage kept = onScreen->copy(m_ours->geometry()).convertToFormat(QImage::Format_RGB32);
    QImage anew = m_ours->paintedAnew();
    // Qt's headers leave lines of former selections behind in right-to-left.
    for (QImage *picture : {&kept, &anew})
        QPainter(picture).fillRect(m_ours->header()->geometry(), Qt::black);
    const QRect wrong = differenceOf(kept, anew);
    if (wrong.isNull())
        return;
    report(QStringLiteral("%1: the picture is wrong from %2, %3 over %4 by %5 pixels")
               .arg(step)
               .arg(wrong.x())
               .arg(wrong.y())
               .arg(wrong.width())
               .arg(wrong.height()));
}

//! Puts Qt's view where ours stands, as far as the models have the same rows.
void SideBySide::alignPeer()
{
    QAbstractItemModel *model = m_peer->model();
    const auto there = [&](const QModelIndex &index) {
        return index.isValid() && !index.parent().isValid()
            ? model->index(index.row(), index.column())
            : QModelIndex();
    };
    QItemSelection selection;
    const QItemSelection selected = m_ours->selectionModel()->selection();
    for (const QItemSelectionRange &range : selected)
        selection.select(there(range.topLeft()), there(range.bottomRight()));
    m_peer->selectionModel()->setCurrentIndex(there(m_ours->currentIndex()),
                                              QItemSelectionModel::NoUpdate);
    m_peer->selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    settle(*m_peer);
    m_peer->verticalScrollBar()->setValue(m_ours->verticalScrollBar()->value());
    m_peer->horizontalScrollBar()->setValue(m_ours->horizontalScrollBar()->value());
    settle(*m_peer);
}

// Steps

SideBySide::Step inTurn(const QList<SideBySide::Step> &steps)
{
    return [=](QAbstractItemView &view) {
        for (const SideBySide::Step &step : steps) {
            step(view);
            settle(view);
        }
    };
}

SideBySide::Step pressKey(Qt::Key key, Qt::KeyboardModifiers modifiers, int times)
{
    return [=](QAbstractItemView &view) {
        view.setFocus();
        for (int i = 0; i < times; ++i)
            QTest::keyClick(&view, key, modifiers);
    };
}

SideBySide::Step typeText(const QString &text)
{
    return [=](QAbstractItemView &view) {
        for (const QChar character : text) { // the first one may open an editor
            QWidget *editor = focusIn(view);
            QTest::keyClicks(editor ? editor : &view, QString(character));
        }
    };
}

SideBySide::Step pressKeyInEditor(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    return [=](QAbstractItemView &view) {
        if (QWidget *editor = focusIn(view))
            QTest::keyClick(editor, key, modifiers);
        else
            qWarning("no editor is open");
    };
}

SideBySide::Step clickCell(int row, int column, Qt::KeyboardModifiers modifiers)
{
    return [=](QAbstractItemView &view) {
        view.setFocus();
        QTest::mouseClick(view.viewport(), Qt::LeftButton, modifiers,
                          cellOnScreen(view, row, column));
    };
}

SideBySide::Step doubleClickCell(int row, int column)
{
    return [=](QAbstractItemView &view) {
        view.setFocus();
        const QPoint at = cellOnScreen(view, row, column);
        QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::NoModifier, at);
        QTest::mouseDClick(view.viewport(), Qt::LeftButton, Qt::NoModifier, at);
    };
}

SideBySide::Step dragOver(int fromRow, int toRow, int column)
{
    return [=](QAbstractItemView &view) {
        view.setFocus();
        drag(view.viewport(), cellOnScreen(view, fromRow, column),
             cellOnScreen(view, toRow, column));
    };
}

SideBySide::Step turnWheel(int notches, bool isHorizontal)
{
    return [=](QAbstractItemView &view) {
        const QPoint at = view.viewport()->rect().center();
        const QPoint angle = isHorizontal ? QPoint(-120 * notches, 0) : QPoint(0, -120 * notches);
        QWheelEvent event(at, view.viewport()->mapToGlobal(at), QPoint(), angle, Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(view.viewport(), &event);
    };
}

SideBySide::Step dragSlider(double part)
{
    return [=](QAbstractItemView &view) {
        QScrollBar *bar = view.verticalScrollBar();
        bar->setSliderDown(true);
        bar->setSliderPosition(int(part * bar->maximum()));
        bar->setSliderDown(false);
    };
}

SideBySide::Step clickHeader(int column)
{
    return [=](QAbstractItemView &view) {
        const QHeaderView *header = columnsOf(view);
        QTest::mouseClick(header->viewport(), Qt::LeftButton, Qt::NoModifier,
                          middleOf(*header, column));
    };
}

SideBySide::Step dragColumn(int column, int onto)
{
    return [=](QAbstractItemView &view) {
        const QHeaderView *header = columnsOf(view);
        const QPoint from = middleOf(*header, column);
        const QPoint to = middleOf(*header, onto);
        drag(header->viewport(), from, to + QPoint(from.x() < to.x() ? 8 : -8, 0));
    };
}

SideBySide::Step dragColumnEdge(int column, int by)
{
    return [=](QAbstractItemView &view) {
        const QHeaderView *header = columnsOf(view);
        const QPoint edge = edgeOf(*header, column);
        drag(header->viewport(), edge, edge + QPoint(by, 0));
    };
}

SideBySide::Step doubleClickColumnEdge(int column)
{
    return [=](QAbstractItemView &view) {
        const QHeaderView *header = columnsOf(view);
        QTest::mouseDClick(header->viewport(), Qt::LeftButton, Qt::NoModifier,
                           edgeOf(*header, column));
    };
}
