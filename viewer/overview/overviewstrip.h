// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef OVERVIEWSTRIP_H
#define OVERVIEWSTRIP_H

#include <QList>
#include <QWidget>

class MarkedRows;
class QTableFastView;
class RowSurvey;
class TableFilter;

/*!
 * \brief A narrow picture of all rows of a table beside its scroll bar, as high as that one's
 * groove.
 *
 * Errors and warnings are at its outer edge, what is looked for is beside the bar, marks go
 * across. A click, or dragging, brings the rows there to the middle of the table.
 */
class OverviewStrip : public QWidget
{
    Q_OBJECT

public:
    //! A strip of \a table, which \a find filters; results come from \a survey. All of them
    //! must outlive it. It wants levels while it is not hidden.
    OverviewStrip(TableFilter *find, QTableFastView *table, RowSurvey *survey,
                  const MarkedRows *marks, QWidget *parent);

    QSize sizeHint() const override;

    //! What the colours stand for, on \a palette. All of them are visible.
    struct Colors
    {
        explicit Colors(const QPalette &palette);

        QColor background;
        QColor error;
        QColor warning;
        QColor hit;
        QColor mark;
    };

    //! The first row whose picture is at \a y, and the one behind the last, as a pair; both 0
    //! without rows.
    std::pair<int, int> rowsAt(int y) const;
    //! What is in these rows, in words.
    QString description(int first, int end) const;

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    QRect groove() const;
    QList<int> markedRows() const;
    void paintLine(QPainter *painter, const Colors &colors, int y);
    void paintMarks(QPainter *painter, const Colors &colors);
    void showRowsAt(int y);

    TableFilter *m_find;       //!< not owned
    QTableFastView *m_table;   //!< not owned
    RowSurvey *m_survey;       //!< not owned
    const MarkedRows *m_marks; //!< not owned
};

#endif // OVERVIEWSTRIP_H
