// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef FAULTGUIDE_H
#define FAULTGUIDE_H

#include "faultyrows.h"

#include <QObject>

class QAction;
class QTableFastView;
class QToolButton;
class QWidget;
class TableFilter;

/*!
 * \brief Tells of a file's malformed records, and leads from one to another.
 */
class FaultGuide : public QObject
{
    Q_OBJECT

public:
    //! About the file that \a find filters and \a table shows. Both must outlive it; \a parent is
    //! that of its widgets, too.
    FaultGuide(TableFilter *find, QTableFastView *table, QWidget *parent);

    const FaultyRows &rows() const { return m_rows; }
    //! Whether \a row of the table is malformed.
    bool isFaulty(int row) const;

    //! Lead to the next and the former malformed record.
    //! @{
    QAction *nextAction() const { return m_nextAction; }
    QAction *previousAction() const { return m_previousAction; }
    //! @}
    //! Tells how many there are, and leads to the next one. Hidden while there is none.
    QToolButton *button() const { return m_button; }

Q_SIGNALS:
    //! The user wants to see \a row of the file.
    void rowChosen(int row);
    //! What the user should know now; empty: nothing.
    void said(const QString &text);

private:
    void followSource();
    void update();
    void step(bool forward);
    QString explanation() const;

    TableFilter *m_find;     //!< not owned
    QTableFastView *m_table; //!< not owned
    FaultyRows m_rows;
    QAction *m_nextAction;
    QAction *m_previousAction;
    QToolButton *m_button;
};

#endif // FAULTGUIDE_H
