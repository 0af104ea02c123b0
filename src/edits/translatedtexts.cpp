// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "translatedtexts_p.h"

#include <QEvent>
#include <QVariant>

void TranslatedTexts::show(QObject *object, const char *property, const QMetaObject &context,
                           const char *source)
{
    auto *texts = object->findChild<TranslatedTexts *>(QString(), Qt::FindDirectChildrenOnly);
    if (!texts)
        texts = new TranslatedTexts(object);
    texts->m_texts.removeIf([=](const Text &text) { return text.property == property; });
    texts->m_texts.append({property, &context, source, QString()});
    texts->set(&texts->m_texts.last());
}

TranslatedTexts::TranslatedTexts(QObject *object)
    : QObject(object)
{
    object->installEventFilter(this);
}

bool TranslatedTexts::eventFilter(QObject *object, QEvent *event)
{
    if (event->type() == QEvent::LanguageChange) {
        for (Text &text : m_texts) {
            if (object->property(text.property).toString() == text.shown)
                set(&text);
        }
    }
    return QObject::eventFilter(object, event);
}

void TranslatedTexts::set(Text *text)
{
    text->shown = text->context->tr(text->source, nullptr);
    parent()->setProperty(text->property, text->shown);
}
