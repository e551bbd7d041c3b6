#include "freedesktop/LaunchRules.h"

#include <algorithm>

namespace moorline {

namespace {

/// What tells a process how itself was started.
constexpr QByteArrayView ownVariables[] = {
    "DESKTOP_STARTUP_ID=",
    "XDG_ACTIVATION_TOKEN=",
    "BAMF_DESKTOP_FILE_HINT=",
};
constexpr QByteArrayView ownFamilies[] = {"GIO_LAUNCHED_", "MOORLINE_"};

struct Terminal {
    QLatin1StringView program;
    QLatin1StringView option;
};

constexpr Terminal terminals[] = {
    {QLatin1StringView("xdg-terminal-exec"), QLatin1StringView()},
    {QLatin1StringView("x-terminal-emulator"), QLatin1StringView("-e")},
};

/// A menu fades away before what was chosen in it is done.
constexpr std::chrono::seconds longestMeaning{2};

/// More than any manager of units takes for a name, with what stands around it.
constexpr qsizetype longestId = 128;

bool startsWithAny(const QByteArray &variable, const auto &beginnings)
{
    return std::any_of(std::begin(beginnings), std::end(beginnings),
        [&](QByteArrayView beginning) { return variable.startsWith(beginning); });
}

QByteArray name(const QByteArray &variable)
{
    return variable.left(variable.indexOf('=') + 1);
}

bool isPlain(char byte)
{
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || (byte >= '0' && byte <= '9');
}

/// One word, of which nobody's parser makes two.
QByteArray plainWord(const QString &text)
{
    QByteArray word = text.toUtf8().left(longestId);
    std::replace_if(
        word.begin(), word.end(), [](char byte) { return !isPlain(byte) && byte != '.' && byte != '-'; }, '_');
    return word;
}

QByteArray field(QByteArrayView key, const QString &text)
{
    QByteArray value = text.toUtf8();
    value.replace('\0', "").replace('\\', "\\\\").replace('"', "\\\"");
    return ' ' + key.toByteArray() + "=\"" + value + '"';
}

/// As service managers have it; a dash parts the pieces of a name.
QString unitWord(const QString &text)
{
    QString word;
    const QByteArray bytes = text.toUtf8().left(longestId);
    for (const char byte : bytes) {
        if (isPlain(byte) || byte == '_' || byte == ':' || (byte == '.' && !word.isEmpty()))
            word += QLatin1Char(byte);
        else
            word += QStringLiteral("\\x%1").arg(uint(uchar(byte)), 2, 16, QLatin1Char('0'));
    }
    return word;
}

bool isNamePart(const QString &part)
{
    return !part.isEmpty() && !part.front().isDigit() && std::all_of(part.begin(), part.end(), [](QChar one) {
        return one.unicode() < 0x80 && (one.isLetterOrNumber() || one == u'_' || one == u'-');
    });
}

bool isServiceName(const QString &id)
{
    constexpr qsizetype longestName = 255;
    const QStringList parts = id.split(u'.');
    return id.size() <= longestName && parts.size() >= 2 && std::all_of(parts.begin(), parts.end(), isNamePart);
}

} // namespace

bool takesFiles(const QString &exec)
{
    for (qsizetype at = exec.indexOf(u'%'); at >= 0 && at + 1 < exec.size(); at = exec.indexOf(u'%', at + 2)) {
        if (QStringLiteral("fFuU").contains(exec[at + 1]))
            return true;
    }
    return false;
}

QList<QByteArray> launchEnvironment(const QList<QByteArray> &inherited, const QList<QByteArray> &additions)
{
    QList<QByteArray> environment;
    for (const QByteArray &variable : inherited) {
        const QByteArray key = name(variable);
        const bool isReplaced = std::any_of(
            additions.begin(), additions.end(), [&](const QByteArray &other) { return name(other) == key; });
        if (!isReplaced && !startsWithAny(variable, ownVariables) && !startsWithAny(variable, ownFamilies))
            environment.append(variable);
    }
    return environment + additions;
}

bool isStillMeant(std::chrono::milliseconds age)
{
    return age <= longestMeaning;
}

QByteArray startupId(const QString &entryId, qint64 process, quint64 number, quint32 userTime)
{
    return "moorline-" + QByteArray::number(process) + '-' + QByteArray::number(number) + '-' + plainWord(entryId)
        + "_TIME" + QByteArray::number(userTime);
}

std::optional<QString> terminalPrefix(const std::function<bool(const QString &name)> &isThere)
{
    for (const Terminal &terminal : terminals) {
        const QString program = terminal.program;
        if (isThere(program))
            return terminal.option.isEmpty() ? program : program + u' ' + terminal.option;
    }
    return std::nullopt;
}

QString withPlace(const QString &exec, const QString &path)
{
    QString quoted = path;
    quoted.replace(u'%', QLatin1StringView("%%")).replace(u'\'', QLatin1StringView("'\\''"));
    QString filled;
    for (qsizetype at = 0; at < exec.size(); ++at) {
        const QStringView code = QStringView(exec).mid(at, exec[at] == u'%' ? 2 : 1);
        filled += code == u"%k" ? QString(u'\'' + quoted + u'\'') : code.toString();
        at += code.size() - 1;
    }
    return filled;
}

QByteArray startupBegun(const EntryRecord &record, const QByteArray &startupId, int screen)
{
    QByteArray message = "new:" + field("ID", QString::fromLatin1(startupId))
        + field("NAME", record.name.value_or(record.id)) + field("SCREEN", QString::number(screen))
        + field("APPLICATION_ID", record.path);
    if (!record.icon.isEmpty())
        message += field("ICON", record.icon);
    if (!record.startupWmClass.isEmpty())
        message += field("WMCLASS", record.startupWmClass);
    return message;
}

QByteArray startupEnded(const QByteArray &startupId)
{
    return "remove:" + field("ID", QString::fromLatin1(startupId));
}

bool isStartedByBus(const EntryRecord &record)
{
    return record.dbusActivatable && isServiceName(record.id);
}

QString busPath(const QString &entryId)
{
    QString path = u'/' + entryId;
    return path.replace(u'.', u'/').replace(u'-', u'_');
}

bool isNobodyThere(const QString &errorName)
{
    const QLatin1StringView standard("org.freedesktop.DBus.Error.");
    // A service that could not be started, by the bus itself or by a service manager.
    if (errorName.startsWith(standard + QStringLiteral("Spawn.")) || errorName.startsWith(u"org.freedesktop.systemd1."))
        return true;
    const QStringList kinds{QStringLiteral("ServiceUnknown"), QStringLiteral("NameHasNoOwner"),
        QStringLiteral("UnknownMethod"), QStringLiteral("UnknownObject"), QStringLiteral("UnknownInterface"),
        QStringLiteral("Disconnected")};
    return errorName.startsWith(standard) && kinds.contains(errorName.mid(standard.size()));
}

QString scopeName(const QString &entryId, quint32 random)
{
    return QStringLiteral("app-moorline-%1-%2.scope")
        .arg(unitWord(entryId), QStringLiteral("%1").arg(random, 8, 16, QLatin1Char('0')));
}

} // namespace moorline
