#include "chrome/AwaitedDrops.h"

#include <algorithm>

namespace moorline {

namespace {

/// The list as its source wrote it: QMimeData itself would keep addresses, which are text.
class ArrivedFiles final : public QMimeData {
public:
    explicit ArrivedFiles(QByteArray list)
        : m_list(std::move(list))
    {
    }

    [[nodiscard]] QStringList formats() const override { return {fileListFormat()}; }

protected:
    [[nodiscard]] QVariant retrieveData(const QString &format, QMetaType) const override
    {
        return format == fileListFormat() ? m_list : QVariant();
    }

private:
    QByteArray m_list;
};

} // namespace

void AwaitedDrops::await(const std::shared_ptr<DropTransfer> &transfer, Take take)
{
    m_transfers.push_back(transfer);
    transfer->read(
        fileListFormat(), [this, raw = transfer.get(), take = std::move(take)](const std::optional<QByteArray> &list) {
            const std::shared_ptr<DropTransfer> arrived = remove(raw);
            arrived->finish(list ? take(ArrivedFiles(*list)) : Qt::IgnoreAction);
        });
}

std::shared_ptr<DropTransfer> AwaitedDrops::remove(const DropTransfer *transfer)
{
    const auto found = std::find_if(m_transfers.begin(), m_transfers.end(),
        [transfer](const std::shared_ptr<DropTransfer> &other) { return other.get() == transfer; });
    std::shared_ptr<DropTransfer> removed = std::move(*found);
    m_transfers.erase(found);
    return removed;
}

} // namespace moorline
