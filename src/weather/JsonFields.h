#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QStringList>
#include <optional>

namespace moorline {

/// The fields of one record in a JSON answer, read as strictly as they are documented. A field of a wrong type, a
/// number that is not finite or beyond `limit` in either direction, and a text or list of absurd length make the whole
/// record unreadable; what was read until then is of no use.
///
/// A missing field and a null are the same: fine where the field is optional, unreadable where it is required.
class JsonFields {
public:
    /// Of a text, in UTF-16 units, and of a list.
    static constexpr qsizetype longestText = 256;
    static constexpr qsizetype longestList = 64;

    explicit JsonFields(QJsonObject object);

    [[nodiscard]] bool isReadable() const { return m_isReadable; }
    /// The first field that made the record unreadable.
    [[nodiscard]] QString unreadableField() const { return m_unreadableField; }

    double number(QLatin1StringView name, double limit);
    std::optional<double> optionalNumber(QLatin1StringView name, double limit);
    /// A number with a fraction is none.
    qint64 integer(QLatin1StringView name);
    QString text(QLatin1StringView name);
    std::optional<QString> optionalText(QLatin1StringView name);
    std::optional<bool> optionalFlag(QLatin1StringView name);
    std::optional<QJsonObject> optionalObject(QLatin1StringView name);
    std::optional<QJsonArray> optionalList(QLatin1StringView name);
    std::optional<QStringList> optionalTexts(QLatin1StringView name);
    std::optional<QList<qint64>> optionalIntegers(QLatin1StringView name);
    std::optional<QList<double>> optionalNumbers(QLatin1StringView name, double limit);

    /// For records inside this one that turn out to be unreadable.
    void fail(const QString &name);

private:
    template <typename Value, typename Read>
    Value required(QLatin1StringView name, Read read);
    template <typename Value, typename Read>
    std::optional<Value> optional(QLatin1StringView name, Read read);
    template <typename Value, typename Read>
    std::optional<QList<Value>> optionalListOf(QLatin1StringView name, Read read);

    QJsonObject m_object;
    bool m_isReadable = true;
    QString m_unreadableField;
};

} // namespace moorline
