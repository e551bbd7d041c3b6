#pragma once

#include "X11TestCase.h"
#include "platform/linux/apps/AppStarter.h"
#include "platform/linux/apps/DesktopEntries.h"
#include "platform/linux/apps/LinuxWorkspace.h"
#include "platform/linux/bus/Bus.h"
#include "platform/linux/x11/UserTime.h"
#include "platform/qt/QtClock.h"

#include <QFile>
#include <QTemporaryDir>

namespace moorline::test {

/// Desktop entries on disk, and the applications that run by them.
class WorkspaceTestCase : public X11TestCase {
    Q_OBJECT

protected:
    static WindowPlan plan(const char *windowClass = "paint", const QRect &frame = {200, 150, 300, 200})
    {
        const QByteArray name(windowClass);
        QByteArray both = name;
        both.append('\0').append(name).append('\0');
        return {.frame = frame, .windowClass = both};
    }
    [[nodiscard]] xcb_window_t showClosable(const char *windowClass) const
    {
        const xcb_window_t window = foreign->create(plan(windowClass));
        foreign->setValues(window, "WM_PROTOCOLS", "ATOM", {foreign->atom("WM_DELETE_WINDOW")});
        foreign->map(window);
        return QTest::qWaitFor([&] { return foreign->isManaged(window); }) ? window : xcb_window_t{XCB_WINDOW_NONE};
    }

    void writeEntry(const QString &id, const QByteArray &more = {}) const
    {
        QFile file(entryPath(id));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("[Desktop Entry]\nType=Application\nName=" + id.toUtf8() + "\nExec=/bin/" + id.toUtf8() + " %F\n");
        file.write(more);
    }
    [[nodiscard]] QString entryPath(const QString &id) const
    {
        return folder->filePath(id + QStringLiteral(".desktop"));
    }

    /// Entries are read anew.
    void start()
    {
        workspace.reset();
        starter.reset();
        entries = std::make_unique<DesktopEntries>(clock, EntryPlaces{.folders = {folder->path()}});
        starter = std::make_unique<AppStarter>(
            *entries, bus, clock, QList<QByteArray>{"PATH=/usr/bin:/bin"}, nullptr, [] { return 0U; });
        workspace = std::make_unique<LinuxWorkspace>(LinuxWorkspace::Context{.connection = *connection,
            .clients = *clients,
            .entries = *entries,
            .starter = *starter,
            .userTime = *userTime,
            .sessionBus = bus,
            .clock = clock});
        fronts.clear();
        connect(workspace.get(), &Workspace::applicationActivated, this,
            [this](const std::optional<RunningApplication> &application) {
                fronts.append(application ? application->bundleIdentifier.value_or(QString()) : QString());
            });
    }

    /// Shows a window as showActive() does, and waits until the bar knows that its application is in front.
    [[nodiscard]] xcb_window_t showInFront(const char *windowClass, const QRect &frame = {200, 150, 300, 200})
    {
        const qsizetype before = fronts.size();
        const xcb_window_t window = showActive(plan(windowClass, frame));
        return isInFront(windowClass, before) ? window : xcb_window_t{XCB_WINDOW_NONE};
    }
    /// Another program brings the window to the front; waits until the bar knows.
    [[nodiscard]] bool bringToFront(xcb_window_t window, const char *windowClass)
    {
        const qsizetype before = fronts.size();
        foreign->activate(window);
        return QTest::qWaitFor([&] { return foreign->activeWindow() == window; }) && isInFront(windowClass, before);
    }

    /// Of the applications that run now.
    [[nodiscard]] QStringList identifiers() const
    {
        QStringList all;
        const auto running = workspace->runningApplications();
        if (!running)
            return {QStringLiteral("unknown")};
        for (const RunningApplication &one : *running)
            all.append(one.bundleIdentifier.value_or(QStringLiteral("nobody")));
        return all;
    }
    [[nodiscard]] RunningApplication application(const QString &identifier) const
    {
        const auto running = workspace->runningApplications().value_or(QList<RunningApplication>());
        for (const RunningApplication &one : running) {
            if (one.bundleIdentifier == identifier)
                return one;
        }
        return {};
    }

    std::unique_ptr<QTemporaryDir> folder;
    QtClock clock;
    Bus bus;
    std::unique_ptr<UserTime> userTime;
    std::unique_ptr<DesktopEntries> entries;
    std::unique_ptr<AppStarter> starter;
    std::unique_ptr<LinuxWorkspace> workspace;
    /// Who was said to have come to the front since the start; empty for nobody.
    QStringList fronts;

protected Q_SLOTS:
    void init()
    {
        X11TestCase::init();
        folder = std::make_unique<QTemporaryDir>();
        userTime = std::make_unique<UserTime>(*connection, clock);
        writeEntry(QStringLiteral("paint"));
        writeEntry(QStringLiteral("write"));
    }

    void cleanup()
    {
        workspace.reset();
        starter.reset();
        entries.reset();
        userTime.reset();
        X11TestCase::cleanup();
    }

private:
    [[nodiscard]] bool isInFront(const char *windowClass, qsizetype before)
    {
        return QTest::qWaitFor([&] { return fronts.size() > before && fronts.last() == QLatin1String(windowClass); });
    }
};

} // namespace moorline::test
