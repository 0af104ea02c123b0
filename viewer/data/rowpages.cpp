// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "rowpages.h"

#include <QHash>
#include <QSet>

#include <algorithm>
#include <utility>

namespace {

//! Keys as something that can be looked up. The kind of a value counts: 1 is not "1".
QString keyText(const RowKey &key)
{
    QString text;
    for (const QVariant &value : key)
        text += QString::number(value.typeId()) + u':'
            + (value.typeId() == QMetaType::QByteArray
                   ? QString::fromLatin1(value.toByteArray().toHex())
                   : value.toString())
            + QChar(u'\0');
    return text;
}

QSet<QString> keysOf(const QList<DataRow> &rows)
{
    QSet<QString> keys;
    keys.reserve(rows.size());
    for (const DataRow &row : rows)
        keys.insert(keyText(row.key));
    return keys;
}

} // namespace

RowPages::RowPages(Listener *listener)
    : m_listener(listener)
{
}

void RowPages::reset(int rows, bool hasIntegerKey)
{
    m_rows = rows;
    m_hasIntegerKey = hasIntegerKey;
    m_pages.clear();
    m_anchors.clear();
    m_histogram.clear();
    m_step = 0;
    m_deadEnd = -1;
    ++m_generation;
}

//! The first page that ends behind \a row.
int RowPages::pageFrom(int row) const
{
    const auto it =
        std::upper_bound(m_pages.begin(), m_pages.end(), row,
                         [](int sought, const Page &page) { return sought < page.end(); });
    return int(it - m_pages.begin());
}

const DataRow *RowPages::row(int row) const
{
    const int page = pageFrom(row);
    if (row < 0 || page == pages() || m_pages[size_t(page)].first > row)
        return nullptr;
    return &m_pages[size_t(page)].rows.at(row - m_pages[size_t(page)].first);
}

int RowPages::rowOf(const RowKey &key) const
{
    for (const Page &page : m_pages) {
        for (qsizetype i = 0; i < page.rows.size(); ++i) {
            if (page.rows.at(i).key == key)
                return page.first + int(i);
        }
    }
    return -1;
}

int RowPages::rows() const
{
    int rows = 0;
    for (const Page &page : m_pages)
        rows += int(page.rows.size());
    return rows;
}

qint64 RowPages::memory() const
{
    qsizetype characters = 0;
    for (const Page &page : m_pages) {
        for (const DataRow &row : page.rows) {
            for (const QString &cell : row.cells)
                characters += cell.size();
        }
    }
    return qint64(characters) * 2;
}

bool RowPages::isEndKnown() const
{
    return m_pages.empty() ? m_rows == 0 : m_pages.back().end() == m_rows;
}

//! The gap that \a row is in; it is not in a page.
RowPages::Gap RowPages::gapAt(int row) const
{
    const int page = pageFrom(row);
    return {page == 0 ? 0 : m_pages[size_t(page - 1)].end(),
            page == pages() ? m_rows : m_pages[size_t(page)].first};
}

const RowPages::Page *RowPages::before(const Gap &gap) const
{
    const int page = pageFrom(gap.begin);
    return page == 0 ? nullptr : &m_pages[size_t(page - 1)];
}

const RowPages::Page *RowPages::behind(const Gap &gap) const
{
    const int page = pageFrom(gap.begin);
    return page == pages() ? nullptr : &m_pages[size_t(page)];
}

//! Nothing that is known is read again.
void RowPages::bound(Fetch *fetch, const Gap &gap) const
{
    if (const Page *page = before(gap))
        fetch->range.after = page->rows.last().key;
    if (const Page *page = behind(gap))
        fetch->range.before = page->rows.first().key;
    // One more than there should be tells that there are no others.
    if (gap.end - gap.begin == pageRows)
        fetch->limit = pageRows + 1;
    fetch->generation = m_generation;
}

std::optional<RowPages::Fetch> RowPages::wanted(int first, int last) const
{
    int row = qMax(first, 0);
    last = qMin(last, m_rows - 1);
    while (row <= last && this->row(row))
        row = m_pages[size_t(pageFrom(row))].end();
    if (row > last)
        return {};
    const Gap gap = gapAt(row);
    Fetch fetch;
    fetch.row = row;
    bound(&fetch, gap);
    if (row - gap.begin < pageRows)
        return fetch;
    const int lastWanted = qMin(last, gap.end - 1);
    if (gap.end - lastWanted <= pageRows || m_deadEnd == gap.end) {
        fetch.kind = Fetch::Kind::Backward;
        return fetch;
    }
    return jump(gap, row);
}

//! A little before \a row, so that scrolling back finds rows.
std::optional<RowPages::Fetch> RowPages::jump(const Gap &gap, int row) const
{
    Fetch fetch;
    fetch.kind = Fetch::Kind::Jump;
    fetch.row = qMax(row - pageRows / 4, gap.begin + 1);
    bound(&fetch, gap);
    const Anchor near = anchorBefore(gap, fetch.row);
    const int skipped = fetch.row - near.row;
    const int mostAcceptable = qMax(mostSkipped, m_step);
    const bool isAnchor = near.row >= gap.begin && !near.key.isEmpty();
    if (skipped <= mostSkipped || (!m_hasIntegerKey && skipped <= mostAcceptable)) {
        if (isAnchor)
            fetch.range.from = near.key;
        fetch.offset = skipped;
        return fetch;
    }
    const auto number = guess(gap, fetch.row);
    if (const auto key = number ? number : guessByHistogram(fetch.row)) {
        fetch.range.from = *key;
        return fetch;
    }
    if (!isAnchor)
        return {};
    fetch.range.from = near.key;
    fetch.offset = mostAcceptable;
    return fetch;
}

//! The row nearest above \a row whose key is known; that before the gap counts as its first row,
//! without a key, as what is asked for comes behind it.
RowPages::Anchor RowPages::anchorBefore(const Gap &gap, int row) const
{
    const auto it = std::upper_bound(m_anchors.begin(), m_anchors.end(), row,
                                     [](int sought, const Anchor &a) { return sought < a.row; });
    if (it != m_anchors.begin() && std::prev(it)->row >= gap.begin)
        return *std::prev(it);
    return {gap.begin, {}};
}

std::optional<RowPages::Anchor> RowPages::anchorBehind(const Gap &gap, int row) const
{
    const auto it = std::upper_bound(m_anchors.begin(), m_anchors.end(), row,
                                     [](int sought, const Anchor &a) { return sought < a.row; });
    if (it != m_anchors.end() && it->row < gap.end)
        return *it;
    const Page *page = behind(gap);
    return page ? std::optional<Anchor>({page->first, page->rows.first().key}) : std::nullopt;
}

//! Between two keys that are whole numbers: where the row would be, were they evenly spread.
std::optional<RowKey> RowPages::guess(const Gap &gap, int row) const
{
    if (!m_hasIntegerKey)
        return {};
    Anchor lower = anchorBefore(gap, row);
    if (lower.key.isEmpty()) {
        const Page *page = before(gap);
        if (!page)
            return {};
        lower = {page->end() - 1, page->rows.last().key};
    }
    const auto upper = anchorBehind(gap, row);
    if (!upper || upper->row <= lower.row)
        return {};
    const qint64 from = lower.key.first().toLongLong();
    const double span = double(upper->key.first().toLongLong()) - double(from);
    const double part = double(row - lower.row) / double(upper->row - lower.row);
    const QVariant value(qint64(from + qint64(span * part)));
    return RowKey {lower.key.first().typeId() == QMetaType::QString ? QVariant(value.toString())
                                                                    : value};
}

std::optional<RowKey> RowPages::guessByHistogram(int row) const
{
    if (m_histogram.isEmpty())
        return {};
    const double part = double(row) / double(m_rows);
    return RowKey {m_histogram.at(qRound64(part * double(m_histogram.size() - 1)))};
}

RowPages::Fetch RowPages::beyond() const
{
    Fetch fetch;
    fetch.row = m_rows;
    fetch.generation = m_generation;
    if (!m_pages.empty())
        fetch.range.after = m_pages.back().rows.last().key;
    return fetch;
}

RowPages::Fetch RowPages::lastPage() const
{
    Fetch fetch;
    fetch.kind = Fetch::Kind::Backward;
    fetch.row = qMax(0, m_rows - 1);
    bound(&fetch, gapAt(fetch.row));
    return fetch;
}

std::optional<RowPages::Fetch> RowPages::at(int row, const RowKey &key) const
{
    if (this->row(row) || row >= m_rows)
        return {};
    Fetch fetch;
    fetch.kind = Fetch::Kind::Jump;
    fetch.row = row;
    bound(&fetch, gapAt(row));
    fetch.range.from = key;
    return fetch;
}

std::optional<RowPages::Fetch> RowPages::again(int first, int last) const
{
    const int begin = pageFrom(first);
    if (begin == pages() || m_pages[size_t(begin)].first > last)
        return {};
    int end = begin + 1;
    while (end < pages() && m_pages[size_t(end)].first == m_pages[size_t(end - 1)].end()
           && m_pages[size_t(end)].first <= last)
        ++end;
    const Page &top = m_pages[size_t(begin)];
    const Page &bottom = m_pages[size_t(end - 1)];
    Fetch fetch;
    fetch.kind = Fetch::Kind::Again;
    fetch.row = top.first;
    fetch.count = bottom.end() - top.first;
    fetch.limit = fetch.count + pageRows;
    fetch.generation = m_generation;
    if (begin > 0 && m_pages[size_t(begin - 1)].end() == top.first)
        fetch.range.after = m_pages[size_t(begin - 1)].rows.last().key;
    else if (top.first > 0)
        fetch.range.from = top.rows.first().key;
    if (end < pages() && m_pages[size_t(end)].first == bottom.end())
        fetch.range.before = m_pages[size_t(end)].rows.first().key;
    else if (bottom.end() < m_rows)
        fetch.range.upTo = bottom.rows.last().key;
    return fetch;
}

bool RowPages::take(const Fetch &fetch, const QList<DataRow> &rows)
{
    if (fetch.generation != m_generation)
        return false;
    const bool isAll = rows.size() < fetch.limit;
    m_deadEnd = -1;
    switch (fetch.kind) {
    case Fetch::Kind::Forward:
        takeForward(gapAt(fetch.row), rows, isAll);
        break;
    case Fetch::Kind::Backward:
        takeBackward(gapAt(fetch.row), rows, isAll);
        break;
    case Fetch::Kind::Jump:
        takeJump(gapAt(fetch.row), fetch, rows, isAll);
        break;
    case Fetch::Kind::Again:
        takeAgain(fetch, rows, isAll);
        break;
    }
    ++m_generation;
    return true;
}

void RowPages::takeForward(const Gap &gap, const QList<DataRow> &rows, bool isAll)
{
    const int count = int(rows.size());
    const int present = gap.end - gap.begin;
    const int needed = isAll ? count : qMax(present, count + 1);
    if (needed > present)
        insertRows(gap.end, needed - present);
    else if (needed < present)
        removeRows(gap.begin + needed, present - needed);
    put(gap.begin, rows);
}

void RowPages::takeBackward(const Gap &gap, QList<DataRow> rows, bool isAll)
{
    std::reverse(rows.begin(), rows.end());
    const int count = int(rows.size());
    const int present = gap.end - gap.begin;
    const int needed = isAll ? count : qMax(present, count + 1);
    if (needed > present)
        insertRows(gap.begin, needed - present);
    else if (needed < present)
        removeRows(gap.begin, present - needed);
    put(gap.begin + needed - count, rows);
}

//! With a row that is not known on either side, but for rows that end where the gap does.
void RowPages::takeJump(const Gap &gap, const Fetch &fetch, const QList<DataRow> &rows, bool isAll)
{
    const int count = int(rows.size());
    if (count == 0) {
        m_deadEnd = gap.end;
        return;
    }
    const int present = gap.end - gap.begin;
    const int needed = qMax(present, count + (isAll ? 1 : 2));
    if (needed > present)
        insertRows(gap.end, needed - present);
    const int last = gap.begin + needed - count - (isAll ? 0 : 1);
    put(isAll ? last : qBound(gap.begin + 1, fetch.row, last), rows);
}

void RowPages::takeAgain(const Fetch &fetch, const QList<DataRow> &rows, bool isAll)
{
    const int page = pageFrom(fetch.row);
    merge(page, fetch.row + fetch.count);
    updateMerged(page, rows);
    const int end = m_pages[size_t(page)].end();
    split(page);
    const int next = pageFrom(end);
    const bool hasGap = next == pages() ? end < m_rows : m_pages[size_t(next)].first > end;
    if (!isAll && !hasGap)
        insertRows(end, 1);
}

//! Makes one page of \a page and those behind it that end before \a end.
void RowPages::merge(int page, int end)
{
    Page &whole = m_pages[size_t(page)];
    while (whole.end() < end) {
        whole.rows += m_pages[size_t(page) + 1].rows;
        m_pages.erase(m_pages.begin() + page + 1);
    }
}

//! Gives \a page the rows that it has now: those that are not there any more go, others come.
void RowPages::updateMerged(int page, const QList<DataRow> &rows)
{
    const QSet<QString> present = keysOf(rows);
    const QSet<QString> former = keysOf(m_pages[size_t(page)].rows);
    const auto old = [&]() -> QList<DataRow> & { return m_pages[size_t(page)].rows; };
    int place = 0;
    qsizetype next = 0;
    while (place < old().size() || next < rows.size()) {
        int gone = 0;
        while (place + gone < old().size()
               && (next == rows.size() || !present.contains(keyText(old().at(place + gone).key))))
            ++gone;
        if (gone > 0)
            removeKnown(page, place, gone);
        qsizetype come = next;
        while (come < rows.size()
               && (place == old().size() || !former.contains(keyText(rows.at(come).key))))
            ++come;
        if (come > next)
            insertKnown(page, place, rows.mid(next, come - next));
        place += int(come - next);
        next = come;
        if (place == old().size() || next == rows.size())
            continue;
        if (old().at(place).key != rows.at(next).key) { // twice the same key: it tells nothing
            removeKnown(page, place, 1);
            continue;
        }
        if (old().at(place) != rows.at(next)) {
            old()[place] = rows.at(next);
            const int row = m_pages[size_t(page)].first + place;
            m_listener->changed(row, row);
        }
        ++place;
        ++next;
    }
}

//! Into pages of the usual size; none if it is empty.
void RowPages::split(int page)
{
    const Page whole = m_pages[size_t(page)];
    m_pages.erase(m_pages.begin() + page);
    for (qsizetype i = 0; i < whole.rows.size(); i += pageRows)
        m_pages.insert(m_pages.begin() + page + i / pageRows,
                       {whole.first + int(i), whole.rows.mid(i, pageRows), whole.seen});
}

void RowPages::insertRows(int first, int count)
{
    m_listener->aboutToInsert(first, first + count - 1);
    for (Page &page : m_pages) {
        if (page.first >= first)
            page.first += count;
    }
    for (Anchor &anchor : m_anchors) {
        if (anchor.row >= first)
            anchor.row += count;
    }
    m_rows += count;
    ++m_generation;
    m_listener->inserted();
}

//! Of a gap.
void RowPages::removeRows(int first, int count)
{
    m_listener->aboutToRemove(first, first + count - 1);
    for (Page &page : m_pages) {
        if (page.first >= first)
            page.first -= count;
    }
    m_anchors.removeIf(
        [&](const Anchor &anchor) { return anchor.row >= first && anchor.row < first + count; });
    for (Anchor &anchor : m_anchors) {
        if (anchor.row >= first)
            anchor.row -= count;
    }
    m_rows -= count;
    ++m_generation;
    m_listener->removed();
}

void RowPages::insertKnown(int page, int place, const QList<DataRow> &rows)
{
    const int first = m_pages[size_t(page)].first + place;
    const int count = int(rows.size());
    m_listener->aboutToInsert(first, first + count - 1);
    QList<DataRow> &all = m_pages[size_t(page)].rows;
    all = all.mid(0, place) + rows + all.mid(place);
    for (size_t i = size_t(page) + 1; i < m_pages.size(); ++i)
        m_pages[i].first += count;
    for (Anchor &anchor : m_anchors) {
        if (anchor.row >= first)
            anchor.row += count;
    }
    m_rows += count;
    m_listener->inserted();
}

void RowPages::removeKnown(int page, int place, int count)
{
    const int first = m_pages[size_t(page)].first + place;
    m_listener->aboutToRemove(first, first + count - 1);
    m_pages[size_t(page)].rows.remove(place, count);
    for (size_t i = size_t(page) + 1; i < m_pages.size(); ++i)
        m_pages[i].first -= count;
    m_anchors.removeIf(
        [&](const Anchor &anchor) { return anchor.row >= first && anchor.row < first + count; });
    for (Anchor &anchor : m_anchors) {
        if (anchor.row >= first)
            anchor.row -= count;
    }
    m_rows -= count;
    m_listener->removed();
}

void RowPages::put(int first, const QList<DataRow> &rows)
{
    if (rows.isEmpty())
        return;
    m_pages.insert(m_pages.begin() + pageFrom(first), {first, rows, ++m_time});
    m_listener->changed(first, first + int(rows.size()) - 1);
}

//! Its place is remembered. Nobody is told: who looks at it again asks for it again.
void RowPages::dropPage(int page)
{
    const Anchor anchor {m_pages[size_t(page)].first, m_pages[size_t(page)].rows.first().key};
    const auto it =
        std::lower_bound(m_anchors.begin(), m_anchors.end(), anchor.row,
                         [](const Anchor &known, int sought) { return known.row < sought; });
    if (it == m_anchors.end() || it->row != anchor.row)
        m_anchors.insert(it, anchor);
    m_pages.erase(m_pages.begin() + page);
    ++m_generation;
}

void RowPages::setAnchors(QList<Anchor> anchors, int step)
{
    m_anchors = std::move(anchors);
    m_step = step;
}

int RowPages::chainBegin(int page) const
{
    while (page > 0 && m_pages[size_t(page - 1)].end() == m_pages[size_t(page)].first)
        --page;
    return page;
}

int RowPages::chainEnd(int page) const
{
    while (page + 1 < pages() && m_pages[size_t(page)].end() == m_pages[size_t(page + 1)].first)
        ++page;
    return page + 1;
}

bool RowPages::place(const RowKey &key, int row, int total)
{
    const int known = rowOf(key);
    if (known < 0)
        return false;
    const int page = pageFrom(known);
    const int begin = m_pages[size_t(chainBegin(page))].first;
    const int end = m_pages[size_t(chainEnd(page) - 1)].end();
    const int first = row - (known - begin);
    // Those at the end are known by their keys, and may have come after the others were counted.
    const int behind = end == m_rows ? 0 : total - first - (end - begin);
    if (first < 0 || behind < 0 || (begin == 0 && first != 0))
        return false;
    m_anchors.clear();
    dropBetween(page);
    const int top = begin == 0 ? 0 : placedTop(first);
    resizeGap(top, begin - top, first - top);
    const int bottom = first + end - begin;
    const int tail = behind == 0 ? 0 : placedTail(behind);
    resizeGap(bottom, m_rows - tail - bottom, behind - tail);
    ++m_generation;
    return true;
}

//! Gives up the pages that hang together neither with \a page nor with the first or last row.
void RowPages::dropBetween(int page)
{
    const int begin = chainBegin(page);
    const int end = chainEnd(page);
    const int top = m_pages.front().first == 0 ? chainEnd(0) : 0;
    const int tail = isEndKnown() ? chainBegin(pages() - 1) : pages();
    for (int i = pages() - 1; i >= 0; --i) {
        const bool isKept = i < top || i >= tail || (i >= begin && i < end);
        if (!isKept)
            m_pages.erase(m_pages.begin() + i);
    }
}

//! How many rows at the top stay known if others are to begin with \a first.
int RowPages::placedTop(int first)
{
    if (m_pages.front().first != 0)
        return 0;
    const int end = chainEnd(0);
    const int known = m_pages[size_t(end - 1)].end();
    if (known < first)
        return known;
    m_pages.erase(m_pages.begin(), m_pages.begin() + end);
    return 0;
}

//! How many rows at the end stay known if \a behind rows come behind others.
int RowPages::placedTail(int behind)
{
    if (!isEndKnown())
        return 0;
    const int begin = chainBegin(pages() - 1);
    const int known = m_rows - m_pages[size_t(begin)].first;
    if (known < behind)
        return known;
    m_pages.erase(m_pages.begin() + begin, m_pages.end());
    return 0;
}

//! Gives the gap at \a first, of \a present rows, \a needed rows.
void RowPages::resizeGap(int first, int present, int needed)
{
    if (needed > present)
        insertRows(first, needed - present);
    else if (needed < present)
        removeRows(first + needed, present - needed);
}

void RowPages::resize(int total)
{
    if (m_pages.empty()) {
        resizeGap(0, m_rows, total);
        return;
    }
    const int tail = isEndKnown() ? chainBegin(pages() - 1) : pages();
    if (tail == 0 && m_pages.front().first == 0)
        return; // all are known
    const int begin = tail == 0 ? 0 : m_pages[size_t(tail - 1)].end();
    const int end = tail == pages() ? m_rows : m_pages[size_t(tail)].first;
    resizeGap(begin, end - begin, qMax(1, end - begin + total - m_rows));
}

void RowPages::forget(int first, int last)
{
    for (int page = pages() - 1; page >= 0; --page) {
        const Page &known = m_pages[size_t(page)];
        if (known.end() <= first || known.first > last)
            dropPage(page);
    }
}

void RowPages::touch(int first, int last)
{
    ++m_time;
    for (int page = pageFrom(first); page < pages() && m_pages[size_t(page)].first <= last; ++page)
        m_pages[size_t(page)].seen = m_time;
    while (pages() > mostPages) {
        int oldest = -1;
        for (int page = 0; page < pages(); ++page) {
            const Page &known = m_pages[size_t(page)];
            const bool isAtEdge = known.first == 0 || known.end() == m_rows;
            if (!isAtEdge && (oldest < 0 || known.seen < m_pages[size_t(oldest)].seen))
                oldest = page;
        }
        if (oldest < 0)
            return;
        dropPage(oldest);
    }
}
