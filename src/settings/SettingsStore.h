#pragma once

#include "settings/SettingsSync.h"

#include <QCoroTask>
#include <QList>
#include <QStringList>
#include <QUrl>
#include <functional>
#include <optional>

namespace moorline {

class Directories;
class Files;

/// The reverse-DNS name of the program, and of its folder of settings.
inline constexpr QLatin1StringView applicationIdentifier("app.moorline.Moorline");

/// Owns the one live Settings record. Every real change is written at once, and what is written to the file by others
/// counts at once; both are announced.
class SettingsStore final : public QObject {
    Q_OBJECT
public:
    /// Makes a shortcut from the application bundle at a file URL; absent when there is none to be made.
    using MakeShortcut = std::function<std::optional<AppShortcut>(const QUrl &)>;

    /// What the store is built on. Everything lent here outlives it.
    struct Context {
        const Directories &directories;
        Clock &clock;
        FileWatch &fileWatch;
        const Files &files;
        /// The path extension that marks a dropped file as an application, without the dot.
        QString applicationExtension;
        MakeShortcut makeShortcut;
        /// Comes back once `makeShortcut` can tell of the applications at these paths. Absent: it always can.
        std::function<QCoro::Task<>(QStringList)> lookAt = nullptr;
    };

    explicit SettingsStore(Context context, QObject *parent = nullptr);

    [[nodiscard]] const Settings &settings() const { return m_sync.settings(); }
    /// Lets `edit` have the record, then saves and announces it, unless it is as it was. What has been written to the
    /// file since it was last looked at is in the record by then.
    void change(const std::function<void(Settings &)> &edit) { m_sync.change(edit); }

    [[nodiscard]] bool isEnabled(WidgetKind kind) const;
    /// Switching a widget on brings the whole row into canonical order.
    void toggleWidget(WidgetKind kind);
    /// Does nothing when a shortcut with the same id is there.
    void addShortcut(const AppShortcut &shortcut);
    void removeShortcut(const AppShortcut &shortcut);
    /// Does nothing when an item with the same path is there.
    void addPinnedItem(const PinnedItem &item);
    void removePinnedItem(const PinnedItem &item);
    /// Pins what was dropped on the bar: applications as shortcuts, everything else as pinned items. Where there are
    /// applications among them that have to be looked at first, as soon as that is done.
    void pin(const QList<QUrl> &urls);

    [[nodiscard]] const QString &filePath() const { return m_sync.path(); }

Q_SIGNALS:
    /// The record changed, here or on disk; carries it as it was. Sent before change() returns. The record is on disk
    /// by then, unless the file cannot be written, or is being written by another just now.
    void settingsDidChange(const moorline::Settings &before);

private:
    [[nodiscard]] bool namesApplication(const QString &path) const;
    QCoro::Task<> pinOnceKnown(QList<QUrl> urls, QStringList applications);
    void pinAll(const QList<QUrl> &urls);
    void pinOne(Settings &settings, const QUrl &url) const;

    Context m_context;
    SettingsSync m_sync;
};

} // namespace moorline
