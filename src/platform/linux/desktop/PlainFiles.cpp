#include "platform/linux/desktop/PlainFiles.h"

#include "platform/linux/desktop/FileTransfer.h"
#include "platform/linux/desktop/FolderReader.h"
#include "platform/linux/glib/GObjectPointer.h"
#include "support/FileUrls.h"

#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QPointer>

namespace moorline {

namespace {

Q_LOGGING_CATEGORY(logFiles, "moorline.files", QtInfoMsg)

/// Ends the transfer, unless that has ended with whoever made it.
class TransferOffer final : public Files::DragOffer {
public:
    explicit TransferOffer(FileTransfer *transfer)
        : m_transfer(transfer)
    {
    }
    ~TransferOffer() override { delete m_transfer; }
    Q_DISABLE_COPY_MOVE(TransferOffer)

    [[nodiscard]] QHash<QString, QByteArray> formats() const override
    {
        return m_transfer ? m_transfer->formats() : QHash<QString, QByteArray>();
    }

private:
    QPointer<FileTransfer> m_transfer;
};

/// How old what is known of the mounts may be.
constexpr std::chrono::milliseconds longestKept{100};

/// Of a thousand files that are thrown away at once, not each has it read anew.
MountLooks::Table keptMounts(Clock &clock)
{
    struct Known {
        MountTable mounts;
        std::chrono::milliseconds read;
    };
    return [&clock, known = std::optional<Known>()]() mutable {
        const auto now = clock.uptime();
        if (!known || now - known->read >= longestKept)
            known = Known{.mounts = MountLooks::kernelMounts(), .read = now};
        return known->mounts;
    };
}

bool trash(const QByteArray &path)
{
    const GObjectPointer<GFile> file(g_file_new_for_path(path.constData()));
    GError *error = nullptr;
    if (g_file_trash(file.get(), nullptr, &error))
        return true;
    const GLibPointer<GError> owned(error);
    qCDebug(logFiles) << "not thrown away:" << path << (owned ? owned->message : "");
    return false;
}

} // namespace

PlainFiles::PlainFiles(Clock &clock, Bus &sessionBus)
    : m_clock(clock)
    , m_sessionBus(sessionBus)
    , m_reading(clock, MountLooks::kernelMounts, std::nullopt)
    , m_trashing(clock, keptMounts(clock), std::nullopt)
{
}

QString PlainFiles::displayName(const QString &path) const
{
    const QString last = path.section(u'/', -1, -1, QString::SectionSkipEmpty);
    return last.isEmpty() ? path.left(1) : last;
}

bool PlainFiles::exists(const QString &path) const
{
    return QFileInfo::exists(path);
}

void PlainFiles::list(const QString &folder, Choose choose, Listed listed)
{
    using Found = std::optional<QList<FolderEntry>>;
    const QByteArray path = QFile::encodeName(folder);
    const auto read = [path, choose = std::move(choose)]() -> Found {
        Found found = readFolder(path);
        return found ? Found(choose(std::move(*found))) : std::nullopt;
    };
    m_reading.run<Found>(path, read,
        [listed = std::move(listed)](const std::optional<Found> &answer) { listed(answer.value_or(std::nullopt)); });
}

void PlainFiles::moveToTrash(const QUrl &file, Trashed trashed)
{
    const QByteArray path = pathBytes(file);
    // A link is thrown away, and not what it leads to.
    m_trashing.run<bool>(
        path, [path] { return trash(path); },
        [trashed = std::move(trashed)](const std::optional<bool> &answer) { trashed(answer.value_or(false)); },
        MountLooks::LastLink::itself);
}

std::unique_ptr<Files::DragOffer> PlainFiles::prepareDrag(const QUrl &file)
{
    using Opened = QDBusUnixFileDescriptor;
    auto *transfer = new FileTransfer(m_sessionBus, m_clock, m_transfers);
    const QByteArray path = pathBytes(file);
    m_reading.run<Opened>(
        path, [path] { return FileTransfer::open(path); },
        [alive = QPointer(transfer)](const std::optional<Opened> &opened) {
            if (alive && opened && opened->isValid())
                alive->begin(*opened);
        });
    return std::make_unique<TransferOffer>(transfer);
}

} // namespace moorline
