#include "apps/Launching.h"
#include "harness/Answer.h"
#include "harness/LocaleScope.h"
#include "harness/TestCase.h"

using namespace moorline;
using namespace moorline::test;

namespace {

using Text = std::optional<QString>;

InstalledBundle bundle(const char *path, const Text &identifier, const Text &displayName, const Text &name = {})
{
    return {QString::fromUtf8(path), {identifier, displayName, name}};
}

QList<AppShortcut> installedApps(Launching &desk)
{
    const Answer<QList<AppShortcut>> answer(desk.launcher.installedApps());
    return answer.value();
}

QStringList names(const QList<AppShortcut> &apps)
{
    QStringList all;
    for (const AppShortcut &app : apps)
        all.append(app.name);
    return all;
}

QStringList sorted(const QString &locale, const QStringList &given)
{
    const LocaleScope scope(locale);
    Launching desk;
    int number = 0;
    for (const QString &name : given)
        desk.bundles.listed.append({QStringLiteral("/a/%1.app").arg(++number), {std::nullopt, name, std::nullopt}});
    return names(installedApps(desk));
}

} // namespace

class InstalledAppsTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void everyApplicationIsAShortcut()
    {
        Launching desk;
        desk.bundles.listed = {bundle("/Applications/B.app", QStringLiteral("b"), QStringLiteral("Beta")),
            bundle("/Applications/A.app", {}, {}, QStringLiteral("Alpha")),
            bundle("/Applications/My Notes.app", QStringLiteral("n"), {})};
        QCOMPARE(installedApps(desk),
            (QList<AppShortcut>{{QStringLiteral("/Applications/A.app"), std::nullopt, QStringLiteral("Alpha")},
                {QStringLiteral("/Applications/B.app"), QStringLiteral("b"), QStringLiteral("Beta")},
                {QStringLiteral("/Applications/My Notes.app"), QStringLiteral("n"), QStringLiteral("My Notes")}}));
        QVERIFY(desk.bundles.infosAsked.isEmpty());
    }

    void ofTwoCopiesTheFirstCounts()
    {
        Launching desk;
        desk.bundles.listed = {bundle("/Applications/Notes.app", QStringLiteral("n"), QStringLiteral("Notes")),
            bundle("/home/me/Applications/Notes.app", QStringLiteral("n"), QStringLiteral("Notes"))};
        QCOMPARE(installedApps(desk),
            (QList<AppShortcut>{
                {QStringLiteral("/Applications/Notes.app"), QStringLiteral("n"), QStringLiteral("Notes")}}));
    }

    void withoutIdentifiersThePathTellsThemApart()
    {
        Launching desk;
        desk.bundles.listed = {bundle("/a/Notes.app", {}, {}), bundle("/b/Notes.app", {}, {}),
            bundle("/a/Notes.app", {}, {}), bundle("/c/Notes.app", QStringLiteral("/a/Notes.app"), {})};
        const auto apps = installedApps(desk);
        QCOMPARE(apps.size(), 2);
        QCOMPARE(apps.at(0).path, QStringLiteral("/a/Notes.app"));
        QCOMPARE(apps.at(1).path, QStringLiteral("/b/Notes.app"));
    }

    void whatIsNoApplicationIsLeftOut()
    {
        Launching desk;
        desk.bundles.listed = {bundle("/Applications/Notes.APP", {}, {}), bundle("/Applications/.app", {}, {}),
            bundle("/Applications/Notes.txt", {}, {})};
        QVERIFY(installedApps(desk).isEmpty());
    }

    void caseDoesNotMatter()
    {
        QCOMPARE(
            sorted(QStringLiteral("en_US"),
                {QStringLiteral("beta"), QStringLiteral("Gamma"), QStringLiteral("Alpha"), QStringLiteral("delta")}),
            (QStringList{
                QStringLiteral("Alpha"), QStringLiteral("beta"), QStringLiteral("delta"), QStringLiteral("Gamma")}));
        QCOMPARE(sorted(QStringLiteral("C"), {QStringLiteral("b"), QStringLiteral("C"), QStringLiteral("a")}),
            (QStringList{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("C")}));
    }

    void theOrderIsThatOfTheLanguage()
    {
        const QStringList given{QStringLiteral("Zebra"), QStringLiteral("Äpfel"), QStringLiteral("Birne")};
        QCOMPARE(sorted(QStringLiteral("de_DE"), given),
            (QStringList{QStringLiteral("Äpfel"), QStringLiteral("Birne"), QStringLiteral("Zebra")}));
        QCOMPARE(sorted(QStringLiteral("sv_SE"), given),
            (QStringList{QStringLiteral("Birne"), QStringLiteral("Zebra"), QStringLiteral("Äpfel")}));
    }

    void equalNamesKeepTheOrderOfTheFolders()
    {
        Launching desk;
        for (int number = 0; number < 40; ++number) {
            desk.bundles.listed.append({QStringLiteral("/%1.app").arg(number, 2, 10, QLatin1Char('0')),
                {std::nullopt, number % 2 ? QStringLiteral("same") : QStringLiteral("Same"), std::nullopt}});
        }
        const auto apps = installedApps(desk);
        for (int number = 0; number < 40; ++number)
            QCOMPARE(apps.at(number).path, QStringLiteral("/%1.app").arg(number, 2, 10, QLatin1Char('0')));
    }

    void theListMayOutliveTheLauncher()
    {
        FakeAppBundles bundles;
        bundles.listed = {bundle("/a/Notes.app", {}, {})};
        auto desk = std::make_unique<Launching>(bundles);
        auto task = desk->launcher.installedApps();
        desk.reset();
        const Answer<QList<AppShortcut>> answer(std::move(task));
        QCOMPARE(answer.value().size(), 1);
    }
};

MOORLINE_TEST(InstalledAppsTest);
#include "InstalledAppsTest.moc"
