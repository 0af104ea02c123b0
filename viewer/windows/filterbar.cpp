// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "filterbar.h"

#include "basics/contrast.h"

#include <QApplication>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>

FilterBar::FilterBar(QWidget *parent)
    : QWidget(parent)
    , m_label(new QLabel(this))
    , m_button(new QToolButton(this))
{
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::Highlight);
    m_label->setForegroundRole(QPalette::HighlightedText);
    m_label->setTextFormat(Qt::PlainText);
    m_label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_button->setObjectName(QStringLiteral("showAllButton"));
    m_button->setText(tr("Show All Rows"));
    m_button->setToolTip(tr("Remove the filter (Esc)"));
    m_button->setAutoRaise(false);
    connect(m_button, &QToolButton::clicked, this, &FilterBar::removed);
    auto *layout = new QHBoxLayout(this);
    const int margin = fontMetrics().height() / 4;
    layout->setContentsMargins(2 * margin, margin, 2 * margin, margin);
    layout->addWidget(m_label, 1);
    layout->addWidget(m_button);
    updateColors();
    hide();
}

void FilterBar::showFilter(const QString &text, int shown, int all)
{
    m_label->setText(tr("%L1 of %L2 rows have “%3”").arg(shown).arg(all).arg(text));
    show();
}

void FilterBar::showProgress(double part)
{
    m_label->setText(tr("Filtering… %1 %").arg(int(part * 100)));
    show();
}

QString FilterBar::text() const
{
    return m_label->text();
}

void FilterBar::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::ApplicationPaletteChange)
        updateColors();
}

void FilterBar::updateColors()
{
    setPalette(withReadableHighlights(QApplication::palette(this)));
}
