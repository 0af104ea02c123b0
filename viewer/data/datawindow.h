// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef DATAWINDOW_H
#define DATAWINDOW_H

#include "datarows.h"
#include "windows/pagestate.h"
#include "windows/viewerwindow.h"

#include <optional>

class QComboBox;
class QLineEdit;

//! A window with a table of a database, which chooses among its tables, filters, and adds up.
class DataWindow : public ViewerWindow
{
    Q_OBJECT

public:
    //! Opens \a source. Begins at the first row.
    DataWindow(const DataSource &source, FrameStatistics *statistics);
    ~DataWindow() override;

    DataRows *model() { return &m_model; }

    bool isSettled() const override;
    bool hasFailed() const override;
    PageState state() const override;
    //! Shows the table that was shown, in its order and through its filter, as soon as it is open.
    void restore(const PageState &state) override;

public Q_SLOTS:
    //! Shows another table of the database.
    void showTableNamed(const QString &name);
    //! Shows the rows that meet \a where, which stands behind WHERE; all if it is empty.
    void filterWhere(const QString &where);
    //! Shows the rows that meet \a condition, too.
    void filterMore(const DataCondition &condition);
    //! Adds up the numbers in \a column, in the status bar.
    void sumColumn(int column);

protected:
    void addCellActions(QMenu *menu, const QModelIndex &index) override;
    void filterChanged() override;
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void createTableBox();
    void createWherePanel();
    void createStatusBar();
    void addConditions(QMenu *menu, const QModelIndex &index);
    void lookSoon();
    void look();
    void showStatus();
    void showProblem();
    void tableOpened();
    void restoreRows();
    void showSums(const DataReads::Sums &sums);
    void showRefusal(const QString &reason);
    void askPassword();
    QString activityText() const;

    DataRows m_model;
    QComboBox *m_tableBox = nullptr;    //!< tables and views
    QToolBar *m_wherePanel = nullptr;   //!< at the bottom, hidden at first
    QLineEdit *m_where = nullptr;       //!< what the user writes behind WHERE
    QLabel *m_refusal = nullptr;        //!< what the engine says to that
    QLabel *m_activityLabel = nullptr;  //!< what it does, or what is wrong
    QLabel *m_columnSums = nullptr;     //!< see sumColumn()
    QLabel *m_rowsLabel = nullptr;      //!< number of rows
    QLabel *m_memoryLabel = nullptr;    //!< what the rows take
    QTimer m_lookTimer {this};          //!< gathers changes of what is on screen
    QTimer m_fitTimer {this};           //!< gathers rows that came
    bool m_isSettled = false;           //!< see isSettled()
    std::optional<PageState> m_awaited; //!< to be restored when the table is open
};

#endif // DATAWINDOW_H
