// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "rowjudge.h"

#include "files/textfilemodel.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace {

constexpr int s_linesAtOnce = 256; // judged by their text in far less than 40 ms

} // namespace

bool isTextColumn(const QAbstractItemModel *model, int column)
{
    const auto *lines = qobject_cast<const TextFileModel *>(model);
    return !lines || !lines->isLineNumber(column);
}

RowJudge::RowJudge(const QList<int> &columns, const TextMatcher &matcher)
    : m_columns(columns)
    , m_matcher(matcher)
{
}

void RowJudge::setSource(const QAbstractItemModel *source)
{
    m_source = source;
    const int columns = source->columnCount();
    const int before = columns > 0 ? std::exchange(m_columnCount, columns) : columns;
    if (before > 0 && before != columns) {
        m_columns.resize(columns);
        std::iota(m_columns.begin(), m_columns.end(), 0);
        m_columns.removeIf([source](int column) { return !isTextColumn(source, column); });
    }
    m_lines = qobject_cast<const TextFileModel *>(source);
    m_pattern = m_lines ? m_lines->patternFor(m_matcher.needle(), m_columns) : std::nullopt;
}

int RowJudge::judge(int first, int end, std::vector<int> *found) const
{
    // How long others take over their data nobody knows.
    const int last = std::min(end, first + (m_lines ? s_linesAtOnce : 1));
    int row = first;
    while (row < last) {
        if (m_pattern) {
            const TextFileModel::Sighting sighting = m_lines->look(*m_pattern, row, true);
            row = std::min(sighting.row, end);
            if (!sighting.mayShow || row == end)
                return row;
        }
        if (isMatch(row))
            found->push_back(row);
        ++row;
    }
    return row;
}

bool RowJudge::isMatch(int row) const
{
    return std::any_of(m_columns.begin(), m_columns.end(), [&](int column) {
        return m_matcher.isIn(m_source->index(row, column).data().toString());
    });
}
