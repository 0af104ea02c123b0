// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef COMMON_H
#define COMMON_H

#include "vantixglobal.h"

#include <QList>

class QHeaderView;

//! Logical numbers of the sections of \a header that are not hidden, in the order on
//! screen. A section of width 0 counts as shown. \a header must not be null.
//! \since 0.2
VANTIX_EXPORT QList<int> getVisibleColumns(QHeaderView *header);

#endif // COMMON_H
