// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// The text of a cell beside QPainter::drawText(), pixel for pixel, in the fonts, sizes,
// cells, alignments, directions, ratios and scripts that people have. A selection of the
// sizes and heights is compared; with VANTIX_TEST_ALL in the environment, all of them.

#include "itemdelegate.h"

#include <QApplication>
#include <QFontDatabase>
#include <QFontInfo>
#include <QPainter>
#include <QStyle>
#include <QTest>

#include <cstring>

namespace {

//! A plain canvas, used again for every picture.
class Canvas
{
public:
    Canvas(QSize size, double ratio)
        : m_image((QSizeF(size) * ratio).toSize(), QImage::Format_ARGB32_Premultiplied)
    {
        m_image.setDevicePixelRatio(ratio);
    }

    //! Paints nothing but what \a paint(painter) does.
    template<typename Paint>
    void fill(Qt::LayoutDirection direction, const QFont &font, Paint paint)
    {
        m_image.fill(Qt::white);
        QPainter painter(&m_image);
        painter.setLayoutDirection(direction);
        painter.setFont(font);
        paint(&painter);
    }
    bool showsTheSameAs(const Canvas &other) const
    {
        return std::memcmp(m_image.constBits(), other.m_image.constBits(),
                           size_t(m_image.sizeInBytes()))
            == 0;
    }
    bool isEmpty() const
    {
        const auto *pixels = reinterpret_cast<const QRgb *>(m_image.constBits());
        const qsizetype count = m_image.sizeInBytes() / qsizetype(sizeof(QRgb));
        return std::all_of(pixels, pixels + count, [](QRgb pixel) { return pixel == 0xffffffff; });
    }

private:
    QImage m_image;
};

//! What is compared for one font and one script.
struct Matrix
{
    QList<double> sizes; //!< points
    QList<int> heights;  //!< of cells, logical pixels

    static Matrix all()
    {
        Matrix matrix;
        for (double size = 7; size <= 24; size += 0.5)
            matrix.sizes.append(size);
        for (int height = 12; height <= 40; ++height)
            matrix.heights.append(height);
        return matrix;
    }
    static Matrix selection() { return {{8.5, 10, 11, 17.5}, {14, 19, 24}}; }
    static Matrix wanted()
    {
        return qEnvironmentVariableIsSet("VANTIX_TEST_ALL") ? all() : selection();
    }
};

const QList<Qt::Alignment> &alignments()
{
    static const QList<Qt::Alignment> all {
        Qt::AlignLeft | Qt::AlignTop,        Qt::AlignHCenter | Qt::AlignTop,
        Qt::AlignRight | Qt::AlignTop,       Qt::AlignLeft | Qt::AlignVCenter,
        Qt::AlignHCenter | Qt::AlignVCenter, Qt::AlignRight | Qt::AlignVCenter,
        Qt::AlignLeft | Qt::AlignBottom,     Qt::AlignHCenter | Qt::AlignBottom,
        Qt::AlignRight | Qt::AlignBottom};
    return all;
}

int marginOfStyle()
{
    return QApplication::style()->pixelMetric(QStyle::PM_FocusFrameHMargin);
}

//! Compares pictures of one text in one font and counts those that differ.
class Comparison
{
public:
    Comparison(const QFont &font, const QString &text, double ratio, QPoint place = {})
        : m_font(font)
        , m_text(text)
        , m_ratio(ratio)
        , m_place(place)
        , m_margin(marginOfStyle())
    {
        m_option.state = QStyle::State_Enabled | QStyle::State_Active;
        m_option.palette = QApplication::palette();
        m_option.palette.setColor(QPalette::Text, Qt::black);
        m_option.font = font;
    }

    //! In a cell of \a size, in all alignments.
    void compare(QSize size, Qt::LayoutDirection direction)
    {
        Canvas ours(size + QSize(m_place.x(), m_place.y()), m_ratio);
        Canvas plain(size + QSize(m_place.x(), m_place.y()), m_ratio);
        m_option.rect = QRect(m_place, size);
        m_option.direction = direction;
        const QRect inner = m_option.rect.adjusted(m_margin, 0, -m_margin, 0);
        for (Qt::Alignment alignment : alignments()) {
            m_option.displayAlignment = alignment;
            const auto draw = [&] {
                plain.fill(direction, m_font, [&](QPainter *painter) {
                    painter->setPen(Qt::black);
                    const QString shown =
                        painter->fontMetrics().elidedText(m_text, Qt::ElideRight, inner.width());
                    painter->drawText(inner, int(alignment), shown);
                });
                ours.fill(direction, m_font, [&](QPainter *painter) {
                    m_delegate.drawCustomText(painter, m_option, m_text);
                });
                return ours.showsTheSameAs(plain);
            };
            ++m_compared;
            // The first pictures of some glyphs differ from the later ones, Qt's own, too.
            if (!draw() && !draw())
                notice(direction, alignment);
            m_drawn += plain.isEmpty() ? 0 : 1;
        }
    }

    int compared() const { return m_compared; }
    int drawn() const { return m_drawn; }
    int different() const { return m_different; }
    QByteArray first() const { return m_first; }

private:
    void notice(Qt::LayoutDirection direction, Qt::Alignment alignment)
    {
        if (m_different++ > 0)
            return;
        m_first = QStringLiteral("%1 %2 pt, cell %3 x %4, alignment 0x%5, ratio %6, %7")
                      .arg(m_font.family())
                      .arg(m_font.pointSizeF())
                      .arg(m_option.rect.width())
                      .arg(m_option.rect.height())
                      .arg(int(alignment), 0, 16)
                      .arg(m_ratio)
                      .arg(direction == Qt::RightToLeft ? "right to left" : "left to right")
                      .toUtf8();
    }

    const Vantix::ItemDelegate m_delegate {nullptr};
    QStyleOptionViewItem m_option;
    QFont m_font;
    QString m_text;
    double m_ratio;
    QPoint m_place;
    int m_margin;
    int m_compared = 0;
    int m_drawn = 0;
    int m_different = 0;
    QByteArray m_first;
};

//! The font that is asked for and no other, or none.
QFont fontOf(const QString &family)
{
    QFont font(family);
    font.setStyleStrategy(QFont::PreferDefault);
    const bool isThere = QFontDatabase::families().contains(family)
        && QFontInfo(font).family().compare(family, Qt::CaseInsensitive) == 0;
    return isThere ? font : QFont(QString());
}

} // namespace

class TestCellText : public QObject
{
    Q_OBJECT

private slots:
    void isDrawnAsThePainterDoes_data();
    void isDrawnAsThePainterDoes();
    void isDrawnAsThePainterDoesAnywhere_data();
    void isDrawnAsThePainterDoesAnywhere();
    void cleanupTestCase();

private:
    qint64 m_compared = 0;
    qint64 m_different = 0;
};

void TestCellText::isDrawnAsThePainterDoes_data()
{
    QTest::addColumn<QString>("family");
    QTest::addColumn<QString>("text");
    const QStringList families {QStringLiteral("DejaVu Sans"), QStringLiteral("DejaVu Sans Mono"),
                                QStringLiteral("Noto Sans"),   QStringLiteral("Noto Serif"),
                                QStringLiteral("Cantarell"),   QStringLiteral("Liberation Sans"),
                                QStringLiteral("Terminus")}; // pictures of letters, no outlines
    const QList<std::pair<const char *, QString>> texts {
        {"latin", QStringLiteral("AVgj, 12.50")},
        {"combining", QStringLiteral("A\u030angstro\u0308m e\u0301")},
        {"arabic", QStringLiteral("مرحبا بالعالم")},
        {"hebrew", QStringLiteral("שלום עולם 12")},
        {"devanagari", QStringLiteral("नमस्ते क्षत्रिय")},
        {"thai", QStringLiteral("สวัสดี ที่นี่")},
        {"han", QStringLiteral("漢字テスト")},
        {"emoji", QStringLiteral("a 😀👍🏽 b")},
    };
    // VANTIX_TEST_PART=1/3 takes the second of three parts: part counts from 0.
    const QStringList part =
        qEnvironmentVariable("VANTIX_TEST_PART", QStringLiteral("0/1")).split(QLatin1Char('/'));
    int row = 0;
    for (const auto &[name, text] : texts) {
        for (const QString &family : families) {
            if (row++ % part.last().toInt() == part.first().toInt())
                QTest::addRow("%s, %s", qPrintable(family), name) << family << text;
        }
    }
}

void TestCellText::isDrawnAsThePainterDoes()
{
    QFETCH(QString, family);
    QFETCH(QString, text);
    QFont font = fontOf(family);
    if (font.family().isEmpty())
        QSKIP("the font is not installed");
    const Matrix matrix = Matrix::wanted();
    int compared = 0;
    int drawn = 0;
    int different = 0;
    QByteArray first;
    for (double size : matrix.sizes) {
        font.setPointSizeF(size);
        const int advance = QFontMetrics(font).horizontalAdvance(text);
        for (double ratio : {1.0, 1.25, 1.5, 2.0}) {
            Comparison comparison(font, text, ratio);
            for (int height : matrix.heights) {
                for (Qt::LayoutDirection direction : {Qt::LeftToRight, Qt::RightToLeft}) {
                    comparison.compare(QSize(advance + 17, height), direction);
                    comparison.compare(QSize(advance * 2 / 3, height), direction);
                }
            }
            compared += comparison.compared();
            drawn += comparison.drawn();
            different += comparison.different();
            if (first.isEmpty())
                first = comparison.first();
        }
    }
    m_compared += compared;
    m_different += different;
    QVERIFY2(different == 0,
             qPrintable(QStringLiteral("%1 of %2 differ, the first: %3")
                            .arg(different)
                            .arg(compared)
                            .arg(QString::fromUtf8(first))));
    QVERIFY(drawn > compared / 2);
}

void TestCellText::isDrawnAsThePainterDoesAnywhere_data()
{
    QTest::addColumn<QPoint>("place");
    for (const QPoint &place : {QPoint(1, 0), QPoint(0, 1), QPoint(3, 7), QPoint(10, 2)})
        QTest::addRow("%d, %d", place.x(), place.y()) << place;
}

//! A cell that is painted in place lies between device pixels at most ratios.
void TestCellText::isDrawnAsThePainterDoesAnywhere()
{
    QFETCH(QPoint, place);
    QFont font;
    for (double size : {9.0, 10.5}) {
        font.setPointSizeF(size);
        for (double ratio : {1.0, 1.25, 1.5, 2.0}) {
            Comparison comparison(font, QStringLiteral("AVgj, 12.50"), ratio, place);
            for (int height : {13, 14, 18, 22}) {
                comparison.compare(QSize(120, height), Qt::LeftToRight);
                comparison.compare(QSize(50, height), Qt::RightToLeft);
            }
            QVERIFY2(comparison.different() == 0, comparison.first().constData());
            QVERIFY(comparison.drawn() > 0);
        }
    }
}

void TestCellText::cleanupTestCase()
{
    qInfo("%lld pictures compared, %lld differ", m_compared, m_different);
}

QTEST_MAIN(TestCellText)

#include "tst_celltext.moc"
