#include "platform/linux/apps/EntryReader.h"

#include "platform/linux/desktop/DesktopEntryFile.h"

#include <QFile>

namespace moorline {

namespace {

/// What is longer is no name for anybody to read, and no command that any system takes.
constexpr qsizetype longestName = 512;
constexpr qsizetype longestCommand = qsizetype(64) * 1024;
constexpr qsizetype mostOfAList = 64;

std::optional<QString> shortened(const std::optional<QString> &name)
{
    return name ? std::optional(name->left(longestName)) : std::nullopt;
}

QString command(const DesktopEntryFile &file, const char *key)
{
    const QString text = file.text(key).value_or(QString());
    return text.size() <= longestCommand ? text : QString();
}

QString name(const DesktopEntryFile &file, const char *key)
{
    return file.text(key).value_or(QString()).left(longestName);
}

QStringList names(const DesktopEntryFile &file, const char *key)
{
    return file.texts(key).mid(0, mostOfAList);
}

bool isInstalled(const QString &program)
{
    if (program.isEmpty())
        return true;
    return GLibPointer<gchar>(g_find_program_in_path(QFile::encodeName(program).constData())) != nullptr;
}

QList<EntryAction> actions(const DesktopEntryFile &file)
{
    QList<EntryAction> actions;
    const QStringList ids = names(file, G_KEY_FILE_DESKTOP_KEY_ACTIONS);
    for (const QString &id : ids) {
        if (const auto title = shortened(file.actionName(id)))
            actions.append({.id = id, .name = *title});
    }
    return actions;
}

QStringList asked(const QStringList &mimeTypes)
{
    QStringList types;
    for (const QString &type : askedMimeTypes()) {
        if (mimeTypes.contains(type))
            types.append(type);
    }
    return types;
}

} // namespace

const QStringList &askedMimeTypes()
{
    static const QStringList types{QStringLiteral("inode/directory"), QStringLiteral("x-scheme-handler/http"),
        QStringLiteral("x-scheme-handler/https")};
    return types;
}

std::optional<EntryRecord> readEntry(const QString &path, const QString &id)
{
    const auto file = DesktopEntryFile::open(path);
    if (!file)
        return std::nullopt;
    EntryRecord record{.path = path, .id = id};
    record.name = shortened(file->localisedText(G_KEY_FILE_DESKTOP_KEY_NAME));
    record.genericName = shortened(file->localisedText(G_KEY_FILE_DESKTOP_KEY_GENERIC_NAME));
    record.exec = command(*file, G_KEY_FILE_DESKTOP_KEY_EXEC);
    record.tryExec = command(*file, G_KEY_FILE_DESKTOP_KEY_TRY_EXEC);
    record.isTryExecThere = isInstalled(record.tryExec);
    record.icon = file->localisedText(G_KEY_FILE_DESKTOP_KEY_ICON).value_or(QString()).left(longestCommand);
    record.startupWmClass = name(*file, G_KEY_FILE_DESKTOP_KEY_STARTUP_WM_CLASS);
    record.categories = names(*file, G_KEY_FILE_DESKTOP_KEY_CATEGORIES);
    record.mimeTypes = asked(file->texts(G_KEY_FILE_DESKTOP_KEY_MIME_TYPE));
    record.keywords = names(*file, "Keywords");
    record.noDisplay = file->flag(G_KEY_FILE_DESKTOP_KEY_NO_DISPLAY);
    record.hidden = file->flag(G_KEY_FILE_DESKTOP_KEY_HIDDEN);
    record.onlyShowIn = names(*file, G_KEY_FILE_DESKTOP_KEY_ONLY_SHOW_IN);
    record.notShowIn = names(*file, G_KEY_FILE_DESKTOP_KEY_NOT_SHOW_IN);
    record.dbusActivatable = file->flag(G_KEY_FILE_DESKTOP_KEY_DBUS_ACTIVATABLE);
    record.terminal = file->flag(G_KEY_FILE_DESKTOP_KEY_TERMINAL);
    record.startupNotify = file->flag(G_KEY_FILE_DESKTOP_KEY_STARTUP_NOTIFY);
    record.actions = actions(*file);
    record.renamedFrom = names(*file, "X-Flatpak-RenamedFrom");
    record.flatpakId = name(*file, "X-Flatpak");
    record.snapName = name(*file, "X-SnapInstanceName");
    record.workingDirectory = command(*file, G_KEY_FILE_DESKTOP_KEY_PATH);
    return record;
}

} // namespace moorline
