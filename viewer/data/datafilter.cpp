// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "datafilter.h"

namespace {

// Where what is quoted or commented at \a place ends, one character behind; −1 if nowhere.
qsizetype endOfQuoted(const QString &where, qsizetype place)
{
    const QChar quote = where.at(place);
    if (quote == u'-') {
        const qsizetype end = where.indexOf(u'\n', place);
        return end < 0 ? where.size() : end + 1;
    }
    if (quote == u'/') {
        const qsizetype end = where.indexOf(QLatin1String("*/"), place + 2);
        return end < 0 ? -1 : end + 2;
    }
    const qsizetype end = where.indexOf(quote, place + 1);
    return end < 0 ? -1 : end + 1;
}

bool isQuoteAt(const QString &where, qsizetype place)
{
    const QStringView rest = QStringView(where).mid(place);
    return rest.front() == u'\'' || rest.front() == u'"' || rest.startsWith(QLatin1String("--"))
        || rest.startsWith(QLatin1String("/*"));
}

} // namespace

bool isSingleCondition(const QString &where)
{
    // Engines read these in more than one way, and could find the end of a text elsewhere.
    const bool isAmbiguous = where.contains(u'\\') || where.contains(u'$') || where.contains(u'`')
        || where.contains(u'[') || where.contains(QChar(u'\0'));
    if (isAmbiguous && where.contains(u';'))
        return false;
    int depth = 0;
    for (qsizetype place = 0; place < where.size();) {
        if (isQuoteAt(where, place)) {
            place = endOfQuoted(where, place);
            if (place < 0)
                return false;
            continue;
        }
        const QChar character = where.at(place++);
        depth += character == u'(' ? 1 : character == u')' ? -1 : 0;
        if (character == u';' || depth < 0)
            return false;
    }
    return depth == 0;
}
