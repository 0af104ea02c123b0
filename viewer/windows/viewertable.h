// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef VIEWERTABLE_H
#define VIEWERTABLE_H

#include "itemdelegate.h"
#include "qtablefastview.h"

#include <QHash>

class FrameStatistics;

//! Lays out no more of a text than its cell can show: lines may be very long.
class ShortTextDelegate : public Vantix::ItemDelegate
{
    Q_OBJECT

public:
    //! A delegate without grid lines; \a view is its parent.
    explicit ShortTextDelegate(QAbstractItemView *view);

    void drawCustomText(QPainter *painter, const QStyleOptionViewItem &opt,
                        const QVariant &value) const override;

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

    //! Shows \a model with no current row, also where that of the model before was kept
    //! at an edge.
    void setModel(QAbstractItemModel *model) override;

    //! Takes widths anew: forgets which ones the user chose, and calls growColumns().
    void fitColumns();

    //! Widens the columns on screen to what header and rows on screen need, within
    //! reason, and the last one to the viewport's edge. Widths that the user chose
    //! stay.
    void growColumns();

    //! Whether rows have been painted at least once.
    bool hasPaintedRows() const { return m_hasPaintedRows; }

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    //! A table scrolled to its end stays there when its height changes.
    void updateGeometries() override;

private:
    void growColumn(int column, int atLeast, int atMost);
    int textWidth(int column) const;

    FrameStatistics *m_statistics; //!< not owned
    bool m_hasPaintedRows = false; //!< see hasPaintedRows()
    QHash<int, int> m_widest;      //!< by column: width needed so far, logical pixels
    QHash<int, int> m_given;       //!< by column: width that the user did not choose
};

#endif // VIEWERTABLE_H
