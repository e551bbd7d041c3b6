#include "settings/SettingsStore.h"

#include "platform/Directories.h"
#include "settings/SettingsCoding.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>
#include <algorithm>

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

void SettingsStore::setSettings(const Settings &settings)
{
    if (settings == m_settings)
        return;
    m_settings = settings;
    persist();
    Q_EMIT settingsDidChange();
}

bool SettingsStore::isEnabled(WidgetKind kind) const
{
    return m_settings.enabledWidgets.contains(kind);
}

void SettingsStore::toggleWidget(WidgetKind kind)
{
    Settings settings = m_settings;
    auto &widgets = settings.enabledWidgets;
    if (widgets.removeAll(kind) == 0) {
        widgets.append(kind);
        std::stable_sort(widgets.begin(), widgets.end());
    }
    setSettings(settings);
}

void SettingsStore::addShortcut(const AppShortcut &shortcut)
{
    Settings settings = m_settings;
    add(settings.appShortcuts, shortcut);
    setSettings(settings);
}

void SettingsStore::removeShortcut(const AppShortcut &shortcut)
{
    Settings settings = m_settings;
    settings.appShortcuts.removeIf([&shortcut](const AppShortcut &other) { return other.id() == shortcut.id(); });
    setSettings(settings);
}

void SettingsStore::addPinnedItem(const PinnedItem &item)
{
    Settings settings = m_settings;
    add(settings.pinnedItems, item);
    setSettings(settings);
}

void SettingsStore::removePinnedItem(const PinnedItem &item)
{
    Settings settings = m_settings;
    settings.pinnedItems.removeIf([&item](const PinnedItem &other) { return other.path == item.path; });
    setSettings(settings);
}

void SettingsStore::pin(const QList<QUrl> &urls)
{
    // One record and one assignment: a drop of hundreds of files is written once.
    Settings settings = m_settings;
    for (const QUrl &url : urls) {
        // The URL of a folder may end in a slash, its path does not.
        const QString path = url.adjusted(QUrl::StripTrailingSlash).toLocalFile();
        const auto shortcut = QFileInfo(path).suffix() == m_applicationExtension ? m_makeShortcut(url) : std::nullopt;
        if (shortcut)
            add(settings.appShortcuts, *shortcut);
        else
            add(settings.pinnedItems, PinnedItem{path, displayName(path)});
    }
    if (!settings.pinnedItems.isEmpty() && !isEnabled(WidgetKind::pinnedItems))
        settings.enabledWidgets.append(WidgetKind::pinnedItems);
    setSettings(settings);
}

} // namespace moorline
