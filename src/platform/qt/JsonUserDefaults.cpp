#include "platform/qt/JsonUserDefaults.h"

#include "support/JsonFields.h"
#include "support/JsonMembers.h"
#include "support/RegularFile.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonDocument>
#include <QSaveFile>

namespace moorline {

namespace {

/// Many times what the program ever keeps.
constexpr qint64 largestFile = qint64(1024) * 1024;

QHash<QString, QStringList> read(const QString &path)
{
    QHash<QString, QStringList> lists;
    const auto content = regularFileContent(path, largestFile);
    const auto members = content ? JsonMembers::of(*content) : std::nullopt;
    if (!members)
        return lists;
    const QJsonObject &readable = members->readable();
    for (auto member = readable.begin(); member != readable.end(); ++member) {
        const auto list = json::listOf<QString>(
            member.value(), ownLimits, [](const QJsonValue &value) { return json::text(value, ownLimits); });
        if (list)
            lists.insert(member.key(), *list);
    }
    return lists;
}

void store(const QString &path, const QHash<QString, QStringList> &lists)
{
    QJsonObject members;
    for (auto list = lists.begin(); list != lists.end(); ++list)
        members.insert(list.key(), QJsonArray::fromStringList(list.value()));
    QDir().mkpath(QFileInfo(path).path());
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(QJsonDocument(members).toJson()) >= 0)
        file.commit();
}

} // namespace

JsonUserDefaults::JsonUserDefaults(Clock &clock, QString path)
    : m_clock(clock)
    , m_path(std::move(path))
    , m_lists(read(m_path))
{
    m_writer.setMaxThreadCount(1);
}

JsonUserDefaults::~JsonUserDefaults()
{
    if (m_delay)
        write();
    m_writer.waitForDone();
}

QStringList JsonUserDefaults::stringList(const QString &key) const
{
    return m_lists.value(key);
}

void JsonUserDefaults::setStringList(const QString &key, const QStringList &list)
{
    if (m_lists.value(key) == list && m_lists.contains(key))
        return;
    m_lists.insert(key, list);
    if (!m_delay)
        m_delay = m_clock.after(writeDelay, [this] { write(); });
}

void JsonUserDefaults::write()
{
    m_delay.reset();
    m_writer.start([path = m_path, lists = m_lists] { store(path, lists); });
}

} // namespace moorline
