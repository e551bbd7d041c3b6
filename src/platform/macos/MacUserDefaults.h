#pragma once

#include "platform/UserDefaults.h"

namespace moorline {

class MacUserDefaults final : public UserDefaults {
public:
    [[nodiscard]] QStringList stringList(const QString &key) const override;
    void setStringList(const QString &key, const QStringList &list) override;
};

} // namespace moorline
