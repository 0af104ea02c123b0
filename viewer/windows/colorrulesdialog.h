// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef COLORRULESDIALOG_H
#define COLORRULESDIALOG_H

#include "search/colorrules.h"

#include <QDialog>

class QLabel;
class QTableWidget;
class QToolButton;

//! Lets the user edit rules: a row of the table for each, the first one that fits counts.
class ColorRulesDialog : public QDialog
{
    Q_OBJECT

public:
    explicit ColorRulesDialog(const QList<ColorRule> &rules, QWidget *parent);

    //! The rules as they are now. Those without a text are left out.
    QList<ColorRule> rules() const;

private:
    QWidget *createButtons();
    void add(const ColorRule &rule);
    void setRow(int row, const ColorRule &rule);
    ColorRule ruleOf(int row) const;
    void remove();
    void move(int by);
    void chooseColor(int row);
    void update();

    QTableWidget *m_table; //!< a rule in each row
    QLabel *m_problem;     //!< what is wrong with the current one
    QToolButton *m_remove; //!< the current rule
    QToolButton *m_up;     //!< the current rule
    QToolButton *m_down;   //!< the current rule
};

#endif // COLORRULESDIALOG_H
