// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// What the compiler defines for Objective-C++, and its header behind ours.
#if !defined(__OBJC__)
#define __OBJC__ 1
#endif
#include "sample.h"

typedef signed char BOOL;

Outcome objectiveC()
{
    const BOOL isThere = 1;
    static_assert(sizeof isThere == 1 && sizeof(BYTE) == 1 && sizeof(UINT32) == 4);
    return isThere != 0 ? sampleOutcome() : Outcome::Fails;
}
