#pragma once

#include "settings/Settings.h"

#include <QList>
#include <QObject>
#include <QUrl>
#include <functional>
#include <optional>

namespace moorline {

class Directories;

/// The reverse-DNS name of the program, and of its folder of settings.
inline constexpr QLatin1StringView applicationIdentifier("app.moorline.Moorline");

/// Owns the one live Settings record: reads it from disk, writes every real change back at once, and tells of it.
class SettingsStore final : public QObject {
    Q_OBJECT
public:
    /// Makes a shortcut from the application bundle at a file URL; absent when there is none to be made.
    using MakeShortcut = std::function<std::optional<AppShortcut>(const QUrl &)>;

    /// `applicationExtension` is the path extension that marks a dropped file as an application, without the dot.
    SettingsStore(const Directories &directories, QString applicationExtension, MakeShortcut makeShortcut,
        QObject *parent = nullptr);

    [[nodiscard]] const Settings &settings() const { return m_settings; }
    /// Lets `edit` have the record, then saves and announces it, unless it is as it was.
    void change(const std::function<void(Settings &)> &edit);

    [[nodiscard]] bool isEnabled(WidgetKind kind) const;
    /// Switching a widget on brings the whole row into canonical order.
    void toggleWidget(WidgetKind kind);
    /// Does nothing when a shortcut with the same id is there.
    void addShortcut(const AppShortcut &shortcut);
    void removeShortcut(const AppShortcut &shortcut);
    /// Does nothing when an item with the same path is there.
    void addPinnedItem(const PinnedItem &item);
    void removePinnedItem(const PinnedItem &item);
    /// Pins what was dropped on the bar: applications as shortcuts, everything else as pinned items.
    void pin(const QList<QUrl> &urls);

    [[nodiscard]] QString filePath() const { return m_filePath; }

Q_SIGNALS:
    /// The record changed and is on disk. Sent before change() returns, with the record as it was.
    void settingsDidChange(const moorline::Settings &before);

private:
    void load();
    void persist() const;
    void pinOne(Settings &settings, const QUrl &url) const;

    QString m_applicationExtension;
    MakeShortcut m_makeShortcut;
    QString m_filePath;
    Settings m_settings;
};

} // namespace moorline
