// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef FRESHFRAMES_H
#define FRESHFRAMES_H

#include <QPersistentModelIndex>

//! Tells whether the frames of a table have, one after the other, no row of the one before: in a
//! busy feed, and while pages fly by. Pictures of cells that are kept are never painted again then.
class FreshFrames
{
public:
    //! Adds a frame of \a rows rows, the first of which is \a top. Returns whether areFresh() is
    //! another now.
    bool add(const QModelIndex &top, int rows);

    //! Whether enough of the last frames were like that. It takes as many others until they are
    //! not.
    bool areFresh() const { return m_areFresh; }

private:
    QPersistentModelIndex m_top; //!< of the last frame, wherever it is by now
    int m_weight = 0;            //!< of frames like that; others count against them
    bool m_areFresh = false;
};

#endif // FRESHFRAMES_H
