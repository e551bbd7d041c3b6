#pragma once

#include "platform/FileWatch.h"

namespace moorline {

/// Watches through QFileSystemWatcher.
class QtFileWatch final : public FileWatch {
public:
    [[nodiscard]] std::unique_ptr<Watch> watch(const QString &path, Callback changed) override;
};

} // namespace moorline
