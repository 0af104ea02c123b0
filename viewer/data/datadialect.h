// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef DATADIALECT_H
#define DATADIALECT_H

#include "datasource.h"

#include <QString>

/*!
 * \brief What is not written alike for all engines.
 *
 * In the texts, %1 stands for an expression, most often a quoted name. What begins as "how" is such
 * a text.
 */
struct DataDialect
{
    DataEngine engine = DataEngine::Sqlite;
    QString quote {};  //!< on both sides of a name; within one it stands twice
    QString asText {}; //!< how a value becomes a text

    //! How a cell of bytes, of numbers, of anything else, and of numbers that are kept as texts
    //! becomes what DataCell reads; %2 is the most characters, %3 the most bytes.
    //! @{
    QString binaryCell {};
    QString numberCell {};
    QString textCell {};
    QString exactCell {};
    //! @}

    QString contains {};          //!< how a text is said to contain %2
    QString matches {};           //!< how a text is compared with a regular expression
    QString matchesAnyCase {};    //!< the same, taking upper and lower case for the same
    QString anyCasePrefix {};     //!< of an expression that is compared so
    QString wordEdge {};          //!< in an expression, where words begin and end
    bool hasNullsFirst = true;    //!< NULL comes before other values, where they grow
    bool castsParameters = false; //!< they are texts, cast to the type that is compared with
    bool comparesShown = false;   //!< equal is what has the same text, among numbers with a point

    //! How numbers are added up, as DataQuery::sums() gives them; %2 is %1 as a decimal number.
    QString sums {};
    QString binaryAsDecimal {}; //!< how a binary number becomes a decimal one
    qint64 firstPart = 1;       //!< what the first part of a sum is to be multiplied by
    QString notInSums {};       //!< how a value is left out of sums; empty if none is

    //! That of \a engine.
    static DataDialect of(DataEngine engine);
    //! \a name as an identifier, whatever is in it.
    QString quoted(const QString &name) const;

    friend bool operator==(const DataDialect &, const DataDialect &) = default;
};

#endif // DATADIALECT_H
