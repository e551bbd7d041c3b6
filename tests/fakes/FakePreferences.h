#pragma once

#include "platform/Preferences.h"

#include <QHash>

namespace moorline::test {

/// Domains are missing until they are set.
class FakePreferences final : public Preferences {
public:
    [[nodiscard]] std::unique_ptr<PreferenceDomain> open(const QString &domain) const override
    {
        ++timesOpened;
        const auto found = domains.constFind(domain);
        return found == domains.constEnd() ? nullptr : std::make_unique<Domain>(*found);
    }

    /// The system Dock's domain with these two values.
    void setDock(const QString &orientation, bool autohide)
    {
        domains[QStringLiteral("com.apple.dock")] = {
            {QStringLiteral("orientation"), orientation}, {QStringLiteral("autohide"), autohide}};
    }

    QHash<QString, QVariantHash> domains;
    mutable int timesOpened = 0;

private:
    class Domain final : public PreferenceDomain {
    public:
        explicit Domain(QVariantHash values)
            : m_values(std::move(values))
        {
        }
        [[nodiscard]] QVariant value(const QString &key) const override { return m_values.value(key); }

    private:
        QVariantHash m_values;
    };
};

} // namespace moorline::test
