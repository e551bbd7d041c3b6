#include "SyncTestCase.h"

#include <csignal>
#include <sys/resource.h>

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;

namespace {

/// No file may grow beyond a few bytes while it lives, as on a full disk.
class FullDisk final {
public:
    FullDisk()
        : m_handler(std::signal(SIGXFSZ, SIG_IGN))
    {
        ::getrlimit(RLIMIT_FSIZE, &m_limit);
        const rlimit small{64, m_limit.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &small);
    }
    ~FullDisk()
    {
        ::setrlimit(RLIMIT_FSIZE, &m_limit);
        std::signal(SIGXFSZ, m_handler);
    }
    Q_DISABLE_COPY_MOVE(FullDisk)

private:
    void (*m_handler)(int);
    rlimit m_limit{};
};

const QByteArray damagedPins =
    R"({"pinnedItems":[{"path":"/a","name":"a"},{"path":"/b"}],"pinnedItemsIntroduced":true})";

} // namespace

/// Nothing that a settings file holds is ever lost.
class SettingsKeptTest final : public SyncTestCase {
    Q_OBJECT
private Q_SLOTS:
    void aFileOfWhichSomethingCannotBeReadIsKept_data()
    {
        QTest::addColumn<QByteArray>("document");
        const auto row = [](const char *name, const QByteArray &document) { QTest::newRow(name) << document; };
        row("an element of a list", damagedPins);
        row("a field of another type", R"({"bottomGap":"wide","showSeconds":true})");
        row("an unknown choice", R"({"musicStyle":"vinyl"})");
        row("a kind of widget still to come", R"({"enabledWidgets":["clock","stocks"]})");
        row("a place without a name", R"({"location":{"latitude":1,"longitude":2}})");
        row("no JSON", R"({"bottomGap":NaN})");
        row("no JSON in a member of a newer version", R"({"colour":red})");
        row("a name twice", R"({"bottomGap":3,"bottomGap":4})");
        row("a name that is no text", "{\"\xff\":1}");
    }

    void aFileOfWhichSomethingCannotBeReadIsKept()
    {
        QFETCH(QByteArray, document);
        const auto read = decodeSettings(document);
        write(document);
        begin();
        QCOMPARE(contents(m_damagedPath), document);
        QCOMPARE(onDisk(), std::optional(m_sync->settings()));
        QCOMPARE(m_sync->settings().bottomGap, read->bottomGap);
        QCOMPARE(m_clock->runningTimers(), 0);
    }

    void aFileOfWhichAllCanBeReadIsNot_data()
    {
        QTest::addColumn<QByteArray>("document");
        QTest::newRow("little") << QByteArray("{}");
        QTest::newRow("as others write it") << QByteArray("{ \"bottomGap\":3.0,\r\n\"showTrash\" : false }");
        QTest::newRow("nothing for a field") << QByteArray(R"({"bottomGap":null,"location":null})");
        QTest::newRow("a newer version's") << QByteArray(R"({"colour":"red","layout":{"rows":[1,2]}})");
        QTest::newRow("lone surrogates") << QByteArray(R"({"pinnedItems":[{"path":"/\ud800","name":"\udc00"}]})");
    }

    void aFileOfWhichAllCanBeReadIsNot()
    {
        QFETCH(QByteArray, document);
        write(document);
        begin();
        const auto read = decodeSettings(document);
        QCOMPARE(onDisk()->pinnedItems, read->pinnedItems);
        QVERIFY(!QFile::exists(m_damagedPath));
    }

    void whatIsDamagedWhileTheBarRunsIsKeptOnceItWouldBeWrittenOver()
    {
        begin();
        write(damagedPins);
        look();
        m_clock->advance(60s);
        QCOMPARE(contents(m_path), damagedPins);
        QVERIFY(!QFile::exists(m_damagedPath));
        m_sync->change([](Settings &settings) { settings.bottomGap = 9; });
        QCOMPARE(contents(m_damagedPath), damagedPins);
        QCOMPARE(onDisk()->bottomGap, 9.0);
        m_sync->change([](Settings &settings) { settings.bottomGap = 10; });
        QVERIFY(!QFile::exists(m_damagedPath + QStringLiteral(".2")));
    }

    void whatIsMendedInTimeNeedsNotBeKept()
    {
        begin();
        write(damagedPins);
        look();
        writeTheirs([](Settings &settings) { settings.recentAppCount = 8; });
        m_sync->change([](Settings &settings) { settings.bottomGap = 9; });
        QVERIFY(!QFile::exists(m_damagedPath));
        QCOMPARE(onDisk()->recentAppCount, 8);
    }

    void theSameDamageIsKeptOnce()
    {
        write("another damage");
        setModified(m_clock->now().addSecs(-3));
        begin();
        for (int start = 0; start < 3; ++start) {
            write(damagedPins);
            begin();
        }
        QCOMPARE(contents(m_damagedPath), QByteArray("another damage"));
        QCOMPARE(contents(m_damagedPath + QStringLiteral(".2")), damagedPins);
        QVERIFY(!QFile::exists(m_damagedPath + QStringLiteral(".3")));
    }

    void whatCannotBeKeptIsNotWrittenOver()
    {
        write(damagedPins);
        {
            const FullDisk disk;
            begin();
        }
        QCOMPARE(contents(m_path), damagedPins);
        QCOMPARE(m_sync->settings(), introducedDefaults());
        m_clock->advance(20s);
        QCOMPARE(contents(m_damagedPath), damagedPins);
        QCOMPARE(onDisk(), std::optional(introducedDefaults()));
    }

    void aChangeBesideADamagedFileIsSavedAtTheEnd()
    {
        begin();
        write("{");
        m_sync->change([](Settings &settings) { settings.bottomGap = 9; });
        m_sync.reset();
        QCOMPARE(onDisk()->bottomGap, 9.0);
        QCOMPARE(contents(m_damagedPath), QByteArray("{"));
    }

    void withoutAChangeADamagedFileIsLeftAtTheEnd()
    {
        write("{");
        begin();
        m_sync.reset();
        QCOMPARE(contents(m_path), QByteArray("{"));
        QVERIFY(!QFile::exists(m_damagedPath));
    }

    void aNewerVersionsMembersStayThroughEveryWrite()
    {
        write(R"({"zoom":1.5,"bottomGap":9,"colour":{"of":["bar",null]},"serial":9007199254740993})");
        begin();
        m_sync->change([](Settings &settings) { settings.showSeconds = true; });
        const QJsonObject members = readSettings(contents(m_path))->members;
        QCOMPARE(members.size(), 26 + 3);
        QCOMPARE(members[QStringLiteral("zoom")], QJsonValue(1.5));
        QCOMPARE(members[QStringLiteral("colour")][QStringLiteral("of")],
            QJsonValue(QJsonArray{QStringLiteral("bar"), QJsonValue()}));
        QCOMPARE(members[QStringLiteral("serial")], QJsonValue(qint64(9007199254740993)));
        QCOMPARE(onDisk(), std::optional(m_sync->settings()));
        QCOMPARE(m_sync->settings().bottomGap, 9.0);
    }

    void aNewerVersionsMembersAreNoReasonToWriteAtTheStart()
    {
        write(R"({"zoom":1.5})");
        begin();
        const QDateTime longAgo = m_clock->now().addDays(-1);
        setModified(longAgo);
        begin();
        QCOMPARE(QFileInfo(m_path).lastModified(), longAgo);
    }

    void theyAreThoseThatStandInTheFileNow()
    {
        write(R"({"zoom":1.5,"colour":"red"})");
        begin();
        write(R"({"zoom":2})");
        m_sync->change([](Settings &settings) { settings.bottomGap = 9; });
        const QJsonObject members = readSettings(contents(m_path))->members;
        QCOMPARE(members[QStringLiteral("zoom")], QJsonValue(2));
        QCOMPARE(members.size(), 26 + 1);
    }

    void whatStandsInARecordStaysAsLongAsTheRecordIsTheSame()
    {
        write(R"({"pinnedItems":[{"path":"/a","name":"a","tag":1},{"path":"/b","name":"b","tag":2}],)"
              R"("location":{"name":"Here","latitude":1,"longitude":2,"height":3},)"
              R"("appShortcuts":[{"path":"/x.app","name":"X","tag":4}]})");
        begin();
        m_sync->change([](Settings &settings) {
            settings.pinnedItems = {{QStringLiteral("/c"), QStringLiteral("c")}, settings.pinnedItems.at(1),
                {QStringLiteral("/a"), QStringLiteral("A")}};
        });
        QCOMPARE(inFile("pinnedItems"),
            json(R"([{"path":"/c","name":"c"},{"path":"/b","name":"b","tag":2},{"path":"/a","name":"A"}])"));
        QCOMPARE(inFile("appShortcuts"), json(R"([{"path":"/x.app","name":"X","tag":4}])"));
        QCOMPARE(inFile("location"), json(R"({"name":"Here","latitude":1,"longitude":2,"height":3})"));
        m_sync->change([](Settings &settings) { settings.location.name = QStringLiteral("There"); });
        QCOMPARE(inFile("location"), json(R"({"name":"There","latitude":1,"longitude":2})"));
    }

    void aRecordThatWasTakenOutComesBackAsNew()
    {
        write(R"({"pinnedItems":[{"path":"/a","name":"a","tag":1}]})");
        begin();
        m_sync->change([](Settings &settings) { settings.pinnedItems.clear(); });
        m_sync->change([](Settings &settings) {
            settings.pinnedItems = {{QStringLiteral("/a"), QStringLiteral("a")}};
        });
        QCOMPARE(inFile("pinnedItems"), json(R"([{"path":"/a","name":"a"}])"));
    }

    void recordsThatAreAlikeKeepWhatIsTheirsInOrder()
    {
        const QByteArray pins = R"([{"path":"/a","name":"a","tag":1},{"path":"/a","name":"a","tag":2}])";
        write(R"({"pinnedItems":)" + pins + '}');
        begin();
        QCOMPARE(inFile("pinnedItems"), json(pins));
    }

    void whatWouldGrowTooLargeToBeReadIsNotWritten()
    {
        // Pretty-printed, each of these is far longer.
        const QByteArray document = R"({"many":[)" + QByteArray("[[[[[[[[1]]]]]]]],").repeated(25000) + "1]}";
        write(document);
        begin();
        m_sync->change([](Settings &settings) { settings.bottomGap = 9; });
        QVERIFY(contents(m_path) == document);
        QCOMPARE(m_sync->settings().bottomGap, 9.0);
    }

private:
    static QJsonValue json(const QByteArray &text)
    {
        return readSettings("{\"value\":" + text + '}')->members.value(QStringLiteral("value"));
    }

    [[nodiscard]] QJsonValue inFile(const char *key) const
    {
        return readSettings(contents(m_path))->members.value(QLatin1StringView(key));
    }
};

MOORLINE_TEST(SettingsKeptTest);
#include "SettingsKeptTest.moc"
