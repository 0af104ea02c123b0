// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef FORMATMENU_H
#define FORMATMENU_H

#include "files/delimiter.h"

#include <QMenu>

class QActionGroup;

//! A menu of what a file can be taken for: its encoding, its columns, its first line. Each is
//! recognised unless it is chosen.
class FormatMenu : public QMenu
{
    Q_OBJECT

public:
    explicit FormatMenu(QWidget *parent);

    //! Checks what is asked for in \a request.
    void show(const FormatRequest &request);
    //! What a text with columns that are separated by \a delimiter is called.
    static QString delimiterName(QChar delimiter);
    //! What a log is called.
    static QString logName(LogFormat::Kind kind);

Q_SIGNALS:
    //! The user asks for \a request.
    void chosen(const FormatRequest &request);

private:
    QActionGroup *addGroup(const QString &title);
    QAction *addChoice(QActionGroup *group, const QString &text, const QVariant &data);
    void choose();

    FormatRequest m_request;    //!< what is checked
    QActionGroup *m_encodings;  //!< names of encodings; none for the recognised one
    QActionGroup *m_delimiters; //!< QChar, or int of a LogFormat::Kind; none if recognised
    QActionGroup *m_headers;    //!< bool; none for what is recognised
};

#endif // FORMATMENU_H
