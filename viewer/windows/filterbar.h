// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef FILTERBAR_H
#define FILTERBAR_H

#include <QWidget>

class QLabel;
class QToolButton;

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

    //! Says that \a shown of \a all rows, whole numbers from 0 on, have \a text.
    void showFilter(const QString &text, int shown, int all);
    //! Says that \a part, from 0 to 1, of the rows has been looked at.
    void showProgress(double part);

    //! What it says.
    QString text() const;

Q_SIGNALS:
    //! Somebody wants to see all rows.
    void removed();

protected:
    void changeEvent(QEvent *event) override;

private:
    void updateColors();

    QLabel *m_label;
    QToolButton *m_button; //!< shows all rows
};

#endif // FILTERBAR_H
