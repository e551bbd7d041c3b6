#include "EntriesOnDisk.h"
#include "SecondVolume.h"
#include "fakes/FakeClock.h"
#include "harness/TestCase.h"
#include "platform/linux/apps/DesktopEntries.h"

#include <QSignalSpy>
#include <algorithm>

namespace moorline::test {

using namespace std::chrono_literals;

/// Entries in none of the folders for applications, which are asked for by their paths.
class OutsideEntriesTest final : public TestCase {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_disk = std::make_unique<EntriesOnDisk>();
        m_path = m_disk->path(QStringLiteral("desk/tool.desktop"));
        m_entries = std::make_unique<DesktopEntries>(m_clock, m_disk->places());
    }

    void cleanup()
    {
        m_entries.reset();
        m_disk.reset();
        TestCase::cleanup();
    }

    void aFileIsReadAgainOnlyWhenItChanged()
    {
        write("Name=Tool");
        awaitLoaded();
        lookAt({m_path});
        QCOMPARE(name(), QStringLiteral("Tool"));
        for (const char *next : {"Hammer", "Tongs"}) {
            const QString before = name();
            write(QByteArray("Name=") + next);
            // Nobody has been told of the change.
            QCOMPARE(name(), before);
            QCOMPARE(m_entries->locate(m_path, std::nullopt), m_path);
            QVERIFY(hearsOfChange());
            QCOMPARE(name(), QLatin1StringView(next));
        }
    }

    void whatWasAskedForBeforeAnythingWasReadIsReadLater()
    {
        write("Name=Tool");
        QCOMPARE(name(), QStringLiteral("nothing"));
        awaitLoaded();
        QSignalSpy changed(m_entries.get(), &AppBundles::changed);
        QCOMPARE(name(), QStringLiteral("nothing"));
        QTRY_COMPARE(name(), QStringLiteral("Tool"));
        QCOMPARE(changed.size(), 1);
        write("Name=Hammer");
        QVERIFY(hearsOfChange());
        QCOMPARE(name(), QStringLiteral("Hammer"));
    }

    void whatIsAskedForIsReadByOtherThreads()
    {
        write("Name=Tool");
        awaitLoaded();
        QSignalSpy changed(m_entries.get(), &AppBundles::changed);
        QCOMPARE(name(), QStringLiteral("nothing"));
        QTRY_COMPARE(changed.size(), 1);
        QCOMPARE(name(), QStringLiteral("Tool"));
    }

    void whatIsAskedForUnderAReadingIsReadAfterIt()
    {
        write("Name=Tool");
        const QString other = m_disk->writeEntry(m_disk->path(QStringLiteral("desk/other.desktop")), "Name=Other");
        awaitLoaded();
        static_cast<void>(name());
        lookAt({other});
        QCOMPARE(name(), QStringLiteral("Tool"));
        QVERIFY(m_entries->info(other));
    }

    void whatIsAskedForBeforeAnythingWasReadIsWaitedFor()
    {
        write("Name=Tool");
        lookAt({m_path});
        QCOMPARE(name(), QStringLiteral("Tool"));
    }

    /// Also when it is more than is kept in the long run.
    void whatIsAskedForTogetherIsKnownTogether()
    {
        awaitLoaded();
        QStringList paths;
        for (int i = 0; i < 300; ++i) {
            const QString path = m_disk->path(QStringLiteral("desk/%1.desktop").arg(i));
            paths.append(m_disk->writeEntry(path, "Name=Tool"));
        }
        lookAt(paths);
        QVERIFY(std::all_of(
            paths.begin(), paths.end(), [this](const QString &path) { return m_entries->info(path).has_value(); }));
    }

    void aDiskThatHangsHoldsUpNothingElse()
    {
        const SecondVolume volume;
        const QString there = m_disk->writeEntry(volume.path() + QStringLiteral("/tool.desktop"), "Name=There");
        write("Name=Here");
        awaitLoaded();
        volume.hang();
        bool isOver = false;
        const auto look = m_entries->lookAt({there, m_path}).then([&isOver] { isOver = true; });
        // It is one look for all of them.
        QTest::qWait(100);
        QVERIFY(!isOver);
        m_clock.advance(2s);
        QTRY_VERIFY(isOver);
        QCOMPARE(name(), QStringLiteral("Here"));
        QVERIFY(!m_entries->info(there));
        QSignalSpy changed(m_entries.get(), &AppBundles::changed);
        volume.goOn();
        QTRY_COMPARE(changed.size(), 1);
        QVERIFY(m_entries->info(there));
    }

    void theEndUnderALookIsNoHarm()
    {
        awaitLoaded();
        bool isOver = false;
        const auto look = m_entries->lookAt({m_path}).then([&isOver] { isOver = true; });
        QVERIFY(!isOver);
        m_entries.reset();
        QTRY_VERIFY(isOver);
    }

    void aFileThatGoesIsGoneAndMayComeBack()
    {
        awaitLoaded();
        lookAt({m_path});
        QCOMPARE(name(), QStringLiteral("nothing"));
        QDir().mkpath(QFileInfo(m_path).path());
        write("Name=Tool");
        QVERIFY(hearsOfChange());
        QCOMPARE(name(), QStringLiteral("Tool"));
        QVERIFY(QFile::remove(m_path));
        QVERIFY(m_entries->locate(m_path, std::nullopt));
        QVERIFY(hearsOfChange());
        QCOMPARE(m_entries->locate(m_path, std::nullopt), std::nullopt);
    }

    void whatChangesNothingIsNoNews()
    {
        write("Name=Tool");
        awaitLoaded();
        lookAt({m_path});
        QCOMPARE(name(), QStringLiteral("Tool"));
        QSignalSpy changed(m_entries.get(), &AppBundles::changed);
        write("Name=Tool");
        QTRY_COMPARE(m_clock.runningTimers(), 1);
        m_clock.advance(500ms);
        QTRY_COMPARE(m_clock.runningTimers(), 0);
        write("Name=Hammer");
        QVERIFY(hearsOfChange());
        QCOMPARE(changed.size(), 1);
    }

private:
    void write(const QByteArray &lines) const { m_disk->writeEntry(m_path, lines); }
    [[nodiscard]] QString name() const
    {
        const auto info = m_entries->info(m_path);
        return info ? info->displayName.value_or(QString()) : QStringLiteral("nothing");
    }
    void awaitLoaded() const { static_cast<void>(QCoro::waitFor(m_entries->installed())); }
    void lookAt(const QStringList &paths) const { QCoro::waitFor(m_entries->lookAt(paths)); }
    /// As the batch is over.
    [[nodiscard]] bool hearsOfChange()
    {
        QSignalSpy changed(m_entries.get(), &AppBundles::changed);
        return QTest::qWaitFor([&] { return m_clock.runningTimers() == 1; })
            && (m_clock.advance(500ms), QTest::qWaitFor([&] { return !changed.isEmpty(); }));
    }

    FakeClock m_clock;
    std::unique_ptr<EntriesOnDisk> m_disk;
    std::unique_ptr<DesktopEntries> m_entries;
    QString m_path;
};

MOORLINE_TEST(OutsideEntriesTest);

} // namespace moorline::test

#include "OutsideEntriesTest.moc"
