// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef FONTMENU_H
#define FONTMENU_H

#include <QMenu>

//! Chooses the font of texts of files, in all windows at once.
class FontMenu : public QMenu
{
    Q_OBJECT

public:
    explicit FontMenu(QWidget *parent);

private:
    void update();
    void ask();

    QAction *m_system; //!< checked while no other font is chosen
    QAction *m_chosen; //!< asks for one
};

#endif // FONTMENU_H
