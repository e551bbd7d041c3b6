#pragma once

#include <QFile>
#include <QTemporaryDir>
#include <sys/wait.h>

namespace moorline::test {

/// A folder of small programs that are gone after the test.
class Programs {
public:
    /// The path of a program that runs this shell script. The script finds the folder in $home.
    [[nodiscard]] QString add(const char *name, const QByteArray &script) const
    {
        QFile file(path(name));
        if (file.open(QIODevice::WriteOnly))
            file.write("#!/bin/sh\nhome='" + QFile::encodeName(m_folder.path()) + "'\n" + script + '\n');
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        return file.fileName();
    }

    /// The path of a program that first adds its arguments, each in angle brackets, to what recorded() gives.
    [[nodiscard]] QString addRecorder(const char *name, const QByteArray &script = {}) const
    {
        return add(name,
            "for each in \"$@\"; do printf '<%s>\\n' \"$each\"; done >>\"$home/" + QByteArray(name) + ".log\"\n"
                + script);
    }

    [[nodiscard]] QString recorded(const char *name) const { return contents(QByteArray(name) + ".log"); }

    [[nodiscard]] QString path(const QByteArray &name) const { return m_folder.filePath(QString::fromUtf8(name)); }
    [[nodiscard]] bool exists(const char *name) const { return QFile::exists(path(name)); }
    [[nodiscard]] QString contents(const QByteArray &name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    }
    void write(const char *name, const QByteArray &bytes) const
    {
        QFile file(path(name));
        if (file.open(QIODevice::WriteOnly))
            file.write(bytes);
    }

    /// Whether any child of this process has yet to be waited for. Nothing is taken from whoever waits for it.
    [[nodiscard]] static bool areRunning()
    {
        siginfo_t child{};
        return ::waitid(P_ALL, 0, &child, WEXITED | WNOHANG | WNOWAIT) == 0;
    }

private:
    QTemporaryDir m_folder;
};

} // namespace moorline::test
