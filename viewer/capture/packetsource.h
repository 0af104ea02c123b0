// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef PACKETSOURCE_H
#define PACKETSOURCE_H

#include "capturesections.h"
#include "packet.h"

#include <QString>

#include <memory>

class TextFile;

/*!
 * \brief Reads the packets of a file, each at the place where CaptureWalk found it.
 *
 * Those that follow one another are read fastest in that order.
 */
class PacketSource
{
public:
    explicit PacketSource(std::shared_ptr<const TextFile> file);
    ~PacketSource();

    //! Whether this program can read packets at all.
    static bool isAvailable();

    //! Reads the packet at the byte \a place, in one of \a sections. Null, with error(), if that
    //! fails. Valid until the next call.
    const Packet *read(quint64 place, const CaptureSections &sections);

    //! Why read() returned null; in English, as the library that reads packets tells it.
    QString error() const { return m_error; }
    //! The kind of link that packets of the section read last are from, and what it is called.
    //! @{
    int linkType() const;
    QString linkName() const;
    //! @}

private:
    Q_DISABLE_COPY(PacketSource)

    struct Capture; // a section that is open

    bool openSection(const CaptureSection &section);
    bool learnInterfaces(const CaptureSection &section, quint64 end);
    bool readNext();

    const std::shared_ptr<const TextFile> m_file;
    std::unique_ptr<Capture> m_capture; //!< null: none could be opened yet
    Packet m_packet;                    //!< read last
    QString m_error;                    //!< see error()
};

#endif // PACKETSOURCE_H
