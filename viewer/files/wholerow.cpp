// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "wholerow.h"

#include "basics/sourceindex.h"
#include "textfilemodel.h"

namespace {

WholeRow rowOfFile(const TextFileModel &model, int row, qint64 mostBytes)
{
    WholeRow whole;
    whole.bytes = model.rowBytes(row, mostBytes + 1); // one more tells whether there are more
    whole.isCut = whole.bytes.size() > mostBytes;
    whole.bytes.truncate(qsizetype(mostBytes));
    const TextFormat &format = model.format();
    const QString text = whole.isCut
        ? format.lineText(format.encoding.withoutPartialCharacter(whole.bytes), false)
        : format.lineText(whole.bytes, true);
    whole.isLine = !format.hasColumns();
    if (format.log.kind == LogFormat::Kind::JsonLines
        || format.log.kind == LogFormat::Kind::Journal)
        whole.object = text;
    if (whole.isLine)
        whole.fields << model.index(row, 0).data().toString() << text;
    else
        whole.fields = format.fieldsOf(text);
    while (whole.fields.size() < model.columnCount())
        whole.fields << QString();
    return whole;
}

} // namespace

WholeRow wholeRow(const QModelIndex &index, qint64 mostBytes)
{
    const QModelIndex source = sourceIndex(index);
    if (const auto *file = qobject_cast<const TextFileModel *>(source.model()))
        return rowOfFile(*file, source.row(), mostBytes);
    WholeRow whole;
    const int columns = source.isValid() ? source.model()->columnCount() : 0;
    for (int column = 0; column < columns; ++column)
        whole.fields << source.siblingAtColumn(column).data().toString();
    return whole;
}
