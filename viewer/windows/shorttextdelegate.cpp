// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "shorttextdelegate.h"

#include "basics/contrast.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QPainter>
#include <QStyle>
#include <QTextLayout>

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr qsizetype s_usualText = 1000; // characters
constexpr int s_narrowestCharacter = 2; // logical pixels

// Somewhat more than fits, so that there still is a text to elide.
qsizetype shownCharacters(const QRect &rect)
{
    return rect.isEmpty() ? s_usualText : qMax<qsizetype>(rect.width() / s_narrowestCharacter, 1);
}

// Kept apart from the direction around it.
QString leftToRight(const QString &text)
{
    constexpr QChar isolate(0x2066);
    constexpr QChar endOfIsolate(0x2069);
    return isolate + text + endOfIsolate;
}

} // namespace

ShortTextDelegate::ShortTextDelegate(QAbstractItemView *view)
    : Vantix::ItemDelegate(view)
{
    setDrawFrame(false);
}

void ShortTextDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                              const QModelIndex &index) const
{
    if (option.rect.width() <= widestPicture) {
        Vantix::ItemDelegate::paint(painter, option, index);
        return;
    }
    QStyleOptionViewItem seen = option;
    m_piece = seenPiece(&seen, index.data().toString());
    const QRect cell = seen.rect;
    initStyleOption(&seen, index);
    painter->save();
    painter->setClipRect(cell, Qt::IntersectClip);
    drawBackground(painter, seen);
    drawContents(painter, seen, index);
    painter->restore();
    m_piece = {};
}

//! What of \a text is seen of a wide cell; \a option becomes that of a cell around it.
//! All of it, if only laying it out would tell.
ShortTextDelegate::Piece ShortTextDelegate::seenPiece(QStyleOptionViewItem *option,
                                                      const QString &text)
{
    const auto *view = qobject_cast<const QAbstractItemView *>(option->widget);
    const QFontMetricsF metrics(option->font);
    if (!view || option->direction == Qt::RightToLeft || !hasOneWidth(metrics, text))
        return {};
    const double width = metrics.horizontalAdvance(u'0');
    const QRect seen = option->rect & view->viewport()->rect();
    Piece piece;
    piece.from = qMax<qsizetype>(qsizetype((seen.left() - option->rect.left()) / width) - 1, 0);
    piece.count = qsizetype(seen.width() / width) + 4;
    option->rect.setLeft(option->rect.left() + int(std::lround(double(piece.from) * width)));
    option->rect.setWidth(qMin(option->rect.width(), widestPicture));
    return piece;
}

void ShortTextDelegate::initStyleOption(QStyleOptionViewItem *option,
                                        const QModelIndex &index) const
{
    Vantix::ItemDelegate::initStyleOption(option, index);
    const QString whole = option->text;
    const auto cut = [&](const QString &text) {
        if (m_piece.count >= 0)
            return text.mid(m_piece.from, m_piece.count);
        return option->rect.width() <= widestPicture ? text.left(shownCharacters(option->rect))
                                                     : text;
    };
    option->text = cut(whole);
    const Qt::Alignment chosen = alignment(index.column());
    if (chosen != Qt::Alignment())
        option->displayAlignment = chosen | Qt::AlignAbsolute | Qt::AlignVCenter;
    applyColors(option);
    if (isGrouped(index.column()))
        option->text = cut(shownText(index.column(), whole, option->locale));
}

void ShortTextDelegate::setGrouped(int column, bool on)
{
    if (on)
        m_grouped.insert(column);
    else
        m_grouped.remove(column);
}

QString ShortTextDelegate::shownText(int column, const QString &text, const QLocale &locale) const
{
    return isGrouped(column) ? groupsOf(locale).grouped(text) : text;
}

const DigitGroups &ShortTextDelegate::groupsOf(const QLocale &locale) const
{
    if (!m_groups || m_locale != locale)
        m_groups.emplace(locale);
    m_locale = locale;
    return *m_groups;
}

void ShortTextDelegate::setAlignment(int column, Qt::Alignment alignment)
{
    if (alignment == Qt::Alignment())
        m_alignments.remove(column);
    else
        m_alignments.insert(column, alignment);
}

void ShortTextDelegate::setColorRules(const ColorRules &rules)
{
    m_rules = rules;
    forgetRows();
}

//! A row is asked about for each of its cells, one after the other.
std::optional<QColor> ShortTextDelegate::ruledColor(const QModelIndex &index) const
{
    if (m_rules.isEmpty())
        return {};
    const QModelIndex row = index.siblingAtColumn(0);
    if (m_ruledRow != row) {
        m_ruledColor = m_rules.colorOf(row);
        m_ruledRow = row;
    }
    return m_ruledColor;
}

//! Colours of a model are made readable, but for what is selected, which has its own.
void ShortTextDelegate::applyColors(QStyleOptionViewItem *option) const
{
    if (!option->widget)
        return;
    const QPalette &palette = option->widget->palette();
    const QPalette::ColorGroup group = option->palette.currentColorGroup();
    const QColor text =
        ruledColor(option->index).value_or(option->palette.color(group, QPalette::Text));
    if (text == palette.color(group, QPalette::Text))
        return;
    const bool hasBackground = option->backgroundBrush.style() == Qt::SolidPattern;
    const bool isAlternate = option->features & QStyleOptionViewItem::Alternate;
    const QColor behind = hasBackground
        ? option->backgroundBrush.color()
        : palette.color(group, isAlternate ? QPalette::AlternateBase : QPalette::Base);
    QColor shown = readable(text, behind);
    if (m_markedColumns.contains(option->index.column()) && m_marked.isIn(option->text))
        shown = readable(shown, matchColor(palette.color(group, QPalette::Text)));
    option->palette = colored(palette, shown);
    option->palette.setCurrentColorGroup(group);
}

//! \a palette with another colour of text; always the same one, by which pictures of cells
//! are known again.
QPalette ShortTextDelegate::colored(const QPalette &palette, const QColor &text) const
{
    if (m_coloredOf != palette.cacheKey())
        m_colored.clear();
    m_coloredOf = palette.cacheKey();
    auto found = m_colored.find(text.rgb());
    if (found == m_colored.end()) {
        found = m_colored.insert(text.rgb(), palette);
        found->setColor(QPalette::Text, text);
    }
    return *found;
}

void ShortTextDelegate::drawCustomText(QPainter *painter, const QStyleOptionViewItem &opt,
                                       const QVariant &value) const
{
    const int column = opt.index.column();
    if (value.metaType() != QMetaType::fromType<QString>() && !isGrouped(column)) {
        Vantix::ItemDelegate::drawCustomText(painter, opt, value);
        return;
    }
    const bool isTurned =
        painter->layoutDirection() == Qt::RightToLeft && !opt.text.isRightToLeft();
    const QString text = isTurned ? leftToRight(opt.text) : opt.text;
    if (m_markedColumns.contains(column)) {
        QList<TextMatcher::Match> matches = matchesIn(opt, value.toString());
        for (TextMatcher::Match &match : matches)
            match.begin += isTurned ? 1 : 0;
        drawMarks(painter, opt, text, matches);
    }
    Vantix::ItemDelegate::drawCustomText(painter, opt, text);
}

//! What is looked for is in the text of the model, \a original, whatever is shown of it.
QList<TextMatcher::Match> ShortTextDelegate::matchesIn(const QStyleOptionViewItem &opt,
                                                       const QString &original) const
{
    if (!isGrouped(opt.index.column()))
        return m_marked.matchesIn(opt.text);
    const DigitGroups &groups = groupsOf(opt.locale);
    QList<TextMatcher::Match> matches = m_marked.matchesIn(original);
    for (TextMatcher::Match &match : matches) {
        if (match.length == 0)
            continue;
        const qsizetype last = groups.placeOf(match.begin + match.length - 1, original);
        match.begin = groups.placeOf(match.begin, original);
        match.length = last + 1 - match.begin;
    }
    return matches;
}

QRect ShortTextDelegate::textRect(const QStyleOptionViewItem &opt, const QModelIndex &index) const
{
    return Vantix::ItemDelegate::textRect(opt, index).adjusted(columnGap, 0, -columnGap, 0);
}

void ShortTextDelegate::setMarked(const TextMatcher &matcher, const QList<int> &columns)
{
    m_marked = matcher;
    m_markedColumns = matcher.isNothing() ? QList<int>() : columns;
}

//! A picture with marks is another than one without.
QString ShortTextDelegate::cacheKey(const QStyleOptionViewItem &option, double dpr) const
{
    QString key = Vantix::ItemDelegate::cacheKey(option, dpr);
    if (!m_markedColumns.contains(option.index.column()))
        return key;
    const TextRules &rules = m_marked.rules();
    const int kind =
        int(rules.matchesCase) + 2 * int(rules.wholeWords) + 4 * int(rules.isExpression);
    key += QLatin1Char('m') + QString::number(kind) + m_marked.text();
    // What looks alike may have its matches elsewhere.
    if (isGrouped(option.index.column()))
        key += QLatin1Char('g') + option.index.data().toString();
    return key;
}

//! Where \a text, which stands in \a room, is as wide as \a width.
QRect ShortTextDelegate::placeOf(double width, const QRect &room, const QPainter &painter,
                                 Qt::Alignment alignment)
{
    const QSize size(int(std::ceil(qMin(width, double(room.width())))), room.height());
    return QStyle::alignedRect(painter.layoutDirection(), alignment, size, room);
}

//! Behind \a text, where it has \a matches.
void ShortTextDelegate::drawMarks(QPainter *painter, const QStyleOptionViewItem &opt,
                                  const QString &text,
                                  const QList<TextMatcher::Match> &matches) const
{
    if (matches.isEmpty())
        return;
    QTextLayout layout(text, opt.font);
    QTextOption option;
    option.setTextDirection(painter->layoutDirection());
    option.setWrapMode(QTextOption::NoWrap);
    layout.setTextOption(option);
    layout.beginLayout();
    const QTextLine line = layout.createLine();
    layout.endLayout();

    const QStyle *style = opt.widget ? opt.widget->style() : QApplication::style();
    const int margin = style->pixelMetric(QStyle::PM_FocusFrameHMargin, &opt, opt.widget) + 1;
    const QRect room = opt.rect.adjusted(margin, 0, -margin, 0);
    const int left = placeOf(line.naturalTextWidth(), room, *painter, opt.displayAlignment).left();
    const bool isSelected = opt.state & QStyle::State_Selected;
    const QPalette &palette = opt.widget ? opt.widget->palette() : opt.palette;
    const QColor color = matchColor(palette.color(
        opt.palette.currentColorGroup(), isSelected ? QPalette::HighlightedText : QPalette::Text));
    for (const TextMatcher::Match &match : matches) {
        const double from = line.cursorToX(int(match.begin));
        const double to = line.cursorToX(int(match.begin + match.length));
        const QRectF mark(left + qMin(from, to), opt.rect.top(), qAbs(to - from),
                          opt.rect.height());
        painter->fillRect(mark & QRectF(room), color);
    }
}

//! Fonts do not always say so themselves.
bool ShortTextDelegate::hasOneWidth(const QFontMetricsF &metrics, const QString &text)
{
    const double width = metrics.horizontalAdvance(u'0');
    const auto isUsual = [&](QChar sample) { return metrics.horizontalAdvance(sample) == width; };
    constexpr std::array<QChar, 5> samples {u' ', u'.', u'i', u'W', u'm'};
    return std::all_of(samples.begin(), samples.end(), isUsual)
        && std::all_of(text.begin(), text.end(),
                       [](QChar character) { return character >= u' ' && character < u'\x7f'; });
}
