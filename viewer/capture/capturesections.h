// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef CAPTURESECTIONS_H
#define CAPTURESECTIONS_H

#include <QtGlobal>

#include <vector>

//! A part of a capture that can be read without what is before it.
struct CaptureSection
{
    quint64 begin = 0;               //!< byte position
    std::vector<quint64> interfaces; //!< where all but the first are described, in order

    friend bool operator==(const CaptureSection &, const CaptureSection &) = default;
};

//! In order. Most files have one.
using CaptureSections = std::vector<CaptureSection>;

#endif // CAPTURESECTIONS_H
