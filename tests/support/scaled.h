// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef SCALED_H
#define SCALED_H

#include <QtGlobal>

#include <cmath>
#include <utility>

//! A widget of class \a Widget on a screen of any device pixel ratio.
template<typename Widget> class Scaled : public Widget
{
public:
    template<typename... Arguments>
    explicit Scaled(double ratio, Arguments &&...arguments)
        : Widget(std::forward<Arguments>(arguments)...)
        , m_ratio(ratio)
    {
    }

protected:
    int metric(typename Widget::PaintDeviceMetric metric) const override
    {
        switch (metric) {
        case Widget::PdmDevicePixelRatioScaled:
            return int(std::lround(m_ratio * Widget::devicePixelRatioFScale()));
#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
        case Widget::PdmDevicePixelRatioF_EncodedA:
        case Widget::PdmDevicePixelRatioF_EncodedB:
            return Widget::encodeMetricF(metric, m_ratio);
#endif
        default:
            return Widget::metric(metric);
        }
    }

private:
    double m_ratio;
};

#endif // SCALED_H
