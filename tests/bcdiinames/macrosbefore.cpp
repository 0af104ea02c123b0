// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#define BYTE unsigned char
#define BOOL bool
#define UINT16 unsigned short
#define UINT32 unsigned
#define UINT64 unsigned long long
#define INT64 long long
#include "sample.h"

Outcome macrosBefore()
{
    static_assert(sizeof(BOOL) == sizeof(bool));
    return sampleOutcome();
}
