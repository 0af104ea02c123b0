// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef DETAILPANE_H
#define DETAILPANE_H

#include <QDockWidget>
#include <QPersistentModelIndex>
#include <QPointer>
#include <QTimer>

class QAbstractItemModel;
class QAbstractItemView;
class QItemSelectionModel;
class QPlainTextEdit;

//! A pane beside a table that shows its current row whole, to be read and copied. It asks for
//! nothing while it is hidden, as it is at first.
class DetailPane : public QDockWidget
{
    Q_OBJECT

public:
    //! Shows the current row of \a table, which must outlive it; call followTable() whenever that
    //! has another model.
    explicit DetailPane(QAbstractItemView *table, QWidget *parent = nullptr);

    //! The text that is shown.
    QPlainTextEdit *text() const { return m_text; }
    //! Shows it in TextFont::font(). Call it again when that is another.
    void useTextFont();

public Q_SLOTS:
    //! The table has another model, or none.
    void followTable();

protected:
    void showEvent(QShowEvent *event) override;
    void changeEvent(QEvent *event) override;

private Q_SLOTS:
    void schedule();
    void showRow();
    void dataChanged(const QModelIndex &topLeft, const QModelIndex &bottomRight);

private:
    void showText(const QString &text);

    QAbstractItemView *m_table;             //!< not owned
    QPlainTextEdit *m_text;                 //!< a child
    QPointer<QAbstractItemModel> m_model;   //!< followed
    QPointer<QItemSelectionModel> m_choice; //!< followed
    QString m_content;                      //!< of m_text, which is not the same for all characters
    QPersistentModelIndex m_shown;          //!< its row is
    QTimer m_timer {this};                  //!< gathers changes
};

#endif // DETAILPANE_H
