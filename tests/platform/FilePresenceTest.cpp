#include "platform/FilePresence.h"

#include "fakes/FakeFiles.h"
#include "harness/TestCase.h"

#include <QSignalSpy>

using namespace moorline;
using namespace moorline::test;

namespace {

const QString letter = QStringLiteral("/home/me/letter");

struct Ground {
    void set(const QString &path, bool isThere)
    {
        if (isThere)
            files.missing.remove(path);
        else
            files.missing.insert(path);
        watch.tell(path);
    }
    [[nodiscard]] qsizetype told()
    {
        QCoreApplication::processEvents();
        return changes.size();
    }

    FakeFiles files;
    FakeFileWatch watch;
    FilePresence presence{watch, [this](const QString &path) { return files.exists(path); }};
    QSignalSpy changes{&presence, &FilePresence::changed};
};

} // namespace

class FilePresenceTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void aFileThatGoesAndComesIsToldOf()
    {
        Ground ground;
        ground.presence.follow(letter);
        ground.set(letter, false);
        QCOMPARE(ground.changes.size(), 0);
        QCOMPARE(ground.told(), 1);
        ground.set(letter, true);
        QCOMPARE(ground.told(), 2);
    }

    void oneThatWasNotThereIsToldOfWhenItComes()
    {
        Ground ground;
        ground.files.missing.insert(letter);
        ground.presence.follow(letter);
        ground.set(letter, false);
        QCOMPARE(ground.told(), 0);
        ground.set(letter, true);
        QCOMPARE(ground.told(), 1);
    }

    void whatIsWrittenIsNoNews()
    {
        Ground ground;
        ground.presence.follow(letter);
        ground.watch.tell(letter);
        QCOMPARE(ground.told(), 0);
    }

    void manyAtOnceAreOneChange()
    {
        Ground ground;
        for (int i = 0; i < 10; ++i)
            ground.presence.follow(QString::number(i));
        for (int i = 0; i < 10; ++i)
            ground.set(QString::number(i), false);
        QCOMPARE(ground.told(), 1);
    }

    void aFileIsWatchedOnceHoweverOftenItIsAskedAbout()
    {
        Ground ground;
        ground.presence.follow(letter);
        ground.presence.follow(letter);
        QCOMPARE(ground.watch.watched(), 1);
    }

    void theLastTwoHundredAndFiftySixAreFollowed()
    {
        Ground ground;
        ground.presence.follow(letter);
        ground.presence.follow(QStringLiteral("/first to go"));
        for (int i = 0; i < 254; ++i)
            ground.presence.follow(QString::number(i));
        QCOMPARE(ground.watch.watched(), 256);
        ground.presence.follow(letter);
        ground.presence.follow(QStringLiteral("/one more"));
        QCOMPARE(ground.watch.watched(), 256);
        ground.set(QStringLiteral("/first to go"), false);
        QCOMPARE(ground.told(), 0);
        ground.set(letter, false);
        QCOMPARE(ground.told(), 1);
    }
};

MOORLINE_TEST(FilePresenceTest);

#include "FilePresenceTest.moc"
