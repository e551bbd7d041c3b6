#pragma once

#include "platform/TrashBin.h"

#include <QCoroTask>
#include <QObject>

namespace moorline {

class AppleScriptRunner;
class Directories;
class Files;

/// macOS's Trash: Finder counts what is in it, on all volumes and, where scripts are not allowed, the user's own folder
/// is looked into.
class ScriptedTrashBin final : public QObject, public TrashBin {
    Q_OBJECT
public:
    /// What the bin is built on. Everything lent here outlives it.
    struct Context {
        const AppleScriptRunner &scripts;
        Files &files;
        const Directories &directories;
    };

    static constexpr std::chrono::seconds scriptTimeout{3};

    explicit ScriptedTrashBin(Context context);

    void look(Looked looked) override;
    void open() override;

private:
    QCoro::Task<> count(Looked looked);
    void lookIntoFolder(const Looked &looked);

    Context m_context;
};

} // namespace moorline
