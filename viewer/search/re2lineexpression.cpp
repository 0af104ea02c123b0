// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "lineexpression.h"
#include "sharedsyntax.h"

#include <re2/re2.h>

#include <utility>

struct LineExpression::Program
{
    Program(const QByteArray &expression, const RE2::Options &options)
        : re2(re2::StringPiece(expression.data(), std::size_t(expression.size())), options)
    {
    }

    RE2 re2;
};

LineExpression::LineExpression(std::shared_ptr<const Program> program)
    : m_program(std::move(program))
{
}

std::optional<LineExpression> LineExpression::of(const QString &expression, const TextRules &rules)
{
    if (!hasSharedSyntax(expression))
        return {};
    const QByteArray written = expression.toLatin1();
    RE2::Options options;
    options.set_encoding(RE2::Options::EncodingLatin1);
    options.set_case_sensitive(rules.matchesCase);
    options.set_never_capture(true);
    options.set_log_errors(false);
    auto program = std::make_shared<const Program>(
        rules.wholeWords ? "\\b(?:" + written + ")\\b" : written, options);
    if (!program->re2.ok())
        return {};
    return LineExpression(std::move(program));
}

bool LineExpression::isIn(QByteArrayView line) const
{
    const re2::StringPiece text(line.data(), std::size_t(line.size()));
    return m_program->re2.Match(text, 0, text.size(), RE2::UNANCHORED, nullptr, 0);
}

QString LineExpression::libraryName()
{
    return QStringLiteral("RE2");
}
