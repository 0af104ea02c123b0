// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef KEYBOARDSEARCH_P_H
#define KEYBOARDSEARCH_P_H

#include <QAbstractItemModel>
#include <QBasicTimer>
#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QString>

class QAbstractItemView;

/*!
 * \brief Makes the next row current whose text begins with what is typed.
 *
 * Finds the row that QAbstractItemView::keyboardSearch() finds, but looks at rows in
 * slices of 40 ms, with events between them: the first slice runs within type(), so that
 * what is near is found at once.
 *
 * A search ends when it finds a row or has looked at all, when the next one begins, and
 * when rows or columns come, go or move, the model is reset, laid out anew or destroyed,
 * or the current index changes. Only the children of the invalid root index are looked
 * at. GUI thread only.
 */
class KeyboardSearch : public QObject
{
    Q_OBJECT

public:
    //! Searches the model of \a view, which must outlive it.
    explicit KeyboardSearch(QAbstractItemView *view);

    //! Continues what was typed before if that was not longer ago than
    //! QApplication::keyboardInputInterval(), else begins anew behind the current row.
    //! Anything may have happened when it returns, as the model is asked for texts.
    void type(const QString &text);

    bool isRunning() const { return m_timer.isActive(); }

public Q_SLOTS:
    void end();

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    bool appendTyped(const QString &text);
    void begin(bool skipsCurrent);
    void listen(bool on);
    void runSlice();
    QModelIndex takeNext();

    QAbstractItemView *m_view;
    QPointer<QAbstractItemModel> m_model; //!< searched
    QString m_typed;                      //!< so far; what a text has to begin with
    QElapsedTimer m_sinceTyped;           //!< the last key
    int m_row = 0;                        //!< to be looked at next
    int m_column = 0;
    int m_left = 0;       //!< rows to be looked at
    quint64 m_serial = 0; //!< of the search
    QBasicTimer m_timer;
};

#endif // KEYBOARDSEARCH_P_H
