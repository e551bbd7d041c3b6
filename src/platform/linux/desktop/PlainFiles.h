#pragma once

#include "platform/Files.h"
#include "platform/linux/desktop/MountLooks.h"

namespace moorline {

class Bus;

/// Linux shows files under the names they have. What is asked of a mount that hangs is done when it goes on, and keeps
/// nothing from being done on the others.
class PlainFiles final : public Files {
public:
    /// Both outlive it.
    PlainFiles(Clock &clock, Bus &sessionBus);

    [[nodiscard]] QString displayName(const QString &path) const override;
    [[nodiscard]] bool exists(const QString &path) const override;
    void list(const QString &folder, Choose choose, Listed listed) override;
    /// To the trash of the volume it is on, by the Trash specification.
    void moveToTrash(const QUrl &file, Trashed trashed) override;
    /// For programs in a sandbox, by the document portal.
    [[nodiscard]] std::unique_ptr<DragOffer> prepareDrag(const QUrl &file) override;

private:
    Clock &m_clock;
    Bus &m_sessionBus;
    // A folder that takes long keeps nobody from the trash.
    MountLooks m_reading;
    MountLooks m_trashing;
    /// What is handed over to other programs goes with it, however long they take.
    QObject m_transfers;
};

} // namespace moorline
