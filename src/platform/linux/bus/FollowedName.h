#pragma once

#include "platform/Clock.h"
#include "platform/linux/bus/Bus.h"

#include <QCoroTask>
#include <QDBusServiceWatcher>

namespace moorline {

/// Who owns a well-known name of a bus, told as it changes. Nothing is started for it.
class FollowedName final : public QObject {
    Q_OBJECT
public:
    /// Both outlive it.
    FollowedName(Bus &bus, Clock &clock, const QString &name, QObject *parent = nullptr);

    [[nodiscard]] Bus &bus() const { return m_bus; }
    [[nodiscard]] const QString &name() const { return m_name; }
    /// The owner's unique name. Empty while there is none, while there is no bus, and until it is known.
    [[nodiscard]] const QString &owner() const { return m_owner; }

Q_SIGNALS:
    /// Either is empty for none.
    void ownerChanged(const QString &before, const QString &now);

private:
    void follow();
    QCoro::Task<> findOwner();
    void setOwner(const QString &owner);

    Bus &m_bus;
    Clock &m_clock;
    QString m_name;
    QString m_owner;
    QDBusServiceWatcher m_watcher;
    /// Grows with each piece of news: an answer to a question from before it is none.
    int m_news = 0;
};

} // namespace moorline
