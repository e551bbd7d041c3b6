#pragma once

#include <QList>
#include <QString>
#include <QVariant>
#include <chrono>
#include <memory>
#include <optional>

namespace moorline {

/// Something of another program, as told to assistive programs. May be asked on any thread, one at a time; an answer
/// may take as long as the timeout.
class AccessibilityElement {
public:
    using List = QList<std::shared_ptr<AccessibilityElement>>;

    virtual ~AccessibilityElement() = default;

    /// How long each question about this element, and about those that come from it, waits at most.
    virtual void setMessagingTimeout(std::chrono::milliseconds timeout) = 0;
    /// Absent when it cannot be read, or is no list of elements.
    [[nodiscard]] virtual std::optional<List> elements(const QString &attribute) const = 0;
    /// A text, a number, a truth value or a QUrl; invalid when it cannot be read, or is of another type.
    [[nodiscard]] virtual QVariant value(const QString &attribute) const = 0;
};

/// What other programs tell to assistive programs.
class Accessibility {
public:
    virtual ~Accessibility() = default;

    /// Whether the user let this program ask. Nobody is prompted.
    [[nodiscard]] virtual bool isProcessTrusted() const = 0;
    /// The element of a program as a whole; never null. What cannot be read of it is absent. May be called on any
    /// thread.
    [[nodiscard]] virtual std::shared_ptr<AccessibilityElement> application(qint64 process) const = 0;
};

} // namespace moorline
