// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "picture_p.h"

#include <QImage>

#include <utility>

QPixmap pictureOf(const QImage &painted)
{
    QImage picture(painted.size(), painted.format());
    const qsizetype count = painted.sizeInBytes() / qsizetype(sizeof(QRgb));
    const auto *from = reinterpret_cast<const QRgb *>(painted.constBits());
    auto *to = reinterpret_cast<QRgb *>(picture.bits());
    QRgb all = 0xff000000;
    for (qsizetype i = 0; i < count; ++i) {
        all &= from[i];
        to[i] = from[i];
    }
    picture.setDevicePixelRatio(painted.devicePixelRatio());
    if (all == 0xff000000)
        picture.reinterpretAsFormat(QImage::Format_RGB32);
    return QPixmap::fromImage(std::move(picture), Qt::NoFormatConversion);
}
