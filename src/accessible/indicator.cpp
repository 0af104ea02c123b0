// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "qprogressindicator.h"

#include "accessible/factory_p.h"
#include "accessible/install_p.h"

#include <QAccessibleWidget>

namespace Accessible {

namespace {

//! A ring that says "busy" as long as it turns.
class IndicatorInterface : public QAccessibleWidget
{
public:
    explicit IndicatorInterface(QProgressIndicator *indicator)
        : QAccessibleWidget(indicator, QAccessible::Animation)
    {
    }

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        const auto *ring = qobject_cast<const QProgressIndicator *>(object());
        if (!ring)
            return state;
        state.busy = ring->isAnimated();
        state.animated = ring->isAnimated();
        if (!ring->isAnimated() && !ring->isDisplayedWhenStopped())
            state.invisible = true;
        return state;
    }

    QString text(QAccessible::Text text) const override
    {
        QString given = QAccessibleWidget::text(text);
        return text == QAccessible::Name && given.isEmpty() ? QProgressIndicator::tr("Busy")
                                                            : given;
    }
};

} // namespace

void installIndicatorFactory()
{
    static const Factory factory(made<QProgressIndicator, IndicatorInterface>);
}

} // namespace Accessible
