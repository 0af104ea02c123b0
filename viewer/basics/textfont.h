// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef TEXTFONT_H
#define TEXTFONT_H

#include <QFont>

//! The font that texts of files are shown in, in the user's settings.
namespace TextFont {

//! The one that was chosen, else the system's of one width.
QFont font();
//! Whether one was chosen.
bool isChosen();
//! Keeps \a font.
void choose(const QFont &font);
//! Goes back to the system's.
void reset();

} // namespace TextFont

#endif // TEXTFONT_H
