#pragma once

#include "platform/SystemFont.h"

namespace moorline::test {

/// Says nothing until it is told what to say.
class FakeSystemFont final : public SystemFont {
public:
    [[nodiscard]] QString family() const override { return m_family; }

    void setFamily(const QString &family)
    {
        m_family = family;
        Q_EMIT familyChanged();
    }

private:
    QString m_family;
};

} // namespace moorline::test
