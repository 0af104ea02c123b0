// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "packetsource.h"

struct PacketSource::Capture
{
};

PacketSource::PacketSource(std::shared_ptr<const TextFile> file)
    : m_file(std::move(file))
{
}

PacketSource::~PacketSource() = default;

bool PacketSource::isAvailable()
{
    return false;
}

const Packet *PacketSource::read(quint64, const CaptureSections &)
{
    return nullptr;
}

int PacketSource::linkType() const
{
    return -1;
}

QString PacketSource::linkName() const
{
    return {};
}
