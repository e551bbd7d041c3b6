#pragma once

#include "apps/AppIconRow.h"

namespace moorline {

/// The user's pinned applications, in the order of the settings.
class AppShortcutsWidget final : public AppIconRow {
    Q_OBJECT
public:
    explicit AppShortcutsWidget(AppShortcutButton::Context context, QGraphicsItem *parent = nullptr);

protected:
    void keepOrder(const QStringList &ids) override;
    void removed(const IconButton &button) override;

private:
    void refresh();
};

} // namespace moorline
