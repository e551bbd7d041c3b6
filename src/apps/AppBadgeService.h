#pragma once

#include "platform/BadgeSource.h"
#include "platform/Clock.h"

#include <QHash>

namespace moorline {

class AppBundles;
class SettingsStore;

/// Publishes what applications ask a dock to write on their icons, while the user wants to see it.
class AppBadgeService final : public QObject {
    Q_OBJECT
public:
    /// What the service is built on. Everything lent here outlives it.
    struct Context {
        const SettingsStore &store;
        Clock &clock;
        BadgeSource &source;
        const AppBundles &bundles;
    };

    static constexpr std::chrono::milliseconds refreshInterval{2000};

    explicit AppBadgeService(Context context);

    void start();

    /// Badge texts by bundle identifier.
    [[nodiscard]] const QHash<QString, QString> &badges() const { return m_badges; }
    /// Absent when the application has no badge.
    [[nodiscard]] std::optional<QString> badge(const std::optional<QString> &bundleIdentifier) const;

Q_SIGNALS:
    void badgesChanged();

private:
    void applySettings();
    void startTimer();
    void stopTimer();
    void refresh();
    void sourceChanged();
    void bundlesChanged();
    QCoro::Task<> scan();
    void apply(const QList<BadgeTile> &tiles);
    void setBadges(const QHash<QString, QString> &badges);
    [[nodiscard]] std::optional<QString> bundleID(const QString &path);

    Context m_context;
    QHash<QString, QString> m_badges;
    QHash<QString, QString> m_bundleIDByPath;
    /// There is one while the user wants to see badges.
    std::unique_ptr<Clock::Timer> m_timer;
    bool m_isScanning = false;
    /// Whether the scan that is under way may have missed something.
    bool m_isScanStale = false;
};

} // namespace moorline
