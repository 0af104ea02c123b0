// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef VIEWERWINDOW_H
#define VIEWERWINDOW_H

#include "pagestate.h"
#include "rowfollower.h"
#include "rowtexts.h"

#include <QMainWindow>
#include <QTimer>

class ColumnSort;
class DetailPane;
class FaultGuide;
class FilterBar;
class FindPanel;
class FrameStatistics;
class MarksMenu;
class Overview;
class QAbstractItemModel;
class QAction;
class QHBoxLayout;
class QLabel;
class QMenu;
class QStackedWidget;
class QToolBar;
class SelectionSums;
class TableFilter;
class ViewerTable;

/*!
 * \brief A window with one table that keeps to its first or last row as rows arrive.
 */
class ViewerWindow : public QMainWindow
{
    Q_OBJECT

public:
    using Edge = RowFollower::Edge;

    //! An empty window whose frames go to \a statistics, which must outlive it.
    explicit ViewerWindow(FrameStatistics *statistics);

    ViewerTable *table() const { return m_table; }
    DetailPane *rowPane() const { return m_rowPane; }
    SelectionSums *sums() const { return m_sums; }
    //! Rows of the table; 0 without a model. Those that a filter hides do not count.
    int rows() const;
    bool isFollowing() const;
    void setFollowing(bool on);

    //! It is known whether there is anything to show.
    virtual bool isSettled() const { return true; }
    //! The rows, if there are any, have been on the screen.
    bool isPainted() const;
    //! There is nothing to show: it could not be opened.
    virtual bool hasFailed() const { return false; }

    //! How the page is shown. Its path is windowFilePath().
    virtual PageState state() const;
    //! Shows it as it was: at the row with the line that was current, as soon as there is one,
    //! and with columns as wide as they were, if there are as many. Path and format are left
    //! alone.
    virtual void restore(const PageState &state);

    //! Selected rows as text, in the order of the table and of the columns on screen. At
    //! most 100,000 rows, with \a isCut set if there were more.
    QString selectedText(RowFormat format = RowFormat::Tabs, bool *isCut = nullptr) const;

Q_SIGNALS:
    //! The user wants another window for \a path.
    void openRequested(const QString &path);
    //! The user wants to see the simulated market.
    void feedRequested();
    //! The user wants to end the program.
    void quitRequested();
    //! The window was closed by the user.
    void closed();
    //! isSettled() became true.
    void settled();

public Q_SLOTS:
    //! Puts selectedText() on the clipboard.
    void copySelection();
    //! Makes a line of the file, from 1 on, current and shows it among others; the next one
    //! that a filter shows, or the last. Ends following.
    void showLine(int line);
    //! Opens the panel to search and filter with, its text selected.
    void openFind();
    //! The same, with \a text in place of what was there, as if it was typed there.
    void openFindWith(const QString &text);
    //! Asks for files to open.
    void chooseFile();

protected:
    //! The next model shows the same rows: marks stay.
    void keepMarks();
    //! Shows \a model, which stays the caller's, following \a edge.
    void setModel(QAbstractItemModel *model, Edge edge);
    //! Pictures all rows beside the table, before it has a model: one whose rows come at its
    //! end.
    void createOverview();
    //! Shows nothing: the model is about to go.
    void removeModel();
    void setEdge(Edge edge);
    //! Shows \a text in place of the table.
    void showMessage(const QString &text);
    //! Shows \a page, which becomes a child, in place of the table.
    void showPage(QWidget *page);
    //! There never are rows: what is about them cannot be chosen.
    void leaveOutRows();
    //! Shows the table again after showMessage().
    void showTable();
    //! Shows \a line, from 1 on, as soon as it is there, unless another row is chosen or followed
    //! by then; 0 waits for none.
    void awaitLine(int line);
    //! No rows will come soon: restore() waits for its line no longer.
    void showAwaitedLine();
    //! What rows are filtered by is another, by no doing of the panel's.
    void updateFilterBar();
    //! How many rows there are, and how many of them are shown if there is a filter.
    QString rowsText() const;
    //! The table shows a model for the first time, or rows were filtered, or are all
    //! shown again.
    virtual void filterChanged() { }
    //! Adds to the context \a menu of the cell that \a index is.
    virtual void addCellActions(QMenu *menu, const QModelIndex &index);
    //! The panel was shown or hidden.
    virtual void findPanelShown(bool isShown);
    //! Lets \a action, with its shortcut, act while the table has the focus, and in no
    //! other part of the window.
    void addTableAction(QAction *action);

    QMenu *fileMenu() const { return m_fileMenu; }
    QMenu *viewMenu() const { return m_viewMenu; }
    QToolBar *toolBar() const { return m_toolBar; }
    QAction *followAction() const { return m_followAction; }

    void showEvent(QShowEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    void createActions();
    void createFindActions();
    void createMenus();
    void createFindPanel();
    void createRowPane();
    void createSums();
    void createMarks();
    void createFaults();
    void findAgain(bool forward);
    void keepFoundRow();
    void copyRows(RowFormat format);
    void goToLine();
    void showRow(int row);
    void say(const QString &text);
    void showAmongOthers(const QModelIndex &index);
    void showContextMenu(QPoint place);
    void filterBy(const QString &text);
    void markMatches();
    void toggleFilter();
    void undoByEsc();
    void fillRecentMenu(QMenu *menu);
    void editColorRules();
    void showAbout();
    void sortingChanged(bool isSorted);
    void showStatistics();
    void modelAboutToBeShown();
    void modelShown(QAbstractItemModel *model);
    void rowsChanged();
    void fitNewColumns();
    void growColumnsSoon();
    int shownLine() const;

    FrameStatistics *m_statistics;     //!< of the table, not owned
    QStackedWidget *m_pages;           //!< table or message
    ViewerTable *m_table;              //!< on page 0, below m_filterBar
    RowFollower *m_follower;           //!< keeps the table to its edge
    TableFilter *m_find;               //!< searches and filters the table
    ColumnSort *m_sort;                //!< a child of the table
    FilterBar *m_filterBar;            //!< above the table, while rows are filtered
    FindPanel *m_findPanel = nullptr;  //!< at the bottom, hidden at first
    QLabel *m_message;                 //!< page 1
    DetailPane *m_rowPane = nullptr;   //!< at the bottom, hidden at first
    SelectionSums *m_sums = nullptr;   //!< what the status bar tells of selected rows
    QHBoxLayout *m_tableRow;           //!< m_table and what is beside it
    Overview *m_overview = nullptr;    //!< see createOverview()
    FaultGuide *m_faults = nullptr;    //!< malformed records; see createOverview()
    MarksMenu *m_marks = nullptr;      //!< rows to find again
    QMenu *m_fileMenu = nullptr;       //!< Quit is its last action
    QMenu *m_editMenu = nullptr;       //!< what goes elsewhere is at its end
    QMenu *m_viewMenu = nullptr;       //!< Follow is its first action
    QToolBar *m_toolBar = nullptr;     //!< Follow is its first action
    QAction *m_saveAction = nullptr;   //!< writes the rows to a file
    QAction *m_followAction = nullptr; //!< checked while following
    QAction *m_copyAction = nullptr;   //!< Ctrl+C
    QAction *m_findAction = nullptr;   //!< Ctrl+F
    QAction *m_nextAction = nullptr;   //!< F3
    QAction *m_prevAction = nullptr;   //!< Shift+F3
    QAction *m_filterAction = nullptr; //!< checked while rows are filtered
    QAction *m_goToAction = nullptr;   //!< Ctrl+G
    QAction *m_closeAction = nullptr;  //!< Esc, while there is a panel or a span
    bool m_hasChosenRow = false;       //!< before rows were filtered, or of those shown since
    int m_awaitedLine = 0;             //!< to be shown when it is there; 0 for none
    PageState m_restored;              //!< columns that are to be as they were
    int m_columnsFitted = 0;           //!< columns when widths were last taken; 0 for never
    double m_filtering = 1;            //!< part of the rows looked at for a filter
    QTimer m_filterTimer {this};       //!< gathers changes of what m_filterBar says
    QTimer m_growTimer {this};         //!< widens columns when scrolling pauses
};

#endif // VIEWERWINDOW_H
