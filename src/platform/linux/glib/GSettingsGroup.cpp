#include "platform/linux/glib/GSettingsGroup.h"

#include <QFile>
#include <cmath>
#include <limits>

namespace moorline {

namespace {

GLibPointer<GSettingsSchema> installedSchema(const QByteArray &schema)
{
    GSettingsSchemaSource *source = g_settings_schema_source_get_default();
    if (source == nullptr)
        return nullptr;
    return GLibPointer<GSettingsSchema>(g_settings_schema_source_lookup(source, schema.constData(), TRUE));
}

GLibPointer<GSettingsSchema> schemaInFolder(const QByteArray &schema, const QString &folder)
{
    if (folder.isEmpty())
        return nullptr;
    const GLibPointer<GSettingsSchemaSource> source(g_settings_schema_source_new_from_directory(
        QFile::encodeName(folder).constData(), g_settings_schema_source_get_default(), FALSE, nullptr));
    if (!source)
        return nullptr;
    return GLibPointer<GSettingsSchema>(g_settings_schema_source_lookup(source.get(), schema.constData(), FALSE));
}

bool isSettingsPath(const QByteArray &path)
{
    return path.startsWith('/') && path.endsWith('/') && !path.contains("//") && !path.contains('\0');
}

template <typename Integer>
std::optional<Integer> rounded(double value)
{
    const double whole = std::round(value);
    if (whole < static_cast<double>(std::numeric_limits<Integer>::min())
        || whole > static_cast<double>(std::numeric_limits<Integer>::max()))
        return std::nullopt;
    return static_cast<Integer>(whole);
}

/// The number in the key's own type, or null when that type cannot hold it.
GVariant *numberOfType(const GVariantType *type, double value)
{
    if (g_variant_type_equal(type, G_VARIANT_TYPE_DOUBLE))
        return g_variant_new_double(value);
    if (g_variant_type_equal(type, G_VARIANT_TYPE_INT32)) {
        const auto number = rounded<gint32>(value);
        return number ? g_variant_new_int32(*number) : nullptr;
    }
    if (g_variant_type_equal(type, G_VARIANT_TYPE_UINT32)) {
        const auto number = rounded<guint32>(value);
        return number ? g_variant_new_uint32(*number) : nullptr;
    }
    return nullptr;
}

} // namespace

std::optional<GSettingsGroup> GSettingsGroup::open(
    const QByteArray &schema, const QByteArray &path, const QString &ownFolder)
{
    auto found = installedSchema(schema);
    if (!found)
        found = schemaInFolder(schema, ownFolder);
    if (!found)
        return std::nullopt;
    const bool isRelocatable = g_settings_schema_get_path(found.get()) == nullptr;
    if (isRelocatable ? !isSettingsPath(path) : !path.isEmpty())
        return std::nullopt;
    return GSettingsGroup(std::move(found), path);
}

GSettingsGroup::GSettingsGroup(GLibPointer<GSettingsSchema> schema, const QByteArray &path)
    : m_schema(std::move(schema))
    , m_settings(g_settings_new_full(m_schema.get(), nullptr, path.isEmpty() ? nullptr : path.constData()))
{
}

std::optional<bool> GSettingsGroup::boolean(const char *key) const
{
    const auto stored = value(key);
    if (!stored || !g_variant_is_of_type(stored.get(), G_VARIANT_TYPE_BOOLEAN))
        return std::nullopt;
    return g_variant_get_boolean(stored.get()) != FALSE;
}

std::optional<double> GSettingsGroup::number(const char *key) const
{
    const auto stored = value(key);
    if (!stored)
        return std::nullopt;
    if (g_variant_is_of_type(stored.get(), G_VARIANT_TYPE_DOUBLE))
        return g_variant_get_double(stored.get());
    if (g_variant_is_of_type(stored.get(), G_VARIANT_TYPE_INT32))
        return g_variant_get_int32(stored.get());
    if (g_variant_is_of_type(stored.get(), G_VARIANT_TYPE_UINT32))
        return g_variant_get_uint32(stored.get());
    return std::nullopt;
}

std::optional<QString> GSettingsGroup::text(const char *key) const
{
    const auto stored = value(key);
    if (!stored || !g_variant_is_of_type(stored.get(), G_VARIANT_TYPE_STRING))
        return std::nullopt;
    return QString::fromUtf8(g_variant_get_string(stored.get(), nullptr));
}

std::optional<QStringList> GSettingsGroup::texts(const char *key) const
{
    const auto stored = value(key);
    if (!stored || !g_variant_is_of_type(stored.get(), G_VARIANT_TYPE_STRING_ARRAY))
        return std::nullopt;
    gsize count = 0;
    const GLibPointer<const gchar *> items(g_variant_get_strv(stored.get(), &count));
    QStringList all;
    for (gsize index = 0; index < count; ++index)
        all.append(QString::fromUtf8(items.get()[index]));
    return all;
}

bool GSettingsGroup::setBoolean(const char *key, bool value)
{
    return set(key, g_variant_new_boolean(value ? TRUE : FALSE));
}

bool GSettingsGroup::setNumber(const char *name, double value)
{
    const auto schemaKey = key(name);
    if (!schemaKey || !std::isfinite(value))
        return false;
    GVariant *number = numberOfType(g_settings_schema_key_get_value_type(schemaKey.get()), value);
    return number != nullptr && set(name, number);
}

bool GSettingsGroup::setText(const char *key, const QString &value)
{
    return set(key, g_variant_new_string(value.toUtf8().constData()));
}

GLibPointer<GSettingsSchemaKey> GSettingsGroup::key(const char *name) const
{
    if (!g_settings_schema_has_key(m_schema.get(), name))
        return nullptr;
    return GLibPointer<GSettingsSchemaKey>(g_settings_schema_get_key(m_schema.get(), name));
}

GLibPointer<GVariant> GSettingsGroup::value(const char *key) const
{
    if (!g_settings_schema_has_key(m_schema.get(), key))
        return nullptr;
    return GLibPointer<GVariant>(g_settings_get_value(m_settings.get(), key));
}

bool GSettingsGroup::set(const char *name, GVariant *floating)
{
    const GLibPointer<GVariant> value(g_variant_ref_sink(floating));
    const auto schemaKey = key(name);
    if (!schemaKey || !g_variant_is_of_type(value.get(), g_settings_schema_key_get_value_type(schemaKey.get()))
        || !g_settings_schema_key_range_check(schemaKey.get(), value.get())
        || !g_settings_is_writable(m_settings.get(), name))
        return false;
    return g_settings_set_value(m_settings.get(), name, value.get()) != FALSE;
}

} // namespace moorline
