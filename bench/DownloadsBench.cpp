// How long it takes from a click on the Downloads to their list, and how long the event loop stands still meanwhile.

#include "files/RecentDownloads.h"
#include "platform/linux/bus/Bus.h"
#include "platform/linux/desktop/PlainFiles.h"
#include "platform/qt/QtClock.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QTemporaryDir>
#include <QTextStream>
#include <QTimer>
#include <algorithm>

namespace {

using namespace moorline;

constexpr int rounds = 7;

double milliseconds(const QElapsedTimer &timer)
{
    return static_cast<double>(timer.nsecsElapsed()) / 1'000'000;
}

/// With names as long as those of what is downloaded.
bool fill(const QString &folder, int count)
{
    if (!QDir().mkpath(folder))
        return false;
    for (int i = 0; i < count; ++i) {
        QFile file(QStringLiteral("%1/quarterly report of the branch (%2).pdf").arg(folder).arg(i));
        if (!file.open(QIODevice::WriteOnly))
            return false;
    }
    return true;
}

/// The longest time between two turns of the event loop while it lives, in milliseconds. The loop is asked for a turn
/// each millisecond, so that a loop that never stands still shows one.
class StallWatch final {
public:
    StallWatch()
    {
        m_timer.setTimerType(Qt::PreciseTimer);
        m_timer.setInterval(1);
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { note(); });
        m_turn.start();
        m_timer.start();
    }

    /// With the turn that has not ended.
    [[nodiscard]] double longest()
    {
        note();
        return m_longest;
    }

private:
    void note()
    {
        m_longest = std::max(m_longest, milliseconds(m_turn));
        m_turn.restart();
    }

    QTimer m_timer;
    QElapsedTimer m_turn;
    double m_longest = 0;
};

/// In milliseconds.
struct Figures {
    QList<double> lists;
    double longestStall = 0;
};

/// False where the list is not what it should be.
bool click(Files &files, const QString &folder, Figures &figures)
{
    qsizetype listed = -1;
    QEventLoop loop;
    QElapsedTimer timer;
    StallWatch watch;
    timer.start();
    files.list(folder, newest, [&](const std::optional<QList<FolderEntry>> &found) {
        listed = found ? urlsIn(folder, *found).size() : -1;
        figures.lists.append(milliseconds(timer));
        loop.quit();
    });
    loop.exec();
    figures.longestStall = std::max(figures.longestStall, watch.longest());
    return listed == mostRecentDownloads;
}

/// Empty where something is wrong.
Figures measure(const QString &folder)
{
    QtClock clock;
    Bus bus;
    PlainFiles files(clock, bus);
    Figures figures;
    for (int round = 0; round < rounds; ++round) {
        if (!click(files, folder, figures))
            return {};
    }
    std::sort(figures.lists.begin(), figures.lists.end());
    return figures;
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    QTextStream out(stdout);
    out.setRealNumberNotation(QTextStream::FixedNotation);
    out.setRealNumberPrecision(1);
    const QTemporaryDir root;
    out << "From a click to the list of the Downloads, which the system has in memory; " << rounds << " rounds.\n\n"
        << "  files    fastest     median    slowest  longest stall\n";
    for (const int count : {100, 10'000, 100'000}) {
        const QString folder = root.filePath(QString::number(count));
        const Figures figures = fill(folder, count) ? measure(folder) : Figures();
        if (figures.lists.isEmpty())
            return 1;
        const QList<double> &lists = figures.lists;
        out << qSetFieldWidth(7) << count;
        for (const double time : {lists.first(), lists[rounds / 2], lists.last()})
            out << qSetFieldWidth(8) << time << qSetFieldWidth(0) << " ms";
        out << qSetFieldWidth(12) << figures.longestStall << qSetFieldWidth(0) << " ms\n";
        out.flush();
    }
    return 0;
}
