// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "files/textfile.h"
#include "packetsource.h"

#include <pcap/pcap.h>

#include <algorithm>
#include <array>
#include <cstdio>

//! A place in a file that is read by position, as a stream.
struct FileCursor
{
    std::shared_ptr<const TextFile> file;
    quint64 place = 0;
};

namespace {

constexpr qint64 s_mostSeconds = 9'223'372'035; // whose nanoseconds have room; year 2262
constexpr std::size_t s_streamBuffer = 16384;   // bytes: a jump reads as many

ssize_t readCursor(void *cookie, char *buffer, std::size_t size)
{
    auto *cursor = static_cast<FileCursor *>(cookie);
    const qint64 count = cursor->file->readAt(cursor->place, buffer, qint64(size));
    if (count > 0)
        cursor->place += quint64(count);
    return ssize_t(count);
}

int seekCursor(void *cookie, off64_t *offset, int whence)
{
    auto *cursor = static_cast<FileCursor *>(cookie);
    if (whence == SEEK_END)
        return -1;
    const off64_t from = whence == SEEK_CUR ? off64_t(cursor->place) : 0;
    if (from + *offset < 0)
        return -1;
    *offset += from;
    cursor->place = quint64(*offset);
    return 0;
}

} // namespace

//! Destroyed from the last member to the first: the library closes its stream itself.
struct PacketSource::Capture
{
    struct Closer
    {
        void operator()(pcap_t *opened) const { pcap_close(opened); }
    };

    FileCursor cursor;
    std::array<char, s_streamBuffer> buffer {}; //!< of stream
    std::unique_ptr<pcap_t, Closer> pcap;       //!< owns stream
    std::FILE *stream = nullptr;
    quint64 begin = 0;               //!< of the section
    quint64 position = 0;            //!< of what is read next
    std::size_t interfacesKnown = 0; //!< of those that a section has beside the first
};

PacketSource::PacketSource(std::shared_ptr<const TextFile> file)
    : m_file(std::move(file))
{
}

PacketSource::~PacketSource() = default;

bool PacketSource::isAvailable()
{
    return true;
}

bool PacketSource::openSection(const CaptureSection &section)
{
    m_capture.reset();
    auto capture = std::make_unique<Capture>();
    capture->cursor = {m_file, section.begin};
    capture->begin = section.begin;
    cookie_io_functions_t functions {};
    functions.read = readCursor;
    functions.seek = seekCursor;
    capture->stream = fopencookie(&capture->cursor, "r", functions);
    if (!capture->stream)
        return false;
    std::setvbuf(capture->stream, capture->buffer.data(), _IOFBF, capture->buffer.size());
    std::array<char, PCAP_ERRBUF_SIZE> error {};
    capture->pcap.reset(pcap_fopen_offline_with_tstamp_precision(
        capture->stream, PCAP_TSTAMP_PRECISION_NANO, error.data()));
    if (!capture->pcap) {
        std::fclose(capture->stream);
        m_error = QString::fromUtf8(error.data());
        return false;
    }
    capture->position = quint64(::ftello(capture->stream));
    m_capture = std::move(capture);
    return true;
}

//! Reads what is at the capture's position.
bool PacketSource::readNext()
{
    pcap_pkthdr *header = nullptr;
    const u_char *bytes = nullptr;
    const int result = pcap_next_ex(m_capture->pcap.get(), &header, &bytes);
    m_capture->position = quint64(::ftello(m_capture->stream));
    if (result != 1) {
        m_error = QString::fromUtf8(pcap_geterr(m_capture->pcap.get()));
        return false;
    }
    // Asked for nanoseconds, the library has them where its type says microseconds. A damaged time
    // may be any.
    const qint64 seconds = std::clamp<qint64>(header->ts.tv_sec, -s_mostSeconds, s_mostSeconds);
    const qint64 fraction = std::clamp<qint64>(header->ts.tv_usec, 0, 999'999'999);
    m_packet.time = seconds * 1'000'000'000 + fraction;
    m_packet.length = header->len;
    m_packet.bytes = QByteArrayView(bytes, qsizetype(header->caplen));
    return true;
}

//! Packets tell the interface by a number, which counts the descriptions before them.
bool PacketSource::learnInterfaces(const CaptureSection &section, quint64 end)
{
    std::size_t &known = m_capture->interfacesKnown;
    while (known < section.interfaces.size() && section.interfaces[known] < end) {
        if (::fseeko(m_capture->stream, off_t(section.interfaces[known]), SEEK_SET) != 0
            || !readNext())
            return false;
        while (known < section.interfaces.size() && section.interfaces[known] < m_capture->position)
            ++known;
    }
    return true;
}

const Packet *PacketSource::read(quint64 place, const CaptureSections &sections)
{
    auto section = std::upper_bound(
        sections.begin(), sections.end(), place,
        [](quint64 at, const CaptureSection &candidate) { return at < candidate.begin; });
    if (section == sections.begin())
        return nullptr;
    --section;
    if ((!m_capture || m_capture->begin != section->begin) && !openSection(*section))
        return nullptr;
    if (!learnInterfaces(*section, place))
        return nullptr;
    if (m_capture->position != place && ::fseeko(m_capture->stream, off_t(place), SEEK_SET) != 0)
        return nullptr;
    return readNext() ? &m_packet : nullptr;
}

int PacketSource::linkType() const
{
    return m_capture ? pcap_datalink(m_capture->pcap.get()) : -1;
}

QString PacketSource::linkName() const
{
    const char *name = m_capture ? pcap_datalink_val_to_description(linkType()) : nullptr;
    return QString::fromUtf8(name);
}
