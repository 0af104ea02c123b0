// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "welcomewindow.h"

#include "basics/recentfiles.h"

#include <QAction>
#include <QApplication>
#include <QCommandLinkButton>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QScrollArea>
#include <QStyle>
#include <QToolBar>
#include <QVBoxLayout>

namespace {

constexpr double s_greetingSize = 1.8; // of the window's font

} // namespace

WelcomeWindow::WelcomeWindow(FrameStatistics *statistics)
    : ViewerWindow(statistics)
{
    setWindowTitle(tr("Welcome — %1").arg(QApplication::applicationName()));
    auto *area = new QScrollArea;
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    auto *page = new QWidget;
    auto *column = new QWidget(page);
    column->setMaximumWidth(fontMetrics().horizontalAdvance(u'x') * 80);
    auto *layout = new QVBoxLayout(column);
    addTexts(layout);
    addButtons(layout);
    addRecentFiles(layout);
    auto *centred = new QHBoxLayout;
    centred->addStretch(1);
    centred->addWidget(column, 8);
    centred->addStretch(1);
    auto *whole = new QVBoxLayout(page);
    whole->addStretch(1);
    whole->addLayout(centred);
    whole->addStretch(2);
    area->setWidget(page);
    showPage(area);
    toolBar()->hide();
    leaveOutRows();
}

void WelcomeWindow::addTexts(QVBoxLayout *layout)
{
    auto *title = new QLabel(QApplication::applicationName());
    QFont font = title->font();
    font.setPointSizeF(font.pointSizeF() * s_greetingSize);
    title->setFont(font);
    auto *text = new QLabel(tr("Opens text files of any size, compressed ones too, and follows "
                               "them as they grow. Drop a file here, or choose one."));
    text->setWordWrap(true);
    layout->addWidget(title);
    layout->addWidget(text);
    layout->addSpacing(fontMetrics().height());
}

void WelcomeWindow::addButtons(QVBoxLayout *layout)
{
    auto *open = new QCommandLinkButton(tr("&Open Files…"), tr("Logs, tables, any text"));
    connect(open, &QAbstractButton::clicked, this, &WelcomeWindow::chooseFile);
    layout->addWidget(open);
    setFocusProxy(open);
    auto *feed = new QCommandLinkButton(tr("Show the &Market"),
                                        tr("A simulated feed of up to 50,000 rows a second"));
    connect(feed, &QAbstractButton::clicked, this, &WelcomeWindow::feedRequested);
    layout->addWidget(feed);
}

void WelcomeWindow::addRecentFiles(QVBoxLayout *layout)
{
    const QStringList paths = RecentFiles::paths();
    if (paths.isEmpty())
        return;
    layout->addSpacing(fontMetrics().height());
    layout->addWidget(new QLabel(tr("Opened lately")));
    for (const QString &path : paths) {
        const QFileInfo file(path);
        QString name = file.fileName();
        QString folder = QDir::toNativeSeparators(file.path());
        auto *recent = new QCommandLinkButton(name.replace(u'&', QLatin1String("&&")), folder);
        recent->setIcon(style()->standardIcon(QStyle::SP_FileIcon));
        connect(recent, &QAbstractButton::clicked, this,
                [this, path] { Q_EMIT openRequested(path); });
        layout->addWidget(recent);
    }
}
