#pragma once

#include "support/JsonValues.h"

#include <QStringList>

namespace moorline {

/// The fields of one record in a JSON document, read as strictly as they are documented. A field of a wrong type, a
/// number that is not finite or beyond `limit` in either direction, and what is beyond the limits of the document make
/// the whole record unreadable; what was read until then is of no use.
///
/// A missing field and a null are the same: fine where the field is optional, unreadable where it is required.
class JsonFields {
public:
    explicit JsonFields(QJsonObject object, const JsonLimits &limits = strangersLimits);

    [[nodiscard]] bool isReadable() const { return m_isReadable; }
    /// The first field that made the record unreadable.
    [[nodiscard]] QString unreadableField() const { return m_unreadableField; }

    double number(QLatin1StringView name, double limit = json::anyNumber);
    std::optional<double> optionalNumber(QLatin1StringView name, double limit = json::anyNumber);
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
    JsonLimits m_limits;
    bool m_isReadable = true;
    QString m_unreadableField;
};

} // namespace moorline
