// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef HISTOGRAM_H
#define HISTOGRAM_H

#include "files/timestamp.h"
#include "histogramcolumns.h"
#include "search/rowspan.h"

#include <QWidget>

class RowSurvey;

/*!
 * \brief Columns of rows over time, coloured by level, or over the file where rows have no times.
 *
 * A click on a column goes to its first row, and it stays emphasized until the next click. Dragging
 * chooses a span, unless Esc ends it. Time goes from left to right in any layout.
 */
class Histogram : public QWidget
{
    Q_OBJECT

public:
    //! Of \a survey, which must outlive it, and which tells times and levels while the histogram
    //! is not hidden.
    Histogram(RowSurvey *survey, QWidget *parent);

    QSize sizeHint() const override;

    //! What is shown.
    const HistogramColumns &columns() const { return m_columns; }
    //! The columns that were chosen, the first and the last one; −1 twice if none are.
    std::pair<int, int> chosen() const;
    //! The column at \a x in its own pixels: the nearest one, or −1 without columns.
    int columnAt(int x) const;
    //! Where \a column is, from the top of the widget's columns to their foot.
    QRect columnRect(int column) const;

    //! What the colours stand for, on \a palette. All of them are visible.
    struct Colors
    {
        explicit Colors(const QPalette &palette);

        QColor background;
        QColor error;
        QColor warning;
        QColor other;
        QColor text;
        QColor chosen; //!< behind chosen columns
    };

Q_SIGNALS:
    //! Somebody wants to see the rows from that time on.
    void timeChosen(const TimeStamp &time);
    //! Somebody wants to see \a row of the table.
    void rowChosen(int row);
    //! Somebody wants to see the rows of \a span alone, from the beginning of one column to the
    //! end of another; without times, rows of the table.
    void spanChosen(const RowSpan &span);

protected:
    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    QRect plot() const;
    void updateColumns();
    void updateWanted();
    bool isDrag(QPoint to) const;
    void giveUp();
    RowSpan span(int first, int last) const;
    void paintColumn(QPainter *painter, const Colors &colors, int column, int highest) const;
    void fadeOthers(QPainter *painter, const Colors &colors, const QRect &span) const;
    void paintAxis(QPainter *painter, const Colors &colors) const;

    RowSurvey *m_survey; //!< not owned
    HistogramColumns m_columns;
    qint64 m_from = 0;         //!< the place where choosing began
    qint64 m_to = 0;           //!< the place where it has come to
    bool m_isChosen = false;   //!< m_from and m_to count
    QPoint m_pressed;          //!< where choosing began, in pixels
    bool m_isPressed = false;  //!< choosing is going on
    bool m_isDragging = false; //!< it chooses a span
};

#endif // HISTOGRAM_H
