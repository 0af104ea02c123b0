// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// A view of somebody else's that uses the private data, of which there is an installed header.

#include <private/qtablefastview_p.h>
#include <qtablefastview.h>

namespace {

class DerivedView : public QTableFastView
{
public:
    void setDelay(const QPoint &delay) { d_ptr->scrollDelayOffset = delay; }
    QPoint delay() const { return d_ptr->scrollDelayOffset; }
};

} // namespace

bool derivedViewKeepsItsDelay()
{
    DerivedView view;
    view.setDelay({3, 4});
    return view.delay() == QPoint(3, 4);
}
