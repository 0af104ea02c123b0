// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef ROWTEXTS_H
#define ROWTEXTS_H

#include <QItemSelection>
#include <QList>
#include <QString>

class QAbstractItemModel;

//! How rows become text.
enum class RowFormat {
    Tabs, //!< fields between tabs
    Csv   //!< as RFC 4180 has it, with a header; lines end with a line feed
};

//! Writes rows of a model, of some of its columns in a given order, as they are shown.
class RowTexts
{
public:
    //! \a model must outlive it.
    RowTexts(const QAbstractItemModel *model, const QList<int> &columns, RowFormat format);

    //! The names of the columns.
    QString header() const;
    QString row(int row) const;
    //! \a fields of the columns as a row of the format.
    QString joined(const QStringList &fields) const;

    //! The rows of \a selection in the model's order, each once, at most \a most of them,
    //! with \a isCut set if there were more. With a header if the format has one.
    QString rows(const QItemSelection &selection, int most, bool *isCut = nullptr) const;

private:
    const QAbstractItemModel *m_model;
    QList<int> m_columns;
    RowFormat m_format;
};

#endif // ROWTEXTS_H
