// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef CAPTUREWALK_H
#define CAPTUREWALK_H

#include "capturesections.h"

#include <QByteArray>

#include <memory>
#include <vector>

class QString;
class TextFile;

//! Whether bytes that a file begins with are those of a capture of packets.
bool isCaptureStart(QByteArrayView bytes);
//! Whether \a path is a capture: by its first bytes, or of a compressed file by its name.
bool isCapture(const QString &path);

/*!
 * \brief Finds where the packets of a file are, from the first one on and on as it grows.
 *
 * It reads nothing but the frames around packets: headers of records (pcap) or of blocks
 * (pcapng), of either byte order.
 */
class CaptureWalk
{
public:
    //! What stopped it.
    enum class Stop {
        Enough,     //!< it may go on
        End,        //!< of the file
        Incomplete, //!< of the file, within a packet
        Damaged     //!< what comes next is no packet, and nobody knows where the next one is
    };

    explicit CaptureWalk(std::shared_ptr<const TextFile> file);

    //! Adds where the next packets begin, at most \a most of them, to \a places.
    Stop walk(std::size_t most, std::vector<quint64> *places);
    //! The byte up to which it has come.
    quint64 position() const { return m_position; }
    //! Bytes that the file had when walk() last began.
    quint64 sizeSeen() const { return m_size; }
    //! Those up to position().
    const CaptureSections &sections() const { return m_sections; }

private:
    //! What comes next.
    struct Frame
    {
        Stop stop = Stop::Enough; //!< anything else: there is none
        quint64 size = 0;         //!< bytes
        bool isPacket = false;
    };

    Stop begin();
    Frame nextFrame();
    Frame record();
    Frame block();
    Frame section(QByteArrayView header);
    QByteArrayView peek(qsizetype size);
    quint32 number(QByteArrayView bytes, qsizetype place) const;

    const std::shared_ptr<const TextFile> m_file;
    QByteArray m_window;         //!< bytes of m_file
    quint64 m_windowAt = 0;      //!< where they are
    quint64 m_position = 0;      //!< see position()
    quint64 m_size = 0;          //!< see sizeSeen()
    CaptureSections m_sections;  //!< see sections()
    bool m_isBlocks = false;     //!< pcapng
    bool m_isBigEndian = false;  //!< numbers at present
    bool m_hasInterface = false; //!< in the present section
    qsizetype m_headerSize = 16; //!< bytes before a packet's own (pcap)
    quint32 m_largest = 0;       //!< bytes of a packet (pcap)
};

#endif // CAPTUREWALK_H
