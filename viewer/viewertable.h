// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef VIEWERTABLE_H
#define VIEWERTABLE_H

#include "qtablefastview.h"

#include <QStyledItemDelegate>

class FrameStatistics;

//! Lays out no more of a text than its cell can show: lines may be very long.
class ShortTextDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;
};

//! The viewer's table: rows are selected as a whole, and every frame is measured.
class ViewerTable : public QTableFastView
{
    Q_OBJECT

public:
    //! Adds its frames to \a statistics, which must outlive the table.
    explicit ViewerTable(FrameStatistics *statistics, QWidget *parent = nullptr);

    //! Gives every column the width that header and rows on screen need, within
    //! reason, and the last one what is left of the viewport.
    void fitColumns();

    //! Widens the last column to the viewport's edge and to its longest text on
    //! screen so far, and the first one if its numbers became longer. A width that
    //! the user gave to the last column stays unless it is too small.
    void growColumns();

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    int textWidth(int column) const;

    FrameStatistics *m_statistics; //!< not owned
    int m_widestText = 0;          //!< of the last column, seen so far; logical pixels
    int m_filledWidth = 0;         //!< last width given to the last column; logical pixels
};

#endif // VIEWERTABLE_H
