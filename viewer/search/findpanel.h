// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef FINDPANEL_H
#define FINDPANEL_H

#include "itemviewfindtoolbar.h"
#include "textmatcher.h"

#include <QTimer>

class QLineEdit;
class QToolButton;
class TableFilter;

/*!
 * \brief The panel of a TableFilter, with switches for its rules.
 *
 * The filter button stays pressed while rows are filtered; then another text, or another
 * switch, filters again when typing pauses. The button again, an empty text or closing the
 * panel shows rows with any text.
 */
class FindPanel : public ItemViewFindToolBar
{
    Q_OBJECT

public:
    //! Milliseconds without another key after which rows are filtered anew.
    static constexpr int typingPause = 200;

    //! A panel of \a find, which must outlive it.
    FindPanel(TableFilter *find, QWidget *parent);

    //! Whether rows are filtered, or are to be.
    bool hasFilter() const;

    //! The text to look for.
    QLineEdit *field() const;
    //! How the text is looked for.
    TextRules rules() const;
    //! Opens the panel and filters by \a text. Nothing if that is empty, or filtered by already.
    void restoreFilter(const QString &text, const TextRules &rules);

    using ItemViewFindToolBar::filter;
    using ItemViewFindToolBar::findNext;
    using ItemViewFindToolBar::findPrev;

public Q_SLOTS:
    bool findIncremental(const QString &text) override;
    bool findPrev(const QString &text) override;
    bool findNext(const QString &text) override;
    void filter(const QString &text) override;
    void resetSearch() override;
    //! Goes to the next match while the focus is inside.
    QAction *nextAction() const;
    //! Filters by the text of the field, or shows all rows again.
    void toggleFilter();
    //! Looks for \a text as it is: not as an expression, nor as words.
    void setPlainText(const QString &text);
    //! Shows all rows again, those outside of a span too; a filter that is being made is none any
    //! more.
    void removeFilter();

Q_SIGNALS:
    //! What is wrong with the text as an expression; empty if nothing is.
    void problemChanged(const QString &problem);
    //! The text that is looked for, or a rule, is another, or the panel was shown or hidden.
    void soughtChanged();
    //! hasFilter() is another.
    void hasFilterChanged(bool hasFilter);
    //! A search or the making of a filter begins, or is over: \a isReady for another.
    void readyChanged(bool isReady);
    //! A row that shows the text is current now.
    void rowFound();

protected:
    void changeEvent(QEvent *event) override;

private:
    void createSwitches();
    QToolButton *createSwitch(const char *name);
    void setTexts();
    void fillColumnMenu();
    void rulesChanged();
    void filterAgain();
    void setHasFilter(bool on);
    void showResult();
    bool findRow(const QString &text, bool forward);

    TableFilter *m_find;          //!< not owned
    QAction *m_filterAction;      //!< the base class's; checked while there is a filter
    QToolButton *m_words;         //!< whole words
    QToolButton *m_expression;    //!< regular expression
    QToolButton *m_columns;       //!< a menu of columns
    QTimer m_typing;              //!< runs until typing pauses
    bool m_isResultShown = false; //!< "Not found" is set, nothing is searched
};

#endif // FINDPANEL_H
