#include "files/PinnedItemButton.h"

#include "chrome/BarStage.h"
#include "files/DroppedFiles.h"
#include "platform/Workspace.h"
#include "settings/SettingsStore.h"

namespace moorline {

PinnedItemButton::PinnedItemButton(const FilesContext &context, PinnedItem item, QGraphicsItem *parent)
    : FileTile(context, parent)
    , m_item(std::move(item))
{
    setDraggable(DragKind::out);
    showIcon(IconKind::file, m_item.path);
    setSymbol(QStringLiteral("doc"));
    setName(m_item.name);
    connect(this, &BarItem::clicked, this,
        [this] { this->context().workspace.openFile(QUrl::fromLocalFile(m_item.path)); });
    connect(this, &BarItem::menuRequested, this, [this] { this->context().stage.openMenu(*this, menu()); });
}

void PinnedItemButton::setItem(const PinnedItem &item)
{
    m_item = item;
    setName(m_item.name);
}

Menu PinnedItemButton::menu() const
{
    // What is chosen may be chosen when the button is gone.
    Workspace *workspace = &context().workspace;
    SettingsStore *store = &context().store;
    const PinnedItem item = m_item;
    const QUrl file = QUrl::fromLocalFile(item.path);
    return {{.title = tr("Open"), .action = [=] { workspace->openFile(file); }},
        {.title = tr("Show in Finder"), .action = [=] { workspace->reveal({file}); }}, MenuItem::separator(),
        {.title = tr("Remove from Dock"), .action = [=] { store->removePinnedItem(item); }}};
}

bool PinnedItemButton::takesDrop(const QStringList &formats) const
{
    return mayHoldFiles(formats);
}

bool PinnedItemButton::drop(const QMimeData &data)
{
    const QList<QUrl> files = loadDroppedFileURLs(data);
    if (!files.isEmpty())
        context().store.pin(files);
    return !files.isEmpty();
}

} // namespace moorline
