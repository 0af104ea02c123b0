// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef COLORRULES_H
#define COLORRULES_H

#include "textmatcher.h"

#include <QColor>
#include <QList>

#include <optional>
#include <utility>

class QModelIndex;

//! Rows that have a text get a colour.
struct ColorRule
{
    QString text;              //!< looked for in every column with text
    bool isExpression = false; //!< the text is a regular expression
    bool matchesCase = false;  //!< upper and lower case differ
    QColor color;              //!< of the row's texts

    friend bool operator==(const ColorRule &, const ColorRule &) = default;
};

//! The user's rules: the first one that a row fits counts.
class ColorRules
{
public:
    //! None.
    ColorRules() = default;
    //! Those among \a rules that have a text, and a valid expression and colour.
    explicit ColorRules(const QList<ColorRule> &rules);

    bool isEmpty() const { return m_rules.empty(); }
    //! The colour of the row of \a cell; nothing if no rule fits.
    std::optional<QColor> colorOf(const QModelIndex &cell) const;

    //! What the user's settings keep; nothing of what cannot be understood.
    static QList<ColorRule> load();
    static void save(const QList<ColorRule> &rules);

private:
    QList<std::pair<TextMatcher, QColor>> m_rules; //!< in the order in which they count
};

#endif // COLORRULES_H
