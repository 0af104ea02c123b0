// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef SAMPLECAPTURE_H
#define SAMPLECAPTURE_H

#include <QString>

//! Writes a capture of \a packets packets, made up, to \a path. False if that fails.
bool writeSampleCapture(const QString &path, int packets);

#endif // SAMPLECAPTURE_H
