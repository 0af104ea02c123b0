// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "vantixglobal.h"

// Programs may register and release the icons themselves, so the functions are seen from
// outside although rcc writes them without an export macro: these declarations come first.
VANTIX_EXPORT int qInitResources_vantix();
VANTIX_EXPORT int qCleanupResources_vantix();

#include "qrc_vantix.cpp" // NOLINT(bugprone-suspicious-include): rcc's output

#include <QtGlobal>

static void initOtherResources()
{
    Q_INIT_RESOURCE(drovik);
#if defined(VANTIX_HAS_TRANSLATIONS)
    Q_INIT_RESOURCE(vantix_translations);
#endif
}

namespace {

// Nothing else would bring the others along from a static library. This file is brought
// by every class that has texts or pictures.
const struct OtherResources
{
    OtherResources() { initOtherResources(); }
} otherResources;

} // namespace
