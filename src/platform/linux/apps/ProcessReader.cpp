#include "platform/linux/apps/ProcessReader.h"

#include "support/RegularFile.h"

#include <QFile>
#include <QRegularExpression>

namespace moorline {

namespace {

// Enough for any command line and environment but those made to be long.
constexpr qint64 largestText = qint64(128) * 1024;
constexpr qint64 largestDescription = qint64(16) * 1024;

QString placeOf(qint64 process, const char *name)
{
    return QStringLiteral("/proc/%1/%2").arg(process).arg(QLatin1StringView(name));
}

QByteArray textOf(qint64 process, const char *name)
{
    QFile file(placeOf(process, name));
    return file.open(QIODevice::ReadOnly) ? file.read(largestText) : QByteArray();
}

QStringList commandOf(qint64 process)
{
    QStringList words;
    QByteArray text = textOf(process, "cmdline");
    if (text.endsWith('\0'))
        text.chop(1);
    if (text.isEmpty())
        return words;
    const QList<QByteArray> parts = text.split('\0');
    for (const QByteArray &part : parts)
        words.append(QString::fromLocal8Bit(part));
    return words;
}

QString executableOf(qint64 process)
{
    const QString gone = QStringLiteral(" (deleted)");
    QString path = QFile::symLinkTarget(placeOf(process, "exe"));
    // Another version was installed since.
    if (path.endsWith(gone))
        path.chop(gone.size());
    return path;
}

/// The second field holds the name, which may have spaces and brackets in it.
std::optional<qint64> parentOf(qint64 process)
{
    const QByteArray status = textOf(process, "stat");
    const QList<QByteArray> fields = status.mid(status.lastIndexOf(')') + 2).split(' ');
    bool isNumber = false;
    const qint64 parent = fields.value(1).toLongLong(&isNumber);
    return isNumber && parent > 0 ? std::optional(parent) : std::nullopt;
}

void readEnvironment(ProcessFacts &facts)
{
    const QList<QByteArray> variables = textOf(facts.process, "environ").split('\0');
    for (const QByteArray &variable : variables) {
        const qsizetype equals = variable.indexOf('=');
        const QByteArray name = variable.left(equals);
        const QByteArray value = variable.mid(equals + 1);
        if (name == "BAMF_DESKTOP_FILE_HINT")
            facts.hintedEntry = QString::fromLocal8Bit(value);
        else if (name == "GIO_LAUNCHED_DESKTOP_FILE")
            facts.launchedEntry = QString::fromLocal8Bit(value);
        else if (name == "GIO_LAUNCHED_DESKTOP_FILE_PID")
            facts.launchedProcess = value.toLongLong();
    }
}

/// The file is put there by the sandbox itself, and is not the program's to write.
QString flatpakOf(qint64 process)
{
    const auto description = regularFileContent(placeOf(process, "root/.flatpak-info"), largestDescription);
    static const QRegularExpression name(QStringLiteral("^name=(\\S+)$"), QRegularExpression::MultilineOption);
    return description ? name.match(QString::fromUtf8(*description)).captured(1) : QString();
}

QString snapOf(qint64 process)
{
    static const QRegularExpression scope(QStringLiteral("/snap\\.([a-z0-9_-]+)\\.[^/\\n]+\\.(scope|service)"));
    return scope.match(QString::fromUtf8(textOf(process, "cgroup"))).captured(1);
}

} // namespace

ProcessFacts readProcess(qint64 process)
{
    ProcessFacts facts{.process = process,
        .parent = parentOf(process),
        .executable = executableOf(process),
        .command = commandOf(process),
        .flatpakId = flatpakOf(process),
        .snapName = snapOf(process)};
    readEnvironment(facts);
    if (facts.parent)
        facts.parentCommand = commandOf(*facts.parent);
    return facts;
}

} // namespace moorline
