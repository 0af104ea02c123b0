// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef ROWEXPORT_H
#define ROWEXPORT_H

#include "rowtexts.h"

#include <QObject>
#include <QPointer>
#include <QSaveFile>
#include <QTimer>

class QModelIndex;

/*!
 * \brief Writes all rows of a model to a file, in slices, so that events go on.
 *
 * As UTF-8. CSV has a header, lines that end with CR and LF as RFC 4180 has it, and fields as they
 * are in the file, line breaks included; text between tabs has lines that end with LF and
 * stand-ins for control characters. Rows are written whole, where the table cuts them.
 *
 * A file that is there is replaced when all is written, and else left as it is. Rows that
 * come meanwhile are not written; if any that is to be written goes, it is an error.
 */
class RowExport : public QObject
{
    Q_OBJECT

public:
    static constexpr qint64 mostBytes = 16 << 20; //!< of a row; it is an error if one has more

    //! Writes \a columns, in this order, of the rows that \a model has when start() is called.
    //! It may be destroyed meanwhile, which is an error.
    RowExport(const QAbstractItemModel *model, const QList<int> &columns, RowFormat format,
              const QString &path, QObject *parent = nullptr);

    //! Begins; finished() comes later. Call once, after connecting.
    void start();
    //! finished() is to come.
    bool isRunning() const { return m_isRunning; }
    //! What went wrong, for the user; empty if nothing did, also after cancel().
    QString error() const { return m_error; }
    //! Rows written so far.
    int rowsWritten() const { return m_written; }
    //! Rows to be written in all.
    int rows() const { return m_rows; }

    //! Writes for \a milliseconds, and one row at least, before events go on; 20 at first.
    void setSliceTime(int milliseconds) { m_sliceTime = milliseconds; }

public Q_SLOTS:
    //! Ends it and leaves everything as it was.
    void cancel();

Q_SIGNALS:
    //! rowsWritten() is \a rows.
    void progressed(int rows);
    //! All is written if \a isComplete; else it was cancelled, or there is an error().
    void finished(bool isComplete);

private Q_SLOTS:
    void rowsChanged();
    void rowsInserted(const QModelIndex &parent, int first, int last);
    void rowsRemoved(const QModelIndex &parent, int first, int last);

private:
    void followModel();
    void goOn();
    bool writeSlice();
    bool writeRow();
    bool write(const QString &line);
    void complete();
    void end(bool isComplete);

    QPointer<const QAbstractItemModel> m_model; //!< not owned
    const QList<int> m_columns;                 //!< as given
    const RowFormat m_format;                   //!< as given
    const RowTexts m_texts;                     //!< writes rows of m_model
    QSaveFile m_file;                           //!< written to
    QTimer m_timer {this};                      //!< single, for the next slice
    int m_sliceTime = 20;                       //!< ms
    bool m_isRunning = false;                   //!< see isRunning()
    int m_next = 0;                             //!< the row to be written next
    int m_end = 0;                              //!< behind the last one
    int m_rows = 0;                             //!< see rows()
    int m_written = 0;                          //!< see rowsWritten()
    QString m_error;                            //!< see error()
};

#endif // ROWEXPORT_H
