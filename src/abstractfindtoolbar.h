// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef ABSTRACTFINDTOOLBAR_H
#define ABSTRACTFINDTOOLBAR_H

#include "vantixglobal.h"

#include <QToolBar>

class FilterLineEdit;
class QAction;
class QGridLayout;
class QLabel;
class QMenu;
class QProgressIndicator;
class QSpacerItem;
class QToolButton;

/*!
 * \brief A panel to search and filter with: a field for the text, and buttons.
 *
 * The panel disables what must not be pressed while a search runs, turns its busy
 * indicator and shows "Not found"; a subclass searches. It does not move and is hidden
 * until openFind() shows it, if the window that it belongs to hides it at first.
 *
 * Palettes, fonts, styles and the language may change at any time; texts that a program
 * has set itself stay. The field has a style sheet of its own and therefore the colours
 * of the application, not those of a window.
 *
 * While the focus is inside: Return and Enter find the next row, as QKeySequence's
 * FindNext does, FindPrevious the one before, and Esc closes. A program may bind the
 * same keys to findNext() and findPrev() for its view (Qt::WidgetShortcut), but not for
 * the window: they would be ambiguous inside.
 *
 * GUI thread only.
 *
 * \since 0.2
 */
class VANTIX_EXPORT AbstractFindToolBar : public QToolBar
{
    Q_OBJECT
    Q_PROPERTY(bool caseSwitchVisible READ isCaseSwitchVisible WRITE setCaseSwitchVisible)
    Q_PROPERTY(Qt::CaseSensitivity caseSensitivity READ caseSensitivity WRITE setCaseSensitivity)

public:
    //! A panel with an empty field; \a parent as in QWidget.
    explicit AbstractFindToolBar(QWidget *parent = nullptr);
    ~AbstractFindToolBar() override;

    //! Whether the filter button is of use. False here.
    virtual bool isFilterAvailable() const;

    //! Whether the panel has a button "Match case"; false at first.
    bool isCaseSwitchVisible() const;
    //! Shows or hides that button.
    void setCaseSwitchVisible(bool visible);

    //! What "Match case" says; Qt::CaseInsensitive at first. A subclass searches and
    //! filters by it while isCaseSwitchVisible().
    Qt::CaseSensitivity caseSensitivity() const;
    //! Checks "Match case" or not, as the user does by the button. While it is visible
    //! a change calls textChanged(), and so findIncremental(), with the text of the field.
    void setCaseSensitivity(Qt::CaseSensitivity sensitivity);

public Q_SLOTS:
    //! Shows the panel and gives the focus to its field.
    void openFind();

    //! The text has become \a text. False shows "Not found".
    virtual bool findIncremental(const QString &text) = 0;
    //! Finds \a text backward. Returns whether it was found.
    virtual bool findPrev(const QString &text) = 0;
    //! Finds \a text forward. Returns whether it was found.
    virtual bool findNext(const QString &text) = 0;
    //! Ends a search and takes its filter away. Called when the panel closes, and by
    //! the field's clear button.
    virtual void resetSearch() = 0;
    //! Shows only what has \a text. Does nothing here.
    virtual void filter(const QString &text);

    //! Finds the text of the field backward. Once something was found, "Not found" is
    //! not shown until the text changes or the panel is opened anew.
    void findPrev();
    //! The same forward.
    void findNext();
    //! Filters by the text of the field.
    void filter();
    //! Ends a search, takes its filter away and hides the panel. Returns as
    //! QWidget::close() does.
    bool close();
    //! The user has made the text \a text: ends "Not found" or shows it, as
    //! findIncremental() says.
    void textChanged(const QString &text);

private:
    friend class AbstractFindToolBarSwitcher;

    void findPrevNext(bool next);
    void setupActions();
    void setupUi();
    void setupConnections();
    void setActionsEnabled(bool enabled);
    void updateFilterVisibility();
    QToolButton *createButton(const QString &name);
    void updateButtonHeights();
    void createCaseButton();
    QAction *createAction(const QString &iconName, const char *text, const char *toolTip);
    void showFound(bool found);

    QWidget *m_widget = nullptr;                       //!< the one widget of the tool bar
    QGridLayout *m_layout = nullptr;                   //!< of m_widget, one row
    QSpacerItem *m_Spacer = nullptr;                   //!< pushes the rest to the far end
    QLabel *m_notFoundLabel = nullptr;                 //!< empty or "Not found"
    QProgressIndicator *m_progressIndicator = nullptr; //!< turns while a search runs
    QMenu *m_lineEditMenu = nullptr;                   //!< of the field's left button; none
    FilterLineEdit *m_findLineEdit = nullptr;          //!< has the text
    QToolButton *m_findPrevButton = nullptr;
    QToolButton *m_findNextButton = nullptr;
    QToolButton *m_filterButton = nullptr;
    QToolButton *m_closeButton = nullptr;
    QAction *m_defaultAction = nullptr; //!< Enter and Return
    QAction *m_findPrevAction = nullptr;
    QAction *m_findNextAction = nullptr;
    QAction *m_filterAction = nullptr;
    QAction *m_closeAction = nullptr; //!< never disabled
    bool m_found = true;              //!< since the text changed or the panel was opened
    int m_buttonHeight = 0;           //!< at most, as the field is high
    Qt::CaseSensitivity m_caseSensitivity = Qt::CaseInsensitive;
    QToolButton *m_caseButton = nullptr; //!< "Match case"; null until it is shown first
};

#endif // ABSTRACTFINDTOOLBAR_H
