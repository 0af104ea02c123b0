// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "activation.h"
#include "findpanel.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <QToolButton>
#include <QTranslator>
#include <QVBoxLayout>

#include <functional>
#include <memory>
#include <stdexcept>

namespace {

//! A window with the panel and something else that takes the focus.
struct Window
{
    Window()
        : panel(new Panel)
        , other(new QLineEdit)
    {
        window.addToolBar(Qt::BottomToolBarArea, panel);
        window.setCentralWidget(other);
        panel->hide();
        window.show();
        activate(&window);
        other->setFocus();
    }

    QMainWindow window;
    QPointer<Panel> panel;
    QLineEdit *other;
};

//! Does not outlive what it is asked for.
class Dying : public AbstractFindToolBar
{
public:
    bool findIncremental(const QString &) override { return die(); }
    bool findPrev(const QString &) override { return die(); }
    bool findNext(const QString &) override { return die(); }
    void resetSearch() override { die(); }
    void filter(const QString &) override { die(); }

private:
    bool die()
    {
        delete this;
        return true;
    }
};

//! Puts every text of the library into brackets, with its context.
class Brackets : public QTranslator
{
public:
    Brackets() { QCoreApplication::installTranslator(this); }
    ~Brackets() override { QCoreApplication::removeTranslator(this); }
    Q_DISABLE_COPY_MOVE(Brackets)

    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *source, const char *, int) const override
    {
        const QByteArray name(context);
        if (name != "AbstractFindToolBar" && name != "FilterLineEdit")
            return {};
        return QStringLiteral("[%1: %2]").arg(QString::fromLatin1(name), QString::fromUtf8(source));
    }
};

} // namespace

class tst_AbstractFindToolBar : public QObject
{
    Q_OBJECT

private slots:
    void toolBar();
    void layout();
    void field();
    void buttons_data();
    void buttons();
    void actions_data();
    void actions();
    void orderOfActions();
    void slotsInOrder();
    void noFilterByDefault();
    void textsFollowLanguage_data();
    void textsFollowLanguage();
    void labelFollowsLanguage();
    void caseSwitch();
    void caseSwitchTellsSubclass();

    void opening();
    void filterVisibility();
    void stickyResult();
    void textChanges();
    void enablingDuringSearch();
    void filterDuringSearch();
    void throwingSearch();
    void panelDestroyedBySearch_data();
    void panelDestroyedBySearch();
    void searchInSearch();
    void closing();
    void clearButton();

    void keys_data();
    void keys();
    void keysOutside_data();
    void keysOutside();
    void keysDuringSearch();
    void focusAfterSearch();
    void keysInDialog_data();
    void keysInDialog();
    void clicks_data();
    void clicks();
};

void tst_AbstractFindToolBar::toolBar()
{
    Panel panel;
    QCOMPARE(panel.objectName(), QStringLiteral("FindToolBar"));
    QVERIFY(!panel.isFloatable());
    QVERIFY(!panel.isMovable());
    QVERIFY(!panel.toggleViewAction()->isVisible());
    QVERIFY(panel.label()->text().isEmpty());
    QCOMPARE(panel.label()->minimumWidth(),
             panel.label()->fontMetrics().horizontalAdvance(QStringLiteral("Not found")));
    QCOMPARE(panel.label()->maximumWidth(), panel.label()->minimumWidth());
    QVERIFY(!panel.indicator()->isAnimated());
    QVERIFY(panel.calls.isEmpty());
}

void tst_AbstractFindToolBar::layout()
{
    Panel panel;
    auto *grid = qobject_cast<QGridLayout *>(panel.inside()->layout());
    QVERIFY(grid);
    QCOMPARE(grid->contentsMargins(), QMargins());
    QCOMPARE(grid->rowCount(), 1);
    QCOMPARE(grid->columnCount(), 8);
    QSpacerItem *spacer = grid->itemAtPosition(0, 0)->spacerItem();
    QVERIFY(spacer);
    QCOMPARE(spacer->sizeHint(), QSize(50, 0));
    QCOMPARE(spacer->sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);
    QCOMPARE(spacer->sizePolicy().verticalPolicy(), QSizePolicy::Minimum);
    QList<QWidget *> widgets {panel.label(), panel.indicator(), panel.field()};
    for (const QString &name : buttonNames)
        widgets << panel.button(qPrintable(name));
    for (int column = 1; column < 8; ++column)
        QCOMPARE(grid->itemAtPosition(0, column)->widget(), widgets.at(column - 1));
    // One widget in the tool bar, with everything inside.
    for (const QWidget *widget : std::as_const(widgets))
        QCOMPARE(widget->parentWidget(), panel.inside());
    QCOMPARE(panel.inside()->parentWidget(), &panel);
}

void tst_AbstractFindToolBar::field()
{
    const Panel panel;
    FilterLineEdit *field = panel.field();
    QVERIFY(field);
    QCOMPARE(field->placeholderText(), QStringLiteral("Find"));
    QCOMPARE(field->styleSheet(), QStringLiteral("QLineEdit { border : 1px solid grey; }"));
    QCOMPARE(field->sizePolicy().horizontalPolicy(), QSizePolicy::MinimumExpanding);
    QCOMPARE(field->sizePolicy().verticalPolicy(), QSizePolicy::Fixed);
    QVERIFY(!field->buttonMenu(FancyLineEdit::Left));
    QVERIFY(!field->isButtonVisible(FancyLineEdit::Left));
    QVERIFY(field->isButtonVisible(FancyLineEdit::Right));
}

void tst_AbstractFindToolBar::buttons_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("takesFocus");

    QTest::newRow("previous") << buttonNames.at(0) << false;
    QTest::newRow("next") << buttonNames.at(1) << false;
    QTest::newRow("filter") << buttonNames.at(2) << true;
    QTest::newRow("close") << buttonNames.at(3) << true;
}

void tst_AbstractFindToolBar::buttons()
{
    QFETCH(QString, name);
    QFETCH(bool, takesFocus);

    const Panel panel;
    const QToolButton *button = panel.button(qPrintable(name));
    QVERIFY(button);
    QCOMPARE(button->maximumHeight(), panel.field()->sizeHint().height());
    QCOMPARE(button->focusPolicy(), takesFocus ? QToolButton().focusPolicy() : Qt::NoFocus);
    QVERIFY(button->defaultAction());
    QCOMPARE(button->defaultAction()->parent(), &panel);
}

void tst_AbstractFindToolBar::actions_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("toolTip");
    QTest::addColumn<QList<QKeySequence>>("shortcuts");
    QTest::addColumn<bool>("isInside");

    using Keys = QList<QKeySequence>;
    QTest::newRow("previous") << buttonNames.at(0) << QStringLiteral("Find previous")
                              << QStringLiteral("Find previous")
                              << QKeySequence::keyBindings(QKeySequence::FindPrevious) << true;
    QTest::newRow("next") << buttonNames.at(1) << QStringLiteral("Find next")
                          << QStringLiteral("Find next")
                          << QKeySequence::keyBindings(QKeySequence::FindNext) << true;
    QTest::newRow("filter") << buttonNames.at(2) << QStringLiteral("Filter")
                            << QStringLiteral("Filter strings by value") << Keys() << false;
    QTest::newRow("close") << buttonNames.at(3) << QStringLiteral("Done")
                           << QStringLiteral("Close search panel")
                           << Keys {QKeySequence(Qt::Key_Escape)} << true;
}

void tst_AbstractFindToolBar::actions()
{
    QFETCH(QString, button);
    QFETCH(QString, text);
    QFETCH(QString, toolTip);
    QFETCH(QList<QKeySequence>, shortcuts);
    QFETCH(bool, isInside);

    const Panel panel;
    const QAction *action = panel.button(qPrintable(button))->defaultAction();
    QCOMPARE(action->text(), text);
    QCOMPARE(action->toolTip(), toolTip);
    QCOMPARE(action->shortcuts(), shortcuts);
    QCOMPARE(action->shortcutContext(),
             isInside ? Qt::WidgetWithChildrenShortcut : Qt::WindowShortcut);
    QVERIFY(!action->icon().isNull());
}

void tst_AbstractFindToolBar::orderOfActions()
{
    const Panel panel;
    const QList<QAction *> actions = panel.inside()->actions();
    QCOMPARE(actions.size(), 5);
    QCOMPARE(actions.first()->shortcuts(),
             QList<QKeySequence>({QKeySequence(Qt::Key_Enter), QKeySequence(Qt::Key_Return)}));
    QCOMPARE(actions.first()->shortcutContext(), Qt::WidgetWithChildrenShortcut);
    QVERIFY(actions.first()->text().isEmpty());
    QCOMPARE(actions.first()->parent(), &panel);
    for (int i = 0; i < 4; ++i)
        QCOMPARE(actions.at(i + 1), panel.button(qPrintable(buttonNames.at(i)))->defaultAction());
}

void tst_AbstractFindToolBar::slotsInOrder()
{
    const QMetaObject &meta = AbstractFindToolBar::staticMetaObject;
    QStringList names;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
        names << QString::fromLatin1(meta.method(i).methodSignature());
    QCOMPARE(names,
             QStringList({"openFind()", "findIncremental(QString)", "findPrev(QString)",
                          "findNext(QString)", "resetSearch()", "filter(QString)", "findPrev()",
                          "findNext()", "filter()", "close()", "textChanged(QString)"}));
}

void tst_AbstractFindToolBar::noFilterByDefault()
{
    class Plain : public AbstractFindToolBar
    {
    public:
        bool findIncremental(const QString &) override { return true; }
        bool findPrev(const QString &) override { return true; }
        bool findNext(const QString &) override { return true; }
        void resetSearch() override { }
    };
    Plain panel;
    QVERIFY(!panel.isFilterAvailable());
    panel.openFind();
    QVERIFY(!panel.findChild<QToolButton *>(QStringLiteral("filterButton"))->isVisible());
    static_cast<AbstractFindToolBar &>(panel).filter();
    static_cast<AbstractFindToolBar &>(panel).filter(QStringLiteral("a"));
}

void tst_AbstractFindToolBar::textsFollowLanguage_data()
{
    QTest::addColumn<QString>("object");
    QTest::addColumn<QByteArray>("property");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("context");

    const QString panel = QStringLiteral("AbstractFindToolBar");
    const char *const buttonTexts[][2] = {{"Find previous", "Find previous"},
                                          {"Find next", "Find next"},
                                          {"Filter", "Filter strings by value"},
                                          {"Done", "Close search panel"},
                                          {"Match case", "Tell upper and lower case apart"}};
    const QStringList names = buttonNames + QStringList("caseButton");
    for (int i = 0; i < 5; ++i) {
        const QString name = names.at(i);
        const auto [text, toolTip] = buttonTexts[i];
        QTest::addRow("%s", qPrintable(name))
            << name << QByteArray("text") << QString::fromLatin1(text) << panel;
        QTest::addRow("%s, tool tip", qPrintable(name))
            << name << QByteArray("toolTip") << QString::fromLatin1(toolTip) << panel;
    }
    QTest::newRow("field") << QStringLiteral("findLineEdit") << QByteArray("placeholderText")
                           << QStringLiteral("Find") << panel;
    QTest::newRow("clear button") << QStringLiteral("clearButton") << QByteArray("toolTip")
                                  << QStringLiteral("Clear") << QStringLiteral("FilterLineEdit");
}

//! As long as nobody has set another text.
void tst_AbstractFindToolBar::textsFollowLanguage()
{
    QFETCH(QString, object);
    QFETCH(QByteArray, property);
    QFETCH(QString, text);
    QFETCH(QString, context);

    const QString translated = QStringLiteral("[%1: %2]").arg(context, text);
    const QString own = QStringLiteral("own text");
    const auto find = [&](Window *w) -> QObject * {
        auto *button = w->panel->field()->findChildren<IconButton *>().at(FancyLineEdit::Right);
        button->setObjectName(QStringLiteral("clearButton"));
        w->panel->setCaseSwitchVisible(true);
        return w->panel->findChild<QWidget *>(object);
    };
    Window w;
    const QObject *followed = find(&w);
    QCOMPARE(followed->property(property).toString(), text);
    Window other;
    QObject *kept = find(&other);
    if (const auto *button = qobject_cast<QToolButton *>(kept))
        kept = button->defaultAction();
    kept->setProperty(property, own);
    {
        const Brackets language;
        QCoreApplication::processEvents();
        QCOMPARE(followed->property(property).toString(), translated);
        QCOMPARE(kept->property(property).toString(), own);
        Window later;
        QCOMPARE(find(&later)->property(property).toString(), translated);
    }
    QCoreApplication::processEvents();
    QCOMPARE(followed->property(property).toString(), text);
    QCOMPARE(kept->property(property).toString(), own);
}

void tst_AbstractFindToolBar::labelFollowsLanguage()
{
    const QString english = QStringLiteral("Not found");
    const QString translated = QStringLiteral("[AbstractFindToolBar: Not found]");
    Window w;
    const QLabel *label = w.panel->label();
    const auto width = [=](const QString &text) {
        return label->fontMetrics().horizontalAdvance(text);
    };
    w.panel->openFind();
    auto language = std::make_unique<Brackets>();
    QCoreApplication::processEvents();
    QCOMPARE(label->text(), QString());
    QCOMPARE(label->minimumWidth(), width(translated));
    w.panel->findNext();
    QCOMPARE(label->text(), translated);
    language.reset();
    QCoreApplication::processEvents();
    QCOMPARE(label->text(), english);
    QCOMPARE(label->minimumWidth(), width(english));
    QCOMPARE(label->maximumWidth(), width(english));
}

void tst_AbstractFindToolBar::caseSwitch()
{
    Window w;
    w.panel->openFind();
    QVERIFY(!w.panel->isCaseSwitchVisible());
    QVERIFY(!w.panel->button("caseButton"));
    w.panel->setCaseSwitchVisible(false);
    QVERIFY(!w.panel->button("caseButton"));

    QVERIFY(w.panel->setProperty("caseSwitchVisible", true));
    QVERIFY(w.panel->isCaseSwitchVisible());
    const QToolButton *button = w.panel->button("caseButton");
    QVERIFY(button->isVisible());
    QVERIFY(button->isCheckable());
    QVERIFY(!button->isChecked());
    QCOMPARE(button->toolButtonStyle(), Qt::ToolButtonTextOnly);
    QCOMPARE(button->maximumHeight(), w.panel->field()->sizeHint().height());
    auto *grid = qobject_cast<QGridLayout *>(w.panel->inside()->layout());
    QCOMPARE(grid->itemAtPosition(0, 6)->widget(), w.panel->button("filterButton"));
    QCOMPARE(grid->itemAtPosition(0, 7)->widget(), button);
    QCOMPARE(grid->itemAtPosition(0, 8)->widget(), w.panel->button("closeButton"));
    QCOMPARE(w.panel->button("filterButton")->nextInFocusChain(), button);

    w.panel->close();
    QVERIFY(w.panel->isCaseSwitchVisible()); // once the panel is
    w.panel->setCaseSwitchVisible(false);
    QVERIFY(!w.panel->isCaseSwitchVisible());
    w.panel->openFind();
    QVERIFY(!button->isVisible());
    w.panel->setCaseSwitchVisible(true);
    QCOMPARE(w.panel->button("caseButton"), button);
}

void tst_AbstractFindToolBar::caseSwitchTellsSubclass()
{
    Window w;
    w.panel->openFind();
    QTest::keyClicks(w.panel->field(), QStringLiteral("a"));
    w.panel->calls.clear();
    QCOMPARE(w.panel->caseSensitivity(), Qt::CaseInsensitive);
    QVERIFY(w.panel->setProperty("caseSensitivity", QVariant::fromValue(Qt::CaseSensitive)));
    QVERIFY(w.panel->calls.isEmpty()); // without a switch it is of no use
    w.panel->setCaseSwitchVisible(true);
    QToolButton *button = w.panel->button("caseButton");
    QVERIFY(button->isChecked());
    QCOMPARE(w.panel->calls, QStringList("incremental a"));
    QCOMPARE(w.panel->label()->text(), QStringLiteral("Not found"));

    w.panel->found = true;
    QTest::mouseClick(button, Qt::LeftButton);
    QCOMPARE(w.panel->caseSensitivity(), Qt::CaseInsensitive);
    QCOMPARE(w.panel->calls, QStringList({"incremental a", "incremental a"}));
    QCOMPARE(w.panel->label()->text(), QString());
    w.panel->setCaseSensitivity(Qt::CaseInsensitive);
    QCOMPARE(w.panel->calls.size(), 2);
    w.panel->setCaseSensitivity(Qt::CaseSensitive);
    QVERIFY(button->isChecked());
    QCOMPARE(w.panel->calls.size(), 3);
}

void tst_AbstractFindToolBar::opening()
{
    Window w;
    QVERIFY(!w.panel->isVisible());
    w.panel->openFind();
    QVERIFY(w.panel->isVisible());
    QVERIFY(w.panel->field()->hasFocus());
    QVERIFY(w.panel->label()->text().isEmpty());
    w.other->setFocus();
    w.panel->openFind();
    QVERIFY(w.panel->field()->hasFocus());
}

void tst_AbstractFindToolBar::filterVisibility()
{
    Window w;
    QToolButton *button = w.panel->button("filterButton");
    w.panel->canFilter = false;
    w.panel->openFind();
    QVERIFY(!button->isVisible());
    QVERIFY(!button->isEnabled());
    w.panel->canFilter = true;
    w.panel->openFind();
    QVERIFY(button->isVisible());
    QVERIFY(button->isEnabled());
}

void tst_AbstractFindToolBar::stickyResult()
{
    const QString notFound = QStringLiteral("Not found");
    Panel panel;
    panel.findNext();
    // Found at construction, as far as the label is concerned.
    QCOMPARE(panel.label()->text(), QString());

    panel.openFind();
    panel.findNext();
    QCOMPARE(panel.label()->text(), notFound);
    panel.findPrev();
    QCOMPARE(panel.label()->text(), notFound);
    panel.found = true;
    panel.findPrev();
    QCOMPARE(panel.label()->text(), QString());
    panel.found = false;
    panel.findNext();
    QCOMPARE(panel.label()->text(), QString());

    panel.openFind();
    QCOMPARE(panel.label()->text(), QString());
    panel.findNext();
    QCOMPARE(panel.label()->text(), notFound);
    panel.filter();
    QCOMPARE(panel.label()->text(), notFound);
    QCOMPARE(
        panel.calls,
        QStringList({"next ", "next ", "previous ", "previous ", "next ", "next ", "filter "}));
}

void tst_AbstractFindToolBar::textChanges()
{
    Panel panel;
    panel.field()->setText(QStringLiteral("a"));
    QCOMPARE(panel.calls, QStringList("incremental a"));
    QCOMPARE(panel.label()->text(), QStringLiteral("Not found"));
    panel.found = true;
    panel.field()->setText(QStringLiteral("ab"));
    QCOMPARE(panel.label()->text(), QString());
    QVERIFY(!panel.indicator()->isAnimated());
    // The next search speaks for the new text.
    panel.found = false;
    panel.findNext();
    QCOMPARE(panel.label()->text(), QStringLiteral("Not found"));
    panel.field()->setText(QStringLiteral("ab"));
    QCOMPARE(panel.calls, QStringList({"incremental a", "incremental ab", "next ab"}));
}

void tst_AbstractFindToolBar::enablingDuringSearch()
{
    Panel panel;
    QAction *enter = panel.inside()->actions().first();
    int searches = 0;
    panel.during = [&] {
        ++searches;
        QVERIFY(panel.indicator()->isAnimated());
        QVERIFY(!panel.button("findPrevButton")->isEnabled());
        QVERIFY(!panel.button("findNextButton")->isEnabled());
        QVERIFY(!panel.button("filterButton")->isEnabled());
        QVERIFY(!enter->isEnabled());
        QVERIFY(panel.button("closeButton")->isEnabled());
        QVERIFY(panel.field()->isEnabled());
        QCOMPARE(panel.availabilityAsked, 0);
    };
    for (const bool canFilter : {true, false}) {
        panel.canFilter = canFilter;
        for (const auto &search : std::initializer_list<std::function<void()>> {
                 [&] { panel.findNext(); }, [&] { panel.findPrev(); }, [&] { panel.filter(); }}) {
            panel.availabilityAsked = 0;
            search();
            QVERIFY(!panel.indicator()->isAnimated());
            QVERIFY(panel.button("findPrevButton")->isEnabled());
            QVERIFY(panel.button("findNextButton")->isEnabled());
            QCOMPARE(panel.button("filterButton")->isEnabled(), canFilter);
            QVERIFY(enter->isEnabled());
            QCOMPARE(panel.availabilityAsked, 1);
        }
    }
    QCOMPARE(searches, 6);
}

void tst_AbstractFindToolBar::filterDuringSearch()
{
    Panel panel;
    panel.field()->setText(QStringLiteral("a"));
    panel.calls.clear();
    panel.filter();
    QCOMPARE(panel.calls, QStringList("filter a"));
}

void tst_AbstractFindToolBar::throwingSearch()
{
    Panel panel;
    panel.openFind();
    panel.during = [] { throw std::runtime_error("no"); };
    QVERIFY_THROWS_EXCEPTION(std::runtime_error, panel.findNext());
    QVERIFY(!panel.indicator()->isAnimated());
    QVERIFY(panel.button("findNextButton")->isEnabled());
    QVERIFY_THROWS_EXCEPTION(std::runtime_error, panel.filter());
    QVERIFY(panel.button("filterButton")->isEnabled());
}

void tst_AbstractFindToolBar::panelDestroyedBySearch_data()
{
    QTest::addColumn<QByteArray>("slot");

    for (const char *slot : {"findPrev", "findNext", "filter", "close", "textChanged"})
        QTest::newRow(slot) << QByteArray(slot);
}

void tst_AbstractFindToolBar::panelDestroyedBySearch()
{
    QFETCH(QByteArray, slot);

    QPointer<AbstractFindToolBar> dying = new Dying;
    if (slot == "textChanged")
        dying->textChanged(QStringLiteral("a"));
    else
        QVERIFY(QMetaObject::invokeMethod(dying, slot));
    QVERIFY(!dying);
}

void tst_AbstractFindToolBar::searchInSearch()
{
    Panel panel;
    panel.openFind();
    panel.during = [&] {
        panel.during = nullptr;
        panel.found = true;
        panel.findNext();
        panel.found = false;
    };
    panel.findNext();
    QCOMPARE(panel.calls, QStringList({"next ", "next "}));
    QCOMPARE(panel.label()->text(), QString());
    QVERIFY(panel.button("findNextButton")->isEnabled());
    QVERIFY(!panel.indicator()->isAnimated());
}

void tst_AbstractFindToolBar::closing()
{
    Window w;
    w.panel->openFind();
    w.panel->during = [&] { QVERIFY(w.panel->isVisible()); };
    QVERIFY(w.panel->close());
    QCOMPARE(w.panel->calls, QStringList("reset "));
    QVERIFY(!w.panel->isVisible());
}

void tst_AbstractFindToolBar::clearButton()
{
    Window w;
    w.panel->openFind();
    QTest::keyClicks(w.panel->field(), QStringLiteral("ab"));
    w.panel->calls.clear();
    const QList<IconButton *> icons = w.panel->field()->findChildren<IconButton *>();
    IconButton *clear = nullptr;
    for (IconButton *icon : icons) {
        if (icon->isVisible())
            clear = icon;
    }
    QVERIFY(clear);
    QTest::mouseClick(clear, Qt::LeftButton);
    QVERIFY(w.panel->field()->text().isEmpty());
    QCOMPARE(w.panel->calls, QStringList({"incremental ", "reset "}));
    QVERIFY(w.panel->isVisible());
}

void tst_AbstractFindToolBar::keys_data()
{
    QTest::addColumn<QKeySequence>("key");
    QTest::addColumn<QString>("focus"); // name of the focused widget
    QTest::addColumn<QString>("call");

    const QString field = QStringLiteral("findLineEdit");
    const auto row = [](const QString &name, const QKeySequence &key, const QString &focus,
                        const char *call) {
        QTest::newRow(qPrintable(name)) << key << focus << QString::fromLatin1(call);
    };
    row("return", Qt::Key_Return, field, "next a");
    row("enter", Qt::Key_Enter, field, "next a");
    row("escape", Qt::Key_Escape, field, "reset ");
    for (const QKeySequence &key : QKeySequence::keyBindings(QKeySequence::FindNext))
        row("next, " + key.toString(), key, field, "next a");
    for (const QKeySequence &key : QKeySequence::keyBindings(QKeySequence::FindPrevious))
        row("previous, " + key.toString(), key, field, "previous a");
    row("return on a button", Qt::Key_Return, buttonNames.at(2), "next a");
    row("escape on a button", Qt::Key_Escape, buttonNames.at(3), "reset ");
}

void tst_AbstractFindToolBar::keys()
{
    QFETCH(QKeySequence, key);
    QFETCH(QString, focus);
    QFETCH(QString, call);

    Window w;
    w.panel->openFind();
    QTest::keyClicks(w.panel->field(), QStringLiteral("a"));
    w.panel->calls.clear();
    auto *focused = w.panel->findChild<QWidget *>(focus);
    focused->setFocus();
    QCOMPARE(QApplication::focusWidget(), focused);
    QTest::keySequence(&w.window, key);
    QCOMPARE(w.panel->calls, QStringList(call));
    QCOMPARE(w.panel->isVisible(), call != QStringLiteral("reset "));
}

void tst_AbstractFindToolBar::keysOutside_data()
{
    QTest::addColumn<QKeySequence>("key");

    QTest::newRow("return") << QKeySequence(Qt::Key_Return);
    QTest::newRow("enter") << QKeySequence(Qt::Key_Enter);
    QTest::newRow("escape") << QKeySequence(Qt::Key_Escape);
    QTest::newRow("next") << QKeySequence(QKeySequence::FindNext);
    QTest::newRow("previous") << QKeySequence(QKeySequence::FindPrevious);
}

void tst_AbstractFindToolBar::keysOutside()
{
    QFETCH(QKeySequence, key);

    Window w;
    w.panel->openFind();
    w.other->setFocus();
    QTest::keySequence(&w.window, key);
    QVERIFY(w.panel->calls.isEmpty());
    QVERIFY(w.panel->isVisible());
}

void tst_AbstractFindToolBar::keysDuringSearch()
{
    Window w;
    w.panel->openFind();
    w.panel->during = [&] {
        w.panel->during = nullptr;
        QTest::keyClick(w.panel->field(), Qt::Key_Return);
        QTest::keySequence(&w.window, QKeySequence(QKeySequence::FindNext));
        QCOMPARE(w.panel->calls, QStringList("next "));
        QTest::keyClicks(w.panel->field(), QStringLiteral("a"));
        QTest::keyClick(w.panel->field(), Qt::Key_Escape);
    };
    QTest::keyClick(w.panel->field(), Qt::Key_Return);
    QCOMPARE(w.panel->calls, QStringList({"next ", "incremental a", "reset "}));
    QVERIFY(!w.panel->isVisible());
    // Broken off by typing and closing: not found.
    QCOMPARE(w.panel->label()->text(), QStringLiteral("Not found"));
}

//! A disabled button passes the focus on, to the close button: Space would close.
void tst_AbstractFindToolBar::focusAfterSearch()
{
    Window w;
    w.panel->openFind();
    QToolButton *filter = w.panel->button("filterButton");
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return}) {
        filter->setFocus();
        QTest::keyClick(filter, key);
        QCOMPARE(QApplication::focusWidget(), filter);
    }
    QCOMPARE(w.panel->calls, QStringList({"filter ", "next "}));
    // Who goes elsewhere meanwhile stays there.
    w.panel->during = [&] { w.panel->field()->setFocus(); };
    QTest::keyClick(filter, Qt::Key_Space);
    QCOMPARE(QApplication::focusWidget(), w.panel->field());
    w.panel->during = nullptr;
    w.other->setFocus();
    w.panel->findNext();
    QCOMPARE(QApplication::focusWidget(), w.other);
}

void tst_AbstractFindToolBar::keysInDialog_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<QStringList>("calls");
    QTest::addColumn<bool>("isOpen");

    QTest::newRow("return") << int(Qt::Key_Return) << QStringList({"next ", "next "}) << true;
    QTest::newRow("enter") << int(Qt::Key_Enter) << QStringList({"next ", "next "}) << true;
    QTest::newRow("escape") << int(Qt::Key_Escape) << QStringList({"reset ", "next ", "reset "})
                            << false;
}

//! The panel's keys are not the dialog's, though a search has disabled their actions.
void tst_AbstractFindToolBar::keysInDialog()
{
    QFETCH(int, key);
    QFETCH(QStringList, calls);
    QFETCH(bool, isOpen);

    QDialog dialog;
    auto *panel = new Panel;
    auto *button = new QPushButton;
    auto *layout = new QVBoxLayout(&dialog);
    layout->addWidget(panel);
    layout->addWidget(button);
    button->setDefault(true);
    connect(button, SIGNAL(clicked()), &dialog, SLOT(accept()));
    dialog.show();
    activate(&dialog);
    panel->openFind();
    QTest::keyClick(panel->field(), Qt::Key(key));
    QVERIFY(dialog.isVisible());
    QCOMPARE(panel->isVisible(), isOpen);

    panel->openFind();
    bool hasRun = false;
    panel->during = [&] {
        panel->during = nullptr;
        hasRun = true;
        QTest::keyClick(panel->field(), Qt::Key(key));
    };
    panel->findNext();
    QVERIFY(hasRun);
    QCOMPARE(panel->calls, calls);
    QVERIFY(dialog.isVisible());
    QCOMPARE(dialog.result(), int(QDialog::Rejected));

    // Once the focus is elsewhere they are.
    panel->openFind();
    button->setFocus();
    QTest::keyClick(&dialog, Qt::Key(key));
    QVERIFY(!dialog.isVisible());
}

void tst_AbstractFindToolBar::clicks_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("call");

    QTest::newRow("previous") << buttonNames.at(0) << QStringLiteral("previous a");
    QTest::newRow("next") << buttonNames.at(1) << QStringLiteral("next a");
    QTest::newRow("filter") << buttonNames.at(2) << QStringLiteral("filter a");
    QTest::newRow("close") << buttonNames.at(3) << QStringLiteral("reset ");
}

void tst_AbstractFindToolBar::clicks()
{
    QFETCH(QString, button);
    QFETCH(QString, call);

    Window w;
    w.panel->openFind();
    QTest::keyClicks(w.panel->field(), QStringLiteral("a"));
    w.panel->calls.clear();
    QTest::mouseClick(w.panel->button(qPrintable(button)), Qt::LeftButton);
    QCOMPARE(w.panel->calls, QStringList(call));
}

QTEST_MAIN(tst_AbstractFindToolBar)

#include "tst_abstractfindtoolbar.moc"
