#include "platform/qt/JsonUserDefaults.h"
#include "fakes/FakeClock.h"
#include "harness/TestCase.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <sys/stat.h>

namespace moorline::test {

namespace {

using namespace std::chrono_literals;

const QString key = QStringLiteral("recentAppOrder");
const QStringList order{QStringLiteral("org.example.Pad"), QStringLiteral("m\u00e9l \"quoted\"\n")};

} // namespace

class JsonUserDefaultsTest final : public TestCase {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_folder = std::make_unique<QTemporaryDir>();
        m_path = m_folder->filePath(QStringLiteral("state/app/defaults.json"));
    }

    void nothingIsKeptAtFirst()
    {
        const JsonUserDefaults defaults(m_clock, m_path);
        QCOMPARE(defaults.stringList(key), QStringList());
    }

    void whatIsKeptIsThereAtOnceAndOnDiskSoonAfter()
    {
        JsonUserDefaults defaults(m_clock, m_path);
        defaults.setStringList(key, order);
        QCOMPARE(defaults.stringList(key), order);
        m_clock.advance(999ms);
        QVERIFY(!QFile::exists(m_path));
        m_clock.advance(1ms);
        QTRY_COMPARE(JsonUserDefaults(m_clock, m_path).stringList(key), order);
    }

    void whatIsChangedTogetherIsWrittenOnce()
    {
        JsonUserDefaults defaults(m_clock, m_path);
        defaults.setStringList(key, {});
        m_clock.advance(600ms);
        defaults.setStringList(key, order);
        QCOMPARE(m_clock.runningTimers(), 1);
        m_clock.advance(400ms);
        QCOMPARE(m_clock.runningTimers(), 0);
        QTRY_COMPARE(JsonUserDefaults(m_clock, m_path).stringList(key), order);
    }

    void theSameAgainIsNotWritten()
    {
        JsonUserDefaults defaults(m_clock, m_path);
        defaults.setStringList(key, order);
        m_clock.advance(1s);
        defaults.setStringList(key, order);
        QCOMPARE(m_clock.runningTimers(), 0);
    }

    void theEndWritesWhatIsLeft()
    {
        JsonUserDefaults(m_clock, m_path).setStringList(key, order);
        QCOMPARE(JsonUserDefaults(m_clock, m_path).stringList(key), order);
    }

    void otherKeysStay()
    {
        JsonUserDefaults(m_clock, m_path).setStringList(QStringLiteral("other"), order);
        JsonUserDefaults(m_clock, m_path).setStringList(key, {QStringLiteral("a")});
        QCOMPARE(JsonUserDefaults(m_clock, m_path).stringList(QStringLiteral("other")), order);
        QCOMPARE(JsonUserDefaults(m_clock, m_path).stringList(key), QStringList(QStringLiteral("a")));
    }

    void aDamagedFileIsEmptyAndWrittenAnew_data()
    {
        QTest::addColumn<QByteArray>("content");

        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("half") << QByteArray("{\"recentAppOrder\": [\"a\"");
        QTest::newRow("a list") << QByteArray("[\"recentAppOrder\"]");
        QTest::newRow("zeros") << QByteArray(500, '\0');
        QTest::newRow("of another type") << QByteArray("{\"recentAppOrder\": \"a\"}");
        QTest::newRow("a number in the list") << QByteArray("{\"recentAppOrder\": [\"a\", 5]}");
        QTest::newRow("endless") << QByteArray(2 * 1024 * 1024, '[');
    }

    void aDamagedFileIsEmptyAndWrittenAnew()
    {
        QFETCH(QByteArray, content);
        QVERIFY(QDir().mkpath(QFileInfo(m_path).path()));
        QFile file(m_path);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
        file.close();
        QCOMPARE(JsonUserDefaults(m_clock, m_path).stringList(key), QStringList());
        JsonUserDefaults(m_clock, m_path).setStringList(key, order);
        QCOMPARE(JsonUserDefaults(m_clock, m_path).stringList(key), order);
    }

    void whatIsNoFileIsNotWaitedFor()
    {
        QVERIFY(QDir().mkpath(QFileInfo(m_path).path()));
        QCOMPARE(::mkfifo(QFile::encodeName(m_path).constData(), 0600), 0);
        QCOMPARE(JsonUserDefaults(m_clock, m_path).stringList(key), QStringList());
    }

    void nothingIsLeftBesideTheFile()
    {
        JsonUserDefaults(m_clock, m_path).setStringList(key, order);
        QCOMPARE(QDir(QFileInfo(m_path).path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden),
            QStringList(QStringLiteral("defaults.json")));
    }

private:
    FakeClock m_clock;
    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;
};

MOORLINE_TEST(JsonUserDefaultsTest);

} // namespace moorline::test

#include "JsonUserDefaultsTest.moc"
