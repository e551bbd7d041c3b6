#pragma once

#include "platform/Clock.h"
#include "platform/FileWatch.h"
#include "platform/RetrySchedule.h"
#include "settings/SettingsFile.h"

#include <QObject>

namespace moorline {

class FolderLock;

/// Keeps the settings in memory and in their file the same, whoever changes either of them: another bar, an editor, the
/// user here. Nobody's change is written over: what is changed here goes on top of what is in the file by then, setting
/// by setting. A list is one setting: of two bars that change the same one before either has read the other's file, the
/// one that writes later has its list stand whole, and the other's entries are gone.
class SettingsSync final : public QObject {
    Q_OBJECT
public:
    /// What is told of the file within this time is one change.
    static constexpr std::chrono::milliseconds coalescingTime{75};
    /// For so long a file that cannot be read is taken for one that is being written, and left alone.
    static constexpr std::chrono::milliseconds patience{3000};
    /// How often such a file is looked at again.
    static constexpr std::chrono::milliseconds unreadableRetry{250};
    /// After which time a file is looked at again that another bar has its hand on. A write takes no longer; who holds
    /// on for more is asked half as often each time, down to the longest.
    static constexpr std::chrono::milliseconds lockedRetry{20};
    static constexpr std::chrono::milliseconds longestLockedRetry{2000};
    /// How often, after the moments of the schedule, a write is tried again that failed: the disk may have room again,
    /// the folder be open. Each change tries it as well, and so does the end.
    static constexpr std::chrono::seconds failedWriteRetry{600};

    /// Reads the file, and writes it where it is missing, incomplete or damaged.
    SettingsSync(QString path, Clock &clock, FileWatch &fileWatch, QObject *parent = nullptr);
    ~SettingsSync() override;

    [[nodiscard]] const Settings &settings() const { return m_settings; }
    [[nodiscard]] const QString &path() const { return m_file.path(); }
    /// Lets `edit` have the settings, saves and announces them.
    void change(const std::function<void(Settings &)> &edit);

Q_SIGNALS:
    /// The settings changed, here or in the file. They are on disk, unless that is not possible now.
    void didChange(const moorline::Settings &before);

private:
    /// A file that cannot be read, and since when it has been like this.
    struct Damage {
        SettingsFile::Stamp stamp;
        std::chrono::milliseconds since;
    };

    void lookSoon();
    void look();
    void takeOver();
    void noteDamage();
    [[nodiscard]] bool isDamaged() const;
    [[nodiscard]] bool isUnsaved() const { return m_isIncomplete || m_settings != m_onDisk; }
    void save(const FolderLock &lock);
    void saveOnceUnlocked();
    [[nodiscard]] bool isReplaceable() const;
    [[nodiscard]] bool keepWhatWouldBeLost();
    void write();

    Clock &m_clock;
    SettingsFile m_file;
    Settings m_settings = Settings::defaults();
    /// As they were when the file was last read or written.
    Settings m_onDisk = Settings::defaults();
    QByteArray m_knownBytes;
    /// Of the document then.
    QJsonObject m_members;
    /// Whether the file holds something that could not be read.
    bool m_holdsMore = false;
    SettingsFile::State m_state = SettingsFile::State::missing;
    /// Whether the file says less than could be written, or says it otherwise.
    bool m_isIncomplete = false;
    std::optional<Damage> m_damage;
    std::unique_ptr<Clock::Timer> m_coalescing;
    std::unique_ptr<Clock::Timer> m_retry;
    std::chrono::milliseconds m_nextLockedRetry = lockedRetry;
    RetrySchedule m_writeRetries;
    std::unique_ptr<FileWatch::Watch> m_watch;
};

} // namespace moorline
