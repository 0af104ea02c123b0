// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef EDGEKEEPER_P_H
#define EDGEKEEPER_P_H

/*!
 * \brief What a view and its current index do as rows arrive at the ends of a table.
 *
 * Keeps no row and no pixel: decides on what it is told. Its state are the flags of the view,
 * which derived views may read and set, and two of its own:
 *
 * flag         | set                                          | then, as rows are inserted
 * -------------|----------------------------------------------|-----------------------------
 * stayAtTop    | before: the bar is at its minimum            | the view stays at the top
 * stayAtEnd    | before: the bar is at its maximum            | the view goes to the new end
 * neither      |                                              | the same rows stay in view
 * currentFirst | before: row 0 is current; Home               | rows at the top: row 0 is current
 * currentLast  | before: the last row is current; End         | rows at the end: the last one is
 * first owed   | an editor was open when currentFirst applied | as currentFirst, once it is closed
 * last owed    | the same of currentLast                      | as currentLast, once it is closed
 *
 * Where both of a pair are true, the header's order decides: rows are expected at the top in
 * ascending order, at the end in descending order. Rows that the view has fetched itself
 * are more of the table, not new ones: no flag is set for them but stayAtTop of an empty
 * table. currentFirst and currentLast also say what is current after a reset.
 */
class EdgeKeeper
{
public:
    //! The flags of the view.
    struct Flags
    {
        bool &stayAtTop;
        bool &stayAtEnd;
        bool &currentFirst;
        bool &currentLast;
        int &currentColumn; //!< the current column when an insertion or reset began
        int &currentPos;    //!< rows from the top row to the current one, then
    };

    //! How things are just before rows are inserted.
    struct Situation
    {
        int rows = 0;
        int currentRow = -1; //!< −1 for none
        int currentColumn = -1;
        int topRow = 0;
        bool isAtMinimum = false; //!< the vertical bar
        bool isAtMaximum = false;
        bool isAscending = true;
        bool isFetching = false; //!< the view asked for the rows that come
        bool isEditing = false;  //!< in the current row; asked for where isOwed() says so
    };

    enum class Scroll {
        Stay,     //!< the value stays, and other rows come into view
        ToEnd,    //!< to the new maximum
        WithRows, //!< the same rows stay in view
    };

    enum class Edge {
        None,
        First,
        Last,
    };

    explicit EdgeKeeper(const Flags &flags)
        : m_flags(flags)
    {
    }

    //! Whether the current index follows.
    bool followsCurrent() const { return m_followsCurrent; }
    void setFollowsCurrent(bool on);

    void beforeInsertion(const Situation &now);
    //! What the view does as rows were inserted at \a start.
    Scroll scroll(int start, int topRow) const;
    //! Which row becomes current as the rows \a start to \a end made \a rows of them.
    Edge edgeToFollow(int start, int end, int rows) const;
    //! Has an edge followed later.
    void owe(Edge edge) { (edge == Edge::First ? m_isFirstOwed : m_isLastOwed) = true; }
    bool isOwed() const { return m_isFirstOwed || m_isLastOwed; }
    //! The current index is elsewhere: nothing is owed.
    void currentChanged() { m_isFirstOwed = m_isLastOwed = false; }

    void beforeReset(int currentRow, int currentColumn, int rows);
    //! Which row becomes current after a reset.
    Edge edgeAfterReset() const;

private:
    void takeOwed();

    Flags m_flags;
    bool m_followsCurrent = true;
    bool m_isFirstOwed = false; //!< an editor kept the current index from following
    bool m_isLastOwed = false;
};

#endif // EDGEKEEPER_P_H
