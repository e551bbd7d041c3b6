#include "weather/WebSession.h"

#include "fakes/FakeHttpClient.h"
#include "harness/TestCase.h"

using namespace moorline;
using namespace moorline::test;

namespace {

const QUrl first(QStringLiteral("https://example.org/first"));
const QUrl second(QStringLiteral("https://example.org/second"));

/// Gets one page after the other and notes what came.
QCoro::Task<> getBoth(std::shared_ptr<WebSession> session, QList<HttpAnswer> &answers)
{
    answers.append(co_await session->get(first));
    answers.append(co_await session->get(second));
}

} // namespace

class WebSessionTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void oneRequestFollowsTheOther()
    {
        FakeHttpClient client;
        QList<HttpAnswer> answers;
        const auto session = std::make_shared<WebSession>(client);
        [[maybe_unused]] const auto unwatched = getBoth(session, answers);
        QCOMPARE(client.requested, QList<QUrl>{first});
        QVERIFY(client.answerJson("1"));
        QCOMPARE(client.requested, (QList<QUrl>{first, second}));
        QVERIFY(client.answerJson("2"));
        QCOMPARE(answers, (QList<HttpAnswer>{FakeHttpClient::json("1"), FakeHttpClient::json("2")}));
        QCOMPARE(client.mostAtOnce, 1);
    }

    void cancellingEndsWhatIsUnderWayAndWhatFollows()
    {
        FakeHttpClient client;
        QList<HttpAnswer> answers;
        const auto session = std::make_shared<WebSession>(client);
        [[maybe_unused]] const auto unwatched = getBoth(session, answers);
        session->cancel();
        QCOMPARE(client.running(), 0);
        QCOMPARE(client.requested, QList<QUrl>{first});
        QCOMPARE(answers.size(), 2);
        QVERIFY(answers[0].failure && answers[1].failure);
    }

    void cancellingTwiceOrWithoutARequestDoesNothing()
    {
        FakeHttpClient client;
        WebSession session(client);
        session.cancel();
        session.cancel();
        QVERIFY(session.isCancelled());
        QVERIFY(client.requested.isEmpty());
    }

    void whoWaitsMayLetGoOfTheSession()
    {
        FakeHttpClient client;
        QList<HttpAnswer> answers;
        auto session = std::make_shared<WebSession>(client);
        WebSession *lent = session.get();
        [[maybe_unused]] const auto unwatched = getBoth(std::move(session), answers);
        lent->cancel();
        QCOMPARE(answers.size(), 2);
    }
};

MOORLINE_TEST(WebSessionTest);

#include "WebSessionTest.moc"
