#pragma once

#include "platform/HttpClient.h"

#include <QList>
#include <QUrl>
#include <algorithm>

namespace moorline::test {

/// Answers when told to. Keeps what was asked, and what is still under way.
class FakeHttpClient final : public HttpClient {
public:
    ~FakeHttpClient() override { *m_self = nullptr; }

    [[nodiscard]] std::unique_ptr<Request> get(
        const QUrl &url, Completion completion, qint64 largestBody = usualBody) override
    {
        requested.append(url);
        largestBodies.append(largestBody);
        m_running.append({++m_lastId, url, std::move(completion)});
        mostAtOnce = std::max(mostAtOnce, m_running.size());
        return std::make_unique<Handle>(m_self, m_lastId);
    }

    /// Answers what was asked first and is still under way. False when there is nothing of that kind.
    bool answer(const HttpAnswer &answer)
    {
        if (m_running.isEmpty())
            return false;
        const Running first = m_running.takeFirst();
        first.completion(answer);
        return true;
    }

    bool answerJson(const QByteArray &body) { return answer(json(body)); }
    bool fail(const QString &reason = QStringLiteral("The Internet connection appears to be offline."))
    {
        return answer({reason, 0, {}});
    }

    [[nodiscard]] static HttpAnswer json(const QByteArray &body) { return {std::nullopt, 200, body}; }

    [[nodiscard]] qsizetype running() const { return m_running.size(); }
    /// Of what is to be answered next; empty when nothing is under way.
    [[nodiscard]] QUrl next() const { return m_running.isEmpty() ? QUrl() : m_running.first().url; }

    /// Everything that was ever asked.
    QList<QUrl> requested;
    /// How large the answer to each may be.
    QList<qint64> largestBodies;
    qsizetype mostAtOnce = 0;

private:
    struct Running {
        quint64 id;
        QUrl url;
        Completion completion;
    };
    class Handle final : public Request {
    public:
        Handle(std::shared_ptr<FakeHttpClient *> client, quint64 id)
            : m_client(std::move(client))
            , m_id(id)
        {
        }
        ~Handle() override
        {
            if (*m_client)
                (*m_client)->m_running.removeIf([this](const Running &running) { return running.id == m_id; });
        }

    private:
        std::shared_ptr<FakeHttpClient *> m_client;
        quint64 m_id;
    };

    /// Shared with the handles, which may outlive the client.
    std::shared_ptr<FakeHttpClient *> m_self = std::make_shared<FakeHttpClient *>(this);
    QList<Running> m_running;
    quint64 m_lastId = 0;
};

} // namespace moorline::test
