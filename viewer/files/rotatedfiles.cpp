// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "rotatedfiles.h"

#include <QDate>
#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>
#include <compare>
#include <optional>
#include <tuple>
#include <utility>
#include <vector>

namespace {

//! What rotation adds to a name.
struct RotationTag
{
    bool isDated = false;
    qint64 date = 0;   //!< year, month and day in eight digits
    qint64 number = 0; //!< alone, or within the date

    //! From the oldest on. Who begins to write dates has the older files numbered.
    friend std::strong_ordering operator<=>(const RotationTag &a, const RotationTag &b)
    {
        const auto place = [](const RotationTag &tag) {
            return std::tuple(tag.isDated, tag.date, tag.isDated ? tag.number : -tag.number);
        };
        return place(a) <=> place(b);
    }
    friend bool operator==(const RotationTag &, const RotationTag &) = default;
};

struct RotatedName
{
    QString name; //!< before the rotation
    RotationTag tag;
    bool isCompressed = false;
};

QString withoutCompression(const QString &name)
{
    static const QStringList suffixes {".gz", ".xz", ".zst", ".bz2"};
    const auto suffix = std::find_if(suffixes.begin(), suffixes.end(), [&](const QString &end) {
        return name.endsWith(end) && name.size() > end.size();
    });
    return suffix == suffixes.end() ? name : name.chopped(suffix->size());
}

RotationTag tagOf(const QRegularExpressionMatch &match)
{
    QString date = match.captured("date");
    date.remove(u'-');
    const qint64 number = match.captured("number").toLongLong();
    if (date.isEmpty())
        return {false, 0, match.captured("alone").toLongLong()};
    if (QDate::fromString(date, QStringLiteral("yyyyMMdd")).isValid())
        return {true, date.toLongLong(), number};
    return {false, 0, date.toLongLong()};
}

//! What a file was called before it got \a name; nothing if there is no number or date in it.
std::optional<RotatedName> rotatedName(const QString &name)
{
    static const QRegularExpression expression(QStringLiteral(
        R"(^(?<stem>.+?)[-._](?:(?<date>\d{4}-\d\d-\d\d|\d{8})(?:[-._T](?<number>\d{1,12}))?|)"
        R"((?<alone>\d{1,7}))(?<suffix>\.[^.\d][^.]*)?$)"));
    const QString plain = withoutCompression(name);
    const QRegularExpressionMatch match = expression.match(plain);
    if (!match.hasMatch())
        return {};
    return RotatedName {match.captured("stem") + match.captured("suffix"), tagOf(match),
                        plain != name};
}

using File = std::pair<RotatedName, QString>; // with its path

//! Those that were called \a name.
std::vector<File> rotatedFilesOf(const QString &name, const QDir &folder)
{
    std::vector<File> files;
    const QFileInfoList entries = folder.entryInfoList(QDir::Files | QDir::Hidden);
    for (const QFileInfo &entry : entries) {
        const std::optional<RotatedName> rotated = rotatedName(entry.fileName());
        if (rotated && rotated->name == name)
            files.emplace_back(*rotated, entry.filePath());
    }
    std::sort(files.begin(), files.end(), [](const File &a, const File &b) {
        return std::tie(a.first.tag, a.first.isCompressed, a.second)
            < std::tie(b.first.tag, b.first.isCompressed, b.second);
    });
    files.erase(
        std::unique(files.begin(), files.end(),
                    [](const File &a, const File &b) { return a.first.tag == b.first.tag; }),
        files.end());
    return files;
}

} // namespace

QStringList olderFiles(const QString &path)
{
    const QFileInfo file(path);
    const QString plain = withoutCompression(file.fileName());
    std::vector<File> files = rotatedFilesOf(plain, file.dir());
    if (files.empty()) {
        if (const std::optional<RotatedName> self = rotatedName(file.fileName())) {
            files = rotatedFilesOf(self->name, file.dir());
            std::erase_if(files, [&](const File &other) { return other.first.tag >= self->tag; });
        }
    }
    QStringList paths;
    for (const File &older : files)
        paths.append(older.second);
    return paths;
}
