// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "statisticsdialog.h"

#include "basics/memory.h"
#include "framestatistics.h"
#include "qtablefastview.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLocale>
#include <QVBoxLayout>

namespace {

constexpr int s_interval = 1000; // ms

} // namespace

StatisticsDialog::StatisticsDialog(const QTableFastView *table, const FrameStatistics *statistics,
                                   QWidget *parent)
    : QDialog(parent)
    , m_table(table)
    , m_statistics(statistics)
{
    setWindowTitle(tr("Statistics"));
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(new QFormLayout);
    m_rows = addLine(tr("Rows:"));
    m_frames = addLine(tr("Frames a second:"));
    m_usual = addLine(tr("Half of the frames took at most:"));
    m_slow = addLine(tr("99 of 100 frames took at most:"));
    m_memory = addLine(tr("Memory, at most so far:"));
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addStretch();
    layout->addWidget(buttons);
    m_timer.setInterval(s_interval);
    connect(&m_timer, &QTimer::timeout, this, &StatisticsDialog::tell);
}

QLabel *StatisticsDialog::addLine(const QString &name)
{
    auto *value = new QLabel;
    value->setTextFormat(Qt::PlainText);
    value->setTextInteractionFlags(Qt::TextSelectableByMouse);
    qobject_cast<QFormLayout *>(layout()->itemAt(0)->layout())->addRow(name, value);
    return value;
}

void StatisticsDialog::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    m_lastFrames = m_statistics->frames();
    m_since.start();
    tell();
    m_timer.start();
}

void StatisticsDialog::hideEvent(QHideEvent *event)
{
    m_timer.stop();
    QDialog::hideEvent(event);
}

void StatisticsDialog::tell()
{
    const QLocale locale;
    const double seconds = double(m_since.nsecsElapsed()) / 1e9;
    const qint64 frames = m_statistics->frames() - m_lastFrames;
    const int rows = m_table->model() ? m_table->model()->rowCount() : 0;
    m_rows->setText(locale.toString(rows));
    if (seconds > 0.1) {
        m_frames->setText(locale.toString(qRound(double(frames) / seconds)));
        m_lastFrames += frames;
        m_since.start();
    }
    const auto milliseconds = [&](int percent) {
        return tr("%1 ms").arg(locale.toString(m_statistics->percentile(percent), 'f', 2));
    };
    m_usual->setText(milliseconds(50));
    m_slow->setText(milliseconds(99));
    m_memory->setText(locale.formattedDataSize(peakResidentBytes()));
}
