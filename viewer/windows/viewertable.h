// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef VIEWERTABLE_H
#define VIEWERTABLE_H

#include "itemdelegate.h"
#include "qtablefastview.h"

#include <QHash>

class FrameStatistics;

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

    //! A delegate without grid lines; \a view is its parent.
    explicit ShortTextDelegate(QAbstractItemView *view);

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    void drawCustomText(QPainter *painter, const QStyleOptionViewItem &opt,
                        const QVariant &value) const override;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;

private:
    //! Part of a text, in characters.
    struct Piece
    {
        qsizetype from = 0;
        qsizetype count = -1; //!< up to the end
    };

    static Piece seenPiece(QStyleOptionViewItem *option, const QString &text);

    mutable Piece m_piece; //!< of the cell that is painted
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

    //! Shows texts in the system's font of one width.
    void useFixedFont();

    //! Takes widths anew: forgets which ones the user chose, and calls growColumns().
    void fitColumns();

    //! Widens the columns on screen to what header and rows on screen need, within
    //! reason, and the last one to the viewport's edge. Widths that the user chose
    //! stay.
    void growColumns();

    //! The first row on screen, or -1.
    int firstSeenRow() const { return getFirstVisibleItem(); }

    //! Whether rows have been painted at least once.
    bool hasPaintedRows() const { return m_hasPaintedRows; }

    //! Whether the table moves its own scroll bars because it has another size.
    bool isFitting() const { return m_isFitting; }

    //! Tells of what was typed, instead of going through all rows for it.
    void keyboardSearch(const QString &text) override;

Q_SIGNALS:
    //! Somebody typed \a text into the table.
    void typed(const QString &text);
    //! A mouse button was pressed on a row.
    void rowPressed();
    //! A key has made another row current.
    void rowReached();

protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    //! A table scrolled to its end stays there when its height changes.
    void updateGeometries() override;

private:
    void updateHighlight();
    void selectFarEnd(const QKeyEvent &event, const QModelIndex &before);
    int measured(const QString &text) const;
    void growColumn(int column, int atLeast, int atMost);
    int textWidth(int column) const;

    FrameStatistics *m_statistics; //!< not owned
    bool m_isFitting = false;      //!< see isFitting()
    bool m_hasPaintedRows = false; //!< see hasPaintedRows()
    QHash<int, int> m_widest;      //!< by column: width needed so far, logical pixels
    QHash<int, int> m_given;       //!< by column: width that the user did not choose
};

#endif // VIEWERTABLE_H
