// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef CAPTUREFOLLOWER_H
#define CAPTUREFOLLOWER_H

#include "capturewalk.h"
#include "files/newsbox.h"
#include "files/textfile.h"

#include <QObject>
#include <QSocketNotifier>
#include <QTimer>

#include <memory>
#include <optional>

//! What happened to a followed capture since the last look.
struct CaptureNews
{
    //! What the follower does.
    enum class Activity {
        Opening,   //!< nothing is known yet
        Indexing,  //!< there are packets that were not looked at
        Following, //!< all are indexed, and more may come
        Ended,     //!< the stream is at its end
        Damaged,   //!< what follows the packets is none
        Full,      //!< the most packets that can be shown are indexed
        Failed     //!< it could not be opened or read; see error
    };

    bool hasBegunAnew = false;                //!< file is new, and earlier packets are void
    std::shared_ptr<const TextFile> file;     //!< null before the first
    std::vector<std::vector<quint64>> places; //!< of packets found, in order
    CaptureSections sections;                 //!< all until now
    quint64 size = 0;                         //!< bytes of the file
    quint64 indexed = 0;                      //!< bytes of it that were looked at
    Activity activity = Activity::Opening;
    bool isIncomplete = false; //!< a part of a packet is at the end
    bool isMissing = false;    //!< there is no file of that name now
    QString error;             //!< a sentence for the user when activity is Failed
};

/*!
 * \brief Opens, indexes and watches a capture, away from the GUI thread.
 *
 * The work is done in slices of some 40 ms between which the follower's event loop runs. What is
 * found is put together in one CaptureNews until the other thread takes it. A regular file is
 * looked at every 100 ms; one that is shorter than before, begins otherwise or has taken the name
 * begins anew. Streams, and what compressed files hold, are copied to a temporary file.
 */
class CaptureFollower : public QObject
{
    Q_OBJECT

public:
    //! Will follow \a path, "-" being the standard input, up to \a maximumPackets packets. Does
    //! nothing before start().
    CaptureFollower(const QString &path, qint64 maximumPackets);

    //! Takes the news. May be called from any thread.
    CaptureNews takeNews();

public Q_SLOTS:
    //! Opens the file and begins.
    void start();
    //! Stops for good. To be called in the follower's thread before that ends; after another
    //! takeNews() any thread may delete the follower.
    void finish();

Q_SIGNALS:
    //! takeNews() has something. Not repeated before it was called.
    void news();

private Q_SLOTS:
    void checkFile();
    void indexSlice();
    void pumpSlice();

private:
    using Activity = CaptureNews::Activity;

    void follow(std::shared_ptr<TextFile> file);
    void watchStream();
    bool pump(QString *error);
    void checkPath();
    bool hasBegunAnew(const FileState &state) const;
    void walk();
    Activity activityAfter(CaptureWalk::Stop stop) const;
    void fail(const QString &error);
    void publish(std::vector<quint64> &&places);
    template<typename Change> void tell(Change change);

    const QString m_path;
    const qint64 m_maximumPackets;
    std::shared_ptr<TextFile> m_file;            //!< read at present
    std::optional<CaptureWalk> m_walk;           //!< in m_file
    quint64 m_sizeSeen = 0;                      //!< bytes of it at the last look
    qint64 m_packets = 0;                        //!< found in it
    QByteArray m_head;                           //!< its first bytes
    std::optional<FileState> m_refused;          //!< a file of that name that is not followed
    Activity m_activity = Activity::Opening;     //!< at present
    bool m_isIncomplete = false;                 //!< see CaptureNews
    bool m_isMissing = false;                    //!< the same
    bool m_isStreamEnded = false;                //!< no more is pumped
    std::unique_ptr<QSocketNotifier> m_notifier; //!< reports a stream's bytes
    QTimer m_checkTimer {this};                  //!< looks at a regular file
    QTimer m_sliceTimer {this};                  //!< runs the next slice

    NewsBox<CaptureNews> m_news; //!< not taken yet
};

#endif // CAPTUREFOLLOWER_H
