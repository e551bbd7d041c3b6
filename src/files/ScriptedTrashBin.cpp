#include "files/ScriptedTrashBin.h"

#include "platform/Directories.h"
#include "platform/Files.h"
#include "system/AppleScriptRunner.h"

#include <QPointer>

namespace moorline {

namespace {

const QString countScript = QStringLiteral("tell application \"Finder\" to return count of items in trash");
const QString openScript = QStringLiteral("tell application \"Finder\"\n"
                                          "    activate\n"
                                          "    open trash\n"
                                          "end tell");

/// One entry is as good as all of them. What Finder notes of the folder's window is none.
QList<FolderEntry> firstThrownAway(const QList<FolderEntry> &entries)
{
    for (const FolderEntry &entry : entries) {
        if (entry.name != ".DS_Store")
            return {entry};
    }
    return {};
}

std::optional<qlonglong> number(const std::optional<QString> &answer)
{
    bool isNumber = false;
    const qlonglong value = answer.value_or(QString()).toLongLong(&isNumber);
    return isNumber ? std::optional(value) : std::nullopt;
}

} // namespace

ScriptedTrashBin::ScriptedTrashBin(Context context)
    : m_context(context)
{
}

void ScriptedTrashBin::look(Looked looked)
{
    count(std::move(looked));
}

QCoro::Task<> ScriptedTrashBin::count(Looked looked)
{
    QPointer<ScriptedTrashBin> alive{this};
    const auto answer = co_await m_context.scripts.run(countScript, scriptTimeout);
    if (!alive)
        co_return;
    if (const auto items = number(answer))
        looked(*items > 0);
    else
        lookIntoFolder(looked);
}

void ScriptedTrashBin::lookIntoFolder(const Looked &looked)
{
    m_context.files.list(m_context.directories.trash(), firstThrownAway,
        [looked, alive = QPointer(this)](const std::optional<QList<FolderEntry>> &found) {
            if (alive)
                looked(found && !found->isEmpty());
        });
}

void ScriptedTrashBin::open()
{
    m_context.scripts.runDetached(openScript);
}

} // namespace moorline
