// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "columnsort.h"

#include "order/sortedrows.h"
#include "search/tablefilter.h"
#include "viewertable.h"

#include <QActionGroup>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QMenu>

#include <utility>

namespace {

constexpr int s_longestTitle = 30; // characters

} // namespace

ColumnSort::ColumnSort(TableFilter *find, ViewerTable *table)
    : QObject(table)
    , m_find(find)
    , m_table(table)
    , m_label(new QLabel(table))
{
    m_label->setObjectName(QStringLiteral("sortLabel"));
    m_label->setTextFormat(Qt::PlainText);
    m_label->hide();
    table->header()->setSectionsClickable(true);
    table->header()->setHighlightSections(false);
    connect(table->header(), &QHeaderView::sectionClicked, this, &ColumnSort::headerClicked);
    connect(find, &TableFilter::modelShown, this, &ColumnSort::showInHeader);
    connect(find, &TableFilter::sorting, this, &ColumnSort::tellProgress);
}

int ColumnSort::column() const
{
    return m_find->sortColumn();
}

Qt::SortOrder ColumnSort::order() const
{
    return m_find->sortOrder();
}

void ColumnSort::addActions(QMenu *menu, int column)
{
    auto *group = new QActionGroup(menu);
    const auto add = [&](const QString &text, int by, Qt::SortOrder order) {
        QAction *action = group->addAction(menu->addAction(text));
        action->setCheckable(true);
        action->setChecked(this->column() == by && (by < 0 || this->order() == order));
        connect(action, &QAction::triggered, this, [this, by, order] { sortBy(by, order); });
    };
    add(tr("&Sort Upwards"), column, Qt::AscendingOrder);
    add(tr("Sort &Downwards"), column, Qt::DescendingOrder);
    add(tr("&Not Sorted"), -1, Qt::AscendingOrder);
}

void ColumnSort::headerClicked(int column)
{
    if (column != this->column())
        sortBy(column, Qt::AscendingOrder);
    else if (order() == Qt::AscendingOrder)
        sortBy(column, Qt::DescendingOrder);
    else
        sortBy(-1, Qt::AscendingOrder);
}

void ColumnSort::sortBy(int column, Qt::SortOrder order)
{
    if (column == this->column() && (column < 0 || order == this->order()))
        return;
    m_isAwaited = column >= 0;
    m_find->sortBy(column, order);
    Q_EMIT sorted(column >= 0);
}

void ColumnSort::leaveLostColumn()
{
    if (m_table->model() && column() >= m_table->model()->columnCount())
        sortBy(-1, Qt::AscendingOrder);
}

void ColumnSort::showInHeader()
{
    QHeaderView *header = m_table->header();
    const int column = this->column();
    header->setSortIndicatorShown(column >= 0);
    if (column >= 0)
        header->setSortIndicator(column, order());
    m_label->setVisible(column >= 0);
}

void ColumnSort::tellProgress(double part)
{
    if (m_find->engine())
        tellEngine();
    const SortedRows *rows = m_find->sortedRows();
    if (!rows)
        return;
    if (!rows->isSorted()) {
        m_label->setText(tr("Sorting… %1 %").arg(int(part * 100)));
        return;
    }
    m_label->setText(tr("Sorted by “%1”").arg(nameOf(rows->column())));
    m_label->setToolTip(tr("The order of the rows takes %1.")
                            .arg(QLocale().formattedDataSize(qint64(rows->memory()))));
    if (std::exchange(m_isAwaited, false))
        showFirst();
}

//! It has begun to show its first rows, whenever they come.
void ColumnSort::tellEngine()
{
    showInHeader();
    m_label->setText(column() < 0 ? QString() : tr("Sorted by “%1”").arg(nameOf(column())));
    m_label->setToolTip({});
    m_isAwaited = false;
    m_table->scrollToTop();
}

//! The row that somebody has chosen, else the one that comes first now.
void ColumnSort::showFirst()
{
    if (m_table->currentIndex().isValid())
        m_table->scrollTo(m_table->currentIndex());
    else
        m_table->scrollToTop();
}

QString ColumnSort::nameOf(int column) const
{
    QString name = m_table->model()->headerData(column, Qt::Horizontal).toString().simplified();
    if (name.size() > s_longestTitle)
        name = name.left(s_longestTitle) + QChar(0x2026);
    return name;
}
