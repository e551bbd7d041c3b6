#include "freedesktop/EntryPlaces.h"
#include "harness/TestCase.h"

#include <QHash>

namespace {

using moorline::entryId;
using moorline::EntryPlaces;

using Variables = QHash<QString, QString>;

EntryPlaces places(const Variables &variables)
{
    return moorline::entryPlaces(
        [&](const char *name) { return variables.value(QString::fromLatin1(name)); }, QStringLiteral("/home/ada"));
}

QStringList lines(const char *text)
{
    return QString::fromLatin1(text).split(u' ', Qt::SkipEmptyParts);
}

class EntryPlacesTest final : public moorline::test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void withoutVariablesTheStandardFoldersAreSearched()
    {
        QCOMPARE(places({}).folders,
            lines("/home/ada/.local/share/applications /home/ada/.local/share/flatpak/exports/share/applications "
                  "/usr/local/share/applications /usr/share/applications "
                  "/var/lib/flatpak/exports/share/applications /var/lib/snapd/desktop/applications"));
    }

    void theUsersOwnFolderComesFirstAndTheOthersInTheSessionsOrder()
    {
        const EntryPlaces found = places({{QStringLiteral("XDG_DATA_HOME"), QStringLiteral("/data")},
            {QStringLiteral("XDG_DATA_DIRS"), QStringLiteral("/b/:/a:/b")}});
        QCOMPARE(found.folders,
            lines("/data/applications /data/flatpak/exports/share/applications /b/applications /a/applications "
                  "/var/lib/flatpak/exports/share/applications /var/lib/snapd/desktop/applications"));
    }

    void whatTheSessionWasToldOfStandsWhereItSays()
    {
        const EntryPlaces found = places({{QStringLiteral("XDG_DATA_DIRS"),
            QStringLiteral("/usr/share:/var/lib/snapd/desktop:/home/ada/.local/share/flatpak/exports/share")}});
        QCOMPARE(found.folders,
            lines("/home/ada/.local/share/applications /usr/share/applications /var/lib/snapd/desktop/applications "
                  "/home/ada/.local/share/flatpak/exports/share/applications "
                  "/var/lib/flatpak/exports/share/applications"));
    }

    void relativeFoldersAreIgnored()
    {
        const EntryPlaces found = places({{QStringLiteral("XDG_DATA_HOME"), QStringLiteral("data")},
            {QStringLiteral("XDG_DATA_DIRS"), QStringLiteral("here:./there")},
            {QStringLiteral("XDG_CONFIG_HOME"), QStringLiteral("config")}});
        QCOMPARE(found, places({}));
    }

    void theListsOfADesktopComeBeforeThoseForAll()
    {
        const EntryPlaces found = places({{QStringLiteral("XDG_CONFIG_HOME"), QStringLiteral("/config")},
            {QStringLiteral("XDG_CONFIG_DIRS"), QStringLiteral("/etc/a:/etc/b")},
            {QStringLiteral("XDG_DATA_HOME"), QStringLiteral("/data")},
            {QStringLiteral("XDG_DATA_DIRS"), QStringLiteral("/usr/share")},
            {QStringLiteral("XDG_CURRENT_DESKTOP"), QStringLiteral("ubuntu:GNOME")}});
        QCOMPARE(found.desktopNames, lines("ubuntu GNOME"));
        QCOMPARE(found.mimeLists.mid(0, 9),
            lines("/config/ubuntu-mimeapps.list /config/gnome-mimeapps.list /config/mimeapps.list "
                  "/etc/a/ubuntu-mimeapps.list /etc/a/gnome-mimeapps.list /etc/a/mimeapps.list "
                  "/etc/b/ubuntu-mimeapps.list /etc/b/gnome-mimeapps.list /etc/b/mimeapps.list"));
        QCOMPARE(found.mimeLists.at(9), QStringLiteral("/data/applications/ubuntu-mimeapps.list"));
        QVERIFY(found.mimeLists.contains(QStringLiteral("/usr/share/applications/mimeapps.list")));
    }

    void anIdIsTheWayDownFromTheFolder_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("id");

        QTest::newRow("in a folder") << QStringLiteral("/a/applications/pad.desktop") << QStringLiteral("pad");
        QTest::newRow("below it") << QStringLiteral("/b/applications/kde/games/mines.desktop")
                                  << QStringLiteral("kde-games-mines");
        QTest::newRow("elsewhere") << QStringLiteral("/opt/x/tool.desktop") << QStringLiteral("tool");
        QTest::newRow("alike") << QStringLiteral("/a/applications-old/x/tool.desktop") << QStringLiteral("tool");
        QTest::newRow("another ending") << QStringLiteral("/a/applications/tool.txt") << QStringLiteral("tool.txt");
        QTest::newRow("twice the ending")
            << QStringLiteral("/a/applications/t.desktop.desktop") << QStringLiteral("t.desktop");
    }

    void anIdIsTheWayDownFromTheFolder()
    {
        QFETCH(QString, path);
        QTEST(entryId(path, lines("/a/applications /b/applications")), "id");
    }
};

MOORLINE_TEST(EntryPlacesTest);

} // namespace

#include "EntryPlacesTest.moc"
