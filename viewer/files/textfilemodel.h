// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef TEXTFILEMODEL_H
#define TEXTFILEMODEL_H

#include "basics/rowcache.h"
#include "bytepattern.h"
#include "delimiter.h"
#include "filefollower.h"
#include "lineindex.h"
#include "loglevel.h"
#include "recordfaults.h"

#include <QAbstractTableModel>
#include <QHash>
#include <QThread>

#include <limits>
#include <memory>
#include <optional>

/*!
 * \brief The lines of a text file of any size, while it is indexed and while it grows.
 *
 * Text in columns has one model column per field, and one row per record, which may have
 * several lines in the quotes of a field; missing fields are empty,
 * and the last column shows all that is left of a line with too many. Other text
 * has two columns, line number and text. The format, encoding included, is decided from
 * the first 64 lines (64 KiB at most), and again while there are fewer than that.
 *
 * Memory is a little more than a byte a line; the text itself is read from the file
 * when it is asked for, so that lines cut off meanwhile appear empty until the model
 * notices. Only the first 16 KiB of a line are ever read; what is left out is
 * marked by an ellipsis. What is not valid in the encoding becomes U+FFFD, and control
 * characters but the tab are shown as their Unicode pictures.
 *
 * A thread of the model's own finds the lines; the model itself lives in the GUI
 * thread.
 */
class TextFileModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    using Activity = FollowerNews::Activity;
    using Restart = FollowerNews::Restart;

    static constexpr qint64 maximumLineBytes = 16384; //!< read of a line

    //! Shows \a path, or the standard input for "-", in the format that \a request
    //! leaves open. Never shows more than \a maximumRows lines.
    explicit TextFileModel(const QString &path, const FormatRequest &request = {},
                           int maximumRows = std::numeric_limits<int>::max(),
                           QObject *parent = nullptr);
    //! Ends the thread, at the latest after its present slice of some 40 ms.
    ~TextFileModel() override;

    //! Begins to open and to index. Call once, after connecting.
    void start();

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;

    //! Whether \a column has numbers of lines, which are not in the file.
    bool isLineNumber(int column) const { return !m_format.hasColumns() && column == 0; }

    QString path() const { return m_path; }
    const TextFormat &format() const { return m_format; }
    //! Whether lines are those of a journal, whose time and level may be anywhere in them.
    bool isJournal() const { return m_format.log.kind == LogFormat::Kind::Journal; }
    //! What the thread does.
    Activity activity() const { return m_activity; }
    //! There are more lines than can be shown.
    bool isFull() const;
    //! There is no file of that name now; the model shows what was there.
    bool isMissing() const { return m_missing; }
    //! Why activity() is Failed.
    QString errorString() const { return m_error; }
    //! What made the model begin anew most recently.
    Restart lastRestart() const { return m_lastRestart; }
    //! Size of the file in bytes, as last seen.
    quint64 fileSize() const { return m_fileSize; }
    //! Bytes of the file that are in rows.
    quint64 indexedBytes() const { return m_index.bytes(); }
    //! Rows of older files, which come before those of the file itself; −1 while they are being
    //! read.
    int olderRows() const { return m_olderLines < 0 ? -1 : rowsFor(m_olderLines); }
    //! Older files that could not be read, or not whole.
    QStringList leftOut() const { return m_leftOut; }
    //! What is wrong with a record of separated text: for rows on screen, and for those who go
    //! down through many rows. Of one that is shown cut off, only what is seen.
    //! @{
    RecordFaults faultsOf(int row) const;
    RecordFaults faultsInTurn(int row) const;
    //! @}
    //! Bytes that the index occupies.
    std::size_t indexMemory() const { return m_index.memory(); }
    //! What look() can be given to find rows that show \a text in one of \a columns;
    //! nothing if the bytes of a line do not tell.
    std::optional<BytePattern> patternFor(const QString &text, const QList<int> &columns) const;

    //! The bytes of \a row as they are in the file, the end of its line included; only the first
    //! \a most of them. Empty outside of the rows.
    QByteArray rowBytes(int row, qint64 most) const;

    //! Lines one below the other, as they are in the file.
    struct RawLines
    {
        QByteArrayView bytes;        //!< from the start of the first one on
        std::vector<qsizetype> ends; //!< where each of them ends in these, behind its lineEnd()
    };
    //! Reads the lines from \a row on, as many as some milliseconds allow and none from \a end on.
    //! Up to the first one that has no end or is shown cut off; none at all of text in columns, or
    //! whose ASCII characters are not its ASCII bytes. Valid until other rows are read.
    void readLines(int row, int end, RawLines *lines) const;
    //! The byte at the end of each line; of CR and LF the latter.
    char lineEnd() const { return m_format.lineEnd; }

    //! The same without a copy, for who goes down through many rows: valid until anything else
    //! is asked for.
    QByteArrayView rowView(int row, qint64 most) const;
    //! Whether ASCII characters are the same bytes in the file, and no others have these.
    bool hasAsciiBytes() const { return m_format.encoding.isAsciiSearchable(); }

    //! Where look() has come to.
    struct Sighting
    {
        int row;      //!< to go on from, −1 above the first
        bool mayShow; //!< its line may show the pattern
    };
    //! Goes down, or up, from \a row to the next one whose line may show \a pattern, or
    //! as far as some milliseconds let it. Begin at a row that exists.
    Sighting look(const BytePattern &pattern, int row, bool down) const;

    //! Encoding of the text, for the user; "ASCII" if there is nothing else at its
    //! beginning. Of compressed files both: "gzip, UTF-8".
    QString encodingName() const;
    //! The file is compressed; its text is complete when activity() is Ended.
    bool isCompressed() const { return !m_compression.isEmpty(); }

public Q_SLOTS:
    //! Stops indexing and following; rows stay.
    void stopIndexing();
    //! Goes on after stopIndexing().
    void resumeIndexing();

Q_SIGNALS:
    //! Anything but the rows changed: activity, sizes, error, encoding.
    void statusChanged();
    //! The rows are those of another text now: see lastRestart().
    void restarted();
    //! For the thread; not to be used elsewhere.
    //! @{
    void stopRequested();
    void resumeRequested();
    //! @}

private Q_SLOTS:
    void takeNews();

private:
    void beginAnew(const FollowerNews &news);
    void reformat(const FollowerNews &news);
    void insertLines(const std::vector<LineBatch> &batches);
    void appendToIndex(const std::vector<LineBatch> &batches);
    int rowsFor(qint64 lines) const;
    qint64 lineOfRow(int row) const { return qint64(row) + (m_format.hasHeader ? 1 : 0); }
    void contentsTouched();
    void forgetRows();
    RecordFaults readFaults(int row) const;
    RecordFaults seenFaults(int row, RecordFaults faults) const;
    qsizetype headerFields() const;
    const QStringList &fields(int row) const;
    QString readLine(qint64 line) const;
    QByteArrayView bytesAt(quint64 offset, quint64 size) const;
    QByteArrayView bytesFrom(quint64 offset) const;
    QByteArrayView bytesTo(quint64 end) const;
    Sighting lookDown(const BytePattern &pattern, int row) const;
    Sighting lookUp(const BytePattern &pattern, int row) const;
    int rowAt(quint64 offset) const;
    QString text(const QModelIndex &index) const;
    LogLevel levelOfRow(int row) const;
    bool isNumeric(const QModelIndex &index) const;
    bool isNumberColumn(int column) const;

    const QString m_path;                      //!< as given
    const int m_maximumRows;                   //!< as given
    QThread m_thread;                          //!< the follower's
    std::unique_ptr<FileFollower> m_follower;  //!< works in m_thread
    std::shared_ptr<const TextFile> m_file;    //!< what the index is about
    LineIndex m_index;                         //!< lines of m_file
    TextFormat m_format;                       //!< how lines are shown
    mutable qsizetype m_headerFields = -1;     //!< fields of the header; −1: not counted yet
    mutable QHash<int, RecordFaults> m_faults; //!< of rows asked for lately
    mutable RowCache m_cache;                  //!< fields of rows asked for lately
    mutable QByteArray m_block;                //!< bytes of m_file read last
    mutable quint64 m_blockOffset = 0;         //!< where m_block begins
    Activity m_activity = Activity::Opening;   //!< the follower's
    Restart m_lastRestart = Restart::None;     //!< see lastRestart()
    bool m_missing = false;                    //!< see isMissing()
    quint64 m_fileSize = 0;                    //!< bytes
    qint64 m_olderLines = 0;                   //!< −1: not known yet
    QStringList m_leftOut;                     //!< see leftOut()
    QString m_error;                           //!< see errorString()
    QString m_encodingName;                    //!< of the text
    QString m_compression;                     //!< of the file
};

#endif // TEXTFILEMODEL_H
