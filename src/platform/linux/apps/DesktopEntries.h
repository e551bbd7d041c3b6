#pragma once

#include "freedesktop/EntryCatalogue.h"
#include "freedesktop/EntryPlaces.h"
#include "freedesktop/WindowMatcher.h"
#include "platform/AppBundles.h"
#include "platform/Clock.h"
#include "platform/linux/apps/EntryLoader.h"
#include "platform/linux/apps/OutsideEntries.h"
#include "platform/linux/apps/RereadSchedule.h"
#include "platform/qt/Background.h"
#include "support/Promise.h"

#include <atomic>

namespace moorline {

/// Those of this session, by its environment.
[[nodiscard]] EntryPlaces sessionEntryPlaces();

/// Desktop entries as application bundles. They are read on another thread, once at the start and again when something
/// on disk changed. The identifier is the desktop file id without ".desktop", but that of the desktop's file manager is
/// "com.apple.finder".
class DesktopEntries final : public AppBundles {
    Q_OBJECT
public:
    explicit DesktopEntries(Clock &clock, EntryPlaces places = sessionEntryPlaces());
    ~DesktopEntries() override;

    [[nodiscard]] QString applicationExtension() const override;
    /// Absent unless `path` is a regular file of at most 1 MiB with an entry of type Application, or stands for one.
    /// Nothing is known until the entries are read, so that no disk holds up the start. A path that is in none of the
    /// folders for applications is read after that, from when it is first asked for.
    [[nodiscard]] std::optional<BundleInfo> info(const QString &path) const override;
    [[nodiscard]] QCoro::Task<> lookAt(QStringList paths) override;
    [[nodiscard]] std::optional<QString> locate(
        const QString &path, const std::optional<QString> &identifier) const override;
    [[nodiscard]] QCoro::Task<QList<InstalledBundle>> installed() override;

    /// All that is known; nothing until the entries were read for the first time. Another one takes its place with
    /// each change.
    [[nodiscard]] const std::shared_ptr<const EntryCatalogue> &catalogue() const { return m_catalogue; }
    /// Matches windows with the same entries.
    [[nodiscard]] const std::shared_ptr<const WindowMatcher> &matcher() const { return m_matcher; }
    /// Calls back once the entries were read, at once where they are.
    void whenLoaded(const std::function<void()> &then);
    [[nodiscard]] const EntryPlaces &places() const { return m_places; }

private:
    [[nodiscard]] BundleInfo infoOf(const EntryRecord &record) const;
    [[nodiscard]] bool isCurrent() const { return m_isLoaded && m_schedule.isAtRest(); }
    void load();
    void take(const LoadedEntries &loaded);

    EntryPlaces m_places;
    std::shared_ptr<const EntryCatalogue> m_catalogue;
    std::shared_ptr<const WindowMatcher> m_matcher;
    std::unique_ptr<OutsideEntries> m_outside;
    bool m_isLoaded = false;
    std::shared_ptr<std::atomic_bool> m_cancelled;
    RereadSchedule m_schedule;
    QList<Promise<bool>> m_waiting;
    QList<std::function<void()>> m_thens;
    Background m_background;
};

} // namespace moorline
