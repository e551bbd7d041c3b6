#pragma once

#include "MenuLines.h"
#include "TrialItem.h"
#include "chrome/BarStage.h"
#include "chrome/Popover.h"
#include "fakes/FakePlatform.h"
#include "fakes/SettingsGround.h"
#include "files/FilesContext.h"
#include "theme/IconCache.h"
#include "theme/Symbols.h"

#include <QMimeData>
#include <QPainter>

namespace moorline::test {

/// What files in the bar stand on, and a bar of 300 by 100 points on a panel of 600 by 98. Nothing is pinned, and
/// neither the Downloads nor the Trash are shown.
struct FilesFixture {
    FilesFixture()
    {
        platform.panelWindow.frames = {QRectF(420, 0, 600, 98)};
        store.change([](Settings &settings) {
            settings.pinnedItems.clear();
            settings.appShortcuts.clear();
            settings.showDownloadsFolder = false;
            settings.showTrash = false;
        });
    }

    [[nodiscard]] FilesContext context()
    {
        return {.store = store,
            .workspace = platform.workspace,
            .files = platform.files,
            .directories = platform.directories,
            .trashBin = platform.trashBin,
            .icons = icons,
            .symbols = symbols,
            .stage = stage,
            .clock = platform.clock,
            .pointer = platform.pointer,
            .panelFrame = [this] { return std::optional(platform.panelWindow.frame()); }};
    }

    [[nodiscard]] static PinnedItem item(const QString &name) { return {QStringLiteral("/home/me/") + name, name}; }
    [[nodiscard]] static QUrl file(const QString &name)
    {
        return QUrl::fromLocalFile(QStringLiteral("/home/me/") + name);
    }

    /// Files of these names, as another program would offer them.
    static void offer(QMimeData &data, const QStringList &names)
    {
        QList<QUrl> urls;
        for (const QString &name : names)
            urls.append(file(name));
        data.setUrls(urls);
    }

    void pin(const QStringList &names)
    {
        store.change([&](Settings &settings) {
            settings.pinnedItems.clear();
            for (const QString &name : names)
                settings.pinnedItems.append(item(name));
        });
    }
    [[nodiscard]] QString pinned() const
    {
        QStringList names;
        for (const PinnedItem &one : store.settings().pinnedItems)
            names.append(one.name);
        return names.join(u' ');
    }

    /// What is open above the bar; null when nothing is.
    [[nodiscard]] BarPopup *open() const
    {
        for (QWidget *widget : platform.popupWindows.shown) {
            if (auto *popup = qobject_cast<BarPopup *>(widget))
                return popup;
        }
        return nullptr;
    }

    FakePlatform platform;
    SettingsStore store{storeContext(platform)};
    IconCache icons{platform.icons};
    Symbols symbols{platform.symbolCatalogue};
    BarHolds holds;
    BarStage stage{{.windows = platform.popupWindows,
        .screens = platform.screens,
        .panel = platform.panelWindow,
        .pointer = platform.pointer,
        .clock = platform.clock,
        .symbols = symbols,
        .holds = holds}};
    Hand hand;
};

/// Paints what stands at its place, as the bar would. Nothing is asked of the system before that.
inline QImage painted(QGraphicsScene &scene)
{
    QImage image(300, 100, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::black);
    QPainter painter(&image);
    scene.render(&painter, QRectF(0, 0, 300, 100), QRectF(0, 0, 300, 100));
    return image;
}

} // namespace moorline::test
