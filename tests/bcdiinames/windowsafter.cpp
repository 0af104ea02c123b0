// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "sample.h"

#include "windows.h"

#include <type_traits>

Outcome windowsAfter()
{
    static_assert(std::is_same_v<::INT64, long long>);
    static_assert(std::is_same_v<::UINT64, unsigned long long>);
    static_assert(std::is_same_v<BOOL, int> && std::is_same_v<BYTE, unsigned char>);
    static_assert(sizeof(UINT16) == 2 && sizeof(UINT32) == 4);
    return sampleOutcome();
}
