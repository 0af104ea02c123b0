// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "findpanel.h"

#include "tablefilter.h"

#include <QAbstractItemModel>
#include <QAction>
#include <QEvent>
#include <QGridLayout>
#include <QLineEdit>
#include <QMenu>
#include <QScopedValueRollback>
#include <QToolButton>

FindPanel::FindPanel(TableFilter *find, QWidget *parent)
    : ItemViewFindToolBar(parent)
    , m_find(find)
{
    const auto *filterButton = findChild<QToolButton *>(QStringLiteral("filterButton"));
    m_filterAction = filterButton->defaultAction();
    m_filterAction->setCheckable(true);
    createSwitches();
    setTexts();
    setViewFind(find);
    connect(nextAction(), &QAction::enabledChanged, this, &FindPanel::readyChanged);
    connect(m_filterAction, &QAction::toggled, this, &FindPanel::hasFilterChanged);
    connect(find, &TableFilter::modelShown, this,
            [this] { setHasFilter(m_find->isTextFiltered()); });
    connect(this, &QToolBar::visibilityChanged, this, &FindPanel::soughtChanged);
    m_typing.setSingleShot(true);
    m_typing.setInterval(typingPause);
    connect(&m_typing, &QTimer::timeout, this, &FindPanel::filterAgain);
}

//! Beside the base class's switch for the case, before the button that closes.
void FindPanel::createSwitches()
{
    setCaseSwitchVisible(true);
    const auto *caseButton = findChild<QToolButton *>(QStringLiteral("caseButton"));
    caseButton->defaultAction()->setIconText(QStringLiteral("Aa"));
    m_words = createSwitch("wordsButton");
    m_words->defaultAction()->setIconText(QStringLiteral("\u2423W\u2423"));
    m_expression = createSwitch("expressionButton");
    m_expression->defaultAction()->setIconText(
        QStringLiteral("\u200e.*\u200e")) /* also from right to left */;
    connect(m_words->defaultAction(), &QAction::toggled, m_find, &TableFilter::setWholeWords);
    connect(m_expression->defaultAction(), &QAction::toggled, m_find, &TableFilter::setExpressions);
    for (const QToolButton *button : {m_words, m_expression})
        connect(button->defaultAction(), &QAction::toggled, this, &FindPanel::rulesChanged);
    m_columns = new QToolButton(this);
    m_columns->setObjectName(QStringLiteral("columnsButton"));
    // With an arrow of its own beside the text; the text opens the menu, too.
    m_columns->setPopupMode(QToolButton::MenuButtonPopup);
    connect(m_columns, &QToolButton::clicked, m_columns, &QToolButton::showMenu);
    m_columns->setMenu(new QMenu(m_columns));
    connect(m_columns->menu(), &QMenu::aboutToShow, this, &FindPanel::fillColumnMenu);

    auto *grid = qobject_cast<QGridLayout *>(field()->parentWidget()->layout());
    auto *close = findChild<QToolButton *>(QStringLiteral("closeButton"));
    int column = grid->columnCount();
    for (QWidget *widget : {static_cast<QWidget *>(m_words), static_cast<QWidget *>(m_expression),
                            static_cast<QWidget *>(m_columns), static_cast<QWidget *>(close)}) {
        grid->addWidget(widget, 0, column++);
    }
    QWidget *before = findChild<QToolButton *>(QStringLiteral("caseButton"));
    for (QToolButton *button : {m_words, m_expression, m_columns, close}) {
        setTabOrder(before, button);
        before = button;
    }
}

QToolButton *FindPanel::createSwitch(const char *name)
{
    auto *action = new QAction(this);
    action->setCheckable(true);
    auto *button = new QToolButton(this);
    button->setObjectName(QLatin1String(name));
    button->setToolButtonStyle(Qt::ToolButtonTextOnly);
    button->setDefaultAction(action);
    return button;
}

void FindPanel::setTexts()
{
    const auto name = [](QAction *action, const QString &text) {
        const QString iconText = action->iconText();
        action->setText(text);
        action->setToolTip(text);
        action->setIconText(iconText);
    };
    name(m_words->defaultAction(), tr("Whole words"));
    name(m_expression->defaultAction(), tr("Regular expression"));
    m_columns->setText(tr("Columns"));
    m_columns->setToolTip(tr("Columns that are looked at"));
    m_filterAction->setToolTip(tr("Show only the rows that have the text"));
}

void FindPanel::changeEvent(QEvent *event)
{
    ItemViewFindToolBar::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        setTexts();
}

QLineEdit *FindPanel::field() const
{
    return findChild<QLineEdit *>(QStringLiteral("findLineEdit"));
}

TextRules FindPanel::rules() const
{
    return {caseSensitivity() == Qt::CaseSensitive, m_words->defaultAction()->isChecked(),
            m_expression->defaultAction()->isChecked()};
}

void FindPanel::restoreFilter(const QString &text, const TextRules &rules)
{
    if (text.isEmpty() || (hasFilter() && field()->text() == text && this->rules() == rules))
        return;
    show();
    setCaseSensitivity(rules.matchesCase ? Qt::CaseSensitive : Qt::CaseInsensitive);
    m_words->defaultAction()->setChecked(rules.wholeWords);
    m_expression->defaultAction()->setChecked(rules.isExpression);
    field()->setText(text);
    if (!hasFilter())
        toggleFilter();
}

QAction *FindPanel::nextAction() const
{
    return findChild<QToolButton *>(QStringLiteral("findNextButton"))->defaultAction();
}

void FindPanel::fillColumnMenu()
{
    QMenu *menu = m_columns->menu();
    menu->clear();
    for (const int column : m_find->textColumns()) {
        QString name = m_find->source()->headerData(column, Qt::Horizontal).toString();
        QAction *action = menu->addAction(name.replace(u'&', QStringLiteral("&&")));
        action->setCheckable(true);
        action->setChecked(m_find->isLookedAt(column));
        connect(action, &QAction::toggled, this, [this, column](bool isChecked) {
            m_find->setLookedAt(column, isChecked);
            rulesChanged();
        });
    }
}

bool FindPanel::hasFilter() const
{
    return m_filterAction->isChecked();
}

void FindPanel::setHasFilter(bool on)
{
    m_filterAction->setChecked(on);
}

//! As if the text was another.
void FindPanel::rulesChanged()
{
    textChanged(field()->text());
}

bool FindPanel::findIncremental(const QString &text)
{
    if (m_isResultShown)
        return m_find->source() == nullptr || !m_find->isTextFiltered() || m_find->shownRows() > 0;
    m_find->cancel();
    const bool isFound = ItemViewFindToolBar::findIncremental(text); // tells the case, too
    const QString problem = m_find->matcherFor(text).problem();
    Q_EMIT problemChanged(problem);
    Q_EMIT soughtChanged();
    if (hasFilter() && text.isEmpty())
        filterAgain();
    else if (hasFilter() && problem.isEmpty())
        m_typing.start();
    return isFound;
}

void FindPanel::filterAgain()
{
    m_typing.stop();
    if (hasFilter())
        AbstractFindToolBar::filter();
}

//! A button that was pressed a second time for the same text is not checked any more.
void FindPanel::filter(const QString &text)
{
    const bool isRemoved = !hasFilter() && m_find->isTextFiltered() && m_find->isShown(text);
    m_typing.stop();
    const QPointer<FindPanel> self(this);
    m_find->dofilter(isRemoved ? QString() : text);
    if (!self)
        return;
    setHasFilter(m_find->isTextFiltered() || m_find->isTextFiltering() || m_typing.isActive());
    showResult();
}

void FindPanel::toggleFilter()
{
    setHasFilter(!hasFilter());
    AbstractFindToolBar::filter();
}

void FindPanel::setPlainText(const QString &text)
{
    for (const QToolButton *button : {m_words, m_expression})
        button->defaultAction()->setChecked(false);
    field()->setText(text);
}

void FindPanel::removeFilter()
{
    m_typing.stop();
    setHasFilter(false);
    m_find->showAll();
}

void FindPanel::resetSearch()
{
    m_typing.stop();
    const QPointer<FindPanel> self(this);
    ItemViewFindToolBar::resetSearch();
    if (self)
        setHasFilter(false);
}

//! "Not found" is what it was before the filter: it is about the filter now.
void FindPanel::showResult()
{
    const QScopedValueRollback shown(m_isResultShown, true);
    textChanged(field()->text());
}

bool FindPanel::findPrev(const QString &text)
{
    return findRow(text, false);
}

bool FindPanel::findNext(const QString &text)
{
    return findRow(text, true);
}

bool FindPanel::findRow(const QString &text, bool forward)
{
    const QPointer<FindPanel> self(this);
    const std::optional<bool> isFoundInFile = m_find->findInFile(text, forward);
    const bool isFound = isFoundInFile ? *isFoundInFile : m_find->findInRows(text, forward);
    if (self && isFound && !text.isEmpty())
        Q_EMIT rowFound();
    return isFound;
}
