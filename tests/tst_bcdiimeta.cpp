// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "bcdiimeta.h"
#include "decimalsortproxy.h"
#include "sortfilterproxymodel.h"
#include "styleditemdelegate.h"

#include <QStandardItemModel>
#include <QTest>
#include <QThread>

#include <cmath>
#include <memory>
#include <random>
#include <vector>

namespace {

using Money = BCDIIValue<15, 2>;
using Rate = BCDIIValue<5, 4>;
using Large = BCDIIValue<40, 10>;
using Unregistered = BCDIIValue<12, 1>;

// Registered by their own tests.
using Early = BCDIIValue<13, 1>;
using Shared = BCDIIValue<14, 1>;

template<typename Value = Money> QVariant variantOf(const char *text)
{
    return QVariant::fromValue(Value::fromString(text));
}

QVariant nanVariant()
{
    return QVariant::fromValue(Money::nan());
}

template<typename Value> QByteArray written(const Value &value)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << value;
    return bytes;
}

// The value that is read from bytes in all; NaN beforehand would hide that it is set.
template<typename Value> Value read(const QByteArray &bytes, QDataStream::Status *status)
{
    QDataStream stream(bytes);
    Value value(1);
    stream >> value;
    *status = stream.status();
    return value;
}

void fill(QStandardItemModel *model, const QVariantList &values)
{
    for (const QVariant &value : values) {
        auto *item = new QStandardItem;
        item->setData(value, Qt::DisplayRole);
        model->appendRow(item);
    }
}

QStringList column(const QAbstractItemModel &model)
{
    QStringList texts;
    for (int row = 0; row < model.rowCount(); ++row)
        texts << model.index(row, 0).data().toString();
    return texts;
}

QStringList messages;

void keepMessage(QtMsgType, const QMessageLogContext &, const QString &text)
{
    messages << text;
}

} // namespace

class tst_BcdiiMeta : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void toText_data();
    void toText();
    void toDouble();
    void toSelfDescribing();
    void fromText_data();
    void fromText();
    void beforeRegistration();
    void registeringTwiceIsQuiet();
    void registeringInThreads();
    void compare_data();
    void compare();
    void lessThan_data();
    void lessThan();
    void isDecimal();

    void displayText_data();
    void displayText();
    void sortsInProxies_data();
    void sortsInProxies();
    void sortProxyKeepsTheRest();
    void sortProxyFilters();
    void sortProxyUsesTheRole();

    void debugText();
    void streamLayout();
    void streamRoundTrip();
    void streamOfInvalid();
    void streamFromOtherTypes();
    void streamCorrupt_data();
    void streamCorrupt();
    void streamFuzz_data();
    void streamFuzz();
    void streamTransaction();
    void streamVariant();
};

void tst_BcdiiMeta::initTestCase()
{
    vantixRegisterDecimals<Money, Rate, Large>();
}

void tst_BcdiiMeta::toText_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("text");

    QTest::newRow("number") << variantOf("1234.5") << QStringLiteral("1234.50");
    QTest::newRow("below one") << variantOf("-.05") << QStringLiteral("-0.05");
    QTest::newRow("zero") << variantOf("0") << QStringLiteral("0.00");
    QTest::newRow("other type") << variantOf<Rate>("0.1905") << QStringLiteral("0.1905");
    QTest::newRow("more digits than a double has")
        << variantOf<Large>("123456789012345678901234567890.0123456789")
        << QStringLiteral("123456789012345678901234567890.0123456789");
    QTest::newRow("NaN") << nanVariant() << QStringLiteral("NaN");
}

void tst_BcdiiMeta::toText()
{
    QFETCH(const QVariant, value);
    QFETCH(const QString, text);
    QVERIFY(value.canConvert<QString>());
    QCOMPARE(value.toString(), text);
}

void tst_BcdiiMeta::toDouble()
{
    QVERIFY(variantOf("1").canConvert<double>());
    bool ok = false;
    QCOMPARE(variantOf("-12.25").toDouble(&ok), -12.25);
    QVERIFY(ok);
    QCOMPARE(variantOf<Rate>("0.1905").toDouble(), 0.1905);
    QVERIFY(std::isnan(nanVariant().toDouble()));
}

void tst_BcdiiMeta::toSelfDescribing()
{
    auto value = variantOf("-12.25").value<InternalBCDType>();
    QCOMPARE(BCDIIGetType(&value), Money::type());
    QCOMPARE(BCDIICheck(&value), 4U);
    QCOMPARE(BCDII2StringSequence(&value).c_str(), "-12.25");
}

void tst_BcdiiMeta::fromText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("value");
    QTest::addColumn<bool>("converts");

    QTest::newRow("number") << QStringLiteral("19.9") << QStringLiteral("19.90") << true;
    QTest::newRow("comma") << QStringLiteral("-19,9") << QStringLiteral("-19.90") << true;
    QTest::newRow("none") << QStringLiteral("none") << QStringLiteral("NaN") << false;
    QTest::newRow("empty") << QString() << QStringLiteral("NaN") << false;
    QTest::newRow("exponent") << QStringLiteral("1e3") << QStringLiteral("NaN") << false;
    QTest::newRow("too fine") << QStringLiteral("1.999") << QStringLiteral("NaN") << false;
    QTest::newRow("too large") << QStringLiteral("1234567890123456") << QStringLiteral("NaN")
                               << false;
}

void tst_BcdiiMeta::fromText()
{
    QFETCH(const QString, text);
    QFETCH(const QString, value);
    QFETCH(const bool, converts);
    QVariant variant(text);
    QCOMPARE(variant.value<Money>().toQString(), value);
    QVERIFY(variant.canConvert<Money>());
    QCOMPARE(variant.convert(QMetaType::fromType<Money>()), converts);
}

void tst_BcdiiMeta::beforeRegistration()
{
    const QVariant value = variantOf<Early>("1.5");
    QVERIFY(!value.canConvert<QString>() && !value.canConvert<double>());
    QVERIFY(!vantixIsDecimal(value));
    vantixRegisterDecimals<Early>();
    QCOMPARE(value.toString(), QStringLiteral("1.5"));
    QVERIFY(vantixIsDecimal(value));
}

void tst_BcdiiMeta::registeringTwiceIsQuiet()
{
    messages.clear();
    const QtMessageHandler before = qInstallMessageHandler(keepMessage);
    vantixRegisterDecimals<Money>();
    vantixRegisterDecimals<Rate, Money, Rate>();
    vantixRegisterDecimals<>();
    qInstallMessageHandler(before);
    QCOMPARE(messages, QStringList());
    QCOMPARE(variantOf("1").toString(), QStringLiteral("1.00"));
}

void tst_BcdiiMeta::registeringInThreads()
{
    messages.clear();
    const QtMessageHandler before = qInstallMessageHandler(keepMessage);
    std::vector<std::unique_ptr<QThread>> threads;
    for (int i = 0; i < 8; ++i)
        threads.emplace_back(QThread::create([] { vantixRegisterDecimals<Shared, Money>(); }));
    for (const auto &thread : threads)
        thread->start();
    for (const auto &thread : threads)
        thread->wait();
    qInstallMessageHandler(before);
    QCOMPARE(messages, QStringList());
    QCOMPARE(variantOf<Shared>("2.5").toString(), QStringLiteral("2.5"));
}

void tst_BcdiiMeta::compare_data()
{
    QTest::addColumn<QVariant>("left");
    QTest::addColumn<QVariant>("right");
    QTest::addColumn<int>("order"); // 2: none

    QTest::newRow("less") << variantOf("9") << variantOf("10") << -1;
    QTest::newRow("equal") << variantOf("9.5") << variantOf("9.50") << 0;
    QTest::newRow("greater") << variantOf("-9") << variantOf("-10") << 1;
    QTest::newRow("finer than doubles")
        << variantOf<Large>("12345678901234567890.0000000001")
        << variantOf<Large>("12345678901234567890.0000000002") << -1;
    QTest::newRow("NaN") << nanVariant() << variantOf("1") << 2;
    QTest::newRow("both NaN") << nanVariant() << nanVariant() << 2;
    QTest::newRow("without registration")
        << variantOf<Unregistered>("2") << variantOf<Unregistered>("10") << -1;
}

void tst_BcdiiMeta::compare()
{
    QFETCH(const QVariant, left);
    QFETCH(const QVariant, right);
    QFETCH(const int, order);
    const QPartialOrdering found = QVariant::compare(left, right);
    QCOMPARE(found == QPartialOrdering::Unordered, order == 2);
    QCOMPARE(found == QPartialOrdering::Less, order == -1);
    QCOMPARE(found == QPartialOrdering::Greater, order == 1);
    QCOMPARE(left == right, order == 0);
}

void tst_BcdiiMeta::lessThan_data()
{
    QTest::addColumn<QVariantList>("ascending"); // each less than all that follow

    QTest::newRow("numbers") << QVariantList {variantOf("-10"), variantOf("-9"), variantOf("0"),
                                              variantOf("9.99"), variantOf("10")};
    QTest::newRow("types") << QVariantList {variantOf<Rate>("-1.5"),
                                            variantOf("-1.49"),
                                            variantOf<Rate>("0.0001"),
                                            variantOf("0.01"),
                                            variantOf<Rate>("0.0101"),
                                            variantOf<Large>("1000000000000000000"),
                                            nanVariant(),
                                            QVariant()};
    QTest::newRow("others last") << QVariantList {variantOf("1"), nanVariant(),
                                                  QVariant(QStringLiteral("0"))};
}

void tst_BcdiiMeta::lessThan()
{
    QFETCH(const QVariantList, ascending);
    for (qsizetype i = 0; i < ascending.size(); ++i) {
        for (qsizetype j = 0; j < ascending.size(); ++j)
            QCOMPARE(vantixDecimalLessThan(ascending[i], ascending[j]), i < j);
    }
    QVERIFY(!vantixDecimalLessThan(variantOf("1.5"), variantOf<Rate>("1.5")));
    QVERIFY(!vantixDecimalLessThan(variantOf<Rate>("1.5"), variantOf("1.5")));
    QVERIFY(!vantixDecimalLessThan(nanVariant(), QVariant::fromValue(Rate::nan())));
}

void tst_BcdiiMeta::isDecimal()
{
    QVERIFY(vantixIsDecimal(variantOf("1")));
    QVERIFY(vantixIsDecimal(variantOf<Rate>("1")));
    QVERIFY(vantixIsDecimal(nanVariant()));
    QVERIFY(!vantixIsDecimal(variantOf<Unregistered>("1")));
    QVERIFY(!vantixIsDecimal(QVariant()));
    QVERIFY(!vantixIsDecimal(QVariant(1.5)));
    QVERIFY(!vantixIsDecimal(QVariant(QStringLiteral("1"))));
}

void tst_BcdiiMeta::displayText_data()
{
    toText_data();
}

void tst_BcdiiMeta::displayText()
{
    QFETCH(const QVariant, value);
    QFETCH(const QString, text);
    for (const QLocale &locale :
         {QLocale::c(), QLocale(QLocale::German), QLocale(QLocale::Russian)}) {
        QCOMPARE(QStyledItemDelegate().displayText(value, locale), text);
        QCOMPARE(StyledItemDelegate(nullptr).displayText(value, locale), text);
    }
    QStandardItemModel model;
    fill(&model, {value});
    QStyleOptionViewItem option;
    StyledItemDelegate(nullptr).initStyleOption(&option, model.index(0, 0));
    QCOMPARE(option.text, text);
}

void tst_BcdiiMeta::sortsInProxies_data()
{
    QTest::addColumn<QVariantList>("values");
    QTest::addColumn<QStringList>("ascending");
    QTest::addColumn<QStringList>("descending");

    QTest::newRow("digits") << QVariantList {variantOf("10"), variantOf("9"), variantOf("-2"),
                                             variantOf("-10"), variantOf("100.5")}
                            << QStringList {"-10.00", "-2.00", "9.00", "10.00", "100.50"}
                            << QStringList {"100.50", "10.00", "9.00", "-2.00", "-10.00"};
    QTest::newRow("types and NaN")
        << QVariantList {nanVariant(), variantOf<Rate>("9.5"), variantOf("10"),
                         variantOf<Large>("9.4999999999")}
        << QStringList {"9.4999999999", "9.5000", "10.00", "NaN"}
        << QStringList {"NaN", "10.00", "9.5000", "9.4999999999"};
    QTest::newRow("finer than doubles")
        << QVariantList {variantOf<Large>("12345678901234567890.0000000002"),
                         variantOf<Large>("12345678901234567890.0000000001")}
        << QStringList {"12345678901234567890.0000000001", "12345678901234567890.0000000002"}
        << QStringList {"12345678901234567890.0000000002", "12345678901234567890.0000000001"};
    QTest::newRow("among texts") << QVariantList {QStringLiteral("b"), variantOf("10"),
                                                  QStringLiteral("a"), variantOf("9")}
                                 << QStringList {"9.00", "10.00", "a", "b"}
                                 << QStringList {"b", "a", "10.00", "9.00"};
}

void tst_BcdiiMeta::sortsInProxies()
{
    QFETCH(const QVariantList, values);
    QFETCH(const QStringList, ascending);
    QFETCH(const QStringList, descending);
    QStandardItemModel model;
    fill(&model, values);
    DecimalSortProxy<> proxy;
    DecimalSortProxy<SortFilterProxyModel> ownProxy;
    for (QSortFilterProxyModel *p : {static_cast<QSortFilterProxyModel *>(&proxy),
                                     static_cast<QSortFilterProxyModel *>(&ownProxy)}) {
        p->setSourceModel(&model);
        p->sort(0);
        QCOMPARE(column(*p), ascending);
        p->sort(0, Qt::DescendingOrder);
        QCOMPARE(column(*p), descending);
    }
}

void tst_BcdiiMeta::sortProxyKeepsTheRest()
{
    QStandardItemModel model;
    fill(&model, {10, 9, 100});
    DecimalSortProxy<> proxy;
    proxy.setSourceModel(&model);
    proxy.sort(0);
    QCOMPARE(column(proxy), (QStringList {"9", "10", "100"}));
}

void tst_BcdiiMeta::sortProxyFilters()
{
    QStandardItemModel model;
    fill(&model, {variantOf("10.5"), variantOf("9.5"), variantOf("7")});
    QObject parent;
    auto *const proxy = new DecimalSortProxy<SortFilterProxyModel>(&parent);
    QVERIFY(qobject_cast<SortFilterProxyModel *>(static_cast<QObject *>(proxy)) == proxy);
    proxy->setSourceModel(&model);
    proxy->setVisibleColumns({0});
    proxy->setFilter(QStringLiteral(".5"));
    proxy->sort(0);
    QCOMPARE(column(*proxy), (QStringList {"9.50", "10.50"}));
}

void tst_BcdiiMeta::sortProxyUsesTheRole()
{
    QStandardItemModel model;
    fill(&model, {QStringLiteral("ten"), QStringLiteral("nine")});
    model.item(0)->setData(variantOf("10"), Qt::UserRole);
    model.item(1)->setData(variantOf("9"), Qt::UserRole);
    DecimalSortProxy<> proxy;
    proxy.setSourceModel(&model);
    proxy.setSortRole(Qt::UserRole);
    proxy.sort(0);
    QCOMPARE(column(proxy), (QStringList {"nine", "ten"}));
}

void tst_BcdiiMeta::debugText()
{
    QString text;
    QDebug(&text) << Money::fromString("-1.5") << 7 << Money::nan();
    QCOMPARE(text.trimmed(), QStringLiteral("-1.50 7 NaN"));
    text.clear();
    QDebug(&text).nospace() << Money(1) << Rate(2);
    QCOMPARE(text, QStringLiteral("1.002.0000"));
    text.clear();
    QDebug(&text) << variantOf("1.5");
    QVERIFY2(text.contains(QLatin1String("1.50")), qPrintable(text));
}

void tst_BcdiiMeta::streamLayout()
{
    QCOMPARE(written(Money::fromString("-1.5")).toHex(),
             QByteArray("0f02"
                        "8000000000000132"));
    QCOMPARE(written((BCDIIValue<3, -1>::fromString("4560"))).toHex(),
             QByteArray("03ff"
                        "2d3c"));
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setByteOrder(QDataStream::LittleEndian);
    stream << Money::fromString("-1.5");
    QCOMPARE(bytes, written(Money::fromString("-1.5")));
}

void tst_BcdiiMeta::streamRoundTrip()
{
    const Large values[] = {Large(), Large::highest(), Large::lowest(), Large::smallest(),
                            Large::fromString("-123.456")};
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    for (const Large &value : values)
        out << value << Money::nan();
    QDataStream in(bytes);
    for (const Large &value : values) {
        Large number;
        Money nan(1);
        in >> number >> nan;
        QCOMPARE(number, value);
        QVERIFY(nan.isNan());
        QCOMPARE(in.status(), QDataStream::Ok);
    }
    QVERIFY(in.atEnd());
}

void tst_BcdiiMeta::streamOfInvalid()
{
    Money garbage = Money::highest();
    garbage.data()[3] = 200;
    QCOMPARE(written(garbage), written(Money::nan()));
    Money nan = Money::highest();
    nan.data()[0] = 101;
    QCOMPARE(written(nan), written(Money::nan()));
    QCOMPARE(written(Money::nan()).toHex(),
             QByteArray("0f02"
                        "6500000000000000"));
}

void tst_BcdiiMeta::streamFromOtherTypes()
{
    QDataStream::Status status = QDataStream::ReadCorruptData;
    QCOMPARE(read<Money>(written(Rate::fromString("1.5")), &status), Money::fromString("1.5"));
    QCOMPARE(status, QDataStream::Ok);
    QCOMPARE(read<Rate>(written(Money::fromString("-0.25")), &status), Rate::fromString("-0.25"));
    QCOMPARE(status, QDataStream::Ok);
    QVERIFY(read<Rate>(written(Money()), &status).isZero());
    QCOMPARE(status, QDataStream::Ok);
    QVERIFY(read<Rate>(written(Money::nan()), &status).isNan());
    QCOMPARE(status, QDataStream::Ok);
}

void tst_BcdiiMeta::streamCorrupt_data()
{
    QTest::addColumn<QByteArray>("hex");
    QTest::addColumn<QDataStream::Status>("status");

    const auto row = [](const char *name, const char *hex, QDataStream::Status status) {
        QTest::newRow(name) << QByteArray(hex) << status;
    };
    row("empty", "", QDataStream::ReadPastEnd);
    row("half a type", "0f", QDataStream::ReadPastEnd);
    row("type alone", "0f02", QDataStream::ReadPastEnd);
    row("a byte too few",
        "0f02"
        "80000000000001",
        QDataStream::ReadPastEnd);
    row("no digits",
        "0000"
        "0000000000000000",
        QDataStream::ReadCorruptData);
    row("64 digits",
        "4000"
        "0000000000000000",
        QDataStream::ReadCorruptData);
    row("negative digits",
        "ff00"
        "0000000000000000",
        QDataStream::ReadCorruptData);
    row("63 fraction digits",
        "0f3f"
        "0000000000000000",
        QDataStream::ReadCorruptData);
    row("-63 fraction digits",
        "0fc1"
        "0000000000000000",
        QDataStream::ReadCorruptData);
    row("pair of 100",
        "0f02"
        "0000000000000164",
        QDataStream::ReadCorruptData);
    row("first pair of 10",
        "0f02"
        "0a00000000000000",
        QDataStream::ReadCorruptData);
    row("negative zero",
        "0f02"
        "8000000000000000",
        QDataStream::ReadCorruptData);
    row("negative NaN",
        "0f02"
        "e500000000000000",
        QDataStream::ReadCorruptData);
    row("digit in the padding",
        "0301"
        "0117",
        QDataStream::ReadCorruptData);
    row("too large",
        "3f00"
        "6363636363636363636363636363636363636363636363636363636363636363",
        QDataStream::ReadCorruptData);
    row("too fine",
        "0103"
        "0a",
        QDataStream::ReadCorruptData);
    row("too fine, and rounded to nothing",
        "013e"
        "01",
        QDataStream::ReadCorruptData);
}

void tst_BcdiiMeta::streamCorrupt()
{
    QFETCH(const QByteArray, hex);
    QFETCH(const QDataStream::Status, status);
    QDataStream::Status found = QDataStream::Ok;
    QVERIFY(read<Money>(QByteArray::fromHex(hex), &found).isNan());
    QCOMPARE(found, status);
}

void tst_BcdiiMeta::streamFuzz_data()
{
    QTest::addColumn<unsigned>("seed");
    for (unsigned seed : {1U, 2U, 3U, 4U})
        QTest::addRow("seed %u", seed) << seed;
}

void tst_BcdiiMeta::streamFuzz()
{
    QFETCH(const unsigned, seed);
    std::mt19937 random(seed);
    int numbers = 0;
    int refused = 0;
    for (int i = 0; i < 20000; ++i) {
        QByteArray bytes = written(Large::fromUnits(std::int64_t(random()) - 2147483648));
        if (random() % 4 == 0)
            bytes = written(Rate::fromUnits(int(random() % 99999)));
        for (auto n = random() % 3; n > 0; --n)
            bytes[int(random() % unsigned(bytes.size()))] = char(random() & 0xFF);
        if (random() % 8 == 0)
            bytes.truncate(int(random() % unsigned(bytes.size())));
        QDataStream::Status status = QDataStream::Ok;
        const Large value = read<Large>(bytes, &status);
        if (status != QDataStream::Ok) {
            QVERIFY2(value.isNan(), bytes.toHex().constData());
            ++refused;
            continue;
        }
        QVERIFY2(value.status() != 32, bytes.toHex().constData());
        QVERIFY(value.isNan() || read<Large>(written(value), &status) == value);
        ++numbers;
    }
    QVERIFY2(numbers > 5000 && refused > 5000, qPrintable(QString::number(numbers)));
}

void tst_BcdiiMeta::streamTransaction()
{
    const QByteArray bytes = written(Money(7));
    QByteArray arrived = bytes.left(4);
    QDataStream in(&arrived, QIODevice::ReadOnly);
    Money value;
    in.startTransaction();
    in >> value;
    QVERIFY(!in.commitTransaction());
    QVERIFY(value.isNan());
    in >> value; // not read while the status stands
    QVERIFY(value.isNan());
    QCOMPARE(in.device()->pos(), qint64 {0});
    arrived += bytes.mid(4);
    in.resetStatus();
    in.startTransaction();
    in >> value;
    QVERIFY(in.commitTransaction());
    QCOMPARE(value, Money(7));
}

void tst_BcdiiMeta::streamVariant()
{
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out << variantOf("19.90") << variantOf<Rate>("0.1905");
    QCOMPARE(out.status(), QDataStream::Ok);
    QDataStream in(bytes);
    QVariant price;
    QVariant rate;
    in >> price >> rate;
    QCOMPARE(in.status(), QDataStream::Ok);
    QCOMPARE(price, variantOf("19.90"));
    QCOMPARE(rate, variantOf<Rate>("0.1905"));
}

QTEST_MAIN(tst_BcdiiMeta)

#include "tst_bcdiimeta.moc"
