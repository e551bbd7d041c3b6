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

QString XdgDirectories::downloads() const
{
    const QString home = QDir::homePath();
    const QString folder = QDir::cleanPath(QStandardPaths::writableLocation(QStandardPaths::DownloadLocation));
    // A folder of the user's that is the home itself is one that there is not.
    return folder == home || !QDir::isAbsolutePath(folder) ? home + QStringLiteral("/Downloads") : folder;
}

QString XdgDirectories::trash() const
{
    return homeTrashPath() + QStringLiteral("/files");
}

QString homeTrashPath()
{
    const QString folder = qEnvironmentVariable("XDG_DATA_HOME");
    const QString data = QDir::isAbsolutePath(folder) ? folder : QDir::homePath() + QStringLiteral("/.local/share");
    return data + QStringLiteral("/Trash");
}

QString userDefaultsPath()
{
    const QString folder = qEnvironmentVariable("XDG_STATE_HOME");
    const QString state = QDir::isAbsolutePath(folder) ? folder : QDir::homePath() + QStringLiteral("/.local/state");
    return state + QStringLiteral("/app.moorline.Moorline/defaults.json");
}

} // namespace moorline
