#pragma once

#include "freedesktop/EntryPlaces.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace moorline::test {

/// Desktop entries in folders of their own: the user's, "home", and the system's, "system".
class EntriesOnDisk final {
public:
    [[nodiscard]] QString path(const QString &below) const { return m_root.filePath(below); }
    [[nodiscard]] QString own(const QString &id) const { return entryPath(QStringLiteral("home"), id); }
    [[nodiscard]] QString system(const QString &id) const { return entryPath(QStringLiteral("system"), id); }

    [[nodiscard]] EntryPlaces places(const QString &desktop = {}) const
    {
        return entryPlaces(
            [&](const char *name) {
                const QByteArray variable(name);
                if (variable == "XDG_DATA_HOME")
                    return path(QStringLiteral("home"));
                if (variable == "XDG_DATA_DIRS")
                    return path(QStringLiteral("system"));
                if (variable == "XDG_CONFIG_HOME")
                    return path(QStringLiteral("config"));
                return variable == "XDG_CURRENT_DESKTOP" ? desktop : QString();
            },
            path(QString()));
    }

    QString write(const QString &written, const QByteArray &content) const
    {
        QDir().mkpath(QFileInfo(written).path());
        QFile file(written);
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("cannot write %s", qPrintable(written));
        return written;
    }

    /// With a name, and whatever else is in `lines`.
    QString writeEntry(const QString &written, const QByteArray &lines) const
    {
        return write(written, "[Desktop Entry]\nType=Application\n" + lines + "\n");
    }

    QString writeProgram(const QString &written, const QByteArray &script) const
    {
        write(written, script);
        QFile::setPermissions(written, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        return written;
    }

    [[nodiscard]] QString mimeList() const { return path(QStringLiteral("config/mimeapps.list")); }

private:
    [[nodiscard]] QString entryPath(const QString &base, const QString &id) const
    {
        return path(base + QStringLiteral("/applications/") + id + QStringLiteral(".desktop"));
    }

    QTemporaryDir m_root;
};

} // namespace moorline::test
