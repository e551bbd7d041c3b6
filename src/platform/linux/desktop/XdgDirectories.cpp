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

QString userDefaultsPath()
{
    const QString folder = qEnvironmentVariable("XDG_STATE_HOME");
    const QString state = QDir::isAbsolutePath(folder) ? folder : QDir::homePath() + QStringLiteral("/.local/state");
    return state + QStringLiteral("/app.moorline.Moorline/defaults.json");
}

} // namespace moorline
