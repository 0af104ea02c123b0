// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "styleditemdelegate.h"

#include "celltext_p.h"

#include <QAbstractItemView>
#include <QCache>
#include <QDateTime>
#include <QLocale>

#include <array>

namespace {

//! Stands for the widest date-time.
const QDateTime &referenceDateTime()
{
    static const QDateTime reference(QDate(2013, 12, 30), QTime(23, 50, 50, 105));
    return reference;
}

//! Texts of the last date-times, by what the short form may show of them. Writing one
//! costs more than painting the cell from the cache.
class ShortTexts
{
public:
    //! locale.toString(dt, QLocale::ShortFormat).
    QString text(const QDateTime &dt, const QLocale &locale)
    {
        if (locale != m_locale)
            restart(locale);
        if (m_hasZone || !dt.isValid())
            return locale.toString(dt, QLocale::ShortFormat);
        const qint64 day = dt.date().toJulianDay();
        const int time = dt.time().msecsSinceStartOfDay() / m_step;
        Entry &entry = m_entries[qHashMulti(0, day, time) % m_entries.size()];
        if (entry.text.isNull() || entry.day != day || entry.time != time)
            entry = {day, time, locale.toString(dt, QLocale::ShortFormat)};
        return entry.text;
    }

private:
    struct Entry
    {
        qint64 day = 0;
        int time = 0; //!< steps since the day began
        QString text;
    };

    void restart(const QLocale &locale)
    {
        m_entries.fill(Entry());
        m_locale = locale;
        const QString format = locale.dateTimeFormat(QLocale::ShortFormat);
        m_hasZone = format.contains(u't');
        m_step = format.contains(u's') || format.contains(u'z') ? 1 : 60000;
    }

    std::array<Entry, 1024> m_entries;
    QLocale m_locale = QLocale::c();
    bool m_hasZone = false;
    int m_step = 1; //!< ms that a text stands for: a minute if it shows no seconds
};

QString shortText(const QDateTime &dt)
{
    return CellText::perApplication<ShortTexts>().text(dt, QLocale());
}

//! A text colour on a palette.
struct ColoredPalette
{
    // Holding the palette keeps its cache key from ever meaning another one.
    QPalette base;
    QBrush brush;

    friend bool operator==(const ColoredPalette &a, const ColoredPalette &b)
    {
        return a.base.cacheKey() == b.base.cacheKey()
            && a.base.resolveMask() == b.base.resolveMask() && a.brush == b.brush;
    }
    friend size_t qHash(const ColoredPalette &key, size_t seed = 0)
    {
        return qHashMulti(seed, key.base.cacheKey(), int(key.brush.style()),
                          key.brush.color().rgba());
    }
};

//! A palette made anew has a cache key of its own at every paint. Those that were made
//! are used again.
class ColoredPalettes
{
public:
    //! \a base with \a brush as the text colour, of its colour group.
    QPalette palette(const QPalette &base, const QBrush &brush)
    {
        const ColoredPalette key {base, brush};
        const QPalette *known = m_palettes.object(key);
        QPalette result = known ? *known : make(base, brush);
        if (!known)
            m_palettes.insert(key, new QPalette(result));
        result.setCurrentColorGroup(base.currentColorGroup());
        return result;
    }

private:
    static QPalette make(QPalette palette, const QBrush &brush)
    {
        palette.setBrush(QPalette::All, QPalette::Text, brush);
        palette.setBrush(QPalette::All, QPalette::HighlightedText, brush);
        return palette;
    }

    QCache<ColoredPalette, QPalette> m_palettes {1024};
};

} // namespace

StyledItemDelegate::StyledItemDelegate(QAbstractItemView *view)
    : QStyledItemDelegate(view)
{
    Q_INIT_RESOURCE(vantix); // with a static library
}

StyledItemDelegate::~StyledItemDelegate() = default;

QSize StyledItemDelegate::sizeHint(const QStyleOptionViewItem &option,
                                   const QModelIndex &index) const
{
    if (option.rect.width() != -1)
        return QStyledItemDelegate::sizeHint(option, index);
    if (m_lastHeight == -1 || option.font != m_lastFont) {
        m_lastFont = option.font;
        m_lastHeight = QFontMetrics(m_lastFont).height();
    }
    return {20, m_lastHeight};
}

QString StyledItemDelegate::displayText(const QVariant &value, const QLocale &locale) const
{
    if (value.metaType() == QMetaType::fromType<QDateTime>())
        return shortText(value.toDateTime());
    return QStyledItemDelegate::displayText(value, locale);
}

void StyledItemDelegate::initStyleOption(QStyleOptionViewItem *option,
                                         const QModelIndex &index) const
{
    if (!index.isValid()) {
        // The base class would tell of the cell that it was asked for last.
        option->index = index;
        option->styleObject = nullptr;
        return;
    }
    const QBrush background = option->backgroundBrush;
    const QVariant foreground = index.data(Qt::ForegroundRole);
    // Set beforehand, so that the base class finds nothing to change in the palette:
    // what it changes would have a new cache key.
    if (foreground.isValid()) {
        option->palette = CellText::perApplication<ColoredPalettes>().palette(
            option->palette, qvariant_cast<QBrush>(foreground));
    }
    QStyledItemDelegate::initStyleOption(option, index);

    const QVariant value = index.data(Qt::BackgroundRole);
    option->backgroundBrush = value.isValid() ? qvariant_cast<QBrush>(value) : background;
}

QString StyledItemDelegate::displayElidedText(const QVariant &value, const QLocale &locale,
                                              const QFontMetrics &fontMetrics,
                                              Qt::TextElideMode elideMode, int width) const
{
    QString text;
    if (value.metaType() == QMetaType::fromType<QDateTime>()) {
        const QDateTime dt = value.toDateTime();
        text = isTimeOnly(fontMetrics, width) ? dateTimeToShortText(dt) : dateTimeToWideText(dt);
    } else {
        text = displayText(value, locale);
    }
    return CellText::elided(text, fontMetrics, elideMode, width);
}

bool StyledItemDelegate::isTimeOnly(const QFontMetrics &fontMetrics, int width) const
{
    const QString widest = dateTimeToWideText(referenceDateTime());
    return CellText::referenceWidth(fontMetrics, widest) > width;
}

QString StyledItemDelegate::dateTimeToShortText(const QDateTime &dt) const
{
    return dt.time().toString(Qt::TextDate);
}

QString StyledItemDelegate::dateTimeToWideText(const QDateTime &dt) const
{
    return shortText(dt);
}

QString StyledItemDelegate::dateMonthToString(const QDate &date)
{
    static constexpr std::array names {
        QT_TR_NOOP("нулябрь"), QT_TR_NOOP("январь"),   QT_TR_NOOP("февраль"), QT_TR_NOOP("март"),
        QT_TR_NOOP("апрель"),  QT_TR_NOOP("май"),      QT_TR_NOOP("июнь"),    QT_TR_NOOP("июль"),
        QT_TR_NOOP("август"),  QT_TR_NOOP("сентябрь"), QT_TR_NOOP("октябрь"), QT_TR_NOOP("ноябрь"),
        QT_TR_NOOP("декабрь"),
    };
    return tr(names[size_t(date.month())]); // 0 of an invalid date
}

QString StyledItemDelegate::expWeekToString(const QDate &date)
{
    const int week = date.weekNumber();
    const bool isTeen = week % 100 >= 11 && week % 100 <= 19;
    switch (isTeen ? 0 : week % 10) {
    case 1:
        return QObject::tr("%1st week").arg(week);
    case 2:
        return QObject::tr("%1nd week").arg(week);
    case 3:
        return QObject::tr("%1rd week").arg(week);
    default:
        return QObject::tr("%1th week").arg(week);
    }
}
