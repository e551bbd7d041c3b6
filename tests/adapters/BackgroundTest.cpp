#include "platform/qt/Background.h"

#include "harness/TestCase.h"

#include <QSemaphore>

namespace moorline::test {

namespace {

/// Two works, of which the first goes on when it may.
struct Works {
    explicit Works(std::unique_ptr<Background> threads)
        : background(std::move(threads))
    {
        work(QStringLiteral("first"), [this] {
            firstBegun.release();
            firstMayGoOn.acquire();
        });
        work(QStringLiteral("second"), [this] { secondBegun.release(); });
    }

    ~Works() { firstMayGoOn.release(); }
    Q_DISABLE_COPY_MOVE(Works)

    void work(const QString &name, const std::function<void()> &act)
    {
        background->run<QString>(
            [name, act] {
                act();
                return name;
            },
            [this](const QString &done) { ended.append(done); });
    }

    QSemaphore firstBegun;
    QSemaphore firstMayGoOn;
    QSemaphore secondBegun;
    QStringList ended;
    /// Ends before what its threads use.
    std::unique_ptr<Background> background;
};

/// Longer than a thread takes to begin on a busy machine.
constexpr int longMilliseconds = 10'000;
/// Nothing comes in it that should not.
constexpr int shortMilliseconds = 200;

} // namespace

class BackgroundTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void withOneThreadOneThingIsDoneAfterTheOther()
    {
        Works works(std::make_unique<Background>());
        QVERIFY(works.firstBegun.tryAcquire(1, longMilliseconds));
        QVERIFY(!works.secondBegun.tryAcquire(1, shortMilliseconds));
        works.firstMayGoOn.release();
        QTRY_COMPARE(works.ended, (QStringList{QStringLiteral("first"), QStringLiteral("second")}));
    }

    void withTwoOneThatIsStuckKeepsNobodyWaiting()
    {
        Works works(std::make_unique<Background>(2));
        QVERIFY(works.firstBegun.tryAcquire(1, longMilliseconds));
        QTRY_COMPARE(works.ended, QStringList{QStringLiteral("second")});
        works.firstMayGoOn.release();
        QTRY_COMPARE(works.ended, (QStringList{QStringLiteral("second"), QStringLiteral("first")}));
    }
};

MOORLINE_TEST(BackgroundTest);

} // namespace moorline::test

#include "BackgroundTest.moc"
