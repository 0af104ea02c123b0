// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef ROWLOADER_H
#define ROWLOADER_H

#include <QAbstractItemModel>

//! A model whose rows are not all at hand. What it has of a row it does not know is a stand-in.
class RowLoader
{
public:
    virtual ~RowLoader() = default;

    //! Waits until \a row is there. Returns false if it cannot be had.
    virtual bool load(int row) = 0;
};

//! Has \a model get \a row, where that is needed: before all rows are walked through. Returns false
//! if it cannot be had.
inline bool loadRow(const QAbstractItemModel *model, int row)
{
    auto *loader = dynamic_cast<RowLoader *>(const_cast<QAbstractItemModel *>(model));
    return !loader || loader->load(row);
}

#endif // ROWLOADER_H
