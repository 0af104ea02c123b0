// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef PRICECHART_H
#define PRICECHART_H

#include <QTimer>
#include <QWidget>

#include <deque>

/*!
 * \brief A picture of how a price went in the last minute.
 *
 * Prices of a tenth of a second share a point, so that any number of them costs the same. It is
 * painted anew ten times a second at most.
 */
class PriceChart : public QWidget
{
    Q_OBJECT

public:
    static constexpr int shownTime = 60'000; //!< milliseconds from left to right
    static constexpr int pointTime = 100;    //!< milliseconds that share a point

    explicit PriceChart(QWidget *parent = nullptr);

    //! Begins a new picture, called \a name.
    void begin(const QString &name);
    //! Adds \a price at \a time, milliseconds since 1970. One before the last is ignored.
    void add(qint64 time, double price);

    //! Points that are shown.
    int points() const { return int(m_points.size()); }
    //! Lowest and highest price that are shown; 0 without any.
    double lowest() const;
    double highest() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    struct Point
    {
        qint64 at;   //!< in units of pointTime
        double low;  //!< of its prices
        double high; //!< of its prices
        double last; //!< price
    };

    //! What stands where.
    struct Scale
    {
        QRectF plot;
        double low;  //!< price at its foot
        double high; //!< price at its top
    };

    Scale scale() const;
    QPointF place(const Point &point, double price, const Scale &scale) const;
    void drawScale(QPainter *painter, const Scale &scale) const;
    void drawPrices(QPainter *painter, const Scale &scale) const;

    QString m_name;             //!< see begin()
    std::deque<Point> m_points; //!< in order of time
    QTimer m_timer;             //!< until it is painted
};

#endif // PRICECHART_H
