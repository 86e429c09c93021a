// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtWidgets/QProxyStyle>

/// Makes the toolkit ask for tooltips sooner; its delay does not matter to these tests.
class ImpatientStyle : public QProxyStyle
{
public:
    int styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                  QStyleHintReturn *data) const override
    {
        if (hint == SH_ToolTip_WakeUpDelay)
            return delay;
        if (hint == SH_ToolTip_FallAsleepDelay)
            return 0; // until then, the style would ask for the next one at once
        return QProxyStyle::styleHint(hint, option, widget, data);
    }

    static constexpr int DefaultDelay = 150; // ms
    static inline int delay = DefaultDelay; // ms
};
