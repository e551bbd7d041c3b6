#pragma once

#include "platform/Clock.h"
#include "platform/UserDefaults.h"

#include <QHash>
#include <QThreadPool>

namespace moorline {

/// The program's own small state in one JSON file. It is read once, and written a moment after a change, on another
/// thread, beside the old file and in its place. A file that is no such document counts as empty.
class JsonUserDefaults final : public UserDefaults {
public:
    /// What is changed together is written together.
    static constexpr std::chrono::seconds writeDelay{1};

    /// The clock outlives it.
    JsonUserDefaults(Clock &clock, QString path);
    /// What was not written yet is written now.
    ~JsonUserDefaults() override;
    Q_DISABLE_COPY_MOVE(JsonUserDefaults)

    [[nodiscard]] QStringList stringList(const QString &key) const override;
    void setStringList(const QString &key, const QStringList &list) override;

private:
    void write();

    Clock &m_clock;
    QString m_path;
    QHash<QString, QStringList> m_lists;
    std::unique_ptr<Clock::Timer> m_delay;
    QThreadPool m_writer;
};

} // namespace moorline
