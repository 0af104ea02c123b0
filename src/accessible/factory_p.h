// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef FACTORY_P_H
#define FACTORY_P_H

#include <QAccessible>
#include <QObject>

namespace Accessible {

//! The interface of an object of the class \a Widget or one derived. Qt asks once for each class
//! name of the object, the most derived first: whoever has a factory for that one is asked first.
template<typename Widget, typename Interface>
QAccessibleInterface *made(const QString &className, QObject *object)
{
    if (className != QLatin1String(Widget::staticMetaObject.className()))
        return nullptr;
    auto *widget = qobject_cast<Widget *>(object);
    return widget ? new Interface(widget) : nullptr;
}

//! A function that makes interfaces, known to Qt as long as this lives. As a static object it
//! is taken back when the library is unloaded.
class Factory
{
public:
    explicit Factory(QAccessible::InterfaceFactory make)
        : m_make(make)
    {
        QAccessible::installFactory(make);
    }
    ~Factory() { QAccessible::removeFactory(m_make); }
    Q_DISABLE_COPY_MOVE(Factory)

private:
    QAccessible::InterfaceFactory m_make;
};

} // namespace Accessible

#endif // FACTORY_P_H
