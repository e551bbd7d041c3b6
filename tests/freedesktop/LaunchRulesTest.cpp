#include "freedesktop/LaunchRules.h"
#include "harness/TestCase.h"

namespace {

using moorline::EntryRecord;

QList<QByteArray> words(const char *text)
{
    return QByteArray(text).split(' ');
}

EntryRecord record(const char *id)
{
    const QString name = QString::fromLatin1(id);
    return {.path = QStringLiteral("/usr/share/applications/%1.desktop").arg(name), .id = name};
}

class LaunchRulesTest final : public moorline::test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void onlyACommandThatSaysWhereFilesGoTakesThem_data()
    {
        QTest::addColumn<QString>("exec");
        QTest::addColumn<bool>("takes");

        const auto row = [](const char *exec, bool takes) {
            QTest::newRow(exec) << QString::fromLatin1(exec) << takes;
        };
        row("pad %f", true);
        row("pad %F", true);
        row("pad %u", true);
        row("pad --open %U --", true);
        row("pad", false);
        row("", false);
        row("pad %i %c %k", false);
        row("pad 100%%f", false);
        row("pad %%%f", true);
        row("pad %", false);
        row("%f", true);
    }

    void onlyACommandThatSaysWhereFilesGoTakesThem()
    {
        QFETCH(QString, exec);
        QTEST(moorline::takesFiles(exec), "takes");
    }

    void anEndlessCommandIsReadToItsEnd()
    {
        QVERIFY(!moorline::takesFiles(QString(1'000'000, u'%')));
        QVERIFY(moorline::takesFiles(QString(1'000'000, u'x') + QStringLiteral(" %F")));
    }

    void whatWasDoneTwoSecondsAgoIsStillMeant()
    {
        using namespace std::chrono_literals;
        QVERIFY(moorline::isStillMeant(0ms));
        QVERIFY(moorline::isStillMeant(2000ms));
        QVERIFY(!moorline::isStillMeant(2001ms));
    }

    void whatWasMeantForTheProgramItselfIsNotHandedOn()
    {
        QCOMPARE(moorline::launchEnvironment(
                     words("PATH=/bin DESKTOP_STARTUP_ID=a XDG_ACTIVATION_TOKEN=b BAMF_DESKTOP_FILE_HINT=/c "
                           "GIO_LAUNCHED_DESKTOP_FILE=/d GIO_LAUNCHED_DESKTOP_FILE_PID=5 MOORLINE_PREVIEW=e "
                           "DESKTOP_STARTUP_IDLE=f HOME=/home/ada"),
                     {}),
            words("PATH=/bin DESKTOP_STARTUP_IDLE=f HOME=/home/ada"));
    }

    void whatIsSetTakesThePlaceOfWhatWas()
    {
        QCOMPARE(moorline::launchEnvironment(words("LANG=C LANGUAGE=de A=1"), words("LANG=fr DESKTOP_STARTUP_ID=x")),
            words("LANGUAGE=de A=1 LANG=fr DESKTOP_STARTUP_ID=x"));
    }

    void aStartupIdEndsInTheTimeOfTheClick()
    {
        QCOMPARE(moorline::startupId(QStringLiteral("org.gnome.Weather"), 42, 7, 123456),
            QByteArray("moorline-42-7-org.gnome.Weather_TIME123456"));
    }

    void aStartupIdIsOneShortWord()
    {
        QCOMPARE(moorline::startupId(QStringLiteral("my app/\"\u00e9\"_TIME5"), 1, 2, 3),
            QByteArray("moorline-1-2-my_app______TIME5_TIME3"));
        QVERIFY(moorline::startupId(QString(100'000, u'x'), 1, 2, 3).size() < 200);
    }

    void theFirstTerminalOfTheDesktopsOwnIsTaken_data()
    {
        QTest::addColumn<QStringList>("installed");
        QTest::addColumn<QString>("prefix");

        const QString xdg = QStringLiteral("xdg-terminal-exec");
        const QString debian = QStringLiteral("x-terminal-emulator");
        QTest::newRow("both") << QStringList{debian, xdg} << xdg;
        QTest::newRow("the alternative") << QStringList{debian} << QStringLiteral("x-terminal-emulator -e");
        QTest::newRow("only what GLib knows itself") << QStringList{QStringLiteral("xterm")} << QString();
    }

    void theFirstTerminalOfTheDesktopsOwnIsTaken()
    {
        QFETCH(QStringList, installed);
        const auto prefix = moorline::terminalPrefix([&](const QString &name) { return installed.contains(name); });
        QTEST(prefix.value_or(QString()), "prefix");
        QCOMPARE(prefix.has_value(), installed != QStringList(QStringLiteral("xterm")));
    }

    void thePlaceOfTheEntryIsFilledIn_data()
    {
        QTest::addColumn<QString>("exec");
        QTest::addColumn<QString>("filled");

        const auto row = [](const char *exec, const char *filled) {
            QTest::newRow(exec) << QString::fromLatin1(exec) << QString::fromLatin1(filled);
        };
        row("pad %k %f", "pad '/a/50%% it'\\''s.desktop' %f");
        row("pad %%k", "pad %%k");
        row("pad %", "pad %");
        row("", "");
    }

    void thePlaceOfTheEntryIsFilledIn()
    {
        QFETCH(QString, exec);
        QTEST(moorline::withPlace(exec, QStringLiteral("/a/50% it's.desktop")), "filled");
    }

    void theBusyCursorIsToldWhatStarts()
    {
        EntryRecord one = record("pad");
        QCOMPARE(moorline::startupBegun(one, "id_TIME5", 1),
            QByteArray("new: ID=\"id_TIME5\" NAME=\"pad\" SCREEN=\"1\" "
                       "APPLICATION_ID=\"/usr/share/applications/pad.desktop\""));
        one.name = QStringLiteral("The \"Pad\" \\ \u00e9");
        one.icon = QStringLiteral("pad-icon");
        one.startupWmClass = QStringLiteral("Pad");
        QCOMPARE(moorline::startupBegun(one, "x", 0),
            QByteArray("new: ID=\"x\" NAME=\"The \\\"Pad\\\" \\\\ \xc3\xa9\" SCREEN=\"0\" "
                       "APPLICATION_ID=\"/usr/share/applications/pad.desktop\" ICON=\"pad-icon\" WMCLASS=\"Pad\""));
        QCOMPARE(moorline::startupEnded("id_TIME5"), QByteArray("remove: ID=\"id_TIME5\""));
    }

    void onlyTheNameOfAServiceIsStartedByTheBus_data()
    {
        QTest::addColumn<QString>("id");
        QTest::addColumn<bool>("isStarted");

        const auto row = [](const char *id, bool is) { QTest::newRow(id) << QString::fromLatin1(id) << is; };
        row("org.gnome.Weather", true);
        row("org.x-y.My_App", true);
        row("gnome-weather", false);
        row("org..Weather", false);
        row("org.7zip.Archive", false);
        row("org.gnome.W\xc3\xa9", false);
        row("org.gnome.", false);
        row("", false);
    }

    void onlyTheNameOfAServiceIsStartedByTheBus()
    {
        QFETCH(QString, id);
        EntryRecord one = record(qPrintable(id));
        QVERIFY(!moorline::isStartedByBus(one));
        one.dbusActivatable = true;
        QTEST(moorline::isStartedByBus(one), "isStarted");
    }

    void theObjectIsWhereTheIdSays()
    {
        QCOMPARE(moorline::busPath(QStringLiteral("org.x-y.My_App")), QStringLiteral("/org/x_y/My_App"));
    }

    void onlyAnAnswerOfNobodyHasTheCommandRun_data()
    {
        QTest::addColumn<QString>("error");
        QTest::addColumn<bool>("isNobody");

        const auto row = [](const char *error, bool is) { QTest::newRow(error) << QString::fromLatin1(error) << is; };
        row("org.freedesktop.DBus.Error.ServiceUnknown", true);
        row("org.freedesktop.DBus.Error.NameHasNoOwner", true);
        row("org.freedesktop.DBus.Error.Spawn.ChildExited", true);
        row("org.freedesktop.DBus.Error.Spawn.ServiceNotFound", true);
        row("org.freedesktop.systemd1.NoSuchUnit", true);
        row("org.freedesktop.DBus.Error.UnknownMethod", true);
        row("org.freedesktop.DBus.Error.UnknownObject", true);
        row("org.freedesktop.DBus.Error.UnknownInterface", true);
        row("org.freedesktop.DBus.Error.Disconnected", true);
        row("org.freedesktop.DBus.Error.NoReply", false);
        row("org.freedesktop.DBus.Error.AccessDenied", false);
        row("org.example.ServiceUnknown", false);
        row("", false);
    }

    void onlyAnAnswerOfNobodyHasTheCommandRun()
    {
        QFETCH(QString, error);
        QTEST(moorline::isNobodyThere(error), "isNobody");
    }

    void aScopeIsNamedForItsApplication()
    {
        QCOMPARE(moorline::scopeName(QStringLiteral("org.gnome.Weather"), 0xab12),
            QStringLiteral("app-moorline-org.gnome.Weather-0000ab12.scope"));
        QCOMPARE(moorline::scopeName(QStringLiteral(".a-b \u00e9/_:9"), 0xffffffff),
            QStringLiteral("app-moorline-\\x2ea\\x2db\\x20\\xc3\\xa9\\x2f_:9-ffffffff.scope"));
        // What a service manager takes at most.
        QVERIFY(moorline::scopeName(QString(100'000, u'x'), 0).size() < 256);
    }
};

MOORLINE_TEST(LaunchRulesTest);

} // namespace

#include "LaunchRulesTest.moc"
