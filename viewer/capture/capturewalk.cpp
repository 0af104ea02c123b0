// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "capturewalk.h"

#include "files/decompressor.h"
#include "files/textfile.h"

#include <QFile>
#include <QString>
#include <QtEndian>

#include <algorithm>
#include <utility>

namespace {

constexpr qint64 s_windowSize = 1 << 18;      // bytes read at a time
constexpr quint32 s_largestBlock = 16 << 20;  // bytes; more is damage
constexpr quint32 s_largestPacket = 1 << 18;  // bytes, unless the file's header allows more
constexpr quint32 s_mostOfHeader = 128 << 20; // bytes that it can allow

//! First numbers of files.
struct Magic
{
    enum : quint32 {
        Microseconds = 0xa1b2c3d4,
        Nanoseconds = 0xa1b23c4d,
        LongHeaders = 0xa1b2cd34, //!< of patched programs: records with more in their headers
        Section = 0x0a0d0d0a,     //!< reads the same in either byte order
        ByteOrder = 0x1a2b3c4d    //!< behind the length of a section's block
    };
};

//! Kinds of blocks.
struct BlockType
{
    enum : quint32 {
        Interface = 1,
        OldPacket = 2,
        SimplePacket = 3,
        EnhancedPacket = 6
    };
};

constexpr qsizetype s_fileHeader = 24;
constexpr qsizetype s_blockHeader = 12; // with the byte order of a section's

bool isRecordMagic(quint32 number)
{
    return number == Magic::Microseconds || number == Magic::Nanoseconds
        || number == Magic::LongHeaders;
}

} // namespace

bool isCaptureStart(QByteArrayView bytes)
{
    if (bytes.size() < 4)
        return false;
    const auto first = qFromBigEndian<quint32>(bytes.data());
    if (isRecordMagic(first) || isRecordMagic(qFromLittleEndian<quint32>(bytes.data())))
        return true;
    if (first != Magic::Section || bytes.size() < s_blockHeader)
        return false;
    const auto order = qFromBigEndian<quint32>(bytes.data() + 8);
    return order == Magic::ByteOrder || qbswap(order) == Magic::ByteOrder;
}

bool isCapture(const QString &path)
{
    QFile file(path);
    // Opening a pipe would wait for who writes to it.
    const auto state = TextFile::stateOf(path);
    if (!state || !file.exists() || state->size == 0 || !file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray start = file.read(qMax(s_blockHeader, qsizetype(Decompressor::signatureSize)));
    if (isCaptureStart(start))
        return true;
    if (Decompressor::formatOf(start).isEmpty())
        return false;
    const QString name = path.left(path.lastIndexOf(u'.'));
    const auto endsInIt = [&](const char *suffix) {
        return name.endsWith(QLatin1String(suffix), Qt::CaseInsensitive);
    };
    return endsInIt(".pcap") || endsInIt(".pcapng") || endsInIt(".cap");
}

CaptureWalk::CaptureWalk(std::shared_ptr<const TextFile> file)
    : m_file(std::move(file))
{
}

CaptureWalk::Stop CaptureWalk::walk(std::size_t most, std::vector<quint64> *places)
{
    const auto state = m_file->state();
    m_size = state ? state->size : 0;
    if (m_sections.empty()) {
        const Stop stop = begin();
        if (stop != Stop::Enough)
            return stop;
    }
    for (std::size_t found = 0; found < most;) {
        const Frame frame = nextFrame();
        if (frame.stop != Stop::Enough)
            return frame.stop;
        if (frame.isPacket) {
            places->push_back(m_position);
            ++found;
        }
        m_position += frame.size;
    }
    return Stop::Enough;
}

//! Reads what is at the start of the file.
CaptureWalk::Stop CaptureWalk::begin()
{
    const QByteArrayView header = peek(s_fileHeader);
    if (header.size() < s_fileHeader)
        return header.isEmpty() ? Stop::End : Stop::Incomplete;
    if (!isCaptureStart(header))
        return Stop::Damaged;
    m_isBlocks = qFromBigEndian<quint32>(header.data()) == Magic::Section;
    if (m_isBlocks)
        return Stop::Enough;
    m_isBigEndian = isRecordMagic(qFromBigEndian<quint32>(header.data()));
    m_headerSize = number(header, 0) == Magic::LongHeaders ? 24 : 16;
    m_largest = std::clamp<quint32>(number(header, 16), s_largestPacket, s_mostOfHeader);
    m_sections.push_back({});
    m_position = quint64(s_fileHeader);
    return Stop::Enough;
}

CaptureWalk::Frame CaptureWalk::nextFrame()
{
    Frame frame = m_isBlocks ? block() : record();
    if (frame.stop == Stop::Enough && m_position + frame.size > m_size)
        frame.stop = Stop::Incomplete;
    if (frame.stop != Stop::Enough || !m_isBlocks)
        return frame;
    const quint32 type = number(peek(s_blockHeader), 0);
    if (type == Magic::Section) {
        m_sections.push_back({m_position, {}});
        m_hasInterface = false;
    } else if (type == BlockType::Interface && std::exchange(m_hasInterface, true)) {
        m_sections.back().interfaces.push_back(m_position);
    }
    return frame;
}

CaptureWalk::Frame CaptureWalk::record()
{
    const QByteArrayView header = peek(m_headerSize);
    if (header.size() < m_headerSize)
        return {header.isEmpty() ? Stop::End : Stop::Incomplete};
    const quint32 size = number(header, 8);
    if (size > m_largest)
        return {Stop::Damaged};
    return {Stop::Enough, quint64(m_headerSize) + size, true};
}

CaptureWalk::Frame CaptureWalk::block()
{
    const QByteArrayView header = peek(s_blockHeader);
    if (header.size() < s_blockHeader)
        return {header.isEmpty() ? Stop::End : Stop::Incomplete};
    if (qFromBigEndian<quint32>(header.data()) == Magic::Section)
        return section(header);
    const quint32 size = number(header, 4);
    if (m_sections.empty() || size < s_blockHeader || size % 4 != 0 || size > s_largestBlock)
        return {Stop::Damaged};
    const quint32 type = number(header, 0);
    const bool isPacket = type == BlockType::EnhancedPacket || type == BlockType::SimplePacket
        || type == BlockType::OldPacket;
    return {Stop::Enough, size, isPacket};
}

//! A section may have another byte order than the one before.
CaptureWalk::Frame CaptureWalk::section(QByteArrayView header)
{
    const auto order = qFromBigEndian<quint32>(header.data() + 8);
    if (order != Magic::ByteOrder && qbswap(order) != Magic::ByteOrder)
        return {Stop::Damaged};
    m_isBigEndian = order == Magic::ByteOrder;
    const quint32 size = number(header, 4);
    if (size < 28 || size % 4 != 0 || size > s_largestBlock)
        return {Stop::Damaged};
    return {Stop::Enough, size, false};
}

//! The next \a size bytes, or those that there are.
QByteArrayView CaptureWalk::peek(qsizetype size)
{
    const bool isHeld = m_position >= m_windowAt
        && m_position + quint64(size) <= m_windowAt + quint64(m_window.size());
    if (!isHeld) {
        m_window = m_file->readAt(m_position, s_windowSize);
        m_windowAt = m_position;
    }
    const QByteArrayView rest = QByteArrayView(m_window).sliced(qsizetype(m_position - m_windowAt));
    return rest.first(qMin(size, rest.size()));
}

quint32 CaptureWalk::number(QByteArrayView bytes, qsizetype place) const
{
    const char *from = bytes.data() + place;
    return m_isBigEndian ? qFromBigEndian<quint32>(from) : qFromLittleEndian<quint32>(from);
}
