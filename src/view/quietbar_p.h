// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef QUIETBAR_P_H
#define QUIETBAR_P_H

#include "rowgeometry_p.h"

#include <QScopedValueRollback>
#include <QScrollBar>
#include <QSignalBlocker>

//! A vertical scroll bar that follows rows which came or went: nothing on screen moves by it.
class QuietBar
{
public:
    //! While \a blocksScroll is true, the view that the bar belongs to moves no pixels.
    QuietBar(QScrollBar *bar, bool *blocksScroll)
        : m_bar(bar)
        , m_blocksScroll(blocksScroll)
    {
    }

    void setValue(qint64 value) const
    {
        const QScopedValueRollback<bool> block(*m_blocksScroll, true);
        m_bar->setValue(saturated(value));
    }
    //! Sets the range to 0 to \a maximum without a word to anybody.
    void setMaximum(int maximum) const
    {
        if (m_bar->minimum() == 0 && m_bar->maximum() == maximum)
            return;
        // The value must lie within the new range already: the scroll area would miss its
        // change.
        if (m_bar->value() > maximum)
            setValue(maximum);
        const QSignalBlocker quiet(m_bar);
        m_bar->setRange(0, maximum);
    }

private:
    QScrollBar *m_bar;
    bool *m_blocksScroll;
};

#endif // QUIETBAR_P_H
