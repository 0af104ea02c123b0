// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "overview.h"

#include "gototime.h"
#include "histogram.h"
#include "overviewstrip.h"
#include "qtablefastview.h"
#include "search/tablefilter.h"

#include <QAction>
#include <QLabel>
#include <QSettings>

Overview::Overview(TableFilter *find, QTableFastView *table, const MarkedRows *marks,
                   QWidget *parent)
    : QObject(parent)
    , m_survey(new RowSurvey(find, table, this))
    , m_goToTime(new GoToTime(find, table, parent))
    , m_strip(new OverviewStrip(find, table, m_survey, marks, parent))
    , m_histogram(new Histogram(m_survey, parent))
    , m_label(new QLabel(parent))
    , m_stripAction(
          createSwitch(tr("&Overview Strip"), QStringLiteral("overviewStrip"), true, m_strip))
    , m_histogramAction(
          createSwitch(tr("&Histogram"), QStringLiteral("histogram"), false, m_histogram))
    , m_find(find)
    , m_table(table)
{
    m_label->setObjectName(QStringLiteral("hitsLabel"));
    m_label->setTextFormat(Qt::PlainText);
    m_label->hide();
    connect(m_survey, &RowSurvey::changed, this, &Overview::updateLabel);
    connect(m_goToTime, &GoToTime::rowChosen, this, &Overview::rowChosen);
    connect(m_histogram, &Histogram::rowChosen, this, &Overview::goToShownRow);
    connect(m_histogram, &Histogram::timeChosen, m_goToTime,
            qOverload<const TimeStamp &>(&GoToTime::goTo));
    connect(m_histogram, &Histogram::spanChosen, this, &Overview::filterSpan);
}

//! Of a \a widget that is shown or hidden, as \a key of the settings has it, or \a isOn.
QAction *Overview::createSwitch(const QString &text, const QString &key, bool isOn, QWidget *widget)
{
    auto *action = new QAction(text, this);
    action->setCheckable(true);
    action->setChecked(QSettings().value(key, isOn).toBool());
    widget->setVisible(action->isChecked());
    connect(action, &QAction::toggled, widget, &QWidget::setVisible);
    connect(action, &QAction::triggered, this, [key](bool on) { QSettings().setValue(key, on); });
    return action;
}

void Overview::updateLabel()
{
    const QString text =
        m_survey->areHitsComplete() ? tr("%L1 of %L2 rows match") : tr("%L1+ of %L2 rows match");
    m_label->setText(text.arg(m_survey->hits().total()).arg(m_survey->rows()));
    m_label->setVisible(m_survey->isSeeking());
}

void Overview::goToShownRow(int row)
{
    const QModelIndex shown = m_table->model() ? m_table->model()->index(row, 0) : QModelIndex();
    if (shown.isValid())
        Q_EMIT rowChosen(m_find->toSource(shown).row());
}

void Overview::filterSpan(RowSpan span)
{
    const QAbstractItemModel *model = m_table->model();
    if (!model)
        return;
    // Neighbours in a sorted table are anywhere in the source.
    if (!span.areTimes && m_find->sortedRows())
        return;
    if (!span.areTimes) {
        const auto behind = [&](qint64 row) {
            return m_find->toSource(model->index(int(row), 0)).row();
        };
        span.from = behind(span.from);
        span.to = behind(span.to - 1) + 1;
        if (span.from < 0 || span.to <= 0)
            return;
    }
    // Events go on while rows are looked at: the mouse has to be let go before.
    QMetaObject::invokeMethod(
        m_find, [find = m_find, span] { find->setSpan(span); }, Qt::QueuedConnection);
}
