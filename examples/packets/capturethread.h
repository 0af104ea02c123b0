// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef CAPTURETHREAD_H
#define CAPTURETHREAD_H

#include "packet.h"

#include <QString>
#include <QThread>

#include <mutex>
#include <vector>

struct pcap;

//! Reads a capture again and again, as fast as packets would come, away from the GUI.
class CaptureThread : public QThread
{
    Q_OBJECT

public:
    //! Will read \a path at \a rate packets a second.
    CaptureThread(const QString &path, int rate, QObject *parent = nullptr);
    //! Stops reading.
    ~CaptureThread() override;

    //! What came since the last call. From any thread.
    std::vector<Packet> take();

protected:
    void run() override;

private:
    //! Reads up to \a count packets of an open capture; fewer at its end.
    int read(pcap *capture, qint64 count);

    const QString m_path;
    const int m_rate;
    std::mutex m_mutex;            //!< guards m_packets
    std::vector<Packet> m_packets; //!< not taken yet
};

#endif // CAPTURETHREAD_H
