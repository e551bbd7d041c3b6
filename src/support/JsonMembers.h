#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <optional>

namespace moorline {

/// The members of a JSON object, each read for itself: one that cannot be read - a number beyond every double, lists in
/// lists without end, text that is not UTF-8, a word that means nothing - takes no other with it.
class JsonMembers final {
public:
    /// Absent when the document is no JSON object, or is not whole.
    [[nodiscard]] static std::optional<JsonMembers> of(const QByteArray &document);

    /// Undefined when there is no such member, or it cannot be read. Of several of that name the last one counts.
    [[nodiscard]] QJsonValue operator[](QLatin1StringView name) const { return m_readable[name]; }
    /// All that can be read.
    [[nodiscard]] const QJsonObject &readable() const { return m_readable; }
    /// Whether that is the whole document: no member that cannot be read, no name that comes twice.
    [[nodiscard]] bool isWhole() const { return m_isWhole; }

private:
    QJsonObject m_readable;
    bool m_isWhole = true;
};

} // namespace moorline
