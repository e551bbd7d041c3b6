#pragma once

#include "chrome/IconRow.h"
#include "files/FilesContext.h"
#include "settings/Settings.h"

namespace moorline {

class DownloadsButton;
class PinnedItemButton;
class TrashButton;

/// The user's pinned files and folders, in the order of the settings, and behind them the Downloads and the Trash, each
/// where the user wants it.
class PinnedItemsWidget final : public IconRow {
    Q_OBJECT
public:
    explicit PinnedItemsWidget(FilesContext context, QGraphicsItem *parent = nullptr);

    /// From left to right.
    [[nodiscard]] QList<PinnedItemButton *> buttons() const;
    /// Null where it is not shown.
    [[nodiscard]] DownloadsButton *downloads() const { return m_downloads; }
    [[nodiscard]] TrashButton *trash() const { return m_trash; }

protected:
    [[nodiscard]] IconButton *makeButton(qsizetype index) override;
    void renew(IconButton &button, qsizetype index) override;
    void keepOrder(const QStringList &ids) override;
    void removed(const IconButton &button) override;

private:
    void refresh();
    void refreshTail(const Settings &settings);
    [[nodiscard]] const QList<PinnedItem> &items() const;

    FilesContext m_context;
    DownloadsButton *m_downloads = nullptr;
    TrashButton *m_trash = nullptr;
};

} // namespace moorline
