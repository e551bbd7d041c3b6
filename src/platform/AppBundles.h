#pragma once

#include <QCoroTask>
#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>
#include <optional>

namespace moorline {

/// What an application bundle says of itself. A text it does not give is absent; an empty one is kept.
struct BundleInfo {
    std::optional<QString> identifier = std::nullopt;
    std::optional<QString> displayName = std::nullopt;
    std::optional<QString> name = std::nullopt;
    /// Whether files can be opened with it at all, as far as it is known.
    bool takesFiles = true;

    bool operator==(const BundleInfo &) const = default;
};

/// An application that is there to be chosen.
struct InstalledBundle {
    QString path;
    BundleInfo info;

    bool operator==(const InstalledBundle &) const = default;
};

/// Application bundles: on macOS folders ending in "app", on Linux desktop entries.
class AppBundles : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// The path extension of an application, without the dot.
    [[nodiscard]] virtual QString applicationExtension() const = 0;
    /// Absent when there is no readable bundle at `path`.
    [[nodiscard]] virtual std::optional<BundleInfo> info(const QString &path) const = 0;
    /// Comes back once info() can tell of what is at these paths without a wait: at once where it always can.
    [[nodiscard]] virtual QCoro::Task<> lookAt(QStringList paths);
    /// Where the application is now that was once at `path` and has this identifier: systems with more than one place
    /// for it say which counts. Absent when it is gone.
    [[nodiscard]] virtual std::optional<QString> locate(
        const QString &path, const std::optional<QString> &identifier) const = 0;
    /// Every application in the folders for applications, in the order of the folders: where two are the same, the
    /// first counts. Looked for on another thread; may be an answer that was kept since nothing changed.
    [[nodiscard]] virtual QCoro::Task<QList<InstalledBundle>> installed() = 0;

Q_SIGNALS:
    /// An application was installed, removed or changed, perhaps.
    void changed();
};

} // namespace moorline
