#pragma once

#include <QString>
#include <QStringList>

namespace moorline {

/// Small state of the program's own that is no choice of the user. Kept across restarts.
class UserDefaults {
public:
    virtual ~UserDefaults() = default;

    /// Empty when nothing is kept under the key, or something else than a list of texts.
    [[nodiscard]] virtual QStringList stringList(const QString &key) const = 0;
    /// Kept at once for questions; on disk soon after. A failure to write is not told.
    virtual void setStringList(const QString &key, const QStringList &list) = 0;
};

} // namespace moorline
