// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef RECORDSCANNER_H
#define RECORDSCANNER_H

#include "delimiter.h"
#include "lineindex.h"

#include <memory>
#include <vector>

/*!
 * \brief Finds the ends of records: lines some of whose fields may be in double quotes,
 * between which lines do not end.
 *
 * As RFC 4180 says, a quote opens a field only at its beginning, and doubled ones do not
 * close it. A record that does not close its quote within maximumBytes or
 * maximumInnerLines is given up: its lines become lines as they stand, and quotes count
 * again behind the line at which it was given up.
 */
class RecordScanner : public LineScanner
{
public:
    static constexpr quint64 maximumBytes = 1 << 20;        //!< of a record with an open quote
    static constexpr std::size_t maximumInnerLines = 10000; //!< ends of lines in it

    //! \a delimiter is what separates fields, encoded; empty if it never occurs.
    RecordScanner(qint64 maximumLines, const LineSyntax &syntax, const QByteArray &delimiter);

    void finish() override;

protected:
    bool scanUnits(const char *bytes, const char *end) override;

private:
    struct Piece;

    void passPlain(Piece *piece);
    void passQuoted(Piece *piece);
    void passClosing(Piece *piece);
    void advance(Piece *piece, const char *to);
    bool isFieldStart(const Piece &piece, const char *place) const;
    void giveUp();

    const QByteArray m_delimiter;      //!< as given
    QByteArray m_before;               //!< the last bytes of the piece before, as many at most
    std::vector<quint64> m_innerLines; //!< lengths of lines within the record, one after another
    quint64 m_innerBytes = 0;          //!< their sum
    bool m_isQuoted = false;           //!< behind a quote that opened a field
    bool m_isAtClosing = false;        //!< just behind one that closes it unless it is doubled
    bool m_isGivenUp = false;          //!< quotes do not count before the line's end
};

//! The scanner for a text of \a format that begins at \a start.
std::unique_ptr<LineScanner> makeScanner(const TextFormat &format, quint64 start,
                                         qint64 maximumLines);

#endif // RECORDSCANNER_H
