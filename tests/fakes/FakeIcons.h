#pragma once

#include "platform/Icons.h"

#include <QColor>
#include <QList>

namespace moorline::test {

/// Answers when told to. Keeps what was asked, and what is still under way.
class FakeIcons final : public Icons {
public:
    ~FakeIcons() override { *m_self = nullptr; }

    [[nodiscard]] std::unique_ptr<Request> load(const IconRequest &request, Completion completion) override
    {
        requested.append(request);
        m_running.append({++m_lastId, request, std::move(completion)});
        return std::make_unique<Handle>(m_self, m_lastId);
    }

    /// Answers what was asked first and is still under way. False when there is nothing of that kind.
    bool answer(const QImage &icon)
    {
        if (m_running.isEmpty())
            return false;
        const Running first = m_running.takeFirst();
        first.completion(icon);
        return true;
    }
    /// Answers with a filled square, as the system would.
    bool answer(const QColor &color)
    {
        return !m_running.isEmpty() && answer(square(m_running.first().request, color));
    }
    bool miss() { return answer(QImage()); }

    /// Every icon looks different from now on.
    void changeTheme() { Q_EMIT themeChanged(); }

    [[nodiscard]] qsizetype running() const { return m_running.size(); }

    [[nodiscard]] static QImage square(const IconRequest &request, const QColor &color)
    {
        const int side = qRound(request.size * request.scale);
        QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(request.scale);
        image.fill(color);
        return image;
    }

    /// Everything that was ever asked.
    QList<IconRequest> requested;

private:
    struct Running {
        quint64 id;
        IconRequest request;
        Completion completion;
    };
    class Handle final : public Request {
    public:
        Handle(std::shared_ptr<FakeIcons *> icons, quint64 id)
            : m_icons(std::move(icons))
            , m_id(id)
        {
        }
        ~Handle() override
        {
            if (*m_icons)
                (*m_icons)->m_running.removeIf([this](const Running &running) { return running.id == m_id; });
        }

    private:
        std::shared_ptr<FakeIcons *> m_icons;
        quint64 m_id;
    };

    /// Shared with the handles, which may outlive this.
    std::shared_ptr<FakeIcons *> m_self = std::make_shared<FakeIcons *>(this);
    QList<Running> m_running;
    quint64 m_lastId = 0;
};

} // namespace moorline::test
