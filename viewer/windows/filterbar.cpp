// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "filterbar.h"

#include "basics/contrast.h"
#include "search/rowengine.h"
#include "search/tablefilter.h"

#include <QApplication>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>

FilterBar::FilterBar(QWidget *parent)
    : QWidget(parent)
    , m_label(new QLabel(this))
    , m_spanButton(createButton("showAllTimesButton", tr("Remove Span"),
                                tr("Show rows before and after the span, too")))
    , m_button(createButton("showAllButton", tr("Show All Rows"), tr("Remove the filter (Esc)")))
{
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::Highlight);
    m_label->setForegroundRole(QPalette::HighlightedText);
    m_label->setTextFormat(Qt::PlainText);
    m_label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_spanButton->hide();
    connect(m_spanButton, &QToolButton::clicked, this, &FilterBar::spanRemoved);
    connect(m_button, &QToolButton::clicked, this, &FilterBar::removed);
    auto *layout = new QHBoxLayout(this);
    const int margin = fontMetrics().height() / 4;
    layout->setContentsMargins(2 * margin, margin, 2 * margin, margin);
    layout->addWidget(m_label, 1);
    layout->addWidget(m_spanButton);
    layout->addWidget(m_button);
    updateColors();
    hide();
}

QToolButton *FilterBar::createButton(const char *name, const QString &text, const QString &toolTip)
{
    auto *button = new QToolButton(this);
    button->setObjectName(QLatin1String(name));
    button->setText(text);
    button->setToolTip(toolTip);
    button->setAutoRaise(false);
    return button;
}

void FilterBar::showFilter(const TableFilter &find)
{
    if (const RowEngine *engine = find.engine()) {
        m_label->setText(engine->filterText());
        m_spanButton->hide();
        show();
        return;
    }
    const QString text = find.shownMatcher().text();
    const std::optional<RowSpan> span = find.shownSpan();
    const QString counts = text.isEmpty() ? tr("%L1 of %L2 rows") : tr("%L1 of %L2 rows have “%3”");
    QString said = counts.arg(find.shownRows()).arg(find.source()->rowCount());
    if (!text.isEmpty())
        said = said.arg(text);
    m_label->setText(span ? textOf(*span) + QStringLiteral(" · ") + said : said);
    m_spanButton->setVisible(!text.isEmpty() && span);
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
