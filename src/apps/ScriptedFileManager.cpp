#include "apps/ScriptedFileManager.h"

#include "apps/AppLauncher.h"
#include "platform/Preferences.h"
#include "system/AppleScriptRunner.h"
#include "system/AppleScriptText.h"

#include <QPointer>
#include <QUrl>
#include <algorithm>

namespace moorline {

namespace {

std::optional<QString> textValue(const PreferenceDomain &domain, const QString &key)
{
    const QVariant value = domain.value(key);
    return value.typeId() == QMetaType::QString ? std::optional(value.toString()) : std::nullopt;
}

/// `home` for anything but the URL of a file.
QString pathOf(const QString &address, const QString &home)
{
    const QUrl url(address, QUrl::StrictMode);
    if (!url.isValid() || url.scheme() != QLatin1StringView("file"))
        return home;
    return url.adjusted(QUrl::StripTrailingSlash).path(QUrl::FullyDecoded);
}

} // namespace

std::optional<QString> finderNewWindowTargetPath(const Preferences &preferences, const QString &home)
{
    const auto domain = preferences.open(finderIdentifier);
    if (!domain)
        return home;
    const auto target = textValue(*domain, QStringLiteral("NewWindowTarget"));
    if (target == QLatin1StringView("PfCm"))
        return std::nullopt;
    if (target == QLatin1StringView("PfHm") || target == QLatin1StringView("PfAF"))
        return home;
    if (target == QLatin1StringView("PfDe"))
        return home + QStringLiteral("/Desktop");
    if (target == QLatin1StringView("PfDo"))
        return home + QStringLiteral("/Documents");
    const auto address = textValue(*domain, QStringLiteral("NewWindowTargetPath"));
    return address ? pathOf(*address, home) : home;
}

QString finderScript(const std::optional<QString> &targetPath)
{
    QString command = QStringLiteral("make new Finder window");
    if (targetPath)
        command += QStringLiteral(" to (POSIX file ") + appleScriptText(*targetPath) + u')';
    return QStringLiteral("tell application \"Finder\"\n"
                          "    activate\n"
                          "    if (count of windows) is 0 then\n"
                          "        ")
        + command
        + QStringLiteral("\n"
                         "    end if\n"
                         "end tell");
}

ScriptedFileManager::ScriptedFileManager(Context context)
    : m_context(std::move(context))
{
}

void ScriptedFileManager::comeForward(Workspace::Opened opened)
{
    run(finderScript(finderNewWindowTargetPath(m_context.preferences, m_context.home)), std::move(opened));
}

QCoro::Task<> ScriptedFileManager::run(QString script, Workspace::Opened opened)
{
    QPointer<ScriptedFileManager> alive{this};
    const auto answer = co_await m_context.scripts.run(script, scriptTimeout);
    if (!alive)
        co_return;
    if (!answer)
        showHome(opened);
    else if (opened)
        opened(std::nullopt);
}

/// Needs nobody's permission, but knows nothing of the folder for new windows.
void ScriptedFileManager::showHome(const Workspace::Opened &opened)
{
    m_context.workspace.showFolder(m_context.home, opened);
    const auto running = m_context.workspace.runningApplications().value_or(QList<RunningApplication>());
    const auto finder = std::find_if(running.begin(), running.end(),
        [](const RunningApplication &application) { return application.bundleIdentifier == finderIdentifier; });
    if (finder != running.end())
        m_context.workspace.activate(*finder);
}

} // namespace moorline
