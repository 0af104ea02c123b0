// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef LINEFILTER_H
#define LINEFILTER_H

#include "files/bytepattern.h"
#include "sortfilterproxymodel.h"
#include "textmatcher.h"

#include <optional>
#include <utility>
#include <vector>

class TextFileModel;

//! Whether \a column of \a model, which may be null, has text to look for rather than
//! numbers of lines.
bool isTextColumn(const QAbstractItemModel *model, int column);

/*!
 * \brief A filter that looks at its rows before it takes them over, letting events
 * through.
 *
 * A proxy judges all rows of its source at once, which takes seconds for a few million
 * lines. Here that is done piece by piece beforehand, while rows come and go. Lines of a file are
 * not even read as text if their bytes tell that they have it not. What was found is forgotten
 * afterwards.
 */
class LineFilter : public SortFilterProxyModel
{
    Q_OBJECT

public:
    //! Shows rows with a match of \a matcher in one of \a columns, of no model yet. They
    //! count until the model has more or fewer columns, then all do that have text.
    LineFilter(const QList<int> &columns, const TextMatcher &matcher);

    const TextMatcher &matcher() const { return m_matcher; }

    //! Judges the rows of \a source and makes it the source model. Returns false
    //! without doing that if cancel() was called or \a source was destroyed.
    bool takeOver(QAbstractItemModel *source);
    //! Makes takeOver(), from whose events this is called, give up.
    void cancel() { m_isCancelled = true; }

Q_SIGNALS:
    //! takeOver() has looked at \a part, from 0 to 1, of the rows.
    void progressed(double part);

protected:
    bool filterAcceptsRow(int source_row, const QModelIndex &source_parent) const override;

private:
    enum class Verdict : quint8 {
        Unknown,
        Shown,
        Hidden
    };

    bool judgeRows(const QAbstractItemModel *source);
    bool skipRows();
    Verdict judge(const QAbstractItemModel *source, int row) const;
    void beginAnew(const QAbstractItemModel *source);
    void rowsCame(int first, int last);
    void rowsWent(int first, int last);
    void rowsChanged(int first);
    void followSource(const QAbstractItemModel *source);
    void chooseWay(const QAbstractItemModel *source);
    bool mayShow(int row) const;

    QList<int> m_columns;                   //!< looked at
    int m_columnCount = 0;                  //!< of the source when they were chosen; 0 before
    const TextMatcher m_matcher;            //!< looked for
    std::vector<Verdict> m_verdicts;        //!< by source row, until the source is taken over
    size_t m_next = 0;                      //!< the row to be judged next
    const TextFileModel *m_lines = nullptr; //!< the source, if it can be looked through
    std::optional<BytePattern> m_pattern;   //!< in bytes of m_lines; nothing if it cannot
    mutable std::pair<int, int> m_skipped;  //!< rows, the last excluded, without the pattern
    bool m_isCancelled = false;             //!< see cancel()
};

#endif // LINEFILTER_H
