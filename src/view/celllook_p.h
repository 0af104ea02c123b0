// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef CELLLOOK_P_H
#define CELLLOOK_P_H

#include <QAbstractItemDelegate>
#include <QFont>
#include <QLocale>
#include <QPointer>
#include <QStyle>
#include <QStyleOptionViewItem>

// What cells look like beside what the model, the selection and the current index say.
// Values: two that are equal paint alike.

//! A delegate, told from another one that was made at the same address.
class DelegateMark
{
public:
    DelegateMark(QAbstractItemDelegate *delegate = nullptr)
        : m_delegate(delegate)
        , m_hasDelegate(delegate)
    {
    }
    friend bool operator==(const DelegateMark &a, const DelegateMark &b)
    {
        return a.m_delegate == b.m_delegate && a.isGone() == b.isGone();
    }
    friend bool operator!=(const DelegateMark &a, const DelegateMark &b) { return !(a == b); }

private:
    bool isGone() const { return m_hasDelegate && !m_delegate; }

    QPointer<QAbstractItemDelegate> m_delegate;
    bool m_hasDelegate;
};

//! What the look of a column's cells depends on.
struct ColumnLook
{
    DelegateMark delegate;
    int position = 0; //!< QStyleOptionViewItem::ViewItemPosition

    friend bool operator==(const ColumnLook &a, const ColumnLook &b) = default;
};

//! What the look of every cell depends on.
struct CellLook
{
    QStyle::State state;
    qint64 palette = 0;
    qint64 background = 0;
    int colorGroup = 0;
    QFont font;
    QLocale locale;
    Qt::LayoutDirection direction = Qt::LeftToRight;
    Qt::TextElideMode elideMode = Qt::ElideRight;
    QSize decorationSize;
    QStyleOptionViewItem::ViewItemFeatures features;
    bool isAlternating = false;
    int selectionBehavior = 0;
    double devicePixelRatio = 1;
    int columnCount = 0;
    int hiddenColumnCount = 0;
    QPointer<QStyle> style;
    DelegateMark delegate;
    bool isInPlace = false;

    friend bool operator==(const CellLook &a, const CellLook &b) = default;
};

#endif // CELLLOOK_P_H
