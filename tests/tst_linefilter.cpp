// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "feed/feedmodel.h"
#include "search/linefilter.h"

#include <QAbstractItemModelTester>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QSortFilterProxyModel>
#include <QTest>

#include <algorithm>
#include <memory>

namespace {

//! Rows of two columns that come, go, move and change in every way.
class RowModel : public QAbstractTableModel
{
public:
    using Row = std::pair<QString, int>;

    int rowCount(const QModelIndex &parent = {}) const override
    {
        return parent.isValid() ? 0 : int(m_rows.size());
    }
    int columnCount(const QModelIndex &parent = {}) const override
    {
        return parent.isValid() ? 0 : m_columns;
    }
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override
    {
        if (role != Qt::DisplayRole)
            return {};
        const Row &row = m_rows.at(index.row());
        return index.column() == 0 ? QVariant(row.first) : QVariant(row.second);
    }
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override
    {
        const bool isColumn = orientation == Qt::Horizontal;
        if (role != Qt::DisplayRole || section < 0
            || section >= (isColumn ? m_columns : rowCount()))
            return {};
        return isColumn ? QVariant(QString(QChar(u'A' + section)))
                        : QVariant(m_rows.at(section).second);
    }
    Qt::ItemFlags flags(const QModelIndex &index) const override
    {
        const bool isOdd = index.isValid() && m_rows.at(index.row()).second % 2 == 1;
        return QAbstractTableModel::flags(index) | (isOdd ? Qt::ItemIsEditable : Qt::NoItemFlags);
    }

    void insert(int row, const QStringList &texts)
    {
        beginInsertRows({}, row, row + int(texts.size()) - 1);
        for (int i = 0; i < texts.size(); ++i)
            m_rows.insert(row + i, {texts.at(i), ++m_last});
        endInsertRows();
    }
    void remove(int row, int count)
    {
        beginRemoveRows({}, row, row + count - 1);
        m_rows.remove(row, count);
        endRemoveRows();
    }
    void move(int row, int count, int to)
    {
        if (!beginMoveRows({}, row, row + count - 1, {}, to))
            return;
        const auto begin = m_rows.begin();
        if (to > row)
            std::rotate(begin + row, begin + row + count, begin + to);
        else
            std::rotate(begin + to, begin + row, begin + row + count);
        endMoveRows();
    }
    void set(int row, const QStringList &texts)
    {
        for (int i = 0; i < texts.size(); ++i)
            m_rows[row + i].first = texts.at(i);
        const int end = row + int(texts.size());
        Q_EMIT dataChanged(index(row, 0), index(end - 1, 0), {Qt::DisplayRole});
    }
    void reverse()
    {
        Q_EMIT layoutAboutToBeChanged();
        const QModelIndexList before = persistentIndexList();
        QModelIndexList after;
        for (const QModelIndex &was : before)
            after.append(index(rowCount() - 1 - was.row(), was.column()));
        std::reverse(m_rows.begin(), m_rows.end());
        changePersistentIndexList(before, after);
        Q_EMIT layoutChanged();
    }
    void reset(const QStringList &texts)
    {
        beginResetModel();
        m_rows.clear();
        for (const QString &text : texts)
            m_rows.append({text, ++m_last});
        endResetModel();
    }
    void insertColumn()
    {
        beginInsertColumns({}, m_columns, m_columns);
        ++m_columns;
        endInsertColumns();
    }
    void removeColumn()
    {
        beginRemoveColumns({}, m_columns - 1, m_columns - 1);
        --m_columns;
        endRemoveColumns();
    }

private:
    QList<Row> m_rows;
    int m_columns = 2;
    int m_last = 0; //!< numbers given away
};

//! The same rows by Qt.
class PlainFilter : public QSortFilterProxyModel
{
protected:
    bool filterAcceptsRow(int row, const QModelIndex & /*parent*/) const override
    {
        return sourceModel()->index(row, 0).data().toString().contains(u'a');
    }
};

//! What a view knows, who learns of rows by signals alone.
class Witness : public QObject
{
public:
    explicit Witness(QAbstractItemModel *model)
        : m_model(model)
    {
        const auto readAll = [this] { readRows(0, m_model->rowCount() - 1); };
        connect(model, &QAbstractItemModel::rowsInserted, this,
                [this](const QModelIndex &, int first, int last) { readRows(first, last); });
        connect(model, &QAbstractItemModel::rowsRemoved, this,
                [this](const QModelIndex &, int first, int last) {
                    m_rows.remove(first, last - first + 1);
                });
        connect(model, &QAbstractItemModel::dataChanged, this,
                [this](const QModelIndex &first, const QModelIndex &last) {
                    m_rows.remove(first.row(), last.row() - first.row() + 1);
                    readRows(first.row(), last.row());
                });
        connect(model, &QAbstractItemModel::modelReset, this, [this, readAll] {
            m_rows.clear();
            readAll();
        });
        connect(model, &QAbstractItemModel::layoutChanged, this, [this, readAll] {
            m_rows.clear();
            readAll();
        });
        readAll();
    }

    QStringList rows() const { return m_rows; }

private:
    void readRows(int first, int last)
    {
        for (int row = first; row <= last; ++row)
            m_rows.insert(row, m_model->index(row, 0).data().toString());
    }

    QAbstractItemModel *m_model;
    QStringList m_rows;
};

QStringList textsOf(const QAbstractItemModel &model)
{
    QStringList texts;
    for (int row = 0; row < model.rowCount(); ++row)
        texts << model.index(row, 0).data().toString();
    return texts;
}

//! \a count texts, half of which have an a.
QStringList randomTexts(QRandomGenerator &random, int count)
{
    QStringList texts;
    for (int i = 0; i < count; ++i)
        texts << (random.bounded(2) ? "a" : "b") + QString::number(random.generate());
    return texts;
}

TextMatcher matcherOf(const QString &text)
{
    return {text, {.matchesCase = true}};
}

//! Both filters before the same rows, with everything that can be asked.
void compare(const LineFilter &filter, const PlainFilter &plain)
{
    QCOMPARE(textsOf(filter), textsOf(plain));
    QCOMPARE(filter.columnCount(), plain.columnCount());
    QCOMPARE(filter.hasChildren(), plain.hasChildren());
    for (int column = -1; column <= plain.columnCount(); ++column)
        QCOMPARE(filter.headerData(column, Qt::Horizontal),
                 plain.headerData(column, Qt::Horizontal));
    for (int row = -1; row <= plain.rowCount(); ++row) {
        QCOMPARE(filter.headerData(row, Qt::Vertical), plain.headerData(row, Qt::Vertical));
        const QModelIndex index = filter.index(row, 1);
        QCOMPARE(index.isValid(), plain.index(row, 1).isValid());
        QCOMPARE(filter.flags(index), plain.flags(plain.index(row, 1)));
        QCOMPARE(filter.mapToSource(index), plain.mapToSource(plain.index(row, 1)));
    }
    for (int row = 0; row < plain.sourceModel()->rowCount(); ++row) {
        const QModelIndex behind = plain.sourceModel()->index(row, 0);
        QCOMPARE(filter.mapFromSource(behind).row(), plain.mapFromSource(behind).row());
    }
}

//! The span between two minutes after ten.
RowSpan minutes(int from, int to)
{
    const auto clock = [](int minute) { return qint64(600 + minute) * 60'000; };
    return {true, false, clock(from), clock(to)};
}

//! What that shows of \a model, row by row: "10:01:00 text", or a text without a time.
QStringList inMinutes(const QAbstractItemModel &model, int from, int to)
{
    QStringList shown;
    bool isIn = false;
    const QStringList texts = textsOf(model);
    for (const QString &text : texts) {
        if (text.startsWith(QLatin1String("10:")))
            isIn = text.mid(3, 2).toInt() >= from && text.mid(3, 2).toInt() < to;
        if (isIn)
            shown << text;
    }
    return shown;
}

//! Something happens to \a model, anywhere.
void change(RowModel *model, QRandomGenerator &random)
{
    const int rows = model->rowCount();
    const int row = random.bounded(rows + 1);
    const int count = random.bounded(1, 6);
    const int there = qMin(count, rows - row);
    switch (random.bounded(16)) {
    case 0:
    case 1:
    case 2:
    case 3:
        return model->insert(row, randomTexts(random, count));
    case 4:
        return model->insert(random.bounded(2) ? 0 : rows, randomTexts(random, count));
    case 5:
        return model->reverse();
    case 6:
        return random.bounded(8) ? model->insert(rows, randomTexts(random, 40))
                                 : model->reset(randomTexts(random, 30));
    case 7:
        if (model->columnCount() < 4)
            model->insertColumn();
        return;
    case 8:
        if (model->columnCount() > 2)
            model->removeColumn();
        return;
    default:
        break;
    }
    if (there <= 0)
        return;
    const int what = random.bounded(3);
    if (what == 0)
        model->remove(row, there);
    else if (what == 1)
        model->move(row, there, random.bounded(rows + 1));
    else
        model->set(row, randomTexts(random, there));
}

} // namespace

class tst_LineFilter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void doesWhatQtDoes_data();
    void doesWhatQtDoes();
    void looksAtMoreColumns();
    void tellsOfHeaders();
    void resetTellsOfNothingElse();
    void doesNotSort();
    void bearsTheEndOfItsSource();
    void followsNothingAfterGivingUp();
    void manyRowsComeByAndBy_data();
    void manyRowsComeByAndBy();
    void feedAtTheTop();
    void takesFourBytesARow();
    void showsASpan_data();
    void showsASpan();
    void spanFollowsTimes_data();
    void spanFollowsTimes();
    void spanOfRowsFollowsThem_data();
    void spanOfRowsFollowsThem();
    void manyRowsOfASpan();
    void manyTimesChange();
    void spanTakesFourBytesARow();
};

void tst_LineFilter::doesWhatQtDoes_data()
{
    QTest::addColumn<quint32>("seed");
    for (quint32 seed = 1; seed <= 6; ++seed)
        QTest::addRow("seed %u", seed) << seed;
}

void tst_LineFilter::doesWhatQtDoes()
{
    QFETCH(quint32, seed);
    QRandomGenerator random(seed);
    RowModel model;
    model.insert(0, randomTexts(random, random.bounded(50)));
    PlainFilter plain;
    plain.setSourceModel(&model);
    LineFilter filter({0}, matcherOf(QStringLiteral("a")));
    QVERIFY(filter.takeOver(&model));
    const QAbstractItemModelTester tester(&filter,
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    const Witness witness(&filter);
    QList<std::pair<QPersistentModelIndex, QPersistentModelIndex>> kept;
    int shown = 0;
    for (int step = 0; step < 400; ++step) {
        for (int i = 0; i < 3 && plain.rowCount() > 0; ++i) {
            const int row = random.bounded(plain.rowCount());
            kept.append({filter.index(row, i % 2), plain.index(row, i % 2)});
        }
        change(&model, random);
        compare(filter, plain);
        shown += plain.rowCount();
        QCOMPARE(witness.rows(), textsOf(plain));
        for (const auto &[ours, theirs] : std::as_const(kept)) {
            QCOMPARE(ours.row(), theirs.row());
            QCOMPARE(ours.column(), theirs.column());
        }
        if (kept.size() > 60)
            kept.clear();
        if (QTest::currentTestFailed())
            return;
    }
    QVERIFY(shown > 400);
}

void tst_LineFilter::looksAtMoreColumns()
{
    RowModel model;
    model.insert(0, {"a", "b", "c"});
    LineFilter filter({0}, matcherOf(QStringLiteral("2")));
    QVERIFY(filter.takeOver(&model));
    QCOMPARE(filter.rowCount(), 0);
    model.insertColumn();
    QCOMPARE(textsOf(filter), QStringList {QStringLiteral("b")});
}

void tst_LineFilter::tellsOfHeaders()
{
    RowModel model;
    model.insert(0, {"b", "a", "b", "a", "b"});
    LineFilter filter({0}, matcherOf(QStringLiteral("a")));
    QVERIFY(filter.takeOver(&model));
    QSignalSpy spy(&filter, &QAbstractItemModel::headerDataChanged);
    Q_EMIT model.headerDataChanged(Qt::Horizontal, 1, 1);
    Q_EMIT model.headerDataChanged(Qt::Vertical, 2, 4);
    Q_EMIT model.headerDataChanged(Qt::Vertical, 4, 4); // of a hidden row
    QCOMPARE(spy.size(), 2);
    QCOMPARE(spy.at(0).mid(1), (QVariantList {1, 1}));
    QCOMPARE(spy.at(1).mid(1), (QVariantList {1, 1}));
}

void tst_LineFilter::resetTellsOfNothingElse()
{
    RowModel model;
    LineFilter filter({0}, matcherOf(QStringLiteral("a")));
    QVERIFY(filter.takeOver(&model));
    const QSignalSpy inserted(&filter, &QAbstractItemModel::rowsInserted);
    const QSignalSpy reset(&filter, &QAbstractItemModel::modelReset);
    model.reset({"a", "b", "a"});
    QCOMPARE(filter.rowCount(), 2);
    QCOMPARE(inserted.size(), 0);
    QCOMPARE(reset.size(), 1);
}

void tst_LineFilter::doesNotSort()
{
    RowModel model;
    model.insert(0, {"a2", "a1"});
    LineFilter filter({0}, matcherOf(QStringLiteral("a")));
    QVERIFY(filter.takeOver(&model));
    filter.sort(0, Qt::AscendingOrder);
    QCOMPARE(textsOf(filter), (QStringList {"a2", "a1"}));
}

void tst_LineFilter::bearsTheEndOfItsSource()
{
    auto model = std::make_unique<RowModel>();
    model->insert(0, {"a", "b", "a"});
    LineFilter filter({0}, matcherOf(QStringLiteral("a")));
    QVERIFY(filter.takeOver(model.get()));
    const Witness witness(&filter);
    const QPersistentModelIndex kept = filter.index(1, 0);
    model.reset();
    QCOMPARE(filter.rowCount(), 0);
    QCOMPARE(filter.columnCount(), 0);
    QCOMPARE(filter.memory(), size_t(0));
    QVERIFY(!filter.sourceModel());
    QVERIFY(!kept.isValid());
    QCOMPARE(witness.rows(), QStringList());
    QVERIFY(!filter.headerData(0, Qt::Horizontal).isValid());
}

void tst_LineFilter::followsNothingAfterGivingUp()
{
    RowModel model;
    model.insert(0, {"a", "b", "a"});
    LineFilter filter({0}, matcherOf(QStringLiteral("a")));
    filter.cancel();
    QVERIFY(!filter.takeOver(&model));
    model.insert(0, {"a"});
    model.remove(0, 3);
    QCOMPARE(filter.rowCount(), 0);
    QCOMPARE(filter.memory(), size_t(0));
}

void tst_LineFilter::manyRowsComeByAndBy_data()
{
    using Change = std::function<void(RowModel &, const QStringList &)>;
    QTest::addColumn<Change>("comes");
    QTest::addColumn<bool>("isFirstSeen"); // of what is there at once

    QTest::newRow("at the end") << Change([](RowModel &model, const QStringList &many) {
        model.insert(model.rowCount(), many);
    }) << true;
    QTest::newRow("at the top") << Change([](RowModel &model, const QStringList &many) {
        model.insert(0, many);
    }) << true;
    QTest::newRow("reset") << Change([](RowModel &model, const QStringList &many) {
        model.reset(many);
    }) << false;
    QTest::newRow("reset, and the last ones become the first")
        << Change([](RowModel &model, const QStringList &many) {
               model.reset(many);
               model.move(int(many.size()) - 50, 50, 0);
           })
        << false;
    QTest::newRow("reset, and some go") << Change([](RowModel &model, const QStringList &many) {
        model.reset(many);
        model.remove(10, 100);
    }) << false;
    QTest::newRow("more while they are judged")
        << Change([](RowModel &model, const QStringList &many) {
               const int count = int(many.size());
               model.insert(1, many);
               model.insert(1, {"a new", "b new"});
               model.insert(count / 2, {"a newer", "b newer"});
               model.insert(model.rowCount(), {"a last", "b last"});
               model.insert(0, {"a first", "b first"});
               model.remove(count / 4, 100);
               model.move(10, 50, count / 3);
               model.set(count / 5, {"a set", "b set"});
           })
        << true;
    QTest::newRow("all of them change") << Change([](RowModel &model, const QStringList &many) {
        model.insert(model.rowCount(), many);
        QStringList others = many;
        std::reverse(others.begin(), others.end());
        model.set(2, others);
    }) << true;
    QTest::newRow("layout") << Change([](RowModel &model, const QStringList &many) {
        model.insert(model.rowCount(), many);
        model.reverse();
    }) << false;
}

//! Too many to judge them at once: events go on.
void tst_LineFilter::manyRowsComeByAndBy()
{
    using Change = std::function<void(RowModel &, const QStringList &)>;
    QFETCH(Change, comes);
    QFETCH(bool, isFirstSeen);
    QRandomGenerator random(17);
    RowModel model;
    model.insert(0, {"a", "b", "a"});
    LineFilter filter({0}, matcherOf(QStringLiteral("a")));
    QVERIFY(filter.takeOver(&model));
    const Witness witness(&filter);
    comes(model, randomTexts(random, 3 * LineFilter::rowsAtOnce));
    if (isFirstSeen)
        QVERIFY(filter.rowCount() < LineFilter::rowsAtOnce);
    PlainFilter plain;
    plain.setSourceModel(&model);
    QVERIFY(plain.rowCount() > LineFilter::rowsAtOnce);
    QTRY_COMPARE(filter.rowCount(), plain.rowCount());
    QTRY_COMPARE(textsOf(filter), textsOf(plain));
    QCOMPARE(witness.rows(), textsOf(plain));
}

//! A feed that is filtered while it runs.
void tst_LineFilter::feedAtTheTop()
{
    FeedModel model(0, 50'000);
    model.setNewRows(FeedModel::NewRows::AtTop);
    model.setRate(1000);
    const QString symbol = model.index(0, FeedModel::SymbolColumn).data().toString();
    LineFilter filter({FeedModel::SymbolColumn}, matcherOf(symbol));
    QVERIFY(filter.takeOver(&model));
    const int before = filter.rowCount();
    for (int frame = 0; frame < 600; ++frame)
        model.advance(16'000'000);
    QVERIFY(filter.rowCount() > before);
    int row = 0;
    for (int behind = 0; behind < model.rowCount(); ++behind) {
        if (model.index(behind, FeedModel::SymbolColumn).data().toString().contains(symbol))
            QCOMPARE(filter.mapToSource(filter.index(row++, 0)).row(), behind);
    }
    QCOMPARE(filter.rowCount(), row);
}

void tst_LineFilter::takesFourBytesARow()
{
    FeedModel model(0, 300'000);
    LineFilter filter({FeedModel::SymbolColumn},
                      TextMatcher(QStringLiteral("."), {.isExpression = true}));
    QVERIFY(filter.takeOver(&model));
    QCOMPARE(filter.rowCount(), model.rowCount());
    QVERIFY(filter.memory() <= size_t(filter.rowCount()) * 4 + 2 * 65536);
}

void tst_LineFilter::showsASpan_data()
{
    QTest::addColumn<QStringList>("rows");
    QTest::addColumn<QString>("text");
    QTest::addColumn<RowSpan>("span");
    QTest::addColumn<QStringList>("shown");
    const RowSpan times = minutes(1, 2);
    QTest::newRow("from is in, to is not")
        << QStringList {"10:00:59.999", "10:01:00.000", "10:01:59.999", "10:02:00.000"} << QString()
        << times << QStringList {"10:01:00.000", "10:01:59.999"};
    QTest::newRow("a row without a time has that of the row before")
        << QStringList {"10:00:00", "x", "10:01:00", "y", "z", "10:02:00", "u"} << QString()
        << times << QStringList {"10:01:00", "y", "z"};
    QTest::newRow("before all times there are none")
        << QStringList {"x", "10:01:00"} << QString() << times << QStringList {"10:01:00"};
    QTest::newRow("times in any order")
        << QStringList {"10:01:00", "10:05:00", "10:01:30", "10:00:00", "x", "10:01:02"}
        << QString() << times << QStringList {"10:01:00", "10:01:30", "10:01:02"};
    QTest::newRow("a text, too") << QStringList {"10:00:00 a", "10:01:00 a", "10:01:30 b",
                                                 "a",          "b",          "10:02:00 a"}
                                 << QStringLiteral("a") << times << QStringList {"10:01:00 a", "a"};
    QTest::newRow("dates are something else") << QStringList {"10:01:00", "1970-01-01 10:01:00"}
                                              << QString() << times << QStringList {"10:01:00"};
    QTest::newRow("dates") << QStringList {"10:01:00", "1970-01-01 10:01:00", "x"} << QString()
                           << RowSpan {true, true, times.from, times.to}
                           << QStringList {"1970-01-01 10:01:00", "x"};
    QTest::newRow("no time") << QStringList {"a", "b"} << QString() << times << QStringList();
    QTest::newRow("rows") << QStringList {"a", "b", "c", "d"} << QString()
                          << RowSpan {false, false, 1, 3} << QStringList {"b", "c"};
    QTest::newRow("rows with a text") << QStringList {"a", "b", "a2", "a3"} << QStringLiteral("a")
                                      << RowSpan {false, false, 1, 3} << QStringList {"a2"};
    QTest::newRow("more rows than there are") << QStringList {"a", "b"} << QString()
                                              << RowSpan {false, false, 1, 30} << QStringList {"b"};
    QTest::newRow("no rows") << QStringList {"a", "b"} << QString() << RowSpan {false, false, 1, 1}
                             << QStringList();
}

void tst_LineFilter::showsASpan()
{
    QFETCH(QStringList, rows);
    QFETCH(QString, text);
    QFETCH(RowSpan, span);
    RowModel model;
    LineFilter filter({0}, matcherOf(text), span);
    model.insert(0, rows);
    QVERIFY(filter.takeOver(&model));
    QTEST(textsOf(filter), "shown");
    LineFilter live({0}, matcherOf(text), span);
    RowModel growing;
    QVERIFY(live.takeOver(&growing));
    for (const QString &row : std::as_const(rows))
        growing.insert(growing.rowCount(), {row});
    if (span.areTimes)
        QTEST(textsOf(live), "shown");
    growing.reset(rows); // from row to row, it begins anew
    if (span.areTimes)
        QTEST(textsOf(live), "shown");
}

void tst_LineFilter::spanFollowsTimes_data()
{
    QTest::addColumn<quint32>("seed");
    QTest::addColumn<QString>("text");
    for (quint32 seed = 1; seed <= 4; ++seed) {
        QTest::addRow("any text, seed %u", seed) << seed << QString();
        QTest::addRow("a text, seed %u", seed) << seed << QStringLiteral("a");
    }
}

//! Whatever happens to rows with and without times.
void tst_LineFilter::spanFollowsTimes()
{
    QFETCH(quint32, seed);
    QFETCH(QString, text);
    QRandomGenerator random(seed);
    const auto timed = [&](QStringList texts) {
        for (QString &row : texts) {
            if (random.bounded(2))
                row.prepend(QStringLiteral("10:0%1:00 ").arg(random.bounded(4)));
        }
        return texts;
    };
    RowModel model;
    LineFilter filter({0}, matcherOf(text), minutes(1, 3));
    QVERIFY(filter.takeOver(&model));
    const QAbstractItemModelTester tester(&filter,
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    const Witness witness(&filter);
    int shown = 0;
    for (int step = 0; step < 400; ++step) {
        const int rows = model.rowCount();
        const int row = random.bounded(rows + 1);
        const int there = qMin(random.bounded(1, 6), rows - row);
        const int what = random.bounded(12);
        if (what < 5 || there <= 0)
            model.insert(row, timed(randomTexts(random, random.bounded(1, 6))));
        else if (what < 7)
            model.remove(row, there);
        else if (what < 9)
            model.set(row, timed(randomTexts(random, there)));
        else if (what == 9)
            model.move(row, there, random.bounded(rows + 1));
        else if (what == 10)
            model.reverse();
        else if (step % 50 == 0)
            model.reset(timed(randomTexts(random, 40)));
        const QStringList expected = inMinutes(model, 1, 3).filter(text);
        QCOMPARE(textsOf(filter), expected);
        QCOMPARE(witness.rows(), expected);
        shown += int(expected.size());
    }
    QVERIFY(shown > 400);
}

void tst_LineFilter::spanOfRowsFollowsThem_data()
{
    using Change = std::function<void(RowModel &)>;
    QTest::addColumn<Change>("change");
    QTest::addColumn<QString>("shown"); // of a to f, c and d of which were shown

    const auto insertAt = [](int row) {
        return Change([row](RowModel &model) { model.insert(row, {"x", "y"}); });
    };
    const auto removeAt = [](int row, int count) {
        return Change([row, count](RowModel &model) { model.remove(row, count); });
    };
    QTest::newRow("come on top") << insertAt(0) << "cd";
    QTest::newRow("come above the first") << insertAt(2) << "cd";
    QTest::newRow("come between") << insertAt(3) << "cxyd";
    QTest::newRow("come behind the last") << insertAt(4) << "cd";
    QTest::newRow("come at the end") << insertAt(6) << "cd";
    QTest::newRow("go above") << removeAt(0, 2) << "cd";
    QTest::newRow("go with the first") << removeAt(1, 2) << "d";
    QTest::newRow("go with the last") << removeAt(3, 2) << "c";
    QTest::newRow("go below") << removeAt(4, 2) << "cd";
    QTest::newRow("all go") << removeAt(1, 4) << "";
    QTest::newRow("come where they went") << Change([](RowModel &model) {
        model.remove(1, 4);
        model.insert(1, {"x", "y"});
    }) << "";
    QTest::newRow("another row moves in")
        << Change([](RowModel &model) { model.move(0, 1, 3); }) << "ad";
    QTest::newRow("layout") << Change([](RowModel &model) { model.reverse(); }) << "dc";
    QTest::newRow("reset") << Change([](RowModel &model) {
        model.reset({"s", "t", "u", "v", "w"});
    }) << "uv";
    QTest::newRow("change") << Change([](RowModel &model) {
        model.insert(0, {"x"});
        model.set(2, {"B", "C", "D", "E"});
    }) << "CD";
}

void tst_LineFilter::spanOfRowsFollowsThem()
{
    using Change = std::function<void(RowModel &)>;
    QFETCH(Change, change);
    RowModel model;
    model.insert(0, {"a", "b", "c", "d", "e", "f"});
    LineFilter filter({0}, TextMatcher(), RowSpan {false, false, 2, 4});
    QVERIFY(filter.takeOver(&model));
    const Witness witness(&filter);
    QCOMPARE(textsOf(filter).join(QString()), "cd");
    change(model);
    QTEST(textsOf(filter).join(QString()), "shown");
    QTEST(witness.rows().join(QString()), "shown");
    if (filter.rowCount() > 0) {
        QCOMPARE(filter.rowSpan()->from, filter.mapToSource(filter.index(0, 0)).row());
        QCOMPARE(filter.rowSpan()->to - filter.rowSpan()->from, filter.rowCount());
    }
}

//! Too many to judge them at once.
void tst_LineFilter::manyRowsOfASpan()
{
    QStringList many;
    for (int i = 0; i < 3 * LineFilter::rowsAtOnce; ++i)
        many << (i % 3 == 0 ? QStringLiteral("10:%1:00").arg(i / 3 % 60, 2, 10, QChar(u'0'))
                            : QStringLiteral("more"));
    RowModel model;
    model.insert(0, {"10:30:00"});
    LineFilter filter({0}, TextMatcher(), minutes(0, 30));
    QVERIFY(filter.takeOver(&model));
    const Witness witness(&filter);
    model.insert(1, many);
    QCOMPARE(filter.rowCount(), 0);
    model.insert(model.rowCount() - 1, {"10:10:00", "between"});
    const QStringList expected = inMinutes(model, 0, 30);
    QVERIFY(expected.size() > LineFilter::rowsAtOnce);
    QTRY_COMPARE(filter.rowCount(), int(expected.size()));
    QCOMPARE(textsOf(filter), expected);
    QCOMPARE(witness.rows(), expected);
}

//! A row that comes before they are judged has the time that the row above has now.
void tst_LineFilter::manyTimesChange()
{
    const int count = LineFilter::rowsAtOnce + 10;
    RowModel model;
    model.insert(0, QStringList(count, QStringLiteral("10:00:00")));
    LineFilter filter({0}, TextMatcher(), minutes(5, 6));
    QVERIFY(filter.takeOver(&model));
    model.set(0, QStringList(count, QStringLiteral("10:05:00")));
    QCOMPARE(filter.rowCount(), 0);
    model.insert(count, {"more"});
    QCOMPARE(filter.rowCount(), 1);
    QTRY_COMPARE(filter.rowCount(), count + 1);
}

void tst_LineFilter::spanTakesFourBytesARow()
{
    FeedModel model(0, 300'000);
    LineFilter filter({}, TextMatcher(), RowSpan {false, false, 0, 250'000});
    QVERIFY(filter.takeOver(&model));
    QCOMPARE(filter.rowCount(), 250'000);
    QVERIFY(filter.memory() <= size_t(filter.rowCount()) * 4 + 2 * 65536);
}

QTEST_MAIN(tst_LineFilter)

#include "tst_linefilter.moc"
