#pragma once

#include "platform/linux/glib/GObjectPointer.h"

#include <QString>
#include <optional>

namespace moorline {

/// The file of a desktop entry. May be read on any thread.
class DesktopEntryFile final {
public:
    /// Absent unless `path` is a regular file of at most 1 MiB with an entry of type Application.
    [[nodiscard]] static std::optional<DesktopEntryFile> open(const QString &path);

    [[nodiscard]] std::optional<QString> text(const char *key) const;
    /// In the user's language, as far as there is a translation.
    [[nodiscard]] std::optional<QString> localisedText(const char *key) const;

private:
    explicit DesktopEntryFile(GLibPointer<GKeyFile> keyFile);

    GLibPointer<GKeyFile> m_keyFile;
};

} // namespace moorline
