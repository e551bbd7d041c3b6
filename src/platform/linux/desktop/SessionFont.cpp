#include "platform/linux/desktop/SessionFont.h"

#include "support/FontNames.h"
#include "support/RegularFile.h"

#include <QStandardPaths>
#include <utility>

namespace moorline {

namespace {

const QString kdeSettings = QStringLiteral("kdeglobals");
constexpr qint64 largestFile = qint64(1024) * 1024;

/// The user's own before those of the system.
QList<QByteArray> readKdeSettings()
{
    const QStringList files = QStandardPaths::locateAll(QStandardPaths::GenericConfigLocation, kdeSettings);
    QList<QByteArray> contents;
    for (const QString &file : files)
        contents.append(regularFileContent(file, largestFile).value_or(QByteArray()));
    return contents;
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
    return sessionFontFamily({
        .told = m_text.told(),
        .isKde = m_isKde,
        .kdeSettings = m_isKde ? readKdeSettings() : QList<QByteArray>(),
        .gnomes = m_text.gnomes(),
    });
}

void SessionFont::look()
{
    const QString family = currentFamily();
    if (std::exchange(m_family, family) != family)
        Q_EMIT familyChanged();
}

} // namespace moorline
