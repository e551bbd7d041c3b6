#include "system/FullScreenRule.h"
#include "harness/TestCase.h"

using namespace moorline;

namespace {

const QRectF primary(0, 0, 1440, 900);
const QRectF secondary(1440, 0, 1280, 720);
const QRectF somewhere(100, 100, 300, 200);
constexpr qint64 ownProcess = 77;
constexpr WindowId film = 1;
constexpr WindowId other = 2;

WindowDescription window(WindowId id, const QRectF &bounds)
{
    return {.ownerProcess = qint64(100 + id),
        .bounds = bounds,
        .id = id,
        .kind = WindowKind::normal,
        .isFullScreen = false};
}

WindowDescription fullScreen(const QRectF &bounds)
{
    WindowDescription window = ::window(film, bounds);
    window.isFullScreen = true;
    return window;
}

WindowDescription active(WindowDescription window)
{
    window.isActive = true;
    return window;
}

WindowDescription ofKind(WindowKind kind, WindowDescription window)
{
    window.kind = kind;
    return window;
}

WindowDescription dialogOf(WindowId parent, WindowDescription window)
{
    window.kind = WindowKind::dialog;
    window.transientFor = parent;
    return window;
}

std::optional<bool> rule(const QList<WindowDescription> &frontToBack)
{
    return belongsToFullScreenWindow(frontToBack, primary, ownProcess);
}

class FullScreenRuleTest final : public test::TestCase {
    Q_OBJECT
private Q_SLOTS:
    void theActiveFullScreenWindowCounts() { QCOMPARE(rule({active(fullScreen(primary))}), true); }

    void anOrdinaryWindowThatCoversTheScreenDoesNot() { QCOMPARE(rule({active(window(film, primary))}), false); }

    void fullScreenOnAnotherScreenDoesNotCount() { QCOMPARE(rule({active(fullScreen(secondary))}), false); }

    void itRemainsWhileAnotherScreenIsActive()
    {
        QCOMPARE(rule({active(window(other, {1500, 10, 300, 200})), fullScreen(primary)}), true);
    }

    void itRemainsWhileNothingIsActive() { QCOMPARE(rule({fullScreen(primary)}), true); }

    void itRemainsWhileAWindowOfThisProgramIsActive()
    {
        WindowDescription own = active(window(other, somewhere));
        own.ownerProcess = ownProcess;
        QCOMPARE(rule({own, fullScreen(primary)}), true);
    }

    void whatIsNoOrdinaryWindowDecidesNothing_data()
    {
        QTest::addColumn<WindowDescription>("window");
        const QRectF both = primary | secondary;
        QTest::newRow("dock") << ofKind(WindowKind::dock, window(other, {0, 840, 1440, 60}));
        QTest::newRow("desktop over both screens") << ofKind(WindowKind::desktop, window(other, both));
        QTest::newRow("notification") << ofKind(WindowKind::other, window(other, somewhere));
        WindowDescription unsaid = window(other, somewhere);
        unsaid.kind = std::nullopt;
        QTest::newRow("of unknown kind") << unsaid;
        WindowDescription nowhere = window(other, somewhere);
        nowhere.bounds = std::nullopt;
        QTest::newRow("without bounds") << nowhere;
    }

    void whatIsNoOrdinaryWindowDecidesNothing()
    {
        QFETCH(WindowDescription, window);
        QCOMPARE(rule({window, fullScreen(primary)}), true);
        QCOMPARE(rule({active(window), fullScreen(primary)}), true);
        QCOMPARE(rule({fullScreen(primary), active(window)}), true);
    }

    void aWindowInFrontEndsItWhileNothingIsActive_data()
    {
        QTest::addColumn<WindowKind>("kind");
        QTest::newRow("normal") << WindowKind::normal;
        QTest::newRow("dialog") << WindowKind::dialog;
        QTest::newRow("utility") << WindowKind::utility;
    }

    void aWindowInFrontEndsItWhileNothingIsActive()
    {
        QFETCH(WindowKind, kind);
        QCOMPARE(rule({ofKind(kind, window(other, somewhere)), fullScreen(primary)}), false);
    }

    void anActiveWindowEndsItAlsoFromBehind()
    {
        QCOMPARE(rule({active(window(other, somewhere)), fullScreen(primary)}), false);
        QCOMPARE(rule({fullScreen(primary), active(window(other, somewhere))}), false);
    }

    void itsDialogsBelongToIt()
    {
        QCOMPARE(rule({active(dialogOf(film, window(other, somewhere))), fullScreen(primary)}), true);
        const auto dialog = dialogOf(film, window(3, somewhere));
        QCOMPARE(rule({active(dialogOf(3, window(other, somewhere))), dialog, fullScreen(primary)}), true);
    }

    void aDialogOfAnotherWindowDoesNot()
    {
        const auto dialog = dialogOf(3, window(other, somewhere));
        QCOMPARE(rule({active(dialog), window(3, somewhere), fullScreen(primary)}), false);
        QCOMPARE(rule({active(dialog), fullScreen(primary)}), false);
    }

    void windowsThatAreDialogsOfEachOtherComeToAnEnd()
    {
        QCOMPARE(rule({active(dialogOf(3, window(other, somewhere))), dialogOf(other, window(3, somewhere))}), false);
    }

    void aFullScreenWindowOverAllScreensCounts() { QCOMPARE(rule({active(fullScreen(primary | secondary))}), true); }

    void withoutAWordFromAnyWindowItCannotBeTold()
    {
        WindowDescription silent = window(film, primary);
        silent.isFullScreen = std::nullopt;
        QCOMPARE(rule({active(silent)}), std::nullopt);
        QCOMPARE(rule({}), std::nullopt);
        QCOMPARE(rule({active(silent), window(other, somewhere)}), false);
    }
};

MOORLINE_TEST(FullScreenRuleTest);

} // namespace

#include "FullScreenRuleTest.moc"
