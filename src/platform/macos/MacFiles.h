#pragma once

#include "platform/Files.h"
#include "platform/qt/Background.h"

namespace moorline {

class MacFiles final : public Files {
public:
    [[nodiscard]] QString displayName(const QString &path) const override;
    [[nodiscard]] bool exists(const QString &path) const override;
    /// The system asks the user whether the program may read the folder, where it has not yet.
    void list(const QString &folder, Choose choose, Listed listed) override;
    void moveToTrash(const QUrl &file, Trashed trashed) override;
    /// The pasteboard lets a sandboxed program at the file that it is given the URL of.
    [[nodiscard]] std::unique_ptr<DragOffer> prepareDrag(const QUrl &file) override;

private:
    // A folder that takes long keeps nobody from the trash.
    Background m_reading;
    Background m_trashing;
};

} // namespace moorline
