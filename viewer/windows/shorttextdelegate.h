// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef SHORTTEXTDELEGATE_H
#define SHORTTEXTDELEGATE_H

#include "digitgroups.h"
#include "itemdelegate.h"
#include "search/colorrules.h"
#include "search/textmatcher.h"

#include <QHash>
#include <QPalette>
#include <QPersistentModelIndex>
#include <QSet>

/*!
 * \brief Lays out no more of a text than can be seen: lines may be very long.
 *
 * Texts read from left to right also in a window that is laid out from right to left,
 * unless their own characters say otherwise: a time stands behind its date. Whatever
 * colours a model gives, texts are readable on what is behind them.
 */
class ShortTextDelegate : public Vantix::ItemDelegate
{
    Q_OBJECT

public:
    //! Cells that are wider, in logical pixels, are painted without a picture of them.
    static constexpr int widestPicture = 4096;

    //! Logical pixels that separate a text from those of the columns beside it, besides the
    //! style's margin.
    static constexpr int columnGap = 3;

    //! A delegate without grid lines; \a view is its parent.
    explicit ShortTextDelegate(QAbstractItemView *view);

    //! Whether \a text has only characters that are as wide as any other in its font.
    static bool hasOneWidth(const QFontMetricsF &metrics, const QString &text);

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    QRect textRect(const QStyleOptionViewItem &opt, const QModelIndex &index) const override;

    //! Colours matches of \a matcher in the logical \a columns. The view has to be painted
    //! anew then.
    void setMarked(const TextMatcher &matcher, const QList<int> &columns);

    //! Colours rows by \a rules, in place of what their model wants. The view has to be painted
    //! anew then.
    void setColorRules(const ColorRules &rules);
    //! Rows may have changed since their colours were found.
    void forgetRows() { m_ruledRow = QPersistentModelIndex(); }

    //! Where texts of the logical \a column stand, without an \a alignment as their model wants.
    //! The view has to be painted anew then.
    void setAlignment(int column, Qt::Alignment alignment);
    Qt::Alignment alignment(int column) const { return m_alignments.value(column); }

    //! Whether numbers in the logical \a column are shown with their digits in groups, as the
    //! view's locale has them. The view has to be painted anew then.
    //! @{
    bool isGrouped(int column) const { return m_grouped.contains(column); }
    void setGrouped(int column, bool on);
    //! @}
    //! What cells of \a column show instead of \a text.
    QString shownText(int column, const QString &text, const QLocale &locale) const;

    void drawCustomText(QPainter *painter, const QStyleOptionViewItem &opt,
                        const QVariant &value) const override;
    QString cacheKey(const QStyleOptionViewItem &option, double dpr) const override;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;

private:
    //! Part of a text, in characters.
    struct Piece
    {
        qsizetype from = 0;
        qsizetype count = -1; //!< up to the end
    };

    void applyColors(QStyleOptionViewItem *option) const;
    std::optional<QColor> ruledColor(const QModelIndex &index) const;
    QPalette colored(const QPalette &palette, const QColor &text) const;
    static QRect placeOf(double width, const QRect &room, const QPainter &painter,
                         Qt::Alignment alignment);
    static Piece seenPiece(QStyleOptionViewItem *option, const QString &text);
    QList<TextMatcher::Match> matchesIn(const QStyleOptionViewItem &opt,
                                        const QString &original) const;
    void drawMarks(QPainter *painter, const QStyleOptionViewItem &opt, const QString &text,
                   const QList<TextMatcher::Match> &matches) const;
    const DigitGroups &groupsOf(const QLocale &locale) const;

    mutable QHash<QRgb, QPalette> m_colored;     //!< of the palette below, by colour of text
    mutable qint64 m_coloredOf = 0;              //!< its cache key
    mutable Piece m_piece;                       //!< of the cell that is painted
    TextMatcher m_marked;                        //!< whose matches are coloured
    QList<int> m_markedColumns;                  //!< in these
    QHash<int, Qt::Alignment> m_alignments;      //!< by column: other than the model's
    QSet<int> m_grouped;                         //!< columns with digits in groups
    mutable std::optional<DigitGroups> m_groups; //!< of the locale below
    mutable QLocale m_locale;
    ColorRules m_rules;                         //!< the user's
    mutable QPersistentModelIndex m_ruledRow;   //!< the row that was looked at last
    mutable std::optional<QColor> m_ruledColor; //!< its colour, if a rule fits
};

#endif // SHORTTEXTDELEGATE_H
