// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// compare_report RESULTS TABLES PICTURE: writes what the programs printed, which is in RESULTS, as
// tables in Markdown to TABLES and as bars to PICTURE.

#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QTextStream>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <limits>

namespace {

//! What a program printed, in the order of its columns.
struct Result
{
    QString view;
    QString scenario;
    int rows = 0;
    int rate = 0;
    double processor = 0;  //!< ms for a second
    double frames = 0;     //!< a second
    double worstGap = 0;   //!< ms
    double late = 0;       //!< seconds
    double memory = 0;     //!< MiB
    double firstFrame = 0; //!< ms
    bool isRight = false;
};

//! A line of the tables: which runs, and what they are called.
struct Load
{
    QString scenario;
    int rows;
    int rate;
    QString name;
};

constexpr int manyRows = 1000000;
constexpr double lateSeconds = 0.2; //!< from which on a run is called late

QList<Load> loads()
{
    return {
        {QStringLiteral("append"), manyRows, 200, QStringLiteral("200 rows a second at the end")},
        {QStringLiteral("append"), manyRows, 5000, QStringLiteral("5,000 rows at the end")},
        {QStringLiteral("append-batch"), manyRows, 5000,
         QStringLiteral("5,000 rows at the end, in batches")},
        {QStringLiteral("above"), manyRows, 200, QStringLiteral("200 rows above")},
        {QStringLiteral("above"), manyRows, 5000, QStringLiteral("5,000 rows above")},
        {QStringLiteral("above-batch"), manyRows, 5000,
         QStringLiteral("5,000 rows above, in batches")},
        {QStringLiteral("change"), manyRows, 200, QStringLiteral("200 changed cells")},
        {QStringLiteral("change"), manyRows, 5000, QStringLiteral("5,000 changed cells")},
        {QStringLiteral("mixed"), manyRows, 200, QStringLiteral("200 events, mixed")},
        {QStringLiteral("mixed"), manyRows, 5000, QStringLiteral("5,000 events, mixed")},
        {QStringLiteral("scroll-row"), manyRows, 30, QStringLiteral("30 rows scrolled")},
        {QStringLiteral("scroll-page"), manyRows, 30, QStringLiteral("30 pages scrolled")},
    };
}

QList<Load> openings()
{
    return {
        {QStringLiteral("open"), 1000, 0, QStringLiteral("10^3 rows")},
        {QStringLiteral("open"), manyRows, 0, QStringLiteral("10^6 rows")},
        {QStringLiteral("open"), 10 * manyRows, 0, QStringLiteral("10^7 rows")},
    };
}

class Results
{
public:
    bool read(const QString &path);
    const Result *find(const QString &view, const Load &load) const;
    QStringList views() const { return m_views; }

private:
    QList<Result> m_results;
    QStringList m_views; //!< in the order in which they were measured
};

bool Results::read(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
    for (const QString &line : lines) {
        const QStringList cells = line.split(u'\t');
        if (cells.size() != 14)
            return false;
        m_results.append({cells[0], cells[1], cells[2].toInt(), cells[3].toInt(),
                          cells[4].toDouble(), cells[5].toDouble(), cells[6].toDouble(),
                          cells[7].toDouble(), cells[8].toDouble(), cells[9].toDouble(),
                          cells[13] == QLatin1String("right")});
        if (!m_views.contains(cells[0]))
            m_views.append(cells[0]);
    }
    return !m_results.isEmpty();
}

const Result *Results::find(const QString &view, const Load &load) const
{
    const auto found = std::find_if(m_results.begin(), m_results.end(), [&](const Result &result) {
        return result.view == view && result.scenario == load.scenario && result.rows == load.rows
            && result.rate == load.rate;
    });
    return found == m_results.end() ? nullptr : &*found;
}

using Value = std::function<double(const Result &)>;

//! The least of a line, of those that are right and in time; infinite if there is none.
double bestOf(const Results &results, const Load &load, const Value &value)
{
    double best = std::numeric_limits<double>::infinity();
    const QStringList views = results.views();
    for (const QString &view : views) {
        const Result *result = results.find(view, load);
        if (result && result->isRight && result->late <= lateSeconds)
            best = std::min(best, value(*result));
    }
    return best;
}

//! A number, and whether the feed has taken longer than it should.
QString numberText(const Result &result, double number)
{
    const QString text = QString::number(number, 'f', 0);
    return result.late > lateSeconds
        ? text + QStringLiteral(", %1 s late").arg(result.late, 0, 'f', 1)
        : text;
}

//! The same with what else is to be known, and bold if none of the line is better.
QString cellText(const Result *result, const Value &value, double best)
{
    if (!result)
        return QStringLiteral("-");
    QString text = numberText(*result, value(*result));
    if (text == QString::number(best, 'f', 0))
        text = QLatin1String("**") + text + QLatin1String("**");
    if (!result->isRight)
        text += QStringLiteral(", wrong rows");
    return text;
}

void writeTable(QTextStream &out, const Results &results, const QString &title,
                const QList<Load> &lines, const Value &value, bool hasBest = true)
{
    const QStringList views = results.views();
    out << "\n| " << title << " | " << views.join(QLatin1String(" | ")) << " |\n|---|"
        << QStringLiteral("---:|").repeated(views.size()) << '\n';
    for (const Load &line : lines) {
        const double best =
            hasBest ? bestOf(results, line, value) : std::numeric_limits<double>::infinity();
        out << "| " << line.name;
        for (const QString &view : views)
            out << " | " << cellText(results.find(view, line), value, best);
        out << " |\n";
    }
}

bool writeTables(const QString &path, const Results &results)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    QTextStream out(&file);
    writeTable(out, results, QStringLiteral("processor, ms a second"), loads(),
               [](const Result &result) { return result.processor; });
    writeTable(
        out, results, QStringLiteral("frames a second"), loads(),
        [](const Result &result) { return result.frames; }, false);
    writeTable(out, results, QStringLiteral("worst wait, ms"), loads(),
               [](const Result &result) { return result.worstGap; });
    writeTable(out, results, QStringLiteral("first frame, ms"), openings(),
               [](const Result &result) { return result.firstFrame; });
    writeTable(out, results, QStringLiteral("peak memory at opening, MiB"), openings(),
               [](const Result &result) { return result.memory; });
    out.flush();
    return file.error() == QFile::NoError;
}

constexpr int panelWidth = 480;
constexpr int barHeight = 16;
constexpr int barGap = 5;
constexpr int margin = 16;
constexpr int titleHeight = 30;
constexpr int labelWidth = 140;
constexpr int textWidth = 110;
constexpr int barWidth = panelWidth - labelWidth - textWidth; //!< of a second of one processor core

//! Loads whose bars stand in the picture, two beside each other.
QList<Load> drawnLoads()
{
    QList<Load> drawn = loads();
    drawn.removeIf(
        [](const Load &load) { return load.scenario.endsWith(QLatin1String("-batch")); });
    return drawn;
}

void drawPanel(QPainter &painter, const Results &results, const Load &load)
{
    painter.setPen(Qt::black);
    QFont bold = painter.font();
    bold.setBold(true);
    const QFont plain = painter.font();
    painter.setFont(bold);
    painter.drawText(QRect(0, 0, panelWidth, titleHeight), Qt::AlignVCenter, load.name);
    painter.setFont(plain);
    int y = titleHeight;
    const QStringList views = results.views();
    for (const QString &view : views) {
        const Result *result = results.find(view, load);
        painter.drawText(QRect(0, y, labelWidth - 8, barHeight), Qt::AlignVCenter, view);
        if (result) {
            const double share = std::min(1.0, result->processor / 1000);
            const QRect bar(labelWidth, y, std::max(1, int(share * barWidth)), barHeight);
            painter.fillRect(bar,
                             view.startsWith(QLatin1String("vantix")) ? QColor(0x1f, 0x77, 0xb4)
                                                                      : QColor(0xa0, 0xa0, 0xa0));
            painter.drawText(QRect(bar.right() + 6, y, textWidth, barHeight), Qt::AlignVCenter,
                             numberText(*result, result->processor));
        }
        y += barHeight + barGap;
    }
}

bool drawBars(const QString &path, const Results &results)
{
    const QList<Load> drawn = drawnLoads();
    const int panelHeight =
        titleHeight + int(results.views().size()) * (barHeight + barGap) + margin;
    const int lines = int(drawn.size() + 1) / 2;
    QImage image(2 * panelWidth + 3 * margin, lines * panelHeight + 2 * margin + titleHeight,
                 QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::TextAntialiasing);
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(13);
    painter.setFont(font);
    painter.setPen(Qt::black);
    painter.drawText(QRect(margin, margin, image.width(), titleHeight), Qt::AlignVCenter,
                     QStringLiteral("Milliseconds of processor time for a second of the feed, a "
                                    "million rows; a full bar is one core, shorter is better"));
    for (int i = 0; i < int(drawn.size()); ++i) {
        painter.save();
        painter.translate(margin + i % 2 * (panelWidth + margin),
                          margin + titleHeight + i / 2 * panelHeight);
        drawPanel(painter, results, drawn[i]);
        painter.restore();
    }
    painter.end();
    return image.save(path);
}

} // namespace

int main(int argc, char *argv[])
{
    const QGuiApplication app(argc, argv);
    if (argc != 4) {
        std::fprintf(stderr, "usage: compare_report RESULTS TABLES PICTURE\n");
        return 2;
    }
    Results results;
    const bool isDone = results.read(QString::fromLocal8Bit(argv[1]))
        && writeTables(QString::fromLocal8Bit(argv[2]), results)
        && drawBars(QString::fromLocal8Bit(argv[3]), results);
    if (!isDone)
        std::fprintf(stderr, "The results cannot be read, or the report cannot be written.\n");
    return isDone ? 0 : 1;
}
