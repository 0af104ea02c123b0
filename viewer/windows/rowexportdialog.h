// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef ROWEXPORTDIALOG_H
#define ROWEXPORTDIALOG_H

#include <QProgressDialog>

class QMainWindow;
class QTableFastView;
class RowExport;

//! Shows how far an export has come, stops it, and tells at its end how it went. Destroys
//! itself then.
class RowExportDialog : public QProgressDialog
{
    Q_OBJECT

public:
    //! Takes \a rows over and starts it. The status bar of \a window, or a message box, tells of
    //! its end.
    RowExportDialog(RowExport *rows, QMainWindow *window);

    //! Asks for a file, and writes the rows of \a table, of its columns on screen, to it.
    static void saveRowsAs(QTableFastView *table, QMainWindow *window);

private:
    void finish(bool isComplete);

    RowExport *m_rows;     //!< a child
    QMainWindow *m_window; //!< the parent
};

#endif // ROWEXPORTDIALOG_H
