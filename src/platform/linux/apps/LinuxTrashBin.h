#pragma once

#include "platform/Clock.h"
#include "platform/TrashBin.h"
#include "platform/linux/desktop/MountLooks.h"
#include "platform/qt/Background.h"

#include <QHash>
#include <QList>
#include <QUrl>
#include <optional>

namespace moorline {

class AppStarter;

/// The trash of the freedesktop world, over all volumes: what the desktop's own file service counts and, where there is
/// none, or it does not answer in time, what is found in the folders themselves. A volume that hangs is as it was.
class LinuxTrashBin final : public TrashBin {
public:
    /// How long the file service may take.
    static constexpr std::chrono::seconds longestCount{3};

    /// How many things are in the trash; absent when nobody counts. It may wait for another program.
    using Count = std::function<std::optional<quint32>()>;
    /// What the bin is built on. Everything lent here outlives it.
    struct Context {
        Clock &clock;
        AppStarter &starter;
        /// Called on another thread.
        Count count;
        /// Where volumes are mounted. Waits for none of them.
        std::function<QList<QByteArray>()> volumes;
        /// The user's own trash, with "files" in it.
        QString homeTrash;
    };

    explicit LinuxTrashBin(Context context);

    void look(Looked looked) override;
    void open() override;

private:
    void begin();
    void counted(const std::optional<quint32> &count);
    void lookIntoFolders();
    void looked(const QByteArray &folder, const std::optional<bool> &isFilled);
    void tell(bool isFull);

    Context m_context;
    Background m_counting;
    MountLooks m_looks;
    /// What each folder was seen to be last; a volume that does not answer is as it was.
    QHash<QByteArray, bool> m_filled;
    /// The folders that are not looked into yet, and whether one of the others is filled.
    qsizetype m_unseen = 0;
    bool m_isAnyFilled = false;
    bool m_isCounting = false;
    /// Whether someone counts for us, who then has a place that shows all of the trash.
    bool m_isServed = false;
    /// Who waits for the look that is under way.
    QList<Looked> m_waiting;
    /// Who waits for the one after it.
    QList<Looked> m_next;
    std::unique_ptr<Clock::Timer> m_patience;
};

/// What GIO is told by the desktop's file service.
[[nodiscard]] std::optional<quint32> countOfTrash();
/// Where volumes with anybody's files are mounted now.
[[nodiscard]] QList<QByteArray> mountedVolumes();

} // namespace moorline
