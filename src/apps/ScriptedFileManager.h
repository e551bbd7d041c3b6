#pragma once

#include "platform/FileManager.h"

#include <QCoroTask>
#include <QObject>
#include <QString>
#include <optional>

namespace moorline {

class AppleScriptRunner;
class Preferences;

/// macOS's Finder, brought forward by a script and, where scripts are not allowed, by the workspace.
class ScriptedFileManager final : public QObject, public FileManager {
    Q_OBJECT
public:
    /// What the file manager is built on. Everything lent here outlives it.
    struct Context {
        const AppleScriptRunner &scripts;
        const Preferences &preferences;
        Workspace &workspace;
        /// The path of the user's home folder.
        QString home;
    };

    static constexpr std::chrono::seconds scriptTimeout{5};

    explicit ScriptedFileManager(Context context);

    void comeForward(Workspace::Opened opened) override;

private:
    QCoro::Task<> run(QString script, Workspace::Opened opened);
    void showHome(const Workspace::Opened &opened);

    Context m_context;
};

/// The folder that a new Finder window shows, as Finder's preferences say. Absent when it is none, but the computer.
[[nodiscard]] std::optional<QString> finderNewWindowTargetPath(const Preferences &preferences, const QString &home);
/// Activates Finder, and makes it a window when it has none.
[[nodiscard]] QString finderScript(const std::optional<QString> &targetPath);

} // namespace moorline
