// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// What is on screen after a view's properties change is what painting it anew shows, with
// and without the paint buffer, by Qt's delegate and by ours.

#include "activation.h"
#include "itemdelegate.h"
#include "mixedmodel.h"
#include "qtablefastview.h"
#include "viewpictures.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPainter>
#include <QPixmapCache>
#include <QProxyStyle>
#include <QStyleFactory>
#include <QTest>

#include <functional>

namespace {

//! Texts that are longer than their column, and numbers.
class LongModel : public MixedModel
{
public:
    QVariant data(const QModelIndex &index, int role) const override
    {
        if (role != Qt::DisplayRole)
            return MixedModel::data(index, role);
        if (index.column() == 0)
            return QStringLiteral("a text that is longer than its column, row %1").arg(index.row());
        return index.row() * 1234.5;
    }
};

//! Rows and focus frames that no other style has.
class StripedStyle : public QProxyStyle
{
public:
    StripedStyle()
        : QProxyStyle(QStringLiteral("fusion"))
    {
    }
    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget) const override
    {
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        if (element == PE_PanelItemViewRow || element == PE_PanelItemViewItem)
            painter->fillRect(option->rect.adjusted(0, 0, 0, 4 - option->rect.height()), Qt::red);
    }
    int pixelMetric(PixelMetric metric, const QStyleOption *option,
                    const QWidget *widget) const override
    {
        return metric == PM_FocusFrameHMargin ? 9
                                              : QProxyStyle::pixelMetric(metric, option, widget);
    }
};

//! A view in a window, with some rows selected and one current.
struct Stage
{
    Stage(bool isBuffered, bool hasOwnDelegate)
        : view(new QTableFastView)
    {
        auto *layout = new QHBoxLayout(&window);
        layout->addWidget(view);
        if (hasOwnDelegate) {
            auto *delegate = new Vantix::ItemDelegate(view);
            delegate->setDrawIndicator(true);
            view->setItemDelegateForColumn(2, delegate);
            view->setItemDelegate(new Vantix::ItemDelegate(view));
        }
        QPalette palette = view->palette();
        palette.setColor(QPalette::Inactive, QPalette::Base, Qt::lightGray);
        view->setPalette(palette);
        view->setAlternatingRowColors(true);
        view->setSelectionMode(QAbstractItemView::ExtendedSelection);
        view->setModel(&model);
        view->setPaintBufferEnabled(isBuffered);
        window.resize(460, 320);
        window.show();
        activate(&window);
        view->selectRow(3);
        view->selectionModel()->select(model.index(6, 0), QItemSelectionModel::Select);
        settleEvents();
    }
    ~Stage() { QPixmapCache::clear(); }

    LongModel model;
    QWidget window;
    QWidget other; //!< another window
    QTableFastView *view;
};

using Change = std::function<void(Stage &)>;

//! Paints no frames.
Vantix::ItemDelegate *otherDelegate(QAbstractItemView *view)
{
    auto *delegate = new Vantix::ItemDelegate(view);
    delegate->setDrawFrame(false);
    return delegate;
}

QPalette changed(QPalette palette, QPalette::ColorRole role)
{
    for (QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled})
        palette.setColor(group, role, QColor(0x80, 0x20, 0x40));
    return palette;
}

QFont italic()
{
    QFont font;
    font.setItalic(true);
    return font;
}

//! One that writes numbers unlike the system's, whatever that is.
QLocale otherLocale()
{
    const QLocale german(QLocale::German, QLocale::Germany);
    return QLocale().decimalPoint() == german.decimalPoint() ? QLocale::c() : german;
}

//! Everything that a program or a machine may set.
QList<std::pair<const char *, Change>> changes()
{
    static StripedStyle striped;
    static const std::unique_ptr<QStyle> windows(QStyleFactory::create(QStringLiteral("windows")));
    const auto role = [](QPalette::ColorRole role) -> Change {
        return [role](Stage &s) { s.view->setPalette(changed(s.view->palette(), role)); };
    };
    return {
        {"style", [](Stage &s) { s.view->setStyle(&striped); }},
        {"windows style", [](Stage &s) { s.view->setStyle(windows.get()); }},
        {"style of the window", [](Stage &s) { s.window.setStyle(&striped); }},
        {"style of the viewport", [](Stage &s) { s.view->viewport()->setStyle(&striped); }},
        {"font", [](Stage &s) { s.view->setFont(italic()); }},
        {"font of the window", [](Stage &s) { s.window.setFont(italic()); }},
        {"font of the application", [](Stage &) { QApplication::setFont(italic()); }},
        {"text colour", role(QPalette::Text)},
        {"base colour", role(QPalette::Base)},
        {"alternate colour", role(QPalette::AlternateBase)},
        {"highlight colour", role(QPalette::Highlight)},
        {"colour of highlighted text", role(QPalette::HighlightedText)},
        {"palette of the window",
         [](Stage &s) { s.window.setPalette(changed(s.window.palette(), QPalette::Text)); }},
        {"palette of the viewport",
         [](Stage &s) {
             s.view->viewport()->setPalette(changed(s.view->viewport()->palette(), QPalette::Base));
         }},
        {"palette of the application",
         [](Stage &) {
             QApplication::setPalette(changed(QApplication::palette(), QPalette::Text));
         }},
        {"locale", [](Stage &s) { s.view->setLocale(otherLocale()); }},
        {"locale of the window", [](Stage &s) { s.window.setLocale(otherLocale()); }},
        {"direction", [](Stage &s) { s.view->setLayoutDirection(Qt::RightToLeft); }},
        {"direction of the window", [](Stage &s) { s.window.setLayoutDirection(Qt::RightToLeft); }},
        {"direction of the application",
         [](Stage &) { QApplication::setLayoutDirection(Qt::RightToLeft); }},
        {"disabled", [](Stage &s) { s.view->setEnabled(false); }},
        {"disabled window", [](Stage &s) { s.window.setEnabled(false); }},
        {"background role", [](Stage &s) { s.view->viewport()->setBackgroundRole(QPalette::Mid); }},
        {"foreground role",
         [](Stage &s) { s.view->viewport()->setForegroundRole(QPalette::Link); }},
        {"alternate rows", [](Stage &s) { s.view->setAlternatingRowColors(false); }},
        {"delegate", [](Stage &s) { s.view->setItemDelegate(otherDelegate(s.view)); }},
        {"delegate of a column",
         [](Stage &s) { s.view->setItemDelegateForColumn(1, otherDelegate(s.view)); }},
        {"delegate of a row",
         [](Stage &s) { s.view->setItemDelegateForRow(4, otherDelegate(s.view)); }},
        {"other window active",
         [](Stage &s) {
             s.other.show();
             activate(&s.other);
         }},
    };
}

} // namespace

class TestViewLook : public QObject
{
    Q_OBJECT

public:
    //! Called before the application is made: device pixels are whole.
    static void initMain() { qputenv("QT_SCALE_FACTOR", "1"); }

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void picturesAreThoseOfPaintingAnew_data();
    void picturesAreThoseOfPaintingAnew();

private:
    QFont m_font;
    QPalette m_palette;
};

void TestViewLook::initTestCase()
{
    m_font = QApplication::font();
    m_palette = QApplication::palette();
}

void TestViewLook::init()
{
    QPixmapCache::clear();
}

void TestViewLook::cleanup()
{
    QApplication::setFont(m_font);
    QApplication::setPalette(m_palette);
    QApplication::setLayoutDirection(Qt::LeftToRight);
}

void TestViewLook::picturesAreThoseOfPaintingAnew_data()
{
    QTest::addColumn<Change>("change");
    QTest::addColumn<bool>("isBuffered");
    QTest::addColumn<bool>("hasOwnDelegate");
    QTest::addColumn<bool>("isSeen");
    const QByteArrayList unseen {"style of the window", "style of the viewport", "foreground role"};
    for (const auto &[name, change] : changes()) {
        for (bool isBuffered : {false, true}) {
            for (bool hasOwnDelegate : {false, true}) {
                QTest::addRow("%s, %s, %s", name, isBuffered ? "buffered" : "direct",
                              hasOwnDelegate ? "our delegate" : "Qt's delegate")
                    << change << isBuffered << hasOwnDelegate << !unseen.contains(name);
            }
        }
    }
}

void TestViewLook::picturesAreThoseOfPaintingAnew()
{
    QFETCH(Change, change);
    QFETCH(bool, isBuffered);
    QFETCH(bool, hasOwnDelegate);
    QFETCH(bool, isSeen);
    Stage stage(isBuffered, hasOwnDelegate);
    const QImage before = maintainedPicture(*stage.view);
    change(stage);
    settleEvents();
    const QImage shown = maintainedPicture(*stage.view);
    stage.view->setPaintBufferEnabled(!isBuffered);
    stage.view->setPaintBufferEnabled(isBuffered);
    QPixmapCache::clear();
    stage.view->viewport()->update();
    settleEvents();
    QCOMPARE(shown, maintainedPicture(*stage.view));
    QCOMPARE(shown != before, isSeen);
}

QTEST_MAIN(TestViewLook)

#include "tst_viewlook.moc"
