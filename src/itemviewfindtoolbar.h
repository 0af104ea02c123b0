// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef ITEMVIEWFINDTOOLBAR_H
#define ITEMVIEWFINDTOOLBAR_H

#include "abstractfindtoolbar.h"

#include <QPointer>

class AbstractItemViewFind;

/*!
 * \brief The panel of an item view.
 *
 * Typing alone does not search: it ends a search that runs. Without an engine nothing
 * is found and nothing is filtered.
 *
 * \code
 * auto *view = new QTableFastView;
 * auto *find = new AbstractItemViewFind(view);
 * find->setView(view);
 * find->setHeader(view->header());
 * auto *panel = new ItemViewFindToolBar;
 * panel->setViewFind(find);
 * \endcode
 *
 * \since 0.2
 */
class VANTIX_EXPORT ItemViewFindToolBar : public AbstractFindToolBar
{
    Q_OBJECT

public:
    //! A panel without an engine; \a parent as in QWidget.
    explicit ItemViewFindToolBar(QWidget *parent = nullptr);
    ~ItemViewFindToolBar() override;

    //! Searches with \a find, which is not owned. Null, or one that is destroyed, is
    //! none. What the one before is doing goes on, and its filter stays.
    void setViewFind(AbstractItemViewFind *find);

    bool isFilterAvailable() const override;

    using AbstractFindToolBar::filter;
    using AbstractFindToolBar::findNext;
    using AbstractFindToolBar::findPrev;

public Q_SLOTS:
    //! Ends a search that runs. Returns true. While isCaseSwitchVisible() this, finding
    //! and filtering give caseSensitivity() to the engine.
    bool findIncremental(const QString &text) override;
    bool findPrev(const QString &text) override;
    bool findNext(const QString &text) override;
    //! Ends a search that runs and shows all rows again.
    void resetSearch() override;
    void filter(const QString &text) override;

private:
    void applyCase();

    QPointer<AbstractItemViewFind> m_find; //!< searches and filters; may be null
};

#endif // ITEMVIEWFINDTOOLBAR_H
