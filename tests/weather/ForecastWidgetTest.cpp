#include "weather/ForecastWidget.h"

#include "TileFixture.h"
#include "harness/FontScope.h"
#include "harness/LocaleScope.h"
#include "harness/TestCase.h"
#include "theme/Text.h"
#include "theme/Theme.h"

using namespace moorline;
using namespace moorline::test;

namespace {

constexpr TextStyle weekdayStyle{.size = 10, .weight = QFont::Medium, .tracking = 0.5};
constexpr TextStyle temperatureStyle{.size = 11, .weight = QFont::Medium};

/// One day: three lines, each in the middle of the column.
struct Column {
    QString weekday;
    QString symbol;
    QString maximum;
    QString minimum;

    [[nodiscard]] qreal weekdayWidth() const { return textSize(weekday, weekdayStyle).width() - 0.5; }
    [[nodiscard]] qreal maximumWidth() const { return textSize(maximum, temperatureStyle).width(); }
    [[nodiscard]] qreal temperaturesWidth() const
    {
        return maximumWidth() + 4 + textSize(minimum, temperatureStyle).width();
    }
    [[nodiscard]] qreal width() const { return std::ceil(std::max(weekdayWidth(), temperaturesWidth())); }

    void draw(QPainter &painter, const Symbols &symbols, qreal middle) const
    {
        drawText(painter, {middle - weekdayWidth() / 2, 0}, weekday, weekdayStyle, Theme::tertiaryText);
        qreal y = textSize(weekday, weekdayStyle).height() + 3;
        const QSizeF size = symbols.size(symbol, 13);
        symbols.draw(
            painter, {middle - size.width() / 2, y}, symbol, 13, Theme::primaryText, SymbolRendering::hierarchical);
        y += size.height() + 3;
        const qreal x = middle - temperaturesWidth() / 2;
        drawText(painter, {x, y}, maximum, temperatureStyle, Theme::primaryText);
        drawText(painter, {x + maximumWidth() + 4, y}, minimum, temperatureStyle, Theme::tertiaryText);
    }
};

const Column tuesday{
    QStringLiteral("TUE"), QStringLiteral("cloud.sun.fill"), QStringLiteral("63°"), QStringLiteral("49°")};
const Column wednesday{
    QStringLiteral("WED"), QStringLiteral("cloud.rain.fill"), QStringLiteral("57°"), QStringLiteral("47°")};

QJsonObject twoDays()
{
    return replies::forecastWith(
        QStringLiteral("daily"), QStringLiteral("time"), replies::texts({"2025-03-04", "2025-03-05"}));
}

} // namespace

class ForecastWidgetTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void takesTheSizeOfItsTextsWhenTheFontChanges()
    {
        TileFixture fixture;
        fixture.answerForecast(replies::forecast());
        verifyFollowsTheFont([&] { return std::make_unique<ForecastWidget>(fixture.context()); });
    }

    void withoutAForecastItIsEmpty()
    {
        TileFixture fixture;
        ForecastWidget widget(fixture.context());
        QCOMPARE(widget.size(), QSizeF(0, 0));
        QVERIFY(fixture.client.fail());
        QCOMPARE(widget.size(), QSizeF(0, 0));
    }

    void everyDayHasItsColumn()
    {
        TileFixture fixture;
        ForecastWidget widget(fixture.context());
        QVERIFY(fixture.answerForecast());
        qreal width = 2 * 16;
        for (const auto &[weekday, maximum, minimum] :
            {std::tuple("TUE", "63°", "49°"), std::tuple("WED", "57°", "47°"), std::tuple("THU", "58°", "45°")}) {
            const qreal temperatures = textSize(QString::fromUtf8(maximum), temperatureStyle).width() + 4
                + textSize(QString::fromUtf8(minimum), temperatureStyle).width();
            const qreal name = textSize(QString::fromUtf8(weekday), weekdayStyle).width() - 0.5;
            width += std::ceil(std::max(temperatures, name));
        }
        QCOMPARE(widget.size().width(), width);
        const qreal symbol = fixture.symbols.size(QStringLiteral("cloud.sun.fill"), 13).height();
        const qreal lines = textSize({}, weekdayStyle).height() + symbol + textSize({}, temperatureStyle).height();
        QCOMPARE(widget.size().height(), std::ceil(lines + 3 + 3));
    }

    void symbolsAreThoseOfTheDay()
    {
        TileFixture fixture;
        ForecastWidget widget(fixture.context());
        QJsonObject reply = replies::forecastWith(QStringLiteral("current"), QStringLiteral("is_day"), 0);
        QVERIFY(fixture.answerForecast(reply));
        paint(widget);
        for (const char *name : {"cloud.sun.fill", "cloud.rain.fill", "cloud.fill"}) {
            const SymbolRequest drawn = fixture.lastRequest(QString::fromLatin1(name));
            QCOMPARE(drawn.pointSize, 13.0);
            QCOMPARE(drawn.rendering, SymbolRendering::hierarchical);
        }
        QCOMPARE(fixture.lastRequest(QStringLiteral("cloud.moon.fill")).name, QString());
    }

    void paintsTheDaysSideBySide_data() { addScales(); }
    void paintsTheDaysSideBySide()
    {
        QFETCH(const qreal, scale);
        TileFixture fixture;
        ForecastWidget widget(fixture.context());
        QVERIFY(fixture.answerForecast(twoDays()));
        const qreal second = tuesday.width() + 16;
        const QSizeF size(second + wednesday.width(), widget.size().height());
        const auto draw = [&](QPainter &painter) {
            tuesday.draw(painter, fixture.symbols, tuesday.width() / 2);
            wednesday.draw(painter, fixture.symbols, second + wednesday.width() / 2);
        };
        QCOMPARE(painted(widget, scale), drawn(size, scale, draw));
    }

    void theTooltipNamesWhatAClickDoes()
    {
        TileFixture fixture;
        QCOMPARE(ForecastWidget(fixture.context()).toolTip(), QStringLiteral("Open Weather"));
    }

    void aShorterForecastMakesItNarrower()
    {
        TileFixture fixture;
        ForecastWidget widget(fixture.context());
        QVERIFY(fixture.answerForecast());
        const qreal before = widget.size().width();
        fixture.refresh(twoDays());
        QVERIFY(widget.size().width() < before - 16);
        fixture.refresh(replies::forecastWith(QStringLiteral("daily")));
        QCOMPARE(widget.size().width(), 0.0);
    }

    void aFailureKeepsTheForecast()
    {
        TileFixture fixture;
        ForecastWidget widget(fixture.context());
        QVERIFY(fixture.answerForecast());
        const QSizeF before = widget.size();
        [[maybe_unused]] const auto unwatched = fixture.service->refresh();
        QVERIFY(fixture.client.fail());
        QCOMPARE(widget.size(), before);
    }

    void sameDaysPaintNothing()
    {
        TileFixture fixture;
        QVERIFY(fixture.answerForecast());
        ForecastWidget widget(fixture.context());
        RepaintCounter counter(widget);
        fixture.clock.advance(std::chrono::minutes(1));
        fixture.refresh(replies::forecastWith(QStringLiteral("current"), QStringLiteral("temperature_2m"), 70));
        QCOMPARE(counter.takeRepaints(), 0);
    }

    void everythingIsPaintedInside()
    {
        TileFixture fixture;
        ForecastWidget widget(fixture.context());
        QVERIFY(fixture.answerForecast());
        const QImage image = painted(widget, 2);
        const auto isInked = [&image](int x) {
            for (int y = 0; y < image.height(); ++y) {
                if (qAlpha(image.pixel(x, y)) > 0)
                    return true;
            }
            return false;
        };
        int first = 0;
        int last = image.width() - 1;
        while (first < last && !isInked(first))
            ++first;
        while (last > first && !isInked(last))
            --last;
        // The columns reach from edge to edge, but for the space around the letters.
        QVERIFY(first <= 6);
        QVERIFY(last >= image.width() - 7);
    }

    void aClickOpensTheWeatherApplication()
    {
        TileFixture fixture;
        ForecastWidget widget(fixture.context());
        QVERIFY(fixture.answerForecast());
        Stage stage(widget);
        stage.press({10, 10});
        stage.release({10, 10});
        QCOMPARE(fixture.timesOpened, 1);
    }
};

MOORLINE_TEST(ForecastWidgetTest);

#include "ForecastWidgetTest.moc"
