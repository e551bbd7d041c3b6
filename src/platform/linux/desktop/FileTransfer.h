#pragma once

#include "platform/Clock.h"

#include <QCoroTask>
#include <QDBusUnixFileDescriptor>
#include <QHash>
#include <QObject>

namespace moorline {

class Bus;

/// A file that the document portal keeps ready for a program in a sandbox, which gets at it by a key. The source of the
/// facts is the documentation of org.freedesktop.portal.FileTransfer, version 1. Without such a portal it never gets
/// ready.
class FileTransfer final : public QObject {
    Q_OBJECT
public:
    /// It goes with `owner`, which all that is asked of the portal is asked for. The others outlive that.
    FileTransfer(Bus &sessionBus, Clock &clock, QObject &owner);
    /// The key counts no longer.
    ~FileTransfer() override;

    /// Opens a file so that the portal takes it. Invalid for what is not a regular file: it takes no folders. It may
    /// wait for a disk.
    [[nodiscard]] static QDBusUnixFileDescriptor open(const QByteArray &path);
    /// Hands over the file. Called once.
    void begin(const QDBusUnixFileDescriptor &file);

    /// The key, by MIME type. Empty until the portal has the file.
    [[nodiscard]] QHash<QString, QByteArray> formats() const;

private:
    QCoro::Task<> handOver(QDBusUnixFileDescriptor file);

    Bus &m_bus;
    Clock &m_clock;
    QObject &m_owner;
    /// Empty until the portal gave one.
    QString m_key;
    bool m_isReady = false;
};

} // namespace moorline
