// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef CAPTUREMODEL_H
#define CAPTUREMODEL_H

#include "basics/rowcache.h"
#include "capturefollower.h"
#include "files/chunkedarray.h"
#include "packetsource.h"

#include <QAbstractTableModel>
#include <QThread>

#include <limits>

/*!
 * \brief The packets of a capture of any size, while it is indexed and while it grows.
 *
 * Memory is 8 bytes a packet; packets themselves are read from the file when they are asked for.
 * One that cannot be read says why in its line. Times are local ones, to the microsecond, or to the
 * nanosecond where the file has them.
 *
 * A thread of the model's own finds the packets; the model itself lives in the GUI thread.
 */
class CaptureModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    using Activity = CaptureNews::Activity;

    enum Column {
        Time,
        Source,
        Destination,
        Protocol,
        Length, //!< bytes that were sent
        Info,
        ColumnCount
    };

    //! Shows \a path, or the standard input for "-"; never more than \a maximumRows packets.
    explicit CaptureModel(const QString &path, int maximumRows = std::numeric_limits<int>::max(),
                          QObject *parent = nullptr);
    //! Ends the thread, at the latest after its present slice of some 40 ms.
    ~CaptureModel() override;

    //! Begins to open and to index. Call once, after connecting.
    void start();

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    //! With RowRole::Details: the layers of the packet, and its bytes.
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;

    //! What the thread does.
    Activity activity() const { return m_news.activity; }
    //! Why activity() is Failed.
    QString errorString() const { return m_news.error; }
    //! There is no file of that name now; the model shows what was there.
    bool isMissing() const { return m_news.isMissing; }
    //! At the end of the file there is a part of a packet.
    bool isIncomplete() const { return m_news.isIncomplete; }
    //! Bytes of the file, and those that are looked at.
    //! @{
    quint64 fileSize() const { return m_news.size; }
    quint64 indexedBytes() const { return m_news.indexed; }
    //! @}
    //! The file is compressed, or a stream: there is a temporary copy.
    bool isCopied() const;
    //! Bytes that the places of packets occupy.
    std::size_t indexMemory() const { return m_places.memory(); }
    //! What packets were captured from, as far as any was read.
    QString linkName() const;

Q_SIGNALS:
    //! Anything but the rows changed: activity, sizes, error.
    void statusChanged();
    //! The rows are those of other packets now.
    void restarted();

private Q_SLOTS:
    void takeNews();
    void timesChanged();

private:
    void beginAnew();
    void insertPackets(const std::vector<std::vector<quint64>> &places);
    const QStringList &fields(int row) const;
    QStringList readFields(int row) const;
    QString details(int row) const;
    QString timeText(qint64 time) const;

    const int m_maximumRows;
    QThread m_thread;                            //!< the follower's
    std::unique_ptr<CaptureFollower> m_follower; //!< works in m_thread
    CaptureNews m_news;                          //!< the last, without places
    ChunkedArray<quint64> m_places;              //!< of packets
    std::unique_ptr<PacketSource> m_source;      //!< reads them; null before the first news
    mutable RowCache m_cache;                    //!< fields of rows asked for lately
    mutable qint64 m_second = -1;                //!< since 1970, of m_secondText
    mutable QString m_secondText;                //!< date and time
    mutable bool m_hasNanoseconds = false;       //!< some packet has other than whole microseconds
};

#endif // CAPTUREMODEL_H
