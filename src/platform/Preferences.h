#pragma once

#include <QString>
#include <QVariant>
#include <memory>

namespace moorline {

/// One domain of preferences that belongs to another program, as it is at the moment of each question.
class PreferenceDomain {
public:
    virtual ~PreferenceDomain() = default;

    /// An invalid variant when the domain has no such key.
    [[nodiscard]] virtual QVariant value(const QString &key) const = 0;
};

/// Read access to the preferences of other programs, named as macOS names them ("com.apple.dock").
class Preferences {
public:
    virtual ~Preferences() = default;

    /// Null when the domain cannot be opened.
    [[nodiscard]] virtual std::unique_ptr<PreferenceDomain> open(const QString &domain) const = 0;
};

} // namespace moorline
