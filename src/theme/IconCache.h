#pragma once

#include "platform/Icons.h"

#include <QCache>
#include <QList>
#include <optional>
#include <unordered_map>

namespace moorline {

/// Remembers icons up to a number of bytes, those that there are not included, and asks the system once for all who
/// wait for the same one.
class IconCache final : public QObject {
    Q_OBJECT
public:
    /// Enough for some two hundred icons of the bar at double scale and as many rows of a list.
    static constexpr qsizetype defaultCapacity = qsizetype(12) * 1024 * 1024;

    /// Waits for an icon. Destroying it ends the waiting; it may outlive the cache.
    class Waiting {
    public:
        virtual ~Waiting() = default;
    };
    using Completion = Icons::Completion;

    /// `capacity` is in bytes.
    explicit IconCache(Icons &icons, qsizetype capacity = defaultCapacity, QObject *parent = nullptr);
    ~IconCache() override;

    /// What is known of an icon, to be shown at once: absent when it has to be waited for, null when there is none.
    [[nodiscard]] std::optional<QImage> known(const IconRequest &request) const;
    /// Asks the system, which calls back once from the event loop. A theme that changes meanwhile is asked again.
    [[nodiscard]] std::unique_ptr<Waiting> load(const IconRequest &request, Completion completion);

    /// What the remembered icons take up.
    [[nodiscard]] qsizetype bytes() const { return m_images.totalCost(); }

Q_SIGNALS:
    /// What was known is forgotten: whoever shows an icon asks for it again, and keeps the old one until it comes.
    void iconsChanged();

private:
    /// Empty once it was called, or nobody waits for it any more.
    using SharedCompletion = std::shared_ptr<Completion>;
    class Waiter;
    struct Question {
        std::unique_ptr<Icons::Request> request;
        QList<SharedCompletion> waiting;
    };
    struct Hash {
        std::size_t operator()(const IconRequest &request) const { return qHash(request); }
    };

    /// Icons may look different now: none is known any more.
    void forget();
    void ask(const IconRequest &request);
    void deliver(const IconRequest &request, const QImage &icon);
    /// Drops the question when nobody waits for its answer.
    void leave(const IconRequest &request);
    Icons &m_icons;
    QCache<IconRequest, QImage> m_images;
    /// What the system was asked and has not answered.
    std::unordered_map<IconRequest, Question, Hash> m_questions;
};

} // namespace moorline
