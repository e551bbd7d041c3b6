#pragma once

#include "platform/FilePresence.h"
#include "platform/Icons.h"

namespace moorline {

/// What the workspace shows for applications and files, and the images that AppKit names. Drawn on the main thread, as
/// AppKit wants it, each in its own turn of the event loop.
class MacIcons final : public Icons {
public:
    /// `watch` outlives this.
    explicit MacIcons(FileWatch &watch);

    [[nodiscard]] std::unique_ptr<Request> load(const IconRequest &request, Completion completion) override;

private:
    FilePresence m_presence;
};

} // namespace moorline
