// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "colorrules.h"

#include "basics/sourceindex.h"
#include "linefilter.h"

#include <QAbstractItemModel>
#include <QSettings>

namespace {

const QString s_array = QStringLiteral("colorRules");
const QString s_text = QStringLiteral("text");
const QString s_isExpression = QStringLiteral("isExpression");
const QString s_matchesCase = QStringLiteral("matchesCase");
const QString s_color = QStringLiteral("color");

} // namespace

ColorRules::ColorRules(const QList<ColorRule> &rules)
{
    for (const ColorRule &rule : rules) {
        const TextMatcher matcher(rule.text, {rule.matchesCase, false, rule.isExpression});
        if (!matcher.isNothing() && rule.color.isValid())
            m_rules.append({matcher, rule.color});
    }
}

std::optional<QColor> ColorRules::colorOf(const QModelIndex &cell) const
{
    if (isEmpty() || !cell.isValid())
        return {};
    const QAbstractItemModel *source = sourceIndex(cell).model();
    QStringList texts;
    for (int column = 0; column < cell.model()->columnCount(); ++column) {
        if (isTextColumn(source, column))
            texts.append(cell.siblingAtColumn(column).data().toString());
    }
    for (const auto &[matcher, color] : m_rules) {
        for (const QString &text : std::as_const(texts)) {
            if (matcher.isIn(text))
                return color;
        }
    }
    return {};
}

QList<ColorRule> ColorRules::load()
{
    QSettings settings;
    QList<ColorRule> rules;
    const int count = settings.beginReadArray(s_array);
    for (int at = 0; at < count; ++at) {
        settings.setArrayIndex(at);
        ColorRule rule;
        rule.text = settings.value(s_text).toString();
        rule.isExpression = settings.value(s_isExpression).toBool();
        rule.matchesCase = settings.value(s_matchesCase).toBool();
        rule.color = QColor(settings.value(s_color).toString());
        if (!rule.text.isEmpty() && rule.color.isValid())
            rules.append(rule);
    }
    return rules;
}

void ColorRules::save(const QList<ColorRule> &rules)
{
    QSettings settings;
    settings.remove(s_array);
    settings.beginWriteArray(s_array, int(rules.size()));
    for (int at = 0; at < rules.size(); ++at) {
        settings.setArrayIndex(at);
        settings.setValue(s_text, rules[at].text);
        settings.setValue(s_isExpression, rules[at].isExpression);
        settings.setValue(s_matchesCase, rules[at].matchesCase);
        settings.setValue(s_color, rules[at].color.name());
    }
}
