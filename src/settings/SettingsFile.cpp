#include "settings/SettingsFile.h"

#include "settings/SettingsCoding.h"

#include <QDir>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QSaveFile>

namespace moorline {

namespace {

Q_LOGGING_CATEGORY(logFile, "moorline.settings.file", QtInfoMsg)

/// Far beyond any real settings file; what is larger is not read at all.
constexpr qint64 largestFile = qint64(8) * 1024 * 1024;

std::optional<QByteArray> contents(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() > largestFile)
        return std::nullopt;
    return file.read(largestFile);
}

SettingsFile::Content nothingIn(SettingsFile::State state)
{
    return {state, Settings::defaults(), QByteArray()};
}

QString freeName(const QString &path)
{
    QString name = path;
    // A link to nothing is not there, but is in the way.
    for (int number = 2; QFileInfo::exists(name) || QFileInfo(name).isSymLink(); ++number)
        name = path + u'.' + QString::number(number);
    return name;
}

} // namespace

SettingsFile::SettingsFile(QString path)
    : m_path(std::move(path))
{
}

SettingsFile::Content SettingsFile::read(const QByteArray &knownBytes) const
{
    const QFileInfo info(m_path);
    if (!info.exists())
        return nothingIn(State::missing);
    // A pipe or a device could be read for ever.
    if (!info.isFile())
        return nothingIn(State::blocked);
    const auto bytes = contents(m_path);
    if (bytes == knownBytes && !knownBytes.isEmpty())
        return nothingIn(State::known);
    auto settings = bytes ? decodeSettings(*bytes) : std::nullopt;
    if (!settings)
        return nothingIn(State::unreadable);
    return {State::readable, *std::move(settings), *bytes};
}

SettingsFile::Stamp SettingsFile::stamp() const
{
    const QFileInfo info(m_path);
    return {info.size(), info.lastModified()};
}

bool SettingsFile::write(const QByteArray &bytes) const
{
    QDir().mkpath(QFileInfo(m_path).path());
    // Written beside the file, flushed to disk, and renamed over it.
    QSaveFile file(m_path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    // commit() alone does not see that a full disk took only the beginning.
    return file.write(bytes) == bytes.size() && file.flush() && file.commit();
}

bool SettingsFile::keepAside() const
{
    const QString aside = freeName(m_path + QStringLiteral(".damaged"));
    // The file itself, not a link to it, which stays and gets a new file at its end.
    const bool isKept = QFile::rename(QFileInfo(m_path).canonicalFilePath(), aside);
    if (isKept)
        qCInfo(logFile) << "Moorline: the settings could not be read; the file is kept as" << aside;
    return isKept;
}

} // namespace moorline
