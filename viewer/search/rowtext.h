// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef ROWTEXT_H
#define ROWTEXT_H

#include <QString>

class QAbstractItemModel;

//! The texts of \a row in all columns of \a model, numbers of lines left out, with a blank
//! between them; its first 200 characters. Empty outside of the rows.
QString rowText(const QAbstractItemModel &model, int row);

#endif // ROWTEXT_H
