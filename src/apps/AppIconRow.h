#pragma once

#include "apps/AppShortcutButton.h"
#include "chrome/IconRow.h"

namespace moorline {

/// Applications side by side.
class AppIconRow : public IconRow {
    Q_OBJECT
public:
    AppIconRow(AppShortcutButton::Context context, bool isPinned, QGraphicsItem *parent);

    /// From left to right.
    [[nodiscard]] QList<AppShortcutButton *> buttons() const;

protected:
    [[nodiscard]] const AppShortcutButton::Context &context() const { return m_context; }
    /// What the row shows from now on.
    void show(const QList<AppShortcut> &shortcuts);

    [[nodiscard]] IconButton *makeButton(qsizetype index) override;
    void renew(IconButton &button, qsizetype index) override;

private:
    AppShortcutButton::Context m_context;
    bool m_isPinned;
    QList<AppShortcut> m_shortcuts;
};

} // namespace moorline
