// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "abstractfindtoolbar.h"

#include "edits/translatedtexts_p.h"
#include "filterlineedit.h"
#include "panel/inheritedlook_p.h"
#include "qprogressindicator.h"

#include <QAction>
#include <QGridLayout>
#include <QIcon>
#include <QKeyEvent>
#include <QLabel>
#include <QPointer>
#include <QToolButton>

namespace {

//! The theme's icon, or else ours, with the picture of double size whatever the ratio
//! of today's screen is.
QIcon icon(const QString &name)
{
    if (QIcon::hasThemeIcon(name))
        return QIcon::fromTheme(name);
    QIcon pictures;
    pictures.addFile(QStringLiteral(":/icons/16x16/%1.png").arg(name));
    pictures.addFile(QStringLiteral(":/icons/16x16/%1@2x.png").arg(name));
    return pictures;
}

//! Holds all that is in the panel.
class Inside : public QWidget
{
public:
    using QWidget::QWidget;

protected:
    //! While a search runs these keys find nothing, and would press a dialog's button.
    void keyPressEvent(QKeyEvent *event) override
    {
        const bool isPlain = !(event->modifiers() & ~Qt::KeypadModifier);
        if (!isPlain || (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter))
            QWidget::keyPressEvent(event);
    }
};

//! As wide as the text that it may show, in any font and language.
class NotFoundLabel : public QLabel
{
public:
    explicit NotFoundLabel(QWidget *parent)
        : QLabel(parent)
    {
        // A label that never had a text keeps the height of its first font.
        setText(AbstractFindToolBar::tr("Not found"));
        setText(QString());
        updateWidth();
    }

protected:
    void changeEvent(QEvent *event) override
    {
        QLabel::changeEvent(event);
        if (event->type() == QEvent::LanguageChange && !text().isEmpty())
            setText(AbstractFindToolBar::tr("Not found"));
        if (event->type() == QEvent::LanguageChange || event->type() == QEvent::FontChange)
            updateWidth();
    }

private:
    void updateWidth()
    {
        setFixedWidth(fontMetrics().horizontalAdvance(AbstractFindToolBar::tr("Not found")));
    }
};

//! In the colour of the texts around it.
class PanelIndicator : public QProgressIndicator
{
public:
    PanelIndicator() { updateColor(); }

protected:
    void changeEvent(QEvent *event) override
    {
        QProgressIndicator::changeEvent(event);
        if (event->type() == QEvent::PaletteChange)
            updateColor();
    }

private:
    void updateColor() { setColor(palette().color(foregroundRole())); }
};

} // namespace

//! Brings the panel back to life, however a search ends.
class AbstractFindToolBarSwitcher
{
public:
    explicit AbstractFindToolBarSwitcher(AbstractFindToolBar *toolBar)
        : m_toolBar(toolBar)
        , m_focused(focusWidget())
    {
        m_toolBar->setActionsEnabled(false);
        m_toolBar->m_progressIndicator->startAnimation();
        m_resort = focusWidget();
    }
    ~AbstractFindToolBarSwitcher()
    {
        if (!m_toolBar)
            return;
        m_toolBar->m_progressIndicator->stopAnimation();
        m_toolBar->setActionsEnabled(true);
        if (m_focused && m_focused != m_resort && m_resort == focusWidget())
            m_focused->setFocus(Qt::OtherFocusReason);
    }
    Q_DISABLE_COPY_MOVE(AbstractFindToolBarSwitcher)

    //! The search has destroyed the panel.
    bool isOrphaned() const { return !m_toolBar; }

private:
    QWidget *focusWidget() const { return m_toolBar->window()->focusWidget(); }

    QPointer<AbstractFindToolBar> m_toolBar;
    QPointer<QWidget> m_focused; //!< when the search began
    QPointer<QWidget> m_resort;  //!< got the focus of a button that was disabled
};

AbstractFindToolBar::AbstractFindToolBar(QWidget *parent)
    : QToolBar(parent)
{
    Q_INIT_RESOURCE(vantix);
    setupUi();
    setupActions();
    setupConnections();
}

AbstractFindToolBar::~AbstractFindToolBar()
{
    delete findChild<InheritedLook *>(); // the field may change while all of this is destroyed
}

bool AbstractFindToolBar::isFilterAvailable() const
{
    return false;
}

void AbstractFindToolBar::filter(const QString & /*text*/)
{
}

bool AbstractFindToolBar::isCaseSwitchVisible() const
{
    return m_caseButton && m_caseButton->isVisibleTo(m_widget);
}

void AbstractFindToolBar::setCaseSwitchVisible(bool visible)
{
    if (visible == isCaseSwitchVisible())
        return;
    if (!m_caseButton)
        createCaseButton();
    m_caseButton->setVisible(visible);
    if (visible)
        textChanged(m_findLineEdit->text());
}

Qt::CaseSensitivity AbstractFindToolBar::caseSensitivity() const
{
    return m_caseSensitivity;
}

void AbstractFindToolBar::setCaseSensitivity(Qt::CaseSensitivity sensitivity)
{
    if (sensitivity == m_caseSensitivity)
        return;
    m_caseSensitivity = sensitivity;
    if (!m_caseButton)
        return;
    m_caseButton->defaultAction()->setChecked(sensitivity == Qt::CaseSensitive);
    if (isCaseSwitchVisible())
        textChanged(m_findLineEdit->text());
}

void AbstractFindToolBar::setupUi()
{
    setObjectName(QStringLiteral("FindToolBar"));
    TranslatedTexts::show(this, "accessibleName", staticMetaObject, QT_TR_NOOP("Search panel"));

    m_widget = new Inside(this);
    addWidget(m_widget);
    m_layout = new QGridLayout(m_widget);
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_Spacer = new QSpacerItem(50, 0, QSizePolicy::Expanding, QSizePolicy::Minimum);

    m_notFoundLabel = new NotFoundLabel(this);
    m_progressIndicator = new PanelIndicator;
    TranslatedTexts::show(m_progressIndicator, "accessibleName", staticMetaObject,
                          QT_TR_NOOP("Search is running"));

    m_findLineEdit = new FilterLineEdit(this);
    m_findLineEdit->setObjectName(QStringLiteral("findLineEdit"));
    m_findLineEdit->setButtonMenu(FancyLineEdit::Left, m_lineEditMenu);
    m_findLineEdit->setStyleSheet(QStringLiteral("QLineEdit { border : 1px solid grey; }"));
    m_findLineEdit->setSizePolicy(QSizePolicy::MinimumExpanding, QSizePolicy::Fixed);
    for (const char *property : {"placeholderText", "accessibleName"})
        TranslatedTexts::show(m_findLineEdit, property, staticMetaObject, QT_TR_NOOP("Find"));

    m_buttonHeight = m_findLineEdit->sizeHint().height();
    m_findPrevButton = createButton(QStringLiteral("findPrevButton"));
    m_findPrevButton->setFocusPolicy(Qt::NoFocus);
    m_findNextButton = createButton(QStringLiteral("findNextButton"));
    m_findNextButton->setFocusPolicy(Qt::NoFocus);
    m_filterButton = createButton(QStringLiteral("filterButton"));
    m_closeButton = createButton(QStringLiteral("closeButton"));

    m_layout->addItem(m_Spacer, 0, 0, 1, 1);
    m_layout->addWidget(m_notFoundLabel, 0, 1);
    m_layout->addWidget(m_progressIndicator, 0, 2);
    m_layout->addWidget(m_findLineEdit, 0, 3);
    m_layout->addWidget(m_findPrevButton, 0, 4);
    m_layout->addWidget(m_findNextButton, 0, 5);
    m_layout->addWidget(m_filterButton, 0, 6);
    m_layout->addWidget(m_closeButton, 0, 7);
    const auto *look = new InheritedLook(m_findLineEdit); // knows where it is now
    connect(look, &InheritedLook::changed, this, [this] { updateButtonHeights(); });
    updateButtonHeights();

    setFloatable(false);
    setMovable(false);
    toggleViewAction()->setVisible(false);
}

QToolButton *AbstractFindToolBar::createButton(const QString &name)
{
    auto *button = new QToolButton(this);
    button->setObjectName(name);
    button->setMaximumHeight(m_buttonHeight);
    return button;
}

//! Leaves alone the buttons that a program has given another height.
void AbstractFindToolBar::updateButtonHeights()
{
    const int height = m_findLineEdit->sizeHint().height();
    for (QToolButton *button :
         {m_findPrevButton, m_findNextButton, m_filterButton, m_closeButton, m_caseButton}) {
        if (button && button->maximumHeight() == m_buttonHeight)
            button->setMaximumHeight(height);
    }
    m_buttonHeight = height;
}

//! Before the button that closes.
void AbstractFindToolBar::createCaseButton()
{
    auto *action = createAction(QString(), QT_TR_NOOP("Match case"),
                                QT_TR_NOOP("Tell upper and lower case apart"));
    action->setCheckable(true);
    action->setChecked(m_caseSensitivity == Qt::CaseSensitive);
    connect(action, &QAction::toggled, this, [this](bool isChecked) {
        setCaseSensitivity(isChecked ? Qt::CaseSensitive : Qt::CaseInsensitive);
    });
    m_caseButton = createButton(QStringLiteral("caseButton"));
    m_caseButton->setToolButtonStyle(Qt::ToolButtonTextOnly);
    m_caseButton->setDefaultAction(action);
    m_layout->addWidget(m_caseButton, 0, 7);
    m_layout->addWidget(m_closeButton, 0, 8);
    setTabOrder(m_filterButton, m_caseButton);
}

void AbstractFindToolBar::setupActions()
{
    m_findPrevAction = createAction(QStringLiteral("previous_small"), QT_TR_NOOP("Find previous"),
                                    QT_TR_NOOP("Find previous"));
    m_findPrevAction->setShortcuts(QKeySequence::FindPrevious);
    m_defaultAction = new QAction(this);
    m_defaultAction->setShortcuts(
        {QKeySequence(QStringLiteral("Enter")), QKeySequence(QStringLiteral("Return"))});
    m_findNextAction = createAction(QStringLiteral("next_small"), QT_TR_NOOP("Find next"),
                                    QT_TR_NOOP("Find next"));
    m_findNextAction->setShortcuts(QKeySequence::FindNext);
    m_filterAction = createAction(QStringLiteral("filter"), QT_TR_NOOP("Filter"),
                                  QT_TR_NOOP("Filter strings by value"));
    m_closeAction =
        createAction(QStringLiteral("close"), QT_TR_NOOP("Done"), QT_TR_NOOP("Close search panel"));
    m_closeAction->setShortcut(QKeySequence(QStringLiteral("Esc")));
    for (QAction *action : {m_findPrevAction, m_defaultAction, m_findNextAction, m_closeAction})
        action->setShortcutContext(Qt::WidgetWithChildrenShortcut);

    m_findPrevButton->setDefaultAction(m_findPrevAction);
    m_findNextButton->setDefaultAction(m_findNextAction);
    m_filterButton->setDefaultAction(m_filterAction);
    m_closeButton->setDefaultAction(m_closeAction);
    m_widget->addActions(
        {m_defaultAction, m_findPrevAction, m_findNextAction, m_filterAction, m_closeAction});
}

QAction *AbstractFindToolBar::createAction(const QString &iconName, const char *text,
                                           const char *toolTip)
{
    auto *action = new QAction(this);
    if (!iconName.isEmpty())
        action->setIcon(icon(iconName));
    TranslatedTexts::show(action, "text", staticMetaObject, text);
    TranslatedTexts::show(action, "toolTip", staticMetaObject, toolTip);
    return action;
}

void AbstractFindToolBar::setupConnections()
{
    connect(m_findLineEdit, SIGNAL(filterChanged(QString)), SLOT(textChanged(QString)));
    connect(m_defaultAction, SIGNAL(triggered()), SLOT(findNext()));
    connect(m_findPrevAction, SIGNAL(triggered()), SLOT(findPrev()));
    connect(m_findNextAction, SIGNAL(triggered()), SLOT(findNext()));
    connect(m_filterAction, SIGNAL(triggered()), SLOT(filter()));
    connect(m_closeAction, SIGNAL(triggered()), SLOT(close()));
    connect(m_findLineEdit, SIGNAL(rightButtonClicked()), SLOT(resetSearch()));
}

void AbstractFindToolBar::setActionsEnabled(bool enabled)
{
    m_findPrevAction->setEnabled(enabled);
    m_findNextAction->setEnabled(enabled);
    m_filterAction->setEnabled(enabled && isFilterAvailable());
    m_defaultAction->setEnabled(enabled);
}

void AbstractFindToolBar::updateFilterVisibility()
{
    const bool available = isFilterAvailable();
    m_filterAction->setEnabled(available);
    m_filterButton->setVisible(available);
}

void AbstractFindToolBar::openFind()
{
    updateFilterVisibility();
    setVisible(true);
    m_found = false;
    m_findLineEdit->setFocus(Qt::OtherFocusReason);
}

void AbstractFindToolBar::findPrev()
{
    findPrevNext(false);
}

void AbstractFindToolBar::findNext()
{
    findPrevNext(true);
}

void AbstractFindToolBar::findPrevNext(bool next)
{
    const AbstractFindToolBarSwitcher switcher(this);
    const QString text = m_findLineEdit->text();
    const bool found = next ? findNext(text) : findPrev(text);
    if (switcher.isOrphaned())
        return;
    m_found = m_found || found;
    showFound(m_found);
}

void AbstractFindToolBar::showFound(bool found)
{
    m_notFoundLabel->setText(found ? QString() : tr("Not found"));
}

void AbstractFindToolBar::filter()
{
    const AbstractFindToolBarSwitcher switcher(this);
    filter(m_findLineEdit->text());
}

bool AbstractFindToolBar::close()
{
    const QPointer<AbstractFindToolBar> self(this);
    resetSearch();
    return !self || QWidget::close();
}

void AbstractFindToolBar::textChanged(const QString &text)
{
    const QPointer<AbstractFindToolBar> self(this);
    m_found = false;
    const bool found = findIncremental(text);
    if (self)
        showFound(found);
}
