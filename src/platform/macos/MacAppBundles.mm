#import "platform/macos/MacAppBundles.h"

#import "platform/macos/Conversions.h"
#include "support/Promise.h"

#import <AppKit/AppKit.h>

#include <QMutex>
#include <QPointer>
#include <utility>

namespace moorline {

namespace {

// A listing takes milliseconds. A disk that does not answer may take for ever.
constexpr int longestJoinMilliseconds = 500;

/// A bundle may be asked on any thread, but on one at a time, and there is one for each path in the whole program.
Q_CONSTINIT QBasicMutex bundles;

QStringList applicationFolders()
{
    return {
        QStringLiteral("/Applications"),
        QStringLiteral("/Applications/Utilities"),
        QStringLiteral("/System/Applications"),
        QStringLiteral("/System/Applications/Utilities"),
        QStringLiteral("/System/Library/CoreServices"),
        toQString(NSHomeDirectory()) + QStringLiteral("/Applications"),
    };
}

std::optional<BundleInfo> describe(const QString &path)
{
    const QMutexLocker locker(&bundles);
    NSBundle *bundle = [NSBundle bundleWithPath:toNSString(path)];
    if (!bundle)
        return std::nullopt;
    return BundleInfo{
        .identifier = textFrom(bundle.bundleIdentifier),
        .displayName = textFrom([bundle objectForInfoDictionaryKey:@"CFBundleDisplayName"]),
        .name = textFrom([bundle objectForInfoDictionaryKey:@"CFBundleName"]),
    };
}

/// None where it cannot be listed.
QStringList namesIn(const QString &folder)
{
    return toQStringList([NSFileManager.defaultManager contentsOfDirectoryAtPath:toNSString(folder) error:nil]);
}

bool isFolder(const QString &path)
{
    BOOL isDirectory = NO;
    return [NSFileManager.defaultManager fileExistsAtPath:toNSString(path) isDirectory:&isDirectory] && isDirectory;
}

QList<InstalledBundle> bundlesIn(const QStringList &folders)
{
    QList<InstalledBundle> result;
    for (const QString &folder : folders) {
        const QStringList names = namesIn(folder);
        for (const QString &name : names) {
            const QString path = folder + u'/' + name;
            if (name.endsWith(QLatin1StringView(".app")))
                result.append({.path = path, .info = describe(path).value_or(BundleInfo{})});
        }
    }
    return result;
}

} // namespace

MacAppBundles::MacAppBundles()
    : m_folders(applicationFolders())
{
    m_thread->setMaxThreadCount(1);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, &MacAppBundles::forget);
    watchFolders();
}

MacAppBundles::~MacAppBundles()
{
    m_thread->clear();
    // One that is stuck is left to itself, with all that it needs: its pool would wait for it.
    if (!m_thread->waitForDone(longestJoinMilliseconds))
        static_cast<void>(m_thread.release());
}

QString MacAppBundles::applicationExtension() const
{
    return QStringLiteral("app");
}

std::optional<BundleInfo> MacAppBundles::info(const QString &path) const
{
    return describe(path);
}

std::optional<QString> MacAppBundles::locate(const QString &path, const std::optional<QString> &identifier) const
{
    if (isFolder(path))
        return path;
    if (!identifier)
        return std::nullopt;
    NSURL *url = [NSWorkspace.sharedWorkspace URLForApplicationWithBundleIdentifier:toNSString(*identifier)];
    return textFrom(url.path);
}

QCoro::Task<QList<InstalledBundle>> MacAppBundles::installed()
{
    watchFolders();
    // QCoro moves from what is no constant.
    if (m_known)
        co_return std::as_const(*m_known);
    const QPointer<MacAppBundles> alive(this);
    const int changes = m_changes;
    const Promise<QList<InstalledBundle>> answer;
    m_thread->start([folders = m_folders, answers = m_answers, answer] {
        @autoreleasepool {
            const auto resolve = [answer, found = bundlesIn(folders)] { answer.resolve(found); };
            QMetaObject::invokeMethod(answers.get(), resolve, Qt::QueuedConnection);
        }
    });
    const QList<InstalledBundle> found = co_await answer;
    if (alive && m_changes == changes)
        m_known = found;
    co_return found;
}

void MacAppBundles::watchFolders()
{
    QStringList missing;
    const QStringList watched = m_watcher.directories();
    for (const QString &folder : m_folders) {
        if (!watched.contains(folder) && isFolder(folder))
            missing.append(folder);
    }
    if (missing.isEmpty())
        return;
    // In one call: each begins the watch anew.
    m_watcher.addPaths(missing);
    m_known.reset();
}

void MacAppBundles::forget()
{
    ++m_changes;
    m_known.reset();
    Q_EMIT changed();
}

} // namespace moorline
