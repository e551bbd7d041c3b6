#include "files/TrashButton.h"

#include "chrome/BarStage.h"
#include "files/DroppedFiles.h"
#include "platform/Directories.h"
#include "platform/Files.h"
#include "platform/TrashBin.h"
#include "settings/SettingsStore.h"

#include <QPointer>

namespace moorline {

namespace {

constexpr std::chrono::seconds pauseBetweenLooks{4};

} // namespace

TrashButton::TrashButton(const FilesContext &context, QGraphicsItem *parent)
    : FileTile(context, parent)
{
    connect(this, &BarItem::clicked, this, [this] { this->context().trashBin.open(); });
    connect(this, &BarItem::menuRequested, this, [this] { this->context().stage.openMenu(*this, menu()); });
    // What was missing may be there now.
    connect(&context.icons, &IconCache::iconsChanged, this, &TrashButton::showState);
    showState();
    follow();
}

Menu TrashButton::menu() const
{
    // What is chosen may be chosen when the button is gone.
    TrashBin *bin = &context().trashBin;
    SettingsStore *store = &context().store;
    return {{.title = tr("Open Trash"), .action = [=] { bin->open(); }}, MenuItem::separator(),
        {.title = tr("Hide Trash from Dock"),
            .action = [=] { store->change([](Settings &settings) { settings.showTrash = false; }); }}};
}

QVariant TrashButton::itemChange(GraphicsItemChange change, const QVariant &value)
{
    QVariant answer = FileTile::itemChange(change, value);
    if (change == ItemSceneHasChanged || change == ItemVisibleHasChanged)
        follow();
    return answer;
}

void TrashButton::follow()
{
    const bool isShown = scene() && isVisible();
    if (isShown == m_isFollowed)
        return;
    m_isFollowed = isShown;
    m_pause.reset();
    if (isShown)
        refresh();
}

void TrashButton::refresh()
{
    m_pause.reset();
    context().trashBin.look([button = QPointer(this), look = ++m_look](bool isFull) {
        if (button && button->m_look == look)
            button->take(isFull);
    });
}

void TrashButton::take(bool isFull)
{
    if (m_isFollowed)
        m_pause = context().clock.after(pauseBetweenLooks, [this] { refresh(); });
    if (std::exchange(m_isFull, isFull) != isFull)
        showState();
}

void TrashButton::showState()
{
    m_isFolderShown = false;
    showIcon(IconKind::named, m_isFull ? QStringLiteral("NSTrashFull") : QStringLiteral("NSTrashEmpty"));
    setSymbol(m_isFull ? QStringLiteral("trash.fill") : QStringLiteral("trash"));
    setName(tr("Trash"), m_isFull ? tr("Full") : tr("Empty"));
}

void TrashButton::iconMissing()
{
    if (std::exchange(m_isFolderShown, true))
        return FileTile::iconMissing();
    showIcon(IconKind::file, context().directories.trash());
}

bool TrashButton::takesDrop(const QStringList &formats) const
{
    return mayHoldFiles(formats);
}

bool TrashButton::drop(const QMimeData &data)
{
    const QList<QUrl> files = loadDroppedFileURLs(data);
    // Of this drop: what is stuck of another one concerns that one.
    const auto going = std::make_shared<qsizetype>(files.size());
    for (const QUrl &file : files) {
        context().files.moveToTrash(file.adjusted(QUrl::StripTrailingSlash), [button = QPointer(this), going](bool) {
            if (--*going == 0 && button)
                button->refresh();
        });
    }
    return true;
}

} // namespace moorline
