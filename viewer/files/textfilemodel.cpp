// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "textfilemodel.h"

#include "basics/alignments.h"
#include "controlpictures.h"
#include "journal.h"

#include <algorithm>

namespace {

constexpr quint64 s_blockBytes = 65536;      // read at once where lines are asked for in turn
constexpr quint64 s_searchBytes = 4 << 20;   // the same where they are looked through
constexpr quint64 s_lineBytes = 1 << 20;     // of lines that are looked at one by one
constexpr int s_rowsOfKind = 16;             // that tell what a column has
constexpr qsizetype s_mostFaultsKept = 1000; // rows

QVariant colorOf(LogLevel level)
{
    const QColor color = levelColor(level);
    return color.isValid() ? color : QVariant();
}

//! Null without any.
QVariant faultsText(RecordFaults faults)
{
    QStringList texts;
    if (faults & RecordFault::OpenQuote)
        texts.append(TextFileModel::tr("Nothing closes its quote."));
    if (faults & RecordFault::TextAfterQuote)
        texts.append(TextFileModel::tr("There is text after a closing quote."));
    if (faults & RecordFault::TooFewFields)
        texts.append(TextFileModel::tr("It has fewer fields than the header."));
    if (faults & RecordFault::TooManyFields)
        texts.append(TextFileModel::tr("It has more fields than the header."));
    return texts.isEmpty() ? QVariant()
                           : TextFileModel::tr("Malformed record: %1").arg(texts.join(u' '));
}

} // namespace

TextFileModel::TextFileModel(const QString &path, const FormatRequest &request, int maximumRows,
                             QObject *parent)
    : QAbstractTableModel(parent)
    , m_path(path)
    , m_maximumRows(maximumRows)
    // One line more, for the header.
    , m_follower(std::make_unique<FileFollower>(path, request, qint64(maximumRows) + 1))
{
    m_follower->moveToThread(&m_thread);
    connect(&m_thread, &QThread::started, m_follower.get(), &FileFollower::start);
    connect(&m_thread, &QThread::finished, m_follower.get(), &FileFollower::finish,
            Qt::DirectConnection); // in the thread that ends
    connect(this, &TextFileModel::stopRequested, m_follower.get(), &FileFollower::stop);
    connect(this, &TextFileModel::resumeRequested, m_follower.get(), &FileFollower::resume);
    connect(m_follower.get(), &FileFollower::news, this, &TextFileModel::takeNews);
}

TextFileModel::~TextFileModel()
{
    m_thread.quit();
    m_thread.wait();
    m_follower->takeNews();
}

void TextFileModel::start()
{
    m_thread.start();
}

void TextFileModel::stopIndexing()
{
    Q_EMIT stopRequested();
}

void TextFileModel::resumeIndexing()
{
    Q_EMIT resumeRequested();
}

int TextFileModel::rowsFor(qint64 lines) const
{
    const qint64 rows = lines - (m_format.hasHeader ? 1 : 0);
    return int(std::clamp<qint64>(rows, 0, m_maximumRows));
}

int TextFileModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : rowsFor(m_index.count());
}

int TextFileModel::columnCount(const QModelIndex &parent) const
{
    if (parent.isValid())
        return 0;
    return m_format.hasColumns() ? int(m_format.names.size()) : 2;
}

bool TextFileModel::isFull() const
{
    return m_activity == Activity::Full || lineOfRow(rowCount()) < m_index.count();
}

QString TextFileModel::encodingName() const
{
    if (m_compression.isEmpty() || m_encodingName.isEmpty())
        return m_compression + m_encodingName;
    return m_compression + QLatin1String(", ") + m_encodingName;
}

void TextFileModel::takeNews()
{
    const FollowerNews news = m_follower->takeNews();
    m_block.clear();
    m_activity = news.activity;
    m_missing = news.missing;
    m_error = news.error;
    m_fileSize = news.size;
    m_encodingName = news.encodingName;
    m_compression = news.compression;
    m_olderLines = news.olderLines;
    m_leftOut = news.leftOut;
    if (news.file)
        m_file = news.file;
    if (news.restart != Restart::None)
        beginAnew(news);
    if (news.format)
        reformat(news);
    else if (!news.batches.empty())
        insertLines(news.batches);
    if (news.touched)
        contentsTouched();
    Q_EMIT statusChanged();
}

void TextFileModel::beginAnew(const FollowerNews &news)
{
    beginResetModel();
    m_lastRestart = news.restart;
    m_index = LineIndex();
    m_format = {};
    forgetRows();
    endResetModel();
    Q_EMIT restarted();
}

//! The text is divided into other rows than before.
void TextFileModel::reformat(const FollowerNews &news)
{
    beginResetModel();
    m_index = LineIndex();
    m_format = *news.format;
    forgetRows();
    appendToIndex(news.batches);
    endResetModel();
}

void TextFileModel::appendToIndex(const std::vector<LineBatch> &batches)
{
    for (const LineBatch &batch : batches)
        m_index.append(batch);
}

void TextFileModel::insertLines(const std::vector<LineBatch> &batches)
{
    const int before = rowCount();
    const bool hadTail = m_index.hasTail();
    const quint64 bytesBefore = m_index.bytes();
    qint64 lines = m_index.count() - (hadTail ? 1 : 0);
    for (const LineBatch &batch : batches)
        lines += batch.lines;
    const int after = rowsFor(lines + (batches.back().tail > 0 ? 1 : 0));
    if (after > before) {
        beginInsertRows({}, before, after - 1);
        appendToIndex(batches);
        endInsertRows();
        if (before < s_rowsOfKind) // which tell on which side the headers stand
            Q_EMIT headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
    } else {
        appendToIndex(batches);
    }
    if (!hadTail || before == 0 || m_index.bytes() == bytesBefore)
        return;
    m_cache.remove(before - 1);
    m_faults.remove(before - 1);
    Q_EMIT dataChanged(index(before - 1, 0), index(before - 1, columnCount() - 1));
}

void TextFileModel::forgetRows()
{
    m_cache.clear();
    m_faults.clear();
    m_headerFields = -1;
}

void TextFileModel::contentsTouched()
{
    forgetRows();
    if (rowCount() > 0)
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
}

QString TextFileModel::readLine(qint64 line) const
{
    const LineSpan span = m_index.line(line);
    const bool isCut = span.length > quint64(maximumLineBytes);
    const QByteArrayView bytes =
        bytesAt(span.offset, isCut ? quint64(maximumLineBytes) : span.length);
    if (!isCut)
        return m_format.lineText(bytes, span.terminated);
    const QByteArrayView whole = m_format.encoding.withoutPartialCharacter(bytes);
    return m_format.lineText(whole, false) + QChar(0x2026);
}

QByteArray TextFileModel::rowBytes(int row, qint64 most) const
{
    if (row < 0 || row >= rowCount() || most <= 0)
        return {};
    const LineSpan span = m_index.line(lineOfRow(row));
    return m_file->readAt(span.offset, qint64(qMin(span.length, quint64(most))));
}

QByteArrayView TextFileModel::rowView(int row, qint64 most) const
{
    if (row < 0 || row >= rowCount() || most <= 0)
        return {};
    const LineSpan span = m_index.line(lineOfRow(row));
    const QByteArrayView bytes = bytesFrom(span.offset);
    return bytes.first(qMin(bytes.size(), qsizetype(qMin(span.length, quint64(most)))));
}

//! Bytes of the file, valid until the next call. Who asks for what is near to the bytes
//! read last goes through the lines one by one, up or down: then a block is read.
QByteArrayView TextFileModel::bytesAt(quint64 offset, quint64 size) const
{
    const quint64 blockEnd = m_blockOffset + quint64(m_block.size());
    if (offset < m_blockOffset || offset + size > blockEnd) {
        const bool isBehind = offset >= m_blockOffset && offset <= blockEnd + s_blockBytes;
        const bool isBefore = offset < m_blockOffset && offset + s_blockBytes >= m_blockOffset;
        quint64 from = offset;
        quint64 count = size;
        if (isBehind || isBefore)
            count = qMax(size, s_blockBytes);
        if (isBefore)
            from = offset + size - qMin(offset + size, count);
        m_block = m_file->readAt(from, qint64(count));
        m_blockOffset = from;
    }
    const qsizetype skipped = qMin(qsizetype(offset - m_blockOffset), m_block.size());
    const QByteArrayView rest = QByteArrayView(m_block).sliced(skipped);
    return rest.first(qMin(rest.size(), qsizetype(size)));
}

//! The bytes from \a offset on: a block of them, or what is left of the last block if
//! that is enough.
QByteArrayView TextFileModel::bytesFrom(quint64 offset) const
{
    const quint64 left = m_index.bytes() - qMin(offset, m_index.bytes());
    const quint64 blockEnd = m_blockOffset + quint64(m_block.size());
    const bool isHeld = offset >= m_blockOffset && blockEnd >= offset + qMin(left, s_blockBytes);
    if (!isHeld) {
        m_block = m_file->readAt(offset, qint64(qMin(left, s_searchBytes)));
        m_blockOffset = offset;
    }
    const QByteArrayView rest = QByteArrayView(m_block).sliced(qsizetype(offset - m_blockOffset));
    return rest.first(qsizetype(qMin(left, quint64(rest.size()))));
}

//! The same for the bytes before \a end.
QByteArrayView TextFileModel::bytesTo(quint64 end) const
{
    const quint64 blockEnd = m_blockOffset + quint64(m_block.size());
    const bool isHeld = end <= blockEnd
        && (m_blockOffset == 0 || (end >= s_blockBytes && m_blockOffset <= end - s_blockBytes));
    if (!isHeld) {
        m_blockOffset = end - qMin(end, s_searchBytes);
        m_block = m_file->readAt(m_blockOffset, qint64(end - m_blockOffset));
    }
    const auto held = qsizetype(end - m_blockOffset);
    return QByteArrayView(m_block).first(qMin(held, m_block.size()));
}

int TextFileModel::rowAt(quint64 offset) const
{
    return int(qMin<qint64>(m_index.lineAt(offset) - lineOfRow(0), rowCount()));
}

std::optional<BytePattern> TextFileModel::patternFor(const QString &text,
                                                     const QList<int> &columns) const
{
    if (!m_format.encoding.isAsciiSearchable())
        return {};
    // Fields are parts of their line, unless there are quotes.
    if (m_format.isDelimited())
        return BytePattern::of(text, '"');
    if (m_format.hasColumns())
        return m_format.log.joins(text) ? std::nullopt
                                        : BytePattern::of(text, m_format.log.escape());
    // Numbers of lines are not in the file.
    const bool isNumber =
        std::all_of(text.begin(), text.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
    if (!columns.contains(1) || (isNumber && columns.contains(0)))
        return {};
    return BytePattern::of(text);
}

void TextFileModel::readLines(int row, int end, RawLines *lines) const
{
    lines->bytes = {};
    lines->ends.clear();
    if (row >= qMin(end, rowCount()) || m_format.hasColumns()
        || !m_format.encoding.isAsciiSearchable()) {
        return;
    }
    const qint64 line = lineOfRow(row);
    lines->bytes = bytesFrom(m_index.line(line).offset);
    const auto size = qMin(quint64(lines->bytes.size()), s_lineBytes);
    m_index.readEnds(line, lineOfRow(end), size, quint64(maximumLineBytes), &lines->ends);
}

TextFileModel::Sighting TextFileModel::look(const BytePattern &pattern, int row, bool down) const
{
    return down ? lookDown(pattern, row) : lookUp(pattern, row);
}

TextFileModel::Sighting TextFileModel::lookDown(const BytePattern &pattern, int row) const
{
    const quint64 begin = m_index.line(lineOfRow(row)).offset;
    const QByteArrayView bytes = bytesFrom(begin);
    const qsizetype place = pattern.first(bytes);
    if (place >= 0)
        return {rowAt(begin + quint64(place)), true};
    if (bytes.isEmpty())
        return {rowCount(), false}; // the file was cut off
    // Of a line that is cut here, all that is shown has been seen if it began here.
    return {qMax(row + 1, rowAt(begin + quint64(bytes.size()))), false};
}

TextFileModel::Sighting TextFileModel::lookUp(const BytePattern &pattern, int row) const
{
    const LineSpan span = m_index.line(lineOfRow(row));
    const quint64 end = span.offset + span.length;
    const QByteArrayView bytes = bytesTo(end);
    const qsizetype place = pattern.last(bytes);
    if (place >= 0)
        return {rowAt(m_blockOffset + quint64(place)), true};
    if (m_blockOffset == 0 || bytes.isEmpty())
        return {-1, false};
    // The beginning of a line that is cut here has not been seen.
    const int cut = rowAt(m_blockOffset);
    return {cut, cut >= row};
}

//! The fields of a row, or its text as the only one. Valid until the next call.
const QStringList &TextFileModel::fields(int row) const
{
    if (const QStringList *cached = m_cache.find(row))
        return *cached;
    const QString line = readLine(lineOfRow(row));
    QStringList fields = m_format.fieldsOf(line);
    std::transform(fields.begin(), fields.end(), fields.begin(), withPictures);
    return m_cache.insert(row, std::move(fields));
}

//! How many the header has; 0 if it does not tell.
qsizetype TextFileModel::headerFields() const
{
    if (m_headerFields < 0) {
        m_headerFields =
            m_format.hasHeader ? splitFields(readLine(0), m_format.delimiter).size() : 0;
    }
    return m_headerFields;
}

RecordFaults TextFileModel::faultsOf(int row) const
{
    if (!m_format.isDelimited() || row < 0 || row >= rowCount())
        return {};
    const auto known = m_faults.constFind(row);
    if (known != m_faults.cend())
        return *known;
    if (m_faults.size() >= s_mostFaultsKept)
        m_faults.clear();
    return *m_faults.insert(row, readFaults(row));
}

RecordFaults TextFileModel::readFaults(int row) const
{
    const QString record = readLine(lineOfRow(row));
    return seenFaults(row, ::faultsOf(record, m_format.delimiter, headerFields()));
}

//! Without \a faults that a record may have only because it is cut off.
RecordFaults TextFileModel::seenFaults(int row, RecordFaults faults) const
{
    constexpr RecordFaults ofEnd = RecordFault::OpenQuote | RecordFault::TooFewFields;
    if (!(faults & ofEnd))
        return faults;
    const bool isCut = m_index.line(lineOfRow(row)).length > quint64(maximumLineBytes);
    return isCut ? faults & ~ofEnd : faults;
}

RecordFaults TextFileModel::faultsInTurn(int row) const
{
    if (!m_format.isDelimited())
        return {};
    if (!hasAsciiBytes() || m_format.delimiter.unicode() >= 0x80)
        return readFaults(row);
    const qsizetype wanted = headerFields();
    QByteArrayView bytes = rowView(row, maximumLineBytes);
    if (bytes.endsWith(m_format.lineEnd))
        bytes.chop(1);
    if (m_format.lineEnd == '\n' && bytes.endsWith('\r'))
        bytes.chop(1);
    return seenFaults(row, ::faultsOf(bytes, char(m_format.delimiter.unicode()), wanted));
}

QString TextFileModel::text(const QModelIndex &index) const
{
    if (m_format.hasColumns())
        return fields(index.row()).value(index.column());
    if (index.column() == 0)
        return QString::number(qint64(index.row()) + 1);
    return fields(index.row()).value(0);
}

LogLevel TextFileModel::levelOfRow(int row) const
{
    const QStringList &texts = fields(row);
    return isJournal() ? Journal::levelOf(m_format.names, texts) : levelOf(texts.join(u' '));
}

bool TextFileModel::isNumeric(const QModelIndex &index) const
{
    if (!m_format.hasColumns())
        return index.column() == 0;
    return isNumber(fields(index.row()).value(index.column()));
}

QVariant TextFileModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    if (role == Qt::DisplayRole)
        return text(index);
    if (role == Qt::ToolTipRole)
        return faultsText(faultsOf(index.row()));
    if (role == Qt::ForegroundRole)
        return colorOf(levelOfRow(index.row()));
    if (role == Qt::TextAlignmentRole && isNumeric(index))
        return QVariant::fromValue(numberAlignment);
    if (role == Qt::TextAlignmentRole && !m_format.hasColumns())
        return QVariant::fromValue(lineAlignment);
    return {};
}

//! Whether the first of its rows that has something in \a column has a number.
bool TextFileModel::isNumberColumn(int column) const
{
    if (!m_format.hasColumns())
        return column == 0;
    for (int row = 0; row < qMin(rowCount(), s_rowsOfKind); ++row) {
        if (const QString text = fields(row).value(column); !text.isEmpty())
            return isNumber(text);
    }
    return false;
}

QVariant TextFileModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= columnCount())
        return {};
    if (role == Qt::TextAlignmentRole)
        return int(isNumberColumn(section)     ? numberAlignment
                       : m_format.hasColumns() ? Qt::AlignLeft | Qt::AlignVCenter
                                               : lineAlignment);
    if (role != Qt::DisplayRole)
        return {};
    if (m_format.hasColumns())
        return m_format.names.at(section);
    return section == 0 ? tr("Line") : tr("Text");
}
