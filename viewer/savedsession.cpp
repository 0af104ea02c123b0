// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "savedsession.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSettings>

namespace {

const QString s_key = QStringLiteral("session");
const QString s_geometry = QStringLiteral("geometry");
const QString s_pages = QStringLiteral("pages");
const QString s_current = QStringLiteral("current");
const QString s_path = QStringLiteral("path");
const QString s_isFollowing = QStringLiteral("following");
const QString s_line = QStringLiteral("line");
const QString s_columnCount = QStringLiteral("columnCount");
const QString s_columns = QStringLiteral("columns");
const QString s_grouped = QStringLiteral("grouped");
const QString s_format = QStringLiteral("format");
const QString s_delimiter = QStringLiteral("delimiter");
const QString s_hasHeader = QStringLiteral("header");
const QString s_encoding = QStringLiteral("encoding");
const QString s_log = QStringLiteral("log");
const QString s_hasOlderFiles = QStringLiteral("olderFiles");

const QString s_sortColumn = QStringLiteral("sortColumn");
const QString s_isDescending = QStringLiteral("descending");
const QString s_own = QStringLiteral("own");
const QString s_filter = QStringLiteral("filter");
const QString s_filterMatchesCase = QStringLiteral("matchesCase");
const QString s_filterWholeWords = QStringLiteral("wholeWords");
const QString s_filterIsExpression = QStringLiteral("expression");

QString toText(const QByteArray &bytes)
{
    return QString::fromLatin1(bytes.toBase64());
}

QByteArray fromText(const QJsonValue &value)
{
    return QByteArray::fromBase64(value.toString().toLatin1());
}

QJsonObject toJson(const FormatRequest &format)
{
    QJsonObject json;
    if (format.delimiter)
        json[s_delimiter] = int(format.delimiter->unicode());
    if (format.hasHeader)
        json[s_hasHeader] = *format.hasHeader;
    if (format.encoding)
        json[s_encoding] = format.encoding->name();
    if (format.log)
        json[s_log] = int(*format.log);
    if (format.hasOlderFiles)
        json[s_hasOlderFiles] = true;
    return json;
}

FormatRequest formatFrom(const QJsonObject &json)
{
    FormatRequest format;
    const int delimiter = json[s_delimiter].toInt(-1);
    if (delimiter >= 0 && delimiter <= 0xffff)
        format.delimiter = QChar(delimiter);
    if (json[s_hasHeader].isBool())
        format.hasHeader = json[s_hasHeader].toBool();
    format.encoding = Encoding::named(json[s_encoding].toString());
    const int log = json[s_log].toInt(-1);
    if (log >= 0 && log <= int(LogFormat::Kind::Journal))
        format.log = LogFormat::Kind(log);
    format.hasOlderFiles = json[s_hasOlderFiles].toBool();
    return format;
}

//! Only what there is: most pages have none of it.
void addOrderAndFilter(QJsonObject *json, const PageState &page)
{
    if (!page.own.isEmpty())
        json->insert(s_own, page.own);
    if (page.sortColumn >= 0) {
        json->insert(s_sortColumn, page.sortColumn);
        json->insert(s_isDescending, page.sortOrder == Qt::DescendingOrder);
    }
    if (page.filter.isEmpty())
        return;
    json->insert(s_filter, page.filter);
    json->insert(s_filterMatchesCase, page.filterRules.matchesCase);
    json->insert(s_filterWholeWords, page.filterRules.wholeWords);
    json->insert(s_filterIsExpression, page.filterRules.isExpression);
}

void readOrderAndFilter(const QJsonObject &json, PageState *page)
{
    page->sortColumn = qMax(-1, json[s_sortColumn].toInt(-1));
    if (json[s_isDescending].toBool())
        page->sortOrder = Qt::DescendingOrder;
    page->own = json[s_own].toString();
    page->filter = json[s_filter].toString();
    page->filterRules = {json[s_filterMatchesCase].toBool(), json[s_filterWholeWords].toBool(),
                         json[s_filterIsExpression].toBool()};
}

QJsonArray toJson(const QList<int> &numbers)
{
    QJsonArray json;
    for (const int number : numbers)
        json.append(number);
    return json;
}

QJsonObject toJson(const PageState &page)
{
    QJsonObject json {
        {s_path, page.path},
        {s_isFollowing, page.isFollowing},
        {s_line, page.line},
        {s_columnCount, page.columnCount},
        {s_columns, toText(page.columns)},
        {s_grouped, toJson(page.grouped)},
        {s_format, toJson(page.format)},
    };
    addOrderAndFilter(&json, page);
    return json;
}

PageState pageFrom(const QJsonObject &json)
{
    PageState page;
    page.path = json[s_path].toString();
    page.isFollowing = json[s_isFollowing].toBool(true);
    page.line = qMax(0, json[s_line].toInt());
    page.columnCount = qMax(0, json[s_columnCount].toInt());
    page.columns = fromText(json[s_columns]);
    const QJsonArray grouped = json[s_grouped].toArray();
    for (const QJsonValue column : grouped)
        page.grouped.append(column.toInt());
    page.format = formatFrom(json[s_format].toObject());
    readOrderAndFilter(json, &page);
    return page;
}

QJsonObject toJson(const SavedWindow &window)
{
    QJsonArray pages;
    for (const PageState &page : window.pages)
        pages.append(toJson(page));
    return {
        {s_geometry, toText(window.geometry)},
        {s_pages, pages},
        {s_current, window.current},
    };
}

SavedWindow windowFrom(const QJsonObject &json)
{
    SavedWindow window;
    window.geometry = fromText(json[s_geometry]);
    const QJsonArray pages = json[s_pages].toArray();
    for (const QJsonValue page : pages) {
        const PageState state = pageFrom(page.toObject());
        if (!state.path.isEmpty())
            window.pages.append(state);
    }
    const int last = qMax(0, int(window.pages.size()) - 1);
    window.current = qBound(0, json[s_current].toInt(), last);
    return window;
}

} // namespace

QList<SavedWindow> SavedSession::load()
{
    const QByteArray text = QSettings().value(s_key).toString().toUtf8();
    const QJsonArray json = QJsonDocument::fromJson(text).array();
    QList<SavedWindow> windows;
    for (const QJsonValue window : json)
        windows.append(windowFrom(window.toObject()));
    return windows;
}

void SavedSession::save(const QList<SavedWindow> &windows)
{
    QJsonArray json;
    for (const SavedWindow &window : windows)
        json.append(toJson(window));
    const QByteArray text = QJsonDocument(json).toJson(QJsonDocument::Compact);
    QSettings().setValue(s_key, QString::fromUtf8(text));
}
