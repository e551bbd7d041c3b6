#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <QUrl>
#include <functional>
#include <optional>

namespace moorline {

/// How an application presents itself to the user.
enum class ActivationPolicy {
    /// Like any other: with windows, and among what can be switched to.
    regular,
    /// Without a place among those, but it can have windows.
    accessory,
    /// Never seen.
    prohibited,
};

/// An application that runs. One that runs twice is there twice.
struct RunningApplication {
    /// Names it for as long as it runs.
    quint64 id = 0;
    /// Absent where there is none, or more than one.
    std::optional<qint64> process = std::nullopt;
    std::optional<QString> bundleIdentifier = std::nullopt;
    std::optional<QString> bundlePath = std::nullopt;
    ActivationPolicy activationPolicy = ActivationPolicy::regular;
    bool isTerminated = false;

    bool operator==(const RunningApplication &) const = default;
};

/// What goes on among the applications of this session, and what can be asked of them.
class Workspace : public QObject {
    Q_OBJECT
public:
    /// Called once, on whichever thread: with a description of what went wrong, or without one.
    using Opened = std::function<void(const std::optional<QString> &error)>;

    using QObject::QObject;

    /// In the order in which they were started, as far as the system knows it. Absent while the system cannot tell, as
    /// when no window manager runs.
    [[nodiscard]] virtual std::optional<QList<RunningApplication>> runningApplications() const = 0;
    /// Where the application with this identifier is. Absent when none is installed.
    [[nodiscard]] virtual std::optional<QString> applicationPath(const QString &bundleIdentifier) const = 0;
    /// Whether an application may come to the front without anyone having meant it, as when the focus follows the
    /// pointer.
    [[nodiscard]] virtual bool activatesInPassing() const = 0;
    /// Whether an application counts as ended when its last window goes, though another may follow at once: what runs
    /// is known by its windows alone.
    [[nodiscard]] virtual bool endsWithLastWindow() const = 0;

    /// Whether there is a way to ask this application to quit; one that has none is not offered to.
    [[nodiscard]] virtual bool canTerminate(const RunningApplication &application) const = 0;

    /// Brings an application and all its windows to the front.
    virtual void activate(const RunningApplication &application) = 0;
    /// Asks an application to quit, as its own menu would; it may refuse.
    virtual void terminate(const RunningApplication &application) = 0;
    /// Starts the application at a path and brings it to the front, with these files where there are any. `opened` may
    /// be empty.
    virtual void open(const QString &applicationPath, const QList<QUrl> &files, Opened opened) = 0;
    /// Opens a file or folder with its default application, which goes by what kind of file it is: a program is not
    /// run, unless that is what the system does with an application. Nothing happens where that cannot be.
    virtual void openFile(const QUrl &file) = 0;
    /// Opens a web address with the user's browser.
    virtual void openAddress(const QUrl &address) = 0;
    /// Shows files in the file manager, selected, and brings it to the front.
    virtual void reveal(const QList<QUrl> &files) = 0;
    /// Shows a folder in a window of the file manager, nothing selected. `opened` may be empty.
    virtual void showFolder(const QString &path, Opened opened) = 0;

Q_SIGNALS:
    /// Another space (virtual desktop) became the active one.
    void activeSpaceChanged();
    /// Another application came to the front; absent when none is there, or nobody knows which.
    void applicationActivated(const std::optional<moorline::RunningApplication> &application);
    /// An application is new among the running ones, or another thing about them changed but their end.
    void applicationLaunched();
    void applicationTerminated();
    /// What was started from `applicationPath` ended before anything was seen of it. Not every system tells.
    void launchEnded(const QString &applicationPath);
};

} // namespace moorline
