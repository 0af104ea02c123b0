// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "capturemodel.h"

#include "basics/alignments.h"
#include "basics/hexdump.h"
#include "basics/roles.h"
#include "dissection.h"
#include "textline.h"

#include <QDateTime>

#include <utility>

CaptureModel::CaptureModel(const QString &path, int maximumRows, QObject *parent)
    : QAbstractTableModel(parent)
    , m_maximumRows(maximumRows)
    , m_follower(std::make_unique<CaptureFollower>(path, maximumRows))
{
    m_follower->moveToThread(&m_thread);
    connect(&m_thread, &QThread::started, m_follower.get(), &CaptureFollower::start);
    connect(&m_thread, &QThread::finished, m_follower.get(), &CaptureFollower::finish,
            Qt::DirectConnection); // in the thread that ends
    connect(m_follower.get(), &CaptureFollower::news, this, &CaptureModel::takeNews);
}

CaptureModel::~CaptureModel()
{
    m_thread.quit();
    m_thread.wait();
    m_follower->takeNews();
}

void CaptureModel::start()
{
    m_thread.start();
}

void CaptureModel::takeNews()
{
    m_news = m_follower->takeNews();
    const std::vector<std::vector<quint64>> places = std::exchange(m_news.places, {});
    if (m_news.hasBegunAnew)
        beginAnew();
    if (!places.empty())
        insertPackets(places);
    Q_EMIT statusChanged();
}

void CaptureModel::beginAnew()
{
    beginResetModel();
    m_places = {};
    m_cache.clear();
    m_hasNanoseconds = false;
    m_source = std::make_unique<PacketSource>(m_news.file);
    endResetModel();
    Q_EMIT restarted();
}

void CaptureModel::insertPackets(const std::vector<std::vector<quint64>> &places)
{
    const int before = rowCount();
    int count = 0;
    for (const std::vector<quint64> &batch : places)
        count += int(batch.size());
    beginInsertRows({}, before, before + count - 1);
    for (const std::vector<quint64> &batch : places)
        m_places.append(batch);
    endInsertRows();
}

int CaptureModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_places.size());
}

int CaptureModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(ColumnCount);
}

bool CaptureModel::isCopied() const
{
    return m_news.file && m_news.file->streamDescriptor() >= 0;
}

QString CaptureModel::linkName() const
{
    return m_source ? m_source->linkName() : QString();
}

//! As many digits for all packets, so that they stand below each other. Zones of time are asked
//! for once a second.
QString CaptureModel::timeText(qint64 time) const
{
    constexpr qint64 second = 1'000'000'000;
    const qint64 nanoseconds = (time % second + second) % second;
    const qint64 whole = (time - nanoseconds) / second;
    if (whole != m_second || m_secondText.isEmpty()) {
        m_second = whole;
        m_secondText =
            QDateTime::fromSecsSinceEpoch(whole).toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    }
    // The first digit is there for the zeros behind it.
    const qint64 fraction = nanoseconds + second;
    TextLine line;
    line << m_secondText << (m_hasNanoseconds ? fraction : fraction / 1000);
    return line.text().replace(m_secondText.size(), 1, u'.');
}

const QStringList &CaptureModel::fields(int row) const
{
    if (const QStringList *cached = m_cache.find(row))
        return *cached;
    return m_cache.insert(row, readFields(row));
}

QStringList CaptureModel::readFields(int row) const
{
    const Packet *packet = m_source->read(m_places[std::size_t(row)], m_news.sections);
    if (!packet)
        return {{}, {}, {}, {}, {}, tr("This packet cannot be read: %1").arg(m_source->error())};
    if (packet->time % 1000 != 0 && !std::exchange(m_hasNanoseconds, true)) {
        m_cache.clear();
        QMetaObject::invokeMethod(const_cast<CaptureModel *>(this), &CaptureModel::timesChanged,
                                  Qt::QueuedConnection);
    }
    Dissection told = dissect(m_source->linkType(), packet->bytes);
    return {timeText(packet->time),   std::move(told.source),          std::move(told.destination),
            std::move(told.protocol), QString::number(packet->length), std::move(told.info)};
}

//! They have more digits now.
void CaptureModel::timesChanged()
{
    if (rowCount() > 0)
        Q_EMIT dataChanged(index(0, Time), index(rowCount() - 1, Time));
}

QString CaptureModel::details(int row) const
{
    const Packet *packet = m_source->read(m_places[std::size_t(row)], m_news.sections);
    if (!packet)
        return fields(row).at(Info);
    QString size = tr("%L1 bytes").arg(packet->length);
    if (quint32(packet->bytes.size()) != packet->length)
        size = tr("%1, of which %L2 were captured").arg(size).arg(packet->bytes.size());
    const Dissection told = dissect(m_source->linkType(), packet->bytes, true);
    const QStringList lines =
        QStringList {tr("Packet %L1: %2, %3").arg(row + 1).arg(timeText(packet->time), size)}
        + told.layers;
    return lines.join(u'\n') + QLatin1String("\n\n") + hexDump(packet->bytes);
}

QVariant CaptureModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    if (role == Qt::DisplayRole)
        return fields(index.row()).at(index.column());
    if (role == int(RowRole::Details))
        return details(index.row());
    if (role == Qt::TextAlignmentRole && index.column() == Length)
        return QVariant::fromValue(numberAlignment);
    return {};
}

QVariant CaptureModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= ColumnCount)
        return {};
    if (role == Qt::TextAlignmentRole)
        return int(section == Length ? numberAlignment : Qt::AlignLeft | Qt::AlignVCenter);
    if (role != Qt::DisplayRole)
        return {};
    switch (Column(section)) {
    case Time:
        return tr("Time");
    case Source:
        return tr("Source");
    case Destination:
        return tr("Destination");
    case Protocol:
        return tr("Protocol");
    case Length:
        return tr("Length");
    case Info:
        return tr("Info");
    case ColumnCount:
        break;
    }
    return {};
}
