#include "support/IconThemes.h"

#include "harness/TestCase.h"

namespace moorline::test {

namespace {

using Type = IconFolder::Type;

IconFolder fixed(int size, int scale = 1)
{
    return {.path = {}, .size = size, .scale = scale, .type = Type::fixed};
}

IconFolder scalable(int size, int smallest, int largest, int scale = 1)
{
    return {.path = {}, .size = size, .scale = scale, .type = Type::scalable, .smallest = smallest, .largest = largest};
}

IconFolder threshold(int size, int threshold = 2)
{
    return {.path = {}, .size = size, .threshold = threshold};
}

} // namespace

class IconThemesTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void aFolderIsMadeForSizes_data()
    {
        QTest::addColumn<IconFolder>("folder");
        QTest::addColumn<int>("size");
        QTest::addColumn<int>("scale");
        QTest::addColumn<bool>("isMade");
        QTest::addColumn<int>("off");
        QTest::newRow("fixed, its size") << fixed(48) << 48 << 1 << true << 0;
        QTest::newRow("fixed, one less") << fixed(48) << 47 << 1 << false << 1;
        QTest::newRow("fixed, one more") << fixed(48) << 49 << 1 << false << 1;
        QTest::newRow("fixed, another scale") << fixed(48) << 48 << 2 << false << 48;
        QTest::newRow("fixed, the same pixels") << fixed(48) << 24 << 2 << false << 0;
        QTest::newRow("fixed at double scale") << fixed(24, 2) << 24 << 2 << true << 0;
        QTest::newRow("fixed at double scale, one more") << fixed(24, 2) << 25 << 2 << false << 2;
        QTest::newRow("threshold, at its lower end") << threshold(48) << 46 << 1 << true << 0;
        QTest::newRow("threshold, below") << threshold(48) << 45 << 1 << false << 1;
        QTest::newRow("threshold, at its upper end") << threshold(48) << 50 << 1 << true << 0;
        QTest::newRow("threshold, above") << threshold(48) << 53 << 1 << false << 3;
        QTest::newRow("threshold of its own") << threshold(48, 5) << 43 << 1 << true << 0;
        QTest::newRow("scalable, at its lower end") << scalable(64, 16, 512) << 16 << 1 << true << 0;
        QTest::newRow("scalable, below") << scalable(64, 16, 512) << 14 << 1 << false << 2;
        QTest::newRow("scalable, at its upper end") << scalable(64, 16, 512) << 512 << 1 << true << 0;
        QTest::newRow("scalable, above") << scalable(64, 16, 512) << 520 << 1 << false << 8;
        QTest::newRow("scalable, another scale") << scalable(64, 16, 512) << 46 << 2 << false << 0;
    }
    void aFolderIsMadeForSizes()
    {
        QFETCH(const IconFolder, folder);
        QFETCH(const int, size);
        QFETCH(const int, scale);
        QTEST(isMadeFor(folder, size, scale), "isMade");
        QTEST(distance(folder, size, scale), "off");
    }

    void whatIsMadeForTheSizeComesFirstInTheThemesOrder()
    {
        const QList<IconFolder> folders{fixed(16), threshold(48), fixed(46), scalable(64, 8, 512)};
        QCOMPARE(lookupOrder(folders, 46, 1), (QList<qsizetype>{1, 2, 3, 0}));
    }

    void thenComesTheNearest()
    {
        const QList<IconFolder> folders{fixed(16), fixed(256), fixed(32), fixed(64), fixed(48, 2)};
        QCOMPARE(lookupOrder(folders, 46, 1), (QList<qsizetype>{2, 3, 0, 4, 1}));
    }

    void ofTwoThatAreEquallyNearTheThemesFirstWins()
    {
        QCOMPARE(lookupOrder({fixed(50), fixed(42)}, 46, 1), (QList<qsizetype>{0, 1}));
        QCOMPARE(lookupOrder({fixed(42), fixed(50)}, 46, 1), (QList<qsizetype>{0, 1}));
    }

    void whatHasTheScaleComesBeforeWhatHasOnlyThePixels()
    {
        QCOMPARE(lookupOrder({fixed(96), fixed(48, 2)}, 48, 2), (QList<qsizetype>{1, 0}));
    }

    void aNameIsWithoutExtensionAndNoPath_data()
    {
        QTest::addColumn<QString>("written");
        QTest::addColumn<QString>("name");
        const auto row = [](const char *written, const char *name) {
            QTest::newRow(written) << QString::fromLatin1(written) << QString::fromLatin1(name);
        };
        row("firefox", "firefox");
        row("firefox.png", "firefox");
        row("firefox.svg", "firefox");
        row("firefox.xpm", "firefox");
        row("firefox.png.png", "firefox.png");
        row("org.gnome.Maps", "org.gnome.Maps");
        row("firefox.jpg", "firefox.jpg");
        row("", "");
        row(".", "");
        row("..", "");
        row("...png", "");
        row("../secret", "");
        row("/usr/share/pixmaps/x", "");
        row("apps/firefox", "");
        QTest::newRow("a null character") << QStringLiteral("firefox").insert(4, QChar(0)) << QString();
        QTest::newRow("200 characters") << QString(200, u'x') << QString(200, u'x');
        QTest::newRow("201 characters") << QString(201, u'x') << QString();
    }
    void aNameIsWithoutExtensionAndNoPath()
    {
        QFETCH(const QString, written);
        QTEST(iconName(written), "name");
    }

    void theThemeOfTheSessionIsUsedWhereItIsInstalled_data()
    {
        QTest::addColumn<QString>("wanted");
        QTest::addColumn<QStringList>("installed");
        QTest::addColumn<QString>("used");
        const QString papirus = QStringLiteral("Papirus");
        const QString adwaita = QStringLiteral("Adwaita");
        const QString breeze = QStringLiteral("breeze");
        const QString gnome = QStringLiteral("gnome");
        const QString hicolor = QStringLiteral("hicolor");
        const QString own = QStringLiteral("Own");
        QTest::newRow("installed") << own << QStringList{adwaita, own} << own;
        QTest::newRow("none wanted") << QString() << QStringList{breeze, adwaita, hicolor} << adwaita;
        QTest::newRow("wanted and not there") << own << QStringList{papirus, breeze} << breeze;
        QTest::newRow("a third one") << own << QStringList{gnome, papirus} << papirus;
        QTest::newRow("a fourth one") << own << QStringList{gnome} << gnome;
        QTest::newRow("strangers") << own << QStringList{QStringLiteral("Cursors")} << hicolor;
        QTest::newRow("nothing") << own << QStringList() << hicolor;
    }
    void theThemeOfTheSessionIsUsedWhereItIsInstalled()
    {
        QFETCH(const QString, wanted);
        QFETCH(const QStringList, installed);
        QTEST(usableTheme(wanted, installed), "used");
    }

    void theSessionSaysWhichThemeItUses()
    {
        moorline::SessionThemeFacts facts;
        QCOMPARE(sessionIconTheme(facts), QString());
        facts.gnomes = QStringLiteral("Gnomish");
        facts.kdeSettings = {"[General]\nTheme=Wrong\n", "[Icons][$i]\nTheme[$i]=Administered\n"};
        QCOMPARE(sessionIconTheme(facts), QStringLiteral("Gnomish"));
        facts.isKde = true;
        QCOMPARE(sessionIconTheme(facts), QStringLiteral("Administered"));
        facts.kdeSettings.first() = "[Icons]\nTheme=Mine\n";
        QCOMPARE(sessionIconTheme(facts), QStringLiteral("Mine"));
        facts.kdeSettings.clear();
        QCOMPARE(sessionIconTheme(facts), QStringLiteral("breeze"));
        facts.told = QStringLiteral("Papirus");
        QCOMPARE(sessionIconTheme(facts), QStringLiteral("Papirus"));
    }
};

MOORLINE_TEST(IconThemesTest);

} // namespace moorline::test

#include "IconThemesTest.moc"
