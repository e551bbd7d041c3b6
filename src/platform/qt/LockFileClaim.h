#pragma once

#include "platform/InstanceClaim.h"

#include <QLockFile>

namespace moorline {

/// For systems where a user has one display: a lock in the user's own folder.
class LockFileClaim final : public InstanceClaim {
public:
    /// `folder` is created where it is missing.
    explicit LockFileClaim(const QString &folder);

    [[nodiscard]] bool take() override;

private:
    QLockFile m_lock;
};

} // namespace moorline
