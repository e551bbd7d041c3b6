#include "fakes/FakeClock.h"
#include "fakes/FakeFiles.h"
#include "fakes/TemporaryDirectories.h"
#include "settings/SettingsStore.h"

#include <QCoreApplication>
#include <csignal>
#include <cstdio>
#include <sys/resource.h>

using namespace moorline;

namespace {

int printClockFormat()
{
    std::puts(systemClockFormat() == ClockFormat::twelveHour ? "12h" : "24h");
    return 0;
}

/// Changes the settings for ever and tells the number of each change once it is made.
[[noreturn]] void storm(SettingsStore &store)
{
    for (qint64 change = 1;; ++change) {
        store.change([change](Settings &settings) {
            settings.recentAppCount = change;
            // The length of the file changes a lot, so that a half-written one could not pass for whole.
            settings.highlightColorHex = QString(1 + change * 37 % 20000, u'x');
        });
        std::printf("%lld\n", static_cast<long long>(change));
        std::fflush(stdout);
    }
}

/// Changes the settings while no file may grow beyond a few bytes, as on a full disk.
int changeWithoutRoom(SettingsStore &store)
{
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{64, 64};
    if (setrlimit(RLIMIT_FSIZE, &limit) != 0)
        return 1;
    store.change([](Settings &settings) { settings.recentAppCount = 9; });
    return store.settings().recentAppCount == 9 ? 0 : 1;
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == QLatin1StringView("clock-format"))
        return printClockFormat();
    const test::GivenDirectories directories(arguments.value(2));
    test::FakeClock clock;
    test::FakeFileWatch fileWatch;
    const test::FakeFiles files;
    SettingsStore store({directories, clock, fileWatch, files, QStringLiteral("app"), nullptr});
    if (arguments.value(1) == QLatin1StringView("storm"))
        storm(store);
    return changeWithoutRoom(store);
}
