// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "delegatecells.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPixmapCache>
#include <QSpinBox>
#include <QStandardItemModel>
#include <QTableView>
#include <QTest>
#include <QToolTip>

namespace {

//! Shows messages in its own way.
class RecordingDelegate : public ItemDelegate
{
    Q_OBJECT

public:
    using ItemDelegate::ItemDelegate;
    Q_INVOKABLE void showToolTip(const QString &msg, const QPoint &pos) const
    {
        m_messages.append(msg);
        m_positions.append(pos);
    }

    mutable QStringList m_messages;
    mutable QList<QPoint> m_positions;
};

//! A model that does not take what it is given.
class RefusingModel : public QStandardItemModel
{
public:
    using QStandardItemModel::QStandardItemModel;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override
    {
        if (m_accepts)
            return QStandardItemModel::setData(index, value, role);
        m_offered.append(value);
        if (m_thrown.metaType() == QMetaType::fromType<QString>())
            throw m_thrown.toString();
        if (m_thrown.isValid())
            throw m_thrown.toInt();
        return false;
    }

    bool m_accepts = false;
    QVariant m_thrown;
    QVariantList m_offered;
};

void runQueuedCalls()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::MetaCall);
}

} // namespace

class TestItemDelegateEditing : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void lineEditorIsAligned();
    void otherEditorIsLeftAlone();
    void editorCoversTheText();
    void editorsCommit_data();
    void editorsCommit();
    void emptyTextIsCommitted();
    void editorWithoutPropertyIsLeftToQt();
    void refusalIsExplained_data();
    void refusalIsExplained();
    void acceptedValueSaysNothing();
    void otherExceptionsPass();
    void toolTipComesLater();
    void positionIsThatOfTheCommit();
    void hiddenMethodIsFound();
    void viewKeepsTheRefusedValue();
};

void TestItemDelegateEditing::init()
{
    QPixmapCache::clear();
    QPixmapCache::setCacheLimit(10240);
    QToolTip::hideText();
    QTRY_VERIFY(!QToolTip::isVisible());
}

void TestItemDelegateEditing::lineEditorIsAligned()
{
    const ItemDelegate delegate(nullptr);
    QWidget parent;
    const Cell cell({{Qt::DisplayRole, QStringLiteral("12")},
                     {Qt::TextAlignmentRole, int(Qt::AlignRight | Qt::AlignVCenter)}});
    QWidget *editor = delegate.createEditor(&parent, cell.option, cell.index());
    auto *lineEdit = qobject_cast<QLineEdit *>(editor);
    QVERIFY(lineEdit);
    QCOMPARE(lineEdit->parent(), &parent);
    QCOMPARE(lineEdit->alignment(), Qt::AlignRight | Qt::AlignVCenter);
}

void TestItemDelegateEditing::otherEditorIsLeftAlone()
{
    const ItemDelegate delegate(nullptr);
    QWidget parent;
    const Cell cell(
        {{Qt::DisplayRole, 12}, {Qt::TextAlignmentRole, int(Qt::AlignRight | Qt::AlignVCenter)}});
    QWidget *editor = delegate.createEditor(&parent, cell.option, cell.index());
    auto *box = qobject_cast<QSpinBox *>(editor);
    QVERIFY(box);
    QCOMPARE(box->alignment(), QSpinBox().alignment());
}

void TestItemDelegateEditing::editorCoversTheText()
{
    ItemDelegate delegate(nullptr);
    QWidget parent;
    QLineEdit editor(&parent);
    const Cell cell({{Qt::DecorationRole, QColor(Qt::red)}});
    delegate.updateEditorGeometry(&editor, cell.option, cell.index());
    QCOMPARE(editor.geometry(), cell.option.rect);
    delegate.setDrawIndicator(true);
    delegate.updateEditorGeometry(&editor, cell.option, cell.index());
    QRect beside = cell.option.rect;
    beside.setLeft(ItemDelegate::indicatorRectByStyle(cell.option).right() + 1);
    QCOMPARE(editor.geometry(), beside);
}

void TestItemDelegateEditing::editorsCommit_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::newRow("text") << QVariant(QStringLiteral("new"));
    QTest::newRow("number") << QVariant(42);
    QTest::newRow("switch") << QVariant(true);
}

void TestItemDelegateEditing::editorsCommit()
{
    QFETCH(QVariant, value);
    const ItemDelegate delegate(nullptr);
    QLineEdit lineEdit(value.toString());
    QSpinBox spinBox;
    spinBox.setValue(value.toInt());
    QCheckBox checkBox;
    checkBox.setChecked(value.toBool());
    QWidget *editor = &lineEdit;
    if (value.metaType() == QMetaType::fromType<int>())
        editor = &spinBox;
    else if (value.metaType() == QMetaType::fromType<bool>())
        editor = &checkBox;

    QStandardItemModel model(1, 1);
    delegate.setModelData(editor, &model, model.index(0, 0));
    QCOMPARE(model.index(0, 0).data(Qt::EditRole), value);
}

void TestItemDelegateEditing::emptyTextIsCommitted()
{
    const ItemDelegate delegate(nullptr);
    RefusingModel model(1, 1);
    QLineEdit editor;
    delegate.setModelData(&editor, &model, model.index(0, 0));
    QCOMPARE(model.m_offered.size(), 1);
    QVERIFY(model.m_offered.first().isValid());
    QCOMPARE(model.m_offered.first().metaType(), QMetaType::fromType<QString>());
    QCOMPARE(model.m_offered.first().toString(), QString());
    runQueuedCalls();
}

void TestItemDelegateEditing::editorWithoutPropertyIsLeftToQt()
{
    const RecordingDelegate delegate(nullptr);
    QWidget editor;
    QVERIFY(!editor.metaObject()->userProperty().isValid());
    RefusingModel model(1, 1);
    model.m_accepts = true;
    model.setData(model.index(0, 0), 3, Qt::EditRole);
    model.m_accepts = false;
    delegate.setModelData(&editor, &model, model.index(0, 0));
    runQueuedCalls();
    QCOMPARE(delegate.m_messages, QStringList());
    QCOMPARE(model.index(0, 0).data(), 3);
}

void TestItemDelegateEditing::refusalIsExplained_data()
{
    QTest::addColumn<QVariant>("thrown");
    QTest::addColumn<QString>("message");
    const QString first = QStringLiteral("Невозможно завершить редактирование.");
    QTest::newRow("false") << QVariant() << first;
    QTest::newRow("thrown reason")
        << QVariant(QStringLiteral("Too large")) << QString(first + QStringLiteral("\nToo large"));
    QTest::newRow("thrown without reason") << QVariant(QString()) << first;
}

void TestItemDelegateEditing::refusalIsExplained()
{
    QFETCH(QVariant, thrown);
    QFETCH(QString, message);
    QTableView view;
    view.show();
    auto *delegate = new ItemDelegate(&view);
    RefusingModel model(1, 1);
    model.m_thrown = thrown;
    QLineEdit editor(&view);
    delegate->commitModelData(&editor, &model, model.index(0, 0), 5, Qt::EditRole);
    QVERIFY(!QToolTip::isVisible());
    runQueuedCalls();
    QVERIFY(QToolTip::isVisible());
    QCOMPARE(QToolTip::text(), message);
    QCOMPARE(model.index(0, 0).data(), QVariant());
}

void TestItemDelegateEditing::acceptedValueSaysNothing()
{
    const RecordingDelegate delegate(nullptr);
    QStandardItemModel model(1, 1);
    QWidget editor;
    delegate.commitModelData(&editor, &model, model.index(0, 0), 5, Qt::UserRole);
    runQueuedCalls();
    QCOMPARE(delegate.m_messages, QStringList());
    QCOMPARE(model.index(0, 0).data(Qt::UserRole), 5);
}

void TestItemDelegateEditing::otherExceptionsPass()
{
    const RecordingDelegate delegate(nullptr);
    RefusingModel model(1, 1);
    model.m_thrown = 7;
    QWidget editor;
    QVERIFY_THROWS_EXCEPTION(
        int, delegate.commitModelData(&editor, &model, model.index(0, 0), 5, Qt::EditRole));
    runQueuedCalls();
    QCOMPARE(delegate.m_messages, QStringList());
}

void TestItemDelegateEditing::toolTipComesLater()
{
    const RecordingDelegate delegate(nullptr);
    RefusingModel model(1, 1);
    QWidget editor;
    delegate.commitModelData(&editor, &model, model.index(0, 0), 5, Qt::EditRole);
    QCOMPARE(delegate.m_messages.size(), 0);
    runQueuedCalls();
    QCOMPARE(delegate.m_messages.size(), 1);
}

void TestItemDelegateEditing::positionIsThatOfTheCommit()
{
    const RecordingDelegate delegate(nullptr);
    RefusingModel model(1, 1);
    QPoint expected;
    {
        QWidget editor;
        editor.setGeometry(40, 50, 90, 21);
        expected = editor.mapToGlobal(QPoint(0, 21));
        delegate.commitModelData(&editor, &model, model.index(0, 0), 5, Qt::EditRole);
        editor.move(400, 300);
    } // the editor is gone when the message comes
    runQueuedCalls();
    QCOMPARE(delegate.m_positions, QList<QPoint> {expected});
}

void TestItemDelegateEditing::hiddenMethodIsFound()
{
    const QMetaObject &meta = ItemDelegate::staticMetaObject;
    QCOMPARE(QByteArray(meta.className()), QByteArray("Vantix::ItemDelegate"));
    QCOMPARE(meta.methodCount() - meta.methodOffset(), 1);
    QCOMPARE(meta.method(meta.methodOffset()).methodSignature(),
             QByteArray("showToolTip(QString,QPoint)"));
    QCOMPARE(StyledItemDelegate::staticMetaObject.methodOffset(),
             StyledItemDelegate::staticMetaObject.methodCount());

    QToolTip::hideText();
    const RecordingDelegate delegate(nullptr);
    RefusingModel model(1, 1);
    QWidget editor;
    delegate.commitModelData(&editor, &model, model.index(0, 0), 5, Qt::EditRole);
    runQueuedCalls();
    QCOMPARE(delegate.m_messages.size(), 1); // the subclass's own
    QVERIFY(!QToolTip::isVisible());
}

void TestItemDelegateEditing::viewKeepsTheRefusedValue()
{
    RefusingModel model(1, 1);
    model.m_accepts = true;
    model.setData(model.index(0, 0), QStringLiteral("old"), Qt::EditRole);
    model.m_accepts = false;
    model.m_thrown = QStringLiteral("Not today");
    QTableView view;
    view.setItemDelegate(new ItemDelegate(&view));
    view.setModel(&model);
    view.show();
    view.setCurrentIndex(model.index(0, 0));
    view.edit(model.index(0, 0));
    auto *editor = view.viewport()->findChild<QLineEdit *>();
    QVERIFY(editor);
    QCOMPARE(editor->geometry(), view.visualRect(model.index(0, 0)));
    editor->setText(QStringLiteral("new"));
    QTest::keyClick(editor, Qt::Key_Return);
    QTRY_COMPARE(QToolTip::text(),
                 QStringLiteral("Невозможно завершить редактирование.\nNot today"));
    QCOMPARE(model.index(0, 0).data(), QStringLiteral("old"));
    QVERIFY(model.m_offered.contains(QStringLiteral("new")));
}

QTEST_MAIN(TestItemDelegateEditing)
#include "tst_itemdelegateediting.moc"
