#include "platform/linux/desktop/SessionFont.h"

#include "support/FontNames.h"
#include "support/RegularFile.h"

#include <QStandardPaths>
#include <utility>

namespace moorline {

namespace {

const QString kdeSettings = QStringLiteral("kdeglobals");
/// What KDE takes where its settings name none.
const QString kdeDefault = QStringLiteral("Noto Sans");
constexpr qint64 largestFile = qint64(1024) * 1024;

/// The user's own settings come before those of the system.
QString kdeFamily()
{
    const QStringList files = QStandardPaths::locateAll(QStandardPaths::GenericConfigLocation, kdeSettings);
    for (const QString &file : files) {
        if (const auto family = familyInKdeSettings(regularFileContent(file, largestFile).value_or(QByteArray())))
            return *family;
    }
    return kdeDefault;
}

} // namespace

SessionFont::SessionFont(const DesktopSettingsClient *settings, FileWatch &fileWatch, const QStringList &desktopNames)
    : m_text(settings, {.told = "Gtk/FontName", .gnomes = "font-name"})
    , m_isKde(desktopNames.contains(QStringLiteral("KDE"), Qt::CaseInsensitive))
{
    connect(&m_text, &SessionText::changed, this, &SessionFont::look);
    if (m_isKde) {
        const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
        m_kdeWatch = fileWatch.watch(folder + u'/' + kdeSettings, [this] { look(); });
    }
    m_family = currentFamily();
}

QString SessionFont::currentFamily() const
{
    if (const auto told = m_text.told())
        return familyInDescription(*told);
    return m_isKde ? kdeFamily() : familyInDescription(m_text.gnomes());
}

void SessionFont::look()
{
    const QString family = currentFamily();
    if (std::exchange(m_family, family) != family)
        Q_EMIT familyChanged();
}

} // namespace moorline
