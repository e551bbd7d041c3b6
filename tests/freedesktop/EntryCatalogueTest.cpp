#include "freedesktop/EntryCatalogue.h"
#include "harness/TestCase.h"

namespace {

using moorline::EntryCatalogue;
using moorline::EntryRecord;
using moorline::MimeChoice;
using moorline::MimeDefaults;

const QString folders = QStringLiteral("inode/directory");

EntryRecord record(const char *folder, const char *id)
{
    const QString name = QString::fromLatin1(id);
    return {.path = QStringLiteral("/%1/applications/%2.desktop").arg(QString::fromLatin1(folder), name),
        .id = name,
        .name = name,
        .exec = name};
}

EntryRecord manager(const char *folder, const char *id)
{
    EntryRecord one = record(folder, id);
    one.mimeTypes = {folders};
    one.categories = {QStringLiteral("Utility"), QStringLiteral("FileManager")};
    return one;
}

EntryCatalogue catalogue(
    const QList<EntryRecord> &found, const MimeDefaults &defaults = {}, const char *desktop = "XFCE")
{
    return EntryCatalogue(found, defaults, QString::fromLatin1(desktop).split(u':', Qt::SkipEmptyParts));
}

QStringList ids(const QList<EntryRecord> &records)
{
    QStringList names;
    for (const EntryRecord &one : records)
        names.append(one.id);
    return names;
}

QString pathOf(const EntryRecord *found)
{
    return found ? found->path : QString();
}

bool nowhere([[maybe_unused]] const QString &path)
{
    return false;
}

bool everywhere([[maybe_unused]] const QString &path)
{
    return true;
}

QString located(const EntryCatalogue &entries, const char *path, const char *id = nullptr, bool isThere = false)
{
    const auto identifier = id ? std::optional(QString::fromLatin1(id)) : std::nullopt;
    return entries.locate(QString::fromLatin1(path), identifier, isThere ? everywhere : nowhere).value_or(QString());
}

class EntryCatalogueTest final : public moorline::test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void theFirstOfAnIdCounts()
    {
        const auto entries = catalogue({record("home", "pad"), record("usr", "pad"), record("usr", "mail")});
        QCOMPARE(ids(entries.records()), (QStringList{QStringLiteral("pad"), QStringLiteral("mail")}));
        QCOMPARE(pathOf(entries.byId(QStringLiteral("pad"))), QStringLiteral("/home/applications/pad.desktop"));
        QCOMPARE(entries.byPath(QStringLiteral("/usr/applications/pad.desktop")), nullptr);
    }

    void aHiddenEntryTakesThoseBelowItAway()
    {
        EntryRecord hidden = record("home", "pad");
        hidden.hidden = true;
        const auto entries = catalogue({hidden, record("usr", "pad"), record("usr", "mail")});
        QCOMPARE(ids(entries.records()), QStringList(QStringLiteral("mail")));
        QCOMPARE(entries.byId(QStringLiteral("pad")), nullptr);
        QCOMPARE(located(entries, "/usr/applications/pad.desktop", "pad", true), QString());
    }

    void aHiddenEntryBelowTheOneThatCountsChangesNothing()
    {
        EntryRecord hidden = record("usr", "pad");
        hidden.hidden = true;
        QCOMPARE(ids(catalogue({record("home", "pad"), hidden}).records()), QStringList(QStringLiteral("pad")));
    }

    void onlyWhatIsShownInThisDesktopIsListed_data()
    {
        QTest::addColumn<QString>("desktop");
        QTest::addColumn<QStringList>("listed");

        const auto row = [](const char *desktop, const QStringList &listed) {
            QTest::newRow(desktop) << QString::fromLatin1(desktop) << listed;
        };
        row("XFCE", {QStringLiteral("plain"), QStringLiteral("not-gnome")});
        row("GNOME", {QStringLiteral("plain"), QStringLiteral("only-gnome")});
        row("ubuntu:GNOME", {QStringLiteral("plain"), QStringLiteral("only-gnome")});
        row("gnome", {QStringLiteral("plain"), QStringLiteral("only-gnome")});
        row("", {QStringLiteral("plain"), QStringLiteral("not-gnome")});
    }

    void onlyWhatIsShownInThisDesktopIsListed()
    {
        QFETCH(QString, desktop);
        EntryRecord only = record("usr", "only-gnome");
        only.onlyShowIn = {QStringLiteral("GNOME"), QStringLiteral("Unity")};
        EntryRecord other = record("usr", "not-gnome");
        other.notShowIn = {QStringLiteral("GNOME")};
        const auto entries = catalogue({record("usr", "plain"), only, other}, {}, qPrintable(desktop));
        QTEST(ids(entries.listed()), "listed");
        QCOMPARE(entries.records().size(), 3);
    }

    void whatIsNotListedIsFoundAllTheSame_data()
    {
        QTest::addColumn<EntryRecord>("entry");

        EntryRecord one = record("usr", "pad");
        one.noDisplay = true;
        QTest::newRow("not displayed") << one;
        one = record("usr", "pad");
        one.isTryExecThere = false;
        QTest::newRow("its program is missing") << one;
        one = record("usr", "pad");
        one.onlyShowIn = {QStringLiteral("KDE")};
        QTest::newRow("for another desktop") << one;
        one = record("usr", "pad");
        one.exec.clear();
        QTest::newRow("nothing to start") << one;
    }

    void whatIsNotListedIsFoundAllTheSame()
    {
        QFETCH(EntryRecord, entry);
        const auto entries = catalogue({entry});
        QVERIFY(entries.listed().isEmpty());
        QCOMPARE(pathOf(entries.byId(QStringLiteral("pad"))), entry.path);
        QCOMPARE(located(entries, "/elsewhere/pad.desktop", "pad"), entry.path);
    }

    void whatTheBusStartsNeedsNoProgram()
    {
        EntryRecord one = record("usr", "clocks");
        one.exec.clear();
        one.dbusActivatable = true;
        QCOMPARE(ids(catalogue({one}).listed()), QStringList(QStringLiteral("clocks")));
    }

    void theFileManagerOpensFoldersAndSaysWhatItIs()
    {
        EntryRecord editor = record("usr", "code");
        editor.mimeTypes = {folders};
        MimeDefaults defaults;
        defaults.append(folders, MimeChoice{.defaults = {QStringLiteral("code.desktop")}});
        const auto entries = catalogue({editor, manager("usr", "thunar"), manager("usr", "nemo")}, defaults);
        QCOMPARE(pathOf(entries.handler(folders)), QStringLiteral("/usr/applications/code.desktop"));
        QCOMPARE(pathOf(entries.fileManager()), QStringLiteral("/usr/applications/thunar.desktop"));
    }

    void theChosenFileManagerIsTheOne()
    {
        MimeDefaults defaults;
        defaults.append(
            folders, MimeChoice{.defaults = {QStringLiteral("gone.desktop"), QStringLiteral("nemo.desktop")}});
        const auto entries = catalogue({manager("usr", "thunar"), manager("usr", "nemo")}, defaults);
        QCOMPARE(pathOf(entries.fileManager()), QStringLiteral("/usr/applications/nemo.desktop"));
    }

    void aHandlerWhoseProgramIsMissingIsNone()
    {
        EntryRecord missing = manager("usr", "thunar");
        missing.isTryExecThere = false;
        const auto entries = catalogue({missing, manager("usr", "nemo")});
        QCOMPARE(pathOf(entries.fileManager()), QStringLiteral("/usr/applications/nemo.desktop"));
    }

    void withoutAFileManagerThereIsNone()
    {
        const auto entries = catalogue({record("usr", "pad")});
        QCOMPARE(entries.fileManager(), nullptr);
        QCOMPARE(located(entries, "/System/Library/CoreServices/Finder.app", "com.apple.finder"), QString());
        QCOMPARE(entries.standIn(QStringLiteral("/System/Library/CoreServices/Finder.app")), nullptr);
    }

    void theFileManagerHasTheIdentifierOfFinder()
    {
        const auto entries = catalogue({manager("usr", "thunar"), manager("usr", "nemo")});
        QCOMPARE(entries.identifier(*entries.byId(QStringLiteral("thunar"))), QStringLiteral("com.apple.finder"));
        QCOMPARE(entries.identifier(*entries.byId(QStringLiteral("nemo"))), QStringLiteral("nemo"));
        QCOMPARE(EntryCatalogue().identifier(record("usr", "pad")), QStringLiteral("pad"));
    }

    void findersPlaceIsTheFileManagers()
    {
        const auto entries = catalogue({manager("usr", "thunar")});
        const char *finder = "/System/Library/CoreServices/Finder.app";
        QCOMPARE(located(entries, finder, "com.apple.finder"), QStringLiteral("/usr/applications/thunar.desktop"));
        QCOMPARE(located(entries, finder), QStringLiteral("/usr/applications/thunar.desktop"));
        QCOMPARE(located(entries, "", "com.apple.finder"), QStringLiteral("/usr/applications/thunar.desktop"));
        QCOMPARE(
            pathOf(entries.standIn(QString::fromLatin1(finder))), QStringLiteral("/usr/applications/thunar.desktop"));
        QCOMPARE(entries.standIn(QStringLiteral("/Applications/Mail.app")), nullptr);
    }

    void theWeatherApplicationIsTheDesktopsOrOneThatSaysSo_data()
    {
        QTest::addColumn<QStringList>("present");
        QTest::addColumn<QString>("weather");

        const QString gnome = QStringLiteral("org.gnome.Weather");
        const QString kde = QStringLiteral("org.kde.kweather");
        const QString other = QStringLiteral("meteo");
        QTest::newRow("GNOME's") << QStringList{other, kde, gnome} << gnome;
        QTest::newRow("KDE's") << QStringList{other, kde} << kde;
        QTest::newRow("one that says so") << QStringList{QStringLiteral("pad"), other} << other;
        QTest::newRow("none") << QStringList{QStringLiteral("pad")} << QString();
    }

    void theWeatherApplicationIsTheDesktopsOrOneThatSaysSo()
    {
        QFETCH(QStringList, present);
        QList<EntryRecord> found;
        for (const QString &id : std::as_const(present)) {
            found.append(record("usr", qPrintable(id)));
            if (id == QLatin1StringView("meteo"))
                found.last().keywords = {QStringLiteral("Forecast"), QStringLiteral("Weather")};
        }
        const auto entries = catalogue(found);
        QTEST(entries.weather() ? entries.weather()->id : QString(), "weather");
        QCOMPARE(located(entries, "/System/Applications/Weather.app", "com.apple.weather"), pathOf(entries.weather()));
        QCOMPARE(located(entries, "/System/Applications/Weather.app"), pathOf(entries.weather()));
    }

    void whatIsNotShownIsNoWeatherApplication()
    {
        EntryRecord hidden = record("usr", "meteo");
        hidden.keywords = {QStringLiteral("Weather")};
        QVERIFY(catalogue({hidden}).weather());
        hidden.noDisplay = true;
        QVERIFY(!catalogue({hidden}).weather());
    }

    void aPinIsResolvedByItsIdBeforeItsPath()
    {
        const auto entries = catalogue({record("home", "pad"), record("usr", "pad"), record("usr", "mail")});
        QCOMPARE(located(entries, "/usr/applications/pad.desktop", "pad", true),
            QStringLiteral("/home/applications/pad.desktop"));
        QCOMPARE(located(entries, "/usr/applications/mail.desktop", "pad", true),
            QStringLiteral("/home/applications/pad.desktop"));
    }

    void aPinWithoutAnIdKeepsItsPath()
    {
        const auto entries = catalogue({record("home", "pad"), record("usr", "pad")});
        QCOMPARE(located(entries, "/usr/applications/pad.desktop", nullptr, true),
            QStringLiteral("/usr/applications/pad.desktop"));
    }

    void aPinElsewhereIsAtItsPathWhileThatIsThere()
    {
        const auto entries = catalogue({record("usr", "mail")});
        QCOMPARE(located(entries, "/opt/tool/tool.desktop", "tool", true), QStringLiteral("/opt/tool/tool.desktop"));
        QCOMPARE(located(entries, "/opt/tool/tool.desktop", "tool"), QString());
    }

    void aPinFollowsARenaming()
    {
        EntryRecord successor = record("usr", "org.example.Pad");
        successor.renamedFrom = {QStringLiteral("old-pad.desktop"), QStringLiteral("pad.desktop")};
        const auto entries = catalogue({successor, record("usr", "mail")});
        QCOMPARE(located(entries, "/usr/applications/pad.desktop", "pad"), successor.path);
        QCOMPARE(located(entries, "/usr/applications/pad.desktop"), successor.path);
        QCOMPARE(located(entries, "/opt/pad.desktop", "pad", true), QStringLiteral("/opt/pad.desktop"));
        QCOMPARE(located(entries, "/usr/applications/p.desktop", "p"), QString());
    }

    void aPathIsComparedAsItIsWritten()
    {
        EntryRecord linked = record("usr", "pad");
        linked.path = QStringLiteral("/usr/../usr/applications/pad.desktop");
        QCOMPARE(catalogue({linked}).byPath(QStringLiteral("/usr/applications/pad.desktop")), nullptr);
    }

    void aChangeAnywhereIsAChange()
    {
        const auto before = catalogue({manager("usr", "thunar"), manager("usr", "nemo")});
        QVERIFY(before == catalogue({manager("usr", "thunar"), manager("usr", "nemo")}));
        MimeDefaults defaults;
        defaults.append(folders, MimeChoice{.defaults = {QStringLiteral("nemo.desktop")}});
        QVERIFY(!(before == catalogue({manager("usr", "thunar"), manager("usr", "nemo")}, defaults)));
        EntryRecord named = manager("usr", "thunar");
        named.icon = QStringLiteral("other");
        QVERIFY(!(before == catalogue({named, manager("usr", "nemo")})));
        EntryRecord hidden = record("usr", "old");
        hidden.hidden = true;
        QVERIFY(!(before == catalogue({manager("usr", "thunar"), manager("usr", "nemo"), hidden})));
    }

    void fiveThousandEntriesAreNothing()
    {
        QList<EntryRecord> found;
        for (int index = 0; index < 5000; ++index)
            found.append(record("usr", qPrintable(QStringLiteral("app-%1").arg(index))));
        const auto entries = catalogue(found + found);
        QCOMPARE(entries.records().size(), 5000);
        QCOMPARE(located(entries, "", "app-4999"), QStringLiteral("/usr/applications/app-4999.desktop"));
    }
};

MOORLINE_TEST(EntryCatalogueTest);

} // namespace

#include "EntryCatalogueTest.moc"
