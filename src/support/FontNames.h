#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

namespace moorline {

/// The family in a font's description as GTK and GNOME write it, such as "Noto Sans Bold 10": without style and size,
/// and of several families the first. Empty where there is none.
[[nodiscard]] QString familyInDescription(const QString &description);

/// The family of the general font in KDE's file of settings; absent where the file has none.
[[nodiscard]] std::optional<QString> familyInKdeSettings(const QByteArray &kdeglobals);

} // namespace moorline
