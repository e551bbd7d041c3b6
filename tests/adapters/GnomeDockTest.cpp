#include "freedesktop/EntryCatalogue.h"
#include "harness/TestCase.h"
#include "platform/linux/docks/DesktopDockControl.h"
#include "platform/linux/docks/DesktopDocks.h"
#include "platform/linux/docks/DesktopPreferences.h"

#include <QCoroTask>
#include <QProcess>

namespace {

using moorline::DesktopDock;
using moorline::DesktopDockControl;
using moorline::DesktopDocks;
using moorline::DesktopPreferences;
using moorline::GSettingsGroup;

const QString shell = QStringLiteral("org.gnome.shell");
const QString extension = QStringLiteral("org.gnome.shell.extensions.dash-to-dock");
const QString markSchema = QStringLiteral("app.moorline.Test");
const QStringList gnome{QStringLiteral("GNOME")};
const QStringList ubuntu{QStringLiteral("ubuntu"), QStringLiteral("GNOME")};

std::shared_ptr<const moorline::EntryCatalogue> noEntries()
{
    return std::make_shared<moorline::EntryCatalogue>();
}

/// The settings are changed by another program, as the user would do it.
class GnomeDockTest final : public moorline::test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestCase::init();
        gsettings({QStringLiteral("reset-recursively"), shell});
        gsettings({QStringLiteral("reset-recursively"), extension});
    }

    void anEnabledExtensionIsTheDock_data()
    {
        QTest::addColumn<QString>("enabled");
        QTest::addColumn<QString>("disabled");
        QTest::addColumn<QStringList>("desktop");
        QTest::addColumn<bool>("isDock");

        const QString none = QStringLiteral("[]");
        const QString dash = QStringLiteral("['other@example.org', 'dash-to-dock@micxgx.gmail.com']");
        const QString dock = QStringLiteral("['ubuntu-dock@ubuntu.com']");
        QTest::newRow("none enabled") << none << none << gnome << false;
        QTest::newRow("dash-to-dock enabled") << dash << none << gnome << true;
        QTest::newRow("ubuntu's enabled") << dock << none << gnome << true;
        QTest::newRow("enabled and disabled") << dash << dash << gnome << false;
        QTest::newRow("ubuntu's session brings it") << none << none << ubuntu << true;
        QTest::newRow("disabled in ubuntu's session") << none << dock << ubuntu << false;
        QTest::newRow("another desktop") << dash << none << QStringList{QStringLiteral("XFCE")} << false;
    }

    void anEnabledExtensionIsTheDock()
    {
        QFETCH(QString, enabled);
        QFETCH(QString, disabled);
        QFETCH(QStringList, desktop);
        QFETCH(bool, isDock);
        set(shell, "enabled-extensions", enabled);
        set(shell, "disabled-extensions", disabled);
        settle();
        const DesktopDocks docks(nullptr, desktop);
        QCOMPARE(docks.docks().size(), isDock ? 1 : 0);
    }

    void userExtensionsCanBeSwitchedOffTogether()
    {
        enable();
        set(shell, "disable-user-extensions", QStringLiteral("true"));
        settle();
        const DesktopDocks onGnome(nullptr, gnome);
        QVERIFY(onGnome.docks().isEmpty());
        const DesktopDocks onUbuntu(nullptr, ubuntu);
        QCOMPARE(onUbuntu.docks().size(), 1);
    }

    void hidingFollowsTheThreeKeys_data()
    {
        QTest::addColumn<bool>("isFixed");
        QTest::addColumn<bool>("autohide");
        QTest::addColumn<bool>("intellihide");
        QTest::addColumn<DesktopDock::Hiding>("hiding");
        using enum DesktopDock::Hiding;

        QTest::newRow("dodges, and comes back to the pointer") << false << true << true << fromWindows;
        QTest::newRow("auto-hide only") << false << true << false << byItself;
        QTest::newRow("dodges only") << false << false << true << fromWindows;
        QTest::newRow("shows in the overview only") << false << false << false << byItself;
        QTest::newRow("fixed") << true << true << true << never;
    }

    void hidingFollowsTheThreeKeys()
    {
        QFETCH(bool, isFixed);
        QFETCH(bool, autohide);
        QFETCH(bool, intellihide);
        QFETCH(DesktopDock::Hiding, hiding);
        enable();
        set(extension, "dock-fixed", text(isFixed));
        set(extension, "autohide", text(autohide));
        set(extension, "intellihide", text(intellihide));
        settle();
        const DesktopDocks docks(nullptr, gnome);
        const DesktopPreferences preferences(docks, noEntries);
        QCOMPARE(only(docks).kind, DesktopDock::Kind::gnome);
        QCOMPARE(only(docks).hiding, hiding);
        QCOMPARE(value(preferences, "autohide").toBool(), hiding == DesktopDock::Hiding::byItself);
    }

    void orientationFollowsThePosition_data()
    {
        QTest::addColumn<QString>("position");
        QTest::addColumn<QString>("orientation");
        QTest::addColumn<bool>("autohide");

        QTest::newRow("bottom") << QStringLiteral("BOTTOM") << QStringLiteral("bottom") << false;
        QTest::newRow("left") << QStringLiteral("LEFT") << QStringLiteral("left") << false;
        QTest::newRow("right") << QStringLiteral("RIGHT") << QStringLiteral("right") << false;
        QTest::newRow("the top is never in the way") << QStringLiteral("TOP") << QStringLiteral("left") << true;
    }

    void orientationFollowsThePosition()
    {
        QFETCH(QString, position);
        QFETCH(QString, orientation);
        QFETCH(bool, autohide);
        enable();
        set(extension, "dock-fixed", QStringLiteral("true"));
        set(extension, "dock-position", position);
        settle();
        const DesktopDocks docks(nullptr, gnome);
        const DesktopPreferences preferences(docks, noEntries);
        QCOMPARE(value(preferences, "orientation").toString(), orientation);
        QCOMPARE(value(preferences, "autohide").toBool(), autohide);
    }

    void aChangeMadeElsewhereIsSeenWhileRunning()
    {
        enable();
        settle();
        const DesktopDocks docks(nullptr, gnome);
        QCOMPARE(only(docks).kind, DesktopDock::Kind::gnome);
        set(extension, "dock-fixed", QStringLiteral("true"));
        QTRY_COMPARE(only(docks).hiding, DesktopDock::Hiding::never);
        set(extension, "dock-fixed", QStringLiteral("false"));
        QTRY_COMPARE(only(docks).hiding, DesktopDock::Hiding::fromWindows);
        set(shell, "enabled-extensions", QStringLiteral("[]"));
        QTRY_VERIFY(docks.docks().isEmpty());
    }

    void autoHideIsSwitchedOn()
    {
        enable();
        set(extension, "dock-fixed", QStringLiteral("true"));
        set(extension, "autohide", QStringLiteral("false"));
        set(extension, "intellihide", QStringLiteral("true"));
        settle();
        DesktopDocks docks(nullptr, gnome);
        QCOMPARE(only(docks).kind, DesktopDock::Kind::gnome);
        DesktopDockControl control(docks);
        QVERIFY(QCoro::waitFor(control.enableAutoHide()));
        QCOMPARE(only(docks).hiding, DesktopDock::Hiding::byItself);
        QTRY_COMPARE(get(extension, "dock-fixed"), QStringLiteral("false"));
        QTRY_COMPARE(get(extension, "autohide"), QStringLiteral("true"));
        QTRY_COMPARE(get(extension, "intellihide"), QStringLiteral("false"));
    }

    void theRevealDelayIsSetInSeconds()
    {
        enable();
        settle();
        DesktopDocks docks(nullptr, gnome);
        QCOMPARE(only(docks).kind, DesktopDock::Kind::gnome);
        DesktopDockControl control(docks);
        QVERIFY(QCoro::waitFor(control.setRevealDelay(0.75)));
        QCOMPARE(value(DesktopPreferences(docks, noEntries), "autohide-delay").toDouble(), 0.75);
        QTRY_COMPARE(get(extension, "show-delay"), QStringLiteral("0.75"));
    }

    void withoutADockNothingConflictsAndNothingCanBeChanged()
    {
        settle();
        DesktopDocks docks(nullptr, gnome);
        DesktopPreferences preferences(docks, noEntries);
        QVERIFY(docks.docks().isEmpty());
        QCOMPARE(value(preferences, "orientation").toString(), QStringLiteral("bottom"));
        QCOMPARE(value(preferences, "autohide"), QVariant(true));
        QCOMPARE(value(preferences, "autohide-delay"), QVariant());
        QCOMPARE(value(preferences, "tilesize"), QVariant());
        DesktopDockControl control(docks);
        QVERIFY(!QCoro::waitFor(control.enableAutoHide()));
        QVERIFY(!QCoro::waitFor(control.setRevealDelay(0.5)));
    }

    void onlyTheDocksDomainCanBeOpened()
    {
        const DesktopDocks docks(nullptr, {});
        const DesktopPreferences preferences(docks, noEntries);
        QVERIFY(preferences.open(QStringLiteral("com.apple.dock")));
        QVERIFY(!preferences.open(QStringLiteral("com.apple.finder")));
        QVERIFY(!preferences.open(QString()));
    }

private:
    static DesktopDock only(const DesktopDocks &docks)
    {
        const auto all = docks.docks();
        return all.size() == 1 ? all.first() : DesktopDock();
    }

    static QString text(bool value) { return value ? QStringLiteral("true") : QStringLiteral("false"); }

    static QString gsettings(const QStringList &arguments)
    {
        QProcess process;
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("GSETTINGS_SCHEMA_DIR"), qEnvironmentVariable("MOORLINE_TEST_ALL_SCHEMAS"));
        process.setProcessEnvironment(environment);
        process.start(QStringLiteral("gsettings"), arguments);
        if (!process.waitForFinished() || process.exitCode() != 0)
            qFatal("gsettings %s failed", qPrintable(arguments.join(u' ')));
        return QString::fromUtf8(process.readAllStandardOutput()).trimmed();
    }

    static void set(const QString &schema, const char *key, const QString &value)
    {
        gsettings({QStringLiteral("set"), schema, QLatin1StringView(key), value});
    }

    static QString get(const QString &schema, const char *key)
    {
        return gsettings({QStringLiteral("get"), schema, QLatin1StringView(key)});
    }

    static void enable() { set(shell, "enabled-extensions", QStringLiteral("['dash-to-dock@micxgx.gmail.com']")); }

    /// Waits until this program sees all that was set: the settings are one file, and this is its newest line.
    void settle()
    {
        const QString mark = QString::number(++m_mark);
        set(markSchema, "word", mark);
        QTRY_COMPARE(GSettingsGroup::open(markSchema.toLatin1())->text("word"), mark);
    }

    int m_mark = 0;

    static QVariant value(const DesktopPreferences &preferences, const char *key)
    {
        return preferences.open(QStringLiteral("com.apple.dock"))->value(QLatin1StringView(key));
    }
};

MOORLINE_TEST(GnomeDockTest);

} // namespace

#include "GnomeDockTest.moc"
