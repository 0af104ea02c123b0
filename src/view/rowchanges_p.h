// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef ROWCHANGES_P_H
#define ROWCHANGES_P_H

#include <QtGlobal>

#include <algorithm>

/*!
 * \brief What a model has told of its rows, and what it has begun and not told yet.
 *
 * Between the two, row numbers may mean other rows than they did: whoever acts on one then
 * has to ask first.
 */
class RowChanges
{
public:
    //! A change was announced.
    void begin() { ++m_begun; }
    //! A move was announced: rows may have other numbers already.
    void beginMove()
    {
        begin();
        m_isMoveBegun = true;
    }
    //! A change has ended, which need not have been announced.
    void end()
    {
        m_begun = std::max(m_begun - 1, 0);
        m_isMoveBegun = m_isMoveBegun && m_begun > 0;
        ++m_serial;
    }
    //! All is new, with \a rows rows.
    void reset(int rows)
    {
        m_begun = 0;
        m_isMoveBegun = false;
        m_rows = rows;
        ++m_serial;
    }
    //! There were told to be \a rows rows.
    void setRows(int rows) { m_rows = rows; }

    //! As told.
    int rows() const { return m_rows; }
    bool isAmid() const { return m_begun > 0; }
    //! Whether a model that has \a rows rows now has not told of all that happened to them.
    bool areUntold(int rows) const { return m_isMoveBegun || rows != m_rows; }
    //! Another one after each change and reset: tells whether something happened meanwhile.
    quint64 serial() const { return m_serial; }

private:
    int m_rows = 0;
    int m_begun = 0;
    bool m_isMoveBegun = false;
    quint64 m_serial = 0;
};

#endif // ROWCHANGES_P_H
