#pragma once

#include "harness/TestCase.h"
#include "platform/linux/desktop/MountLooks.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <csignal>

namespace moorline::test {

/// A volume of its own, made of a folder by bindfs. It can be told to hang, as a network does.
class SecondVolume final {
public:
    explicit SecondVolume(const QStringList &options = {})
    {
        QDir().mkpath(source());
        QDir().mkpath(path());
        m_server.start(QStringLiteral("bindfs"), options + QStringList{QStringLiteral("-f"), source(), path()});
        if (!QTest::qWaitFor([this] { return isMounted(); }, 10'000))
            qFatal("bindfs mounts nothing");
    }
    SecondVolume(const SecondVolume &) = delete;
    SecondVolume &operator=(const SecondVolume &) = delete;
    ~SecondVolume()
    {
        goOn();
        m_server.terminate();
        if (!m_server.waitForFinished())
            qWarning("bindfs stays");
        // Somebody may be looking still.
        if (isMounted())
            QProcess::execute(QStringLiteral("fusermount"), {QStringLiteral("-uz"), path()});
    }

    [[nodiscard]] QString path() const { return m_root.filePath(QStringLiteral("volume")); }
    /// What is in it, without the volume.
    [[nodiscard]] QString source() const { return m_root.filePath(QStringLiteral("source")); }
    [[nodiscard]] QByteArray bytes() const { return QFile::encodeName(path()); }

    void hang() const { kill(pid_t(m_server.processId()), SIGSTOP); }
    void goOn() const { kill(pid_t(m_server.processId()), SIGCONT); }

private:
    [[nodiscard]] bool isMounted() const { return MountLooks::kernelMounts().at(bytes()).point == bytes(); }

    QTemporaryDir m_root;
    QProcess m_server;
};

} // namespace moorline::test
