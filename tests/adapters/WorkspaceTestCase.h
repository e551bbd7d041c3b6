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
};

} // namespace moorline::test
