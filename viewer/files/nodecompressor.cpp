// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// Takes the place of libarchivedecompressor.cpp where there is no libarchive.

#include "decompressor.h"

#include <QCoreApplication>

std::unique_ptr<Decompressor> Decompressor::open(int, QString *error)
{
    *error = QCoreApplication::translate(
        "Decompressor", "It is compressed, and this program was built without libarchive.");
    return nullptr;
}

QString Decompressor::libraryName()
{
    return {};
}
