#include "platform/linux/icons/IconFinder.h"

#include "platform/linux/desktop/DesktopEntryFile.h"
#include "platform/linux/icons/IconPicture.h"

#include <QDir>
#include <QtMath>

namespace moorline {

namespace {

/// A side that is whole but for the error of its computation shall not become one larger.
constexpr qreal roundingError = 1e-6;

/// What stands for a thing without an icon of its own, the first that the theme has.
const QStringList anyApplication{
    QStringLiteral("application-x-executable"), QStringLiteral("application-default-icon")};
const QStringList anyFile{QStringLiteral("text-x-generic"), QStringLiteral("unknown")};

/// The names that the body has for images, in the words of the Icon Naming Specification.
QString themeName(const QString &name)
{
    if (name == QLatin1StringView("NSTrashEmpty"))
        return QStringLiteral("user-trash");
    if (name == QLatin1StringView("NSTrashFull"))
        return QStringLiteral("user-trash-full");
    if (name == QLatin1StringView("NSFolder"))
        return QStringLiteral("folder");
    return name;
}

} // namespace

struct IconFinder::Extent {
    int size;
    int scale;
    /// In device pixels.
    int side;
};

IconFinder::IconFinder(QStringList bases)
    : m_folders(std::move(bases))
{
}

QImage IconFinder::picture(const IconRequest &request, const QStringList &fileIcons)
{
    if (!(request.size > 0 && request.size <= 1024 && request.scale > 0 && request.scale <= 16))
        return {};
    const Extent extent{qCeil(request.size - roundingError), qCeil(request.scale - roundingError),
        qRound(request.size * request.scale)};
    QImage image;
    switch (request.kind) {
    case IconKind::application:
        image = ofApplication(request.subject, extent);
        break;
    case IconKind::file:
        image = firstOf(fileIcons + anyFile, extent);
        break;
    case IconKind::named:
        image = named(themeName(request.subject), extent);
        break;
    }
    image.setDevicePixelRatio(request.scale);
    return image;
}

QImage IconFinder::ofApplication(const QString &path, const Extent &extent)
{
    const auto entry = DesktopEntryFile::open(path);
    const QString icon = entry ? entry->localisedText(G_KEY_FILE_DESKTOP_KEY_ICON).value_or(QString()) : QString();
    const QImage own = QDir::isAbsolutePath(icon) ? iconPicture(icon, extent.side) : named(icon, extent);
    return own.isNull() ? firstOf(anyApplication, extent) : own;
}

QImage IconFinder::firstOf(const QStringList &names, const Extent &extent)
{
    for (const QString &name : names) {
        QImage image = named(name, extent);
        if (!image.isNull())
            return image;
    }
    return {};
}

QImage IconFinder::named(const QString &name, const Extent &extent)
{
    const QString clean = iconName(name);
    const auto path = clean.isEmpty() ? std::nullopt : m_folders.find(clean, extent.size, extent.scale);
    return path ? iconPicture(*path, extent.side) : QImage();
}

} // namespace moorline
