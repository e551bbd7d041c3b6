#include "platform/linux/desktop/StatusNotifierItem.h"

#include "platform/SymbolCatalogue.h"
#include "platform/linux/desktop/StatusNotifierMenu.h"
#include "platform/linux/desktop/StatusNotifierTypes.h"

#include <QDBusObjectPath>

namespace moorline {

namespace {

const QString itemPath = QStringLiteral("/StatusNotifierItem");
const QString itemInterface = QStringLiteral("org.kde.StatusNotifierItem");
/// What panels commonly ask for, so that none has to stretch a picture.
constexpr int pictureSides[] = {16, 18, 22, 24, 32, 48, 64};

QList<StatusNotifierPicture> pictures(const StatusBarItem &item, const SymbolCatalogue &symbols)
{
    QList<StatusNotifierPicture> result;
    for (const int side : pictureSides) {
        const QImage image = symbols.symbol({item.symbol, side / symbolSideToPointSize, 1, item.color});
        if (!image.isNull())
            result.append(StatusNotifierPicture::from(image));
    }
    return result;
}

QVariantMap itemProperties(const StatusBarItem &item, const SymbolCatalogue &symbols)
{
    const auto noPictures = QVariant::fromValue(QList<StatusNotifierPicture>());
    return {
        {QStringLiteral("Category"), QStringLiteral("ApplicationStatus")},
        {QStringLiteral("Id"), item.name},
        {QStringLiteral("Title"), item.name},
        {QStringLiteral("Status"), QStringLiteral("Active")},
        {QStringLiteral("WindowId"), 0},
        // A name would be taken from the theme in place of the pictures.
        {QStringLiteral("IconName"), QString()},
        {QStringLiteral("IconThemePath"), QString()},
        {QStringLiteral("IconPixmap"), QVariant::fromValue(pictures(item, symbols))},
        {QStringLiteral("OverlayIconName"), QString()},
        {QStringLiteral("OverlayIconPixmap"), noPictures},
        {QStringLiteral("AttentionIconName"), QString()},
        {QStringLiteral("AttentionIconPixmap"), noPictures},
        {QStringLiteral("AttentionMovieName"), QString()},
        {QStringLiteral("ToolTip"), QVariant::fromValue(StatusNotifierToolTip{{}, {}, item.name, {}})},
        {QStringLiteral("ItemIsMenu"), true},
        {QStringLiteral("Menu"), QVariant::fromValue(QDBusObjectPath(StatusNotifierMenu::path))},
    };
}

} // namespace

StatusNotifierItem::StatusNotifierItem(Bus &bus, const StatusBarItem &item, const SymbolCatalogue &symbols)
    : m_properties(itemProperties(item, symbols))
    , m_object(bus, itemPath, {interface()})
{
}

BusInterface StatusNotifierItem::interface()
{
    const auto s = [](const char *text) { return QString::fromLatin1(text); };
    const auto nothing = [](const QVariantList &) { return QVariantList(); };
    const auto openMenu = [this](const QVariantList &) {
        // Once the caller has its answer.
        QMetaObject::invokeMethod(this, &StatusNotifierItem::menuRequested, Qt::QueuedConnection);
        return QVariantList();
    };
    return {
        itemInterface,
        {
            {s("Activate"), {s("i"), s("i")}, {}, openMenu},
            {s("ContextMenu"), {s("i"), s("i")}, {}, openMenu},
            {s("SecondaryActivate"), {s("i"), s("i")}, {}, nothing},
            {s("Scroll"), {s("i"), s("s")}, {}, nothing},
        },
        [this] { return m_properties; },
    };
}

} // namespace moorline
