#include "support/IconThemes.h"

#include "support/KdeSettings.h"

#include <algorithm>
#include <numeric>

namespace moorline {

namespace {

constexpr qsizetype longestName = 200;
const QString lastTheme = QStringLiteral("hicolor");

struct Range {
    int smallest;
    int largest;
};

/// The sizes a folder's icons do for, in points.
Range rangeOf(const IconFolder &folder)
{
    switch (folder.type) {
    case IconFolder::Type::fixed:
        return {folder.size, folder.size};
    case IconFolder::Type::scalable:
        return {folder.smallest, folder.largest};
    case IconFolder::Type::threshold:
        return {folder.size - folder.threshold, folder.size + folder.threshold};
    }
    Q_UNREACHABLE();
}

} // namespace

bool isMadeFor(const IconFolder &folder, int size, int scale)
{
    const Range range = rangeOf(folder);
    return folder.scale == scale && size >= range.smallest && size <= range.largest;
}

int distance(const IconFolder &folder, int size, int scale)
{
    const Range range = rangeOf(folder);
    return std::max({0, range.smallest * folder.scale - size * scale, size * scale - range.largest * folder.scale});
}

QList<qsizetype> lookupOrder(const QList<IconFolder> &folders, int size, int scale)
{
    QList<qsizetype> order(folders.size());
    std::iota(order.begin(), order.end(), qsizetype(0));
    const auto rank = [&](qsizetype index) {
        const IconFolder &folder = folders.at(index);
        return isMadeFor(folder, size, scale) ? -1 : distance(folder, size, scale);
    };
    std::stable_sort(order.begin(), order.end(), [&](qsizetype a, qsizetype b) { return rank(a) < rank(b); });
    return order;
}

QString iconName(const QString &written)
{
    QString name = written;
    for (const QLatin1StringView extension :
        {QLatin1StringView(".png"), QLatin1StringView(".svg"), QLatin1StringView(".xpm")}) {
        if (name.endsWith(extension)) {
            name.chop(extension.size());
            break;
        }
    }
    const bool isPath = name.contains(u'/') || name.contains(QChar(u'\0')) || name == u"." || name == u"..";
    return isPath || name.size() > longestName ? QString() : name;
}

QString sessionIconTheme(const SessionThemeFacts &facts)
{
    if (facts.told)
        return *facts.told;
    if (!facts.isKde)
        return facts.gnomes;
    for (const QByteArray &file : facts.kdeSettings) {
        if (const QByteArray name = kdeSetting(file, "Icons", "Theme"); !name.isEmpty())
            return QString::fromUtf8(name);
    }
    return QStringLiteral("breeze");
}

QString usableTheme(const QString &wanted, const QStringList &installed)
{
    if (installed.contains(wanted))
        return wanted;
    for (const QLatin1StringView known : {QLatin1StringView("Adwaita"), QLatin1StringView("breeze"),
             QLatin1StringView("Papirus"), QLatin1StringView("gnome")}) {
        if (installed.contains(known))
            return known;
    }
    return lastTheme;
}

} // namespace moorline
