#include "platform/linux/desktop/XdgDirectories.h"

#include <QDir>
#include <QStandardPaths>

namespace moorline {

QString XdgDirectories::applicationSupport() const
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    // The base directory rules have a relative XDG_CONFIG_HOME ignored; Qt hands it on as it is.
    return QDir::isAbsolutePath(folder) ? folder : QDir::homePath() + QStringLiteral("/.config");
}

} // namespace moorline
