// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef LINEEXPRESSION_H
#define LINEEXPRESSION_H

#include "textmatcher.h"

#include <QByteArrayView>

#include <memory>
#include <optional>

/*!
 * \brief Tells whether a regular expression matches in a line of ASCII text.
 *
 * As TextMatcher does, in time that grows with the line only, and without a copy of it. What
 * QRegularExpression does before it begins takes longer than most lines.
 */
class LineExpression
{
public:
    //! Nothing for an expression that has no shared syntax (see hasSharedSyntax()), is too large,
    //! or if this build has no RE2.
    static std::optional<LineExpression> of(const QString &expression, const TextRules &rules);
    //! What it is found with; empty without.
    static QString libraryName();

    //! Whether there is a match in \a line: visible ASCII characters, blanks and tabs.
    bool isIn(QByteArrayView line) const;

private:
    struct Program;

    explicit LineExpression(std::shared_ptr<const Program> program);

    std::shared_ptr<const Program> m_program;
};

#endif // LINEEXPRESSION_H
