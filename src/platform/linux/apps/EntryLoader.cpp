#include "platform/linux/apps/EntryLoader.h"

#include "platform/linux/apps/EntryReader.h"
#include "platform/linux/desktop/DesktopEntryFile.h"
#include "platform/linux/glib/GObjectPointer.h"
#include "support/RegularFile.h"

#include <QDir>
#include <set>
#include <sys/stat.h>

namespace moorline {

namespace {

// Many times what anybody has below one folder for applications, for those that were filled by accident or malice.
constexpr qsizetype mostEntries = 20'000;
constexpr int mostFolders = 256;
constexpr int deepestFolder = 8;
constexpr qint64 largestList = qint64(1024) * 1024;

/// Tells one folder from another, by whatever way it was come to.
using FolderIdentity = std::pair<dev_t, ino_t>;

std::optional<FolderIdentity> identityOf(const QString &path)
{
    struct stat status = {};
    if (::stat(QFile::encodeName(path).constData(), &status) != 0)
        return std::nullopt;
    return FolderIdentity(status.st_dev, status.st_ino);
}

/// One walk through the folders for applications. What one of them leads to takes nothing from the others.
class Walk final {
public:
    Walk(const EntryPlaces &places, FolderEvents &events, const std::atomic_bool &cancelled)
        : m_places(places)
        , m_events(events)
        , m_cancelled(cancelled)
    {
        // Each is come to by itself, whoever links to it.
        for (const QString &folder : m_places.folders) {
            if (const auto identity = identityOf(folder))
                m_seen.insert(*identity);
        }
        for (const QString &folder : m_places.folders)
            walkFrom(folder);
    }

    [[nodiscard]] const QList<EntryRecord> &records() const { return m_records; }

private:
    struct Step {
        QString folder;
        /// Below the folder for applications.
        int depth = 0;
        /// Whether a link leads to it.
        bool isLinked = false;
    };

    /// What is really there comes before what links lead to, and what is near before what is far.
    void walkFrom(const QString &top)
    {
        m_folders = 0;
        m_looked = 0;
        m_real = {{.folder = top}};
        m_linked.clear();
        while (!m_real.isEmpty() || !m_linked.isEmpty())
            walk(m_real.isEmpty() ? m_linked.takeFirst() : m_real.takeFirst());
    }

    void walk(const Step &step)
    {
        if (m_folders >= mostFolders)
            return;
        // Before it is looked into: what comes meanwhile is told of.
        m_events.watchEntries(step.folder);
        const auto identity = identityOf(step.folder);
        // Links may lead to the same in many ways, and back.
        if (!identity || (!m_seen.insert(*identity).second && step.isLinked))
            return;
        ++m_folders;
        const QFileInfoList children =
            QDir(step.folder).entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden, QDir::Name);
        for (const QFileInfo &child : children)
            visit(child, step);
    }

    void visit(const QFileInfo &child, const Step &parent)
    {
        if (m_cancelled.load() || m_looked >= mostEntries)
            return;
        ++m_looked;
        const QString path = child.filePath();
        if (path.endsWith(QLatin1StringView(".desktop"))) {
            if (auto record = readEntry(path, entryId(path, m_places.folders)))
                m_records.append(*std::move(record));
        } else if (parent.depth < deepestFolder && child.isDir()) {
            const bool isLinked = parent.isLinked || child.isSymLink();
            (isLinked ? m_linked : m_real).append({path, parent.depth + 1, isLinked});
        }
    }

    const EntryPlaces &m_places;
    FolderEvents &m_events;
    const std::atomic_bool &m_cancelled;
    QList<EntryRecord> m_records;
    std::set<FolderIdentity> m_seen;
    QList<Step> m_real;
    QList<Step> m_linked;
    int m_folders = 0;
    qsizetype m_looked = 0;
};

QStringList texts(GKeyFile *file, const char *group, const QString &key)
{
    const GLibPointer<gchar *> values(
        g_key_file_get_string_list(file, group, key.toUtf8().constData(), nullptr, nullptr));
    QStringList texts;
    for (gchar **value = values.get(); value && *value; ++value)
        texts.append(QString::fromUtf8(*value));
    return texts;
}

void readChoices(const QString &path, const QStringList &types, MimeDefaults &defaults)
{
    const auto content = regularFileContent(path, largestList);
    const GLibPointer<GKeyFile> file(g_key_file_new());
    if (!content
        || !g_key_file_load_from_data(
            file.get(), content->constData(), static_cast<gsize>(content->size()), G_KEY_FILE_NONE, nullptr))
        return;
    for (const QString &type : types) {
        defaults.append(type,
            {.defaults = texts(file.get(), "Default Applications", type),
                .added = texts(file.get(), "Added Associations", type),
                .removed = texts(file.get(), "Removed Associations", type)});
    }
}

} // namespace

std::optional<QString> handlerPath(const QStringList &types, QList<EntryRecord> known, const EntryPlaces &places)
{
    for (EntryRecord &record : known) {
        const auto file = DesktopEntryFile::open(record.path);
        record.mimeTypes = file ? file->texts(G_KEY_FILE_DESKTOP_KEY_MIME_TYPE) : QStringList();
    }
    MimeDefaults defaults;
    for (const QString &list : places.mimeLists)
        readChoices(list, types, defaults);
    const EntryCatalogue catalogue(known, defaults, places.desktopNames);
    for (const QString &type : types) {
        if (const EntryRecord *handler = catalogue.handler(type))
            return handler->path;
    }
    return std::nullopt;
}

LoadedEntries loadEntries(const EntryPlaces &places, const std::atomic_bool &cancelled)
{
    auto events = std::make_shared<FolderEvents>();
    const Walk walk(places, *events, cancelled);
    MimeDefaults defaults;
    for (const QString &list : places.mimeLists) {
        events->watchFile(list);
        readChoices(list, askedMimeTypes(), defaults);
    }
    auto catalogue = std::make_shared<EntryCatalogue>(walk.records(), defaults, places.desktopNames);
    auto matcher = std::make_shared<WindowMatcher>(catalogue->records());
    return {.catalogue = std::move(catalogue), .matcher = std::move(matcher), .events = std::move(events)};
}

} // namespace moorline
