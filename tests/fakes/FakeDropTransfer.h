#pragma once

#include "platform/ArrivingDrop.h"

#include <utility>

namespace moorline::test {

/// What another program lets go, and how it fares.
struct LetGo {
    /// The formats that were asked for.
    QStringList read;
    /// What the program was told, of each transfer in turn.
    QList<Qt::DropAction> answers;
};

/// Data that arrive when the test says so.
class FakeDropTransfer final : public DropTransfer {
public:
    explicit FakeDropTransfer(LetGo &letGo)
        : m_letGo(letGo)
    {
    }
    ~FakeDropTransfer() override { finish(Qt::IgnoreAction); }

    void arrive(const std::optional<QByteArray> &data) { std::exchange(m_received, nullptr)(data); }

    void read(const QString &format, Received received) override
    {
        m_letGo.read.append(format);
        m_received = std::move(received);
    }
    void finish(Qt::DropAction action) override
    {
        if (!std::exchange(m_isFinished, true))
            m_letGo.answers.append(action);
    }

private:
    LetGo &m_letGo;
    Received m_received;
    bool m_isFinished = false;
};

} // namespace moorline::test
