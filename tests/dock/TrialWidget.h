#pragma once

#include "chrome/BarWidget.h"

namespace moorline::test {

/// A widget of the size it is given, with something to tell, that can be touched.
class TrialWidget final : public BarWidget {
public:
    explicit TrialWidget(const QSizeF &size, const QString &text = {})
    {
        setNaturalSize(size);
        setHelpText(text);
        setTouchable(true);
    }

    using BarWidget::setHelpText;
    using BarWidget::setNaturalSize;
};

} // namespace moorline::test
