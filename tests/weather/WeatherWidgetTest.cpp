#include "weather/WeatherWidget.h"

#include "TileFixture.h"
#include "harness/FontScope.h"
#include "harness/TestCase.h"
#include "theme/Text.h"
#include "theme/Theme.h"

using namespace moorline;
using namespace moorline::test;

namespace {

constexpr TextStyle temperatureStyle{.size = 20, .weight = QFont::DemiBold};
constexpr TextStyle captionStyle{.size = 11};
constexpr qreal padding = 5;
constexpr qreal besideTheSymbol = padding + 24 + 9;

/// The two lines of the widget, the caption below the temperature.
struct Lines {
    QString temperature;
    QString caption;
    qreal left;

    [[nodiscard]] QSizeF temperatureSize() const { return textSize(temperature, temperatureStyle); }
    [[nodiscard]] QSizeF captionSize() const { return textSize(caption, captionStyle); }

    [[nodiscard]] QSizeF widgetSize() const
    {
        const qreal width = std::ceil(std::max(temperatureSize().width(), captionSize().width()));
        return {
            left + width + padding, padding + std::ceil(temperatureSize().height() + captionSize().height()) + padding};
    }

    void draw(QPainter &painter) const
    {
        drawText(painter, {left, padding}, temperature, temperatureStyle, Theme::primaryText);
        drawText(painter, {left, padding + temperatureSize().height()}, caption, captionStyle, Theme::tertiaryText);
    }
};

} // namespace

class WeatherWidgetTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void takesTheSizeOfItsTextsWhenTheFontChanges()
    {
        TileFixture fixture;
        fixture.answerForecast(replies::forecast());
        verifyFollowsTheFont([&] { return std::make_unique<WeatherWidget>(fixture.context()); });
    }

    void loadsWithoutASymbol()
    {
        TileFixture fixture;
        WeatherWidget widget(fixture.context());
        QCOMPARE(widget.helpText(), QStringLiteral("Weather"));
        QCOMPARE(widget.toolTip(), QStringLiteral("Weather"));
        const qreal text = std::max(textSize(QStringLiteral("—°"), temperatureStyle).width(),
            textSize(QStringLiteral("Loading"), captionStyle).width());
        QCOMPARE(widget.size().width(), 5 + std::ceil(text) + 5);
        QVERIFY(fixture.images.requests.isEmpty());
    }

    void saysThatItIsUnavailable()
    {
        TileFixture fixture;
        const WeatherWidget widget(fixture.context());
        QVERIFY(fixture.client.fail());
        const qreal text = std::max(textSize(QStringLiteral("—°"), temperatureStyle).width(),
            textSize(QStringLiteral("Unavailable"), captionStyle).width());
        QCOMPARE(widget.size().width(), 5 + std::ceil(text) + 5);
        QCOMPARE(widget.toolTip(), QStringLiteral("Weather"));
    }

    void showsTheWeatherWhenItComes()
    {
        TileFixture fixture;
        WeatherWidget widget(fixture.context());
        QVERIFY(fixture.answerForecast());
        QCOMPARE(widget.toolTip(), QStringLiteral("Partly cloudy\nFeels like 59°"));
        const qreal text = std::max(textSize(QStringLiteral("60°"), temperatureStyle).width(),
            textSize(QStringLiteral("San Francisco"), captionStyle).width());
        QCOMPARE(widget.size().width(), 5 + 24 + 9 + std::ceil(text) + 5);
        paint(widget, 2);
        const SymbolRequest drawn = fixture.lastRequest(QStringLiteral("cloud.sun.fill"));
        QCOMPARE(drawn.pointSize, 21.0);
        QCOMPARE(drawn.scale, 2.0);
        QCOMPARE(drawn.rendering, SymbolRendering::hierarchical);
        QCOMPARE(drawn.color, Theme::primaryText);
    }

    void aClearNightShowsTheMoon()
    {
        TileFixture fixture;
        WeatherWidget widget(fixture.context());
        QJsonObject current = replies::forecast()[QStringLiteral("current")].toObject();
        current[QStringLiteral("is_day")] = 0;
        current[QStringLiteral("weather_code")] = 0;
        QVERIFY(fixture.answerForecast(replies::forecastWith(QStringLiteral("current"), current)));
        paint(widget);
        QCOMPARE(fixture.images.requests.last().name, QStringLiteral("moon.stars.fill"));
    }

    void theSymbolStandsInTheMiddleOfItsPlace()
    {
        TileFixture fixture;
        WeatherWidget widget(fixture.context());
        QVERIFY(fixture.answerForecast());
        // The fake symbol is a square: its ink tells where the widget put it.
        const QImage image = painted(widget);
        QList<int> columns;
        for (int x = 0; x < 5 + 24 + 7; ++x) {
            if (qAlpha(image.pixel(x, int(widget.size().height() / 2))) > 0)
                columns.append(x);
        }
        QVERIFY(!columns.isEmpty());
        const double middle = (columns.first() + columns.last() + 1) / 2.0;
        QVERIFY(std::abs(middle - (5 + 12)) <= 1);
    }

    void paintsTheWeather_data() { addScales(); }
    void paintsTheWeather()
    {
        QFETCH(const qreal, scale);
        TileFixture fixture;
        WeatherWidget widget(fixture.context());
        QVERIFY(fixture.answerForecast());
        const Lines lines{QStringLiteral("60°"), QStringLiteral("San Francisco"), besideTheSymbol};
        const auto draw = [&](QPainter &painter) {
            const QString name = QStringLiteral("cloud.sun.fill");
            const QSizeF symbol = fixture.symbols.size(name, 21);
            const QPointF corner(
                padding + (24 - symbol.width()) / 2, (lines.widgetSize().height() - symbol.height()) / 2);
            fixture.symbols.draw(painter, corner, name, 21, Theme::primaryText, SymbolRendering::hierarchical);
            lines.draw(painter);
        };
        QCOMPARE(painted(widget, scale), drawn(lines.widgetSize(), scale, draw));
    }

    void paintsTextAloneWhileItLoads_data() { addScales(); }
    void paintsTextAloneWhileItLoads()
    {
        QFETCH(const qreal, scale);
        TileFixture fixture;
        WeatherWidget widget(fixture.context());
        const Lines lines{QStringLiteral("—°"), QStringLiteral("Loading"), padding};
        const auto draw = [&lines](QPainter &painter) { lines.draw(painter); };
        QCOMPARE(painted(widget, scale), drawn(lines.widgetSize(), scale, draw));
    }

    void keptWeatherKeepsItsPlace()
    {
        TileFixture fixture;
        WeatherWidget widget(fixture.context());
        QVERIFY(fixture.answerForecast());
        const QImage sanFrancisco = painted(widget);
        fixture.chooseCity(QStringLiteral("Oslo"), 59.91);
        QCOMPARE(fixture.service->resolvedLocation()->name, QStringLiteral("Oslo"));
        QCOMPARE(painted(widget), sanFrancisco);
        QVERIFY(fixture.client.fail());
        QCOMPARE(painted(widget), sanFrancisco);
        fixture.refresh(replies::forecast());
        const Lines lines{QStringLiteral("60°"), QStringLiteral("Oslo"), besideTheSymbol};
        QCOMPARE(widget.size(), lines.widgetSize());
        QVERIFY(painted(widget) != sanFrancisco);
    }

    void aLongNameIsShortened()
    {
        TileFixture fixture;
        WeatherWidget widget(fixture.context());
        fixture.change([](Settings &settings) { settings.location.name = QString(200, u'W'); });
        QVERIFY(fixture.answerForecast());
        QVERIFY(widget.size().width() <= 5 + 24 + 9 + 160 + 5);
        QVERIFY(widget.size().width() > 5 + 24 + 9 + 120 + 5);
    }

    void sameWeatherPaintsNothing()
    {
        TileFixture fixture;
        QVERIFY(fixture.answerForecast());
        WeatherWidget widget(fixture.context());
        RepaintCounter counter(widget);
        fixture.clock.advance(std::chrono::minutes(1));
        fixture.refresh(replies::forecast());
        QCOMPARE(counter.takeRepaints(), 0);
        // Nor does what is not shown.
        fixture.refresh(replies::forecastWith(QStringLiteral("current"), QStringLiteral("relative_humidity_2m"), 40));
        QCOMPARE(counter.takeRepaints(), 0);
        fixture.refresh(replies::forecastWith(QStringLiteral("current"), QStringLiteral("temperature_2m"), 70));
        QCOMPARE(counter.takeRepaints(), 1);
    }

    void aClickOpensTheWeatherApplication()
    {
        TileFixture fixture;
        WeatherWidget widget(fixture.context());
        Stage stage(widget);
        stage.press({10, 10});
        QCOMPARE(fixture.timesOpened, 0);
        stage.release({12, 10});
        QCOMPARE(fixture.timesOpened, 1);
    }

    void aDoubleClickOpensItOnce()
    {
        TileFixture fixture;
        WeatherWidget widget(fixture.context());
        Stage stage(widget);
        stage.doubleClick({10, 10});
        QCOMPARE(fixture.timesOpened, 1);
    }

    void theEdgesOfThePillTakeTheClickToo()
    {
        TileFixture fixture;
        WeatherWidget widget(fixture.context());
        widget.setPos(0, 30);
        Stage stage(widget);
        const int bottom = 30 + int(widget.size().height());
        for (const int y : {30 - 23, bottom + 23}) {
            stage.press({10, y});
            stage.release({10, y});
        }
        QCOMPARE(fixture.timesOpened, 2);
        stage.press({10, 30 - 26});
        stage.release({10, 30 - 26});
        QCOMPARE(fixture.timesOpened, 2);
    }

    void isAButtonThatSaysTheWeather()
    {
        TileFixture fixture;
        QVERIFY(fixture.answerForecast());
        const WeatherWidget widget(fixture.context());
        QCOMPARE(widget.description().role, QAccessible::Button);
        QCOMPARE(widget.description().name, QStringLiteral("Weather"));
        QVERIFY2(widget.description().state.contains(QStringLiteral("°, ")), qPrintable(widget.description().state));
        const WeatherWidget closed(
            {.service = *fixture.service, .symbols = fixture.symbols, .openWeatherApp = nullptr});
        QCOMPARE(closed.description().role, QAccessible::StaticText);
    }

    void aPressThatEndsElsewhereOpensNothing()
    {
        TileFixture fixture;
        WeatherWidget widget(fixture.context());
        Stage stage(widget);
        stage.press({10, 10});
        stage.release({250, 90});
        QCOMPARE(fixture.timesOpened, 0);
    }

    void otherButtonsOpenNothing()
    {
        TileFixture fixture;
        WeatherWidget widget(fixture.context());
        Stage stage(widget);
        for (const Qt::MouseButton button : {Qt::RightButton, Qt::MiddleButton}) {
            stage.press({10, 10}, button);
            stage.release({10, 10}, button);
        }
        QCOMPARE(fixture.timesOpened, 0);
    }

    void anotherButtonSpoilsTheClick()
    {
        TileFixture fixture;
        WeatherWidget widget(fixture.context());
        Stage stage(widget);
        stage.press({10, 10});
        stage.press({10, 10}, Qt::RightButton);
        stage.release({10, 10}, Qt::RightButton);
        QCOMPARE(fixture.timesOpened, 0);
    }

    void withoutAnApplicationAClickIsNoHarm()
    {
        TileFixture fixture;
        WeatherWidget widget({*fixture.service, fixture.symbols, nullptr});
        Stage stage(widget);
        stage.press({10, 10});
        stage.release({10, 10});
        QCOMPARE(fixture.timesOpened, 0);
    }
};

MOORLINE_TEST(WeatherWidgetTest);

#include "WeatherWidgetTest.moc"
