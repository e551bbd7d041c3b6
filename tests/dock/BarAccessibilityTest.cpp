#include "DockFixture.h"
#include "dock/DockHostingView.h"
#include "dock/DockPanel.h"
#include "harness/TestCase.h"

#include <QAccessible>
#include <QSignalSpy>

namespace moorline::test {

namespace {

class DescribedWidget final : public BarWidget {
public:
    DescribedWidget(const QString &name, bool isTouchable)
    {
        setNaturalSize({80, 40});
        setTouchable(isTouchable);
        setHelpText(QStringLiteral("help for ") + name);
        describe(name, QStringLiteral("as it is"));
    }

    void describe(const QString &name, const QString &state)
    {
        setDescription({.role = QAccessible::Button, .name = name, .state = state});
    }
};

/// A bar in its panel: a clock that cannot be touched, and a calendar that can.
struct AccessibleBar : DockFixture {
    AccessibleBar()
    {
        makeOther = [this](WidgetKind kind) {
            auto widget = std::make_unique<DescribedWidget>(rawValue(kind), kind != WidgetKind::clock);
            described[kind] = widget.get();
            return widget;
        };
        change([](Settings &settings) { settings.enabledWidgets = {WidgetKind::clock, WidgetKind::calendar}; });
        controller.emplace(controllerContext(), makeBar());
        controller->show();
    }

    [[nodiscard]] QAccessibleInterface *view() const
    {
        return QAccessible::queryAccessibleInterface(controller->panel()->content());
    }
    /// The item of the pill at a place from the left.
    [[nodiscard]] QAccessibleInterface *item(int index) const { return view()->child(0)->child(index); }

    QHash<WidgetKind, DescribedWidget *> described;
    std::optional<DockWindowController> controller;
};

/// How many interfaces were asked for of the items of a bar, since it was last set to zero.
int interfacesBuilt = 0;

QAccessibleInterface *countInterface(const QString &, QObject *object)
{
    interfacesBuilt += qobject_cast<BarItem *>(object) ? 1 : 0;
    return nullptr;
}

/// A run of the bar in which everything happens that a screen reader is told of.
void changeEverything()
{
    AccessibleBar bar;
    bar.described[WidgetKind::clock]->describe(QStringLiteral("13:05"), QString());
    bar.change([](Settings &settings) { settings.enabledWidgets = {WidgetKind::weather, WidgetKind::clock}; });
    QCoreApplication::processEvents();
}

} // namespace

/// Asked as a screen reader's bridge asks.
class BarAccessibilityTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void nothingIsBuiltWhileNobodyAsks()
    {
        const AccessibleBar bar;
        // The last factory is asked first, before the bar's own.
        QAccessible::installFactory(countInterface);
        interfacesBuilt = 0;
        changeEverything();
        QCOMPARE(interfacesBuilt, 0);
        QVERIFY(bar.item(0));
        QVERIFY(interfacesBuilt > 0);
        QAccessible::removeFactory(countInterface);
    }

    void theItemsStandBelowTheBarFromLeftToRight()
    {
        const AccessibleBar bar;
        QCOMPARE(bar.view()->text(QAccessible::Name), QStringLiteral("Moorline"));
        QCOMPARE(bar.view()->childCount(), 1);
        QAccessibleInterface *pill = bar.view()->child(0);
        QCOMPARE(pill->role(), QAccessible::ToolBar);
        QCOMPARE(pill->parent(), bar.view());
        QCOMPARE(pill->childCount(), 2);
        QCOMPARE(bar.item(0)->text(QAccessible::Name), QStringLiteral("clock"));
        QCOMPARE(bar.item(1)->text(QAccessible::Name), QStringLiteral("calendar"));
        QCOMPARE(bar.item(1)->parent(), pill);
        QCOMPARE(pill->indexOfChild(bar.item(1)), 1);
        QCOMPARE(bar.item(1)->childCount(), 0);
    }

    void anItemTellsWhatItIs()
    {
        const AccessibleBar bar;
        QCOMPARE(bar.item(0)->role(), QAccessible::Button);
        QCOMPARE(bar.item(0)->text(QAccessible::Description), QStringLiteral("as it is"));
        QCOMPARE(bar.item(0)->text(QAccessible::Help), QStringLiteral("help for clock"));
        QVERIFY(!bar.item(0)->state().invisible);
        bar.controller->panel()->hide();
        QVERIFY(bar.item(0)->state().invisible);
    }

    void anItemIsPressed()
    {
        const AccessibleBar bar;
        QSignalSpy clicks(bar.described[WidgetKind::calendar], &BarItem::clicked);
        QAccessibleActionInterface *actions = bar.item(1)->actionInterface();
        QVERIFY(actions);
        QCOMPARE(actions->actionNames(), QStringList{QAccessibleActionInterface::pressAction()});
        actions->doAction(QStringLiteral("another"));
        QCOMPARE(clicks.size(), 0);
        actions->doAction(QAccessibleActionInterface::pressAction());
        QCOMPARE(clicks.size(), 1);
    }

    void whatCannotBeClickedCannotBePressed()
    {
        const AccessibleBar bar;
        QSignalSpy clicks(bar.described[WidgetKind::clock], &BarItem::clicked);
        QAccessibleActionInterface *actions = bar.item(0)->actionInterface();
        QCOMPARE(actions->actionNames(), QStringList());
        actions->doAction(QAccessibleActionInterface::pressAction());
        QCOMPARE(clicks.size(), 0);
    }

    void theMenuOfAnItemIsOpened()
    {
        const AccessibleBar bar;
        DescribedWidget *clock = bar.described[WidgetKind::clock];
        QAccessibleActionInterface *actions = bar.item(0)->actionInterface();
        actions->doAction(QAccessibleActionInterface::showMenuAction());
        QSignalSpy requests(clock, &BarItem::menuRequested);
        QCOMPARE(actions->actionNames(), QStringList{QAccessibleActionInterface::showMenuAction()});
        actions->doAction(QAccessibleActionInterface::showMenuAction());
        QCOMPARE(requests, QList<QVariantList>{{QPointF(40, 20)}});
        clock->setEnabled(false);
        actions->doAction(QAccessibleActionInterface::showMenuAction());
        QCOMPARE(requests.size(), 1);
    }

    void anItemStandsWhereThePanelSays()
    {
        const AccessibleBar bar;
        const auto *clock = bar.described[WidgetKind::clock];
        const QRectF inPanel = clock->mapRectToScene(clock->rect());
        QCOMPARE(bar.item(0)->rect(), bar.panelWindow.accessibleRect(inPanel));
        QCOMPARE(bar.item(0)->rect().size(), QSize(160, 80));
        const QWidget *view = bar.controller->panel()->content();
        QCOMPARE(bar.view()->rect(), bar.panelWindow.accessibleRect(QRectF(view->rect())));
    }

    void aPlaceLeadsToItsItem()
    {
        const AccessibleBar bar;
        const QPoint middle = bar.item(1)->rect().center();
        QAccessibleInterface *pill = bar.view()->childAt(middle.x(), middle.y());
        QCOMPARE(pill, bar.view()->child(0));
        QCOMPARE(pill->childAt(middle.x(), middle.y()), bar.item(1));
        QVERIFY(!bar.view()->childAt(-5000, -5000));
    }

    void anotherRowIsToldOf()
    {
        AccessibleBar bar;
        bar.change([](Settings &settings) { settings.enabledWidgets = {WidgetKind::calendar, WidgetKind::weather}; });
        QCOMPARE(bar.view()->child(0)->childCount(), 2);
        QCOMPARE(bar.item(0)->text(QAccessible::Name), QStringLiteral("calendar"));
        QCOMPARE(bar.item(1)->text(QAccessible::Name), QStringLiteral("weather"));
    }

    void whatAnItemTellsNowIsRead()
    {
        const AccessibleBar bar;
        QAccessibleInterface *item = bar.item(0);
        bar.described[WidgetKind::clock]->describe(QStringLiteral("another"), QStringLiteral("later"));
        QCOMPARE(item->text(QAccessible::Name), QStringLiteral("another"));
        QCOMPARE(item->text(QAccessible::Description), QStringLiteral("later"));
    }
};

} // namespace moorline::test

using moorline::test::BarAccessibilityTest;
MOORLINE_TEST(BarAccessibilityTest);

#include "BarAccessibilityTest.moc"
