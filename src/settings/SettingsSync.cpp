#include "settings/SettingsSync.h"

#include "settings/SettingsFields.h"
#include "support/FolderLock.h"

#include <QDir>
#include <QFileInfo>
#include <algorithm>

namespace moorline {

namespace {

using std::chrono::milliseconds;

/// Whoever has an older file sees the widget for pinned items once, and may switch it off for good.
void introducePinnedItems(Settings &settings)
{
    if (settings.pinnedItemsIntroduced)
        return;
    settings.pinnedItemsIntroduced = true;
    if (!settings.enabledWidgets.contains(WidgetKind::pinnedItems))
        settings.enabledWidgets.append(WidgetKind::pinnedItems);
}

/// Their record with what is mine: the fields in which mine differs from the one that both began with.
Settings merged(const Settings &base, const Settings &mine, Settings theirs)
{
    forEachSetting([&](const char *, auto field) {
        if (mine.*field != base.*field)
            theirs.*field = mine.*field;
    });
    return theirs;
}

QString folderOf(const SettingsFile &file)
{
    return QFileInfo(file.path()).path();
}

} // namespace

SettingsSync::SettingsSync(QString path, Clock &clock, FileWatch &fileWatch, QObject *parent)
    : QObject(parent)
    , m_clock(clock)
    , m_file(std::move(path))
    , m_writeRetries(
          clock, [this] { look(); }, failedWriteRetry)
{
    QDir().mkpath(folderOf(m_file));
    m_watch = fileWatch.watch(m_file.path(), [this] { lookSoon(); });
    const FolderLock lock(folderOf(m_file));
    takeOver();
    introducePinnedItems(m_settings);
    if (m_knownBytes.isEmpty())
        m_onDisk = m_settings;
    m_isIncomplete = m_knownBytes != documentOf(writtenOver(m_members, m_settings));
    save(lock);
}

SettingsSync::~SettingsSync()
{
    if (!isUnsaved())
        return;
    const FolderLock lock(folderOf(m_file));
    takeOver();
    // There is no later any more. Whoever is writing the file goes on in the one that is kept aside.
    const bool isChanged = m_settings != m_onDisk;
    if (isReplaceable() || isChanged)
        write();
}

void SettingsSync::change(const std::function<void(Settings &)> &edit)
{
    const Settings before = m_settings;
    {
        // Not held while listeners are told, who may make changes of their own.
        const FolderLock lock(folderOf(m_file));
        takeOver();
        edit(m_settings);
        save(lock);
    }
    if (m_settings != before)
        Q_EMIT didChange(before);
}

void SettingsSync::lookSoon()
{
    if (!m_coalescing)
        m_coalescing = m_clock.after(coalescingTime, [this] { look(); });
}

void SettingsSync::look()
{
    m_coalescing.reset();
    m_retry.reset();
    change([](Settings &) {});
}

void SettingsSync::takeOver()
{
    const SettingsFile::Content content = m_file.read(m_knownBytes);
    m_state = content.state;
    if (m_state == SettingsFile::State::unreadable) {
        noteDamage();
        return;
    }
    m_damage.reset();
    if (m_state != SettingsFile::State::readable)
        return;
    m_settings = merged(m_onDisk, m_settings, content.document.settings);
    introducePinnedItems(m_settings);
    m_onDisk = content.document.settings;
    m_members = content.document.members;
    m_holdsMore = !content.document.isWhole;
    m_knownBytes = content.bytes;
    m_isIncomplete = false;
}

void SettingsSync::noteDamage()
{
    const SettingsFile::Stamp stamp = m_file.stamp();
    if (!m_damage || m_damage->stamp != stamp) {
        const milliseconds age(stamp.modified.msecsTo(m_clock.now()));
        m_damage = Damage{stamp, m_clock.uptime() - std::clamp(age, milliseconds(0), patience)};
    }
    if (!isDamaged())
        m_retry = m_clock.after(unreadableRetry, [this] { look(); });
}

bool SettingsSync::isDamaged() const
{
    return m_damage && m_clock.uptime() - m_damage->since >= patience;
}

bool SettingsSync::isReplaceable() const
{
    return m_state != SettingsFile::State::unreadable || isDamaged();
}

void SettingsSync::save(const FolderLock &lock)
{
    if (isUnsaved() && !lock.isMine()) {
        saveOnceUnlocked();
        return;
    }
    m_nextLockedRetry = lockedRetry;
    if (!isUnsaved())
        m_writeRetries.reset();
    else if (isReplaceable())
        write();
}

/// What is changed meanwhile does not put it off.
void SettingsSync::saveOnceUnlocked()
{
    if (m_retry)
        return;
    m_retry = m_clock.after(m_nextLockedRetry, [this] { look(); });
    m_nextLockedRetry = std::min(2 * m_nextLockedRetry, longestLockedRetry);
}

void SettingsSync::write()
{
    const QJsonObject members = writtenOver(m_members, m_settings);
    const QByteArray bytes = documentOf(members);
    if (!keepWhatWouldBeLost() || !m_file.write(bytes)) {
        m_writeRetries.noteFailure();
        return;
    }
    m_writeRetries.reset();
    m_onDisk = m_settings;
    m_members = members;
    m_holdsMore = false;
    m_knownBytes = bytes;
    m_isIncomplete = false;
}

bool SettingsSync::keepWhatWouldBeLost()
{
    switch (m_state) {
    case SettingsFile::State::known:
    case SettingsFile::State::readable:
        return !m_holdsMore || m_file.keepCopy(m_knownBytes);
    case SettingsFile::State::missing:
        return true;
    case SettingsFile::State::unreadable:
        return m_file.keepAside();
    case SettingsFile::State::blocked:
        return false;
    }
    Q_UNREACHABLE();
}

} // namespace moorline
