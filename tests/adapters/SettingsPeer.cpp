#include "fakes/FakeFiles.h"
#include "fakes/TemporaryDirectories.h"
#include "platform/qt/QtClock.h"
#include "platform/qt/QtFileWatch.h"
#include "settings/SettingsStore.h"

#include <QCoreApplication>
#include <cstdio>

using namespace moorline;
using namespace std::chrono_literals;

// Counts one setting up as fast as the event loop goes, and waits until another bar has counted the other as far. Tells
// both in the end.
int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const test::GivenDirectories directories(arguments.value(1));
    const auto field = arguments.value(2) == QLatin1StringView("apps") ? &Settings::recentAppCount
                                                                       : &Settings::musicIdleTimeoutMinutes;
    const int last = arguments.value(3).toInt();
    QtClock clock;
    QtFileWatch fileWatch;
    const test::FakeFiles files;
    SettingsStore store({directories, clock, fileWatch, files, QStringLiteral("app"), nullptr});

    const auto count = clock.every(1ms, [&] {
        const Settings &settings = store.settings();
        if (settings.*field < last)
            store.change([&](Settings &record) { record.*field += 1; });
        else if (settings.recentAppCount == last && settings.musicIdleTimeoutMinutes == last)
            QCoreApplication::quit();
    });
    const auto patience = clock.after(30s, [] { QCoreApplication::quit(); });
    QCoreApplication::exec();
    std::printf("%lld %lld\n", static_cast<long long>(store.settings().recentAppCount),
        static_cast<long long>(store.settings().musicIdleTimeoutMinutes));
    return 0;
}
