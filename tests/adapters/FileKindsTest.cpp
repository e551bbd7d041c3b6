#include "platform/linux/icons/FileKinds.h"

#include "SecondVolume.h"
#include "fakes/FakeClock.h"

#include <QSignalSpy>

namespace moorline::test {

namespace {

using namespace std::chrono_literals;

void write(const QString &path, const QByteArray &content = "words")
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write %s", qPrintable(path));
}

} // namespace

class FileKindsTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_disk = std::make_unique<QTemporaryDir>();
        m_clock = std::make_unique<FakeClock>();
        m_kinds = std::make_unique<FileKinds>(*m_clock);
        m_changes = std::make_unique<QSignalSpy>(m_kinds.get(), &FileKinds::changed);
    }

    void cleanup()
    {
        m_changes.reset();
        m_kinds.reset();
        m_clock.reset();
        m_disk.reset();
        TestCase::cleanup();
    }

    void iconsGoByWhatAFileIs()
    {
        write(path("letter.txt"));
        QCOMPARE(names("letter.txt").value(0), QStringLiteral("text-plain"));
        QVERIFY(names("letter.txt").contains(QStringLiteral("text-x-generic")));
        QVERIFY(found(m_disk->path()).contains(QStringLiteral("folder")));
        QCOMPARE(names("none.txt"), QStringList());
    }

    void aFileThatComesIsTold()
    {
        QCOMPARE(names("letter.txt"), QStringList());
        write(path("other.txt"));
        QVERIFY(!isToldSoon());
        write(path("letter.txt"));
        QVERIFY(isToldSoon());
        QVERIFY(!names("letter.txt").isEmpty());
    }

    void aFileThatGoesOrIsAnotherIsTold()
    {
        write(path("letter.txt"));
        QVERIFY(!names("letter.txt").isEmpty());
        // What is written into it is no other kind.
        write(path("letter.txt"), "more words");
        QVERIFY(!isToldSoon());
        QVERIFY(QFile::rename(path("letter.txt"), path("elsewhere.txt")));
        QVERIFY(isToldSoon());
        QVERIFY(QDir().mkdir(path("letter.txt")));
        QVERIFY(isToldSoon());
        QVERIFY(names("letter.txt").contains(QStringLiteral("folder")));
    }

    void aFolderThatComesWithTheFileIsTold()
    {
        QCOMPARE(names("one/two/letter.txt"), QStringList());
        QVERIFY(QDir().mkpath(path("one/two")));
        QVERIFY(isToldSoon());
        QCOMPARE(names("one/two/letter.txt"), QStringList());
        write(path("one/two/letter.txt"));
        QVERIFY(isToldSoon());
        QVERIFY(!names("one/two/letter.txt").isEmpty());
        QVERIFY(QDir(path("one")).removeRecursively());
        QVERIFY(isToldSoon());
        QCOMPARE(names("one/two/letter.txt"), QStringList());
    }

    void muchAtOnceIsToldOnce()
    {
        for (int i = 0; i < 20; ++i)
            static_cast<void>(names(QByteArray::number(i)));
        for (int i = 0; i < 20; ++i)
            write(path(QByteArray::number(i)));
        QVERIFY(isToldSoon());
        QVERIFY(!isToldSoon());
        QCOMPARE(m_changes->size(), 1);
    }

    void aVolumeThatComesAndGoesIsTold()
    {
        auto volume = std::make_unique<SecondVolume>();
        QVERIFY(isToldSoon());
        write(volume->path() + QStringLiteral("/letter.txt"));
        const QString letter = volume->path() + QStringLiteral("/letter.txt");
        QCOMPARE(found(letter).value(0), QStringLiteral("text-plain"));
        volume.reset();
        QVERIFY(isToldSoon());
        QCOMPARE(found(letter), QStringList());
    }

    void aVolumeThatHangsIsAsIfItWereNotThereUntilItAnswers()
    {
        SecondVolume volume;
        QVERIFY(isToldSoon());
        write(volume.source() + QStringLiteral("/letter.txt"));
        const QString letter = volume.path() + QStringLiteral("/letter.txt");
        volume.hang();
        std::optional<QStringList> answer;
        m_kinds->find(letter, [&](const QStringList &names) { answer = names; });
        QTest::qWait(50);
        m_clock->advance(1999ms);
        QVERIFY(!answer);
        m_clock->advance(1ms);
        QCOMPARE(answer, std::optional(QStringList()));
        // What is elsewhere is found all the while.
        write(path("letter.txt"));
        QCOMPARE(names("letter.txt").value(0), QStringLiteral("text-plain"));
        volume.goOn();
        QVERIFY(isToldSoon());
        QCOMPARE(found(letter).value(0), QStringLiteral("text-plain"));
    }

private:
    [[nodiscard]] QString path(const QByteArray &name) const { return m_disk->filePath(QString::fromLatin1(name)); }
    [[nodiscard]] QStringList names(const QByteArray &name) { return found(path(name)); }

    [[nodiscard]] QStringList found(const QString &path)
    {
        std::optional<QStringList> answer;
        m_kinds->find(path, [&](const QStringList &names) { answer = names; });
        if (!QTest::qWaitFor([&] { return answer.has_value(); }))
            qFatal("no answer");
        return *answer;
    }

    /// Whether there was news, once it had time to be heard.
    [[nodiscard]] bool isToldSoon()
    {
        const qsizetype before = m_changes->size();
        // The kernel tells at once; a mount that goes takes its time.
        static_cast<void>(QTest::qWaitFor([this] { return m_clock->runningTimers() > 0; }, 300));
        m_clock->advance(1s);
        return m_changes->size() > before;
    }

    std::unique_ptr<QTemporaryDir> m_disk;
    std::unique_ptr<FakeClock> m_clock;
    std::unique_ptr<FileKinds> m_kinds;
    std::unique_ptr<QSignalSpy> m_changes;
};

MOORLINE_TEST(FileKindsTest);

} // namespace moorline::test

#include "FileKindsTest.moc"
