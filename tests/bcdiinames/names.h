// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef NAMES_H
#define NAMES_H

//! \file
//! Each function uses the decimals in a file of its own, beside another library's names.

enum class Outcome {
    Works,
    Fails,
    HeaderMissing
};

Outcome x11Before();
Outcome x11After();
Outcome x11Switched();
Outcome windowsBefore();
Outcome windowsAfter();
Outcome macrosBefore();
Outcome objectiveC();
Outcome switchedOff();

#endif // NAMES_H
