// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef LINEINDEX_H
#define LINEINDEX_H

#include "chunkedarray.h"
#include "textunits.h"

#include <QByteArray>

#include <cstddef>
#include <vector>

//! Where a line is. Its end, a line feed or a carriage return, belongs to it.
struct LineSpan
{
    quint64 offset = 0;      //!< byte position of its start
    quint64 length = 0;      //!< bytes, its end included
    bool terminated = false; //!< it has its end

    friend bool operator==(const LineSpan &, const LineSpan &) = default;
};

//! A place in the index from which lines can be counted on.
struct LineCheckpoint
{
    quint64 offset = 0;        //!< byte position of the line's start
    quint64 lengthsBefore = 0; //!< bytes of packed lengths before the line's own
};

//! What a LineScanner found since the last batch.
struct LineBatch
{
    std::vector<quint8> lengths;             //!< packed lengths of the terminated lines
    std::vector<LineCheckpoint> checkpoints; //!< of every 64th line among them
    qint64 lines = 0;                        //!< terminated lines found
    quint64 end = 0;                         //!< byte position behind the last terminated line
    quint64 tail = 0;                        //!< bytes of the unterminated line behind it, so far
    qint64 givenUp = 0;                      //!< records whose lines are lines as they stand
};

//! What tells lines apart.
struct LineSyntax
{
    TextUnits units;     //!< of the text
    char lineEnd = '\n'; //!< '\n' or '\r', which ends a line
    quint64 start = 0;   //!< byte position of the first line
};

/*!
 * \brief Finds the ends of lines in text that is fed to it piece by piece.
 *
 * A length is packed in groups of 7 bits, the lowest first; the top bit says that
 * another group follows. Lines shorter than 128 bytes take one byte.
 */
class LineScanner
{
public:
    //! Finds at most \a maximumLines terminated lines.
    explicit LineScanner(qint64 maximumLines, const LineSyntax &syntax = {});
    virtual ~LineScanner() = default;

    //! Scans \a size bytes that follow those scanned before, which began at the start of
    //! the syntax. Returns false once the maximum is reached; the rest of the bytes is then
    //! left out.
    bool scan(const char *bytes, std::size_t size);

    //! There is no more text to come.
    virtual void finish() { }

    //! What was found since the last call.
    LineBatch takeBatch();

    //! Terminated lines found in all.
    qint64 lines() const { return m_lines; }

protected:
    //! Scans whole units, as scan() does.
    virtual bool scanUnits(const char *bytes, const char *end);

    const LineSyntax &syntax() const { return m_syntax; }
    bool isFull() const { return m_lines >= m_maximumLines; }
    //! Bytes of the unterminated line.
    quint64 tail() const { return m_batch.tail; }
    void addToTail(quint64 bytes) { m_batch.tail += bytes; }
    void dropTail() { m_batch.tail = 0; }
    void countGivenUp() { ++m_batch.givenUp; }
    //! The unterminated line has its end after \a bytes more.
    void endLine(quint64 bytes);

private:
    Q_DISABLE_COPY(LineScanner)

    bool scanCutUnits(const char *bytes, const char *end);
    const char *scanBlocks(const char *bytes, const char *end);

    const qint64 m_maximumLines; //!< stop here
    const LineSyntax m_syntax;   //!< as given
    qint64 m_lines = 0;          //!< terminated lines found in all
    quint64 m_lengthsBefore = 0; //!< packed bytes given away with earlier batches
    LineBatch m_batch;           //!< found since the last takeBatch()
    QByteArray m_cutUnit;        //!< the first bytes of a unit, not in m_batch
};

/*!
 * \brief Byte positions of the lines of a text, at little more than a byte a line.
 *
 * Lengths are stored packed, with a checkpoint every 64 lines: finding a line
 * unpacks 63 lengths at most, whatever the lines' length. The worst case, lines of
 * 2^42 bytes and more, is still below 8 bytes a line.
 */
class LineIndex
{
public:
    static constexpr qint64 checkpointInterval = 64;

    //! Adds what a scanner found. Batches must arrive complete and in order.
    void append(const LineBatch &batch);

    //! Number of lines; an unterminated last line counts.
    qint64 count() const { return m_lines + (m_tail > 0 ? 1 : 0); }

    //! True if the last line has no end yet.
    bool hasTail() const { return m_tail > 0; }

    //! Bytes that the lines cover.
    quint64 bytes() const { return m_end + m_tail; }

    //! Records whose quotes nothing closes, so that their lines are lines as they stand.
    qint64 givenUp() const { return m_givenUp; }

    //! The line \a line, counted from 0. An empty span outside of the text.
    LineSpan line(qint64 line) const;

    //! Where the terminated lines from \a first to the one before \a end have their ends, in
    //! bytes from the start of \a first: of as many as fit into \a mostBytes, up to the first
    //! one that is longer than \a longestLine. Replaces what is in \a ends.
    void readEnds(qint64 first, qint64 end, quint64 mostBytes, quint64 longestLine,
                  std::vector<qsizetype> *ends) const;

    //! The line that has the byte \a offset; count() behind the text.
    qint64 lineAt(quint64 offset) const;

    //! Bytes allocated.
    std::size_t memory() const { return m_lengths.memory() + m_checkpoints.memory(); }

private:
    quint64 unpack(std::size_t *position) const;
    std::size_t positionOf(qint64 line) const;

    ChunkedArray<quint8> m_lengths;             //!< packed lengths
    ChunkedArray<LineCheckpoint> m_checkpoints; //!< of lines 0, 64, 128, …
    qint64 m_lines = 0;                         //!< terminated lines
    quint64 m_end = 0;                          //!< byte position behind the last terminated line
    quint64 m_tail = 0;                         //!< bytes of the unterminated last line
    qint64 m_givenUp = 0;                       //!< see givenUp()
};

#endif // LINEINDEX_H
