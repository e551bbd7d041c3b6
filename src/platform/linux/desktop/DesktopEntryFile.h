#pragma once

#include "platform/linux/glib/GObjectPointer.h"

#include <QStringList>
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
    /// Empty where there is none.
    [[nodiscard]] QStringList texts(const char *key) const;
    [[nodiscard]] bool flag(const char *key) const;
    /// In the user's language, the name of one of the further things that it offers. Absent where there is no such.
    [[nodiscard]] std::optional<QString> actionName(const QString &action) const;

    /// All there is, to be changed by whoever starts it.
    [[nodiscard]] GKeyFile *keyFile() const { return m_keyFile.get(); }

private:
    explicit DesktopEntryFile(GLibPointer<GKeyFile> keyFile);

    GLibPointer<GKeyFile> m_keyFile;
};

} // namespace moorline
