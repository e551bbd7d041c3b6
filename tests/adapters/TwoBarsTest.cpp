#include "fakes/FakeFiles.h"
#include "fakes/TemporaryDirectories.h"
#include "harness/TestCase.h"
#include "platform/qt/QtClock.h"
#include "platform/qt/QtFileWatch.h"
#include "settings/SettingsCoding.h"
#include "settings/SettingsStore.h"

#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QSignalSpy>

using namespace moorline;
using namespace moorline::test;

namespace {

constexpr int changes = 200;

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class TwoBarsTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_directories = std::make_unique<TemporaryDirectories>();
    }

    void twoProcessesThatChangeOneSettingEachEndWithBoth()
    {
        QProcess apps;
        QProcess music;
        for (auto [process, field] :
            {std::pair(&apps, QStringLiteral("apps")), std::pair(&music, QStringLiteral("music"))})
            process->start(
                QStringLiteral(SETTINGS_PEER), {m_directories->applicationSupport(), field, QString::number(changes)});
        const QByteArray both = QByteArray::number(changes) + ' ' + QByteArray::number(changes) + '\n';
        for (QProcess *process : {&apps, &music}) {
            QVERIFY(process->waitForFinished(60'000));
            QCOMPARE(process->readAllStandardOutput(), both);
            QCOMPARE(process->readAllStandardError(), QByteArray());
        }
        const auto store = makeStore();
        QCOMPARE(store->settings().recentAppCount, changes);
        QCOMPARE(store->settings().musicIdleTimeoutMinutes, changes);
    }

    void whatOneBarChangesTheOtherKnowsAtOnce()
    {
        const auto one = makeStore();
        const auto other = makeStore();
        QSignalSpy announced(other.get(), &SettingsStore::settingsDidChange);
        one->change([](Settings &settings) { settings.bottomGap = 11; });
        QTRY_COMPARE(other->settings().bottomGap, 11.0);
        QCOMPARE(announced.count(), 1);
        other->change([](Settings &settings) { settings.recentAppCount = 8; });
        QTRY_COMPARE(one->settings().recentAppCount, 8);
        QCOMPARE(one->settings(), other->settings());
    }

    void whatAnEditorWritesInPlaceCountsAtOnce()
    {
        const auto store = makeStore();
        const QByteArray edited = contents(store->filePath()).replace("\"bottomGap\": 2", "\"bottomGap\": 9");
        QFile file(store->filePath());
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(edited.first(40));
        file.flush();
        QTest::qWait(300);
        file.write(edited.sliced(40));
        file.close();
        QTRY_COMPARE(store->settings().bottomGap, 9.0);
        QCOMPARE(contents(store->filePath()), edited);
    }

    void readingAndSavingAreQuick()
    {
        QElapsedTimer timer;
        timer.start();
        const auto store = makeStore();
        const qint64 firstStart = timer.nsecsElapsed();
        timer.restart();
        const auto again = makeStore();
        const qint64 start = timer.nsecsElapsed();
        timer.restart();
        for (int i = 0; i < 100; ++i)
            store->change([i](Settings &settings) { settings.recentAppCount = 10 + i; });
        const qint64 change = timer.nsecsElapsed() / 100;
        qInfo("first start %lld us, start %lld us, change %lld us", firstStart / 1000, start / 1000, change / 1000);
        // Far above what a loaded machine takes, far below what a user notices.
        QVERIFY(start < 100'000'000);
        QVERIFY(change < 100'000'000);
    }

private:
    std::unique_ptr<SettingsStore> makeStore()
    {
        return std::make_unique<SettingsStore>(
            SettingsStore::Context{*m_directories, m_clock, m_fileWatch, m_files, QStringLiteral("app"), nullptr});
    }

    std::unique_ptr<TemporaryDirectories> m_directories;
    QtClock m_clock;
    QtFileWatch m_fileWatch;
    FakeFiles m_files;
};

MOORLINE_TEST(TwoBarsTest);

#include "TwoBarsTest.moc"
