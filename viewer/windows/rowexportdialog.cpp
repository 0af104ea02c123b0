// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "rowexportdialog.h"

#include "common.h"
#include "qtablefastview.h"
#include "rowexport.h"

#include <QDir>
#include <QFileDialog>
#include <QHeaderView>
#include <QMainWindow>
#include <QMessageBox>
#include <QStatusBar>

namespace {

constexpr int s_savedTime = 5000;  // ms
constexpr int s_quickExport = 300; // ms; of shorter ones nothing is seen

} // namespace

RowExportDialog::RowExportDialog(RowExport *rows, QMainWindow *window)
    : QProgressDialog(window)
    , m_rows(rows)
    , m_window(window)
{
    setWindowModality(Qt::WindowModal);
    setMinimumDuration(s_quickExport);
    setAutoClose(false);
    setAutoReset(false);
    setCancelButtonText(tr("&Stop"));
    rows->setParent(this);
    connect(rows, &RowExport::progressed, this, &QProgressDialog::setValue);
    connect(rows, &RowExport::finished, this, &RowExportDialog::finish);
    connect(this, &QProgressDialog::canceled, rows, &RowExport::cancel);
    rows->start();
    setWindowTitle(tr("Save Rows"));
    setLabelText(tr("Saving %L1 rows…").arg(rows->rows()));
    setRange(0, rows->rows());
    setValue(0);
}

void RowExportDialog::finish(bool isComplete)
{
    hide();
    deleteLater();
    if (isComplete) {
        m_window->statusBar()->showMessage(tr("Saved %L1 rows.").arg(m_rows->rowsWritten()),
                                           s_savedTime);
    } else if (!m_rows->error().isEmpty()) {
        auto *box = new QMessageBox(QMessageBox::Warning, tr("Save Rows"),
                                    tr("The rows could not be saved."), QMessageBox::Ok, m_window);
        box->setInformativeText(m_rows->error());
        box->setAttribute(Qt::WA_DeleteOnClose);
        box->open();
    }
}

void RowExportDialog::saveRowsAs(QTableFastView *table, QMainWindow *window)
{
    const QString csv = tr("Fields between commas, CSV (*.csv)");
    const QString tabs = tr("Text between tabs (*.txt *.tsv)");
    const QPointer<QMainWindow> self(window);
    QString chosen;
    const QString path = QFileDialog::getSaveFileName(window, tr("Save Rows As"), {},
                                                      csv + QLatin1String(";;") + tabs, &chosen);
    if (path.isEmpty() || !self || !table->model())
        return;
    const RowFormat format = chosen == tabs ? RowFormat::Tabs : RowFormat::Csv;
    new RowExportDialog(
        new RowExport(table->model(), getVisibleColumns(table->header()), format, path), window);
}
