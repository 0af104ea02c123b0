// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "lineexpression.h"

struct LineExpression::Program
{
};

std::optional<LineExpression> LineExpression::of(const QString & /*expression*/,
                                                 const TextRules & /*rules*/)
{
    return {};
}

bool LineExpression::isIn(QByteArrayView /*line*/) const
{
    return false;
}

QString LineExpression::libraryName()
{
    return {};
}
