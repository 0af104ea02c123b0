// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "bigmodel.h"
#include "qtablefastview.h"
#include "view/connections_p.h"

#include <QHeaderView>
#include <QTest>

namespace {

using Parents = QList<QPersistentModelIndex>;
using LayoutHint = QAbstractItemModel::LayoutChangeHint;

} // namespace

//! Notes which of its slots are called.
class ListeningView : public QTableFastView
{
    Q_OBJECT

public Q_SLOTS:
    // Redefined, not overridden: found by their names.
    void resizeColumnToContents(int /*column*/) { called += QStringLiteral("fit"); }
    void updateGeometries() override { called += QStringLiteral("geometries"); }
    void modelAboutToBeReset() override { called += QStringLiteral("before reset"); }
    void modelReset() override { called += QStringLiteral("reset"); }
    void layoutChanged(const Parents & /*parents*/, LayoutHint /*hint*/) override
    {
        called += QStringLiteral("layout");
    }
    void sortIndicatorChanged(int /*column*/, Qt::SortOrder /*order*/) override
    {
        called += QStringLiteral("sort");
    }
    void rowsAboutToBeInserted(const QModelIndex & /*parent*/, int /*start*/, int /*end*/) override
    {
        called += QStringLiteral("before insertion");
    }
    void rowsRemoved(const QModelIndex & /*parent*/, int /*first*/, int /*last*/) override
    {
        called += QStringLiteral("removal");
    }
    void rowsAboutToBeMoved(const QModelIndex & /*from*/, int /*start*/, int /*end*/,
                            const QModelIndex & /*to*/, int /*row*/) override
    {
        called += QStringLiteral("before move");
    }
    void rowsMoved(const QModelIndex & /*from*/, int /*start*/, int /*end*/,
                   const QModelIndex & /*to*/, int /*row*/) override
    {
        called += QStringLiteral("move");
    }
    void columnResized(int /*column*/, int /*oldSize*/, int /*newSize*/) override
    {
        called += QStringLiteral("resized");
    }
    void columnCountChanged(int /*oldCount*/, int /*newCount*/) override
    {
        called += QStringLiteral("count");
    }
    void columnMoved(int /*column*/, int /*from*/, int /*to*/) override
    {
        called += QStringLiteral("moved");
    }

public:
    QStringList called;
};

//! Stands for the view's private object.
class PrivateObject : public QObject
{
    Q_OBJECT

public Q_SLOTS:
    void modelDestroyed() { called += QStringLiteral("model gone"); }
    void headerDestroyed() { called += QStringLiteral("header gone"); }
    void modelColumnsChanged(const QModelIndex & /*parent*/)
    {
        called += QStringLiteral("columns");
    }
    void headerHeightMayChange() { called += QStringLiteral("height"); }
    void headerChanged() { called += QStringLiteral("header"); }

public:
    QStringList called;
};

class tst_Connections : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void hearsTheHeader_data();
    void hearsTheHeader();
    void hearsTheModel_data();
    void hearsTheModel();
    void sortsOnDemand();
    void hearsOfTheEnd();

private:
    template<typename Emit> void emitAndCompare(bool isHeard, const Emit &doEmit);

    std::unique_ptr<ListeningView> m_view;
    std::unique_ptr<PrivateObject> m_private;
};

namespace {

//! What a signal has called, in the view and in its private object.
void addSignals()
{
    QTest::addColumn<QByteArray>("signal");
    QTest::addColumn<QString>("ofView");
    QTest::addColumn<QString>("ofPrivate");
}

void addSignal(const char *signal, const char *ofView, const char *ofPrivate = "")
{
    QTest::newRow(signal) << QByteArray(signal) << QString::fromLatin1(ofView)
                          << QString::fromLatin1(ofPrivate);
}

//! Emits a signal with zeros.
void emitSignal(QObject *sender, const QByteArray &signature)
{
    const QMetaObject *meta = sender->metaObject();
    const QMetaMethod method =
        meta->method(meta->indexOfSignal(QMetaObject::normalizedSignature(signature)));
    QVERIFY2(method.isValid(), signature.constData());
    QVarLengthArray<QVariant, 6> values;
    QVarLengthArray<void *, 7> arguments {nullptr};
    for (int i = 0; i < method.parameterCount(); ++i)
        values.append(QVariant(method.parameterMetaType(i)));
    for (QVariant &value : values)
        arguments.append(value.data());
    QMetaObject::metacall(sender, QMetaObject::InvokeMetaMethod, method.methodIndex(),
                          arguments.data());
}

} // namespace

void tst_Connections::init()
{
    m_view = std::make_unique<ListeningView>();
    m_private = std::make_unique<PrivateObject>();
    m_view->called.clear();
}

void tst_Connections::cleanup()
{
    m_view.reset();
    m_private.reset();
}

template<typename Emit> void tst_Connections::emitAndCompare(bool isHeard, const Emit &doEmit)
{
    QFETCH(QString, ofView);
    QFETCH(QString, ofPrivate);
    m_view->called.clear();
    m_private->called.clear();
    doEmit();
    QCOMPARE(m_view->called.join(u' '), isHeard ? ofView : QString());
    QCOMPARE(m_private->called.join(u' '), isHeard ? ofPrivate : QString());
}

void tst_Connections::hearsTheHeader_data()
{
    addSignals();
    addSignal("sectionResized(int,int,int)", "resized", "header");
    addSignal("sectionMoved(int,int,int)", "moved");
    addSignal("sectionCountChanged(int,int)", "count");
    addSignal("sectionHandleDoubleClicked(int)", "fit");
    addSignal("geometriesChanged()", "geometries", "height header");
    addSignal("sortIndicatorChanged(int,Qt::SortOrder)", "", "header");
    addSignal("sectionClicked(int)", "");
}

void tst_Connections::hearsTheHeader()
{
    QFETCH(QByteArray, signal);
    QHeaderView header(Qt::Horizontal);
    const Connections connections(m_view.get(), m_private.get());
    const auto emitIt = [&] { emitSignal(&header, signal); };
    connections.connectHeader(&header);
    emitAndCompare(true, emitIt);
    connections.disconnectHeader(&header);
    emitAndCompare(false, emitIt);
}

void tst_Connections::hearsTheModel_data()
{
    addSignals();
    addSignal("rowsAboutToBeInserted(QModelIndex,int,int)", "before insertion");
    addSignal("rowsRemoved(QModelIndex,int,int)", "removal");
    addSignal("rowsAboutToBeMoved(QModelIndex,int,int,QModelIndex,int)", "before move");
    addSignal("rowsMoved(QModelIndex,int,int,QModelIndex,int)", "move");
    addSignal("modelAboutToBeReset()", "before reset");
    addSignal("modelReset()", "reset");
    addSignal("layoutChanged(QList<QPersistentModelIndex>,QAbstractItemModel::LayoutChangeHint)",
              "layout");
    addSignal("headerDataChanged(Qt::Orientation,int,int)", "", "height");
    addSignal("columnsInserted(QModelIndex,int,int)", "", "columns");
    addSignal("columnsRemoved(QModelIndex,int,int)", "", "columns");
    addSignal("columnsMoved(QModelIndex,int,int,QModelIndex,int)", "", "columns");
    // The base class has these.
    addSignal("rowsInserted(QModelIndex,int,int)", "");
    addSignal("rowsAboutToBeRemoved(QModelIndex,int,int)", "");
}

void tst_Connections::hearsTheModel()
{
    QFETCH(QByteArray, signal);
    BigModel model(3);
    const Connections connections(m_view.get(), m_private.get());
    const auto emitIt = [&] { emitSignal(&model, signal); };
    connections.connectModel(&model);
    emitAndCompare(true, emitIt);
    connections.connectModel(&model);
    emitAndCompare(true, emitIt); // once
    connections.disconnectModel(&model);
    emitAndCompare(false, emitIt);
}

void tst_Connections::sortsOnDemand()
{
    QHeaderView header(Qt::Horizontal);
    const Connections connections(m_view.get(), m_private.get());
    const QByteArray signal("sortIndicatorChanged(int,Qt::SortOrder)");
    const QStringList once {QStringLiteral("sort")};
    connections.connectSorting(&header, true);
    emitSignal(&header, signal);
    QCOMPARE(m_view->called, once);
    connections.connectSorting(&header, true);
    emitSignal(&header, signal);
    QCOMPARE(m_view->called, once + once);
    connections.connectSorting(&header, false);
    emitSignal(&header, signal);
    QCOMPARE(m_view->called, once + once);
    connections.connectSorting(&header, true);
    connections.disconnectHeader(&header);
    emitSignal(&header, signal);
    QCOMPARE(m_view->called, once + once);
}

void tst_Connections::hearsOfTheEnd()
{
    const Connections connections(m_view.get(), m_private.get());
    {
        QHeaderView header(Qt::Horizontal);
        BigModel model(3);
        connections.connectHeader(&header);
        connections.connectModel(&model);
    }
    QCOMPARE(m_private->called.join(u' '), QStringLiteral("model gone header gone"));
    {
        QHeaderView header(Qt::Horizontal);
        BigModel model(3);
        connections.connectHeader(&header);
        connections.connectModel(&model);
        connections.disconnectHeader(&header);
        connections.disconnectModel(&model);
    }
    QCOMPARE(m_private->called.join(u' '), QStringLiteral("model gone header gone"));
}

QTEST_MAIN(tst_Connections)

#include "tst_connections.moc"
