// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#define VANTIX_NO_TYPE_NAMES
#include "sample.h"

enum BOOL {
    No,
    Yes
};
struct BYTE
{
    char text[3];
};
typedef float UINT16, UINT32, UINT64, INT64;

Outcome switchedOff()
{
    const BOOL isThere = Yes;
    static_assert(sizeof(BYTE) == 3 && UINT32(1) / 2 > 0);
    return isThere == Yes ? sampleOutcome() : Outcome::Fails;
}
