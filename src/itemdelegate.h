// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef ITEMDELEGATE_H
#define ITEMDELEGATE_H

#include "styleditemdelegate.h"

namespace Vantix {

/*!
 * \brief Paints table cells from a cache of pictures, and explains refused edits.
 *
 * A cell is a background, a check mark or decoration if wanted, one line of elided
 * text, and the right and bottom line of the grid. It is painted once into a pixmap
 * that QPixmapCache keeps under cacheKey(); after that, painting a cell of the same
 * look is a look-up and a blit. Each step is a virtual function and is reached
 * through it, so that a subclass replaces one step. A subclass whose picture depends
 * on more than the option tells puts that into cacheKey().
 *
 * \b Limit of the cache. QPixmapCache holds 10 MB unless the application says
 * otherwise, and drops what was not used for longest. A table needs the bytes of all
 * cells in sight, and as much again for each page to scroll back to: columns × rows ×
 * width × height × 4 × (device pixel ratio)². 440 cells of 160 by 14 pixels are
 * 4 MB, 16 MB at a ratio of 2; a full screen of 60 rows with 3000 pixels of
 * columns is 10 MB, and wants QPixmapCache::setCacheLimit(40 * 1024) or more. With too
 * small a limit every cell is painted anew each time.
 *
 * The colour group of a cell: \b enabled is whether the delegate's parent is, if that
 * is a widget, else QStyle::State_Enabled; \b active is QStyle::State_Active. No other
 * code may keep pictures under keys that begin with "ID:".
 *
 * GUI thread only.
 *
 * \since 0.2
 */
class VANTIX_EXPORT ItemDelegate : public StyledItemDelegate
{
    Q_OBJECT

public:
    //! A delegate with \a view as its QObject parent, which may be null. Draws
    //! frames, no indicators.
    explicit ItemDelegate(QAbstractItemView *view);
    ~ItemDelegate() override;

    //! Whether each cell shows its right and bottom grid line, by default true.
    //! Without these lines, painting is clipped to the cell. Repaints nothing.
    void setDrawFrame(bool on);
    //! Whether check marks and decorations are shown, by default false. Cells are
    //! then painted directly, without pictures. Repaints nothing.
    void setDrawIndicator(bool on);
    //! What was set with these.
    //! @{
    bool drawsFrame() const { return m_drawFrame; }
    bool drawsIndicator() const { return m_drawIndicator; }
    //! @}

    //! Paints the cell \a index into \a option.rect. A cell without area paints
    //! nothing. Without indicators the picture is as fine as the device pixel ratio
    //! of \a option.widget, else that of the parent widget, else 1.
    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;

    //! The hint of StyledItemDelegate, with indicators at least the size of one and
    //! two pixels more. Text and indicator are not added up.
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

    //! Qt's editor for the cell, or null; a line edit is aligned as the cell is. The
    //! caller owns it.
    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option,
                          const QModelIndex &index) const override;

    //! Commits what the editor holds: the text of a line edit, else its user
    //! property, else what Qt would commit.
    void setModelData(QWidget *editor, QAbstractItemModel *model,
                      const QModelIndex &index) const override;

    //! Gives the editor the place of the text, right of an indicator.
    void updateEditorGeometry(QWidget *editor, const QStyleOptionViewItem &option,
                              const QModelIndex &index) const override;

    //! The key of a cell's picture: everything in \a option that the look depends
    //! on, save the position, for a device pixel ratio of \a dpr. \a option must
    //! have been initialised. paint() appends to it what it cannot tell: gradients,
    //! transparent or transformed brushes, a disabled parent, a palette of an unusual
    //! colour group, right-to-left painting, the time of a narrow date-time, the text of
    //! a null value.
    virtual QString cacheKey(const QStyleOptionViewItem &option, double dpr) const;

    //! Place of the check mark or decoration of a cell, in the coordinates of
    //! \a opt.rect. Null without one, or while no indicators are drawn.
    virtual QRect indicatorRect(const QStyleOptionViewItem &opt, const QModelIndex &index) const;

    //! Place of the text of a cell: all of it, or what is right of the indicator.
    virtual QRect textRect(const QStyleOptionViewItem &opt, const QModelIndex &index) const;

    //! Fills the cell with its brush, or else with the colour for selected,
    //! alternate or plain cells.
    virtual void drawBackground(QPainter *painter, const QStyleOptionViewItem &opt) const;

    //! Draws the indicator, if these are drawn, and the text.
    virtual void drawContents(QPainter *p, const QStyleOptionViewItem &opt,
                              const QModelIndex &index) const;

    //! Draws the check mark of a checkable cell, else its decoration, which may be
    //! an icon, a pixmap, an image or a colour.
    virtual void drawIndicator(QPainter *painter, const QStyleOptionViewItem &opt,
                               const QModelIndex &index) const;

    //! Draws Qt::DisplayRole into textRect().
    virtual void drawText(QPainter *painter, const QStyleOptionViewItem &opt,
                          const QModelIndex &index) const;

    //! Draws \a value as one line of text, elided on the right to \a opt.rect less
    //! the style's focus margin on either side.
    virtual void drawCustomText(QPainter *painter, const QStyleOptionViewItem &opt,
                                const QVariant &value) const;

    //! Draws the outline of \a opt.rect moved one pixel left and up, so that only
    //! the right and the bottom line fall into the cell.
    virtual void drawFrame(QPainter *painter, const QStyleOptionViewItem &opt) const;

    //! Place of an indicator in the style of \a opt.widget, or in the application's
    //! without one: at the left edge behind the focus margin, centred vertically.
    static QRect indicatorRectByStyle(const QStyleOptionViewItem &opt);

    //! Sets \a value into the model. A refusal is shown in a tool tip under the
    //! editor once the event loop runs, with the reason if the model throws one as a
    //! QString. Other exceptions pass through.
    void commitModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index,
                         const QVariant &value, int role) const;

    //! Shows \a msg as a tool tip at the global position \a pos.
    Q_INVOKABLE void showToolTip(const QString &msg, const QPoint &pos) const;

protected:
    bool m_drawFrame = true;      //!< grid lines at the right and bottom
    bool m_drawIndicator = false; //!< check marks and decorations, painted directly

private:
    const QWidget *parentWidget() const;
    QPalette::ColorGroup colorGroup(const QStyleOptionViewItem &opt) const;
    static QPalette::ColorRole backgroundRoleOf(const QStyleOptionViewItem &opt);
    static bool hasPlainCell(const QStyleOptionViewItem &opt, QPalette::ColorGroup group);
    double pixelRatio(const QStyleOptionViewItem &opt) const;
    void drawCell(QPainter *painter, const QStyleOptionViewItem &opt,
                  const QModelIndex &index) const;
    void drawPicture(QPainter *painter, QStyleOptionViewItem *opt, const QModelIndex &index,
                     QPalette::ColorGroup group) const;
    QPixmap render(const QStyleOptionViewItem &opt, const QModelIndex &index, double dpr,
                   Qt::LayoutDirection direction) const;
    void extendKey(QString *key, const QStyleOptionViewItem &opt, const QModelIndex &index,
                   QPalette::ColorGroup group, Qt::LayoutDirection direction) const;
    QString narrowTime(const QStyleOptionViewItem &opt, const QModelIndex &index, int margin) const;
};

} // namespace Vantix

#endif // ITEMDELEGATE_H
