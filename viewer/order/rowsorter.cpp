// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "rowsorter.h"

#include <bit>

namespace {

constexpr int s_readAtOnce = 2048;        // that are read
constexpr std::size_t s_smallGroup = 512; // of which all texts are kept at once
constexpr qsizetype s_charactersOfKey = 4;

quint64 ascending(double number)
{
    const auto bits = std::bit_cast<quint64>(number + 0.0); // no negative zero
    const quint64 sign = quint64(1) << 63;
    return (bits & sign) != 0 ? ~bits : bits | sign;
}

quint64 charactersFrom(const QString &text, qsizetype offset)
{
    quint64 key = 0;
    for (qsizetype at = offset; at < offset + s_charactersOfKey; ++at)
        key = key << 16 | (at < text.size() ? text[at].unicode() : 0U);
    return key;
}

} // namespace

RowSorter::RowSorter(Reader read, std::vector<int> rows, Qt::SortOrder order)
    : m_read(std::move(read))
    , m_order(order)
    , m_rows(std::move(rows))
{
}

void RowSorter::step()
{
    if (m_stage == Stage::Reading)
        read();
    else if (!m_sort.isDone())
        m_sort.step();
    else if (m_stage == Stage::Splitting)
        split();
    else if (m_stage != Stage::Done)
        goOn();
}

double RowSorter::progress() const
{
    const auto rows = double(std::max<std::size_t>(m_rows.size(), 1));
    switch (m_stage) {
    case Stage::Reading:
        return 0.6 * double(m_next) / rows;
    case Stage::SortingNumbers:
        return 0.65;
    case Stage::SortingTexts:
        return 0.7;
    case Stage::Splitting:
        break;
    case Stage::Done:
        return 1;
    }
    std::size_t left = 0;
    for (const Scan &scan : m_scans)
        left += scan.isOuter ? scan.end - scan.place : 0;
    return 1 - 0.2 * double(left) / rows;
}

std::size_t RowSorter::memory() const
{
    return (m_numbers.capacity() + m_texts.capacity()) * sizeof(Entry)
        + (m_rows.capacity() + m_empties.capacity()) * sizeof(int);
}

RowSorter::Entry RowSorter::numberEntry(const SortValue &value, int row) const
{
    const quint64 bits = ascending(value.number());
    const quint64 key = m_order == Qt::AscendingOrder ? bits : ~bits;
    return {{quint32(key >> 32), quint32(key)}, row};
}

RowSorter::Entry RowSorter::textEntry(const QString &text, qsizetype offset, int row) const
{
    const quint64 characters = charactersFrom(text, offset);
    const quint64 key = m_order == Qt::AscendingOrder ? characters : ~characters;
    return {{quint32(key >> 32), quint32(key)}, row};
}

void RowSorter::read()
{
    const std::size_t end = std::min(m_next + s_readAtOnce, m_rows.size());
    for (; m_next < end; ++m_next) {
        const int row = m_rows[m_next];
        const SortValue value = valueOf(row);
        switch (value.kind()) {
        case SortValue::Kind::Number:
            m_numbers.push_back(numberEntry(value, row));
            m_areExact = m_areExact && value.isExact();
            break;
        case SortValue::Kind::Text:
            m_texts.push_back(textEntry(value.text(), 0, row));
            break;
        case SortValue::Kind::Empty:
            m_empties.push_back(row);
            break;
        }
    }
    if (m_next == m_rows.size())
        goOn();
}

//! From one stage to the next.
void RowSorter::goOn()
{
    if (m_stage == Stage::Reading) {
        m_sort = SlicedSort<Entry>(m_numbers);
        m_stage = Stage::SortingNumbers;
    } else if (m_stage == Stage::SortingNumbers) {
        m_sort = SlicedSort<Entry>(m_texts);
        m_stage = Stage::SortingTexts;
    } else {
        m_sort = {};
        if (!m_areExact)
            m_scans.push_back({&m_numbers, 0, m_numbers.size(), -s_charactersOfKey, true});
        m_scans.push_back({&m_texts, 0, m_texts.size(), 0, true});
        m_stage = Stage::Splitting;
    }
}

//! Looks for rows that are the same so far, and sorts them by what is behind.
void RowSorter::split()
{
    if (m_group) {
        readGroup();
        return;
    }
    while (!m_scans.empty() && m_scans.back().place == m_scans.back().end)
        m_scans.pop_back();
    if (m_scans.empty())
        collect();
    else
        splitNext(&m_scans.back());
}

void RowSorter::splitNext(Scan *scan)
{
    const Entries &entries = *scan->entries;
    const bool isNumber = scan->offset < 0;
    const std::size_t last = std::min(scan->place + SlicedSort<Entry>::stepLength, scan->end);
    while (scan->place < last) {
        const std::size_t first = scan->place;
        const auto &key = entries[first].key;
        std::size_t end = first + 1;
        while (end < scan->end && entries[end].key == key)
            ++end;
        scan->place = end;
        const quint32 padding = m_order == Qt::AscendingOrder ? 0 : 0xffff;
        const bool isEnd = !isNumber && (key[1] & 0xffff) == padding;
        if (end - first < 2 || isEnd)
            continue;
        begin({scan->entries, first, end, scan->offset + s_charactersOfKey});
        return;
    }
}

void RowSorter::begin(const Group &group)
{
    if (group.end - group.begin <= s_smallGroup) {
        sortSmall(group);
        return;
    }
    m_group = group;
    m_groupNext = group.begin;
}

void RowSorter::sortSmall(const Group &group)
{
    std::vector<std::pair<QString, int>> texts;
    for (std::size_t at = group.begin; at < group.end; ++at) {
        const int row = (*group.entries)[at].row;
        texts.emplace_back(valueOf(row).text(), row);
    }
    const bool isAscending = m_order == Qt::AscendingOrder;
    std::stable_sort(texts.begin(), texts.end(), [isAscending](const auto &a, const auto &b) {
        return isAscending ? a.first < b.first : b.first < a.first;
    });
    for (std::size_t at = group.begin; at < group.end; ++at)
        (*group.entries)[at].row = texts[at - group.begin].second;
}

//! Reads what is behind the characters that the group shares; if that is the same again, all
//! that it shares is left out the next time.
void RowSorter::readGroup()
{
    const std::size_t end = std::min(m_groupNext + s_readAtOnce, m_group->end);
    for (; m_groupNext < end; ++m_groupNext) {
        Entry &entry = (*m_group->entries)[m_groupNext];
        const QString text = valueOf(entry.row).text();
        entry = textEntry(text, m_group->offset, entry.row);
        if (m_groupNext == m_group->begin) {
            m_groupText = text;
            m_common = text.size();
            m_isCommonEnd = true;
            continue;
        }
        const auto [there, here] = std::mismatch(
            m_groupText.cbegin(), m_groupText.cbegin() + m_common, text.cbegin(), text.cend());
        m_common = there - m_groupText.cbegin();
        m_isCommonEnd = m_isCommonEnd && m_common == m_groupText.size() && here == text.cend();
    }
    if (m_groupNext < m_group->end)
        return;
    const Group group = *m_group;
    m_group.reset();
    if (m_common >= group.offset + s_charactersOfKey) {
        if (!m_isCommonEnd)
            begin({group.entries, group.begin, group.end, m_common});
        return;
    }
    m_sort =
        SlicedSort<Entry>(std::span(*group.entries).subspan(group.begin, group.end - group.begin));
    m_scans.push_back({group.entries, group.begin, group.end, group.offset, false});
}

void RowSorter::collect()
{
    const auto append = [this](Entries *entries) {
        for (const Entry &entry : *entries)
            m_rows.push_back(entry.row);
        *entries = Entries();
    };
    m_rows.clear();
    append(m_order == Qt::AscendingOrder ? &m_numbers : &m_texts);
    append(m_order == Qt::AscendingOrder ? &m_texts : &m_numbers);
    m_rows.insert(m_rows.end(), m_empties.begin(), m_empties.end());
    m_empties = {};
    m_stage = Stage::Done;
}
