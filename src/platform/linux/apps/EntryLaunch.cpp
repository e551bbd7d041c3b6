#include "platform/linux/apps/EntryLaunch.h"

#include "freedesktop/LaunchRules.h"
#include "platform/linux/apps/LaunchHold.h"
#include "platform/linux/desktop/DesktopEntryFile.h"

#include <QFile>
#include <QFileInfo>
#include <gio/gdesktopappinfo.h>
#include <unistd.h>
#include <vector>

namespace moorline {

namespace {

QString textOf(const GLibPointer<GError> &error)
{
    return error ? QString::fromUtf8(error->message) : QStringLiteral("it could not be started");
}

constexpr auto spawnFlags = GSpawnFlags(G_SPAWN_SEARCH_PATH | G_SPAWN_DO_NOT_REAP_CHILD);

/// What a process does before it runs anything.
struct Leave {
    /// Null where the directory was chosen already.
    const char *home;
    const LaunchHold *hold;
};

/// Between fork and exec: only calls that may be made there.
void leaveParent(gpointer what)
{
    const auto *leave = static_cast<const Leave *>(what);
    ::setsid();
    if (leave->home && ::chdir(leave->home) != 0)
        ::_exit(1);
    if (leave->hold)
        leave->hold->wait();
}

void noteProcess([[maybe_unused]] GDesktopAppInfo *info, GPid process, gpointer processes)
{
    static_cast<QList<qint64> *>(processes)->append(process);
}

bool isProgramThere(const QString &name)
{
    return GLibPointer<gchar>(g_find_program_in_path(QFile::encodeName(name).constData())) != nullptr;
}

void setText(GKeyFile *file, const char *key, const QString &text)
{
    g_key_file_set_string(file, G_KEY_FILE_DESKTOP_GROUP, key, text.toUtf8().constData());
}

void remove(GKeyFile *file, const char *key)
{
    g_key_file_remove_key(file, G_KEY_FILE_DESKTOP_GROUP, key, nullptr);
}

/// So that GLib runs the command, where it is to be run, and asks nobody else.
void prepare(const DesktopEntryFile &entry, const QString &path)
{
    GKeyFile *const file = entry.keyFile();
    QString exec = withPlace(entry.text(G_KEY_FILE_DESKTOP_KEY_EXEC).value_or(QString()), path);
    if (entry.flag(G_KEY_FILE_DESKTOP_KEY_TERMINAL)) {
        if (const auto terminal = terminalPrefix(isProgramThere)) {
            exec.prepend(*terminal + u' ');
            remove(file, G_KEY_FILE_DESKTOP_KEY_TERMINAL);
        }
    }
    setText(file, G_KEY_FILE_DESKTOP_KEY_EXEC, exec);
    remove(file, G_KEY_FILE_DESKTOP_KEY_DBUS_ACTIVATABLE);
    if (!QFileInfo(entry.text(G_KEY_FILE_DESKTOP_KEY_PATH).value_or(QString())).isDir())
        remove(file, G_KEY_FILE_DESKTOP_KEY_PATH);
}

GObjectPointer<GAppLaunchContext> contextWith(const QList<QByteArray> &environment)
{
    GObjectPointer<GAppLaunchContext> context(g_app_launch_context_new());
    const GLibPointer<gchar *> own(g_get_environ());
    for (gchar **variable = own.get(); variable && *variable; ++variable) {
        const QByteArray text(*variable);
        g_app_launch_context_unsetenv(context.get(), text.left(text.indexOf('=')).constData());
    }
    for (const QByteArray &variable : environment) {
        const qsizetype sign = variable.indexOf('=');
        if (sign > 0)
            g_app_launch_context_setenv(
                context.get(), variable.left(sign).constData(), variable.constData() + sign + 1);
    }
    return context;
}

/// GLib tells the session's bus of each launch, and would end the program when its own connection to that bus ends.
void outliveBus()
{
    const GObjectPointer<GDBusConnection> bus(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
    if (bus)
        g_dbus_connection_set_exit_on_close(bus.get(), FALSE);
}

GLibPointer<GList> listOf(const QList<QByteArray> &uris)
{
    GList *list = nullptr;
    for (auto uri = uris.crbegin(); uri != uris.crend(); ++uri)
        list = g_list_prepend(list, const_cast<char *>(uri->constData()));
    return GLibPointer<GList>(list);
}

} // namespace

namespace {

LaunchOutcome launch(
    const DesktopEntryFile &entry, const QString &path, const QList<QByteArray> &uris, const LaunchManner &manner)
{
    prepare(entry, path);
    const GObjectPointer<GDesktopAppInfo> info(g_desktop_app_info_new_from_keyfile(entry.keyFile()));
    if (!info)
        return {.error = QStringLiteral("its program is not installed")};
    const bool hasOwnDirectory = entry.text(G_KEY_FILE_DESKTOP_KEY_PATH).has_value();
    const auto context = contextWith(manner.environment);
    outliveBus();
    Leave leave{.home = hasOwnDirectory ? nullptr : manner.home.constData(), .hold = manner.hold.get()};
    GError *error = nullptr;
    LaunchOutcome outcome;
    if (!g_desktop_app_info_launch_uris_as_manager(info.get(), listOf(uris).get(), context.get(), spawnFlags,
            leaveParent, &leave, noteProcess, &outcome.processes, &error))
        outcome.error = textOf(GLibPointer<GError>(error));
    return outcome;
}

} // namespace

LaunchOutcome launchEntry(const QString &path, const QList<QByteArray> &uris, const LaunchManner &manner)
{
    const auto entry = DesktopEntryFile::open(path);
    if (!entry)
        return {.error = QStringLiteral("there is no such application")};
    return launch(*entry, path, uris, manner);
}

LaunchOutcome launchAction(const QString &path, const QString &action, const LaunchManner &manner)
{
    const auto entry = DesktopEntryFile::open(path);
    const QByteArray group = "Desktop Action " + action.toUtf8();
    const GLibPointer<gchar> exec(entry
            ? g_key_file_get_string(entry->keyFile(), group.constData(), G_KEY_FILE_DESKTOP_KEY_EXEC, nullptr)
            : nullptr);
    if (!exec)
        return {.error = QStringLiteral("there is no such action")};
    setText(entry->keyFile(), G_KEY_FILE_DESKTOP_KEY_EXEC, QString::fromUtf8(exec.get()));
    return launch(*entry, path, {}, manner);
}

LaunchOutcome launchProgram(const QString &program, const QStringList &arguments, const LaunchManner &manner)
{
    QList<QByteArray> words{QFile::encodeName(program)};
    for (const QString &argument : arguments)
        words.append(QFile::encodeName(argument));
    std::vector<gchar *> argv;
    for (QByteArray &word : words)
        argv.push_back(word.data());
    argv.push_back(nullptr);
    QList<QByteArray> variables = manner.environment;
    std::vector<gchar *> environment;
    for (QByteArray &variable : variables)
        environment.push_back(variable.data());
    environment.push_back(nullptr);
    Leave leave{.home = nullptr, .hold = manner.hold.get()};
    GError *error = nullptr;
    GPid process = 0;
    if (!g_spawn_async(manner.home.constData(), argv.data(), environment.data(), spawnFlags, leaveParent, &leave,
            &process, &error))
        return {.error = textOf(GLibPointer<GError>(error))};
    return {.processes = {process}};
}

} // namespace moorline
