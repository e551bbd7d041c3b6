#pragma once

#include "apps/AppIconRow.h"

#include <QPointer>

namespace moorline {

/// The user's pinned applications, in the order of the settings. One that is carried over another takes its place at
/// once; the settings learn of the order when it is let go.
class AppShortcutsWidget final : public AppIconRow {
    Q_OBJECT
public:
    explicit AppShortcutsWidget(AppShortcutButton::Context context, QGraphicsItem *parent = nullptr);

    /// All of the bar while an icon is carried, for that one alone.
    [[nodiscard]] QRectF boundingRect() const override;

protected:
    void welcome(AppShortcutButton &button) override;
    [[nodiscard]] bool takesReorder(const QString &id) const override;
    void reorderMoved(const QString &id, const QPointF &place) override;

private:
    void refresh();
    void setCarried(AppShortcutButton *carried);
    void letGo(const AppShortcutButton &button, bool isOff);
    void restore();

    /// The one that is carried; null while none is.
    QPointer<AppShortcutButton> m_carried;
};

/// The shortcuts in the order of the ids. Those without one there come last, in the order they had.
[[nodiscard]] QList<AppShortcut> reordered(QList<AppShortcut> shortcuts, const QStringList &ids);

} // namespace moorline
