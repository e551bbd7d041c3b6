#pragma once

#include "platform/linux/desktop/MountLooks.h"
#include "support/FileDescriptor.h"

#include <QHash>
#include <QSet>
#include <QSocketNotifier>
#include <QStringList>

namespace moorline {

/// Which icons stand for files, by their kind. What was asked for is followed from then on: that a file went, came, or
/// came back with its disk. There is one watch for each folder that files were asked of.
class FileKinds final : public QObject {
    Q_OBJECT
public:
    /// More than a bar shows.
    static constexpr qsizetype mostFollowed = 4096;
    /// Programs do much to a folder at once.
    static constexpr std::chrono::seconds pauseBetweenNews{1};

    /// Names of icons, from the most to the least special. None where there is no file, or its disk does not answer.
    using Answer = std::function<void(const QStringList &names)>;

    explicit FileKinds(Clock &clock, MountLooks::Table mounts = MountLooks::kernelMounts);

    /// `answer` is called once, from the event loop; not when this is gone by then.
    void find(const QString &path, Answer answer);

Q_SIGNALS:
    /// What was asked for may be of another kind now.
    void changed();

private:
    struct Found {
        QStringList names;
        /// What is watched in place of the file: a name in a folder. Negative where nothing can be.
        int folder = -1;
        QByteArray name;
    };

    [[nodiscard]] static Found look(int events, const QByteArray &path);
    void follow(const Found &found);
    void listen();
    void readEvents();
    void startAnew();
    void note();

    Clock &m_clock;
    MountLooks m_looks;
    /// Kept open by the looks that are under way.
    std::shared_ptr<FileDescriptor> m_events;
    std::unique_ptr<QSocketNotifier> m_notifier;
    FileDescriptor m_mountTable;
    std::unique_ptr<QSocketNotifier> m_mountNotifier;
    /// What is followed in each folder.
    QHash<int, QSet<QByteArray>> m_followed;
    qsizetype m_count = 0;
    std::unique_ptr<Clock::Timer> m_pause;
};

/// The names of the icons that the desktop has for the kind of a file. None when it is gone. It may wait for a disk.
[[nodiscard]] QStringList iconNamesOfFile(const QByteArray &path);

} // namespace moorline
