// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef BARPICTURE_P_H
#define BARPICTURE_P_H

#include <QPixmap>
#include <QRect>
#include <QStyle>

#include <array>
#include <functional>

class QMetaObject;
class QPainter;
class QScrollBar;
class QStyleOptionSlider;

/*!
 * What a scroll bar that nobody touches showed last. With a million rows, one more of them
 * moves nothing in the bar by a whole pixel: its picture is put down again, at a tenth of
 * what the style would take for it.
 *
 * The picture is valid as long as all that the style draws from is as it was. That is known
 * of two styles of Qt only; with any other there is no picture.
 */
class BarPicture
{
public:
    //! Prepares a painter as the bar's own would be.
    using Initialize = std::function<void(QPainter *)>;

    /*!
     * Paints \a bar by its picture, which is made when the bar looks a second time as it did
     * before. False if nothing was painted.
     */
    bool paint(QScrollBar *bar, const QStyleOptionSlider &option, const Initialize &initialize);

private:
    //! All that a known style draws from.
    struct Look
    {
        const QMetaObject *style = nullptr;
        qint64 palette = 0;
        QStyle::State state; //!< tells the orientation, too
        Qt::LayoutDirection direction = Qt::LeftToRight;
        bool isAtStart = false;
        bool isAtEnd = false;
        double ratio = 0; //!< device pixels for each logical one
        int dpi = 0;
        QSize size;
        std::array<QRect, 5> parts; //!< swapped if the bar stands upside down

        bool operator==(const Look &) const = default;
    };
    static Look lookOf(const QScrollBar &bar, const QStyleOptionSlider &option);
    void make(QScrollBar *bar, const QStyleOptionSlider &option, const Initialize &initialize);

    Look m_look;
    QPixmap m_pixmap; //!< null until it is needed
};

#endif // BARPICTURE_P_H
