#include "system/AppleScriptText.h"

namespace moorline {

QString appleScriptText(QString text)
{
    text.replace(QStringLiteral("\\"), QStringLiteral("\\\\"));
    text.replace(QStringLiteral("\""), QStringLiteral("\\\""));
    return u'"' + text + u'"';
}

} // namespace moorline
