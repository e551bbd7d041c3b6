#pragma once

#include "platform/Files.h"
#include "platform/qt/Background.h"

namespace moorline {

/// Linux shows files under the names they have.
class PlainFiles final : public Files {
public:
    [[nodiscard]] QString displayName(const QString &path) const override;
    [[nodiscard]] bool exists(const QString &path) const override;
    void list(const QString &folder, Choose choose, Listed listed) override;
    /// To the trash of the volume it is on, by the Trash specification.
    void moveToTrash(const QUrl &file, Trashed trashed) override;

private:
    // A folder that takes long keeps nobody from the trash.
    Background m_reading;
    Background m_trashing;
};

} // namespace moorline
