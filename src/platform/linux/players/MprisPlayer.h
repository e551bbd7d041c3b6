#pragma once

#include "freedesktop/MprisPosition.h"
#include "freedesktop/MprisProperties.h"
#include "freedesktop/MprisReading.h"
#include "platform/Clock.h"
#include "platform/linux/bus/BusSignal.h"

#include <QCoroTask>
#include <QDBusMessage>
#include <memory>

namespace moorline {

class BusAnswer;

/// One media player on the bus, by its unique name: one that quits never comes back for a question.
class MprisPlayer final : public QObject {
    Q_OBJECT
public:
    /// How long it has to answer.
    static constexpr std::chrono::seconds answerLimit{2};

    /// Asks it at once. What is lent outlives it.
    MprisPlayer(Bus &bus, Clock &clock, const QString &owner);

    [[nodiscard]] const QString &owner() const { return m_owner; }
    /// What it said last. Absent until it says something that makes sense, and once it does not answer in time.
    [[nodiscard]] const std::optional<MprisProperties> &properties() const { return m_properties; }
    /// Of its own words; empty while it has not told.
    [[nodiscard]] MprisIdentity identity() const { return m_identity.value_or(MprisIdentity()); }
    /// Absent while it is not known.
    [[nodiscard]] const std::optional<qint64> &process() const { return m_process; }

    /// Asks again what is not known, or was said `trust` ago or longer. Nobody waits for the answer.
    void refresh(std::chrono::milliseconds trust);
    /// Where in its track it is now, in seconds; at the beginning when it does not say. Absent when it does not answer:
    /// then what it said before is no longer known either. One that did not answer is not asked for it again, but left
    /// to run on, until it tells of a change.
    [[nodiscard]] QCoro::Task<std::optional<double>> position();

    /// Nobody waits for what becomes of these. What it said before a command counts no more.
    void command(const QString &method);
    void raise() const;

Q_SIGNALS:
    /// It says something else than before, or that something changed.
    void changed();

private:
    void noteChange(const QDBusMessage &message);
    void noteSeek(const QDBusMessage &message);
    void gather(const std::optional<std::chrono::milliseconds> &wait);
    void gatherIdentity(const std::optional<std::chrono::milliseconds> &wait);
    [[nodiscard]] double corrected(double told);
    QCoro::Task<> read();
    QCoro::Task<> readIdentity();
    QCoro::Task<> findProcess();
    void take(const BusAnswer &answer, bool isSought);
    [[nodiscard]] QDBusMessage call(const QString &interface, const QString &method) const;
    [[nodiscard]] QDBusMessage question(const QString &interface) const;

    Bus &m_bus;
    Clock &m_clock;
    QString m_owner;
    std::optional<MprisProperties> m_properties;
    std::optional<MprisIdentity> m_identity;
    std::optional<qint64> m_process;
    MprisReading m_reading{MprisReading::longestGathering};
    MprisReading m_identityReading;
    MprisPosition m_position;
    /// It said that it leapt, and nobody was told since.
    bool m_isSought = false;
    std::unique_ptr<Clock::Timer> m_gathering;
    std::unique_ptr<Clock::Timer> m_gatheringIdentity;
    BusSignal m_changes;
    BusSignal m_seeks;
};

} // namespace moorline
