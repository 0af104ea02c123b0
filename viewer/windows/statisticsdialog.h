// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef STATISTICSDIALOG_H
#define STATISTICSDIALOG_H

#include <QDialog>
#include <QElapsedTimer>
#include <QTimer>

class FrameStatistics;
class QLabel;
class QTableFastView;

//! What the program costs, told once a second while it is shown.
class StatisticsDialog : public QDialog
{
    Q_OBJECT

public:
    //! About \a table and the frames in \a statistics; both must outlive it.
    StatisticsDialog(const QTableFastView *table, const FrameStatistics *statistics,
                     QWidget *parent);

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    QLabel *addLine(const QString &name);
    void tell();

    const QTableFastView *m_table;       //!< not owned
    const FrameStatistics *m_statistics; //!< not owned
    QLabel *m_rows;
    QLabel *m_frames;
    QLabel *m_usual;
    QLabel *m_slow;
    QLabel *m_memory;
    QTimer m_timer;          //!< runs while it is shown
    QElapsedTimer m_since;   //!< since frames were last counted
    qint64 m_lastFrames = 0; //!< frames then
};

#endif // STATISTICSDIALOG_H
