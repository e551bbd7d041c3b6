#include "settings/SettingsStore.h"

#include "platform/Directories.h"
#include "platform/Files.h"
#include "support/FileUrls.h"

#include <QFileInfo>
#include <QPointer>
#include <algorithm>

namespace moorline {

namespace {

QString pathIn(const Directories &directories)
{
    return directories.applicationSupport() + u'/' + applicationIdentifier + QStringLiteral("/settings.json");
}

/// The URL of a folder may end in a slash, its path does not.
std::optional<QString> pinnedPath(const QUrl &url)
{
    return pathText(url.adjusted(QUrl::StripTrailingSlash));
}

/// Appends what is not there yet, by id.
template <typename Item>
void add(QList<Item> &items, const Item &item)
{
    const auto isSame = [&item](const Item &other) { return other.id() == item.id(); };
    if (std::none_of(items.cbegin(), items.cend(), isSame))
        items.append(item);
}

} // namespace

SettingsStore::SettingsStore(Context context, QObject *parent)
    : QObject(parent)
    , m_context(std::move(context))
    , m_sync(pathIn(m_context.directories), m_context.clock, m_context.fileWatch)
{
    connect(&m_sync, &SettingsSync::didChange, this, &SettingsStore::settingsDidChange);
}

bool SettingsStore::isEnabled(WidgetKind kind) const
{
    return settings().enabledWidgets.contains(kind);
}

void SettingsStore::toggleWidget(WidgetKind kind)
{
    change([kind](Settings &settings) {
        auto &widgets = settings.enabledWidgets;
        if (widgets.removeAll(kind) > 0)
            return;
        widgets.append(kind);
        std::stable_sort(widgets.begin(), widgets.end());
    });
}

void SettingsStore::addShortcut(const AppShortcut &shortcut)
{
    change([shortcut](Settings &settings) { add(settings.appShortcuts, shortcut); });
}

void SettingsStore::removeShortcut(const AppShortcut &shortcut)
{
    change([id = shortcut.id()](Settings &settings) {
        settings.appShortcuts.removeIf([&id](const AppShortcut &other) { return other.id() == id; });
    });
}

void SettingsStore::addPinnedItem(const PinnedItem &item)
{
    change([item](Settings &settings) { add(settings.pinnedItems, item); });
}

void SettingsStore::removePinnedItem(const PinnedItem &item)
{
    change([path = item.path](Settings &settings) {
        settings.pinnedItems.removeIf([&path](const PinnedItem &other) { return other.path == path; });
    });
}

void SettingsStore::pin(const QList<QUrl> &urls)
{
    QStringList applications;
    for (const QUrl &url : urls) {
        const auto path = pinnedPath(url);
        if (path && namesApplication(*path))
            applications.append(*path);
    }
    if (applications.isEmpty() || !m_context.lookAt)
        pinAll(urls);
    else
        pinOnceKnown(urls, applications);
}

QCoro::Task<> SettingsStore::pinOnceKnown(QList<QUrl> urls, QStringList applications)
{
    const QPointer<SettingsStore> alive(this);
    co_await m_context.lookAt(applications);
    if (alive)
        pinAll(urls);
}

void SettingsStore::pinAll(const QList<QUrl> &urls)
{
    // One change: a drop of hundreds of files is written once.
    change([this, &urls](Settings &settings) {
        for (const QUrl &url : urls)
            pinOne(settings, url);
        if (!settings.pinnedItems.isEmpty() && !settings.enabledWidgets.contains(WidgetKind::pinnedItems))
            settings.enabledWidgets.append(WidgetKind::pinnedItems);
    });
}

bool SettingsStore::namesApplication(const QString &path) const
{
    return QFileInfo(path).suffix() == m_context.applicationExtension;
}

void SettingsStore::pinOne(Settings &settings, const QUrl &url) const
{
    const auto path = pinnedPath(url);
    // The settings are text. Any other name would be another file's there.
    if (!path)
        return;
    const auto shortcut = namesApplication(*path) ? m_context.makeShortcut(url) : std::nullopt;
    if (shortcut)
        add(settings.appShortcuts, *shortcut);
    else
        add(settings.pinnedItems, PinnedItem{*path, m_context.files.displayName(*path)});
}

} // namespace moorline
