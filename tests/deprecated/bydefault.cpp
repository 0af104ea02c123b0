// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "oldnames.h"

#include <vantixglobal.h>

OldNames oldNamesByDefault()
{
    return {VANTIX_HAS_DEPRECATED(0, 2), VANTIX_HAS_DEPRECATED(0, 3)};
}
