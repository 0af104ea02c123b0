// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "formatmenu.h"

#include <QAction>
#include <QActionGroup>
#include <QVariant>

namespace {

using Kind = LogFormat::Kind;

} // namespace

FormatMenu::FormatMenu(QWidget *parent)
    : QMenu(tr("For&mat"), parent)
    , m_encodings(addGroup(tr("&Encoding")))
    , m_delimiters(addGroup(tr("&Columns")))
    , m_headers(addGroup(tr("&First Line")))
{
    for (const char *name :
         {"UTF-8", "UTF-16LE", "UTF-16BE", "UTF-32LE", "UTF-32BE", "Latin-1", "Windows-1252"})
        addChoice(m_encodings, QLatin1String(name), QString::fromLatin1(name));
    for (const QChar delimiter : {u',', u';', u'\t', u'|', u' ', u'\0'})
        addChoice(m_delimiters, delimiterName(delimiter), delimiter);
    for (const Kind kind :
         {Kind::JsonLines, Kind::Logfmt, Kind::AccessLog, Kind::Syslog, Kind::Journal})
        addChoice(m_delimiters, logName(kind), int(kind));
    addChoice(m_headers, tr("Names the Columns"), true);
    addChoice(m_headers, tr("Is a Row"), false);
}

//! A submenu, with the choice to leave it to the program.
QActionGroup *FormatMenu::addGroup(const QString &title)
{
    auto *group = new QActionGroup(addMenu(title));
    addChoice(group, tr("&Recognised"), QVariant());
    connect(group, &QActionGroup::triggered, this, &FormatMenu::choose);
    return group;
}

QAction *FormatMenu::addChoice(QActionGroup *group, const QString &text, const QVariant &data)
{
    auto *menu = qobject_cast<QMenu *>(group->parent());
    QAction *action = group->addAction(menu->addAction(text));
    action->setCheckable(true);
    action->setData(data);
    return action;
}

QString FormatMenu::delimiterName(QChar delimiter)
{
    switch (delimiter.unicode()) {
    case u'\0':
        return tr("no columns");
    case u',':
        return tr("comma");
    case u';':
        return tr("semicolon");
    case u'\t':
        return tr("tab");
    case u'|':
        return tr("pipe");
    case u' ':
        return tr("space");
    default:
        return QString(delimiter);
    }
}

QString FormatMenu::logName(LogFormat::Kind kind)
{
    switch (kind) {
    case Kind::None:
        break;
    case Kind::JsonLines:
        return tr("JSON lines");
    case Kind::Logfmt:
        return tr("logfmt");
    case Kind::AccessLog:
        return tr("access log");
    case Kind::Syslog:
        return tr("syslog");
    case Kind::Journal:
        return tr("journal");
    }
    return tr("no columns");
}

void FormatMenu::show(const FormatRequest &request)
{
    m_request = request;
    const QList<QAction *> encodings = m_encodings->actions();
    for (QAction *action : encodings) {
        const QString name = action->data().toString();
        action->setChecked(request.encoding == Encoding::named(name));
    }
    const QVariant delimiter = request.delimiter ? QVariant(*request.delimiter)
        : request.log                            ? QVariant(int(*request.log))
                                                 : QVariant();
    const QList<QAction *> delimiters = m_delimiters->actions();
    for (QAction *action : delimiters)
        action->setChecked(action->data() == delimiter);
    const QVariant header = request.hasHeader ? QVariant(*request.hasHeader) : QVariant();
    const QList<QAction *> headers = m_headers->actions();
    for (QAction *action : headers)
        action->setChecked(action->data() == header);
}

void FormatMenu::choose()
{
    const auto chosenOf = [](const QActionGroup *group) {
        return group->checkedAction() ? group->checkedAction()->data() : QVariant();
    };
    const QVariant encoding = chosenOf(m_encodings);
    const QVariant delimiter = chosenOf(m_delimiters);
    const QVariant header = chosenOf(m_headers);
    // What cannot be chosen here, as another encoding, stays as it was asked for.
    if (m_encodings->checkedAction())
        m_request.encoding = Encoding::named(encoding.toString());
    if (m_delimiters->checkedAction()) {
        const bool isLog = delimiter.typeId() == QMetaType::Int;
        m_request.log = isLog ? std::optional(Kind(delimiter.toInt())) : std::nullopt;
        m_request.delimiter =
            delimiter.isValid() && !isLog ? std::optional(delimiter.toChar()) : std::nullopt;
    }
    m_request.hasHeader = header.isValid() ? std::optional(header.toBool()) : std::nullopt;
    Q_EMIT chosen(m_request);
}
