// How long it takes to read desktop entries from disk, and to find one's way among them.

#include "platform/linux/apps/EntryLoader.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTextStream>
#include <algorithm>

namespace {

using namespace moorline;

constexpr int rounds = 7;

/// As long as those of a distribution are, which come in many languages.
QByteArray entry(int number)
{
    const QByteArray name = QByteArray::number(number);
    QByteArray text = "[Desktop Entry]\nType=Application\nName=Program " + name + "\n";
    for (int language = 0; language < 40; ++language) {
        const QByteArray code = {char('a' + language / 26), char('a' + language % 26)};
        text += "Name[" + code + "]=Program " + name + "\nComment[" + code + "]=Does what a program does\n";
    }
    return text + "Exec=/usr/bin/program-" + name + " %U\nIcon=program-" + name
        + "\nCategories=Utility;\nMimeType=text/plain;image/png;\nStartupWMClass=Program-" + name + "\n";
}

bool write(const QString &folder, int count)
{
    if (!QDir().mkpath(folder))
        return false;
    for (int i = 0; i < count; ++i) {
        QFile file(QStringLiteral("%1/program-%2.desktop").arg(folder).arg(i));
        const QByteArray text = entry(i);
        if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
            return false;
    }
    return true;
}

/// Each loading in milliseconds, the fastest first. Empty where not all of them were found.
QList<double> loadings(const QString &folder, int count)
{
    const EntryPlaces places{.folders = {folder}};
    const std::atomic_bool cancelled = false;
    QList<double> times;
    for (int round = 0; round < rounds; ++round) {
        QElapsedTimer timer;
        timer.start();
        const LoadedEntries loaded = loadEntries(places, cancelled);
        times.append(static_cast<double>(timer.nsecsElapsed()) / 1'000'000);
        if (loaded.catalogue->records().size() != count)
            return {};
    }
    std::sort(times.begin(), times.end());
    return times;
}

} // namespace

int main()
{
    QTextStream out(stdout);
    const QTemporaryDir root;
    out << "Desktop entries read from disk, which the system has in memory; " << rounds << " rounds.\n\n"
        << "entries   fastest    median   slowest\n";
    for (const int count : {500, 2000, 5000}) {
        const QString folder = root.filePath(QString::number(count));
        const QList<double> times = write(folder, count) ? loadings(folder, count) : QList<double>();
        if (times.isEmpty())
            return 1;
        out << qSetFieldWidth(7) << count;
        for (const double time : {times.first(), times[rounds / 2], times.last()})
            out << qSetFieldWidth(7) << qRound(time) << qSetFieldWidth(0) << " ms";
        out << qSetFieldWidth(0) << '\n';
        out.flush();
    }
    return 0;
}
