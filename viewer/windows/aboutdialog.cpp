// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "aboutdialog.h"

#include "basics/icons.h"
#include "files/decompressor.h"
#include "search/lineexpression.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr int s_iconSize = 64;      // logical pixels
constexpr double s_titleSize = 1.5; // of the dialog's font

} // namespace

AboutDialog::AboutDialog(QWidget *parent)
    : QDialog(parent)
{
    setWindowTitle(tr("About %1").arg(QApplication::applicationName()));
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    QPushButton *qt = buttons->addButton(tr("About &Qt"), QDialogButtonBox::HelpRole);
    connect(qt, &QPushButton::clicked, qApp, &QApplication::aboutQt);
    auto *layout = new QVBoxLayout(this);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    layout->addWidget(createHead());
    layout->addWidget(createParts());
    layout->addWidget(buttons);
}

QWidget *AboutDialog::createHead()
{
    auto *head = new QWidget;
    auto *picture = new QLabel;
    picture->setPixmap(Icons::program().pixmap(QSize(s_iconSize, s_iconSize), devicePixelRatio()));
    auto *title =
        new QLabel(QApplication::applicationName() + u' ' + QApplication::applicationVersion());
    QFont font = title->font();
    font.setPointSizeF(font.pointSizeF() * s_titleSize);
    title->setFont(font);
    auto *text = new QLabel(tr("Opens and follows text of any size."));
    auto *texts = new QVBoxLayout;
    texts->addWidget(title);
    texts->addWidget(text);
    texts->addStretch();
    auto *layout = new QHBoxLayout(head);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(picture);
    layout->addLayout(texts, 1);
    return head;
}

//! Qt is the one that runs, which may be newer than the one it was built with.
QWidget *AboutDialog::createParts()
{
    QStringList parts {
        tr("The program and its table: MIT license, © the vantix authors"),
        tr("Qt %1: GNU Lesser General Public License 3").arg(QString::fromLatin1(qVersion())),
    };
    for (const QString &library : {Decompressor::libraryName(), LineExpression::libraryName()}) {
        if (!library.isEmpty())
            parts.append(tr("%1: BSD license").arg(library));
    }
    auto *label = new QLabel(parts.join(u'\n'));
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}
