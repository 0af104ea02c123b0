// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// Line edits with buttons inside, and the busy indicator. The button at the end of the first one
// clears it, and is there only while there is something to clear; the second one has a menu of its
// own; typing into either keeps the indicator busy for a second.

#include "fancylineedit.h"
#include "filterlineedit.h"
#include "qprogressindicator.h"
#include "translations.h"

#include <QApplication>
#include <QFormLayout>
#include <QLabel>
#include <QMenu>
#include <QStyle>
#include <QTimer>

namespace {

//! A picture in the size of small icons.
QPixmap picture(QStyle::StandardPixmap kind)
{
    const int size = QApplication::style()->pixelMetric(QStyle::PM_SmallIconSize);
    return QApplication::style()->standardIcon(kind).pixmap(size);
}

FancyLineEdit *createPlaceEdit(QMenu *places)
{
    auto *edit = new FancyLineEdit;
    edit->setPlaceholderText("A folder");
    edit->setButtonVisible(FancyLineEdit::Left, true); // first the room, then the picture
    edit->setButtonPixmap(FancyLineEdit::Left, picture(QStyle::SP_DirIcon));
    edit->setButtonToolTip(FancyLineEdit::Left, "Usual folders");
    edit->setButtonMenu(FancyLineEdit::Left, places);
    for (const char *place : {"/home", "/srv", "/var/log"}) {
        const QString text = QString::fromLatin1(place);
        places->addAction(text, edit, [edit, text] { edit->setText(text); });
    }
    return edit;
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    vantixInstallTranslations(); // the tool tips of buttons

    QWidget window;
    QMenu places(&window);
    auto *filter = new FilterLineEdit;
    filter->setText("clear me");
    FancyLineEdit *place = createPlaceEdit(&places);
    auto *busy = new QProgressIndicator;
    busy->setDisplayedWhenStopped(true);
    auto *said = new QLabel("Nothing yet");

    QTimer rest;
    rest.setSingleShot(true);
    rest.setInterval(1000);
    QObject::connect(&rest, &QTimer::timeout, busy, &QProgressIndicator::stopAnimation);
    const auto work = [&](const QString &text) {
        said->setText("Looking for \"" + text + "\"");
        busy->startAnimation();
        rest.start();
    };
    QObject::connect(filter, &FilterLineEdit::filterChanged, said, work);
    QObject::connect(place, &QLineEdit::textChanged, said, work);

    auto *form = new QFormLayout(&window);
    form->addRow("Filter:", filter);
    form->addRow("Place:", place);
    form->addRow("Busy:", busy);
    form->addRow(said);
    window.setWindowTitle("Line edits");
    window.resize(360, 180);
    window.show();
    return QApplication::exec();
}
