#pragma once

#include <QLockFile>

namespace moorline {

/// Keeps two bars of one user from standing on top of each other and writing the same settings.
class SingleInstance {
public:
    /// `folder` is created where it is missing. The claim ends with this object, or with the process however it ends.
    explicit SingleInstance(const QString &folder);

    /// False when another process holds the claim. True also when it cannot be told, as in a folder that cannot be
    /// written.
    [[nodiscard]] bool isFirst() const { return m_isFirst; }

private:
    QLockFile m_lock;
    bool m_isFirst;
};

} // namespace moorline
