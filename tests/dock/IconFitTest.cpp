#include "DockFixture.h"
#include "dock/Pill.h"
#include "harness/TestCase.h"

#include <QSignalSpy>

using namespace moorline;
using namespace moorline::test;

namespace {

/// As wide as its icons, which stand 6 points apart.
class Icons final : public BarWidget {
public:
    Icons(const SettingsStore &store, qsizetype (*count)(const Settings &))
        : m_store(store)
        , m_count(count)
    {
        connect(&store, &SettingsStore::settingsDidChange, this, &Icons::refresh);
    }
    void setIconSize(qreal size) override
    {
        m_size = size;
        refresh();
    }

private:
    void refresh()
    {
        const auto count = qreal(m_count(m_store.settings()));
        setNaturalSize({count * m_size + (count - 1) * 6, m_size});
    }

    const SettingsStore &m_store;
    qsizetype (*m_count)(const Settings &);
    qreal m_size = 0;
};

/// A bar of shortcuts and pinned items on a screen 1440 points wide, which has room for a pill of 1424.
struct Fixture : DockFixture {
    Fixture()
    {
        change([](Settings &settings) {
            settings.enabledWidgets = {WidgetKind::appShortcut, WidgetKind::pinnedItems};
            settings.appShortcuts.clear();
            settings.showDownloadsFolder = settings.showTrash = true;
        });
        makeOther = [this](WidgetKind kind) -> std::unique_ptr<BarWidget> {
            if (kind == WidgetKind::pinnedItems)
                return std::make_unique<Icons>(store, [](const Settings &) -> qsizetype { return 2; });
            return std::make_unique<Icons>(
                store, [](const Settings &settings) { return settings.appShortcuts.size(); });
        };
    }

    std::unique_ptr<DockBarView> make(int shortcuts)
    {
        setShortcuts(shortcuts);
        return std::make_unique<DockBarView>(barContext(), [this](qreal width) { widths.append(width); });
    }

    void setShortcuts(int count)
    {
        change([count](Settings &settings) {
            settings.appShortcuts.clear();
            for (int i = 0; i < count; ++i)
                settings.appShortcuts.append({.path = QStringLiteral("/Applications/%1.app").arg(i),
                    .bundleIdentifier = std::nullopt,
                    .name = QStringLiteral("App")});
        });
    }

    QList<qreal> widths;
};

} // namespace

class IconFitTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void aListThatFitsHasTheLargestIcons()
    {
        Fixture fixture;
        const auto bar = fixture.make(20);
        QCOMPARE(bar->iconSize(), 46.0);
        QCOMPARE(fixture.widths.last(), 16 + (20 * 46 + 19 * 6) + 29 + (2 * 46 + 6) + 20.0);
    }

    void aLongListShrinksAllIconsTogether()
    {
        Fixture fixture;
        const auto bar = fixture.make(30);
        // 1424 less 65 that are no icons, less 180 between 32 icons in two groups, is 36 points and a bit for each.
        QCOMPARE(bar->iconSize(), 36.0);
        QCOMPARE(fixture.widths.last(), 65.0 + 180 + 32 * 36);
        QVERIFY(fixture.widths.last() <= 1424);
    }

    void noIconIsSmallerThanTwentyFour()
    {
        Fixture fixture;
        const auto bar = fixture.make(60);
        QCOMPARE(bar->iconSize(), 24.0);
        QVERIFY(fixture.widths.last() > 1424);
    }

    void iconsGrowBackWhereThereIsRoom()
    {
        Fixture fixture;
        const auto bar = fixture.make(60);
        fixture.setShortcuts(10);
        QCOMPARE(bar->iconSize(), 46.0);
    }

    void anotherScreenIsAnotherRoom()
    {
        Fixture fixture;
        const auto bar = fixture.make(30);
        fixture.screens.set({FakeScreens::screen({0, 0, 1920, 1080})});
        bar->refit();
        QCOMPARE(bar->iconSize(), 46.0);
        fixture.screens.set({FakeScreens::screen({0, 0, 1440, 900})});
        bar->refit();
        QCOMPARE(bar->iconSize(), 36.0);
    }

    void aNewSizeIsReportedOnce()
    {
        Fixture fixture;
        const auto bar = fixture.make(20);
        fixture.widths.clear();
        QSignalSpy layouts(bar.get(), &DockBarView::interactiveAreaChanged);
        fixture.setShortcuts(30);
        QCOMPARE(fixture.widths, QList<qreal>{65.0 + 180 + 32 * 36});
        QCOMPARE(layouts.size(), 1);
    }
};

MOORLINE_TEST(IconFitTest);

#include "IconFitTest.moc"
