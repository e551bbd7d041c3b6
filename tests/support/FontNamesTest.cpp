#include "support/FontNames.h"

#include "harness/TestCase.h"

using namespace moorline;

class FontNamesTest final : public test::TestCase {
    Q_OBJECT
private Q_SLOTS:
    void theFamilyIsWhatComesBeforeStyleAndSize_data()
    {
        QTest::addColumn<QString>("description");
        QTest::addColumn<QString>("family");
        const auto row = [](const char *description, const char *family) {
            QTest::addRow("'%s'", description) << QString::fromLatin1(description) << QString::fromLatin1(family);
        };
        row("Cantarell 11", "Cantarell");
        row("Cantarell", "Cantarell");
        row("Noto Sans 10", "Noto Sans");
        row("Noto Sans 10.5", "Noto Sans");
        row("Noto Sans 12px", "Noto Sans");
        row("Noto Sans Bold 10", "Noto Sans");
        row("Noto Sans Bold Italic 10", "Noto Sans");
        row("Ubuntu Semi-Condensed Medium 11", "Ubuntu");
        row("Noto Sans,  10", "Noto Sans");
        row("Noto Sans,Bold 10", "Noto Sans");
        row("Arial Black, 10", "Arial Black");
        row("Inter, Noto Sans, Sans 10", "Inter");
        row("Source Sans 3 11", "Source Sans 3");
        row("Inter Variable 11 @wght=500,opsz=14", "Inter Variable");
        row("Inter 11 @wght=500 #tnum=1", "Inter");
        row("  DejaVu   Sans   9 ", "DejaVu Sans");
        row("Noto Sans 500", "Noto Sans");
        row("Noto Sans 999999999999999999999", "Noto Sans");
        row("", "");
        row("   ", "");
        row("11", "");
        row("Bold 11", "");
        row(", 11", "");
    }

    void theFamilyIsWhatComesBeforeStyleAndSize()
    {
        QFETCH(QString, description);
        QTEST(familyInDescription(description), "family");
    }

    void aDescriptionOfAnySizeIsSurvived()
    {
        const QString many = QStringLiteral("Bold ").repeated(100000);
        QCOMPARE(familyInDescription(many), QString());
        QCOMPARE(familyInDescription(QString(1000000, u'x')).size(), 1000000);
        QCOMPARE(familyInDescription(QString(QChar(u'\0')) + QStringLiteral(" 11")), QString(QChar(u'\0')));
    }

    void kdesGeneralFontIsFound()
    {
        QCOMPARE(familyInKdeSettings("[ColorScheme]\nfont=Wrong,1\n\n[General]\nfixed=Hack,10\n"
                                     "font=Noto Sans,10,-1,5,50,0,0,0,0,0\nmenuFont=Menu,9\n[KDE]\nfont=Wrong,1\n"),
            std::optional(QStringLiteral("Noto Sans")));
        QCOMPARE(
            familyInKdeSettings("[General]\r\nfont=Inter Display\r\n"), std::optional(QStringLiteral("Inter Display")));
        QCOMPARE(familyInKdeSettings("[General][Sub]\nfont=Wrong\n[General][$i]\nfont[$i]=日本,9\n"),
            std::optional(QStringLiteral("日本")));
    }

    void whatIsNotThereIsAbsent_data()
    {
        QTest::addColumn<QByteArray>("settings");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("another group") << QByteArray("[KDE]\nfont=Noto Sans,10\n");
        QTest::newRow("no group") << QByteArray("font=Noto Sans,10\n");
        QTest::newRow("other keys") << QByteArray("[General]\nfixed=Hack,10\nfontSize=3\n");
        QTest::newRow("no value") << QByteArray("[General]\nfont=\n");
        QTest::newRow("no family") << QByteArray("[General]\nfont= ,10,-1\n");
        QTest::newRow("zeroes") << QByteArray(4096, '\0');
    }

    void whatIsNotThereIsAbsent()
    {
        QFETCH(QByteArray, settings);
        QCOMPARE(familyInKdeSettings(settings), std::nullopt);
    }

    void whatIsToldComesFirst()
    {
        SessionFontFacts facts;
        facts.told = QStringLiteral("Inter Bold 11");
        facts.isKde = true;
        facts.kdeSettings = {"[General]\nfont=Kdeish,10\n"};
        facts.gnomes = QStringLiteral("Gnomish 11");
        QCOMPARE(sessionFontFamily(facts), QStringLiteral("Inter"));
        facts.isKde = false;
        QCOMPARE(sessionFontFamily(facts), QStringLiteral("Inter"));
        // Also where it is no more than a size.
        facts.told = QStringLiteral("11");
        QCOMPARE(sessionFontFamily(facts), QString());
    }

    void kdesOwnFilesSpeakInItsSession()
    {
        SessionFontFacts facts;
        facts.isKde = true;
        facts.gnomes = QStringLiteral("Gnomish 11");
        // Without any, KDE takes this one.
        QCOMPARE(sessionFontFamily(facts), QStringLiteral("Noto Sans"));
        facts.kdeSettings = {"[KDE]\nfont=Wrong,1\n", QByteArray()};
        QCOMPARE(sessionFontFamily(facts), QStringLiteral("Noto Sans"));
        facts.kdeSettings = {"[KDE]\n", "[General]\nfont=Administered,10\n"};
        QCOMPARE(sessionFontFamily(facts), QStringLiteral("Administered"));
        facts.kdeSettings = {"[General]\nfont=Mine,10\n", "[General]\nfont=Administered,10\n"};
        QCOMPARE(sessionFontFamily(facts), QStringLiteral("Mine"));
        facts.isKde = false;
        QCOMPARE(sessionFontFamily(facts), QStringLiteral("Gnomish"));
    }

    void whereNobodySaysThereIsNone()
    {
        QCOMPARE(sessionFontFamily({}), QString());
        SessionFontFacts facts;
        facts.gnomes = QStringLiteral("Cantarell 11");
        QCOMPARE(sessionFontFamily(facts), QStringLiteral("Cantarell"));
    }
};

MOORLINE_TEST(FontNamesTest);
#include "FontNamesTest.moc"
