#pragma once

#include "platform/Icons.h"
#include "platform/linux/icons/IconThemeFolders.h"

namespace moorline {

/// From what an icon is asked of to its picture. Used on one thread only, whichever; it may wait for a disk.
class IconFinder final {
public:
    explicit IconFinder(QStringList bases = IconThemeFolders::standardBases());

    [[nodiscard]] IconThemeFolders &folders() { return m_folders; }
    /// An application or a file without an icon of its own has that of its kind, where the theme has any. Of a file,
    /// `fileIcons` are the names of its icons; nothing is read of it here.
    [[nodiscard]] QImage picture(const IconRequest &request, const QStringList &fileIcons = {});

private:
    struct Extent;

    [[nodiscard]] QImage ofApplication(const QString &path, const Extent &extent);
    [[nodiscard]] QImage firstOf(const QStringList &names, const Extent &extent);
    [[nodiscard]] QImage named(const QString &name, const Extent &extent);

    IconThemeFolders m_folders;
};

} // namespace moorline
