#include "platform/ArrivingDrop.h"

namespace moorline {

QString fileListFormat()
{
    return QStringLiteral("text/uri-list");
}

ArrivingDrop::ArrivingDrop(QStringList formats, std::shared_ptr<DropTransfer> transfer)
    : m_formats(std::move(formats))
    , m_transfer(std::move(transfer))
{
}

} // namespace moorline
