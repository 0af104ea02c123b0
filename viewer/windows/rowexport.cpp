// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "rowexport.h"

#include "basics/rowloader.h"
#include "files/controlpictures.h"
#include "files/wholerow.h"

#include <QAbstractItemModel>
#include <QElapsedTimer>

RowExport::RowExport(const QAbstractItemModel *model, const QList<int> &columns, RowFormat format,
                     const QString &path, QObject *parent)
    : QObject(parent)
    , m_model(model)
    , m_columns(columns)
    , m_format(format)
    , m_texts(model, columns, format)
    , m_file(path)
{
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &RowExport::goOn);
}

void RowExport::start()
{
    m_isRunning = true;
    m_timer.start(0);
    if (!m_model)
        return;
    m_rows = m_model->rowCount();
    m_end = m_rows;
    followModel();
    const bool isOpen = m_file.open(QIODevice::WriteOnly);
    if (!isOpen || (m_format == RowFormat::Csv && !write(m_texts.header())))
        m_error = m_file.errorString();
}

void RowExport::followModel()
{
    connect(m_model, SIGNAL(rowsInserted(QModelIndex, int, int)), this,
            SLOT(rowsInserted(QModelIndex, int, int)));
    connect(m_model, SIGNAL(rowsRemoved(QModelIndex, int, int)), this,
            SLOT(rowsRemoved(QModelIndex, int, int)));
    for (const char *signal :
         {SIGNAL(modelReset()), SIGNAL(layoutChanged()),
          SIGNAL(rowsMoved(QModelIndex, int, int, QModelIndex, int)),
          SIGNAL(columnsInserted(QModelIndex, int, int)),
          SIGNAL(columnsRemoved(QModelIndex, int, int)),
          SIGNAL(columnsMoved(QModelIndex, int, int, QModelIndex, int)), SIGNAL(destroyed())})
        connect(m_model, signal, this, SLOT(rowsChanged()));
}

//! In the next slice: whoever changes the rows is to be told nothing in between.
void RowExport::rowsChanged()
{
    if (m_error.isEmpty())
        m_error = tr("The rows changed while they were being saved.");
}

void RowExport::rowsInserted(const QModelIndex & /*parent*/, int first, int last)
{
    if (first >= m_end)
        return;
    if (first > m_next)
        rowsChanged();
    m_next += last - first + 1;
    m_end += last - first + 1;
}

void RowExport::rowsRemoved(const QModelIndex & /*parent*/, int first, int last)
{
    if (first >= m_end)
        return;
    if (last >= m_next)
        rowsChanged();
    m_next -= last - first + 1;
    m_end -= last - first + 1;
}

void RowExport::goOn()
{
    if (!m_error.isEmpty() || !m_model || !writeSlice()) {
        rowsChanged(); // unless there is another error
        end(false);
        return;
    }
    if (m_next == m_end) {
        complete();
        return;
    }
    // Who is told may let events through, cancel, or destroy this.
    const QPointer<RowExport> self(this);
    Q_EMIT progressed(m_written);
    if (self && m_isRunning)
        m_timer.start(0);
}

bool RowExport::writeSlice()
{
    QElapsedTimer time;
    time.start();
    while (m_next < m_end) {
        if (!writeRow())
            return false;
        if (time.elapsed() >= m_sliceTime)
            break;
    }
    return true;
}

bool RowExport::writeRow()
{
    if (!loadRow(m_model, m_next)) {
        m_error = tr("Row %L1 could not be read.").arg(m_next + 1);
        return false;
    }
    const WholeRow whole = wholeRow(m_model->index(m_next, 0), mostBytes);
    if (whole.isCut) {
        m_error =
            tr("Row %L1 is too long: it has more than %L2 bytes.").arg(m_next + 1).arg(mostBytes);
        return false;
    }
    QStringList fields;
    for (const int column : m_columns) {
        const QString field = whole.fields.value(column);
        fields << (m_format == RowFormat::Csv ? field : withPictures(field));
    }
    ++m_next;
    ++m_written;
    return write(m_texts.joined(fields));
}

bool RowExport::write(const QString &line)
{
    const QByteArray bytes = line.toUtf8() + (m_format == RowFormat::Csv ? "\r\n" : "\n");
    if (m_file.write(bytes) == bytes.size())
        return true;
    m_error = m_file.errorString();
    return false;
}

void RowExport::complete()
{
    const bool isComplete = m_file.commit();
    if (!isComplete)
        m_error = m_file.errorString();
    end(isComplete);
}

void RowExport::cancel()
{
    if (m_isRunning)
        end(false);
}

void RowExport::end(bool isComplete)
{
    m_timer.stop();
    m_isRunning = false;
    if (m_model)
        disconnect(m_model, nullptr, this, nullptr);
    if (m_file.isOpen()) {
        m_file.cancelWriting();
        m_file.commit(); // removes what was written
    }
    Q_EMIT finished(isComplete);
}
