#include "platform/linux/desktop/SessionText.h"

#include "platform/linux/glib/GSettingsGroup.h"
#include "platform/linux/x11/DesktopSettingsClient.h"
#include "support/RegularFile.h"

#include <QStandardPaths>

namespace moorline {

namespace {

const QString kdeFile = QStringLiteral("kdeglobals");
constexpr qint64 largestFile = qint64(1024) * 1024;

constexpr auto interfaceSchema = "org.gnome.desktop.interface";

/// Null unless the schema is there and has the key: GSettings ends the program that asks for anything else.
GObjectPointer<GSettings> openInterface(const QByteArray &key)
{
    const auto group = GSettingsGroup::open(interfaceSchema);
    if (!group || !group->text(key.constData()))
        return nullptr;
    return GObjectPointer<GSettings>(g_settings_new(interfaceSchema));
}

} // namespace

SessionText::SessionText(
    const DesktopSettingsClient *settings, FileWatch &fileWatch, const QStringList &desktopNames, Names names)
    : m_settings(settings)
    , m_names(std::move(names))
    , m_gnome(openInterface(m_names.gnomes))
    , m_isKde(desktopNames.contains(QStringLiteral("KDE"), Qt::CaseInsensitive))
{
    if (m_isKde) {
        const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
        m_kdeWatch = fileWatch.watch(folder + u'/' + kdeFile, [this] { Q_EMIT changed(); });
    }
    if (settings)
        connect(settings, &DesktopSettingsClient::changed, this, &SessionText::changed);
    if (m_gnome) {
        m_handler = g_signal_connect_swapped(m_gnome.get(), ("changed::" + m_names.gnomes).constData(),
            G_CALLBACK(+[](SessionText *self) { Q_EMIT self->changed(); }), this);
    }
}

SessionText::~SessionText()
{
    if (m_gnome)
        g_signal_handler_disconnect(m_gnome.get(), m_handler);
}

std::optional<QString> SessionText::told() const
{
    const auto text = m_settings ? m_settings->text(m_names.told) : std::nullopt;
    return text ? std::optional(QString::fromUtf8(*text)) : std::nullopt;
}

QList<QByteArray> SessionText::kdeSettings() const
{
    QList<QByteArray> contents;
    if (!m_isKde)
        return contents;
    const QStringList files = QStandardPaths::locateAll(QStandardPaths::GenericConfigLocation, kdeFile);
    for (const QString &file : files)
        contents.append(regularFileContent(file, largestFile).value_or(QByteArray()));
    return contents;
}

QString SessionText::gnomes() const
{
    if (!m_gnome)
        return {};
    const GLibPointer<gchar> text(g_settings_get_string(m_gnome.get(), m_names.gnomes.constData()));
    return QString::fromUtf8(text.get());
}

} // namespace moorline
