#include "support/JsonMembers.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QMap>

namespace moorline {

namespace {

/// What one piece of a document says; undefined when it is no JSON.
QJsonValue valueOf(const QByteArray &text)
{
    const QJsonArray alone = QJsonDocument::fromJson('[' + text + ']').array();
    return alone.size() == 1 ? alone.first() : QJsonValue(QJsonValue::Undefined);
}

QByteArray closerOf(char opener)
{
    return QByteArray(1, opener == '[' ? ']' : '}');
}

/// Goes through a document by its brackets, commas and quotes alone. It keeps the open brackets on the heap, where any
/// depth has room.
class Scanner final {
public:
    explicit Scanner(const QByteArray &document)
        : m_rest(document)
    {
        if (m_rest.startsWith("\xef\xbb\xbf"))
            m_rest = m_rest.sliced(3);
    }

    /// Whether the next thing is `expected`, which is then behind.
    bool take(char expected)
    {
        m_rest = m_rest.trimmed();
        if (!m_rest.startsWith(expected))
            return false;
        m_rest = m_rest.sliced(1);
        return true;
    }

    /// The text of the next value, up to the comma or bracket that ends it. Empty when nothing ends it.
    QByteArray takeValue()
    {
        QByteArray open;
        for (qsizetype place = 0; place < m_rest.size(); ++place) {
            const char c = m_rest[place];
            if (c == '"')
                place = endOfText(place);
            else if (c == '[' || c == '{')
                open += closerOf(c);
            else if (open.isEmpty() && (c == ',' || c == ':' || c == '}'))
                return takeFirst(place);
            else if ((c == ']' || c == '}') && !close(open, c))
                return {};
        }
        return {};
    }

    [[nodiscard]] bool isAtEnd() const { return m_rest.trimmed().isEmpty(); }

private:
    /// Where the text that begins at `start` ends; the end of the document when nothing ends it.
    [[nodiscard]] qsizetype endOfText(qsizetype start) const
    {
        qsizetype place = start + 1;
        while (place < m_rest.size() && m_rest[place] != '"')
            place += m_rest[place] == '\\' ? 2 : 1;
        return place;
    }

    static bool close(QByteArray &open, char closer)
    {
        const bool matches = open.endsWith(closer);
        open.chop(1);
        return matches;
    }

    QByteArray takeFirst(qsizetype length)
    {
        QByteArray value = m_rest.first(length).trimmed().toByteArray();
        m_rest = m_rest.sliced(length);
        return value;
    }

    QByteArrayView m_rest;
};

/// The members of a document, not yet read.
class RawMembers final {
public:
    void add(const QByteArray &name, const QByteArray &value)
    {
        const QJsonValue key = valueOf(name);
        m_isWhole = m_isWhole && key.isString() && !m_values.contains(key.toString());
        if (key.isString())
            m_values.insert(key.toString(), value);
    }

    QJsonObject read()
    {
        QJsonObject object;
        for (auto member = m_values.cbegin(); member != m_values.cend(); ++member) {
            const QJsonValue value = valueOf(*member);
            m_isWhole = m_isWhole && !value.isUndefined();
            // An object takes no value that is undefined.
            object.insert(member.key(), value);
        }
        return object;
    }

    [[nodiscard]] bool isWhole() const { return m_isWhole; }

private:
    /// In order, because that is how an object takes many in little time.
    QMap<QString, QByteArray> m_values;
    bool m_isWhole = true;
};

/// All the members of the document; absent when it is no object, or not whole.
std::optional<RawMembers> membersIn(const QByteArray &document)
{
    Scanner scanner(document);
    RawMembers members;
    if (!scanner.take('{'))
        return std::nullopt;
    if (!scanner.take('}')) {
        do {
            const QByteArray name = scanner.takeValue();
            if (!name.startsWith('"') || !scanner.take(':'))
                return std::nullopt;
            const QByteArray value = scanner.takeValue();
            if (value.isEmpty())
                return std::nullopt;
            members.add(name, value);
        } while (scanner.take(','));
        if (!scanner.take('}'))
            return std::nullopt;
    }
    return scanner.isAtEnd() ? std::optional(std::move(members)) : std::nullopt;
}

} // namespace

std::optional<JsonMembers> JsonMembers::of(const QByteArray &document)
{
    auto raw = membersIn(document);
    if (!raw)
        return std::nullopt;
    JsonMembers members;
    members.m_readable = raw->read();
    members.m_isWhole = raw->isWhole();
    return members;
}

} // namespace moorline
