// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "marksdialog.h"

#include "basics/alignments.h"
#include "markedrows.h"
#include "search/rowtext.h"

#include <QAbstractItemModel>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLocale>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

MarksDialog::MarksDialog(const MarkedRows &marks, const QAbstractItemModel &model, QWidget *parent)
    : QDialog(parent)
    , m_list(new QTreeWidget(this))
{
    setWindowTitle(tr("Marks"));
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->setHeaderLabels({tr("Line"), tr("Text")});
    fill(marks, model);
    m_list->resizeColumnToContents(0);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    buttons->addButton(tr("&Go There"), QDialogButtonBox::AcceptRole)->setDefault(true);
    connect(buttons, &QDialogButtonBox::accepted, this, &MarksDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &MarksDialog::reject);
    connect(m_list, &QTreeWidget::itemDoubleClicked, this, &MarksDialog::accept);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_list);
    layout->addWidget(buttons);
    resize(fontMetrics().horizontalAdvance(u'x') * 80, fontMetrics().height() * 20);
}

void MarksDialog::fill(const MarkedRows &marks, const QAbstractItemModel &model)
{
    QList<QTreeWidgetItem *> items;
    const QList<int> rows = marks.rows();
    for (const int row : rows) {
        auto *item = new QTreeWidgetItem({locale().toString(row + 1), rowText(model, row)});
        item->setTextAlignment(0, numberAlignment);
        items.append(item);
        m_rows.append(model.index(row, 0));
    }
    m_list->addTopLevelItems(items);
    if (!items.isEmpty())
        m_list->setCurrentItem(items.first());
}

void MarksDialog::accept()
{
    const int place = m_list->indexOfTopLevelItem(m_list->currentItem());
    const QModelIndex row = m_rows.value(place);
    QDialog::accept();
    if (row.isValid())
        Q_EMIT rowChosen(row.row());
}
