#include "harness/TestCase.h"
#include "platform/linux/docks/DesktopDock.h"
#include "platform/linux/docks/DesktopDockControl.h"
#include "platform/linux/docks/DesktopPreferences.h"

#include <QCoroTask>
#include <QProcess>
#include <limits>

namespace {

using moorline::DesktopDock;
using moorline::DesktopDockControl;
using moorline::DesktopPreferences;
using moorline::GSettingsGroup;

const QString shell = QStringLiteral("org.gnome.shell");
const QString extension = QStringLiteral("org.gnome.shell.extensions.dash-to-dock");
const QString markSchema = QStringLiteral("app.moorline.Test");
const QStringList gnome{QStringLiteral("GNOME")};
const QStringList ubuntu{QStringLiteral("ubuntu"), QStringLiteral("GNOME")};

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
        const DesktopDock dock(nullptr, desktop);
        QCOMPARE(dock.state().kind, isDock ? DesktopDock::Kind::gnome : DesktopDock::Kind::none);
    }

    void userExtensionsCanBeSwitchedOffTogether()
    {
        enable();
        set(shell, "disable-user-extensions", QStringLiteral("true"));
        settle();
        const DesktopDock onGnome(nullptr, gnome);
        QCOMPARE(onGnome.state().kind, DesktopDock::Kind::none);
        const DesktopDock onUbuntu(nullptr, ubuntu);
        QCOMPARE(onUbuntu.state().kind, DesktopDock::Kind::gnome);
    }

    void hidingFollowsTheThreeKeys_data()
    {
        QTest::addColumn<bool>("isFixed");
        QTest::addColumn<bool>("autohide");
        QTest::addColumn<bool>("intellihide");
        QTest::addColumn<bool>("hides");

        QTest::newRow("both ways") << false << true << true << true;
        QTest::newRow("auto-hide only") << false << true << false << true;
        QTest::newRow("from windows only") << false << false << true << true;
        QTest::newRow("neither") << false << false << false << false;
        QTest::newRow("fixed") << true << true << true << false;
    }

    void hidingFollowsTheThreeKeys()
    {
        QFETCH(bool, isFixed);
        QFETCH(bool, autohide);
        QFETCH(bool, intellihide);
        QFETCH(bool, hides);
        enable();
        set(extension, "dock-fixed", text(isFixed));
        set(extension, "autohide", text(autohide));
        set(extension, "intellihide", text(intellihide));
        settle();
        const DesktopDock dock(nullptr, gnome);
        const DesktopPreferences preferences(dock);
        QCOMPARE(dock.state().kind, DesktopDock::Kind::gnome);
        QCOMPARE(dock.state().hides, hides);
        QCOMPARE(value(preferences, "autohide").toBool(), hides);
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
        const DesktopDock dock(nullptr, gnome);
        const DesktopPreferences preferences(dock);
        QCOMPARE(value(preferences, "orientation").toString(), orientation);
        QCOMPARE(value(preferences, "autohide").toBool(), autohide);
    }

    void aChangeMadeElsewhereIsSeenWhileRunning()
    {
        enable();
        settle();
        const DesktopDock dock(nullptr, gnome);
        QCOMPARE(dock.state().kind, DesktopDock::Kind::gnome);
        QVERIFY(dock.state().hides);
        set(extension, "dock-fixed", QStringLiteral("true"));
        QTRY_VERIFY(!dock.state().hides);
        set(shell, "enabled-extensions", QStringLiteral("[]"));
        QTRY_COMPARE(dock.state(), DesktopDock::State());
    }

    void autoHideIsSwitchedOn()
    {
        enable();
        set(extension, "dock-fixed", QStringLiteral("true"));
        set(extension, "autohide", QStringLiteral("false"));
        settle();
        DesktopDock dock(nullptr, gnome);
        QCOMPARE(dock.state().kind, DesktopDock::Kind::gnome);
        DesktopDockControl control(dock);
        QVERIFY(QCoro::waitFor(control.enableAutoHide()));
        QVERIFY(dock.state().hides);
        QTRY_COMPARE(get(extension, "dock-fixed"), QStringLiteral("false"));
        QTRY_COMPARE(get(extension, "autohide"), QStringLiteral("true"));
    }

    void theRevealDelayIsSetInSeconds()
    {
        enable();
        settle();
        DesktopDock dock(nullptr, gnome);
        QCOMPARE(dock.state().kind, DesktopDock::Kind::gnome);
        DesktopDockControl control(dock);
        QVERIFY(QCoro::waitFor(control.setRevealDelay(0.75)));
        QCOMPARE(value(DesktopPreferences(dock), "autohide-delay").toDouble(), 0.75);
        QTRY_COMPARE(get(extension, "show-delay"), QStringLiteral("0.75"));
    }

    void anImpossibleDelayIsRefused()
    {
        enable();
        settle();
        DesktopDock dock(nullptr, gnome);
        QCOMPARE(dock.state().kind, DesktopDock::Kind::gnome);
        QVERIFY(!dock.setRevealDelay(-1));
        QVERIFY(!dock.setRevealDelay(std::numeric_limits<double>::quiet_NaN()));
        QCOMPARE(dock.state().revealDelay, 0.25);
    }

    void withoutADockNothingConflictsAndNothingCanBeChanged()
    {
        settle();
        DesktopDock dock(nullptr, gnome);
        DesktopPreferences preferences(dock);
        QCOMPARE(dock.state(), DesktopDock::State());
        QCOMPARE(value(preferences, "orientation").toString(), QStringLiteral("bottom"));
        QCOMPARE(value(preferences, "autohide"), QVariant(true));
        QCOMPARE(value(preferences, "autohide-delay"), QVariant());
        QCOMPARE(value(preferences, "tilesize"), QVariant());
        QVERIFY(!dock.enableAutoHide());
        QVERIFY(!dock.setRevealDelay(0.5));
    }

    void onlyTheDocksDomainCanBeOpened()
    {
        const DesktopDock dock(nullptr, {});
        const DesktopPreferences preferences(dock);
        QVERIFY(preferences.open(QStringLiteral("com.apple.dock")));
        QVERIFY(!preferences.open(QStringLiteral("com.apple.finder")));
        QVERIFY(!preferences.open(QString()));
    }

private:
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
