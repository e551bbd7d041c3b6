#include "theme/IconCache.h"

#include "fakes/FakeIcons.h"
#include "harness/TestCase.h"

#include <QSignalSpy>

namespace moorline::test {

namespace {

IconRequest request(const QString &path, qreal size = 46, qreal scale = 1)
{
    return {IconKind::application, path, size, scale};
}

const IconRequest notes = request(QStringLiteral("/Applications/Notes.app"));
const IconRequest mail = request(QStringLiteral("/Applications/Mail.app"));
/// The pixels of one icon, and what is counted beside them.
constexpr qsizetype cost = 46 * 46 * 4 + 512;

struct Fixture {
    explicit Fixture(qsizetype capacity = IconCache::defaultCapacity)
        : cache(icons, capacity)
    {
    }

    [[nodiscard]] std::unique_ptr<IconCache::Waiting> load(const IconRequest &asked)
    {
        return cache.load(asked, [this](const QImage &icon) { answers.append(icon); });
    }

    /// Asks and answers.
    void fill(const IconRequest &asked, const QColor &color = Qt::red)
    {
        const auto waiting = load(asked);
        QVERIFY(icons.answer(color));
    }

    FakeIcons icons;
    IconCache cache;
    QList<QImage> answers;
};

} // namespace

class IconCacheTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void anIconIsUnknownUntilTheSystemAnswers()
    {
        Fixture fixture;
        QVERIFY(!fixture.cache.known(notes));
        const auto waiting = fixture.load(notes);
        QVERIFY(!fixture.cache.known(notes));
        QVERIFY(fixture.icons.answer(Qt::red));
        QCOMPARE(fixture.answers, QList<QImage>{FakeIcons::square(notes, Qt::red)});
        QCOMPARE(fixture.cache.known(notes), std::optional(FakeIcons::square(notes, Qt::red)));
    }

    void anIconThatIsMissingIsRememberedAsMissing()
    {
        Fixture fixture;
        const auto waiting = fixture.load(notes);
        QVERIFY(fixture.icons.miss());
        QCOMPARE(fixture.answers, QList<QImage>{QImage()});
        QCOMPARE(fixture.cache.known(notes), std::optional(QImage()));
        QCOMPARE(fixture.cache.bytes(), 512);
    }

    void sizesScalesKindsAndSubjectsAreToldApart()
    {
        Fixture fixture;
        fixture.fill(notes);
        QVERIFY(!fixture.cache.known(request(notes.subject, 45)));
        QVERIFY(!fixture.cache.known(request(notes.subject, 46, 2)));
        QVERIFY(!fixture.cache.known({IconKind::file, notes.subject, 46, 1}));
        QVERIFY(!fixture.cache.known(mail));
    }

    void theSystemIsAskedOnceForAllWhoWait()
    {
        Fixture fixture;
        const auto first = fixture.load(notes);
        const auto second = fixture.load(notes);
        QCOMPARE(fixture.icons.requested.size(), 1);
        QVERIFY(fixture.icons.answer(Qt::red));
        QCOMPARE(fixture.answers.size(), 2);
        QVERIFY(!fixture.icons.answer(Qt::red));
    }

    void whoLeavesHearsNothing()
    {
        Fixture fixture;
        auto first = fixture.load(notes);
        const auto second = fixture.load(notes);
        first.reset();
        QVERIFY(fixture.icons.answer(Qt::red));
        QCOMPARE(fixture.answers.size(), 1);
    }

    void theQuestionIsTakenBackWhenTheLastLeaves()
    {
        Fixture fixture;
        auto first = fixture.load(notes);
        auto second = fixture.load(notes);
        first.reset();
        QCOMPARE(fixture.icons.running(), 1);
        second.reset();
        QCOMPARE(fixture.icons.running(), 0);
        const auto third = fixture.load(notes);
        QCOMPARE(fixture.icons.running(), 1);
    }

    void whatWasNotUsedForLongestMakesRoom()
    {
        Fixture fixture(2 * cost);
        fixture.fill(notes);
        fixture.fill(mail);
        QCOMPARE(fixture.cache.bytes(), 2 * cost);
        QVERIFY(fixture.cache.known(notes));
        fixture.fill(request(QStringLiteral("/Applications/Music.app")));
        QCOMPARE(fixture.cache.bytes(), 2 * cost);
        QVERIFY(fixture.cache.known(notes));
        QVERIFY(!fixture.cache.known(mail));
    }

    void anIconLargerThanTheWholeIsDeliveredAllTheSame()
    {
        Fixture fixture(cost - 1);
        fixture.fill(notes);
        QCOMPARE(fixture.answers.size(), 1);
        QCOMPARE(fixture.cache.bytes(), 0);
    }

    void holdsTwelveMebibytes() { QCOMPARE(IconCache::defaultCapacity, 12'582'912); }

    void aThemeThatChangesForgetsEverything()
    {
        Fixture fixture;
        QSignalSpy changed(&fixture.cache, &IconCache::iconsChanged);
        fixture.fill(notes);
        fixture.icons.changeTheme();
        QCOMPARE(changed.size(), 1);
        QVERIFY(!fixture.cache.known(notes));
        QCOMPARE(fixture.cache.bytes(), 0);
    }

    void whoWaitsWhileTheThemeChangesGetsTheNewIcon()
    {
        Fixture fixture;
        const auto waiting = fixture.load(notes);
        fixture.icons.changeTheme();
        QCOMPARE(fixture.icons.requested.size(), 2);
        QCOMPARE(fixture.icons.running(), 1);
        QVERIFY(fixture.icons.answer(Qt::blue));
        QCOMPARE(fixture.answers, QList<QImage>{FakeIcons::square(notes, Qt::blue)});
    }

    void whoIsToldMayAskAgainAtOnce()
    {
        Fixture fixture;
        std::unique_ptr<IconCache::Waiting> again;
        const auto waiting = fixture.cache.load(notes, [&](const QImage &) { again = fixture.load(notes); });
        QVERIFY(fixture.icons.answer(Qt::red));
        QCOMPARE(fixture.icons.running(), 1);
        QVERIFY(fixture.icons.answer(Qt::blue));
        QCOMPARE(fixture.answers, QList<QImage>{FakeIcons::square(notes, Qt::blue)});
    }

    void whoIsToldMayLetOthersGo()
    {
        Fixture fixture;
        std::unique_ptr<IconCache::Waiting> other;
        const auto waiting = fixture.cache.load(notes, [&](const QImage &) { other.reset(); });
        other = fixture.load(notes);
        QVERIFY(fixture.icons.answer(Qt::red));
        QVERIFY(fixture.answers.isEmpty());
    }

    void whoIsToldMayEndTheCache()
    {
        FakeIcons icons;
        auto cache = std::make_unique<IconCache>(icons);
        int told = 0;
        const auto first = cache->load(notes, [&](const QImage &) {
            ++told;
            cache.reset();
        });
        const auto second = cache->load(notes, [&](const QImage &) { ++told; });
        QVERIFY(icons.answer(Qt::red));
        QCOMPARE(told, 2);
    }

    void aCacheThatEndsTakesItsQuestionsBack()
    {
        FakeIcons icons;
        auto cache = std::make_unique<IconCache>(icons);
        const auto waiting = cache->load(notes, [](const QImage &) { QFAIL("nobody is there to be told"); });
        cache.reset();
        QCOMPARE(icons.running(), 0);
    }
};

MOORLINE_TEST(IconCacheTest);

} // namespace moorline::test

#include "IconCacheTest.moc"
