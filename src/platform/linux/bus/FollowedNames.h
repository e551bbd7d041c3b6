#pragma once

#include "platform/Clock.h"
#include "platform/linux/bus/Bus.h"

#include <QCoroTask>
#include <QDBusServiceWatcher>
#include <QMap>

namespace moorline {

/// Who owns the well-known names of a bus that begin alike, told as it changes. Nothing is started for it, and no other
/// name wakes it.
class FollowedNames final : public QObject {
    Q_OBJECT
public:
    /// `beginning` is whole parts of a name: with "org.example" all that begin with "org.example." are followed. What
    /// is lent outlives it.
    FollowedNames(Bus &bus, Clock &clock, const QString &beginning);

    /// Unique names by well-known ones. Empty while there is no bus, and until they are known.
    [[nodiscard]] const QMap<QString, QString> &owners() const { return m_owners; }

Q_SIGNALS:
    void ownersChanged();

private:
    void follow();
    QCoro::Task<> findOwners();
    void note(const QString &name, const QString &owner);
    void setOwner(const QString &name, const QString &owner);

    Bus &m_bus;
    Clock &m_clock;
    QString m_beginning;
    QMap<QString, QString> m_owners;
    QDBusServiceWatcher m_watcher;
    /// Grows with each bus: an answer of the one before is none.
    int m_generation = 0;
};

} // namespace moorline
