// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef AUTOSCROLLHOLD_P_H
#define AUTOSCROLLHOLD_P_H

#include <QAbstractItemView>

//! Switches a view's auto-scroll off between the two notifications of a change, which may be
//! nested, and then to what the application had set.
class AutoScrollHold
{
public:
    //! \a view must outlive it.
    explicit AutoScrollHold(QAbstractItemView *view)
        : m_view(view)
    {
    }

    void hold()
    {
        if (m_holds++ == 0)
            m_saved = m_view->hasAutoScroll();
        m_view->setAutoScroll(false);
    }
    //! One hold ends; without any, nothing happens.
    void release()
    {
        if (m_holds > 0 && --m_holds == 0)
            m_view->setAutoScroll(m_saved);
    }

private:
    QAbstractItemView *m_view;
    int m_holds = 0;
    bool m_saved = false;
};

#endif // AUTOSCROLLHOLD_P_H
