// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef DELEGATECELLS_H
#define DELEGATECELLS_H

#include "itemdelegate.h"

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QPixmap>
#include <QPixmapCache>
#include <QStandardItemModel>
#include <QStyle>
#include <QStyleOptionViewItem>
#include <QStyledItemDelegate>

using Vantix::ItemDelegate;

constexpr QSize cellSize(120, 24);

//! Notes which steps run.
class NotingDelegate : public ItemDelegate
{
public:
    using ItemDelegate::ItemDelegate;

    QString cacheKey(const QStyleOptionViewItem &option, double dpr) const override
    {
        return noted("cacheKey",
                     m_marksKeys ? QStringLiteral("ID:mine") : ItemDelegate::cacheKey(option, dpr));
    }
    QRect indicatorRect(const QStyleOptionViewItem &opt, const QModelIndex &index) const override
    {
        return noted("indicatorRect", ItemDelegate::indicatorRect(opt, index));
    }
    QRect textRect(const QStyleOptionViewItem &opt, const QModelIndex &index) const override
    {
        return noted("textRect", ItemDelegate::textRect(opt, index));
    }
    void drawBackground(QPainter *painter, const QStyleOptionViewItem &opt) const override
    {
        m_steps.append("drawBackground");
        ItemDelegate::drawBackground(painter, opt);
    }
    void drawContents(QPainter *p, const QStyleOptionViewItem &opt,
                      const QModelIndex &index) const override
    {
        m_steps.append("drawContents");
        ItemDelegate::drawContents(p, opt, index);
    }
    void drawIndicator(QPainter *painter, const QStyleOptionViewItem &opt,
                       const QModelIndex &index) const override
    {
        m_steps.append("drawIndicator");
        ItemDelegate::drawIndicator(painter, opt, index);
    }
    void drawText(QPainter *painter, const QStyleOptionViewItem &opt,
                  const QModelIndex &index) const override
    {
        m_steps.append("drawText");
        ItemDelegate::drawText(painter, opt, index);
    }
    void drawCustomText(QPainter *painter, const QStyleOptionViewItem &opt,
                        const QVariant &value) const override
    {
        m_steps.append("drawCustomText");
        ItemDelegate::drawCustomText(painter, opt, value);
    }
    void drawFrame(QPainter *painter, const QStyleOptionViewItem &opt) const override
    {
        m_steps.append("drawFrame");
        ItemDelegate::drawFrame(painter, opt);
    }

    int count(const char *step) const { return int(m_steps.count(QByteArray(step))); }

    mutable QList<QByteArray> m_steps;
    bool m_marksKeys = false;

private:
    template<typename T> T noted(const char *step, const T &result) const
    {
        m_steps.append(step);
        return result;
    }
};

//! A model of one cell, and how a view would show it.
struct Cell
{
    explicit Cell(const QHash<int, QVariant> &roles = {{Qt::DisplayRole, QStringLiteral("cell")}})
    {
        for (auto it = roles.begin(); it != roles.end(); ++it)
            model.setData(index(), it.value(), it.key());
        option.rect = QRect(QPoint(11, 7), cellSize);
        option.state = QStyle::State_Enabled | QStyle::State_Active;
        option.displayAlignment = Qt::AlignLeft | Qt::AlignVCenter;
        option.palette = QApplication::palette();
    }

    QModelIndex index() const { return model.index(0, 0); }
    QStyleOptionViewItem initialised(const ItemDelegate &delegate) const
    {
        QStyleOptionViewItem opt = option;
        delegate.initStyleOption(&opt, index());
        return opt;
    }

    QStandardItemModel model {1, 1};
    QStyleOptionViewItem option;
};

inline QImage canvas(double ratio = 1)
{
    QImage image(int(200 * ratio), int(60 * ratio), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::magenta);
    return image;
}

inline QImage painted(const ItemDelegate &delegate, const Cell &cell,
                      Qt::LayoutDirection direction = Qt::LeftToRight, double ratio = 1)
{
    QImage image = canvas(ratio);
    QPainter painter(&image);
    painter.setLayoutDirection(direction);
    delegate.paint(&painter, cell.option, cell.index());
    return image;
}

inline int marginOfStyle()
{
    return QApplication::style()->pixelMetric(QStyle::PM_FocusFrameHMargin);
}

//! The cell, step by step in the plainest way.
inline QImage plainlyPainted(const Cell &cell, const QString &value,
                             Qt::LayoutDirection direction = Qt::LeftToRight, double ratio = 1)
{
    const QStyleOptionViewItem opt = cell.initialised(ItemDelegate(nullptr));
    const QString text = QStyledItemDelegate().displayText(value, opt.locale);
    QPixmap pixmap(qRound(opt.rect.width() * ratio), qRound(opt.rect.height() * ratio));
    pixmap.fill(Qt::transparent);
    pixmap.setDevicePixelRatio(ratio);
    const QRect rect(QPoint(0, 0), opt.rect.size());
    QPainter p(&pixmap);
    p.setLayoutDirection(direction);
    p.fillRect(rect, opt.palette.color(QPalette::Active, QPalette::Base));
    p.setPen(opt.palette.color(QPalette::Active, QPalette::Text));
    p.setFont(opt.font);
    const int margin = marginOfStyle();
    const QRect inner = rect.adjusted(margin, 0, -margin, 0);
    p.drawText(inner, int(opt.displayAlignment),
               p.fontMetrics().elidedText(text, Qt::ElideRight, inner.width()));
    p.setPen(opt.palette.color(QPalette::Active, QPalette::Mid));
    p.drawLine(rect.topRight(), rect.bottomRight());
    p.drawLine(rect.bottomLeft(), rect.bottomRight());
    p.end();

    QImage image = canvas(ratio);
    QPainter(&image).drawPixmap(opt.rect.topLeft(), pixmap);
    return image;
}

inline bool isCached(const QString &key, QPixmap *pixmap = nullptr)
{
    QPixmap found;
    const bool isFound = QPixmapCache::find(key, &found);
    if (pixmap)
        *pixmap = found;
    return isFound;
}

#endif // DELEGATECELLS_H
