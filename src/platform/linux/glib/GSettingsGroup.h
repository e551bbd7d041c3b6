#pragma once

#include "platform/linux/glib/GObjectPointer.h"

#include <QByteArray>
#include <QStringList>
#include <optional>

namespace moorline {

/// One group of another program's settings. GSettings ends the program that asks for a schema or a key that is not
/// installed, so every question looks first; what is missing, or has another type, is absent.
class GSettingsGroup final {
public:
    /// Looks for the schema where schemas are installed and, failing that, in the compiled schemas of `ownFolder`. A
    /// relocatable schema needs a path; any other takes its own. Absent where the schema is not to be found.
    [[nodiscard]] static std::optional<GSettingsGroup> open(
        const QByteArray &schema, const QByteArray &path = {}, const QString &ownFolder = {});

    [[nodiscard]] std::optional<bool> boolean(const char *key) const;
    [[nodiscard]] std::optional<double> number(const char *key) const;
    /// A text, or the name of an enumerated value.
    [[nodiscard]] std::optional<QString> text(const char *key) const;
    [[nodiscard]] std::optional<QStringList> texts(const char *key) const;

    /// Each answers whether the value was accepted. The backend stores it later, without holding up the caller.
    [[nodiscard]] bool setBoolean(const char *key, bool value);
    /// Rounds where the key takes whole numbers.
    [[nodiscard]] bool setNumber(const char *key, double value);
    [[nodiscard]] bool setText(const char *key, const QString &value);

private:
    GSettingsGroup(GLibPointer<GSettingsSchema> schema, const QByteArray &path);

    [[nodiscard]] GLibPointer<GSettingsSchemaKey> key(const char *name) const;
    [[nodiscard]] GLibPointer<GVariant> value(const char *key) const;
    [[nodiscard]] bool set(const char *key, GVariant *floating);

    GLibPointer<GSettingsSchema> m_schema;
    GObjectPointer<GSettings> m_settings;
};

} // namespace moorline
