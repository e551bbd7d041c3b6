#pragma once

#include "settings/SettingsCoding.h"

#include <QDateTime>

namespace moorline {

/// The file that the settings are kept in, or the place where it would be.
class SettingsFile final {
public:
    enum class State {
        /// It holds just what it is known to hold.
        known,
        readable,
        missing,
        /// A file that holds no settings: cut off, no JSON, larger than any settings are, or closed to this user.
        unreadable,
        /// A folder, a pipe or a device stands in its place.
        blocked,
    };
    struct Content {
        State state;
        /// Of a readable file; otherwise the defaults.
        SettingsDocument document;
        /// Of a readable file.
        QByteArray bytes;
    };
    /// Tells one unreadable file from another.
    struct Stamp {
        qint64 size = 0;
        QDateTime modified;

        bool operator==(const Stamp &) const = default;
    };

    explicit SettingsFile(QString path);

    [[nodiscard]] const QString &path() const { return m_path; }
    [[nodiscard]] Content read(const QByteArray &knownBytes) const;
    [[nodiscard]] Stamp stamp() const;

    /// Writes the file and the folders above it. A reader finds the old file or the new one, whenever it looks.
    [[nodiscard]] bool write(const QByteArray &bytes) const;
    /// Moves the file to "settings.json.damaged", or to the first of "settings.json.damaged.2",
    /// "settings.json.damaged.3" and so on that is free. False when it could not be moved.
    [[nodiscard]] bool keepAside() const;
    /// Writes what the file held to the first of these names that is free, or already holds the same. False when it
    /// could not be written.
    [[nodiscard]] bool keepCopy(const QByteArray &bytes) const;

private:
    [[nodiscard]] QString asidePath(int number) const;
    [[nodiscard]] QString freeAsidePath() const;
    [[nodiscard]] bool hasCopy(const QByteArray &bytes) const;

    QString m_path;
};

} // namespace moorline
