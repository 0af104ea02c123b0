// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef PACKETMODEL_H
#define PACKETMODEL_H

#include "packet.h"

#include <QAbstractTableModel>

#include <deque>
#include <vector>

//! A list of packets that grows at its end. Texts are made when they are asked for.
class PacketModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column {
        Number,
        Time,
        Source,
        Destination,
        Protocol,
        Length,
        ColumnCount
    };

    using QAbstractTableModel::QAbstractTableModel;

    //! Adds what came since the last frame, in one go.
    void add(const std::vector<Packet> &packets);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    std::deque<Packet> m_packets; //!< does not move what it has as it grows
};

#endif // PACKETMODEL_H
