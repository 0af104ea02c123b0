// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef SIDEBYSIDE_H
#define SIDEBYSIDE_H

#include <qtablefastview.h>

#include <QHeaderView>
#include <QImage>
#include <QList>
#include <QStringList>
#include <QWidget>

#include <functional>

class QVBoxLayout;

//! A view that tells how it would paint itself anew.
class ProgramView : public QTableFastView
{
    Q_OBJECT

public:
    using QTableFastView::QTableFastView;

    //! The view painted from scratch, with nothing kept.
    QImage paintedAnew();
};

//! Something that is not the same in both views, and why that is right.
struct Difference
{
    QString step;  //!< of the script
    QString field; //!< what differs
    QString ours;  //!< what our view has there
    QString why;
};

//! Reasons that most programs have.
namespace Why {
inline const QString atEnd = QStringLiteral("a view at its end stays there");
inline const QString sameRows =
    QStringLiteral("rows that come and go above the view do not move what it shows");
inline const QString cut = QStringLiteral("in ScrollPerPixel scrollTo() leaves the lowest row's "
                                          "last line of pixels below the edge");
} // namespace Why

/*!
 * \brief A program's view beside Qt's, in one window, and a script that is run in both.
 *
 * Each step is done to both views. Then what they show, where they stand and what is
 * selected is compared: it must be the same, unless a Difference says otherwise. And the
 * picture that our view has on screen must be the one that it would paint anew.
 *
 * After a step with differences Qt's view is put where ours is, for the next step to begin
 * the same.
 */
class SideBySide : public QWidget
{
    Q_OBJECT

public:
    using Step = std::function<void(QAbstractItemView &)>;
    using Field = std::function<QString(QAbstractItemView &)>;

    //! Takes both views, which have their models.
    SideBySide(ProgramView *ours, QAbstractItemView *peer, QList<Difference> expected = {});

    //! Puts a widget under the view that it belongs to.
    void addBelow(const QAbstractItemView &view, QWidget *widget);

    //! Shows the window, with room for \a rows rows and \a rest pixels in both viewports.
    void showWith(int rows, int rest);

    ProgramView &ours() const { return *m_ours; }
    QAbstractItemView &peer() const { return *m_peer; }

    //! Compares \a value, too, after each step.
    void compareToo(const QString &name, Field value);
    //! From now on Qt's view may be scrolled to anywhere.
    void ignorePlaces() { m_isPlaceIgnored = true; }

    //! A step that each view takes for itself.
    void both(const QString &name, const Step &step);
    //! A step that only our view takes; its picture is all that is looked at.
    void mine(const QString &name, const Step &step);
    //! A step that is taken once: of a model that both views show.
    void once(const QString &name, const std::function<void()> &step);

    //! What was found wrong; call it when the script has ended, for differences that did
    //! not occur count, too.
    QStringList problems();

private:
    void check(const QString &step);
    void compareStates(const QString &step);
    void comparePictures(const QString &step);
    void alignPeer();
    void report(const QString &problem);

    QVBoxLayout *m_ourColumn;
    QVBoxLayout *m_peerColumn;
    ProgramView *m_ours;
    QAbstractItemView *m_peer;
    QList<Difference> m_expected;
    QList<std::pair<QString, Field>> m_fields;
    QStringList m_problems;
    bool m_isPlaceIgnored = false;
};

//! The header with the columns of either view.
QHeaderView *columnsOf(const QAbstractItemView &view);

//! Lets everything happen that is to happen, rows that are fetched included.
void settle(const QAbstractItemView &view);

// Steps that scripts are made of.

//! Several steps that nothing may come between, as an editor is open.
SideBySide::Step inTurn(const QList<SideBySide::Step> &steps);

SideBySide::Step pressKey(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier,
                          int times = 1);
//! Into whatever has the focus in the view.
SideBySide::Step typeText(const QString &text);
//! Into the editor that is open in the view.
SideBySide::Step pressKeyInEditor(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
//! The cell that is the \a row-th on screen in the column (logical) \a column.
SideBySide::Step clickCell(int row, int column, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
SideBySide::Step doubleClickCell(int row, int column);
SideBySide::Step dragOver(int fromRow, int toRow, int column);
SideBySide::Step turnWheel(int notches, bool isHorizontal = false);
//! The vertical slider, to \a part of 1 of its range.
SideBySide::Step dragSlider(double part);

// Gestures on the header, all with the left button.

SideBySide::Step clickHeader(int column);
SideBySide::Step dragColumn(int column, int onto);
SideBySide::Step dragColumnEdge(int column, int by);
SideBySide::Step doubleClickColumnEdge(int column);

#endif // SIDEBYSIDE_H
