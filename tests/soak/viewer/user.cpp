// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "user.h"

#include "feed/feedwindow.h"
#include "files/textfilemodel.h"
#include "order/sortedrows.h"
#include "search/findpanel.h"
#include "search/tablefilter.h"
#include "windows/columnsort.h"
#include "windows/detailpane.h"
#include "windows/filewindow.h"
#include "windows/tabwindow.h"
#include "windows/viewertable.h"

#include <QAction>
#include <QApplication>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QLineEdit>
#include <QScrollBar>
#include <QTest>
#include <QToolButton>

#include <algorithm>

namespace {

constexpr int s_mostPages = 5;
constexpr int s_patience = 30000;      // ms for a file to be read
constexpr int s_patienceForStep = 500; // ms
constexpr qint64 s_compared = 3000000; // bytes of a file
const char *const s_hasHidden = "hasHidden";

//! Whether a model shows a line as the characters that its bytes are.
bool isPlain(QByteArrayView line)
{
    return line.size() < TextFileModel::maximumLineBytes
        && std::all_of(line.begin(), line.end(), [](char c) { return c >= ' ' && c <= '~'; });
}

} // namespace

User::User(quint32 seed)
    : m_random(seed)
{
    m_patience.setInterval(s_patienceForStep);
    QObject::connect(&m_patience, &QTimer::timeout, &m_patience, [this] { losePatience(); });
    for (int i = 0; i < 3; ++i) {
        const QString name = QStringLiteral("file%1.log").arg(i);
        m_files.push_back(std::make_unique<ChangingFile>(m_directory.filePath(name), &m_random));
    }
    open();
}

User::~User() = default;

//! A random page comes in front.
ViewerWindow *User::page()
{
    removeClosed();
    if (m_pages.empty())
        open();
    ViewerWindow *page = m_pages[std::size_t(m_random.bounded(int(m_pages.size())))].get();
    m_windows.windowOf(page)->setCurrent(page);
    return page;
}

void User::removeClosed()
{
    m_pages.erase(
        std::remove_if(m_pages.begin(), m_pages.end(),
                       [this](const auto &page) { return !m_windows.windowOf(page.get()); }),
        m_pages.end());
}

FormatRequest User::someFormat()
{
    FormatRequest request;
    if (m_random.bounded(2) == 0)
        request.delimiter = oneOf<QChar>({u'\0', u'\0', u',', u'\t', u' '});
    if (m_random.bounded(3) == 0)
        request.hasHeader = m_random.bounded(2) == 0;
    if (m_random.bounded(2) == 0)
        request.encoding =
            Encoding::named(oneOf<QString>({"utf-8", "utf-8", "latin-1", "utf-16le", "utf-32be"}));
    request.hasOlderFiles = m_random.bounded(4) == 0;
    return request;
}

QString User::open()
{
    if (m_pages.size() >= s_mostPages)
        return QStringLiteral("open nothing more");
    if (m_random.bounded(6) == 0) {
        m_pages.push_back(std::make_unique<FeedWindow>(
            2000, oneOf({FeedModel::NewRows::AtTop, FeedModel::NewRows::AtEnd}), &m_statistics));
    } else {
        const QString path = m_files[std::size_t(m_random.bounded(int(m_files.size())))]->path();
        m_pages.push_back(std::make_unique<FileWindow>(path, someFormat(), &m_statistics));
    }
    m_windows.add(m_pages.back().get());
    return QStringLiteral("open ") + m_pages.back()->windowTitle();
}

QString User::changePages()
{
    switch (m_random.bounded(6)) {
    case 0:
        page()->close();
        return QStringLiteral("close a page");
    case 1:
        m_windows.detach(page());
        return QStringLiteral("detach");
    case 2:
        m_windows.join(page());
        return QStringLiteral("join");
    case 3:
        page()->window()->resize(200 + m_random.bounded(900), 100 + m_random.bounded(700));
        return QStringLiteral("resize");
    default:
        return open();
    }
}

QString User::pressKey()
{
    const auto key = oneOf({Qt::Key_Up, Qt::Key_Down, Qt::Key_Left, Qt::Key_Right, Qt::Key_PageUp,
                            Qt::Key_PageDown, Qt::Key_Home, Qt::Key_End, Qt::Key_Tab, Qt::Key_Space,
                            Qt::Key_Escape, Qt::Key_Return, Qt::Key_E, Qt::Key_1, Qt::Key_A,
                            Qt::Key_Backspace, Qt::Key_F3, Qt::Key_F6});
    const auto modifier =
        oneOf({Qt::NoModifier, Qt::NoModifier, Qt::ShiftModifier, Qt::ControlModifier});
    ViewerWindow *const pressed = page();
    QWidget *focus = m_random.bounded(3) > 0 ? nullptr : pressed->window()->focusWidget();
    QTest::keyClick(focus ? focus : pressed->table(), key, modifier);
    return QStringLiteral("press %1").arg(QKeySequence(int(modifier) | int(key)).toString());
}

QString User::useMouse()
{
    ViewerTable *table = page()->table();
    QWidget *viewport = table->viewport();
    const QPoint place(m_random.bounded(viewport->width() + 1),
                       m_random.bounded(viewport->height() + 1));
    switch (m_random.bounded(4)) {
    case 0: {
        QScrollBar *bar = oneOf(
            {table->verticalScrollBar(), table->verticalScrollBar(), table->horizontalScrollBar()});
        bar->setValue(oneOf({bar->minimum(), bar->maximum(), bar->value() + 3, bar->value() - 3,
                             m_random.bounded(bar->minimum(), bar->maximum() + 1)}));
        return QStringLiteral("scroll");
    }
    case 1:
        QTest::mouseDClick(viewport, Qt::LeftButton, Qt::NoModifier, place);
        return QStringLiteral("double click");
    case 2: {
        QTest::mousePress(viewport, Qt::LeftButton, Qt::NoModifier, place);
        QApplication::processEvents();
        const QPoint end(m_random.bounded(viewport->width() + 1),
                         m_random.bounded(viewport->height() + 1));
        QTest::mouseMove(viewport, end);
        QTest::mouseRelease(viewport, Qt::LeftButton, Qt::NoModifier, end);
        return QStringLiteral("drag");
    }
    default:
        QTest::mouseClick(viewport, Qt::LeftButton,
                          oneOf({Qt::NoModifier, Qt::ShiftModifier, Qt::ControlModifier}), place);
        return QStringLiteral("click");
    }
}

QString User::changeColumns()
{
    ViewerWindow *changed = page();
    ViewerTable *table = changed->table();
    QHeaderView *header = table->header();
    if (header->count() == 0)
        return QStringLiteral("no columns");
    const int column = m_random.bounded(header->count());
    switch (m_random.bounded(7)) {
    case 0:
        header->setSectionHidden(column, !header->isSectionHidden(column));
        changed->setProperty(s_hasHidden, true);
        return QStringLiteral("hide or show a column");
    case 1:
        header->moveSection(m_random.bounded(header->count()), column);
        return QStringLiteral("move a column");
    case 2:
        table->fitColumn(column);
        return QStringLiteral("fit a column");
    case 3:
        table->setColumnAlignment(
            column, oneOf<Qt::Alignment>({Qt::Alignment(), Qt::AlignRight, Qt::AlignHCenter}));
        return QStringLiteral("align a column");
    case 4:
    case 5:
        changed->findChild<ColumnSort *>()->sortBy(
            oneOf({-1, column, column}), oneOf({Qt::AscendingOrder, Qt::DescendingOrder}));
        return QStringLiteral("sort");
    default:
        header->resizeSection(column, m_random.bounded(500));
        return QStringLiteral("resize a column");
    }
}

QString User::changeLook()
{
    ViewerWindow *changed = page();
    switch (m_random.bounded(5)) {
    case 0:
        changed->table()->zoomIn();
        return QStringLiteral("zoom in");
    case 1:
        changed->table()->zoomOut();
        return QStringLiteral("zoom out");
    case 2:
        changed->table()->resetZoom();
        return QStringLiteral("reset zoom");
    case 3:
        changed->rowPane()->setVisible(!changed->rowPane()->isVisible());
        return QStringLiteral("row pane");
    default:
        changed->window()->setLayoutDirection(
            oneOf({Qt::LeftToRight, Qt::LeftToRight, Qt::RightToLeft}));
        return QStringLiteral("layout direction");
    }
}

QString User::search()
{
    ViewerWindow *searched = page();
    auto *panel = searched->findChild<FindPanel *>();
    auto *find = searched->table()->findChild<TableFilter *>();
    switch (m_random.bounded(12)) {
    case 0:
        panel->findNext();
        return QStringLiteral("find next");
    case 1:
        panel->findPrev();
        return QStringLiteral("find previous");
    case 2:
    case 3:
        panel->toggleFilter();
        return QStringLiteral("toggle filter");
    case 4: {
        const QString name = oneOf<QString>({"caseButton", "wordsButton", "expressionButton"});
        if (auto *button = panel->findChild<QToolButton *>(name))
            button->click();
        return QStringLiteral("rule ") + name;
    }
    case 5:
        panel->close();
        return QStringLiteral("close the panel");
    case 6:
        panel->removeFilter();
        return QStringLiteral("remove the filter");
    case 7: {
        const qint64 from = m_random.bounded(500);
        find->setSpan(RowSpan {false, false, from, from + 1 + m_random.bounded(2000)});
        return QStringLiteral("filter to a span");
    }
    case 8:
        find->setSpan({});
        return QStringLiteral("filter to no span");
    default: {
        const QString text = oneOf<QString>({"e", "ERROR", "request 1", "1", "[", "a|e", "served",
                                             "x*", "\u00e9", "", "99", "^2026", "INFO"});
        searched->openFindWith(text);
        return QStringLiteral("look for “%1”%2").arg(text, find->isFiltered() ? " filtered" : "");
    }
    }
}

QString User::followOrMove()
{
    ViewerWindow *moved = page();
    switch (m_random.bounded(5)) {
    case 0:
        moved->setFollowing(!moved->isFollowing());
        return QStringLiteral("follow or not");
    case 1:
        moved->showLine(1 + m_random.bounded(2000));
        return QStringLiteral("show a line");
    case 2:
        moved->table()->selectAll();
        return QStringLiteral("select all");
    case 3:
        moved->copySelection();
        return QStringLiteral("copy");
    default:
        moved->restore(moved->state());
        return QStringLiteral("restore");
    }
}

QString User::reopen()
{
    auto *file = qobject_cast<FileWindow *>(page());
    if (!file)
        return QStringLiteral("nothing to reopen");
    if (m_random.bounded(2) == 0) {
        file->model()->stopIndexing();
        return QStringLiteral("stop");
    }
    if (m_random.bounded(2) == 0) {
        file->model()->resumeIndexing();
        return QStringLiteral("go on");
    }
    file->reopen(m_random.bounded(2) == 0 ? file->request() : someFormat());
    return QStringLiteral("reopen");
}

//! Nobody waits for a search through a million rows.
void User::losePatience()
{
    for (const auto &page : m_pages)
        page->table()->findChild<TableFilter *>()->cancel();
}

QString User::step()
{
    m_patience.start();
    QString told;
    const int what = m_random.bounded(100);
    if (what < 30)
        told = m_files[std::size_t(m_random.bounded(int(m_files.size())))]->change();
    else if (what < 45)
        told = pressKey();
    else if (what < 57)
        told = useMouse();
    else if (what < 62)
        told = changeColumns();
    else if (what < 66)
        told = changeLook();
    else if (what < 82)
        told = search();
    else if (what < 90)
        told = followOrMove();
    else if (what < 94)
        told = reopen();
    else
        told = changePages();
    // Sometimes things come so fast that nothing is painted in between.
    if (m_random.bounded(3) > 0)
        QTest::qWait(m_random.bounded(30));
    m_patience.stop();
    removeClosed();
    return told;
}

QString User::check()
{
    for (const auto &file : m_files)
        file->settle();
    removeClosed();
    for (const auto &page : m_pages) {
        auto *shown = qobject_cast<FileWindow *>(page.get());
        if (!shown)
            continue;
        const auto file = std::find_if(m_files.begin(), m_files.end(), [&](const auto &known) {
            return known->path() == shown->windowFilePath();
        });
        const QByteArray content = (*file)->content();
        QElapsedTimer clock;
        clock.start();
        QString problem;
        do {
            if (shown->model()->activity() == TextFileModel::Activity::Stopped)
                shown->model()->resumeIndexing();
            QTest::qWait(10);
            problem = compare(*shown, content);
            if (problem.isEmpty())
                problem = compareShown(*shown);
        } while (!problem.isEmpty() && clock.elapsed() < s_patience);
        if (!problem.isEmpty())
            return shown->windowTitle() + QLatin1String(": ") + problem;
    }
    return {};
}

//! Whatever was there before, the rows end with the content.
QString User::compareEnd(const FileWindow &page, const QByteArray &content) const
{
    const TextFileModel &model = *page.model();
    if (model.fileSize() < quint64(content.size()) || model.indexedBytes() != model.fileSize()
        || model.olderRows() < 0)
        return QStringLiteral("%1 of %2 bytes are indexed, the file has %3")
            .arg(model.indexedBytes())
            .arg(model.fileSize())
            .arg(content.size());
    if (model.fileSize() > quint64(s_compared))
        return {};
    QByteArray rows;
    for (int row = 0; row < model.rowCount(); ++row)
        rows += model.rowBytes(row, s_compared);
    // The first line of all may be the header.
    if (rows.endsWith(content) || (model.format().hasHeader && content.endsWith(rows)))
        return {};
    return QStringLiteral("%1 bytes of rows do not end with the file").arg(rows.size());
}

//! Rows are the content, but for a header, byte by byte; plain ones are shown as they are.
QString User::compare(const FileWindow &page, const QByteArray &content) const
{
    const TextFileModel &model = *page.model();
    if (page.hasFailed())
        return QStringLiteral("failed: ") + model.errorString();
    if (page.request().hasOlderFiles)
        return compareEnd(page, content);
    if (quint64(content.size()) != model.fileSize() || model.indexedBytes() != model.fileSize())
        return QStringLiteral("%1 of %2 bytes are indexed, the file has %3")
            .arg(model.indexedBytes())
            .arg(model.fileSize())
            .arg(content.size());
    if (content.size() > s_compared)
        return {};
    QList<QByteArray> rows;
    qsizetype size = 0;
    for (int row = 0; row < model.rowCount(); ++row) {
        rows.append(model.rowBytes(row, content.size()));
        size += rows.last().size();
    }
    qsizetype at = model.format().hasHeader ? content.size() - size : 0;
    for (int row = 0; row < model.rowCount(); ++row) {
        const QByteArray &bytes = rows[row];
        if (at < 0 || bytes.isEmpty() || content.mid(at, bytes.size()) != bytes)
            return QStringLiteral("row %1 is not in the file at %2").arg(row).arg(at);
        at += bytes.size();
        QByteArray line = bytes;
        const char lineEnd = model.format().lineEnd;
        const bool isWide = !model.format().encoding.isAsciiSearchable();
        const bool isRecord = model.format().isDelimited();
        if (!isWide && !isRecord && bytes.chopped(1).contains(lineEnd))
            return QStringLiteral("row %1 is more than a line").arg(row);
        if (!isWide && row + 1 < model.rowCount() && !bytes.endsWith(lineEnd))
            return QStringLiteral("row %1 is less than a line").arg(row);
        while (line.endsWith('\n') || line.endsWith('\r'))
            line.chop(1);
        const bool isText = !model.format().isDelimited() && isPlain(line)
            && model.format().encoding.isAsciiSearchable();
        if (isText && model.index(row, 1).data().toString() != QLatin1String(line))
            return QStringLiteral("row %1 is “%2”")
                .arg(row)
                .arg(model.index(row, 1).data().toString());
    }
    if (model.rowCount() > 0 && at != content.size())
        return QStringLiteral("%1 rows end at %2 of %3")
            .arg(model.rowCount())
            .arg(at)
            .arg(content.size());
    return {};
}

//! A filter shows the rows in which its text is, and no others; they may be sorted.
QString User::compareShown(const FileWindow &page) const
{
    const auto *find = page.table()->findChild<TableFilter *>();
    const TextFileModel &model = *page.model();
    if (find->showsSource() || page.property(s_hasHidden).toBool() || model.fileSize() > s_compared)
        return {};
    const SortedRows *sorted = find->sortedRows();
    if (find->isFiltering() || (sorted && !sorted->isSettled()))
        return QStringLiteral("it filters or sorts still");
    std::vector<int> rows;
    for (int row = 0; row < page.rows(); ++row)
        rows.push_back(find->toSource(page.table()->model()->index(row, 0)).row());
    if (sorted) {
        const auto value = [&](int row) {
            return SortValue(model.index(row, sorted->column()).data().toString());
        };
        for (std::size_t at = 1; at < rows.size(); ++at) {
            const int order = value(rows[at - 1]).compare(value(rows[at]), sorted->order());
            if (order > 0 || (order == 0 && rows[at - 1] >= rows[at]))
                return QStringLiteral("row %1 comes before row %2").arg(rows[at - 1]).arg(rows[at]);
        }
        std::sort(rows.begin(), rows.end());
    }
    const TextMatcher matcher = find->shownMatcher();
    const std::optional<RowSpan> span = find->shownSpan();
    std::vector<int> expected;
    for (int row = 0; row < model.rowCount(); ++row) {
        if (span && (row < span->from || row >= span->to))
            continue;
        bool isIn = matcher.isNothing();
        for (int column = 0; column < model.columnCount() && !isIn; ++column)
            isIn = !model.isLineNumber(column)
                && matcher.isIn(model.index(row, column).data().toString());
        if (isIn)
            expected.push_back(row);
    }
    if (rows == expected)
        return {};
    const auto [is, wanted] =
        std::mismatch(rows.begin(), rows.end(), expected.begin(), expected.end());
    return QStringLiteral("%1 rows for %2 with “%3”; row %4 for %5")
        .arg(rows.size())
        .arg(expected.size())
        .arg(matcher.text())
        .arg(is == rows.end() ? -1 : *is)
        .arg(wanted == expected.end() ? -1 : *wanted);
}
