// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "sample.h"

#if __has_include(<X11/Xmd.h>)
#include <X11/Xmd.h>

#include <type_traits>

Outcome x11After()
{
    static_assert(std::is_same_v<::BOOL, CARD8> && std::is_same_v<BYTE, CARD8>);
    static_assert(sizeof(UINT16) == 2 && sizeof(UINT32) == 4 && sizeof(UINT64) == 8);
    static_assert(sizeof(::INT64) == 8);
    return sampleOutcome();
}
#else
Outcome x11After()
{
    return Outcome::HeaderMissing;
}
#endif
