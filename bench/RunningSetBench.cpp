// How long it takes to find out which applications run, from what windows, processes and desktop entries say.

#include "freedesktop/OpenApplications.h"
#include "freedesktop/WindowIdentities.h"

#include <QElapsedTimer>
#include <QTextStream>
#include <algorithm>

namespace {

using namespace moorline;

constexpr int entryCount = 5000;
constexpr int rounds = 21;

QList<EntryRecord> installed()
{
    QList<EntryRecord> records;
    for (int i = 0; i < entryCount; ++i) {
        const QString name = QStringLiteral("program-%1").arg(i);
        records.append({.path = QStringLiteral("/usr/share/applications/%1.desktop").arg(name),
            .id = name,
            .exec = QStringLiteral("env LANG=C /usr/lib/%1/%1 --window %U").arg(name),
            .startupWmClass = QStringLiteral("Class-%1").arg(i)});
    }
    return records;
}

/// A third is known by its class, a third by its process, a third by nothing.
WindowFacts window(int number)
{
    WindowFacts facts{.window = XWindowId(number + 1), .process = number % 400 + 1};
    if (number % 3 == 0)
        facts.className = QStringLiteral("class-%1").arg(number % entryCount);
    else
        facts.className = QStringLiteral("unheard-of-%1").arg(number);
    return facts;
}

QHash<qint64, ProcessFacts> processes()
{
    QHash<qint64, ProcessFacts> all;
    for (int i = 1; i <= 400; ++i) {
        const QString path = i % 2 == 0 ? QStringLiteral("/usr/lib/program-%1/program-%1").arg(i)
                                        : QStringLiteral("/opt/unknown-%1").arg(i);
        all.insert(i, {.process = i, .executable = path, .command = {path, QStringLiteral("--window")}});
    }
    return all;
}

template <typename Work>
double medianMicroseconds(Work work)
{
    QList<double> times;
    for (int round = 0; round < rounds; ++round) {
        QElapsedTimer timer;
        timer.start();
        work();
        times.append(static_cast<double>(timer.nsecsElapsed()) / 1000);
    }
    std::sort(times.begin(), times.end());
    return times[rounds / 2];
}

} // namespace

int main()
{
    QTextStream out(stdout);
    const QList<EntryRecord> records = installed();
    const QHash<qint64, ProcessFacts> known = processes();
    const auto lookUp = [&](qint64 process) {
        const auto found = known.constFind(process);
        return found == known.constEnd() ? nullptr : &*found;
    };
    WindowIdentities identities;
    out << "Running set, with " << entryCount << " desktop entries; medians of " << rounds << " rounds.\n"
        << "Entries read anew: "
        << qRound(medianMicroseconds([&] { identities.setMatcher(std::make_shared<WindowMatcher>(records)); }) / 1000)
        << " ms\n\n"
        << "windows   all are new   one is new   nothing is new\n";
    for (const int count : {10, 100, 1000, 10000}) {
        QList<WindowFacts> windows;
        for (int i = 0; i < count; ++i)
            windows.append(window(i));
        qsizetype found = 0;
        const auto refresh = [&] { found += openApplications(windows, identities.identify(windows, lookUp)).size(); };
        const double all = medianMicroseconds([&] {
            static_cast<void>(identities.identify({}, lookUp));
            refresh();
        });
        const double one = medianMicroseconds([&] {
            windows.first().className += u'x';
            refresh();
        });
        const double none = medianMicroseconds(refresh);
        out << qSetFieldWidth(7) << count << qSetFieldWidth(0) << qSetFieldWidth(11) << qRound(all) << qSetFieldWidth(0)
            << " us" << qSetFieldWidth(10) << qRound(one) << qSetFieldWidth(0) << " us" << qSetFieldWidth(14)
            << qRound(none) << qSetFieldWidth(0) << " us\n";
        if (found == 0)
            return 1;
    }
    return 0;
}
