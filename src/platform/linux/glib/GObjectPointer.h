#pragma once

#include <gio/gio.h>
#include <memory>

namespace moorline {

/// Gives back what GLib hands out, each kind in its own way.
struct GLibReleaser {
    void operator()(GSettingsSchema *schema) const { g_settings_schema_unref(schema); }
    void operator()(GSettingsSchemaKey *key) const { g_settings_schema_key_unref(key); }
    void operator()(GSettingsSchemaSource *source) const { g_settings_schema_source_unref(source); }
    void operator()(GVariant *variant) const { g_variant_unref(variant); }
    void operator()(GError *error) const { g_error_free(error); }
    /// Of what its owner lent to it.
    void operator()(GList *list) const { g_list_free(list); }
    void operator()(GKeyFile *keyFile) const { g_key_file_unref(keyFile); }
    void operator()(gchar *text) const { g_free(text); }
    void operator()(gchar **texts) const { g_strfreev(texts); }
    void operator()(const gchar **array) const { g_free(array); }
};

/// Owns a reference to a GLib value that is not a GObject: GLibPointer<GVariant>, GLibPointer<gchar>.
template <typename T>
using GLibPointer = std::unique_ptr<T, GLibReleaser>;

struct GObjectReleaser {
    void operator()(gpointer object) const { g_object_unref(object); }
};

/// Owns one reference to a GObject.
template <typename T>
using GObjectPointer = std::unique_ptr<T, GObjectReleaser>;

} // namespace moorline
