#include "platform/linux/desktop/XdgDirectories.h"
#include "harness/TestCase.h"

#include <QDir>

namespace {

using moorline::XdgDirectories;

class XdgDirectoriesTest final : public moorline::test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        qunsetenv("XDG_CONFIG_HOME");
        qunsetenv("XDG_STATE_HOME");
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
