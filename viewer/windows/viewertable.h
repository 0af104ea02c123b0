// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef VIEWERTABLE_H
#define VIEWERTABLE_H

#include "freshframes.h"
#include "frozencolumnview.h"

#include <QHash>

#include <functional>

class FrameStatistics;
class ColorRules;
class ShortTextDelegate;
class TextMatcher;

//! The viewer's table: rows are selected as a whole, and every frame is measured.
class ViewerTable : public FrozenColumnView
{
    Q_OBJECT

public:
    //! Adds its frames to \a statistics, which must outlive the table.
    explicit ViewerTable(FrameStatistics *statistics, QWidget *parent = nullptr);

    //! Shows \a model with no current row, also where that of the model before was kept
    //! at an edge.
    void setModel(QAbstractItemModel *model) override;

    //! Colours matches of \a matcher in the logical \a columns.
    void setMarked(const TextMatcher &matcher, const QList<int> &columns);

    //! Colours rows by \a rules.
    void setColorRules(const ColorRules &rules);

    //! Paints a mark at the edge of each row for which \a isMarked returns true. Without it, or
    //! when it would answer otherwise, update the viewport.
    void setRowMarks(std::function<bool(int row)> isMarked);
    //! The same in the colour of warnings, beside what setRowMarks() has painted.
    void setRowWarnings(std::function<bool(int row)> isWarned);

    //! Whether numbers of lines stay in sight while the lines are scrolled sideways (on at first).
    //! @{
    bool keepsLineNumbers() const { return m_keepsLineNumbers; }
    void setKeepsLineNumbers(bool on);
    //! @}
    //! Whether the first of the model's columns has numbers of lines.
    bool hasLineNumbers() const;

    //! Shows texts in TextFont::font(), in its own size. Call it again when that is another.
    void useTextFont();
    bool hasTextFont() const { return m_hasTextFont; }
    //! Makes the text one point larger or smaller, from 4 to 72 points, or as it was first.
    //! Ctrl with the wheel does that too.
    void zoomIn() { zoom(1); }
    void zoomOut() { zoom(-1); }
    void resetZoom();

    //! Takes widths anew: forgets which ones the user chose, and calls growColumns().
    void fitColumns();

    //! Takes the width of \a column anew, also if the user chose it.
    void fitColumn(int column);

    //! Where texts of \a column stand: as the model wants if there is no \a alignment.
    void setColumnAlignment(int column, Qt::Alignment alignment);
    Qt::Alignment columnAlignment(int column) const;

    //! Whether numbers in \a column are shown with their digits in groups. What is searched,
    //! copied and written to files is as it was. Off at first.
    //! @{
    bool hasDigitGroups(int column) const;
    void setDigitGroups(int column, bool on);
    //! @}
    //! The columns that have.
    QList<int> groupedColumns() const;

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

public Q_SLOTS:
    //! What is in the columns may be something else now.
    void modelReset() override;

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
    void wheelEvent(QWheelEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    //! A table scrolled to its end stays there when its height changes.
    void updateGeometries() override;

private:
    void repaintCells();
    void freezeLineNumbers();
    void zoom(int points);
    void updateHighlight();
    void choosePaintBuffer();
    void paintRowMarks(const QRect &area);
    void selectFarEnd(const QKeyEvent &event, const QModelIndex &before);
    int measured(const QString &text) const;
    QString shownText(int row, int column) const;
    void growColumn(int column, int atLeast, int atMost);
    int textWidth(int column) const;

    ShortTextDelegate *m_delegate;              //!< of all cells; a child
    FrameStatistics *m_statistics;              //!< not owned
    bool m_keepsLineNumbers = true;             //!< see keepsLineNumbers()
    bool m_isFitting = false;                   //!< see isFitting()
    bool m_hasTextFont = false;                 //!< see useTextFont()
    bool m_hasPaintedRows = false;              //!< see hasPaintedRows()
    double m_usualSize = 0;                     //!< points, before it was zoomed; 0 while it is not
    int m_wheel = 0;                            //!< eighths of a degree that have not zoomed yet
    std::function<bool(int row)> m_isRowMarked; //!< see setRowMarks()
    std::function<bool(int row)> m_isRowWarned; //!< see setRowWarnings()
    bool m_areMarksPainted = false;             //!< somewhere on screen
    FreshFrames m_frames;                       //!< painted so far
    bool m_arePicturesSmall = true;             //!< those of the widest column
    QHash<int, int> m_widest;                   //!< by column: width needed so far, logical pixels
    QHash<int, int> m_given;                    //!< by column: width that the user did not choose
};

#endif // VIEWERTABLE_H
