// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef QPROGRESSINDICATOR_H
#define QPROGRESSINDICATOR_H

#include "vantixglobal.h"

#include <QColor>
#include <QWidget>

/*!
 * \brief A turning ring of twelve bars that tells that something is going on.
 *
 * The ring turns clockwise by 30 degrees per step. Its twelve pictures are drawn once
 * per size and colour and kept in QPixmapCache for all indicators. It is meant for
 * square widgets: elsewhere the ring is off its centre and stretched.
 *
 * Screen readers hear when it starts and stops. They read its accessible name, or "Busy".
 *
 * GUI thread only.
 *
 * \since 0.2
 */
class VANTIX_EXPORT QProgressIndicator : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(int delay READ animationDelay WRITE setAnimationDelay)
    Q_PROPERTY(bool displayedWhenStopped READ isDisplayedWhenStopped WRITE setDisplayedWhenStopped)
    Q_PROPERTY(QColor color READ color WRITE setColor)

public:
    //! A stopped, invisible, black indicator of fixed size; \a parent as in QWidget.
    explicit QProgressIndicator(QWidget *parent = nullptr);
    ~QProgressIndicator() override;

    //! Milliseconds between steps; 40 at first.
    int animationDelay() const;
    //! Whether the ring turns.
    bool isAnimated() const;
    //! Whether the ring is also seen while it does not turn; false at first.
    bool isDisplayedWhenStopped() const;
    //! The colour of the bars; black at first.
    const QColor &color() const;

    //! 20 × 20 pixels.
    QSize sizeHint() const override;
    //! \a w.
    int heightForWidth(int w) const override;

public Q_SLOTS:
    //! Turns the ring from its first position on, also if it turns already.
    void startAnimation();
    //! Stops the ring where it is.
    void stopAnimation();
    //! Sets animationDelay(), at once if the ring turns. A negative \a delay is as
    //! fast as 0.
    void setAnimationDelay(int delay);
    //! Sets isDisplayedWhenStopped().
    void setDisplayedWhenStopped(bool state);
    //! Sets color(). Its alpha does not matter.
    void setColor(const QColor &color);

protected:
    void timerEvent(QTimerEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QColor m_color = Qt::black;          //!< of the bars
    int m_angle = 0;                     //!< degrees, a multiple of 30 below 360
    int m_timerId = -1;                  //!< −1 while stopped
    int m_delay = 40;                    //!< milliseconds
    bool m_displayedWhenStopped = false; //!< draw while stopped
};

#endif // QPROGRESSINDICATOR_H
