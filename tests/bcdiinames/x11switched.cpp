// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#define VANTIX_NO_TYPE_NAMES
#include "sample.h"

#if __has_include(<X11/Xproto.h>)
#include <X11/Xproto.h>

#include <type_traits>

Outcome x11Switched()
{
    static_assert(std::is_same_v<BOOL, CARD8> && std::is_same_v<BYTE, CARD8>);
    return sampleOutcome();
}
#else
Outcome x11Switched()
{
    return Outcome::HeaderMissing;
}
#endif
