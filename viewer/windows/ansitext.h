// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef ANSITEXT_H
#define ANSITEXT_H

#include <QColor>
#include <QList>
#include <QString>

/*!
 * \brief A text without the escape sequences that a terminal would follow, and what those for
 * looks ask for (ECMA-48, SGR).
 *
 * Sequences that move a cursor, erase, or name a link are left out, too. What is no complete
 * sequence stays in the text.
 */
class AnsiText
{
public:
    //! How a terminal would show characters. Colours that are not valid are the usual ones.
    struct Look
    {
        QColor text;
        QColor background;
        bool isBold = false;
        bool isItalic = false;
        bool isUnderlined = false;
        bool isStruckOut = false;
        bool isInverse = false; //!< text and background are exchanged

        friend bool operator==(const Look &, const Look &) = default;
    };
    //! Characters of plain() that have a look of their own.
    struct Run
    {
        qsizetype begin;
        qsizetype end;
        Look look;

        friend bool operator==(const Run &, const Run &) = default;
    };

    //! Of \a text, which begins with the usual look.
    explicit AnsiText(const QString &text);

    const QString &plain() const { return m_plain; }
    //! In ascending order, next to each other or apart.
    const QList<Run> &runs() const { return m_runs; }

private:
    qsizetype skip(QStringView rest);
    void setLook(QStringView parameters);
    void setColor(QColor *color, QList<int> *parameters);
    void endRun();

    QString m_plain;
    QList<Run> m_runs;
    Look m_look;           //!< of what comes next
    qsizetype m_begin = 0; //!< of the run that has it
};

#endif // ANSITEXT_H
