#include "settings/SettingsStore.h"

#include "platform/Directories.h"
#include "settings/SettingsCoding.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>
#include <algorithm>
#include <utility>

namespace moorline {

namespace {

/// Far beyond any real settings file; what is larger is not read at all.
constexpr qint64 largestFile = qint64(8) * 1024 * 1024;

std::optional<QByteArray> contents(const QString &path)
{
    // A pipe or a device in the file's place could be read for ever.
    const QFileInfo info(path);
    if (!info.isFile() || info.size() > largestFile)
        return std::nullopt;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    return file.read(largestFile);
}

QString displayName(const QString &path)
{
    const QString name = QFileInfo(path).fileName();
    return name.isEmpty() ? path : name;
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

SettingsStore::SettingsStore(
    const Directories &directories, QString applicationExtension, MakeShortcut makeShortcut, QObject *parent)
    : QObject(parent)
    , m_applicationExtension(std::move(applicationExtension))
    , m_makeShortcut(std::move(makeShortcut))
{
    const QDir folder(directories.applicationSupport() + u'/' + applicationIdentifier);
    folder.mkpath(QStringLiteral("."));
    m_filePath = folder.filePath(QStringLiteral("settings.json"));
    load();
    persist();
}

void SettingsStore::load()
{
    m_settings = Settings::defaults();
    if (const auto json = contents(m_filePath))
        m_settings = decodeSettings(*json).value_or(m_settings);
    if (m_settings.pinnedItemsIntroduced)
        return;
    m_settings.pinnedItemsIntroduced = true;
    if (!isEnabled(WidgetKind::pinnedItems))
        m_settings.enabledWidgets.append(WidgetKind::pinnedItems);
}

void SettingsStore::persist() const
{
    // Written beside the file, flushed to disk, and renamed over it: a reader finds the old file or the new one.
    QSaveFile file(m_filePath);
    if (!file.open(QIODevice::WriteOnly))
        return;
    const QByteArray json = encodeSettings(m_settings);
    // commit() alone does not see that a full disk took only the beginning.
    if (file.write(json) == json.size() && file.flush())
        file.commit();
}

void SettingsStore::change(const std::function<void(Settings &)> &edit)
{
    Settings edited = m_settings;
    edit(edited);
    if (edited == m_settings)
        return;
    const Settings before = std::exchange(m_settings, std::move(edited));
    persist();
    Q_EMIT settingsDidChange(before);
}

bool SettingsStore::isEnabled(WidgetKind kind) const
{
    return m_settings.enabledWidgets.contains(kind);
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
    // One change: a drop of hundreds of files is written once.
    change([this, &urls](Settings &settings) {
        for (const QUrl &url : urls)
            pinOne(settings, url);
        if (!settings.pinnedItems.isEmpty() && !settings.enabledWidgets.contains(WidgetKind::pinnedItems))
            settings.enabledWidgets.append(WidgetKind::pinnedItems);
    });
}

void SettingsStore::pinOne(Settings &settings, const QUrl &url) const
{
    // The URL of a folder may end in a slash, its path does not.
    const QString path = url.adjusted(QUrl::StripTrailingSlash).toLocalFile();
    const auto shortcut = QFileInfo(path).suffix() == m_applicationExtension ? m_makeShortcut(url) : std::nullopt;
    if (shortcut)
        add(settings.appShortcuts, *shortcut);
    else
        add(settings.pinnedItems, PinnedItem{path, displayName(path)});
}

} // namespace moorline
