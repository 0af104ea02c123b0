// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// A screen of cells painted by Vantix::ItemDelegate beside Qt's delegate in one run:
// warm with every picture in the cache, cold with every text new.

#include "instructioncount.h"
#include "itemdelegate.h"
#include "ratioreporter.h"
#include "scaled.h"

#include <QAbstractTableModel>
#include <QApplication>
#include <QBrush>
#include <QDateTime>
#include <QImage>
#include <QPainter>
#include <QPixmapCache>
#include <QTimeZone>
#include <QWidget>

#include <benchmark/benchmark.h>

#include <functional>
#include <memory>

namespace {

constexpr QSize cellSize(160, 14);
constexpr int columns = 8;
constexpr int rows = 58;

struct Look
{
    const char *name;
    std::function<QVariant(int)> value;
    bool isRightAligned = false;
    bool isColored = false;
    double ratio = 1;
    int width = cellSize.width();
};

//! Cells that are computed, so that what is measured is the delegate.
class ScreenModel : public QAbstractTableModel
{
public:
    explicit ScreenModel(const Look &look)
        : m_look(look)
    {
    }
    int rowCount(const QModelIndex & = {}) const override { return rows; }
    int columnCount(const QModelIndex & = {}) const override { return columns; }
    QVariant data(const QModelIndex &index, int role) const override
    {
        switch (role) {
        case Qt::DisplayRole:
            return m_look.value(m_first + index.row() * columns + index.column());
        case Qt::TextAlignmentRole:
            return m_look.isRightAligned ? QVariant(Qt::AlignRight | Qt::AlignVCenter) : QVariant();
        case Qt::ForegroundRole:
            return m_look.isColored ? QVariant(QBrush(QColor(0, 96, 0))) : QVariant();
        default:
            return {};
        }
    }
    //! Makes every text another one.
    void renew() { m_first += rows * columns; }

private:
    Look m_look;
    int m_first = 1000000;
};

//! A screen of cells of one look.
class Screen
{
public:
    explicit Screen(const Look &look)
        : model(look)
        , widget(look.ratio)
        , m_width(look.width)
        , m_image(QSize(columns * look.width, rows * cellSize.height()) * look.ratio,
                  QImage::Format_RGB32)
    {
        m_image.setDevicePixelRatio(look.ratio);
        m_image.fill(Qt::white);
        option.initFrom(&widget);
        option.widget = &widget;
        option.state = QStyle::State_Enabled | QStyle::State_Active;
        option.displayAlignment = Qt::AlignLeft | Qt::AlignVCenter;
        option.showDecorationSelected = true;
        option.font = QApplication::font();
    }

    //! Calls \a paint(painter, option, index) for each cell.
    template<typename Paint> void each(Paint paint)
    {
        QPainter painter(&m_image);
        for (int row = 0; row < rows; ++row) {
            for (int column = 0; column < columns; ++column) {
                option.rect =
                    QRect(column * m_width, row * cellSize.height(), m_width, cellSize.height());
                paint(&painter, option, model.index(row, column));
            }
        }
    }

    ScreenModel model;
    Scaled<QWidget> widget;
    QStyleOptionViewItem option;

private:
    int m_width;
    QImage m_image;
};

//! An empty cache with room for four screens.
class Room
{
public:
    explicit Room(const Look &look)
    {
        const double pixels = look.width * cellSize.height() * look.ratio * look.ratio;
        QPixmapCache::clear();
        QPixmapCache::setCacheLimit(int(4 * rows * columns * pixels * 4 / 1024));
    }
};

QVariant text(int n)
{
    return QStringLiteral("row %1 text").arg(n);
}

QVariant number(int n)
{
    return n * 7;
}

QVariant dateTime(int n)
{
    return QDateTime::fromMSecsSinceEpoch(n * 61000LL, QTimeZone::utc());
}

QVariant longText(int n)
{
    return QStringLiteral("%1, a text that is longer than its column is wide").arg(n);
}

QList<Look> looks()
{
    return {
        {"texts", text},
        {"numbers", number, true},
        {"date-times", dateTime},
        {"narrow date-times", dateTime, false, false, 1, 80},
        {"elided texts", longText},
        {"right-aligned texts", text, true},
        {"coloured texts", text, false, true},
        {"coloured, right-aligned, elided", longText, true, true},
        {"texts at ratio 2", text, false, false, 2},
        {"numbers at ratio 2", number, true, false, 2},
        {"elided texts at ratio 2", longText, false, false, 2},
        {"coloured texts at ratio 2", text, false, true, 2},
    };
}

template<typename Delegate>
void measure(benchmark::State &state, const Look &look, const Delegate &delegate, bool isCold)
{
    const Room room(look);
    Screen screen(look);
    const auto paint = [&](QPainter *painter, const QStyleOptionViewItem &option,
                           const QModelIndex &index) { delegate.paint(painter, option, index); };
    screen.each(paint);
    const auto takeTurn = [&] {
        if (isCold)
            screen.model.renew();
        screen.each(paint);
    };
    {
        const InstructionCount count(state, rows * columns, takeTurn);
        for ([[maybe_unused]] auto _ : state)
            takeTurn();
    }
    state.SetItemsProcessed(state.iterations() * rows * columns);
}

//! What no delegate can do without: a picture found under a text, and drawn.
void measureBlits(benchmark::State &state, const Look &look)
{
    const Room room(look);
    Screen screen(look);
    QStringList keys;
    for (int i = 0; i < rows * columns; ++i) {
        keys.append(QStringLiteral("a key as long as that of a cell, which has a font in it, %1 %2")
                        .arg(i)
                        .arg(QString(100, u'x')));
        QPixmap pixmap(cellSize * look.ratio);
        pixmap.setDevicePixelRatio(look.ratio);
        pixmap.fill(Qt::white);
        QPixmapCache::insert(keys.last(), pixmap);
    }
    const auto takeTurn = [&] {
        qsizetype next = 0;
        screen.each([&](QPainter *painter, const QStyleOptionViewItem &option,
                        const QModelIndex & /*index*/) {
            QPixmap pixmap;
            QPixmapCache::find(keys.at(next++), &pixmap);
            painter->drawPixmap(option.rect.topLeft(), pixmap);
        });
    };
    {
        const InstructionCount count(state, rows * columns, takeTurn);
        for ([[maybe_unused]] auto _ : state)
            takeTurn();
    }
    state.SetItemsProcessed(state.iterations() * rows * columns);
}

void measureKeys(benchmark::State &state)
{
    Screen screen(looks().first());
    const Vantix::ItemDelegate delegate(nullptr);
    QList<QStyleOptionViewItem> options;
    screen.each(
        [&](QPainter * /*painter*/, const QStyleOptionViewItem &option, const QModelIndex &index) {
            options.append(option);
            delegate.initStyleOption(&options.last(), index);
            options.last().text = options.last().text.left(12);
        });
    const auto takeTurn = [&] {
        for (const QStyleOptionViewItem &option : std::as_const(options))
            benchmark::DoNotOptimize(delegate.cacheKey(option, 1));
    };
    {
        const InstructionCount count(state, options.size(), takeTurn);
        for ([[maybe_unused]] auto _ : state)
            takeTurn();
    }
    state.SetItemsProcessed(state.iterations() * options.size());
    state.counters["s_per_key"] = benchmark::Counter(double(options.size()),
                                                     benchmark::Counter::kIsIterationInvariantRate
                                                         | benchmark::Counter::kInvert);
}

template<typename Measure> void add(const std::string &subject, const char *who, Measure measure)
{
    const std::string name = subject + '/' + std::to_string(rows * columns) + '/' + who;
    InstructionCount::registerBenchmark(name, measure)->Unit(benchmark::kMicrosecond);
}

void registerAll()
{
    static const Vantix::ItemDelegate ours(nullptr);
    static const QStyledItemDelegate theirs;
    for (const Look &look : looks()) {
        for (bool isCold : {false, true}) {
            const std::string subject = std::string(look.name) + (isCold ? ", cold" : ", warm");
            add(subject, "vantix",
                [=](benchmark::State &state) { measure(state, look, ours, isCold); });
            add(subject, "QStyledItemDelegate",
                [=](benchmark::State &state) { measure(state, look, theirs, isCold); });
            if (!isCold)
                add(subject, "blits", [=](benchmark::State &state) { measureBlits(state, look); });
        }
    }
    add("keys of 12 characters", "vantix", measureKeys);
}

} // namespace

int main(int argc, char *argv[])
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QApplication::setStyle(QStringLiteral("fusion"));
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(12);
    QApplication::setFont(font);

    registerAll();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    RatioReporter reporter({"QStyledItemDelegate"});
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.printRatios();
    return 0;
}
