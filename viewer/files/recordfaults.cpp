// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "recordfaults.h"

#include <algorithm>

namespace {

//! Behind the quote that closes the field at \a at, or null if none does.
template<typename Character>
const Character *behindQuote(const Character *at, const Character *end, Character quote)
{
    for (++at;; ++at) {
        at = std::find(at, end, quote);
        if (at == end)
            return nullptr;
        if (++at == end || *at != quote)
            return at;
    }
}

RecordFaults faultsOfCount(qsizetype found, qsizetype wanted)
{
    if (wanted == 0 || found == wanted)
        return {};
    return found < wanted ? RecordFault::TooFewFields : RecordFault::TooManyFields;
}

template<typename Character>
RecordFaults faultsIn(const Character *at, const Character *end, Character delimiter,
                      qsizetype wanted)
{
    constexpr Character quote {'"'};
    if (at == end)
        return {};
    if (std::find(at, end, quote) == end)
        return faultsOfCount(std::count(at, end, delimiter) + 1, wanted);
    RecordFaults faults;
    for (qsizetype found = 1;; ++found) {
        if (at != end && *at == quote) {
            at = behindQuote(at, end, quote);
            if (!at)
                return faults | RecordFault::OpenQuote;
            faults.setFlag(RecordFault::TextAfterQuote,
                           faults.testFlag(RecordFault::TextAfterQuote)
                               || (at != end && *at != delimiter));
        }
        at = std::find(at, end, delimiter);
        if (at == end)
            return faults | faultsOfCount(found, wanted);
        ++at;
    }
}

} // namespace

RecordFaults faultsOf(QStringView record, QChar delimiter, qsizetype fields)
{
    const char16_t *const begin = record.utf16();
    return faultsIn(begin, begin + record.size(), char16_t(delimiter.unicode()), fields);
}

RecordFaults faultsOf(QByteArrayView record, char delimiter, qsizetype fields)
{
    return faultsIn(record.begin(), record.end(), delimiter, fields);
}
