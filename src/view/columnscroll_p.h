// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef COLUMNSCROLL_P_H
#define COLUMNSCROLL_P_H

class QHeaderView;
class QScrollBar;

/*!
 * \brief Keeps a header and a horizontal scroll bar together.
 *
 * The bar counts pixels, or sections: then its range counts hidden sections, too, but its
 * positions are those of visible ones. All pixels are logical ones.
 */
class ColumnScroll
{
public:
    //! Neither may be null.
    ColumnScroll(QHeaderView *header, QScrollBar *bar, bool isPerItem)
        : m_header(header)
        , m_bar(bar)
        , m_isPerItem(isPerItem)
    {
    }

    //! Sets range and steps of the bar for a viewport of \a width pixels, which could have
    //! \a widest.
    void setRange(int width, int widest) const;
    //! Gives the header the offset that the bar stands for. Returns by how many pixels that is
    //! less than it was.
    int apply() const;
    //! Scrolls to \a offset pixels, or to the first section that begins there or after it
    //! where the bar counts sections.
    void scrollTo(int offset) const;

private:
    int fittingSections(int width) const;

    QHeaderView *m_header;
    QScrollBar *m_bar;
    bool m_isPerItem;
};

#endif // COLUMNSCROLL_P_H
