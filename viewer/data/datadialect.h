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
    //! How a query gives no more than some rows.
    enum class Limit {
        AtEnd, //!< LIMIT 3
        Fetch, //!< FETCH FIRST 3 ROWS ONLY
        Top,   //!< SELECT TOP 3
        None   //!< it cannot: who reads them stops
    };

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
    bool writesCells = true; //!< the engine does that; else who reads the value

    QString contains {};       //!< how a text is said to contain %2
    QString anyCase {};        //!< how a text becomes one in lower case
    QString matches {};        //!< how a text is compared with a regular expression; may be empty
    QString matchesAnyCase {}; //!< the same, taking upper and lower case for the same
    QString anyCasePrefix {};  //!< of an expression that is compared so
    QString wordEdge {};       //!< in an expression, where words begin and end
    Limit limit = Limit::AtEnd;
    bool skipsRows = true;        //!< OFFSET is known
    bool comparesRows = true;     //!< (a, b) > (c, d) is known
    bool numbersRows = true;      //!< row_number() and % are known
    bool hasNullsFirst = true;    //!< NULL comes before other values, where they grow
    bool ordersNulls = true;      //!< so it is without being told
    bool castsParameters = false; //!< they are texts, cast to the type that is compared with
    QString orderedBinary {};     //!< how a binary number is ordered by; empty for by itself
    bool comparesShown = false;   //!< equal is what has the same text, among numbers with a point

    //! How numbers are added up, as DataQuery::sums() gives them; %2 is %1 as a decimal number.
    //! Empty if all are read for that.
    QString sums {};
    QString binaryAsDecimal {}; //!< how a binary number becomes a decimal one
    qint64 firstPart = 1;       //!< what the first part of a sum is to be multiplied by
    QString notInSums {};       //!< how a value is left out of sums; empty if none is

    //! That of \a engine.
    static DataDialect of(DataEngine engine);
    //! \a name as an identifier, whatever is in it.
    QString quoted(const QString &name) const;
    //! SELECT \a rest, of which there are at most \a rows, behind \a skipped others where
    //! skipsRows.
    QString select(const QString &rest, int rows, int skipped = 0) const;

    friend bool operator==(const DataDialect &, const DataDialect &) = default;
};

#endif // DATADIALECT_H
