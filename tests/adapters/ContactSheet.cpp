// Draws the weather symbols as the bar draws them into one picture:
//     moorline_contact_sheet <picture> [<enlargement>]

#include "platform/linux/desktop/SvgSymbols.h"

#include <QFontMetrics>
#include <QGuiApplication>
#include <QPainter>
#include <QTextStream>
#include <array>

namespace moorline {

namespace {

struct Weather {
    const char *label;
    const char *day;
    const char *night;
};

constexpr std::array weathers{
    Weather{"clear", "sun.max.fill", "moon.stars.fill"},
    Weather{"partly cloudy", "cloud.sun.fill", "cloud.moon.fill"},
    Weather{"overcast", "cloud.fill", "cloud.fill"},
    Weather{"fog", "cloud.fog.fill", "cloud.fog.fill"},
    Weather{"drizzle", "cloud.drizzle.fill", "cloud.drizzle.fill"},
    Weather{"freezing rain", "cloud.sleet.fill", "cloud.sleet.fill"},
    Weather{"rain", "cloud.rain.fill", "cloud.rain.fill"},
    Weather{"rain showers", "cloud.heavyrain.fill", "cloud.heavyrain.fill"},
    Weather{"snow", "cloud.snow.fill", "cloud.snow.fill"},
    Weather{"thunderstorm", "cloud.bolt.fill", "cloud.bolt.fill"},
    Weather{"hailstorm", "cloud.bolt.rain.fill", "cloud.bolt.rain.fill"},
};

struct Row {
    int pointSize;
    int scale;
    bool night;
};

constexpr std::array rows{
    Row{13, 1, false},
    Row{13, 1, true},
    Row{21, 1, false},
    Row{21, 1, true},
    Row{13, 2, false},
    Row{13, 2, true},
    Row{21, 2, false},
    Row{21, 2, true},
};

constexpr int labelWidth = 116;
constexpr int columnWidth = 88;
constexpr int headerHeight = 36;
constexpr int rowMargin = 14;
const QColor pill(0x14, 0x14, 0x16);
const QColor labelColor(255, 255, 255, 140);

int height(const Row &row)
{
    return row.pointSize * row.scale * 12 / 10 + rowMargin;
}

QSize sheetSize()
{
    int bottom = headerHeight;
    for (const Row &row : rows)
        bottom += height(row);
    return {labelWidth + columnWidth * int(weathers.size()), bottom + rowMargin};
}

QRect cell(int column, int top, int height)
{
    return {labelWidth + column * columnWidth, top, columnWidth, height};
}

void drawLabel(QPainter &painter, const QRect &place, const QString &text)
{
    painter.setPen(labelColor);
    painter.drawText(place, Qt::AlignCenter, text);
}

void drawSymbol(QPainter &painter, const QRect &place, const QString &name, const Row &row)
{
    QImage image =
        SvgSymbols().symbol({name, qreal(row.pointSize), qreal(row.scale), Qt::white, SymbolRendering::hierarchical});
    image.setDevicePixelRatio(1);
    QRect target(QPoint(), image.size());
    target.moveCenter(place.center());
    painter.drawImage(target, image);
}

void drawHeader(QPainter &painter)
{
    for (int column = 0; column < int(weathers.size()); ++column) {
        const QString label = QString::fromLatin1(weathers.at(size_t(column)).label);
        drawLabel(painter, cell(column, 0, headerHeight), label);
    }
}

void drawRow(QPainter &painter, const Row &row, int top)
{
    const QString when = row.night ? QStringLiteral("night") : QStringLiteral("day");
    const QString label = QStringLiteral("%1 pt at %2, %3").arg(row.pointSize).arg(row.scale).arg(when);
    drawLabel(painter, QRect(0, top, labelWidth, height(row)), label);
    for (int column = 0; column < int(weathers.size()); ++column) {
        const Weather &weather = weathers.at(size_t(column));
        const QString name = QString::fromLatin1(row.night ? weather.night : weather.day);
        drawSymbol(painter, cell(column, top, height(row)), name, row);
    }
}

QImage sheet()
{
    QImage image(sheetSize(), QImage::Format_RGB32);
    image.fill(pill);
    QPainter painter(&image);
    QFont font(QStringLiteral("Inter"));
    font.setPixelSize(11);
    painter.setFont(font);
    drawHeader(painter);
    int top = headerHeight;
    for (const Row &row : rows) {
        drawRow(painter, row, top);
        top += height(row);
    }
    return image;
}

int run(const QStringList &arguments)
{
    if (arguments.size() < 2) {
        QTextStream(stderr) << "usage: moorline_contact_sheet <picture> [<enlargement>]\n";
        return 2;
    }
    const int enlargement = std::max(1, arguments.value(2).toInt());
    const QImage drawn = sheet();
    return drawn.scaled(drawn.size() * enlargement).save(arguments.at(1)) ? 0 : 1;
}

} // namespace

} // namespace moorline

int main(int argc, char **argv)
{
    const QGuiApplication application(argc, argv);
    return moorline::run(QGuiApplication::arguments());
}
