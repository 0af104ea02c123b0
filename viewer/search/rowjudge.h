// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef ROWJUDGE_H
#define ROWJUDGE_H

#include "files/bytepattern.h"
#include "files/textfilemodel.h"
#include "linematcher.h"
#include "placescanner.h"
#include "spanjudge.h"
#include "textmatcher.h"

#include <optional>
#include <vector>

class QAbstractItemModel;

//! Whether \a column of \a model, which may be null, has text to look for rather than
//! numbers of lines.
bool isTextColumn(const QAbstractItemModel *model, int column);

/*!
 * \brief Tells which rows of a model have a text in their columns, and lie in a span.
 *
 * Lines of a file are not even read as text if their bytes tell what they have.
 */
class RowJudge
{
public:
    //! Looks for a match of \a matcher in one of \a columns, of no model yet, in the rows of
    //! \a span if there is one: in that, any row matches a matcher that is nothing.
    RowJudge(const QList<int> &columns, const TextMatcher &matcher,
             const std::optional<RowSpan> &span = {});

    const TextMatcher &matcher() const { return m_matcher; }
    std::optional<RowSpan> span() const;

    //! Looks at \a source from now on; again after its columns or its format have changed. The
    //! columns count until there are others, then all do that have text.
    void setSource(const QAbstractItemModel *source);

    //! Adds those of the rows from \a first to the one before \a end that have a match to
    //! \a found, in ascending order. Gives up after some milliseconds; returns the row to go on
    //! from, \a end at last.
    int judge(int first, int end, std::vector<int> *found) const;

    //! Of the span, which has to hear what happens to the rows; null if there is none.
    SpanJudge *spanJudge() { return m_span ? &*m_span : nullptr; }

private:
    void choosePatterns();
    int judgeText(int first, int end, std::vector<int> *found) const;
    bool isMatch(int row) const;
    int judgeRows(int first, int end, std::vector<int> *found) const;
    void judgeLines(int first, std::vector<int> *found) const;
    bool isMatch(int row, qsizetype begin, qsizetype end, qsizetype place) const;

    QList<int> m_columns;                         //!< looked at
    QStringList m_names;                          //!< of all when they were chosen
    TextMatcher m_matcher;                        //!< looked for
    mutable std::optional<SpanJudge> m_span;      //!< nothing without a span
    const QAbstractItemModel *m_source = nullptr; //!< asked; not owned
    const TextFileModel *m_lines = nullptr;       //!< the source, if it can be looked through
    std::optional<BytePattern> m_pattern;         //!< in bytes of m_lines; nothing if it cannot
    mutable std::optional<PlaceScanner> m_places; //!< in the same; of any of several patterns
    std::optional<LineMatcher> m_byBytes;         //!< judges m_lines; nothing if it cannot
    mutable TextFileModel::RawLines m_raw;        //!< judged at present
};

#endif // ROWJUDGE_H
