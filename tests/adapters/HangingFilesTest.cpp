#include "platform/linux/desktop/PlainFiles.h"

#include "SecondVolume.h"
#include "fakes/FakeClock.h"
#include "platform/linux/bus/Bus.h"

#include <QElapsedTimer>

namespace moorline::test {

using namespace std::chrono_literals;

namespace {

/// Beside the trash: on the same volume.
QString pathOfOwn()
{
    const QString data = qEnvironmentVariable("XDG_DATA_HOME");
    QDir().mkpath(data);
    return data + QStringLiteral("/XXXXXX");
}

QUrl write(const QString &folder)
{
    QFile file(folder + QStringLiteral("/letter"));
    if (!file.open(QIODevice::WriteOnly))
        qFatal("cannot write");
    return QUrl::fromLocalFile(file.fileName());
}

/// A volume that hangs, a folder on one that does not, and who asks for both.
struct Volumes {
    Volumes() = default;
    Q_DISABLE_COPY_MOVE(Volumes)
    /// Whatever hangs is done before its volume goes.
    ~Volumes()
    {
        volume.goOn();
        const QString letter = volume.source() + QStringLiteral("/letter");
        if (isThrown && !QTest::qWaitFor([&letter] { return !QFile::exists(letter); }))
            qFatal("what hung stays where it is");
    }

    void list(const QString &folder, const QString &name)
    {
        files->list(
            folder, [](QList<FolderEntry> entries) { return entries; },
            [this, name](const auto &found) { answers.append(name + (found ? u'+' : u'-')); });
    }
    void throwAway(const QUrl &file, const QString &name)
    {
        isThrown |= file == there;
        files->moveToTrash(file, [this, name](bool succeeded) { answers.append(name + (succeeded ? u'+' : u'-')); });
    }

    SecondVolume volume;
    QTemporaryDir own{pathOfOwn()};
    QUrl there = write(volume.path());
    QUrl here = write(own.path());
    FakeClock clock;
    Bus bus;
    QStringList answers;
    bool isThrown = false;
    std::unique_ptr<PlainFiles> files = std::make_unique<PlainFiles>(clock, bus);
};

} // namespace

/// Files on a volume that does not answer.
class HangingFilesTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void aVolumeThatHangsKeepsNobodyFromTheOthers()
    {
        Volumes volumes;
        volumes.volume.hang();
        volumes.list(volumes.volume.path(), QStringLiteral("list there"));
        volumes.throwAway(volumes.there, QStringLiteral("throw there"));
        volumes.list(volumes.own.path(), QStringLiteral("list here"));
        QTRY_COMPARE(volumes.answers, QStringList{QStringLiteral("list here+")});
        volumes.throwAway(volumes.here, QStringLiteral("throw here"));
        QTRY_COMPARE(volumes.answers.last(), QStringLiteral("throw here+"));
        QCOMPARE(volumes.answers.size(), 2);
    }

    /// One that is merely slow is not said to be unreadable.
    void whatIsAskedOfItIsDoneWhenItGoesOn()
    {
        Volumes volumes;
        volumes.volume.hang();
        volumes.list(volumes.volume.path(), QStringLiteral("list"));
        volumes.throwAway(volumes.there, QStringLiteral("throw"));
        volumes.clock.advance(1h);
        QVERIFY(volumes.answers.isEmpty());
        volumes.volume.goOn();
        QTRY_COMPARE(volumes.answers.size(), 2);
        volumes.answers.sort();
        QCOMPARE(volumes.answers, (QStringList{QStringLiteral("list+"), QStringLiteral("throw+")}));
    }

    void theEndHardlyWaitsForIt()
    {
        Volumes volumes;
        volumes.volume.hang();
        volumes.list(volumes.volume.path(), QStringLiteral("list"));
        volumes.throwAway(volumes.there, QStringLiteral("throw"));
        volumes.clock.advance(2s);
        QElapsedTimer time;
        time.start();
        volumes.files.reset();
        QVERIFY2(time.elapsed() < 250, qPrintable(QString::number(time.elapsed())));
    }

    void theVolumeItselfKeepsNobodyFromTheOthers()
    {
        Volumes volumes;
        volumes.volume.hang();
        volumes.throwAway(QUrl::fromLocalFile(volumes.volume.path()), QStringLiteral("throw all"));
        const QUrl beside = write(QFileInfo(volumes.volume.path()).path());
        volumes.throwAway(beside, QStringLiteral("throw beside"));
        QTRY_COMPARE(volumes.answers.size(), 1);
        QVERIFY(volumes.answers.first().startsWith(QStringLiteral("throw beside")));
        volumes.volume.goOn();
        QTRY_COMPARE(volumes.answers.last(), QStringLiteral("throw all-"));
    }

    /// It is moved where it is, and what it leads to is not asked.
    void aLinkToOneIsThrownAway()
    {
        Volumes volumes;
        const QString link = volumes.own.filePath(QStringLiteral("link to what hangs"));
        QVERIFY(QFile::link(volumes.volume.path() + QStringLiteral("/letter"), link));
        volumes.volume.hang();
        volumes.throwAway(QUrl::fromLocalFile(link), QStringLiteral("throw"));
        QTRY_COMPARE(volumes.answers, QStringList{QStringLiteral("throw+")});
    }
};

MOORLINE_TEST(HangingFilesTest);

} // namespace moorline::test

#include "HangingFilesTest.moc"
