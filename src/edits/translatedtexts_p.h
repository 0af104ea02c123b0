// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef TRANSLATEDTEXTS_P_H
#define TRANSLATEDTEXTS_P_H

#include <QList>
#include <QObject>
#include <QString>

/*!
 * \brief Texts of an object, kept in properties, that follow the language.
 *
 * A text that somebody else has set instead stays as it is.
 */
class TranslatedTexts : public QObject
{
    Q_OBJECT

public:
    //! Gives \a property of \a object the translation of \a source in the context of the
    //! class \a context, now and whenever the language changes. Called again for the same
    //! property it takes the place of the former call. Both strings must last.
    static void show(QObject *object, const char *property, const QMetaObject &context,
                     const char *source);

    bool eventFilter(QObject *object, QEvent *event) override;

private:
    struct Text
    {
        QByteArray property;
        const QMetaObject *context;
        const char *source;
        QString shown; //!< as last set from here
    };

    explicit TranslatedTexts(QObject *object);
    void set(Text *text);

    QList<Text> m_texts;
};

#endif // TRANSLATEDTEXTS_P_H
