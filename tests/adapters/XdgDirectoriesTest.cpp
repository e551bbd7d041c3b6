#include "platform/linux/desktop/XdgDirectories.h"
#include "harness/TestCase.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace {

using moorline::XdgDirectories;

class XdgDirectoriesTest final : public moorline::test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        qunsetenv("XDG_CONFIG_HOME");
        qunsetenv("XDG_STATE_HOME");
        qunsetenv("XDG_DATA_HOME");
        TestCase::cleanup();
    }

    void applicationSupportIsTheConfigurationFolder()
    {
        qputenv("XDG_CONFIG_HOME", "/somewhere/configuration");
        QCOMPARE(XdgDirectories().applicationSupport(), QStringLiteral("/somewhere/configuration"));
    }

    void withoutOneItIsDotConfigInTheHomeFolder()
    {
        qunsetenv("XDG_CONFIG_HOME");
        QCOMPARE(XdgDirectories().applicationSupport(), QDir::homePath() + QStringLiteral("/.config"));
    }

    void aRelativeConfigurationFolderIsIgnored()
    {
        qputenv("XDG_CONFIG_HOME", "configuration");
        QCOMPARE(XdgDirectories().applicationSupport(), QDir::homePath() + QStringLiteral("/.config"));
    }

    void downloadsAreWhereTheUserHasThem_data()
    {
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<QString>("path");
        const QString home = QDir::homePath();
        const QString usual = home + QStringLiteral("/Downloads");
        QTest::newRow("below the home") << QByteArray("XDG_DOWNLOAD_DIR=\"$HOME/Laden\"\n")
                                        << home + QStringLiteral("/Laden");
        QTest::newRow("elsewhere") << QByteArray("XDG_DOWNLOAD_DIR=\"/data/in\"\n") << QStringLiteral("/data/in");
        QTest::newRow("with a slash at its end")
            << QByteArray("XDG_DOWNLOAD_DIR=\"/data/in/\"\n") << QStringLiteral("/data/in");
        QTest::newRow("nowhere") << QByteArray("XDG_DOWNLOAD_DIR=\"$HOME/\"\n") << usual;
        QTest::newRow("nowhere, without a slash") << QByteArray("XDG_DOWNLOAD_DIR=\"$HOME\"\n") << usual;
        QTest::newRow("not said") << QByteArray("XDG_MUSIC_DIR=\"$HOME/Music\"\n") << usual;
    }

    void downloadsAreWhereTheUserHasThem()
    {
        QFETCH(QByteArray, line);
        const QTemporaryDir configuration;
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(configuration.path()));
        QFile file(configuration.filePath(QStringLiteral("user-dirs.dirs")));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(line);
        file.close();
        QTEST(XdgDirectories().downloads(), "path");
    }

    void theTrashIsAmongTheUsersData()
    {
        qputenv("XDG_DATA_HOME", "/somewhere/data");
        QCOMPARE(moorline::homeTrashPath(), QStringLiteral("/somewhere/data/Trash"));
        QCOMPARE(XdgDirectories().trash(), QStringLiteral("/somewhere/data/Trash/files"));
        for (const char *none : {"", "data"}) {
            qputenv("XDG_DATA_HOME", none);
            QCOMPARE(moorline::homeTrashPath(), QDir::homePath() + QStringLiteral("/.local/share/Trash"));
        }
    }

    void whatIsNoChoiceIsKeptInTheFolderOfStates()
    {
        qputenv("XDG_STATE_HOME", "/somewhere/state");
        QCOMPARE(moorline::userDefaultsPath(), QStringLiteral("/somewhere/state/app.moorline.Moorline/defaults.json"));
        for (const char *none : {"", "state"}) {
            qputenv("XDG_STATE_HOME", none);
            QCOMPARE(moorline::userDefaultsPath(),
                QDir::homePath() + QStringLiteral("/.local/state/app.moorline.Moorline/defaults.json"));
        }
    }
};

MOORLINE_TEST(XdgDirectoriesTest);

} // namespace

#include "XdgDirectoriesTest.moc"
