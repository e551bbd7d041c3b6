#include "fakes/FakeClock.h"
#include "fakes/SettingsGround.h"
#include "harness/TestCase.h"
#include "settings/SettingsCoding.h"

#include <QFile>
#include <QProcess>

using namespace moorline;

class SettingsCrashTest final : public test::TestCase {
    Q_OBJECT
private Q_SLOTS:
    void killedWriterLeavesAWholeFile()
    {
        const test::TemporaryDirectories directories;
        for (int round = 0; round < 40; ++round) {
            const qint64 lastChange = changeUntilKilled(directories, 1 + round * 7 % 23);
            const auto settings = decodeSettings(contents(directories));
            QVERIFY(settings);
            QVERIFY(settings->pinnedItemsIntroduced);
            QVERIFY(settings->recentAppCount >= lastChange);
            const qsizetype expectedLength = 1 + settings->recentAppCount * 37 % 20000;
            QCOMPARE(settings->highlightColorHex, QString(expectedLength, u'x'));
        }
    }

    void writeThatFailsLeavesTheOldFile()
    {
        test::FakeClock clock;
        test::SettingsGround ground;
        const auto &directories = ground.directories;
        const SettingsStore store(ground.context(clock));
        const QByteArray before = contents(directories);
        QProcess helper;
        helper.start(QStringLiteral(SETTINGS_HELPER), {QStringLiteral("no-room"), directories.applicationSupport()});
        QVERIFY(helper.waitForFinished());
        QCOMPARE(helper.exitStatus(), QProcess::NormalExit);
        QCOMPARE(helper.exitCode(), 0);
        QCOMPARE(helper.readAllStandardError(), QByteArray());
        QVERIFY(decodeSettings(before));
        QCOMPARE(contents(directories), before);
    }

private:
    static QString filePath(const test::TemporaryDirectories &directories)
    {
        return directories.applicationSupport() + u'/' + applicationIdentifier + QStringLiteral("/settings.json");
    }

    static QByteArray contents(const test::TemporaryDirectories &directories)
    {
        QFile file(filePath(directories));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    /// Kills a program that changes settings as fast as it can, some time after it told of so many changes. Answers the
    /// last change that it told of.
    static qint64 changeUntilKilled(const test::TemporaryDirectories &directories, int changes)
    {
        QProcess helper;
        helper.start(QStringLiteral(SETTINGS_HELPER), {QStringLiteral("storm"), directories.applicationSupport()});
        qint64 last = 0;
        while (last < changes && (helper.canReadLine() || helper.waitForReadyRead()))
            last = helper.readLine().trimmed().toLongLong();
        helper.kill();
        helper.waitForFinished();
        while (helper.canReadLine())
            last = helper.readLine().trimmed().toLongLong();
        return last;
    }
};

MOORLINE_TEST(SettingsCrashTest);
#include "SettingsCrashTest.moc"
