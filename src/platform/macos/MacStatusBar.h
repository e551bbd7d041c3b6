#pragma once

#include "platform/StatusBar.h"
#import "platform/macos/MacSymbolCatalogue.h"
#include "platform/qt/QtStatusBar.h"

namespace moorline {

/// The menu bar's right end, through Qt.
class MacStatusBar final : public StatusBar {
public:
    void show(StatusBarItem item) override { m_bar.show(std::move(item)); }

private:
    MacSymbolCatalogue m_symbols;
    QtStatusBar m_bar{m_symbols};
};

} // namespace moorline
