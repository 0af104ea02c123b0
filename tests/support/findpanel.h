// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef FINDPANEL_H
#define FINDPANEL_H

#include "abstractfindtoolbar.h"
#include "filterlineedit.h"
#include "qprogressindicator.h"

#include <QLabel>
#include <QStringList>
#include <QToolButton>

#include <functional>

inline const QStringList buttonNames {"findPrevButton", "findNextButton", "filterButton",
                                      "closeButton"};

//! Records what it is asked for, and answers as it is told.
class Panel : public AbstractFindToolBar
{
public:
    using AbstractFindToolBar::AbstractFindToolBar;
    using AbstractFindToolBar::filter;
    using AbstractFindToolBar::findNext;
    using AbstractFindToolBar::findPrev;

    bool isFilterAvailable() const override
    {
        ++availabilityAsked;
        return canFilter;
    }
    bool findIncremental(const QString &text) override { return answer("incremental", text); }
    bool findPrev(const QString &text) override { return answer("previous", text); }
    bool findNext(const QString &text) override { return answer("next", text); }
    void resetSearch() override { answer("reset", QString()); }
    void filter(const QString &text) override { answer("filter", text); }

    template<typename Widget> Widget *child(const char *name = "") const
    {
        return findChild<Widget *>(QString::fromLatin1(name));
    }
    FilterLineEdit *field() const { return child<FilterLineEdit>("findLineEdit"); }
    QToolButton *button(const char *name) const { return child<QToolButton>(name); }
    QLabel *label() const { return findChild<QLabel *>(); }
    QProgressIndicator *indicator() const { return findChild<QProgressIndicator *>(); }
    QWidget *inside() const { return label()->parentWidget(); }

    bool found = false;
    bool canFilter = true;
    mutable int availabilityAsked = 0;
    QStringList calls;
    std::function<void()> during;

private:
    bool answer(const char *what, const QString &text)
    {
        calls << QString::fromLatin1(what) + u' ' + text;
        if (const auto run = during) // which may end itself
            run();
        return found;
    }
};

#endif // FINDPANEL_H
