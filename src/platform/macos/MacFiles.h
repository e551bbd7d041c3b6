#pragma once

#include "platform/Files.h"

namespace moorline {

class MacFiles final : public Files {
public:
    [[nodiscard]] QString displayName(const QString &path) const override;
    [[nodiscard]] bool exists(const QString &path) const override;
};

} // namespace moorline
