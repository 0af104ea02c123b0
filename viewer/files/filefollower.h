// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef FILEFOLLOWER_H
#define FILEFOLLOWER_H

#include "delimiter.h"
#include "lineindex.h"
#include "newsbox.h"
#include "textfile.h"

#include <QByteArray>
#include <QFileSystemWatcher>
#include <QObject>
#include <QSocketNotifier>
#include <QString>
#include <QStringList>
#include <QTimer>

#include <memory>
#include <optional>
#include <vector>

//! What happened to a followed file since the last look.
struct FollowerNews
{
    //! What the follower does.
    enum class Activity {
        Opening,   //!< nothing is known yet
        Indexing,  //!< there is text that was not looked at
        Following, //!< all is indexed, and more may come
        Ended,     //!< the stream is at its end
        Stopped,   //!< by the user
        Full,      //!< the most lines that can be shown are indexed
        Failed     //!< it could not be opened or read; see error
    };

    //! Why the text begins anew.
    enum class Restart {
        None,      //!< it does not
        Opened,    //!< this is the first file
        Truncated, //!< the file became shorter
        Rewritten, //!< the file holds other text than before
        Replaced   //!< there is another file of the same name
    };

    Restart restart = Restart::None;       //!< if set, file is new and earlier lines are void
    std::shared_ptr<const TextFile> file;  //!< with all lines until now; null before the first
    std::optional<TextFormat> format;      //!< if set, the format now; earlier lines are void
    std::vector<LineBatch> batches;        //!< lines found, in order
    QString encodingName;                  //!< of the text, for the user
    QString compression;                   //!< of the file, for the user; empty for none
    quint64 size = 0;                      //!< bytes of the file
    Activity activity = Activity::Opening; //!< at present
    bool missing = false;                  //!< there is no file of that name now
    qint64 olderLines = 0;                 //!< of files before that one; −1: not all are read
    QStringList leftOut;                   //!< such files that could not be read, or not whole
    bool touched = false;                  //!< text indexed before may have changed without moving
    QString error;                         //!< a sentence for the user when activity is Failed
};

/*!
 * \brief Opens, indexes and watches one file or stream, away from the GUI thread.
 *
 * The format is decided on the beginning of the text, and once more while that grows: if
 * it changes, lines are counted anew.
 *
 * A compressed file is decompressed as a stream is copied. Of a stream that turns out to be
 * compressed there is no text before it has ended.
 *
 * The work is done in slices of 40 ms between which the follower's event loop runs,
 * so that stop() and the thread's end need no flags. Everything found is put
 * together in one FollowerNews until the other thread takes it: a slow reader gets
 * fewer and larger news.
 *
 * Where older files are asked for, too, they are read one after another before it, and a file
 * that takes its name goes on where the former one ends: the text begins anew only where that
 * has become another one.
 *
 * A regular file is looked at when the system reports a change and every 250 ms.
 * Its first and last indexed bytes are remembered and compared, so that a file
 * that was truncated and has grown again in between is recognised.
 */
class FileFollower : public QObject
{
    Q_OBJECT

public:
    //! Will follow \a path, "-" being the standard input, up to \a maximumLines
    //! lines, in the format that \a request leaves open. Does nothing before start().
    FileFollower(const QString &path, const FormatRequest &request, qint64 maximumLines);

    //! Takes the news. May be called from any thread.
    FollowerNews takeNews();

public Q_SLOTS:
    //! Opens the file and begins.
    void start();
    //! Stops indexing until resume(). What is indexed stays.
    void stop();
    //! Goes on after stop().
    void resume();
    //! Stops for good. To be called in the follower's thread before that ends; after
    //! another takeNews() any thread may delete the follower.
    void finish();

Q_SIGNALS:
    //! takeNews() has something. Not repeated before it was called.
    void news();

private Q_SLOTS:
    void checkFile();
    void indexSlice();
    void pumpStream();
    void checkSoon();

private:
    using Activity = FollowerNews::Activity;
    using Restart = FollowerNews::Restart;

    void begin(Restart reason);
    void beginAnew(Restart reason);
    std::shared_ptr<TextFile> openNext(QString *error);
    void follow(std::shared_ptr<TextFile> file, Restart reason);
    void endFile();
    void join(std::shared_ptr<TextFile> next);
    QByteArray joint() const;
    bool isLeft();
    void takeName(std::shared_ptr<TextFile> file);
    void watch();
    void watchFile();
    void watchStream(int descriptor);
    void dropStream();
    void checkPath();
    void checkContents();
    void continueIndexing();
    void chooseFormat();
    void beginScan(const TextFormat &format, quint64 start);
    bool isSampleComplete() const;
    void scan(const char *bytes, qint64 size);
    void scanCopy(qint64 pumped);
    bool isCopyCompressed() const;
    void recogniseCompression();
    void endStream();
    bool beganAnew();
    bool isUnchanged() const;
    void rememberModified();
    void fail(const QString &error);
    void setActivity(Activity activity);
    void publish();
    template<typename Change> void tell(Change change);

    const QString m_path;                    //!< the name followed
    const FormatRequest m_request;           //!< as given
    const qint64 m_maximumLines;             //!< index no more than these
    QStringList m_coming;                    //!< to be read behind m_file; the last is m_path
    quint64 m_comingSize = 0;                //!< bytes of these
    QStringList m_leftOut;                   //!< of all older files, what could not be read whole
    QString m_filePath;                      //!< of m_file
    std::shared_ptr<TextFile> m_file;        //!< the file of that name, or the last one
    TextFormat m_format;                     //!< of m_file
    std::optional<TextFormat> m_newFormat;   //!< the same, not told yet
    quint64 m_textStart = 0;                 //!< position behind its byte order mark
    std::unique_ptr<LineScanner> m_scanner;  //!< of m_file
    std::vector<char> m_buffer;              //!< for reading
    quint64 m_position = 0;                  //!< bytes indexed
    qint64 m_modified = 0;                   //!< m_file's time of change when all was indexed
    QByteArray m_head;                       //!< the first bytes indexed
    QByteArray m_tail;                       //!< the last bytes indexed
    QString m_compression;                   //!< of what a stream is the copy of, if it is
    std::optional<FileState> m_refused;      //!< a file of that name that is not followed
    Activity m_activity = Activity::Opening; //!< at present
    bool m_missing = false;                  //!< there is no file of that name now
    bool m_wasRead = false;                  //!< see isLeft()
    bool m_firstSlice = true;                //!< nothing of m_file is published yet

    QTimer m_checkTimer {this};                    //!< looks regularly
    QTimer m_soonTimer {this};                     //!< gathers the system's reports
    QTimer m_sliceTimer {this};                    //!< runs the next slice
    std::unique_ptr<QFileSystemWatcher> m_watcher; //!< reports changes
    std::unique_ptr<QSocketNotifier> m_notifier;   //!< reports a stream's text

    NewsBox<FollowerNews> m_news; //!< not taken yet
};

#endif // FILEFOLLOWER_H
