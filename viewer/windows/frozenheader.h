// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef FROZENHEADER_H
#define FROZENHEADER_H

#include <QHeaderView>

/*!
 * \brief A horizontal header that keeps its first section in sight while others are scrolled.
 *
 * The section stays at the left edge, or at the right one if the header is laid out from right to
 * left, over those beneath. There it is clicked, dragged wider and hovered over as anywhere else;
 * only moved to another place it can be where it belongs.
 */
class FrozenHeader : public QHeaderView
{
    Q_OBJECT

public:
    explicit FrozenHeader(QWidget *parent = nullptr);

    //! Keeps the section with the logical index \a section in sight, −1 none.
    void setFrozenSection(int section);
    //! As set, whether it can be kept in sight or not. −1 at first.
    int frozenSection() const { return m_section; }

    //! Width of what is kept in sight, scrolled or not, in logical pixels: of the section, as long
    //! as it is shown, the first one, and leaves half of the header to others. 0 if it is not.
    int frozenWidth() const;

    //! Where the section is while it is not where it belongs: from the top of the header to its
    //! bottom, in viewport pixels. Empty as long as it is there, or is not kept in sight.
    QRect frozenRect() const;

    //! By how many pixels that is to the right of where the section belongs.
    int frozenShift() const;

    void setModel(QAbstractItemModel *model) override;

protected:
    bool viewportEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    int homeOfFrozen() const;
    bool hoverEvent(const QHoverEvent &event);
    bool mouseEvent(const QMouseEvent &event);
    bool resizeFrozen(const QMouseEvent &event);
    bool isGrip(int x) const;
    void paintFrozen();
    void repaintFrozen();

    int m_section = -1;       //!< see frozenSection()
    int m_paintedOffset = 0;  //!< the header's offset when it was painted
    bool m_isPressed = false; //!< a button is held that was pressed over the frozen section
    int m_shift = 0;          //!< frozenShift() then
    int m_resizedFrom = 0;    //!< where dragging the section wider began
    int m_resizedWidth = -1;  //!< how wide it was then; −1 while it is not dragged
};

#endif // FROZENHEADER_H
