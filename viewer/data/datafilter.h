// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef DATAFILTER_H
#define DATAFILTER_H

#include <QList>
#include <QString>

//! What the values of a column are to be.
struct DataCondition
{
    enum class Is {
        Equal,
        NotEqual, //!< NULL is not equal either
        AtLeast,
        AtMost,
        Null,
        NotNull
    };

    int column = 0;
    Is is = Is::Equal;
    QString value {};      //!< as DataCell::text() gives it
    bool isNumber = false; //!< value is one

    friend bool operator==(const DataCondition &, const DataCondition &) = default;
};

//! A text that rows are to have in one of some columns.
struct DataText
{
    QString text {}; //!< empty for none
    QList<int> columns {};
    bool matchesCase = false;
    bool wholeWords = false;
    bool isExpression = false;

    friend bool operator==(const DataText &, const DataText &) = default;
};

//! Which rows are shown: those that meet all of it.
struct DataFilter
{
    DataText text {};
    QList<DataCondition> conditions {};
    QString where {}; //!< as it stands behind WHERE; empty for nothing

    bool isEmpty() const { return *this == DataFilter(); }

    friend bool operator==(const DataFilter &, const DataFilter &) = default;
};

//! Whether \a where can be a part of a query and nothing more: brackets, quotes and comments are
//! closed, and nothing ends the statement. What may be understood in two ways is refused.
bool isSingleCondition(const QString &where);

#endif // DATAFILTER_H
