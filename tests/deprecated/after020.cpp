// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#define VANTIX_DISABLE_DEPRECATED_BEFORE VANTIX_VERSION_CHECK(0, 2, 0)
#include "oldnames.h"

#include <vantixglobal.h>

OldNames oldNamesAfter020()
{
    return {VANTIX_HAS_DEPRECATED(0, 2), VANTIX_HAS_DEPRECATED(0, 3)};
}
