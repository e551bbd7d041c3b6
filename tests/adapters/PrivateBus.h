#pragma once

#include "support/FileDescriptor.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <sys/socket.h>
#include <sys/un.h>

namespace moorline::test {

/// A place for a bus that the test alone starts and ends, as often as it likes, at one address. It
/// starts nobody but what is in a folder of services that the test gives it.
class PrivateBus final {
public:
    ~PrivateBus() { end(); }

    [[nodiscard]] QByteArray address() const { return "unix:path=" + path(); }

    [[nodiscard]] bool start()
    {
        writeConfiguration();
        m_daemon.start(QStringLiteral("dbus-daemon"),
            {QStringLiteral("--config-file=") + configuration(), QStringLiteral("--nofork"),
                QStringLiteral("--nopidfile"), QStringLiteral("--print-address"),
                QStringLiteral("--address=") + QString::fromLocal8Bit(address())});
        return m_daemon.waitForReadyRead(10'000);
    }

    /// As a bus ends that is killed.
    void end()
    {
        if (m_daemon.state() == QProcess::NotRunning)
            return;
        m_daemon.kill();
        m_daemon.waitForFinished();
        QFile::remove(QString::fromLocal8Bit(path()));
    }

    /// A socket at that place, on which everybody can connect and nobody answers.
    [[nodiscard]] FileDescriptor startSilent() const
    {
        FileDescriptor descriptor(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
        sockaddr_un name{};
        name.sun_family = AF_UNIX;
        qstrncpy(name.sun_path, path().constData(), sizeof name.sun_path);
        if (bind(descriptor.get(), reinterpret_cast<sockaddr *>(&name), sizeof name) != 0
            || listen(descriptor.get(), 1) != 0)
            descriptor.close();
        return descriptor;
    }

    /// From the next start on.
    void setServices(const QString &folder) { m_services = folder; }

private:
    void writeConfiguration() const
    {
        QFile common(QStringLiteral(BUS_CONFIGURATION));
        QFile own(configuration());
        if (!common.open(QIODevice::ReadOnly) || !own.open(QIODevice::WriteOnly))
            qFatal("no configuration for a bus");
        QByteArray text = common.readAll();
        if (!m_services.isEmpty())
            text.replace("</busconfig>", "<servicedir>" + m_services.toLocal8Bit() + "</servicedir></busconfig>");
        own.write(text);
    }
    [[nodiscard]] QString configuration() const { return m_folder.filePath(QStringLiteral("bus.conf")); }
    [[nodiscard]] QByteArray path() const { return m_folder.filePath(QStringLiteral("bus")).toLocal8Bit(); }

    QTemporaryDir m_folder;
    QString m_services;
    QProcess m_daemon;
};

} // namespace moorline::test
