#pragma once

#include "platform/Pictures.h"

#include <QColor>
#include <QList>

namespace moorline::test {

/// Answers when told to. Keeps what was asked, and what is still under way.
class FakePictures final : public Pictures {
public:
    /// All but one of the first three are empty.
    struct Question {
        QString path;
        QByteArray data;
        QByteArray base64;
        int side;
    };

    ~FakePictures() override { *m_self = nullptr; }

    [[nodiscard]] std::unique_ptr<Request> read(const QString &path, int side, Completion completion) override
    {
        return ask({path, {}, {}, side}, std::move(completion));
    }
    [[nodiscard]] std::unique_ptr<Request> decode(const QByteArray &data, int side, Completion completion) override
    {
        return ask({{}, data, {}, side}, std::move(completion));
    }
    [[nodiscard]] std::unique_ptr<Request> decodeBase64(
        const QByteArray &text, int side, Completion completion) override
    {
        return ask({{}, {}, text, side}, std::move(completion));
    }

    /// Answers what was asked first and is still under way. False when there is nothing of that kind.
    bool answer(const QImage &picture)
    {
        if (m_running.isEmpty())
            return false;
        const Running first = m_running.takeFirst();
        first.completion(picture);
        return true;
    }
    bool miss() { return answer(QImage()); }

    [[nodiscard]] qsizetype running() const { return m_running.size(); }

    /// Of one colour.
    [[nodiscard]] static QImage plain(const QColor &color, const QSize &size = {138, 138})
    {
        QImage image(size, QImage::Format_ARGB32_Premultiplied);
        image.fill(color);
        return image;
    }

    /// Everything that was ever asked.
    QList<Question> requested;

private:
    struct Running {
        quint64 id;
        Completion completion;
    };
    class Handle final : public Request {
    public:
        Handle(std::shared_ptr<FakePictures *> pictures, quint64 id)
            : m_pictures(std::move(pictures))
            , m_id(id)
        {
        }
        ~Handle() override
        {
            if (*m_pictures)
                (*m_pictures)->m_running.removeIf([this](const Running &running) { return running.id == m_id; });
        }

    private:
        std::shared_ptr<FakePictures *> m_pictures;
        quint64 m_id;
    };

    std::unique_ptr<Request> ask(const Question &question, Completion completion)
    {
        requested.append(question);
        m_running.append({++m_lastId, std::move(completion)});
        return std::make_unique<Handle>(m_self, m_lastId);
    }

    /// Shared with the handles, which may outlive this.
    std::shared_ptr<FakePictures *> m_self = std::make_shared<FakePictures *>(this);
    QList<Running> m_running;
    quint64 m_lastId = 0;
};

} // namespace moorline::test
