// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef SCREENREADER_H
#define SCREENREADER_H

#include <QAccessible>
#include <QHeaderView>
#include <QScrollBar>
#include <QStringList>

#include <private/qguiapplication_p.h>
#include <qpa/qplatformaccessibility.h>
#include <qpa/qplatformintegration.h>

#include <utility>

//! What a screen reader hears while one of these lives. One at a time.
class ScreenReader
{
public:
    ScreenReader()
    {
        s_running = this;
        QAccessible::installUpdateHandler(hear);
        setListening(true);
    }
    ~ScreenReader()
    {
        setListening(false);
        QAccessible::installUpdateHandler(nullptr);
        s_running = nullptr;
    }
    Q_DISABLE_COPY_MOVE(ScreenReader)

    static void setListening(bool on)
    {
        QGuiApplicationPrivate::platformIntegration()->accessibility()->setActive(on);
    }

    //! What was heard, but of headers and scroll bars, since this was asked last.
    QStringList heard() { return std::exchange(m_heard, {}); }

    static QString nameOf(QAccessible::Event type)
    {
        switch (type) {
        case QAccessible::Focus:
            return QStringLiteral("focus");
        case QAccessible::SelectionAdd:
            return QStringLiteral("selected");
        case QAccessible::SelectionRemove:
            return QStringLiteral("deselected");
        case QAccessible::SelectionWithin:
            return QStringLiteral("selection");
        case QAccessible::NameChanged:
            return QStringLiteral("name");
        case QAccessible::StateChanged:
            return QStringLiteral("state");
        case QAccessible::TableModelChanged:
            return QStringLiteral("model");
        default:
            return QString::number(type, 16);
        }
    }

    //! "row,column" of a cell, else the role.
    static QString placeOf(QAccessibleInterface *thing)
    {
        const QAccessibleTableCellInterface *cell = thing ? thing->tableCellInterface() : nullptr;
        if (cell)
            return QStringLiteral("%1,%2").arg(cell->rowIndex()).arg(cell->columnIndex());
        return thing ? QStringLiteral("role %1").arg(thing->role(), 0, 16) : QString();
    }

private:
    static void hear(QAccessibleEvent *event)
    {
        const QObject *object = event->object();
        if (qobject_cast<const QHeaderView *>(object) || qobject_cast<const QScrollBar *>(object))
            return;
        QString text =
            nameOf(event->type()) + QLatin1Char(' ') + placeOf(event->accessibleInterface());
        if (event->type() == QAccessible::TableModelChanged) {
            const auto *change = static_cast<QAccessibleTableModelChangeEvent *>(event);
            text += QStringLiteral(" %1: %2-%3, %4-%5")
                        .arg(change->modelChangeType())
                        .arg(change->firstRow())
                        .arg(change->lastRow())
                        .arg(change->firstColumn())
                        .arg(change->lastColumn());
        }
        if (event->type() == QAccessible::StateChanged) {
            const auto *change = static_cast<QAccessibleStateChangeEvent *>(event);
            if (change->changedStates().checked)
                text += QStringLiteral(" checked");
            if (change->changedStates().busy)
                text += QStringLiteral(" busy");
        }
        s_running->m_heard.append(text);
    }

    inline static ScreenReader *s_running = nullptr;
    QStringList m_heard;
};

#endif // SCREENREADER_H
