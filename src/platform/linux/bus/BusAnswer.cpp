#include "platform/linux/bus/BusAnswer.h"

namespace moorline {

BusAnswer::BusAnswer(QDBusMessage message)
    : m_message(std::move(message))
{
}

BusAnswer BusAnswer::failure(const QString &errorName)
{
    return BusAnswer(QDBusMessage::createError(errorName, {}));
}

QString BusAnswer::errorName() const
{
    return isError() ? m_message.errorName() : QString();
}

} // namespace moorline
