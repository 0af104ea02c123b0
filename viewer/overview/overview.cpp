// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "overview.h"

#include "gototime.h"
#include "overviewstrip.h"

#include <QAction>
#include <QLabel>
#include <QSettings>

namespace {

const QString s_isShown = QStringLiteral("overviewStrip"); // in the settings

} // namespace

Overview::Overview(TableFilter *find, QTableFastView *table, const MarkedRows *marks,
                   QWidget *parent)
    : QObject(parent)
    , m_survey(new RowSurvey(find, table, this))
    , m_goToTime(new GoToTime(find, table, parent))
    , m_strip(new OverviewStrip(find, table, m_survey, marks, parent))
    , m_label(new QLabel(parent))
    , m_action(new QAction(tr("&Overview Strip"), this))
{
    m_strip->setObjectName(QStringLiteral("overviewStrip"));
    m_label->setObjectName(QStringLiteral("hitsLabel"));
    m_label->setTextFormat(Qt::PlainText);
    m_label->hide();
    m_action->setCheckable(true);
    m_action->setChecked(QSettings().value(s_isShown, true).toBool());
    m_strip->setVisible(m_action->isChecked());
    connect(m_action, &QAction::toggled, m_strip, &QWidget::setVisible);
    connect(m_action, &QAction::triggered, this,
            [](bool on) { QSettings().setValue(s_isShown, on); });
    connect(m_survey, &RowSurvey::changed, this, &Overview::updateLabel);
}

void Overview::updateLabel()
{
    const QString text =
        m_survey->areHitsComplete() ? tr("%L1 of %L2 rows match") : tr("%L1+ of %L2 rows match");
    m_label->setText(text.arg(m_survey->hits().total()).arg(m_survey->rows()));
    m_label->setVisible(m_survey->isSeeking());
}
