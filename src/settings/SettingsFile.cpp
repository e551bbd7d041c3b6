#include "settings/SettingsFile.h"

#include "support/RegularFile.h"

#include <QDir>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QSaveFile>

namespace moorline {

namespace {

Q_LOGGING_CATEGORY(logFile, "moorline.settings.file", QtInfoMsg)

/// Far beyond any real settings file; what is larger is not read at all.
constexpr qint64 largestFile = qint64(8) * 1024 * 1024;

SettingsFile::Content nothingIn(SettingsFile::State state)
{
    return {state, {Settings::defaults(), {}}, QByteArray()};
}

/// A link to nothing is not there, but is in the way.
bool isFree(const QString &path)
{
    return !QFileInfo::exists(path) && !QFileInfo(path).isSymLink();
}

/// A reader finds the old file or the new one, whenever it looks.
bool writeAtOnce(const QString &path, const QByteArray &bytes)
{
    // Written beside the file, flushed to disk, and renamed over it.
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    // commit() alone does not see that a full disk took only the beginning.
    return file.write(bytes) == bytes.size() && file.flush() && file.commit();
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
    const auto bytes = regularFileContent(m_path, largestFile);
    if (bytes == knownBytes && !knownBytes.isEmpty())
        return nothingIn(State::known);
    auto document = bytes ? readSettings(*bytes) : std::nullopt;
    if (!document)
        return nothingIn(State::unreadable);
    return {State::readable, *std::move(document), *bytes};
}

SettingsFile::Stamp SettingsFile::stamp() const
{
    const QFileInfo info(m_path);
    return {info.size(), info.lastModified()};
}

bool SettingsFile::write(const QByteArray &bytes) const
{
    // It would count as damaged afterwards.
    if (bytes.size() > largestFile)
        return false;
    QDir().mkpath(QFileInfo(m_path).path());
    return writeAtOnce(m_path, bytes);
}

bool SettingsFile::keepAside() const
{
    const QString aside = freeAsidePath();
    // The file itself, not a link to it, which stays and gets a new file at its end.
    const bool isKept = QFile::rename(QFileInfo(m_path).canonicalFilePath(), aside);
    if (isKept)
        qCInfo(logFile) << "Moorline: the settings could not be read; the file is kept as" << aside;
    return isKept;
}

bool SettingsFile::keepCopy(const QByteArray &bytes) const
{
    if (hasCopy(bytes))
        return true;
    const QString aside = freeAsidePath();
    const bool isKept = writeAtOnce(aside, bytes);
    if (isKept)
        qCInfo(logFile) << "Moorline: not all of the settings could be read; the file as it was is kept as" << aside;
    return isKept;
}

QString SettingsFile::asidePath(int number) const
{
    const QString first = m_path + QStringLiteral(".damaged");
    return number == 1 ? first : first + u'.' + QString::number(number);
}

QString SettingsFile::freeAsidePath() const
{
    int number = 1;
    while (!isFree(asidePath(number)))
        ++number;
    return asidePath(number);
}

bool SettingsFile::hasCopy(const QByteArray &bytes) const
{
    for (int number = 1; !isFree(asidePath(number)); ++number) {
        if (regularFileContent(asidePath(number), largestFile) == bytes)
            return true;
    }
    return false;
}

} // namespace moorline
