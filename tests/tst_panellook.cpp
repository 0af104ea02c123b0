// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// A search panel looks after any change of palette, font or style as one does that was
// made after it.

#include "activation.h"
#include "findpanel.h"
#include "scalablefont.h"

#include <QApplication>
#include <QIcon>
#include <QImage>
#include <QPalette>
#include <QPixmap>
#include <QProxyStyle>
#include <QTest>
#include <QToolButton>
#include <QVBoxLayout>

#include <functional>
#include <memory>

namespace {

//! A window that gets a panel when it is told to.
struct Window
{
    void addPanel()
    {
        panel = new Panel(&window);
        panel->setCaseSwitchVisible(true);
        field()->setAutoHideButton(FancyLineEdit::Right, false); // it would fade in
        window.setLayout(new QVBoxLayout);
        window.layout()->addWidget(panel);
    }
    FilterLineEdit *field() const { return panel->findChild<FilterLineEdit *>(); }
    QImage picture()
    {
        window.resize(900, 120);
        window.show();
        activate(&window);
        if (panel)
            field()->setFocus();
        // A change has layouts done again, which change others.
        for (int i = 0; i < 10; ++i)
            QCoreApplication::processEvents();
        return (panel ? panel : &window)->grab().toImage();
    }

    QWidget window;
    Panel *panel = nullptr;
};

QPalette darkPalette()
{
    QPalette palette(QColor(0x35, 0x35, 0x35));
    palette.setColor(QPalette::Base, QColor(0x20, 0x20, 0x20));
    palette.setColor(QPalette::Text, QColor(0xf0, 0xf0, 0xf0));
    palette.setColor(QPalette::PlaceholderText, QColor(0x80, 0xa0, 0x80));
    palette.setColor(QPalette::Highlight, QColor(0x80, 0x20, 0x20));
    return palette;
}

//! Other sizes and other colours.
class OtherStyle : public QProxyStyle
{
public:
    OtherStyle()
        : QProxyStyle(QStringLiteral("windows"))
    {
    }
    int pixelMetric(PixelMetric metric, const QStyleOption *option,
                    const QWidget *widget) const override
    {
        const int size = QProxyStyle::pixelMetric(metric, option, widget);
        return metric == PM_ToolBarIconSize || metric == PM_ButtonMargin ? size + 6 : size;
    }
};

using Change = std::function<void(Window *)>;

void addStates(const char *name, const Change &change)
{
    const std::pair<const char *, QString> texts[] = {{"empty", QString()}, {"text", "abc"}};
    for (const auto &[state, text] : texts) {
        for (const bool isEnabled : {true, false}) {
            QTest::addRow("%s, %s, %s", name, state, isEnabled ? "enabled" : "disabled")
                << change << text << isEnabled;
        }
    }
}

} // namespace

Q_DECLARE_METATYPE(Change)

class tst_PanelLook : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void looksAsMadeThen_data();
    void looksAsMadeThen();
    void ownLookStays_data();
    void ownLookStays();
    void pictures();
    void picturesAreSharpAtRatioTwo_data();
    void picturesAreSharpAtRatioTwo();
    void indicatorFollowsPalette();
    void labelFollowsFont();
    void fieldFollowsFont();

private:
    QPalette m_palette;
    QFont m_font;
};

void tst_PanelLook::init()
{
    QApplication::setCursorFlashTime(0); // a blinking cursor is in some pictures only
    m_palette = QApplication::palette();
    m_font = QApplication::font();
}

void tst_PanelLook::cleanup()
{
    QApplication::setStyle(QStringLiteral("fusion"));
    QApplication::setPalette(m_palette);
    QApplication::setFont(m_font);
    qApp->setStyleSheet(QString());
}

void tst_PanelLook::looksAsMadeThen_data()
{
    QTest::addColumn<Change>("change");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("isEnabled");

    const QString all = QStringLiteral("QWidget { color: red; font-size: 24px }");
    const QString fields = QStringLiteral("QLineEdit { background: yellow; padding: 5px }");
    addStates("application palette", [](Window *) { QApplication::setPalette(darkPalette()); });
    addStates("palette of fields",
              [](Window *) { QApplication::setPalette(darkPalette(), "QLineEdit"); });
    addStates("application font", [](Window *) { QApplication::setFont(scalableFont(28)); });
    addStates("font of fields",
              [](Window *) { QApplication::setFont(scalableFont(28), "QLineEdit"); });
    addStates("application style", [](Window *) { QApplication::setStyle(new OtherStyle); });
    addStates("application style, palette and font", [](Window *) {
        QApplication::setStyle(new OtherStyle);
        QApplication::setPalette(darkPalette());
        QApplication::setFont(scalableFont(28));
    });
    addStates("application style sheet", [=](Window *) { qApp->setStyleSheet(all); });
    addStates("application style sheet of fields", [=](Window *) { qApp->setStyleSheet(fields); });
    addStates("window palette", [](Window *w) { w->window.setPalette(darkPalette()); });
    addStates("window font", [](Window *w) { w->window.setFont(scalableFont(28)); });
    addStates("window style sheet", [=](Window *w) { w->window.setStyleSheet(all); });
    addStates("window style sheet of fields", [=](Window *w) { w->window.setStyleSheet(fields); });
    // A panel that is not there yet gets the same from its window.
    const auto panelOf = [](Window *w) { return w->panel ? w->panel : &w->window; };
    addStates("panel palette", [=](Window *w) { panelOf(w)->setPalette(darkPalette()); });
    addStates("panel font", [=](Window *w) { panelOf(w)->setFont(scalableFont(28)); });
    addStates("panel style sheet", [=](Window *w) { panelOf(w)->setStyleSheet(all); });
    addStates("window font, application palette", [](Window *w) {
        w->window.setFont(scalableFont(28));
        QApplication::setPalette(darkPalette());
    });
    addStates("in steps", [](Window *w) {
        QApplication::setPalette(QPalette(Qt::red));
        w->window.setFont(scalableFont(40));
        w->window.setStyleSheet(QStringLiteral("QWidget { color: blue }"));
        w->picture();
        w->window.setStyleSheet(QString());
        w->window.setFont(scalableFont(28));
        QApplication::setPalette(darkPalette());
    });
    addStates("there and back", [](Window *w) {
        const QPalette palette = QApplication::palette();
        const QFont font = QApplication::font();
        QApplication::setPalette(darkPalette());
        QApplication::setFont(scalableFont(28));
        w->window.setStyleSheet(QStringLiteral("QWidget { color: blue }"));
        w->picture();
        w->window.setStyleSheet(QString());
        QApplication::setPalette(palette);
        QApplication::setFont(font);
    });
}

void tst_PanelLook::looksAsMadeThen()
{
    QFETCH(Change, change);
    QFETCH(QString, text);
    QFETCH(bool, isEnabled);

    const auto picture = [&](bool isMadeFirst) {
        auto w = std::make_unique<Window>();
        if (isMadeFirst) {
            w->addPanel();
            w->picture();
        }
        change(w.get());
        if (!isMadeFirst)
            w->addPanel();
        w->field()->setText(text);
        w->panel->findNext();
        w->panel->setEnabled(isEnabled);
        return w->picture();
    };
    const QImage changed = picture(true);
    cleanup();
    const QImage expected = picture(false);
    QVERIFY(changed == expected);
}

void tst_PanelLook::ownLookStays_data()
{
    QTest::addColumn<Change>("own");
    QTest::addColumn<Change>("change");

    const Change dark = [](Window *) { QApplication::setPalette(darkPalette()); };
    const Change big = [](Window *) { QApplication::setFont(scalableFont(28)); };
    const Change restyled = [](Window *) { QApplication::setStyle(new OtherStyle); };
    const std::pair<const char *, Change> changes[] = {
        {"palette", dark}, {"font", big}, {"style", restyled}};
    const Change red = [](Window *w) {
        QPalette palette;
        palette.setColor(QPalette::Text, Qt::red);
        w->field()->setPalette(palette);
    };
    const Change bold = [](Window *w) {
        QFont font;
        font.setBold(true);
        w->field()->setFont(font);
    };
    const Change sheet = [](Window *w) {
        w->field()->setStyleSheet(QStringLiteral("QLineEdit { color: red; font-size: 12px }"));
    };
    const Change bare = [](Window *w) { w->field()->setStyleSheet(QString()); };
    const Change styled = [](Window *w) {
        auto *style = new OtherStyle;
        style->setParent(&w->window);
        w->field()->setStyle(style);
    };
    const Change low = [](Window *w) {
        for (QToolButton *button : w->panel->findChildren<QToolButton *>())
            button->setMaximumHeight(9);
    };
    const std::pair<const char *, Change> owns[] = {{"palette", red},  {"font", bold},
                                                    {"sheet", sheet},  {"no sheet", bare},
                                                    {"style", styled}, {"height", low}};
    for (const auto &[ownName, own] : owns) {
        for (const auto &[name, change] : changes)
            QTest::addRow("own %s, other %s", ownName, name) << own << change;
    }
}

//! What a program has set for the field stays, whatever else changes.
void tst_PanelLook::ownLookStays()
{
    QFETCH(Change, own);
    QFETCH(Change, change);

    const auto picture = [&](bool isChangedFirst) {
        Window w;
        if (isChangedFirst)
            change(&w);
        w.addPanel();
        w.field()->setText(QStringLiteral("abc"));
        w.picture();
        own(&w);
        w.picture();
        if (!isChangedFirst)
            change(&w);
        return w.picture();
    };
    const QImage changed = picture(false);
    cleanup();
    const QImage expected = picture(true);
    QVERIFY(changed == expected);
}

void tst_PanelLook::pictures()
{
    const Panel panel;
    const QStringList files {"previous_small", "next_small", "filter", "close"};
    for (int i = 0; i < 4; ++i) {
        if (QIcon::hasThemeIcon(files.at(i)))
            continue;
        const QIcon icon = panel.button(qPrintable(buttonNames.at(i)))->icon();
        const QPixmap expected(QStringLiteral(":/icons/16x16/%1.png").arg(files.at(i)));
        QCOMPARE(expected.size(), QSize(16, 16));
        QCOMPARE(icon.pixmap(QSize(16, 16), 1).toImage(), expected.toImage());
    }
}

void tst_PanelLook::picturesAreSharpAtRatioTwo_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("file");

    const QStringList files {"previous_small", "next_small", "filter", "close"};
    for (int i = 0; i < 4; ++i)
        QTest::addRow("%s", qPrintable(files.at(i))) << buttonNames.at(i) << files.at(i);
}

//! Made on a screen of ratio 1, shown on one of ratio 2.
void tst_PanelLook::picturesAreSharpAtRatioTwo()
{
    QFETCH(QString, button);
    QFETCH(QString, file);
    if (QIcon::hasThemeIcon(file))
        return;
    const Panel panel;
    const QPixmap pixmap =
        panel.button(qPrintable(button))->icon().pixmap(QSize(16, 16), 2, QIcon::Normal);
    const QPixmap expected(QStringLiteral(":/icons/16x16/%1@2x.png").arg(file));
    QCOMPARE(expected.size(), QSize(32, 32));
    QCOMPARE(pixmap.devicePixelRatio(), 2.0);
    QCOMPARE(pixmap.toImage(), expected.toImage());
}

void tst_PanelLook::indicatorFollowsPalette()
{
    Window w;
    w.addPanel();
    QCOMPARE(w.panel->indicator()->color(), w.window.palette().color(QPalette::WindowText));
    w.window.setPalette(QPalette(QColor(0x35, 0x35, 0x35)));
    const QColor light = w.window.palette().color(QPalette::WindowText);
    QVERIFY(light.lightness() > 200);
    QCOMPARE(w.panel->indicator()->color(), light);
    const Panel later(&w.window);
    QCOMPARE(later.indicator()->color(), light);
}

//! Before it has shown anything, too.
void tst_PanelLook::labelFollowsFont()
{
    Panel panel;
    panel.setFont(scalableFont(12));
    const int before = panel.label()->width();
    const int low = panel.label()->sizeHint().height();
    panel.setFont(scalableFont(40));
    const int needed =
        QFontMetrics(panel.label()->font()).horizontalAdvance(QStringLiteral("Not found"));
    QVERIFY(needed > before);
    QCOMPARE(panel.label()->minimumWidth(), needed);
    QCOMPARE(panel.label()->maximumWidth(), needed);
    QVERIFY(panel.label()->sizeHint().height() > low);
}

//! Although it has a style sheet.
void tst_PanelLook::fieldFollowsFont()
{
    Panel panel;
    QVERIFY(panel.field()->testAttribute(Qt::WA_StyleSheet));
    for (const int size : {12, 40}) {
        panel.setFont(scalableFont(size));
        QCOMPARE(panel.field()->fontInfo().pixelSize(), panel.fontInfo().pixelSize());
        QCOMPARE(panel.field()->fontMetrics().height(), panel.fontMetrics().height());
        QVERIFY(panel.field()->testAttribute(Qt::WA_StyleSheet));
    }
}

QTEST_MAIN(tst_PanelLook)
#include "tst_panellook.moc"
