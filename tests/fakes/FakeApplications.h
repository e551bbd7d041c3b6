#pragma once

#include "platform/Accessibility.h"
#include "platform/AppBundles.h"
#include "platform/BadgeSource.h"
#include "platform/FileManager.h"
#include "platform/UserDefaults.h"
#include "platform/Workspace.h"
#include "support/Promise.h"

#include <QHash>
#include <QSet>
#include <algorithm>
#include <utility>

namespace moorline::test {

/// Runs what it is told to, and keeps what was asked of it.
class FakeWorkspace final : public Workspace {
public:
    struct Opening {
        QString path;
        QList<QUrl> files;
        Opened opened;
    };

    [[nodiscard]] std::optional<QList<RunningApplication>> runningApplications() const override
    {
        ++timesAsked;
        return running;
    }
    [[nodiscard]] std::optional<QString> applicationPath(const QString &bundleIdentifier) const override
    {
        pathsAsked.append(bundleIdentifier);
        const auto found = installed.constFind(bundleIdentifier);
        return found == installed.constEnd() ? std::nullopt : std::optional(*found);
    }
    [[nodiscard]] bool activatesInPassing() const override { return isFocusSloppy; }
    [[nodiscard]] bool endsWithLastWindow() const override { return isKnownByWindows; }
    [[nodiscard]] bool canTerminate(const RunningApplication &application) const override
    {
        return !deaf.contains(application.id);
    }
    void activate(const RunningApplication &application) override { activated.append(application); }
    void terminate(const RunningApplication &application) override { terminated.append(application); }
    void open(const QString &applicationPath, const QList<QUrl> &files, Opened opened) override
    {
        openings.append({applicationPath, files, std::move(opened)});
    }
    void openFile(const QUrl &file) override { openedFiles.append(file); }
    void openAddress(const QUrl &address) override { addresses.append(address); }
    void reveal(const QList<QUrl> &files) override { revealed.append(files); }
    void showFolder(const QString &path, Opened opened) override
    {
        folders.append(path);
        folderShown = std::move(opened);
    }

    /// An application starts, with a bundle of the same name.
    RunningApplication launch(const QString &bundleIdentifier, const QString &path)
    {
        const RunningApplication application{
            .id = ++m_lastId, .process = qint64(m_lastId), .bundleIdentifier = bundleIdentifier, .bundlePath = path};
        running->append(application);
        Q_EMIT applicationLaunched();
        return application;
    }
    /// Every instance of an application ends.
    void end(const QString &bundleIdentifier)
    {
        running->removeIf([&](const RunningApplication &one) { return one.bundleIdentifier == bundleIdentifier; });
        Q_EMIT applicationTerminated();
    }
    /// An application comes to the front.
    void bringForward(const std::optional<RunningApplication> &application)
    {
        Q_EMIT applicationActivated(application);
    }

    /// Absent while the system cannot tell.
    std::optional<QList<RunningApplication>> running = QList<RunningApplication>();
    /// Paths by bundle identifier.
    QHash<QString, QString> installed;
    bool isFocusSloppy = false;
    bool isKnownByWindows = false;
    /// Those that nobody can ask to quit, by id.
    QSet<quint64> deaf;

    mutable int timesAsked = 0;
    mutable QStringList pathsAsked;
    QList<RunningApplication> activated;
    QList<RunningApplication> terminated;
    QList<Opening> openings;
    QList<QUrl> openedFiles;
    QList<QUrl> addresses;
    QList<QList<QUrl>> revealed;
    QStringList folders;
    /// Of the last of them.
    Opened folderShown;

private:
    quint64 m_lastId = 0;
};

/// Knows the bundles it was given, by path. All of them are where they always were.
class FakeAppBundles final : public AppBundles {
public:
    [[nodiscard]] QString applicationExtension() const override { return QStringLiteral("app"); }
    [[nodiscard]] std::optional<BundleInfo> info(const QString &path) const override
    {
        infosAsked.append(path);
        const auto found = bundles.constFind(path);
        return found == bundles.constEnd() ? std::nullopt : std::optional(*found);
    }
    [[nodiscard]] std::optional<QString> locate(
        const QString &path, const std::optional<QString> &identifier) const override
    {
        if (const auto moved = places.constFind(identifier.value_or(path)); moved != places.constEnd())
            return *moved;
        return bundles.contains(path) ? std::optional(path) : std::nullopt;
    }
    [[nodiscard]] QCoro::Task<QList<InstalledBundle>> installed() override;

    /// Something was installed or removed.
    void change() { Q_EMIT changed(); }

    QHash<QString, BundleInfo> bundles;
    /// Where what was elsewhere is now, by identifier, or by path where there is none.
    QHash<QString, QString> places;
    /// In the order of the folders.
    QList<InstalledBundle> listed;
    mutable QStringList infosAsked;
    int timesListed = 0;
};

/// What one program tells: whatever the test puts in.
class FakeElement final : public AccessibilityElement {
public:
    void setMessagingTimeout(std::chrono::milliseconds asked) override { timeout = asked; }
    [[nodiscard]] std::optional<List> elements(const QString &attribute) const override
    {
        const auto found = lists.constFind(attribute);
        return found == lists.constEnd() ? std::nullopt : std::optional(*found);
    }
    [[nodiscard]] QVariant value(const QString &attribute) const override { return values.value(attribute); }

    std::optional<std::chrono::milliseconds> timeout;
    QHash<QString, List> lists;
    QHash<QString, QVariant> values;
};

class FakeAccessibility final : public Accessibility {
public:
    [[nodiscard]] bool isProcessTrusted() const override { return isTrusted; }
    [[nodiscard]] std::shared_ptr<AccessibilityElement> application(qint64 process) const override
    {
        const auto found = applications.constFind(process);
        return found == applications.constEnd() ? std::make_shared<FakeElement>() : *found;
    }

    bool isTrusted = false;
    QHash<qint64, std::shared_ptr<FakeElement>> applications;
};

/// Answers each look when told to, and what is left when it goes: nobody waits for ever.
class FakeBadgeSource final : public BadgeSource {
public:
    ~FakeBadgeSource() override;

    void setActive(bool active) override { isActive = active; }
    [[nodiscard]] bool isPermitted() const override { return isAllowed; }
    [[nodiscard]] QCoro::Task<QList<BadgeTile>> tiles() override;

    /// Ends the look that began first. False when there is none.
    bool answer(const QList<BadgeTile> &tiles)
    {
        if (m_looks.isEmpty())
            return false;
        m_looks.takeFirst().resolve(tiles);
        return true;
    }
    void change() { Q_EMIT changed(); }
    [[nodiscard]] qsizetype looks() const { return m_looks.size(); }

    bool isActive = false;
    bool isAllowed = true;

private:
    QList<Promise<QList<BadgeTile>>> m_looks;
};

class FakeUserDefaults final : public UserDefaults {
public:
    [[nodiscard]] QStringList stringList(const QString &key) const override { return lists.value(key); }
    void setStringList(const QString &key, const QStringList &list) override
    {
        lists.insert(key, list);
        ++timesWritten;
    }

    QHash<QString, QStringList> lists;
    int timesWritten = 0;
};

class FakeFileManager final : public FileManager {
public:
    void comeForward(Workspace::Opened opened) override
    {
        ++timesForward;
        cameForward = std::move(opened);
    }

    int timesForward = 0;
    /// Of the last time.
    Workspace::Opened cameForward;
};

} // namespace moorline::test
