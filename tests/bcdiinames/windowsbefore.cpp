// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "windows.h"

#include "sample.h"

#include <type_traits>

Outcome windowsBefore()
{
    static_assert(std::is_same_v<INT64, long long> && std::is_same_v<UINT64, unsigned long long>);
    static_assert(std::is_same_v<BOOL, int> && std::is_same_v<BYTE, unsigned char>);
    static_assert(sizeof(UINT16) == 2 && sizeof(UINT32) == 4);
    return sampleOutcome();
}
