// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "itemdelegate.h"

#include "cells/picturekeys_p.h"
#include "celltext_p.h"
#include "hexstring.h"
#include "pixels/background_p.h"
#include "pixels/painttraits_p.h"
#include "pixels/picture_p.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QDataStream>
#include <QDateTime>
#include <QLineEdit>
#include <QMetaMethod>
#include <QMetaProperty>
#include <QPainter>
#include <QPixmapCache>
#include <QPointer>
#include <QStyle>
#include <QToolTip>

#include <cmath>
#include <typeinfo>
#include <utility>

namespace {

//! QColor::name() as an operand of operator%.
struct ColorName
{
    QRgb rgb;
};

} // namespace

template<> struct QConcatenable<ColorName>
{
    using type = ColorName;
    using ConvertTo = QString;
    enum {
        ExactSize = true
    };
    static constexpr qsizetype size(ColorName /*name*/) { return 7; }
    static void appendTo(ColorName name, QChar *&out)
    {
        constexpr char16_t digits[] = u"0123456789abcdef";
        *out++ = QChar(u'#');
        for (int shift = 20; shift >= 0; shift -= 4)
            *out++ = QChar(digits[(name.rgb >> shift) & 0xf]);
    }
};

namespace Vantix {
namespace {

QStyle *styleOf(const QStyleOptionViewItem &opt)
{
    return opt.widget ? opt.widget->style() : QApplication::style();
}

struct StyleMargin
{
    QPointer<QStyle> style;
    int margin = 0;
};

//! Space left and right of a text, remembered for the last style.
int marginOf(QStyle *style)
{
    auto &known = CellText::perApplication<StyleMargin>();
    if (known.style != style)
        known = {style, style->pixelMetric(QStyle::PM_FocusFrameHMargin)};
    return known.margin;
}

quint64 brushKey(const QBrush &brush)
{
    if (brush.style() == Qt::TexturePattern)
        return quint64(brush.texture().cacheKey());
    return quint64(brush.style());
}

//! Whether the colour of a brush shows and lets something through.
bool isTransparent(const QBrush &brush)
{
    const bool hasColor = brush.style() != Qt::TexturePattern || brush.texture().isQBitmap();
    return hasColor && brush.color().alpha() != 255;
}

//! What cacheKey() leaves out of a brush: gradients, transparency and transformations.
QString brushExtension(const QBrush &brush)
{
    if (brush.style() == Qt::NoBrush)
        return {};
    const bool isGradient = brush.gradient() != nullptr;
    if (!isGradient && !isTransparent(brush) && brush.transform().isIdentity())
        return {};
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    if (isGradient)
        stream << brush;
    else
        stream << brush.color() << brush.transform();
    return QLatin1Char('B') + QString::fromLatin1(bytes.toHex());
}

//! The colour group that goes with a state, as views set it.
QPalette::ColorGroup usualGroup(QStyle::State state)
{
    if (!(state & QStyle::State_Enabled))
        return QPalette::Disabled;
    return state & QStyle::State_Active ? QPalette::Active : QPalette::Inactive;
}

//! Painters on widgets take the application's direction, not the widget's, which is in
//! the option. One that was set on the painter counts.
Qt::LayoutDirection directionOf(const QPainter &painter, const QStyleOptionViewItem &opt)
{
    const Qt::LayoutDirection direction = painter.layoutDirection();
    if (direction == Qt::LayoutDirectionAuto)
        return opt.direction == Qt::RightToLeft ? Qt::RightToLeft : direction;
    return direction == QGuiApplication::layoutDirection() ? opt.direction : direction;
}

//! Where pictures are painted.
struct Scratch
{
    QImage image;
};

//! Whether the painter moves by whole units, if at all.
bool isMovedByWholes(const QPainter &painter)
{
    const QTransform &transform = painter.worldTransform();
    return transform.type() <= QTransform::TxTranslate
        && transform.dx() == std::floor(transform.dx())
        && transform.dy() == std::floor(transform.dy());
}

//! Where the pixels of a line of width 1 begin, left of or above its coordinate; −1 if
//! that is not as simple as whole pixels.
double lineOffset(const QPainter &painter)
{
    if (!isMovedByWholes(painter)
        || painter.compositionMode() != QPainter::CompositionMode_SourceOver
        || painter.testRenderHint(QPainter::Antialiasing)) {
        return -1;
    }
    const double ratio = painter.device()->devicePixelRatioF();
    if (ratio == 1.0)
        return 0;
    return ratio == 2.0 ? 0.5 : -1;
}

QStyle::StateFlag markOf(Qt::CheckState state)
{
    switch (state) {
    case Qt::Unchecked:
        return QStyle::State_Off;
    case Qt::PartiallyChecked:
        return QStyle::State_NoChange;
    case Qt::Checked:
        return QStyle::State_On;
    }
    return QStyle::State_None;
}

//! The palette's colour group, if it is not the usual one and the frame shows that.
QString frameExtension(const QStyleOptionViewItem &opt)
{
    const QPalette::ColorGroup current = opt.palette.currentColorGroup();
    const QPalette::ColorGroup usual = usualGroup(opt.state);
    if (current == usual
        || opt.palette.color(current, QPalette::Mid) == opt.palette.color(usual, QPalette::Mid)) {
        return {};
    }
    return QLatin1Char('G') + QString::number(current);
}

//! A decoration as an icon that fills \a size if it has no size of its own.
QIcon iconOf(const QVariant &decoration, const QSize &size, double dpr)
{
    switch (decoration.metaType().id()) {
    case QMetaType::QColor: {
        QPixmap pixmap((QSizeF(size) * dpr).toSize());
        pixmap.fill(qvariant_cast<QColor>(decoration));
        pixmap.setDevicePixelRatio(dpr);
        return QIcon(pixmap);
    }
    case QMetaType::QPixmap:
        return QIcon(qvariant_cast<QPixmap>(decoration));
    case QMetaType::QImage:
        return QIcon(QPixmap::fromImage(qvariant_cast<QImage>(decoration)));
    default:
        return qvariant_cast<QIcon>(decoration);
    }
}

//! What is shown for a null value, as a database gives for what was not filled in. The option
//! has no text then.
QString nullExtension(const StyledItemDelegate &delegate, const QStyleOptionViewItem &opt,
                      const QModelIndex &index)
{
    const QString text = delegate.displayText(index.data(Qt::DisplayRole), opt.locale);
    return text.isEmpty() ? text : QLatin1Char('N') + text;
}

PictureKeys &pictureKeys()
{
    static PictureKeys keys;
    return keys;
}

//! This delegate draws pictures of texts, which know no place, and cut them off by itself.
//! A derived one may ask what it paints on.
PaintTraits paintTraits(const QAbstractItemDelegate *delegate)
{
    const auto *own = qobject_cast<const ItemDelegate *>(delegate);
    if (!own)
        return {};
    return {true, !own->drawsIndicator(), typeid(*own) == typeid(ItemDelegate)};
}

} // namespace

ItemDelegate::ItemDelegate(QAbstractItemView *view)
    : StyledItemDelegate(view)
{
    PaintTraits::setReader(paintTraits);
}

ItemDelegate::~ItemDelegate() = default;

void ItemDelegate::setDrawFrame(bool on)
{
    m_drawFrame = on;
}

void ItemDelegate::setDrawIndicator(bool on)
{
    m_drawIndicator = on;
}

// Painting

void ItemDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                         const QModelIndex &index) const
{
    QStyleOptionViewItem opt = option;
    initStyleOption(&opt, index);
    if (opt.rect.isEmpty())
        return;
    const QPalette::ColorGroup group = colorGroup(opt);
    const bool isInPlace = m_drawIndicator || !hasPlainCell(opt, group);
    // A picture on its own leaves the painter as it was.
    const bool isPainterChanged = isInPlace || !m_drawFrame;
    if (isPainterChanged)
        painter->save();
    if (!m_drawFrame)
        painter->setClipRect(option.rect, Qt::ReplaceClip);
    else if (isInPlace && !m_drawIndicator)
        painter->setClipRect(option.rect, Qt::IntersectClip); // as a picture ends there
    if (isInPlace) {
        painter->setLayoutDirection(directionOf(*painter, opt));
        drawCell(painter, opt, index);
    } else {
        drawPicture(painter, &opt, index, group);
    }
    if (isPainterChanged)
        painter->restore();
}

void ItemDelegate::drawCell(QPainter *painter, const QStyleOptionViewItem &opt,
                            const QModelIndex &index) const
{
    drawBackground(painter, opt);
    drawContents(painter, opt, index);
    if (m_drawFrame)
        drawFrame(painter, opt);
}

//! Draws the cell from the cache; on the way \a opt may be changed.
void ItemDelegate::drawPicture(QPainter *painter, QStyleOptionViewItem *opt,
                               const QModelIndex &index, QPalette::ColorGroup group) const
{
    const double dpr = pixelRatio(*opt);
    const Qt::LayoutDirection direction = directionOf(*painter, *opt);
    const QPointF place = opt->rect.topLeft();
    QString key = cacheKey(*opt, dpr);
    extendKey(&key, *opt, index, group, direction);
    QPixmap pixmap;
    if (!QPixmapCache::find(key, &pixmap)) {
        opt->rect.moveTo(0, 0);
        pixmap = render(*opt, index, dpr, direction);
        pictureKeys().insert(key, pixmap);
    }
    painter->drawPixmap(place, pixmap);
}

QPixmap ItemDelegate::render(const QStyleOptionViewItem &opt, const QModelIndex &index, double dpr,
                             Qt::LayoutDirection direction) const
{
    const QSize size = (QSizeF(opt.rect.size()) * dpr).toSize();
    if (size.isEmpty())
        return {};
    // Painted in memory that is at hand; a new image would mostly be out of the
    // processor's cache. Taken, because painting may paint another cell.
    auto &kept = CellText::perApplication<Scratch>();
    QImage scratch = std::exchange(kept.image, QImage());
    if (scratch.size() != size)
        scratch = QImage(size, QImage::Format_ARGB32_Premultiplied);
    scratch.setDevicePixelRatio(dpr);
    scratch.fill(Qt::transparent);
    QPainter painter(&scratch);
    painter.setLayoutDirection(direction);
    drawCell(&painter, opt, index);
    painter.end();
    kept.image = std::move(scratch);
    return pictureOf(kept.image);
}

QString ItemDelegate::cacheKey(const QStyleOptionViewItem &option, double dpr) const
{
    using Byte = HexString<unsigned char>;
    using Word = HexString<unsigned int>;
    using Long = HexString<unsigned long long>;
    const QBrush &background = option.backgroundBrush;
    const QString font = CellText::fontText(option.font);
    return QLatin1String("ID:") % option.text % Word {unsigned(option.state.toInt())} % font
        % Word {unsigned(int(dpr * 1000))} % Word {unsigned(option.rect.width())}
    % Word {unsigned(option.rect.height())} % Word {unsigned(option.displayAlignment.toInt())}
    % Long {brushKey(background)} % ColorName {background.color().rgb()}
    % Word {unsigned(option.features.toInt())} % Word {unsigned(option.checkState)}
    % Byte {option.showDecorationSelected} % Byte {m_drawFrame} % Byte {m_drawIndicator}
    % Long {quint64(option.palette.cacheKey())};
}

void ItemDelegate::extendKey(QString *key, const QStyleOptionViewItem &opt,
                             const QModelIndex &index, QPalette::ColorGroup group,
                             Qt::LayoutDirection direction) const
{
    constexpr int usualMargin = 2;
    const int margin = marginOf(styleOf(opt));
    if (opt.backgroundBrush.style() != Qt::NoBrush)
        *key += brushExtension(opt.backgroundBrush);
    if (margin != usualMargin)
        *key += QLatin1Char('M') + QString::number(margin);
    if (m_drawFrame)
        *key += frameExtension(opt);
    if (group == QPalette::Disabled)
        *key += QLatin1Char('D');
    if (direction == Qt::RightToLeft)
        *key += QLatin1Char('R');
    else if (direction == Qt::LayoutDirectionAuto && opt.text.isRightToLeft())
        *key += QLatin1Char('A');
    if (!(opt.features & QStyleOptionViewItem::HasDisplay))
        *key += nullExtension(*this, opt, index);
    *key += narrowTime(opt, index, margin);
}

//! What a narrow column shows of a date-time: more than the text in the option tells.
QString ItemDelegate::narrowTime(const QStyleOptionViewItem &opt, const QModelIndex &index,
                                 int margin) const
{
    const int width = textRect(opt, index).width() - 2 * margin;
    if (!isTimeOnly(CellText::metricsOf(opt.font), width))
        return {};
    const QVariant value = index.data(Qt::DisplayRole);
    if (value.metaType() != QMetaType::fromType<QDateTime>())
        return {};
    return QLatin1Char('T') + dateTimeToShortText(value.toDateTime());
}

QRect ItemDelegate::indicatorRectByStyle(const QStyleOptionViewItem &opt)
{
    QStyle *style = styleOf(opt);
    const int margin = marginOf(style);
    const int width = style->pixelMetric(QStyle::PM_IndicatorWidth, &opt, opt.widget);
    const int height = style->pixelMetric(QStyle::PM_IndicatorHeight, &opt, opt.widget);
    return {opt.rect.left() + margin, opt.rect.top() + (opt.rect.height() - height) / 2, width,
            height};
}

QRect ItemDelegate::indicatorRect(const QStyleOptionViewItem &opt, const QModelIndex &index) const
{
    if (!m_drawIndicator)
        return {};
    if ((opt.features & QStyleOptionViewItem::HasCheckIndicator)
        || index.data(Qt::DecorationRole).isValid()) {
        return indicatorRectByStyle(opt);
    }
    return {};
}

QRect ItemDelegate::textRect(const QStyleOptionViewItem &opt, const QModelIndex &index) const
{
    QRect rect = opt.rect;
    if (!m_drawIndicator)
        return rect;
    const QRect indicator = indicatorRect(opt, index);
    if (!indicator.isNull())
        rect.setLeft(indicator.right() + 1);
    return rect;
}

void ItemDelegate::drawBackground(QPainter *painter, const QStyleOptionViewItem &opt) const
{
    if (opt.backgroundBrush.style() != Qt::NoBrush) {
        painter->fillRect(opt.rect, opt.backgroundBrush);
        return;
    }
    const QPalette::ColorRole role = backgroundRoleOf(opt);
    // What the view itself shows behind its cells is not painted over.
    if (role == QPalette::Base && !isPlainBehind(opt.widget))
        return;
    const QBrush &brush = opt.palette.brush(colorGroup(opt), role);
    if (brush.style() == Qt::SolidPattern)
        painter->fillRect(opt.rect, brush.color());
    else
        painter->fillRect(opt.rect, brush);
}

void ItemDelegate::drawContents(QPainter *p, const QStyleOptionViewItem &opt,
                                const QModelIndex &index) const
{
    if (m_drawIndicator)
        drawIndicator(p, opt, index);
    drawText(p, opt, index);
}

void ItemDelegate::drawIndicator(QPainter *painter, const QStyleOptionViewItem &opt,
                                 const QModelIndex &index) const
{
    if (opt.features & QStyleOptionViewItem::HasCheckIndicator) {
        QStyleOptionViewItem check = opt;
        check.rect = indicatorRect(opt, index);
        check.state &= ~QStyle::State_HasFocus;
        check.state |= markOf(opt.checkState);
        styleOf(opt)->drawPrimitive(QStyle::PE_IndicatorItemViewItemCheck, &check, painter,
                                    opt.widget);
        return;
    }
    const QVariant decoration = index.data(Qt::DecorationRole);
    const QRect rect = indicatorRect(opt, index);
    if (!decoration.isValid() || rect.isEmpty())
        return;
    iconOf(decoration, rect.size(), painter->device()->devicePixelRatioF())
        .paint(painter, rect, Qt::AlignCenter, QIcon::Normal, QIcon::Off);
}

void ItemDelegate::drawText(QPainter *painter, const QStyleOptionViewItem &opt,
                            const QModelIndex &index) const
{
    const QRect rect = textRect(opt, index);
    const QVariant value = index.data(Qt::DisplayRole);
    if (rect == opt.rect) {
        drawCustomText(painter, opt, value);
        return;
    }
    QStyleOptionViewItem textOption = opt;
    textOption.rect = rect;
    drawCustomText(painter, textOption, value);
}

void ItemDelegate::drawCustomText(QPainter *painter, const QStyleOptionViewItem &opt,
                                  const QVariant &value) const
{
    const QPalette::ColorRole role =
        opt.state & QStyle::State_Selected ? QPalette::HighlightedText : QPalette::Text;
    painter->setPen(opt.palette.color(colorGroup(opt), role));
    QFont font = opt.font;
    // The painter would fill up what is not resolved from its device's font.
    font.setResolveMask(QFont::AllPropertiesResolved);
    painter->setFont(font);

    const int margin = marginOf(styleOf(opt));
    const QRect rect = opt.rect.adjusted(margin, 0, -margin, 0);
    CellText::Line line(painter);
    const QString text =
        displayElidedText(value, opt.locale, line.metrics(), Qt::ElideRight, rect.width());
    line.draw(rect, opt.displayAlignment, text);
}

void ItemDelegate::drawFrame(QPainter *painter, const QStyleOptionViewItem &opt) const
{
    const QRect outline = opt.rect.translated(-1, -1);
    const QColor color = opt.palette.color(QPalette::Current, QPalette::Mid);
    const double offset = lineOffset(*painter);
    if (offset < 0 || color.alpha() != 255) {
        painter->setPen(color);
        painter->setBrush(Qt::NoBrush);
        painter->drawRects(&outline, 1);
        return;
    }
    // The same pixels at a fraction of the cost. The joints of a line of two pixels
    // leave out the outermost pixel of the left corners.
    const double joint = offset;
    const QRectF whole = QRectF(outline).adjusted(-offset, -offset, 1 - offset, 1 - offset);
    const QRectF horizontal(whole.left() + joint, whole.top(), whole.width() - joint, 1);
    const QRectF vertical(whole.left(), whole.top() + joint, 1, whole.height() - 2 * joint);
    painter->fillRect(horizontal, color);
    painter->fillRect(horizontal.translated(0, whole.height() - 1), color);
    painter->fillRect(vertical, color);
    painter->fillRect(vertical.translated(whole.width() - 1, 0), color);
}

QSize ItemDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const QSize size = StyledItemDelegate::sizeHint(option, index);
    if (!m_drawIndicator)
        return size;
    const QStyle *style = styleOf(option);
    const QSize indicator(style->pixelMetric(QStyle::PM_IndicatorWidth, &option, option.widget),
                          style->pixelMetric(QStyle::PM_IndicatorHeight, &option, option.widget));
    return size.expandedTo(indicator + QSize(2, 2));
}

const QWidget *ItemDelegate::parentWidget() const
{
    return qobject_cast<const QWidget *>(parent());
}

//! The palette's brush behind a cell that the model gives none.
QPalette::ColorRole ItemDelegate::backgroundRoleOf(const QStyleOptionViewItem &opt)
{
    if (opt.showDecorationSelected && (opt.state & QStyle::State_Selected))
        return QPalette::Highlight;
    return opt.features & QStyleOptionViewItem::Alternate ? QPalette::AlternateBase
                                                          : QPalette::Base;
}

//! Whether what is behind the cell is one colour, so that a picture of it can be kept.
bool ItemDelegate::hasPlainCell(const QStyleOptionViewItem &opt, QPalette::ColorGroup group)
{
    if (!isPlainBehind(opt.widget))
        return false;
    return opt.backgroundBrush.style() != Qt::NoBrush
        || opt.palette.brush(group, backgroundRoleOf(opt)).style() == Qt::SolidPattern;
}

QPalette::ColorGroup ItemDelegate::colorGroup(const QStyleOptionViewItem &opt) const
{
    const QWidget *widget = parentWidget();
    const bool isEnabled = widget ? widget->isEnabled() : bool(opt.state & QStyle::State_Enabled);
    if (!isEnabled)
        return QPalette::Disabled;
    return opt.state & QStyle::State_Active ? QPalette::Active : QPalette::Inactive;
}

double ItemDelegate::pixelRatio(const QStyleOptionViewItem &opt) const
{
    const QWidget *widget = opt.widget ? opt.widget : parentWidget();
    return widget ? widget->devicePixelRatioF() : 1.0;
}

// Editing

QWidget *ItemDelegate::createEditor(QWidget *parent, const QStyleOptionViewItem &option,
                                    const QModelIndex &index) const
{
    QWidget *editor = QStyledItemDelegate::createEditor(parent, option, index);
    if (auto *lineEdit = qobject_cast<QLineEdit *>(editor)) {
        QStyleOptionViewItem opt = option;
        initStyleOption(&opt, index);
        lineEdit->setAlignment(opt.displayAlignment);
    }
    return editor;
}

void ItemDelegate::setModelData(QWidget *editor, QAbstractItemModel *model,
                                const QModelIndex &index) const
{
    QVariant value;
    if (const auto *lineEdit = qobject_cast<QLineEdit *>(editor)) {
        value = lineEdit->text();
    } else {
        const QMetaProperty property = editor->metaObject()->userProperty();
        if (property.isValid())
            value = editor->property(property.name());
    }
    if (value.isValid())
        commitModelData(editor, model, index, value, Qt::EditRole);
    else
        QStyledItemDelegate::setModelData(editor, model, index);
}

void ItemDelegate::updateEditorGeometry(QWidget *editor, const QStyleOptionViewItem &option,
                                        const QModelIndex &index) const
{
    editor->setGeometry(textRect(option, index));
}

void ItemDelegate::commitModelData(QWidget *editor, QAbstractItemModel *model,
                                   const QModelIndex &index, const QVariant &value, int role) const
{
    QString reason;
    try {
        if (model->setData(index, value, role))
            return;
    } catch (const QString &thrown) {
        reason = thrown;
    }
    QString message = tr("Невозможно завершить редактирование.");
    if (!reason.isEmpty())
        message += QLatin1Char('\n') + reason;

    const QByteArray signature = QMetaObject::normalizedSignature("showToolTip(QString,QPoint)");
    const int method = metaObject()->indexOfMethod(signature.constData());
    if (method < 0)
        return;
    // The editor closes after a refusal; the tool tip must come after that.
    const QPoint position = editor->mapToGlobal(QPoint(0, editor->height()));
    metaObject()->method(method).invoke(const_cast<ItemDelegate *>(this), Qt::QueuedConnection,
                                        Q_ARG(QString, message), Q_ARG(QPoint, position));
}

void ItemDelegate::showToolTip(const QString &msg, const QPoint &pos) const
{
    QToolTip::showText(pos, msg, qobject_cast<QWidget *>(parent()), QRect(), -1);
}

} // namespace Vantix
