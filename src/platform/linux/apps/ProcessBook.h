#pragma once

#include "freedesktop/WindowFacts.h"
#include "platform/qt/Background.h"

#include <QHash>
#include <QObject>
#include <QSet>

namespace moorline {

/// What is known of the processes behind windows. Each is read once, on another thread: a process that is stuck holds
/// up whoever reads about it, and nobody else.
class ProcessBook final : public QObject {
    Q_OBJECT
public:
    /// How many launches are remembered.
    static constexpr qsizetype maximumLaunches = 64;

    using QObject::QObject;

    /// Null until it is read.
    [[nodiscard]] const ProcessFacts *find(qint64 process);
    /// Those that have no window any more may give their number to another.
    void keepOnly(const QSet<qint64> &processes);
    /// The program was started here, for the entry at that path.
    void noteLaunch(qint64 process, const QString &path);
    /// Whatever has that number from now on was not started here.
    void noteEnd(qint64 process);

Q_SIGNALS:
    void processRead(qint64 process);

private:
    struct Launch {
        qint64 process = 0;
        QString path;
    };

    void read(qint64 process);
    void takeLaunch(ProcessFacts &facts) const;

    QHash<qint64, ProcessFacts> m_facts;
    QSet<qint64> m_awaited;
    /// The latest first.
    QList<Launch> m_launches;
    /// A process that is stuck keeps one of them.
    Background m_background{4};
};

} // namespace moorline
