// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef PICTURE_P_H
#define PICTURE_P_H

#include <QPixmap>

//! A copy of a \a painted image, which is Format_ARGB32_Premultiplied, without an alpha channel
//! if that is not used: the pixmap is then put down by copying.
QPixmap pictureOf(const QImage &painted);

#endif // PICTURE_P_H
