#pragma once

#include "platform/StatusBar.h"
#include "platform/linux/bus/BusObject.h"

namespace moorline {

class SymbolCatalogue;

/// The item as another program shows it: org.kde.StatusNotifierItem, by the draft at
/// freedesktop.org/wiki/Specifications/StatusNotifierItem and the interface published with KDE's kstatusnotifieritem.
class StatusNotifierItem final : public QObject {
    Q_OBJECT
public:
    /// `bus` outlives it.
    StatusNotifierItem(Bus &bus, const StatusBarItem &item, const SymbolCatalogue &symbols);

Q_SIGNALS:
    /// Whoever shows the item cannot show its menu.
    void menuRequested();

private:
    [[nodiscard]] BusInterface interface();

    QVariantMap m_properties;
    BusObject m_object;
};

} // namespace moorline
