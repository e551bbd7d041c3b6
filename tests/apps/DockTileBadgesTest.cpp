#include "apps/DockTileBadges.h"

#include "apps/DockTiles.h"
#include "fakes/FakeApplications.h"
#include "harness/Answer.h"
#include "harness/TestCase.h"

#include <QThread>
#include <cmath>

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;

namespace {

using Tiles = QList<BadgeTile>;
using Element = std::shared_ptr<FakeElement>;

const QString childrenAttribute = QStringLiteral("AXChildren");

Element holding(const AccessibilityElement::List &children)
{
    auto element = std::make_shared<FakeElement>();
    element->lists[childrenAttribute] = children;
    return element;
}

Element tile(const QVariant &label, const QVariant &address = QUrl(QStringLiteral("file:///Applications/Mail.app/")))
{
    auto element = std::make_shared<FakeElement>();
    element->values = {{QStringLiteral("AXStatusLabel"), label}, {QStringLiteral("AXURL"), address}};
    return element;
}

Tiles scan(const Element &dock)
{
    return scanDockTiles(*dock, std::atomic_bool(true));
}

/// Tells on which thread it was read, and does something meanwhile.
class SlowElement final : public AccessibilityElement {
public:
    explicit SlowElement(std::function<void()> happen)
        : m_happen(std::move(happen))
    {
    }
    void setMessagingTimeout(std::chrono::milliseconds) override { }
    [[nodiscard]] std::optional<List> elements(const QString &) const override
    {
        m_happen();
        return List();
    }
    [[nodiscard]] QVariant value(const QString &) const override { return {}; }

private:
    std::function<void()> m_happen;
};

/// A system whose dock runs as process 7.
struct DockSystem {
    DockSystem()
    {
        workspace.running->append({.id = 1,
            .process = 7,
            .bundleIdentifier = QStringLiteral("com.apple.dock"),
            .activationPolicy = ActivationPolicy::accessory});
        accessibility.applications[7] = dock;
        source->setActive(true);
    }

    FakeWorkspace workspace;
    FakeAccessibility accessibility;
    Element dock = std::make_shared<FakeElement>();
    std::unique_ptr<DockTileBadges> source = std::make_unique<DockTileBadges>(workspace, accessibility);
};

Tiles tilesOf(DockTileBadges &source)
{
    const Answer<Tiles> answer(source.tiles());
    return QTest::qWaitFor([&answer] { return answer.isThere(); }) ? answer.value()
                                                                   : throw std::runtime_error("no answer");
}

} // namespace

class DockTileBadgesTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void everyTileWithABadgeIsFoundInItsOrder()
    {
        const auto notes = tile(QStringLiteral("New"), QUrl(QStringLiteral("file:///Applications/My%20Notes.app/")));
        const auto dock = holding({holding({notes, tile({})}), holding({}), holding({tile(QStringLiteral("3"))})});
        QCOMPARE(scan(dock),
            (Tiles{{QStringLiteral("/Applications/My Notes.app"), QStringLiteral("New")},
                {QStringLiteral("/Applications/Mail.app"), QStringLiteral("3")}}));
    }

    void whatCannotBeReadIsSkipped()
    {
        QCOMPARE(scan(std::make_shared<FakeElement>()), Tiles());
        const auto dock = holding({std::make_shared<FakeElement>(), holding({tile(QStringLiteral("3"))})});
        QCOMPARE(scan(dock).size(), 1);
    }

    void theLabelIsPlainText_data()
    {
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<QString>("label");
        QTest::newRow("text") << QVariant(QStringLiteral("12")) << QStringLiteral("12");
        QTest::newRow("trimmed") << QVariant(QStringLiteral(" \t a b \n")) << QStringLiteral("a b");
        QTest::newRow("spaces only") << QVariant(QStringLiteral(" \n ")) << QString();
        QTest::newRow("empty") << QVariant(QString()) << QString();
        QTest::newRow("int") << QVariant(1234) << QStringLiteral("1234");
        QTest::newRow("negative") << QVariant(-1) << QStringLiteral("-1");
        QTest::newRow("zero") << QVariant(0) << QStringLiteral("0");
        QTest::newRow("long") << QVariant(qlonglong(12345678901)) << QStringLiteral("12345678901");
        QTest::newRow("unsigned") << QVariant(~qulonglong(0)) << QStringLiteral("18446744073709551615");
        QTest::newRow("whole double") << QVariant(3.0) << QStringLiteral("3");
        QTest::newRow("double") << QVariant(2.5) << QStringLiteral("2.5");
        QTest::newRow("large double") << QVariant(1e21) << QStringLiteral("1000000000000000000000");
        QTest::newRow("not a number") << QVariant(std::nan("")) << QString();
        QTest::newRow("infinite") << QVariant(double(INFINITY)) << QString();
        QTest::newRow("truth") << QVariant(true) << QString();
        QTest::newRow("address") << QVariant(QUrl(QStringLiteral("file:///a"))) << QString();
    }

    void theLabelIsPlainText()
    {
        QFETCH(QVariant, value);
        QFETCH(QString, label);
        const Tiles tiles = scan(holding({holding({tile(value)})}));
        QCOMPARE(tiles.isEmpty() ? QString() : tiles.first().label, label);
    }

    void onlyFilesAreApplications_data()
    {
        QTest::addColumn<QVariant>("address");
        QTest::addColumn<QString>("path");
        QTest::newRow("folder") << QVariant(QUrl(QStringLiteral("file:///A%25.app/"))) << QStringLiteral("/A%.app");
        QTest::newRow("file") << QVariant(QUrl(QStringLiteral("file:///A.app"))) << QStringLiteral("/A.app");
        QTest::newRow("web") << QVariant(QUrl(QStringLiteral("https://example.org/A.app"))) << QString();
        QTest::newRow("text") << QVariant(QStringLiteral("file:///A.app")) << QString();
        QTest::newRow("none") << QVariant() << QString();
    }

    void onlyFilesAreApplications()
    {
        QFETCH(QVariant, address);
        QFETCH(QString, path);
        const Tiles tiles = scan(holding({holding({tile(QStringLiteral("1"), address)})}));
        QCOMPARE(tiles.isEmpty() ? QString() : tiles.first().path, path);
    }

    void permissionIsTheAccessibilityTrust()
    {
        DockSystem system;
        QVERIFY(!system.source->isPermitted());
        system.accessibility.isTrusted = true;
        QVERIFY(system.source->isPermitted());
    }

    void theDockIsRead()
    {
        DockSystem system;
        system.dock->lists[childrenAttribute] = {holding({tile(QStringLiteral("3"))})};
        QCOMPARE(tilesOf(*system.source), (Tiles{{QStringLiteral("/Applications/Mail.app"), QStringLiteral("3")}}));
        QCOMPARE(system.dock->timeout, std::optional(std::chrono::milliseconds(1000)));
    }

    void withoutADockThereAreNone_data()
    {
        QTest::addColumn<std::function<void(RunningApplication &)>>("change");
        const auto row = [](const char *name, const std::function<void(RunningApplication &)> &change) {
            QTest::newRow(name) << change;
        };
        row("another program",
            [](RunningApplication &dock) { dock.bundleIdentifier = QStringLiteral("org.example.dock"); });
        row("ended", [](RunningApplication &dock) { dock.isTerminated = true; });
        row("no process", [](RunningApplication &dock) { dock.process = std::nullopt; });
    }

    void withoutADockThereAreNone()
    {
        QFETCH(const std::function<void(RunningApplication &)>, change);
        DockSystem system;
        system.dock->lists[childrenAttribute] = {holding({tile(QStringLiteral("3"))})};
        change(system.workspace.running->first());
        const Answer<Tiles> answer(system.source->tiles());
        QVERIFY(answer.isThere());
        QVERIFY(answer.value().isEmpty());
    }

    void theFirstDockThatLivesIsRead()
    {
        DockSystem system;
        auto ended = system.workspace.running->first();
        ended.process = 6;
        ended.isTerminated = true;
        system.workspace.running->prepend(ended);
        system.dock->lists[childrenAttribute] = {holding({tile(QStringLiteral("3"))})};
        QCOMPARE(tilesOf(*system.source).size(), 1);
    }

    void itIsReadOnAnotherThreadAndAnsweredOnThisOne()
    {
        DockSystem system;
        std::atomic<QThread *> reader = nullptr;
        system.dock->lists[childrenAttribute] = {
            std::make_shared<SlowElement>([&reader] { reader = QThread::currentThread(); })};
        const Answer<Tiles> answer(system.source->tiles());
        QVERIFY(!answer.isThere());
        QTRY_VERIFY(answer.isThere());
        QVERIFY(reader && reader != QThread::currentThread());
    }

    void aLookThatIsNotWantedAnyMoreEndsEarly_data()
    {
        QTest::addColumn<bool>("isGone");
        QTest::newRow("turned off") << false;
        QTest::newRow("gone") << true;
    }

    void aLookThatIsNotWantedAnyMoreEndsEarly()
    {
        QFETCH(bool, isGone);
        DockSystem system;
        std::atomic_bool mayGoOn = false;
        const auto hang = std::make_shared<SlowElement>([&mayGoOn] {
            while (!mayGoOn)
                QThread::yieldCurrentThread();
        });
        system.dock->lists[childrenAttribute] = {hang, holding({tile(QStringLiteral("3"))})};
        const Answer<Tiles> answer(system.source->tiles());
        if (isGone)
            system.source.reset();
        else
            system.source->setActive(false);
        mayGoOn = true;
        QTRY_VERIFY(answer.isThere());
        QVERIFY(answer.value().isEmpty());
    }

    void aLookAfterTurningOnAgainIsWhole()
    {
        DockSystem system;
        system.source->setActive(false);
        system.source->setActive(true);
        system.dock->lists[childrenAttribute] = {holding({tile(QStringLiteral("3"))})};
        QCOMPARE(tilesOf(*system.source).size(), 1);
    }
};

MOORLINE_TEST(DockTileBadgesTest);
#include "DockTileBadgesTest.moc"
