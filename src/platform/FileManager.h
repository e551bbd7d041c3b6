#pragma once

#include "platform/Workspace.h"

namespace moorline {

/// The desktop's own file manager.
class FileManager {
public:
    virtual ~FileManager() = default;

    /// Brings it to the front, with a window for new ones to start in when it has none. `opened` may be empty.
    virtual void comeForward(Workspace::Opened opened) = 0;
};

} // namespace moorline
