#pragma once

#include <QHash>
#include <QStringList>

namespace moorline {

/// What one mimeapps.list says of one type: desktop file ids, with ".desktop", in its order.
struct MimeChoice {
    QStringList defaults = {};
    QStringList added = {};
    QStringList removed = {};

    bool operator==(const MimeChoice &) const = default;
};

/// What each of these files says, the one that counts most first.
class MimeDefaults final {
public:
    void append(const QString &mimeType, const MimeChoice &choice) { m_choices[mimeType].append(choice); }

    /// Which entries to try for a type, best first, by their ids with ".desktop": those that were chosen, then those
    /// that were added, then `declared`, which say themselves that they open it. Those that were taken away by a file
    /// are not among what files below it add, nor among the declared.
    [[nodiscard]] QStringList candidates(const QString &mimeType, const QStringList &declared) const;

    bool operator==(const MimeDefaults &) const = default;

private:
    QHash<QString, QList<MimeChoice>> m_choices;
};

} // namespace moorline
