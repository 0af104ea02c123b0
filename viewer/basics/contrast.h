// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef CONTRAST_H
#define CONTRAST_H

#include <QColor>
#include <QPalette>

//! What a text needs to be read without effort, as the accessibility guidelines for the
//! web have it (WCAG 2, level AA).
constexpr double readableContrast = 4.5;

//! From 1, for equal colours, to 21, for black and white: the ratio of their relative
//! luminances in sRGB. Transparency does not count.
double contrast(const QColor &a, const QColor &b);

//! What a shape needs to be seen, as the same guidelines have it.
constexpr double visibleContrast = 3;

//! \a text, made darker or lighter by no more than it takes to have \a least contrast, at most
//! readableContrast, on \a background. Its hue stays as far as that allows.
QColor readable(const QColor &text, const QColor &background, double least = readableContrast);

//! The colour behind what is looked for; \a text is that of texts that have none of their own.
QColor matchColor(const QColor &text);

//! The colour that marks rows on \a background, which is not that of matches nor of levels.
QColor rowMarkColor(const QColor &background);

//! \a palette with highlights on which highlighted texts are readable: the highlight
//! becomes darker or lighter, whichever is away from its text.
QPalette withReadableHighlights(QPalette palette);

#endif // CONTRAST_H
