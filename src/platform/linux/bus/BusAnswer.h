#pragma once

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <optional>

namespace moorline {

/// The one value that a message carries. Absent where it carries none or several, or one of another type.
template <typename T>
[[nodiscard]] std::optional<T> onlyValue(const QDBusMessage &message)
{
    const QLatin1StringView signature(QDBusMetaType::typeToSignature(QMetaType::fromType<T>()));
    const QVariantList arguments = message.arguments();
    if (arguments.size() != 1 || message.signature() != signature)
        return std::nullopt;
    return qdbus_cast<T>(arguments.constFirst());
}

/// What became of a call.
class BusAnswer final {
public:
    explicit BusAnswer(const QDBusMessage &message);
    /// One that never came.
    [[nodiscard]] static BusAnswer failure(const QString &errorName);

    [[nodiscard]] bool isError() const { return m_message.type() != QDBusMessage::ReplyMessage; }
    /// The D-Bus name of the error; empty for an answer.
    [[nodiscard]] QString errorName() const;
    [[nodiscard]] QString errorText() const { return m_message.errorMessage(); }
    /// The unique name of who answered.
    [[nodiscard]] QString sender() const { return m_message.service(); }

    /// The one value of the answer. Absent for an error, and where there is none or several, or one of another type.
    template <typename T>
    [[nodiscard]] std::optional<T> value() const
    {
        return isError() ? std::nullopt : onlyValue<T>(m_message);
    }

    /// What a property holds, for an answer of org.freedesktop.DBus.Properties.Get. Absent as above.
    template <typename T>
    [[nodiscard]] std::optional<T> property() const
    {
        const auto wrapped = value<QDBusVariant>();
        if (!wrapped || wrapped->variant().metaType() != QMetaType::fromType<T>())
            return std::nullopt;
        return wrapped->variant().value<T>();
    }

private:
    QDBusMessage m_message;
};

} // namespace moorline
