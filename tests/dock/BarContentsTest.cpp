#include "dock/BarContents.h"

#include "harness/TestCase.h"

#include <limits>

using namespace moorline;
using namespace moorline::test;

namespace {

Settings bare()
{
    Settings settings;
    settings.appShortcuts.clear();
    settings.pinnedItems.clear();
    settings.showDownloadsFolder = false;
    settings.showTrash = false;
    return settings;
}

QList<AppShortcut> shortcuts(qsizetype count)
{
    QList<AppShortcut> result;
    for (qsizetype i = 0; i < count; ++i)
        result.append({QStringLiteral("/Applications/%1.app").arg(i), std::nullopt, QString::number(i)});
    return result;
}

const QDateTime noon(QDate(2025, 3, 4), QTime(12, 0));

} // namespace

class BarContentsTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void musicRecentAppsAndPinnedItemsNeedSomethingToShow()
    {
        const Settings settings = bare();
        using enum WidgetKind;
        QCOMPARE(visibleWidgets(settings, {}), (QList<WidgetKind>{clock, calendar, weather, forecast, appShortcut}));
        QCOMPARE(visibleWidgets(settings, {.musicVisible = true, .recentApps = 1}),
            (QList<WidgetKind>{clock, calendar, weather, forecast, music, appShortcut, recentApps}));
    }

    void theOrderAndTheDuplicatesOfTheSettingsStay()
    {
        Settings settings = bare();
        using enum WidgetKind;
        settings.enabledWidgets = {calendar, clock, calendar};
        QCOMPARE(visibleWidgets(settings, {}), settings.enabledWidgets);
    }

    void anyOneThingKeepsThePinnedItems()
    {
        Settings settings = bare();
        settings.enabledWidgets = {WidgetKind::pinnedItems};
        QVERIFY(visibleWidgets(settings, {}).isEmpty());
        settings.showTrash = true;
        QCOMPARE(visibleWidgets(settings, {}), settings.enabledWidgets);
        settings.showTrash = false;
        settings.showDownloadsFolder = true;
        QCOMPARE(visibleWidgets(settings, {}), settings.enabledWidgets);
        settings.showDownloadsFolder = false;
        settings.pinnedItems = {{QStringLiteral("/a"), QStringLiteral("a")}};
        QCOMPARE(visibleWidgets(settings, {}), settings.enabledWidgets);
    }

    void justTheTrashIsOneGroupOfOneIcon()
    {
        Settings settings = bare();
        settings.showTrash = true;
        QCOMPARE(iconCounts({WidgetKind::pinnedItems}, settings, {}), (IconCounts{1, 1}));
    }

    void everyIconWidgetInTheRowCountsOnce()
    {
        Settings settings = bare();
        settings.appShortcuts = shortcuts(5);
        settings.showTrash = settings.showDownloadsFolder = true;
        settings.pinnedItems = {{QStringLiteral("/a"), QStringLiteral("a")}};
        using enum WidgetKind;
        const BarState state{.recentApps = 3};
        QCOMPARE(iconCounts({clock, appShortcut, recentApps, pinnedItems}, settings, state), (IconCounts{11, 3}));
        QCOMPARE(iconCounts({appShortcut, appShortcut}, settings, state), (IconCounts{5, 1}));
        QCOMPARE(iconCounts({clock}, settings, state), (IconCounts{0, 0}));
    }

    void withoutIconsTheSizeIsTheLargest() { QCOMPARE(fittedIconSize({0, 0}, 5000, 30, 1424), 46.0); }

    void manyIconsShrinkTogetherAndNeverBelowTheSmallest()
    {
        // 30 icons of 46 points, 29 gaps of 6, and 300 points of other widgets.
        const qreal measured = 30 * 46 + 29 * 6 + 300;
        QCOMPARE(fittedIconSize({30, 1}, measured, 46, 1424), 31.0);
        QCOMPARE(fittedIconSize({90, 1}, 90 * 46 + 89 * 6, 46, 1424), 24.0);
    }

    void iconsGrowBackAsSoonAsThereIsRoom()
    {
        const qreal measured = 10 * 30 + 9 * 6 + 300;
        QCOMPARE(fittedIconSize({10, 1}, measured, 30, 1424), 46.0);
    }

    void aChangeOfLessThanAPointIsIgnored()
    {
        const qreal measured = 10 * 30.5 + 9 * 6 + 300;
        // Room for exactly 31 points would be a change of half a point.
        QCOMPARE(fittedIconSize({10, 1}, measured, 30.5, 300 + 9 * 6 + 10 * 31), 30.5);
    }

    void sizeAndWidthSettleAfterOnePass()
    {
        qreal size = 46;
        const auto width = [&size] { return 30 * size + 27 * 6 + 250; };
        size = fittedIconSize({30, 3}, width(), size, 1424);
        const qreal settled = size;
        QVERIFY(width() <= 1424);
        QCOMPARE(fittedIconSize({30, 3}, width(), size, 1424), settled);
    }

    void musicThatNeverHidesIsAlwaysVisible()
    {
        Settings settings;
        settings.hideMusicWhenIdle = false;
        QVERIFY(isMusicVisible(settings, {}, noon));
    }

    void musicIsVisibleAroundPlayback()
    {
        const Settings settings;
        QVERIFY(!isMusicVisible(settings, {}, noon));
        QVERIFY(isMusicVisible(settings, {.isPlaying = true, .lastPlaybackAt = {}}, noon));
        QVERIFY(isMusicVisible(settings, {.isPlaying = false, .lastPlaybackAt = noon.addSecs(-299)}, noon));
        QVERIFY(!isMusicVisible(settings, {.isPlaying = false, .lastPlaybackAt = noon.addSecs(-300)}, noon));
    }

    void anAbsurdTimeoutDoesNotOverflow()
    {
        Settings settings;
        settings.musicIdleTimeoutMinutes = std::numeric_limits<qint64>::max();
        QVERIFY(isMusicVisible(settings, {.isPlaying = false, .lastPlaybackAt = noon.addYears(-3)}, noon));
        settings.musicIdleTimeoutMinutes = std::numeric_limits<qint64>::min();
        QVERIFY(!isMusicVisible(settings, {.isPlaying = false, .lastPlaybackAt = noon}, noon));
    }
};

MOORLINE_TEST(BarContentsTest);

#include "BarContentsTest.moc"
