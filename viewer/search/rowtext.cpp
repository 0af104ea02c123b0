// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "rowtext.h"

#include "rowjudge.h"

QString rowText(const QAbstractItemModel &model, int row)
{
    constexpr int enough = 200; // characters
    QString text;
    for (int column = 0; column < model.columnCount() && text.size() < enough; ++column) {
        if (!isTextColumn(&model, column))
            continue;
        if (!text.isEmpty())
            text += u' ';
        text += model.index(row, column).data().toString();
    }
    text.truncate(enough);
    return text;
}
