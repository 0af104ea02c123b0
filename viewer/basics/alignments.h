// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef ALIGNMENTS_H
#define ALIGNMENTS_H

#include <Qt>

//! Of cells with numbers, and of the headers above them: their ones are beneath each other,
//! whichever way a window is laid out.
constexpr Qt::Alignment numberAlignment = Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter;

//! Of whole lines of text, which are indented on their left, and of their header.
constexpr Qt::Alignment lineAlignment = Qt::AlignLeft | Qt::AlignAbsolute | Qt::AlignVCenter;

#endif // ALIGNMENTS_H
