// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include <filterlineedit.h>
#include <itemviewfindtoolbar.h>
#include <qprogressindicator.h>
#include <qtablefastview.h>

#include <QFile>
#include <QFileInfo>
#include <QIcon>
#include <QPluginLoader>
#include <QSet>
#include <QTest>
#include <QUiLoader>
#include <QtUiPlugin/QDesignerCustomWidgetInterface>

#include <memory>

//! The plugin for Qt Designer, as it is and as forms are loaded with it.
class TestDesigner : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void loadsFormsWithAllWidgets();
    void describesEachWidget();
    void createsWhatItDescribes();

private:
    QPluginLoader m_plugin {QStringLiteral(DESIGNER_PLUGIN)};
    QList<QDesignerCustomWidgetInterface *> m_widgets;
};

void TestDesigner::initTestCase()
{
    auto *collection =
        qobject_cast<QDesignerCustomWidgetCollectionInterface *>(m_plugin.instance());
    QVERIFY2(collection != nullptr, qPrintable(m_plugin.errorString()));
    m_widgets = collection->customWidgets();
    QCOMPARE(m_widgets.size(), 5);
}

void TestDesigner::loadsFormsWithAllWidgets()
{
    QUiLoader loader;
    loader.clearPluginPaths();
    loader.addPluginPath(QFileInfo(QStringLiteral(DESIGNER_PLUGIN)).path());
    QFile file(QStringLiteral(FORM));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const std::unique_ptr<QWidget> form(loader.load(&file));
    QVERIFY2(form, qPrintable(loader.errorString()));

    const auto *view = form->findChild<QTableFastView *>(QStringLiteral("tableView"));
    QVERIFY(view != nullptr);
    QCOMPARE(view->rowHeight(), 31);
    QVERIFY(view->isPaintBufferEnabled());
    QCOMPARE(view->selectionBehavior(), QAbstractItemView::SelectRows);
    const auto *edit = form->findChild<FancyLineEdit *>(QStringLiteral("lineEdit"));
    QVERIFY(edit != nullptr);
    QCOMPARE(edit->placeholderText(), QStringLiteral("Name"));
    const auto *filter = form->findChild<FilterLineEdit *>(QStringLiteral("filterEdit"));
    QVERIFY(filter != nullptr);
    QCOMPARE(filter->text(), QStringLiteral("error"));
    const auto *bar = form->findChild<ItemViewFindToolBar *>(QStringLiteral("findToolBar"));
    QVERIFY(bar != nullptr);
    QVERIFY(bar->isCaseSwitchVisible());
    QCOMPARE(bar->caseSensitivity(), Qt::CaseSensitive);
    const auto *busy = form->findChild<QProgressIndicator *>(QStringLiteral("busyIndicator"));
    QVERIFY(busy != nullptr);
    QCOMPARE(busy->animationDelay(), 80);
    QVERIFY(busy->isDisplayedWhenStopped());
    QCOMPARE(busy->color(), QColor(74, 111, 165));
    QVERIFY(!busy->isAnimated());
}

void TestDesigner::describesEachWidget()
{
    QSet<QString> names;
    for (const QDesignerCustomWidgetInterface *widget : m_widgets) {
        names.insert(widget->name());
        QCOMPARE(widget->group(), QStringLiteral("Vantix"));
        QVERIFY(!widget->icon().pixmap(24).isNull());
        QVERIFY(!widget->toolTip().isEmpty());
        QVERIFY(!widget->isContainer());
        QVERIFY(widget->domXml().contains(QStringLiteral("class=\"%1\"").arg(widget->name())));
        QVERIFY(QFile::exists(QStringLiteral(HEADERS "/") + widget->includeFile()));
    }
    QCOMPARE(names.size(), m_widgets.size());
}

void TestDesigner::createsWhatItDescribes()
{
    for (QDesignerCustomWidgetInterface *widget : m_widgets) {
        QWidget parent;
        const QWidget *made = widget->createWidget(&parent);
        QCOMPARE(QString::fromLatin1(made->metaObject()->className()), widget->name());
        QCOMPARE(made->parentWidget(), &parent);
    }
}

QTEST_MAIN(TestDesigner)
#include "tst_designer.moc"
