#include "files/PinnedItemsWidget.h"

#include "files/DownloadsButton.h"
#include "files/PinnedItemButton.h"
#include "files/TrashButton.h"
#include "settings/Choices.h"
#include "settings/Reordered.h"
#include "settings/SettingsStore.h"

namespace moorline {

namespace {

/// What of the settings the row shows.
auto shown(const Settings &settings)
{
    return std::tie(settings.pinnedItems, settings.showDownloadsFolder, settings.showTrash);
}

} // namespace

PinnedItemsWidget::PinnedItemsWidget(FilesContext context, QGraphicsItem *parent)
    : IconRow(parent)
    , m_context(std::move(context))
{
    setAcceptDrops(true);
    setDescription({.role = QAccessible::Grouping, .name = label(WidgetKind::pinnedItems), .state = {}});
    connect(&m_context.store, &SettingsStore::settingsDidChange, this, [this](const Settings &before) {
        if (shown(before) != shown(m_context.store.settings()))
            refresh();
    });
    refresh();
}

QList<PinnedItemButton *> PinnedItemsWidget::buttons() const
{
    QList<PinnedItemButton *> buttons;
    for (IconButton *button : icons())
        buttons.append(static_cast<PinnedItemButton *>(button));
    return buttons;
}

const QList<PinnedItem> &PinnedItemsWidget::items() const
{
    return m_context.store.settings().pinnedItems;
}

void PinnedItemsWidget::refresh()
{
    QStringList ids;
    for (const PinnedItem &item : items())
        ids.append(item.id());
    show(ids);
    refreshTail(m_context.store.settings());
}

void PinnedItemsWidget::refreshTail(const Settings &settings)
{
    if (!settings.showDownloadsFolder)
        m_downloads = nullptr;
    else if (!m_downloads)
        m_downloads = new DownloadsButton(m_context, this);
    if (!settings.showTrash)
        m_trash = nullptr;
    else if (!m_trash)
        m_trash = new TrashButton(m_context, this);
    QList<IconButton *> tail{m_downloads, m_trash};
    tail.removeAll(nullptr);
    setTail(tail);
}

IconButton *PinnedItemsWidget::makeButton(qsizetype index)
{
    return new PinnedItemButton(m_context, items().at(index), this);
}

void PinnedItemsWidget::renew(IconButton &button, qsizetype index)
{
    static_cast<PinnedItemButton &>(button).setItem(items().at(index));
}

void PinnedItemsWidget::keepOrder(const QStringList &ids)
{
    m_context.store.change(
        [&ids](Settings &settings) { settings.pinnedItems = reordered(std::move(settings.pinnedItems), ids); });
}

void PinnedItemsWidget::removed(const IconButton &button)
{
    m_context.store.removePinnedItem(static_cast<const PinnedItemButton &>(button).item());
}

} // namespace moorline
