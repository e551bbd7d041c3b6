#include "files/RecentDownloads.h"

#include "files/ShownName.h"
#include "harness/TestCase.h"
#include "support/FileUrls.h"

using namespace moorline;
using namespace std::chrono_literals;

namespace {

using Time = FolderEntry::Time;

constexpr Time noon{43'200s};

FolderEntry added(const QByteArray &name, std::chrono::seconds after)
{
    return {.name = name, .added = noon + after, .modified = noon - 24h};
}

QByteArray names(const QList<FolderEntry> &entries)
{
    QByteArrayList shown;
    for (const FolderEntry &entry : entries)
        shown.append(entry.name);
    return shown.join(' ');
}

} // namespace

class RecentDownloadsTest final : public test::TestCase {
    Q_OBJECT
private Q_SLOTS:
    void ofTwentyFilesTheTwelveNewestAreListed()
    {
        QList<FolderEntry> entries;
        // Neither in the order of their dates nor against it.
        for (int i = 0; i < 20; ++i)
            entries.append(added(QByteArray::number((i * 7) % 20), std::chrono::seconds((i * 7) % 20)));
        QCOMPARE(names(newest(entries)), "19 18 17 16 15 14 13 12 11 10 9 8");
    }

    void withoutADateOfComingItIsThatOfTheLastChange()
    {
        QCOMPARE(names(newest({added("old", 1s), {.name = "changed", .modified = noon + 2s}, added("new", 3s)})),
            "new changed old");
    }

    void theDateOfComingCountsMoreThanTheLastChange()
    {
        QCOMPARE(names(newest({{.name = "a", .added = noon, .modified = noon + 5h},
                     {.name = "b", .added = noon + 1s, .modified = noon - 5h}})),
            "b a");
    }

    void withoutAnyDateItComesLast()
    {
        QCOMPARE(names(newest({{.name = "none"}, {.name = "before the epoch", .modified = Time(-1h)}})),
            "before the epoch none");
    }

    void thoseOfOneTimeStayInTheirOrder()
    {
        QList<FolderEntry> entries;
        for (char letter = 'a'; letter <= 'p'; ++letter)
            entries.append({.name = QByteArray(1, letter), .added = noon});
        QCOMPARE(names(newest(entries)), "a b c d e f g h i j k l");
    }

    void whatIsHiddenIsLeftOut()
    {
        QCOMPARE(names(newest({{.name = ".part", .isHidden = true, .added = noon}, added("a", 0s)})), "a");
        QVERIFY(newest({{.name = ".part", .isHidden = true}}).isEmpty());
    }

    void theirPlacesAreBytes()
    {
        const QList<QUrl> urls = urlsIn(QStringLiteral("/home/ü/Downloads"), {{.name = "a b%"}, {.name = "\xff"}});
        QCOMPARE(urls.at(0).toEncoded(), "file:///home/%C3%BC/Downloads/a%20b%25");
        QCOMPARE(pathBytes(urls.at(1)), "/home/\xc3\xbc/Downloads/\xff");
    }

    void aNameIsShownOnOneLineAndAsItStands_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<QString>("shown");
        const auto row = [](const char *what, const QByteArray &name, const QString &shown) {
            QTest::newRow(what) << name << shown;
        };
        row("plain", "a b.txt", QStringLiteral("a b.txt"));
        row("beyond ASCII", "Grüße 日本", QStringLiteral("Grüße 日本"));
        row("right to left by itself", "שלום", QStringLiteral("שלום"));
        row("a line feed", "a\nb", QStringLiteral("a\u240ab"));
        row("a tab and an escape", "\t\x1b", QStringLiteral("\u2409\u241b"));
        row("delete", "a\x7f", QStringLiteral("a\u2421"));
        row("a control character of the upper half", "a\xc2\x85", QStringLiteral("a\ufffd"));
        row("a line separator", "a\xe2\x80\xa8", QStringLiteral("a\ufffd"));
        row("turned round",
            "a\xe2\x80\xae"
            "txt.exe",
            QStringLiteral("a\ufffdtxt.exe"));
        row("embedded", "\xe2\x80\xaa\xe2\x80\xac", QStringLiteral("\ufffd\ufffd"));
        row("isolated", "\xe2\x81\xa6\xe2\x81\xa9", QStringLiteral("\ufffd\ufffd"));
        row("marks of direction", "\xe2\x80\x8e\xe2\x80\x8f\xd8\x9c", QStringLiteral("\ufffd\ufffd\ufffd"));
        row("joiners, which some scripts need", "a\xe2\x80\x8d", QStringLiteral("a\u200d"));
        row("no text", "a\xff", QStringLiteral("a\ufffd"));
    }

    void aNameIsShownOnOneLineAndAsItStands()
    {
        QFETCH(QByteArray, name);
        QTEST(shownName(fileUrl("/home/me/" + name)), "shown");
    }
};

MOORLINE_TEST(RecentDownloadsTest);
#include "RecentDownloadsTest.moc"
