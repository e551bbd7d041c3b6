#pragma once

#include <QString>
#include <functional>
#include <memory>

namespace moorline {

/// Tells when a file is written, by whatever program.
class FileWatch {
public:
    /// A file that is watched. Destroying it ends the watch; no call comes afterwards.
    class Watch {
    public:
        virtual ~Watch() = default;
    };
    using Callback = std::function<void()>;

    FileWatch() = default;
    FileWatch(const FileWatch &) = delete;
    FileWatch &operator=(const FileWatch &) = delete;
    virtual ~FileWatch() = default;

    /// Calls `changed` after the file at `path`, or at the end of links there, was written in place, replaced, made or
    /// removed, also with its folder: several times for one such change, and at times for none. Neither the file nor
    /// its folder need be there.
    [[nodiscard]] virtual std::unique_ptr<Watch> watch(const QString &path, Callback changed) = 0;
};

} // namespace moorline
