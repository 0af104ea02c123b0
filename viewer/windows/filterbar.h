// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef FILTERBAR_H
#define FILTERBAR_H

#include <QWidget>

class QLabel;
class QToolButton;
class TableFilter;

/*!
 * \brief Says above a table that it does not show all of its rows.
 *
 * In the colours of the selection, so that nobody takes the rows for all there are.
 * Hidden at first.
 */
class FilterBar : public QWidget
{
    Q_OBJECT

public:
    explicit FilterBar(QWidget *parent = nullptr);

    //! Says how many rows \a find, which filters, shows, and by what.
    void showFilter(const TableFilter &find);
    //! Says that \a part, from 0 to 1, of the rows has been looked at.
    void showProgress(double part);

    //! What it says.
    QString text() const;

Q_SIGNALS:
    //! Somebody wants to see all rows.
    void removed();
    //! Somebody wants to see rows outside of the span, too.
    void spanRemoved();

protected:
    void changeEvent(QEvent *event) override;

private:
    QToolButton *createButton(const char *name, const QString &text, const QString &toolTip);
    void updateColors();

    QLabel *m_label;
    QToolButton *m_spanButton; //!< takes the span off, where a text filters, too
    QToolButton *m_button;     //!< shows all rows
};

#endif // FILTERBAR_H
