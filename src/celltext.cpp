// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "celltext_p.h"

#include <QGlyphRun>
#include <QPainter>
#include <QStyle>
#include <QTextOption>

#include <algorithm>
#include <utility>

namespace CellText {
namespace {

constexpr QChar ellipsis(0x2026);

//! The last few entries that were asked for. A table has few fonts.
template<typename Entry> class Recent
{
public:
    //! The entry that \a isWanted, or else what \a make gives.
    template<typename Wanted, typename Make> Entry &find(Wanted isWanted, Make make)
    {
        const auto it = std::find_if(m_entries.begin(), m_entries.end(), isWanted);
        if (it != m_entries.end())
            return *it;
        if (m_entries.size() < s_limit) {
            m_entries.append(make());
            return m_entries.last();
        }
        Entry &entry = m_entries[m_next++ % s_limit];
        entry = make();
        return entry;
    }

private:
    static constexpr qsizetype s_limit = 16;

    QList<Entry> m_entries;
    qsizetype m_next = 0; //!< the next to be replaced
};

struct FontText
{
    QFont font;
    QString text;
};

struct FontMetrics
{
    QFont font;
    QFontMetrics metrics;
};

struct DeviceFont
{
    QFont font;
    int dpi;
    QFontMetrics metrics;
    double ellipsis; //!< advance of U+2026, negative if texts are not elided by that
};

struct TextWidth
{
    QFontMetrics metrics;
    QString text;
    int width;
};

struct Memory
{
    Recent<FontText> fontTexts;
    Recent<FontMetrics> metrics;
    Recent<DeviceFont> deviceFonts;
    Recent<TextWidth> widths;
    Line *line = nullptr; //!< the innermost that is alive
};

Memory &memory()
{
    return perApplication<Memory>();
}

double ellipsisOf(const QFont &font, const QFontMetrics &metrics)
{
    const int width = metrics.horizontalAdvance(QString(10, u'x'));
    const QString sample = metrics.elidedText(QString(20, u'x'), Qt::ElideRight, width);
    if (!sample.endsWith(ellipsis) || font.capitalization() != QFont::MixedCase)
        return -1;
    return QFontMetricsF(font).horizontalAdvance(ellipsis);
}

DeviceFont deviceFont(const QPainter &painter, int dpi)
{
    const QFontMetrics metrics = painter.fontMetrics();
    return {painter.font(), dpi, metrics, ellipsisOf(painter.font(), metrics)};
}

const DeviceFont &deviceFontOf(const QPainter &painter)
{
    const QFont &font = painter.font();
    const int dpi = painter.device() ? painter.device()->logicalDpiY() : 0;
    return memory().deviceFonts.find(
        [&](const DeviceFont &known) { return known.dpi == dpi && known.font == font; },
        [&] { return deviceFont(painter, dpi); });
}

//! Breaks, tabs, length variants and hidden hyphens: texts with these are left to
//! QPainter.
bool isSpecial(QChar c)
{
    const char16_t code = c.unicode();
    return code < 0x20 || (code >= 0x7f && code <= 0x9f) || code == 0xad || code == 0x2028
        || code == 0x2029 || code == 0xfffc;
}

//! Latin, Greek and Cyrillic characters, each of which is read and removed on its own.
bool isPlain(QChar c)
{
    static constexpr std::pair<char16_t, char16_t> ranges[] = {
        {0x20, 0x7e}, {0xa0, 0xac}, {0xae, 0x2ff}, {0x370, 0x482}, {0x48a, 0x52f}};
    const char16_t code = c.unicode();
    return std::any_of(std::begin(ranges), std::end(ranges), [=](const auto &range) {
        return code >= range.first && code <= range.second;
    });
}

//! How much of the space that a text leaves is left of it.
double shareLeft(Qt::Alignment visual, double space)
{
    if (visual & Qt::AlignRight)
        return space;
    return visual & Qt::AlignHCenter ? space / 2 : 0;
}

} // namespace

QString fontText(const QFont &font)
{
    const FontText &entry =
        memory().fontTexts.find([&](const FontText &known) { return known.font == font; },
                                [&] {
                                    return FontText {font, font.toString()};
                                });
    return entry.text;
}

QFontMetrics metricsOf(const QFont &font)
{
    const FontMetrics &entry =
        memory().metrics.find([&](const FontMetrics &known) { return known.font == font; },
                              [&] {
                                  return FontMetrics {font, QFontMetrics(font)};
                              });
    return entry.metrics;
}

int referenceWidth(const QFontMetrics &metrics, const QString &text)
{
    const TextWidth &entry = memory().widths.find(
        [&](const TextWidth &known) { return known.metrics == metrics && known.text == text; },
        [&] {
            return TextWidth {metrics, text, metrics.horizontalAdvance(text)};
        });
    return entry.width;
}

QString elided(const QString &text, const QFontMetrics &metrics, Qt::TextElideMode mode, int width)
{
    Line *line = memory().line;
    if (!line || line->m_metrics != metrics || !line->canShape(text))
        return metrics.elidedText(text, mode, width, 0);
    const QTextLine shaped = line->shape(text);
    if (line->surelyFits(shaped, width))
        return text;
    if (mode == Qt::ElideRight && line->canElide(text))
        return line->elidedRight(text, shaped, width);
    return metrics.elidedText(text, mode, width, 0);
}

Line::Line(QPainter *painter)
    : m_painter(painter)
    , m_outer(memory().line)
    , m_metrics(painter->font())
{
    const DeviceFont &known = deviceFontOf(*painter);
    m_font = known.font;
    m_metrics = known.metrics;
    m_ellipsis = known.ellipsis;
    memory().line = this;
}

Line::~Line()
{
    memory().line = m_outer;
}

void Line::draw(const QRect &rect, Qt::Alignment alignment, const QString &text)
{
    const Qt::Alignment plain = Qt::AlignLeft | Qt::AlignRight | Qt::AlignHCenter | Qt::AlignTop
        | Qt::AlignBottom | Qt::AlignVCenter | Qt::AlignAbsolute;
    if ((alignment & ~plain) || !canShape(text)) {
        m_painter->drawText(rect, int(alignment), text);
        return;
    }
    drawShaped(rect, alignment, text == m_layout.text() ? m_layout.lineAt(0) : shape(text));
}

bool Line::canShape(const QString &text) const
{
    // Qt draws lines under and through a text in an order of its own.
    return text.size() > 1 && !text.front().isSpace() && !text.back().isSpace()
        && !m_font.underline() && !m_font.overline() && !m_font.strikeOut()
        && std::none_of(text.begin(), text.end(), isSpecial);
}

QTextLine Line::shape(const QString &text)
{
    QTextOption option;
    option.setTextDirection(m_painter->layoutDirection());
    m_layout.setFont(m_font);
    m_layout.setTextOption(option);
    m_layout.setCacheEnabled(true); // or it would be shaped again for drawing
    m_layout.setText(text);
    m_layout.beginLayout();
    QTextLine line = m_layout.createLine();
    line.setLineWidth(0x01000000);
    m_layout.endLayout();
    return line;
}

//! The metrics measure a text in its own direction. In the other one its parts may
//! touch each other elsewhere, which changes the width by little.
bool Line::surelyFits(const QTextLine &line, int width) const
{
    const double advance = line.horizontalAdvance();
    const bool isMeasuredAlike =
        m_layout.text().isRightToLeft() == (m_painter->layoutDirection() == Qt::RightToLeft);
    if (isMeasuredAlike)
        return advance <= width;
    return advance * 1.25 + m_metrics.height() <= width;
}

bool Line::canElide(const QString &text) const
{
    return m_ellipsis >= 0 && m_painter->layoutDirection() != Qt::RightToLeft
        && std::all_of(text.begin(), text.end(), isPlain);
}

//! What the metrics do: as many characters as end before the place of the ellipsis.
QString Line::elidedRight(const QString &text, const QTextLine &line, int width) const
{
    const QList<QGlyphRun> runs = line.glyphRuns();
    if (runs.size() != 1 || runs.first().glyphIndexes().size() != text.size())
        return m_metrics.elidedText(text, Qt::ElideRight, width, 0);
    const double space = width - m_ellipsis;
    if (space < 0)
        return {};
    const QList<QPointF> places = runs.first().positions();
    const double start = places.first().x();
    const auto end = std::find_if(places.begin() + 1, places.end(),
                                  [=](const QPointF &p) { return p.x() - start >= space; });
    return text.left(end - places.begin() - 1) + ellipsis;
}

//! What QPainter::drawText() does with one line: placed by its advance, clipped when it
//! does not fit.
void Line::drawShaped(const QRect &rect, Qt::Alignment alignment, const QTextLine &line)
{
    if (m_painter->pen().style() == Qt::NoPen)
        return;
    const Qt::Alignment visual = QStyle::visualAlignment(m_painter->layoutDirection(), alignment);
    const QRectF area(rect);
    const double width = line.naturalTextWidth();
    const double height = line.ascent() + line.descent(); // line.height() is rounded up
    QPointF place = area.topLeft();
    if (visual & Qt::AlignBottom)
        place.ry() += area.height() - height;
    else if (visual & Qt::AlignVCenter)
        place.ry() += (area.height() - height) / 2;

    const double left = area.x() + shareLeft(visual, area.width() - width);
    place.rx() += shareLeft(visual, area.width() - line.horizontalAdvance());
    if (area.contains(QRectF(left, place.y(), width, height))) {
        line.draw(m_painter, place);
        return;
    }
    // Saving the painter costs more than its clip alone.
    const bool isSaved = m_painter->hasClipping();
    if (isSaved)
        m_painter->save();
    m_painter->setClipRect(area, Qt::IntersectClip);
    line.draw(m_painter, place);
    if (isSaved)
        m_painter->restore();
    else
        m_painter->setClipping(false);
}

} // namespace CellText
