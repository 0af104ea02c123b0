// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "fontmenu.h"

#include "basics/textfont.h"
#include "detailpane.h"
#include "viewertable.h"

#include <QAction>
#include <QApplication>
#include <QFontDialog>

namespace {

void useTextFontEverywhere()
{
    const QWidgetList widgets = QApplication::allWidgets();
    for (QWidget *widget : widgets) {
        if (auto *table = qobject_cast<ViewerTable *>(widget); table && table->hasTextFont())
            table->useTextFont();
        else if (auto *pane = qobject_cast<DetailPane *>(widget))
            pane->useTextFont();
    }
}

} // namespace

FontMenu::FontMenu(QWidget *parent)
    : QMenu(tr("Text Fo&nt"), parent)
    , m_system(addAction(tr("&System's Fixed-Width Font")))
    , m_chosen(addAction(tr("&Choose…")))
{
    m_system->setCheckable(true);
    m_chosen->setCheckable(true);
    connect(this, &QMenu::aboutToShow, this, &FontMenu::update);
    connect(m_chosen, &QAction::triggered, this, &FontMenu::ask);
    connect(m_system, &QAction::triggered, this, [] {
        TextFont::reset();
        useTextFontEverywhere();
    });
}

void FontMenu::update()
{
    m_system->setChecked(!TextFont::isChosen());
    m_chosen->setChecked(TextFont::isChosen());
}

void FontMenu::ask()
{
    auto *dialog = new QFontDialog(TextFont::font(), parentWidget());
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QFontDialog::fontSelected, dialog, [](const QFont &font) {
        TextFont::choose(font);
        useTextFontEverywhere();
    });
    dialog->open();
}
