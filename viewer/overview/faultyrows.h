// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef FAULTYROWS_H
#define FAULTYROWS_H

#include "files/recordfaults.h"

#include <QList>
#include <QObject>
#include <QPointer>
#include <QTimer>

#include <array>

class QModelIndex;
class TextFileModel;

/*!
 * \brief Counts the malformed records of a file, and remembers where they are: four bytes each, of
 * the first million.
 *
 * It looks through the file between events once that is indexed, and at what is added later.
 */
class FaultyRows : public QObject
{
    Q_OBJECT

public:
    //! Milliseconds that it works before it lets events through; a block of the file that is read
    //! may make it one or two more.
    static constexpr int slice = 5;
    //! Rows that it remembers; more are only counted.
    static constexpr qsizetype most = 1 << 20;

    explicit FaultyRows(QObject *parent = nullptr);

    //! Looks through \a model, which stays the caller's; null for none. The same again changes
    //! nothing.
    void setModel(TextFileModel *model);

    //! Malformed records found so far; those with \a fault, of which one record may have several.
    //! @{
    qint64 count() const { return m_count; }
    qint64 count(RecordFault fault) const;
    //! @}
    //! From the top down.
    const QList<int> &rows() const { return m_rows; }
    //! Whether all rows there are have been looked at.
    bool isComplete() const;

Q_SIGNALS:
    //! There are more or other ones; at most ten times a second.
    void changed();

private:
    void rowsChanged(const QModelIndex &first, const QModelIndex &last);
    void beginAnew();
    void goOn();
    void work();
    void look(int row);
    void add(RecordFaults faults, int howOften);

    QPointer<TextFileModel> m_model;   //!< not owned
    QList<int> m_rows;                 //!< see rows()
    qint64 m_count = 0;                //!< see count()
    std::array<qint64, 4> m_counts {}; //!< by bit of RecordFault
    int m_next = 0;                    //!< row to be looked at next
    RecordFaults m_lastFaults;         //!< of the row before
    QTimer m_timer {this};             //!< for the next slice
    QTimer m_tellTimer {this};         //!< gathers changes
};

#endif // FAULTYROWS_H
