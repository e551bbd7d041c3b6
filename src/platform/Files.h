#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>

QT_BEGIN_NAMESPACE
class QUrl;
QT_END_NAMESPACE

namespace moorline {

/// Something in a folder: a file, a link, another folder.
struct FolderEntry {
    using Time = std::chrono::sys_time<std::chrono::milliseconds>;

    /// In the bytes of the file system, which need not be text.
    QByteArray name;
    bool isHidden = false;
    /// When it came into the folder, and when its content last changed; absent where the system does not tell.
    std::optional<Time> added = std::nullopt;
    std::optional<Time> modified = std::nullopt;

    bool operator==(const FolderEntry &) const = default;
};

/// What the file manager says of files, and does with them.
class Files {
public:
    /// A file that is about to be dragged into another program, which may be shut away from the user's files. What was
    /// prepared for that counts as long as this lives.
    class DragOffer {
    public:
        DragOffer() = default;
        virtual ~DragOffer() = default;
        Q_DISABLE_COPY_MOVE(DragOffer)

        /// What is offered beside the URL of the file, by MIME type. Empty until it is ready, and where it never is.
        [[nodiscard]] virtual QHash<QString, QByteArray> formats() const = 0;
    };

    /// What is wanted of everything there is in a folder. Called on another thread.
    using Choose = std::function<QList<FolderEntry>(QList<FolderEntry>)>;
    /// Called once, from the event loop, with what was chosen; absent when the folder cannot be read.
    using Listed = std::function<void(const std::optional<QList<FolderEntry>> &)>;
    /// Called once, from the event loop.
    using Trashed = std::function<void(bool succeeded)>;

    virtual ~Files() = default;

    /// The name that the user sees, which may be another than the last part of the path: translated, or without its
    /// extension. For a file that is not there the last part of its path. Never empty unless `path` is.
    [[nodiscard]] virtual QString displayName(const QString &path) const = 0;
    /// Whether there is a file or folder at `path` now.
    [[nodiscard]] virtual bool exists(const QString &path) const = 0;
    /// Reads a folder, and none of those in it, in the order of the file system.
    virtual void list(const QString &folder, Choose choose, Listed listed) = 0;
    /// Moves a file or folder to the trash. Where there is no trash for it, it stays.
    virtual void moveToTrash(const QUrl &file, Trashed trashed) = 0;
    /// Nobody waits for what it takes. Null where the URL is enough for every program.
    [[nodiscard]] virtual std::unique_ptr<DragOffer> prepareDrag(const QUrl &file) = 0;
};

} // namespace moorline
