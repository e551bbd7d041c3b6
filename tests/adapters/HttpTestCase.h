#pragma once

#include "HttpServer.h"
#include "fakes/FakeClock.h"
#include "harness/TestCase.h"
#include "platform/qt/QtHttpClient.h"

#include <QNetworkProxyFactory>
#include <QThread>

namespace moorline::test {

/// The base of tests that ask a server on this machine under virtual time.
class HttpTestCase : public TestCase {
    Q_OBJECT
protected Q_SLOTS:
    void initTestCase()
    {
        // A proxy of the machine that the tests run on is none of their business.
        QNetworkProxyFactory::setUseSystemConfiguration(false);
        QCoreApplication::setApplicationName(QStringLiteral("Moorline"));
        QCoreApplication::setApplicationVersion(QStringLiteral("1.2.3"));
    }

    void init()
    {
        TestCase::init();
        m_answers.clear();
        m_clock = std::make_unique<FakeClock>();
        m_client = std::make_unique<QtHttpClient>(*m_clock);
    }

    void cleanup()
    {
        m_request.reset();
        m_client.reset();
        TestCase::cleanup();
    }

protected:
    using Request = std::unique_ptr<HttpClient::Request>;

    /// What comes of it is appended to the answers.
    [[nodiscard]] Request get(const QUrl &url, qint64 largestBody = HttpClient::usualBody)
    {
        const auto note = [this](const HttpAnswer &answer) {
            m_cameFromMainThread = QThread::currentThread() == qApp->thread();
            m_answers.append(answer);
        };
        return m_client->get(url, note, largestBody);
    }

    /// The one answer, which must come without virtual time passing. Of an impossible status when none comes.
    [[nodiscard]] HttpAnswer answerTo(const QUrl &url, qint64 largestBody = HttpClient::usualBody)
    {
        m_answers.clear();
        m_request = get(url, largestBody);
        const bool isAnswered = QTest::qWaitFor([this] { return !m_answers.isEmpty(); }, 30'000);
        const HttpAnswer none{.failure = std::nullopt, .status = -1, .body = {}};
        return isAnswered ? m_answers.first() : none;
    }

    std::unique_ptr<FakeClock> m_clock;
    std::unique_ptr<QtHttpClient> m_client;
    Request m_request;
    QList<HttpAnswer> m_answers;
    bool m_cameFromMainThread = false;
};

} // namespace moorline::test
