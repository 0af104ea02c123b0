// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef STYLEDITEMDELEGATE_H
#define STYLEDITEMDELEGATE_H

#include "vantixglobal.h"

#include <QFont>
#include <QStyledItemDelegate>

class QAbstractItemView;
class QDate;
class QDateTime;
class QFontMetrics;

/*!
 * \brief How the views of this library show values.
 *
 * Date-times appear in the short form of the default locale, and as the time alone
 * in a column too narrow for that. The brushes of Qt::BackgroundRole and
 * Qt::ForegroundRole win over those of the view, also in selected cells. A size
 * hint that only has to tell the height costs next to nothing.
 *
 * GUI thread only.
 *
 * \since 0.2
 */
class VANTIX_EXPORT StyledItemDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    //! A delegate with \a view as its QObject parent, which may be null.
    explicit StyledItemDelegate(QAbstractItemView *view);
    ~StyledItemDelegate() override;

    //! With −1 as the width of \a option.rect: 20 by the line height of
    //! \a option.font in pixels, measured once as long as the font stays. The
    //! index may then be invalid. With any other width: Qt's hint for the cell.
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

    //! The text of \a value. A QDateTime is written in the short form of the
    //! default locale, whatever \a locale is; other types as Qt does.
    QString displayText(const QVariant &value, const QLocale &locale) const override;

    //! Fills \a option for the cell \a index. A brush of Qt::BackgroundRole
    //! replaces that of \a option, which stays without one; a brush of
    //! Qt::ForegroundRole becomes the text colour of all colour groups, selected
    //! or not. A value that is no brush counts as a default QBrush. The same brush
    //! on the same palette gives the same palette, so its cacheKey() can be part of
    //! a key.
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;

    //! The text of \a value made to fit \a width pixels in the font of
    //! \a fontMetrics. All date-times of a column change to dateTimeToShortText()
    //! together: when the width of a long example exceeds \a width.
    virtual QString displayElidedText(const QVariant &value, const QLocale &locale,
                                      const QFontMetrics &fontMetrics, Qt::TextElideMode elideMode,
                                      int width) const;

    //! The time of \a dt alone: hours, minutes, seconds. Empty if it is invalid.
    virtual QString dateTimeToShortText(const QDateTime &dt) const;

    //! Date and time of \a dt in the short form of the default locale. Empty if it
    //! is invalid.
    virtual QString dateTimeToWideText(const QDateTime &dt) const;

    //! The Russian name of the month of \a date, translated. An invalid date
    //! gives a name too, an invented one that stands out.
    static QString dateMonthToString(const QDate &date);

    //! The ISO week of \a date as an English ordinal, translated, as in
    //! "22nd week". "0th week" for an invalid date.
    static QString expWeekToString(const QDate &date);

protected:
    //! Whether date-times appear as dateTimeToShortText() in \a width pixels of the
    //! font of \a fontMetrics.
    bool isTimeOnly(const QFontMetrics &fontMetrics, int width) const;

private:
    mutable QFont m_lastFont;      //!< font whose line height m_lastHeight is
    mutable int m_lastHeight = -1; //!< pixels; −1 until measured
};

#endif // STYLEDITEMDELEGATE_H
