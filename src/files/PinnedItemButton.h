#pragma once

#include "files/FileTile.h"
#include "platform/Menu.h"
#include "settings/Settings.h"

namespace moorline {

/// A pinned file or folder. A click opens it; what is dropped on it is pinned as well. It can be carried to another
/// place in its row, and off the bar. One that is gone keeps its place.
class PinnedItemButton final : public FileTile {
    Q_OBJECT
public:
    PinnedItemButton(const FilesContext &context, PinnedItem item, QGraphicsItem *parent = nullptr);

    /// Another record of the same file.
    void setItem(const PinnedItem &item);
    [[nodiscard]] const PinnedItem &item() const { return m_item; }
    [[nodiscard]] QString id() const override { return m_item.path; }
    [[nodiscard]] Menu menu() const;

protected:
    [[nodiscard]] bool takesDrop(const QStringList &formats) const override;
    bool drop(const QMimeData &data) override;

private:
    PinnedItem m_item;
};

} // namespace moorline
