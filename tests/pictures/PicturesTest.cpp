#include "PicturesFixture.h"
#include "ReferencePictures.h"
#include "apps/AppShortcutsWidget.h"
#include "chrome/HelpTag.h"
#include "chrome/MenuRow.h"
#include "chrome/MenuView.h"
#include "chrome/Popover.h"
#include "dock/AutoHideNudge.h"
#include "dock/NudgeButton.h"
#include "harness/TestCase.h"

#include <QFontInfo>
#include <QGraphicsSceneDragDropEvent>
#include <QGraphicsSceneHoverEvent>
#include <QKeyEvent>
#include <QMimeData>

namespace moorline::test {

namespace {

/// The one font of the references, which is to be found wherever the desktop's tests run.
const QString family = QStringLiteral("DejaVu Sans");

/// A list as the bar's popovers hold, drawn in rows.
class Rows final : public PopoverContent {
public:
    [[nodiscard]] QSize sizeHint() const override { return {160, 90}; }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        for (int row = 0; row < 3; ++row)
            painter.fillRect(QRect(0, row * 30 + 1, width(), 28), QColor(90, 120, 150));
    }
};

} // namespace

/// What the references show was looked at; these tell when it changes.
class PicturesTest final : public TestCase {
    Q_OBJECT
protected Q_SLOTS:
    void init()
    {
        TestCase::init();
        QGuiApplication::setFont(QFont(family, 10));
    }

private Q_SLOTS:
    void theFontIsHere() { QCOMPARE(QFontInfo(QGuiApplication::font()).family(), family); }
    void widget_data();
    void widget();
    void applicationsWhereThereIsLittleRoom();
    void applicationsUnderThePointerAndUnderFiles();
    void menuOfAnApplication();
    void bar();
    void barOfApplications();
    void barOnANarrowScreen();
    void barAboveADock();
    void nudgeUnderThePointer();
    void menu();
    void menuWithoutACompositor();
    void menuOfEveryKindOfLine();
    void helpTag();
    void popover();
};

void PicturesTest::widget_data()
{
    using Prepare = std::function<void(PicturesFixture &)>;
    QTest::addColumn<WidgetKind>("kind");
    QTest::addColumn<Prepare>("prepare");
    const auto row = [](const char *picture, WidgetKind kind, const Prepare &prepare) {
        QTest::newRow(picture) << kind << prepare;
    };
    const Prepare nothing = [](PicturesFixture &) {};
    const Prepare answer = [](PicturesFixture &fixture) { QVERIFY(fixture.answerWeather()); };
    const Prepare fail = [](PicturesFixture &fixture) { QVERIFY(fixture.platform.httpClient.fail()); };
    const Prepare choose24Hours = [](PicturesFixture &fixture) {
        fixture.change([](Settings &settings) {
            settings.clockFormat = ClockFormat::twentyFourHour;
            settings.showSeconds = true;
        });
    };
    row("clock", WidgetKind::clock, nothing);
    row("clock-24-seconds", WidgetKind::clock, choose24Hours);
    row("calendar", WidgetKind::calendar, nothing);
    row("year-progress", WidgetKind::monthCounter, nothing);
    row("weather", WidgetKind::weather, answer);
    row("weather-awaited", WidgetKind::weather, nothing);
    row("weather-failed", WidgetKind::weather, fail);
    row("forecast", WidgetKind::forecast, answer);
    row("music", WidgetKind::music, [](PicturesFixture &fixture) { fixture.playMusic(MusicStyle::player); });
    row("music-compact", WidgetKind::music, [](PicturesFixture &fixture) { fixture.playMusic(MusicStyle::compact); });
    row("music-paused", WidgetKind::music,
        [](PicturesFixture &fixture) { fixture.playMusic(MusicStyle::player, false); });
    row("music-nothing", WidgetKind::music, nothing);
    row("applications", WidgetKind::appShortcut, [](PicturesFixture &fixture) { fixture.pinApplications(); });
}

void PicturesTest::widget()
{
    QFETCH(WidgetKind, kind);
    QFETCH(std::function<void(PicturesFixture &)>, prepare);
    PicturesFixture fixture;
    prepare(fixture);
    const auto shown = makeBarWidget(kind, fixture.services);
    QVERIFY(shown);
    shown->resize(shown->preferredSize());
    const QString picture = QString::fromLatin1(QTest::currentDataTag());
    QCOMPARE(compareWithReference(fixture.picture(*shown), picture), QString());
}

void PicturesTest::applicationsWhereThereIsLittleRoom()
{
    PicturesFixture fixture;
    fixture.pinApplications();
    const auto row = makeBarWidget(WidgetKind::appShortcut, fixture.services);
    row->setIconSize(24);
    row->resize(row->preferredSize());
    QCOMPARE(compareWithReference(fixture.picture(*row), QStringLiteral("applications-small")), QString());
}

void PicturesTest::applicationsUnderThePointerAndUnderFiles()
{
    PicturesFixture fixture;
    fixture.pinApplications();
    const auto row = makeBarWidget(WidgetKind::appShortcut, fixture.services);
    row->resize(row->preferredSize());
    const auto icons = barItems(*row);
    QCOMPARE(icons.size(), 4);
    QGraphicsScene scene;
    scene.addItem(row.get());
    QGraphicsSceneHoverEvent hover(QEvent::GraphicsSceneHoverEnter);
    scene.sendEvent(icons[0], &hover);
    QMimeData files;
    files.setUrls({QUrl::fromLocalFile(QStringLiteral("/tmp/a"))});
    QGraphicsSceneDragDropEvent drag(QEvent::GraphicsSceneDragEnter);
    drag.setMimeData(&files);
    drag.setPossibleActions(Qt::CopyAction);
    scene.sendEvent(icons[2], &drag);
    fixture.platform.clock.advance(std::chrono::seconds(1));
    scene.removeItem(row.get());
    QVERIFY(icons[0]->isHovered() && icons[2]->isDropHovered());
    QCOMPARE(compareWithReference(fixture.picture(*row), QStringLiteral("applications-grown")), QString());
}

namespace {

void verifyBar(PicturesFixture &fixture, const QSizeF &room, const QString &name)
{
    const auto bar = fixture.makeBar();
    bar->appear();
    bar->setGeometry(QRectF(QPointF(0, 0), room));
    QCOMPARE(compareWithReference(fixture.picture(*bar, {}), name), QString());
    bar->disappear();
}

} // namespace

void PicturesTest::bar()
{
    PicturesFixture fixture;
    QVERIFY(fixture.answerWeather());
    verifyBar(fixture, {940, 110}, QStringLiteral("bar"));
}

void PicturesTest::barOfApplications()
{
    PicturesFixture fixture;
    fixture.pinApplications();
    fixture.change([](Settings &settings) {
        settings.enabledWidgets = {WidgetKind::clock, WidgetKind::appShortcut, WidgetKind::calendar};
    });
    verifyBar(fixture, {520, 110}, QStringLiteral("bar-applications"));
}

void PicturesTest::barOnANarrowScreen()
{
    PicturesFixture fixture;
    fixture.change([](Settings &settings) {
        settings.enabledWidgets = {WidgetKind::calendar, WidgetKind::monthCounter};
    });
    verifyBar(fixture, {220, 110}, QStringLiteral("bar-short"));
}

void PicturesTest::barAboveADock()
{
    PicturesFixture fixture;
    fixture.platform.preferences.setDock(QStringLiteral("bottom"), false);
    fixture.change([](Settings &settings) { settings.enabledWidgets = {WidgetKind::clock}; });
    verifyBar(fixture, {760, 150}, QStringLiteral("bar-nudge"));
}

void PicturesTest::nudgeUnderThePointer()
{
    PicturesFixture fixture;
    AutoHideNudge nudge(fixture.services.symbols);
    nudge.resize(nudge.naturalWidth(), 26);
    const auto inside = barItems(nudge);
    QCOMPARE(inside.size(), 1);
    QGraphicsScene scene;
    QGraphicsSceneHoverEvent hover(QEvent::GraphicsSceneHoverEnter);
    scene.addItem(&nudge);
    scene.sendEvent(inside.first(), &hover);
    scene.removeItem(&nudge);
    QVERIFY(inside.first()->isHovered());
    QCOMPARE(compareWithReference(fixture.picture(nudge), QStringLiteral("nudge-hovered")), QString());
}

namespace {

/// Opens above an item in the middle of the bar whatever `open` opens there, and compares it.
template <typename Open>
void verifyShown(PicturesFixture &fixture, const QString &name, Open open)
{
    QGraphicsScene scene;
    QGraphicsWidget anchor;
    anchor.setGeometry(300, 26, 46, 46);
    scene.addItem(&anchor);
    open(anchor);
    QVERIFY(fixture.shown());
    QCOMPARE(compareWithReference(fixture.picture(*fixture.shown()), name), QString());
    fixture.services.barStage.close();
    fixture.services.barStage.hideHelp();
    scene.removeItem(&anchor);
}

} // namespace

void PicturesTest::menu()
{
    PicturesFixture fixture;
    verifyShown(fixture, QStringLiteral("menu"), [&](QGraphicsWidget &anchor) {
        fixture.services.barStage.openMenu(anchor, barMenu(fixture.services.store, fixture.commands));
    });
}

void PicturesTest::menuOfAnApplication()
{
    PicturesFixture fixture;
    fixture.pinApplications();
    const auto widget = makeBarWidget(WidgetKind::appShortcut, fixture.services);
    const auto *row = dynamic_cast<AppShortcutsWidget *>(widget.get());
    QVERIFY(row);
    verifyShown(fixture, QStringLiteral("menu-application"),
        [&](QGraphicsWidget &anchor) { fixture.services.barStage.openMenu(anchor, row->buttons()[1]->menu()); });
}

void PicturesTest::menuWithoutACompositor()
{
    PicturesFixture fixture;
    fixture.platform.popupWindows.setComposited(false);
    verifyShown(fixture, QStringLiteral("menu-square"), [&](QGraphicsWidget &anchor) {
        fixture.services.barStage.openMenu(anchor, barMenu(fixture.services.store, fixture.commands));
    });
}

void PicturesTest::menuOfEveryKindOfLine()
{
    PicturesFixture fixture;
    const Menu menu{{.title = QStringLiteral("Chosen now"), .action = [] {}},
        {.title = QStringLiteral("With a symbol"), .action = [] {}, .symbol = QStringLiteral("gearshape")},
        MenuItem::separator(), {.title = QStringLiteral("Checked"), .action = [] {}, .isChecked = true},
        {.title = QStringLiteral("Not to be chosen"), .action = nullptr}};
    verifyShown(fixture, QStringLiteral("menu-lines"), [&](QGraphicsWidget &anchor) {
        fixture.services.barStage.setAccent(QColor(0x0a, 0x84, 0xff));
        fixture.services.barStage.openMenu(anchor, menu);
        QKeyEvent down(QEvent::KeyPress, Qt::Key_Down, Qt::NoModifier);
        QCoreApplication::sendEvent(fixture.shown(), &down);
    });
}

void PicturesTest::helpTag()
{
    PicturesFixture fixture;
    verifyShown(fixture, QStringLiteral("help-tag"), [&](QGraphicsWidget &anchor) {
        fixture.services.barStage.showHelp(anchor, QStringLiteral("Partly cloudy\nFeels like 59°"));
    });
}

void PicturesTest::popover()
{
    PicturesFixture fixture;
    verifyShown(fixture, QStringLiteral("popover"),
        [&](QGraphicsWidget &anchor) { fixture.services.barStage.openPopover(anchor, std::make_unique<Rows>()); });
}

MOORLINE_TEST(PicturesTest);

} // namespace moorline::test

#include "PicturesTest.moc"
