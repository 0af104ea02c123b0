// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef INHERITEDLOOK_P_H
#define INHERITEDLOOK_P_H

#include <QObject>

class QWidget;

/*!
 * \brief Keeps a widget that has a style sheet of its own up to date with palettes and
 * fonts.
 *
 * Qt leaves such a widget out when those of the application change, or the font of an
 * ancestor. What a program or another style sheet has set for the widget itself stays.
 * Palettes of ancestors have no effect on it, as in Qt.
 */
class InheritedLook : public QObject
{
    Q_OBJECT

public:
    //! For \a widget, which becomes the parent and keeps its own parent.
    explicit InheritedLook(QWidget *widget);

    bool eventFilter(QObject *object, QEvent *event) override;

Q_SIGNALS:
    //! The size hint may be another.
    void changed();

private:
    void inherit();

    QWidget *m_widget;
    bool m_isInheriting = false; //!< the changes are of our own making
};

#endif // INHERITEDLOOK_P_H
