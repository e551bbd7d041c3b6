#import "platform/macos/MacWorkspace.h"

#import "platform/macos/Conversions.h"

#import <AppKit/AppKit.h>

namespace moorline {

namespace {

/// What stands for the process of an application without one.
constexpr pid_t noProcess = -1;

/// The workspace posts its notifications in a center of its own, never in the default one.
NSNotificationCenter *center()
{
    return NSWorkspace.sharedWorkspace.notificationCenter;
}

ActivationPolicy toPolicy(NSApplicationActivationPolicy policy)
{
    switch (policy) {
    case NSApplicationActivationPolicyRegular:
        return ActivationPolicy::regular;
    case NSApplicationActivationPolicyAccessory:
        return ActivationPolicy::accessory;
    case NSApplicationActivationPolicyProhibited:
        break;
    }
    return ActivationPolicy::prohibited;
}

RunningApplication describe(NSRunningApplication *application)
{
    const pid_t process = application.processIdentifier;
    return {
        .id = quint64(process),
        .process = process == noProcess ? std::nullopt : std::optional<qint64>(process),
        .bundleIdentifier = textFrom(application.bundleIdentifier),
        .bundlePath = textFrom(application.bundleURL.path),
        .activationPolicy = toPolicy(application.activationPolicy),
        .isTerminated = bool(application.terminated),
    };
}

std::optional<RunningApplication> applicationOf(NSNotification *notification)
{
    const id application = notification.userInfo[NSWorkspaceApplicationKey];
    if (![application isKindOfClass:[NSRunningApplication class]])
        return std::nullopt;
    return describe(application);
}

/// Nil when it runs no more.
NSRunningApplication *find(const RunningApplication &application)
{
    if (!application.process)
        return nil;
    return [NSRunningApplication runningApplicationWithProcessIdentifier:pid_t(*application.process)];
}

} // namespace

MacWorkspace::MacWorkspace()
    : m_spaceObserver(center(), NSWorkspaceActiveSpaceDidChangeNotification, [this] { Q_EMIT activeSpaceChanged(); })
    , m_activationObserver(center(), NSWorkspaceDidActivateApplicationNotification,
          [this](NSNotification *notification) { Q_EMIT applicationActivated(applicationOf(notification)); })
    , m_launchObserver(center(), NSWorkspaceDidLaunchApplicationNotification, [this] { Q_EMIT applicationLaunched(); })
    , m_terminationObserver(
          center(), NSWorkspaceDidTerminateApplicationNotification, [this] { Q_EMIT applicationTerminated(); })
{
}

std::optional<QList<RunningApplication>> MacWorkspace::runningApplications() const
{
    QList<RunningApplication> result;
    for (NSRunningApplication *application in NSWorkspace.sharedWorkspace.runningApplications)
        result.append(describe(application));
    return result;
}

std::optional<QString> MacWorkspace::applicationPath(const QString &bundleIdentifier) const
{
    NSURL *url = [NSWorkspace.sharedWorkspace URLForApplicationWithBundleIdentifier:toNSString(bundleIdentifier)];
    return textFrom(url.path);
}

void MacWorkspace::activate(const RunningApplication &application)
{
    [find(application) activateWithOptions:NSApplicationActivateAllWindows];
}

void MacWorkspace::terminate(const RunningApplication &application)
{
    [find(application) terminate];
}

void MacWorkspace::open(const QString &applicationPath, const QList<QUrl> &files, Opened opened)
{
    NSURL *application = toNSURL(QUrl::fromLocalFile(applicationPath));
    NSWorkspaceOpenConfiguration *configuration = [NSWorkspaceOpenConfiguration configuration];
    configuration.activates = YES;
    const auto completion = ^(NSRunningApplication *, NSError *error) {
        if (opened)
            opened(textFrom(error.localizedDescription));
    };
    if (!application)
        return completion(nil, [NSError errorWithDomain:NSCocoaErrorDomain code:NSFileNoSuchFileError userInfo:nil]);
    NSArray<NSURL *> *urls = toNSURLs(files);
    if (urls.count == 0) {
        [NSWorkspace.sharedWorkspace openApplicationAtURL:application
                                            configuration:configuration
                                        completionHandler:completion];
    } else {
        [NSWorkspace.sharedWorkspace openURLs:urls
                         withApplicationAtURL:application
                                configuration:configuration
                            completionHandler:completion];
    }
}

void MacWorkspace::openFile(const QUrl &file)
{
    if (NSURL *url = toNSURL(file))
        [NSWorkspace.sharedWorkspace openURL:url];
}

void MacWorkspace::openAddress(const QUrl &address)
{
    if (NSURL *url = toNSURL(address))
        [NSWorkspace.sharedWorkspace openURL:url];
}

void MacWorkspace::reveal(const QList<QUrl> &files)
{
    [NSWorkspace.sharedWorkspace activateFileViewerSelectingURLs:toNSURLs(files)];
}

void MacWorkspace::showFolder(const QString &path, Opened opened)
{
    const BOOL isShown = [NSWorkspace.sharedWorkspace selectFile:nil inFileViewerRootedAtPath:toNSString(path)];
    if (opened)
        opened(isShown ? std::nullopt : std::optional(QStringLiteral("the folder could not be shown")));
}

} // namespace moorline
