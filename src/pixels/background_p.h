// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef BACKGROUND_P_H
#define BACKGROUND_P_H

class QPainter;
class QPalette;
class QWidget;

// A picture of a cell can be made apart from the view, and be moved over it, if what is
// behind the cell looks the same everywhere and shows nothing of what is behind the view.
// GUI thread only.

//! Whether \a viewport fills itself with one opaque colour and nothing else.
bool hasPlainBackground(const QWidget &viewport);

//! The same for what is behind the cells of \a view, which may be null or any widget.
bool isPlainBehind(const QWidget *view);

//! While it lives, isPlainBehind() knows the answer for one view.
class KnownBackground
{
public:
    KnownBackground(const QWidget *view, bool isPlain);
    ~KnownBackground();
    KnownBackground(const KnownBackground &) = delete;
    KnownBackground &operator=(const KnownBackground &) = delete;

private:
    const QWidget *m_formerView;
    bool m_wasPlain;
};

//! Whether each brush of \a palette behind cells is one colour.
bool hasPlainCells(const QPalette &palette);

//! Whether \a widget has a whole number of device pixels for each logical one.
bool hasWholeDevicePixels(const QWidget &widget);

//! Whether units of \a painter are \a ratio whole device pixels each, and begin with one.
bool paintsWholePixels(const QPainter &painter, double ratio);

#endif // BACKGROUND_P_H
