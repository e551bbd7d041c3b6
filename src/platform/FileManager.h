#pragma once

namespace moorline {

/// The desktop's own file manager.
class FileManager {
public:
    virtual ~FileManager() = default;

    /// Brings it to the front, with a window for new ones to start in when it has none.
    virtual void comeForward() = 0;
};

} // namespace moorline
