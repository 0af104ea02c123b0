// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef PAINTTRAITS_P_H
#define PAINTTRAITS_P_H

class QAbstractItemDelegate;

//! What a delegate is known for to whoever has it paint; nothing, unless it has told.
struct PaintTraits
{
    bool ignoresPosition = false; //!< cells look alike at every place among the columns
    bool staysInCell = false;     //!< nothing is painted outside of the cell's rectangle
    bool ignoresDevice = false;   //!< cells look alike wherever, and on whatever, they are painted

    //! Of \a delegate, which may be null.
    static PaintTraits of(const QAbstractItemDelegate *delegate)
    {
        return s_reader ? s_reader(delegate) : PaintTraits();
    }

    using Reader = PaintTraits (*)(const QAbstractItemDelegate *delegate);
    //! Answers for all delegates from now on. GUI thread only.
    static void setReader(Reader reader) { s_reader = reader; }

private:
    inline static Reader s_reader = nullptr;
};

#endif // PAINTTRAITS_P_H
