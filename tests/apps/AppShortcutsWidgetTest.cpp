#include "apps/AppShortcutsWidget.h"

#include "IconsFixture.h"
#include "harness/TestCase.h"

#include <QPointer>
#include <QSignalSpy>

using namespace moorline;
using namespace moorline::test;

namespace {

struct Fixture : IconsFixture {
    Fixture() { hand.scene.addItem(row); }

    [[nodiscard]] QString names() const
    {
        QStringList shown;
        for (const AppShortcutButton *button : row->buttons())
            shown.append(button->shortcut().name);
        return shown.join(u' ');
    }

    Hand hand;
    AppShortcutsWidget *row = new AppShortcutsWidget(context());
};

} // namespace

class AppShortcutsWidgetTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void whoeverFollowsThePointerIsToldThatIconsMoved()
    {
        Fixture fixture;
        fixture.pin({fixture.notes, fixture.mail});
        QSignalSpy moves(fixture.row, &BarWidget::itemsMoved);
        QSignalSpy sizes(fixture.row, &BarWidget::naturalSizeChanged);
        fixture.pin({fixture.mail, fixture.notes});
        QVERIFY(!moves.isEmpty());
        moves.clear();
        // In the place of another.
        fixture.pin({fixture.mail, fixture.finder});
        QVERIFY(!moves.isEmpty());
        QVERIFY(sizes.isEmpty());
        moves.clear();
        AppShortcut renamed = fixture.mail;
        renamed.name = QStringLiteral("Post");
        fixture.pin({renamed, fixture.finder});
        QVERIFY(moves.isEmpty());
    }

    void withoutShortcutsItTakesNoPlace()
    {
        const Fixture fixture;
        QVERIFY(fixture.row->buttons().isEmpty());
        QCOMPARE(fixture.row->preferredSize(), QSizeF(0, 0));
    }

    void shortcutsStandInTheirOrder()
    {
        Fixture fixture;
        fixture.pin({fixture.notes, fixture.finder, fixture.mail});
        QCOMPARE(fixture.names(), QStringLiteral("Notes Finder Mail"));
    }

    void whatIsPinnedAtTheStartIsThere()
    {
        Fixture fixture;
        fixture.pin({fixture.notes, fixture.mail});
        const AppShortcutsWidget second(fixture.context());
        QCOMPARE(second.buttons().size(), 2);
        QCOMPARE(second.preferredSize(), QSizeF(98, 52));
    }

    void iconsStandSixPointsApart_data()
    {
        QTest::addColumn<qreal>("iconSize");
        QTest::addColumn<QList<qreal>>("places");
        QTest::addColumn<QSizeF>("size");
        QTest::newRow("largest") << 46.0 << QList<qreal>{0, 52, 104} << QSizeF(150, 52);
        QTest::newRow("smallest") << 24.0 << QList<qreal>{0, 30, 60} << QSizeF(84, 30);
    }

    void iconsStandSixPointsApart()
    {
        QFETCH(qreal, iconSize);
        Fixture fixture;
        fixture.pin({fixture.notes, fixture.finder, fixture.mail});
        fixture.row->setIconSize(iconSize);
        QList<qreal> places;
        for (const AppShortcutButton *button : fixture.row->buttons()) {
            places.append(button->x());
            QCOMPARE(button->size(), AppShortcutButton::sizeFor(iconSize));
            QCOMPARE(button->y(), 0.0);
        }
        QTEST(places, "places");
        QTEST(fixture.row->preferredSize(), "size");
    }

    void oneThatComesLaterHasTheSizeOfTheOthers()
    {
        Fixture fixture;
        fixture.row->setIconSize(30);
        fixture.pin({fixture.notes});
        QCOMPARE(fixture.row->buttons().first()->size(), QSizeF(30, 36));
    }

    void buttonsStayTheSameWhereverTheyMove()
    {
        Fixture fixture;
        fixture.pin({fixture.notes, fixture.finder, fixture.mail});
        const auto before = fixture.row->buttons();
        fixture.pin({fixture.mail, fixture.notes, fixture.finder});
        QCOMPARE(fixture.row->buttons(), (QList{before[2], before[0], before[1]}));
        QCOMPARE(before[0]->x(), 52.0);
    }

    void oneThatIsRemovedGoesAndTheOthersStay()
    {
        Fixture fixture;
        fixture.pin({fixture.notes, fixture.finder, fixture.mail});
        const auto before = fixture.row->buttons();
        const QPointer<AppShortcutButton> removed = before[1];
        fixture.store.removeShortcut(fixture.finder);
        QCOMPARE(fixture.row->buttons(), (QList{before[0], before[2]}));
        QVERIFY(!removed || !removed->isVisible());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!removed);
    }

    void anotherRecordOfTheSameApplicationIsTheSameButton()
    {
        Fixture fixture;
        fixture.pin({fixture.notes});
        const auto *before = fixture.row->buttons().first();
        const AppShortcut moved{
            QStringLiteral("/elsewhere/Notes.app"), fixture.notes.bundleIdentifier, QStringLiteral("Jotter")};
        fixture.pin({moved});
        QCOMPARE(fixture.row->buttons().first(), before);
        QCOMPARE(before->shortcut(), moved);
    }

    void twiceTheSameApplicationAreTwoButtons()
    {
        Fixture fixture;
        fixture.pin({fixture.notes, fixture.notes, fixture.mail});
        QCOMPARE(fixture.row->buttons().size(), 3);
        QVERIFY(fixture.row->buttons()[0] != fixture.row->buttons()[1]);
    }

    void otherSettingsChangeNothing()
    {
        Fixture fixture;
        fixture.pin({fixture.notes});
        fixture.platform.appBundles.infosAsked.clear();
        QSignalSpy sizes(fixture.row, &BarWidget::naturalSizeChanged);
        fixture.store.change([](Settings &settings) { settings.showSeconds = !settings.showSeconds; });
        QVERIFY(fixture.platform.appBundles.infosAsked.isEmpty());
        QCOMPARE(sizes.size(), 0);
    }

    void theRowSaysWhenItsWidthChanges()
    {
        Fixture fixture;
        QSignalSpy sizes(fixture.row, &BarWidget::naturalSizeChanged);
        fixture.pin({fixture.notes});
        QCOMPARE(sizes.size(), 1);
        fixture.pin({fixture.mail});
        QCOMPARE(sizes.size(), 1);
        fixture.row->setIconSize(40);
        QCOMPARE(sizes.size(), 2);
    }

    void whatIsPinnedOffersToBeRemoved()
    {
        Fixture fixture;
        fixture.pin({fixture.notes});
        QCOMPARE(titles(fixture.row->buttons().first()->menu()).last(), QStringLiteral("Remove from Dock"));
    }

    void theRowIsAGroup()
    {
        const Fixture fixture;
        QCOMPARE(fixture.row->description().role, QAccessible::Grouping);
        QCOMPARE(fixture.row->description().name, QStringLiteral("App Shortcuts"));
    }
};

MOORLINE_TEST(AppShortcutsWidgetTest);
#include "AppShortcutsWidgetTest.moc"
