// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "rowjudge.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace {

constexpr int s_linesAtOnce = 256;    // judged by their text in far less than 40 ms
constexpr int s_linesByBytes = 16384; // of which some may have to be judged by their text

QStringList namesOf(const QAbstractItemModel &model)
{
    QStringList names;
    for (int column = 0; column < model.columnCount(); ++column)
        names.append(model.headerData(column, Qt::Horizontal).toString());
    return names;
}

} // namespace

bool isTextColumn(const QAbstractItemModel *model, int column)
{
    const auto *lines = qobject_cast<const TextFileModel *>(model);
    return !lines || !lines->isLineNumber(column);
}

RowJudge::RowJudge(const QList<int> &columns, const TextMatcher &matcher,
                   const std::optional<RowSpan> &span)
    : m_columns(columns)
    , m_matcher(matcher)
{
    if (span)
        m_span.emplace(*span);
}

std::optional<RowSpan> RowJudge::span() const
{
    return m_span ? std::optional(m_span->span()) : std::nullopt;
}

void RowJudge::setSource(const QAbstractItemModel *source)
{
    m_source = source;
    if (m_span)
        m_span->setSource(source);
    const int columns = source->columnCount();
    const QStringList names = namesOf(*source);
    const QStringList before = columns > 0 ? std::exchange(m_names, names) : names;
    if (!before.isEmpty() && before != names) {
        m_columns.resize(columns);
        std::iota(m_columns.begin(), m_columns.end(), 0);
        m_columns.removeIf([source](int column) { return !isTextColumn(source, column); });
    }
    m_lines = qobject_cast<const TextFileModel *>(source);
    choosePatterns();
    m_byBytes.reset();
    // Numbers of lines are not in the file; with patterns they do not matter.
    const bool isByBytes = m_places || m_columns == QList<int> {1};
    if (m_lines && !m_lines->format().hasColumns() && isByBytes)
        m_byBytes.emplace(m_matcher, m_lines->lineEnd());
}

void RowJudge::choosePatterns()
{
    m_pattern.reset();
    m_places.reset();
    if (!m_lines)
        return;
    const QStringList needles = m_matcher.needles();
    std::vector<BytePattern> patterns;
    for (const QString &needle : needles) {
        const std::optional<BytePattern> pattern = m_lines->patternFor(needle, m_columns);
        if (!pattern)
            return;
        patterns.push_back(*pattern);
    }
    if (patterns.size() == 1)
        m_pattern = patterns.front();
    if (!patterns.empty())
        m_places.emplace(std::move(patterns));
}

int RowJudge::judge(int first, int end, std::vector<int> *found) const
{
    if (!m_span)
        return judgeText(first, end, found);
    const SpanJudge::Run run = m_span->runFrom(first, end);
    if (run.isIn && !m_matcher.isNothing())
        return judgeText(run.first, run.end, found);
    for (int row = run.first; run.isIn && row < run.end; ++row)
        found->push_back(row);
    return run.end;
}

int RowJudge::judgeText(int first, int end, std::vector<int> *found) const
{
    if (!m_byBytes)
        return judgeRows(first, end, found);
    end = first + qMin(end - first, s_linesByBytes);
    m_lines->readLines(first, end, &m_raw);
    if (m_raw.ends.empty())
        return judgeRows(first, qMin(end, first + 1), found);
    judgeLines(first, found);
    return first + int(m_raw.ends.size());
}

//! By their text, but for those where the pattern is not.
int RowJudge::judgeRows(int first, int end, std::vector<int> *found) const
{
    // How long others take over their data nobody knows.
    const int last = qMin(end, first + (m_lines ? s_linesAtOnce : 1));
    int row = first;
    while (row < last) {
        if (m_pattern) {
            const TextFileModel::Sighting sighting = m_lines->look(*m_pattern, row, true);
            row = qMin(sighting.row, end);
            if (!sighting.mayShow || row == end)
                return row;
        }
        if (isMatch(row))
            found->push_back(row);
        ++row;
    }
    return row;
}

//! Those that were read, from \a first on, by their bytes.
void RowJudge::judgeLines(int first, std::vector<int> *found) const
{
    const std::vector<qsizetype> &ends = m_raw.ends;
    const QByteArrayView bytes = m_raw.bytes.first(ends.back());
    if (m_places)
        m_places->start(bytes);
    std::size_t line = 0;
    qsizetype begin = 0;
    while (line < ends.size()) {
        qsizetype place = begin;
        if (m_places)
            place = m_places->next(begin);
        if (place < 0)
            return;
        for (; ends[line] <= place; ++line)
            begin = ends[line];
        const int row = first + int(line);
        if (isMatch(row, begin, ends[line], place - begin))
            found->push_back(row);
        begin = ends[line++];
    }
}

//! Whether \a row, which has the bytes from \a begin to \a end, has a match; there is none
//! before \a place of them.
bool RowJudge::isMatch(int row, qsizetype begin, qsizetype end, qsizetype place) const
{
    const QByteArrayView line = m_raw.bytes.sliced(begin, end - begin);
    const LineMatcher::Verdict verdict = m_byBytes->judge(line, place);
    return verdict == LineMatcher::Verdict::Unclear ? isMatch(row)
                                                    : verdict == LineMatcher::Verdict::Match;
}

bool RowJudge::isMatch(int row) const
{
    return std::any_of(m_columns.begin(), m_columns.end(), [&](int column) {
        return m_matcher.isIn(m_source->index(row, column).data().toString());
    });
}
