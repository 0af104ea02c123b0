// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "faultguide.h"

#include "files/textfilemodel.h"
#include "qtablefastview.h"
#include "rowstep.h"
#include "search/tablefilter.h"

#include <QAction>
#include <QToolButton>

FaultGuide::FaultGuide(TableFilter *find, QTableFastView *table, QWidget *parent)
    : QObject(parent)
    , m_find(find)
    , m_table(table)
    , m_nextAction(new QAction(tr("Next &Malformed Record"), parent))
    , m_previousAction(new QAction(tr("Pre&vious Malformed Record"), parent))
    , m_button(new QToolButton(parent))
{
    m_nextAction->setShortcut(Qt::Key_F8);
    m_previousAction->setShortcut(Qt::SHIFT | Qt::Key_F8);
    m_button->setObjectName(QStringLiteral("faultsButton"));
    m_button->setAutoRaise(true);
    connect(m_nextAction, &QAction::triggered, this, [this] { step(true); });
    connect(m_previousAction, &QAction::triggered, this, [this] { step(false); });
    connect(m_button, &QToolButton::clicked, this, [this] { step(true); });
    connect(find, &TableFilter::modelShown, this, &FaultGuide::followSource);
    connect(&m_rows, &FaultyRows::changed, this, &FaultGuide::update);
    update();
}

void FaultGuide::followSource()
{
    m_rows.setModel(qobject_cast<TextFileModel *>(m_find->source()));
}

void FaultGuide::update()
{
    const bool isAny = m_rows.count() > 0;
    m_nextAction->setEnabled(isAny);
    m_previousAction->setEnabled(isAny);
    m_button->setVisible(isAny);
    m_button->setText(tr("Malformed: %L1").arg(m_rows.count()));
    m_button->setToolTip(explanation());
}

//! How many there are of each kind.
QString FaultGuide::explanation() const
{
    QStringList lines;
    const auto tell = [&](const QString &text, RecordFault fault) {
        if (m_rows.count(fault) > 0)
            lines.append(text.arg(m_rows.count(fault)));
    };
    tell(tr("Quotes that nothing closes: %L1"), RecordFault::OpenQuote);
    tell(tr("Text after a closing quote: %L1"), RecordFault::TextAfterQuote);
    tell(tr("Fewer fields than the header: %L1"), RecordFault::TooFewFields);
    tell(tr("More fields than the header: %L1"), RecordFault::TooManyFields);
    lines.append(tr("A click, or F8, goes to the next one."));
    return lines.join(u'\n');
}

bool FaultGuide::isFaulty(int row) const
{
    const auto *file = qobject_cast<const TextFileModel *>(m_find->source());
    return file && file->format().isDelimited()
        && file->faultsOf(m_find->toSource(m_table->model()->index(row, 0)).row());
}

void FaultGuide::step(bool forward)
{
    const RowStep next = stepAmong(m_rows.rows(), forward, *m_find, *m_table);
    if (next.row < 0) {
        Q_EMIT said(tr("There is no other malformed record."));
        return;
    }
    Q_EMIT rowChosen(next.row);
    const auto *file = qobject_cast<const TextFileModel *>(m_find->source());
    Q_EMIT said(file->data(file->index(next.row, 0), Qt::ToolTipRole).toString());
}
