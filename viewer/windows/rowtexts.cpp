// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "rowtexts.h"

#include "basics/rowloader.h"

#include <QAbstractItemModel>

#include <algorithm>
#include <climits>
#include <utility>
#include <vector>

namespace {

// The selected rows as ranges, first to last, ascending.
std::vector<std::pair<int, int>> rangesOf(const QItemSelection &selection)
{
    std::vector<std::pair<int, int>> ranges;
    for (const QItemSelectionRange &range : selection)
        ranges.emplace_back(range.top(), range.bottom());
    std::sort(ranges.begin(), ranges.end());
    return ranges;
}

QString quoted(const QString &field)
{
    const bool isPlain = std::none_of(field.begin(), field.end(), [](QChar character) {
        return character == u'"' || character == u',' || character == u'\n' || character == u'\r';
    });
    if (isPlain)
        return field;
    QString doubled = field;
    doubled.replace(u'"', QLatin1String("\"\""));
    return u'"' + doubled + u'"';
}

} // namespace

RowTexts::RowTexts(const QAbstractItemModel *model, const QList<int> &columns, RowFormat format)
    : m_model(model)
    , m_columns(columns)
    , m_format(format)
{
}

QString RowTexts::joined(const QStringList &fields) const
{
    if (m_format == RowFormat::Tabs)
        return fields.join(u'\t');
    QStringList written;
    std::transform(fields.begin(), fields.end(), std::back_inserter(written), quoted);
    return written.join(u',');
}

QString RowTexts::header() const
{
    QStringList names;
    for (const int column : m_columns)
        names << m_model->headerData(column, Qt::Horizontal).toString();
    return joined(names);
}

QString RowTexts::row(int row) const
{
    loadRow(m_model, row);
    QStringList fields;
    for (const int column : m_columns)
        fields << m_model->index(row, column).data().toString();
    return joined(fields);
}

QString RowTexts::rows(const QItemSelection &selection, int most, bool *isCut) const
{
    QStringList lines;
    int next = 0;
    int count = 0;
    if (m_format == RowFormat::Csv && !selection.isEmpty())
        lines << header();
    for (const auto &[first, last] : rangesOf(selection)) {
        // Ranges of the same row in several columns are one row.
        for (int at = std::max(first, next); at <= last; ++at) {
            if (count++ == most) {
                if (isCut)
                    *isCut = true;
                return lines.join(u'\n');
            }
            lines << row(at);
        }
        next = std::max(next, last == INT_MAX ? last : last + 1);
    }
    return lines.join(u'\n');
}
