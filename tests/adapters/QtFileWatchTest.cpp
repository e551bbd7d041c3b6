#include "platform/qt/QtFileWatch.h"

#include "harness/TestCase.h"

#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <QTemporaryDir>

using namespace moorline;
using namespace moorline::test;

namespace {

void write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

void replace(const QString &path, const QByteArray &bytes)
{
    QSaveFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(bytes);
    QVERIFY(file.commit());
}

} // namespace

class QtFileWatchTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_root = std::make_unique<QTemporaryDir>();
        m_path = m_root->filePath(QStringLiteral("settings.json"));
    }

    void aFileThatIsMadeIsSeen()
    {
        const auto watch = begin(m_path);
        QVERIFY(isSeen([this] { write(m_path, "one"); }));
        QVERIFY(isSeen([this] { write(m_path, "two"); }));
    }

    void aFileThatIsWrittenInPlaceIsSeenEveryTime()
    {
        write(m_path, "one");
        const auto watch = begin(m_path);
        for (const char *bytes : {"two", "three", "four"})
            QVERIFY(isSeen([&] { write(m_path, bytes); }));
    }

    void aFileThatIsReplacedIsSeenEveryTimeAndInPlaceAfterwards()
    {
        write(m_path, "one");
        const auto watch = begin(m_path);
        for (const char *bytes : {"two", "three", "four"})
            QVERIFY(isSeen([&] { replace(m_path, bytes); }));
        QVERIFY(isSeen([this] { write(m_path, "five"); }));
    }

    void aFileThatIsRemovedAndComesBackIsSeen()
    {
        write(m_path, "one");
        const auto watch = begin(m_path);
        QVERIFY(isSeen([this] { QVERIFY(QFile::remove(m_path)); }));
        QVERIFY(isSeen([this] { write(m_path, "two"); }));
        QVERIFY(isSeen([this] { write(m_path, "three"); }));
    }

    void theEndOfALinkIsWatched()
    {
        QVERIFY(QDir(m_root->path()).mkdir(QStringLiteral("elsewhere")));
        const QString target = m_root->filePath(QStringLiteral("elsewhere/settings"));
        write(target, "one");
        QVERIFY(QFile::link(target, m_path));
        const auto watch = begin(m_path);
        QVERIFY(isSeen([&] { write(target, "two"); }));
        QVERIFY(isSeen([&] { replace(target, "three"); }));
        QVERIFY(isSeen([&] { replace(target, "four"); }));
    }

    void anEndedWatchIsSilent()
    {
        auto watch = begin(m_path);
        watch.reset();
        QVERIFY(!isSeen([this] { write(m_path, "one"); }, 200));
    }

private:
    std::unique_ptr<FileWatch::Watch> begin(const QString &path)
    {
        return m_fileWatch.watch(path, [this] { ++m_times; });
    }

    template <typename Change>
    [[nodiscard]] bool isSeen(Change change, int timeout = 5000)
    {
        // What is still to be told of the change before is not this one.
        QTest::qWait(20);
        m_times = 0;
        change();
        return QTest::qWaitFor([this] { return m_times > 0; }, timeout);
    }

    QtFileWatch m_fileWatch;
    std::unique_ptr<QTemporaryDir> m_root;
    QString m_path;
    int m_times = 0;
};

MOORLINE_TEST(QtFileWatchTest);

#include "QtFileWatchTest.moc"
