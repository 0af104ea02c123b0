// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef NUMBERALIGNMENT_H
#define NUMBERALIGNMENT_H

#include <Qt>

//! Of cells with numbers, and of the headers above them: their ones are beneath each other,
//! whichever way a window is laid out.
constexpr Qt::Alignment numberAlignment = Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter;

#endif // NUMBERALIGNMENT_H
