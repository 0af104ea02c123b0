// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef TABLEPARTS_P_H
#define TABLEPARTS_P_H

// All that QTableFastViewPrivate names, for the files that implement the view.

#include "qtablefastview_p.h"

#include "autoscrollhold_p.h"
#include "cellpainter_p.h"
#include "columnscroll_p.h"
#include "columnstrip_p.h"
#include "connections_p.h"
#include "cursormoves_p.h"
#include "edgekeeper_p.h"
#include "headercolumns_p.h"
#include "keyboardsearch_p.h"
#include "paintbuffer_p.h"
#include "pixelmover_p.h"
#include "quietbar_p.h"
#include "rangeanchor_p.h"
#include "rowchanges_p.h"
#include "rowgeometry_p.h"
#include "showncolumns_p.h"

#endif // TABLEPARTS_P_H
