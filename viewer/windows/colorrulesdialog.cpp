// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "colorrulesdialog.h"

#include <QColorDialog>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QSignalBlocker>
#include <QTableWidget>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

enum Column {
    Text,
    Expression,
    Case,
    Color
};

const QColor s_firstColor(0xc0, 0x39, 0x2b); // of a new rule

QTableWidgetItem *createSwitch(bool isOn)
{
    auto *item = new QTableWidgetItem;
    item->setFlags(Qt::ItemIsUserCheckable | Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    item->setCheckState(isOn ? Qt::Checked : Qt::Unchecked);
    return item;
}

QTableWidgetItem *createColor(const QColor &color)
{
    auto *item = new QTableWidgetItem(color.name());
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    item->setData(Qt::DecorationRole, color);
    return item;
}

} // namespace

ColorRulesDialog::ColorRulesDialog(const QList<ColorRule> &rules, QWidget *parent)
    : QDialog(parent)
    , m_table(new QTableWidget(0, 4, this))
    , m_problem(new QLabel(this))
{
    setWindowTitle(tr("Colours of Rows"));
    m_table->setHorizontalHeaderLabels(
        {tr("Rows with"), tr("Regular expression"), tr("Match case"), tr("Colour")});
    m_table->verticalHeader()->hide();
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    m_table->setTabKeyNavigation(false); // the buttons are reached by it
    m_table->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_table->horizontalHeader()->setSectionResizeMode(Text, QHeaderView::Stretch);
    m_problem->setObjectName(QStringLiteral("problemLabel"));
    m_problem->setTextFormat(Qt::PlainText);
    m_problem->setWordWrap(true);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel(tr("The first rule that a row fits gives it its colour.")));
    layout->addWidget(m_table);
    layout->addWidget(createButtons());
    layout->addWidget(m_problem);
    layout->addWidget(buttons);
    for (const ColorRule &rule : rules)
        add(rule);
    connect(m_table, &QTableWidget::itemChanged, this, &ColorRulesDialog::update);
    connect(m_table, &QTableWidget::currentCellChanged, this, &ColorRulesDialog::update);
    connect(m_table, &QTableWidget::cellActivated, this, [this](int row, int column) {
        if (column == Color)
            chooseColor(row);
    });
    resize(fontMetrics().horizontalAdvance(u'x') * 80, fontMetrics().height() * 20);
    update();
}

QWidget *ColorRulesDialog::createButtons()
{
    auto *row = new QWidget;
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    const auto create = [&](const QString &text) {
        auto *button = new QToolButton;
        button->setText(text);
        layout->addWidget(button);
        return button;
    };
    connect(create(tr("&Add")), &QToolButton::clicked, this, [this] {
        add({QString(), false, false, s_firstColor});
        m_table->setCurrentCell(m_table->rowCount() - 1, Text);
        m_table->setFocus();
        m_table->editItem(m_table->currentItem());
    });
    m_remove = create(tr("&Remove"));
    m_up = create(tr("&Up"));
    m_down = create(tr("&Down"));
    connect(m_remove, &QToolButton::clicked, this, &ColorRulesDialog::remove);
    connect(m_up, &QToolButton::clicked, this, [this] { move(-1); });
    connect(m_down, &QToolButton::clicked, this, [this] { move(1); });
    layout->addStretch();
    return row;
}

void ColorRulesDialog::add(const ColorRule &rule)
{
    const int row = m_table->rowCount();
    m_table->insertRow(row);
    setRow(row, rule);
}

void ColorRulesDialog::setRow(int row, const ColorRule &rule)
{
    const QSignalBlocker whileFilling(m_table);
    m_table->setItem(row, Text, new QTableWidgetItem(rule.text));
    m_table->setItem(row, Expression, createSwitch(rule.isExpression));
    m_table->setItem(row, Case, createSwitch(rule.matchesCase));
    m_table->setItem(row, Color, createColor(rule.color));
}

ColorRule ColorRulesDialog::ruleOf(int row) const
{
    return {m_table->item(row, Text)->text(),
            m_table->item(row, Expression)->checkState() == Qt::Checked,
            m_table->item(row, Case)->checkState() == Qt::Checked,
            m_table->item(row, Color)->data(Qt::DecorationRole).value<QColor>()};
}

QList<ColorRule> ColorRulesDialog::rules() const
{
    QList<ColorRule> rules;
    for (int row = 0; row < m_table->rowCount(); ++row) {
        if (const ColorRule rule = ruleOf(row); !rule.text.isEmpty())
            rules.append(rule);
    }
    return rules;
}

void ColorRulesDialog::remove()
{
    m_table->removeRow(m_table->currentRow());
    update();
}

void ColorRulesDialog::move(int by)
{
    const int row = m_table->currentRow();
    const int other = row + by;
    if (row < 0 || other < 0 || other >= m_table->rowCount())
        return;
    const ColorRule moved = ruleOf(row);
    setRow(row, ruleOf(other));
    setRow(other, moved);
    m_table->setCurrentCell(other, m_table->currentColumn());
    update();
}

void ColorRulesDialog::chooseColor(int row)
{
    const QColor color = QColorDialog::getColor(ruleOf(row).color, this);
    if (color.isValid())
        m_table->setItem(row, Color, createColor(color));
}

//! An expression that is none colours nothing; it is kept, to be mended.
void ColorRulesDialog::update()
{
    const int row = m_table->currentRow();
    m_remove->setEnabled(row >= 0);
    m_up->setEnabled(row > 0);
    m_down->setEnabled(row >= 0 && row + 1 < m_table->rowCount());
    const ColorRule rule = row >= 0 ? ruleOf(row) : ColorRule();
    m_problem->setText(TextMatcher(rule.text, {false, false, rule.isExpression}).problem());
}
