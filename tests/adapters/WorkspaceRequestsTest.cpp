#include "WorkspaceTestCase.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <QSignalSpy>

namespace {

using moorline::Workspace;

const QString paint = QStringLiteral("paint");

/// What is asked of a window manager, which the test itself is here: it lists windows, and obeys nobody.
class WorkspaceRequestsTest final : public moorline::test::WorkspaceTestCase {
    Q_OBJECT

private Q_SLOTS:
    void withoutAWindowManagerNobodyKnowsWhatRuns()
    {
        QVERIFY(foreign->show(plan()));
        start();
        QTest::qWait(100);
        QCOMPARE(identifiers(), QStringList{QStringLiteral("unknown")});
        beManager();
        list({});
        QTRY_COMPARE(identifiers(), QStringList());
    }

    void aWindowManagerThatGoesTakesTheKnowledgeAlong()
    {
        beManager();
        const xcb_window_t window = foreign->show(plan());
        list({window});
        start();
        QTRY_COMPARE(identifiers(), QStringList{paint});
        QSignalSpy ends(workspace.get(), &Workspace::applicationTerminated);
        QSignalSpy launches(workspace.get(), &Workspace::applicationLaunched);
        foreign->destroy(m_proof);
        QTRY_COMPARE(identifiers(), QStringList{QStringLiteral("unknown")});
        QCOMPARE(ends.size(), 1);
        beManager();
        QTRY_COMPARE(identifiers(), QStringList{paint});
        QCOMPARE(launches.size(), 1);
    }

    void untilTheEntriesAreReadNobodyKnowsWhatRuns()
    {
        beManager();
        start();
        QCOMPARE(identifiers(), QStringList{QStringLiteral("unknown")});
        QTRY_COMPARE(identifiers(), QStringList());
    }

    void theOrderIsThatOfMapping()
    {
        beManager();
        const xcb_window_t first = foreign->show(plan());
        const xcb_window_t second = foreign->show(plan("write"));
        list({second, first});
        foreign->setValues(foreign->root(), "_NET_CLIENT_LIST_STACKING", "WINDOW", {first, second});
        start();
        QTRY_COMPARE(identifiers(), (QStringList{QStringLiteral("write"), paint}));
    }

    void whoIsActivatedIsToldOnce()
    {
        beManager();
        const xcb_window_t first = foreign->show(plan());
        const xcb_window_t second = foreign->show(plan("write"));
        list({first, second});
        start();
        QTRY_COMPARE(identifiers().size(), 2);
        QStringList activated;
        connect(workspace.get(), &Workspace::applicationActivated, this, [&](const auto &application) {
            activated.append(application ? *application->bundleIdentifier : QStringLiteral("none"));
        });
        setActive(first);
        QTRY_COMPARE(activated, QStringList{paint});
        setActive(second);
        QTRY_COMPARE(activated, (QStringList{paint, QStringLiteral("write")}));
        setActive(XCB_WINDOW_NONE);
        QTRY_COMPARE(activated.size(), 3);
        QCOMPARE(activated.last(), QStringLiteral("none"));
        foreign->setValues(first, "_NET_WM_STATE", "ATOM", {});
        QTest::qWait(100);
        QCOMPARE(activated.size(), 3);
    }

    void whoIsInFrontAtTheStartDidNotComeThere()
    {
        beManager();
        const xcb_window_t window = foreign->show(plan());
        list({window});
        setActive(window);
        start();
        QSignalSpy activated(workspace.get(), &Workspace::applicationActivated);
        QTRY_COMPARE(identifiers(), QStringList{paint});
        QTest::qWait(100);
        QCOMPARE(activated.size(), 0);
    }

    void whoIsInFrontAtTheStartDidNotComeThereWhenItBecameKnown()
    {
        beManager();
        // Nobody knows it by its class.
        const xcb_window_t window = foreign->show(plan("odd"));
        list({window});
        setActive(window);
        start();
        QSignalSpy activated(workspace.get(), &Workspace::applicationActivated);
        QTRY_COMPARE(identifiers(), QStringList{QStringLiteral("nobody")});
        QTest::qWait(100);
        QCOMPARE(activated.size(), 0);
    }

    void anotherWindowOfTheSameApplicationIsNoNews()
    {
        beManager();
        const xcb_window_t window = foreign->show(plan());
        list({window});
        start();
        QTRY_COMPARE(identifiers(), QStringList{paint});
        QSignalSpy launched(workspace.get(), &Workspace::applicationLaunched);
        QSignalSpy terminated(workspace.get(), &Workspace::applicationTerminated);
        const xcb_window_t second = foreign->show(plan());
        list({window, second});
        QTest::qWait(100);
        foreign->destroy(second);
        list({window});
        QTest::qWait(100);
        QCOMPARE(launched.size(), 0);
        QCOMPARE(terminated.size(), 0);
    }

    void theFileManagerIsKnownByItsPart()
    {
        const QByteArray manager = "Categories=FileManager;\nMimeType=inode/directory;\n";
        writeEntry(QStringLiteral("files"), manager);
        beManager();
        const xcb_window_t window = foreign->show(plan("files"));
        list({window});
        start();
        QTRY_COMPARE(identifiers(), QStringList{QStringLiteral("com.apple.finder")});
    }

    void whatIsAskedComesInOrderWithTheTimeOfTheClick()
    {
        beManager();
        const xcb_window_t main = foreign->show(plan());
        const xcb_window_t other = foreign->show(plan());
        for (const xcb_window_t window : {main, other})
            foreign->setValues(window, "_NET_WM_DESKTOP", "CARDINAL", {3});
        list({main, other});
        setActive(main);
        start();
        QTRY_COMPARE(identifiers(), QStringList{paint});
        foreign->listenToRequests();
        click(4711);
        workspace->activate(application(paint));
        const QStringList wanted{QStringLiteral("_NET_CURRENT_DESKTOP root 3 4711 0"),
            QStringLiteral("_NET_RESTACK_WINDOW %1 2 0 0").arg(other),
            QStringLiteral("_NET_ACTIVE_WINDOW %1 2 4711 0").arg(main)};
        QTRY_COMPARE(foreign->requests(), wanted);
    }

    void withoutAClickTheServerTellsTheTime()
    {
        beManager();
        const xcb_window_t main = foreign->show(plan());
        list({main});
        start();
        QTRY_COMPARE(identifiers(), QStringList{paint});
        foreign->listenToRequests();
        const xcb_timestamp_t before = connection->serverTime();
        workspace->activate(application(paint));
        QTRY_COMPARE(foreign->requests().size(), 1);
        const QStringList words = foreign->requests().first().split(u' ');
        QCOMPARE(words.value(0), QStringLiteral("_NET_ACTIVE_WINDOW"));
        QVERIFY(words.value(3).toUInt() >= before);
    }

    void aWindowManagerThatCannotRaiseIsNotAskedTo()
    {
        beManager();
        foreign->setValues(foreign->root(), "_NET_SUPPORTED", "ATOM", {foreign->atom("_NET_ACTIVE_WINDOW")});
        const xcb_window_t main = foreign->show(plan());
        const xcb_window_t other = foreign->show(plan());
        list({main, other});
        setActive(main);
        start();
        QTRY_COMPARE(identifiers(), QStringList{paint});
        foreign->listenToRequests();
        click(4711);
        workspace->activate(application(paint));
        QTRY_COMPARE(foreign->requests(), QStringList{QStringLiteral("_NET_ACTIVE_WINDOW %1 2 4711 0").arg(main)});
    }

    void closingIsAskedWithTheTimeOfTheClick()
    {
        beManager();
        const xcb_window_t window = foreign->show(plan());
        foreign->setValues(window, "WM_PROTOCOLS", "ATOM", {foreign->atom("WM_DELETE_WINDOW")});
        const xcb_window_t deaf = foreign->show(plan());
        list({window, deaf});
        start();
        QTRY_COMPARE(identifiers(), QStringList{paint});
        foreign->listenToRequests();
        click(4711);
        workspace->terminate(application(paint));
        QTRY_COMPARE(foreign->requests(), QStringList{QStringLiteral("_NET_CLOSE_WINDOW %1 4711 2 0").arg(window)});
    }

    void cleanup()
    {
        for (const char *name : {"_NET_SUPPORTING_WM_CHECK", "_NET_CLIENT_LIST", "_NET_CLIENT_LIST_STACKING",
                 "_NET_ACTIVE_WINDOW", "_NET_CURRENT_DESKTOP", "_NET_SUPPORTED"})
            foreign->setValues(foreign->root(), name, "WINDOW", {});
        WorkspaceTestCase::cleanup();
    }

private:
    void beManager()
    {
        m_proof = foreign->create({.bypassesManager = true});
        foreign->setValues(m_proof, "_NET_SUPPORTING_WM_CHECK", "WINDOW", {m_proof});
        foreign->setValues(foreign->root(), "_NET_SUPPORTING_WM_CHECK", "WINDOW", {m_proof});
        foreign->setValues(foreign->root(), "_NET_SUPPORTED", "ATOM", {foreign->atom("_NET_RESTACK_WINDOW")});
        foreign->setValues(foreign->root(), "_NET_CURRENT_DESKTOP", "CARDINAL", {0});
    }
    void list(const QList<xcb_window_t> &windows) const
    {
        foreign->setValues(foreign->root(), "_NET_CLIENT_LIST", "WINDOW", windows);
        foreign->setValues(foreign->root(), "_NET_CLIENT_LIST_STACKING", "WINDOW", windows);
    }
    void setActive(xcb_window_t window) const
    {
        foreign->setValues(foreign->root(), "_NET_ACTIVE_WINDOW", "WINDOW", {window});
    }

    /// As on the bar.
    static void click(quint64 time)
    {
        QObject bar;
        QMouseEvent press(QEvent::MouseButtonPress, {}, {}, Qt::LeftButton, Qt::LeftButton, {});
        press.setTimestamp(time);
        QCoreApplication::sendEvent(&bar, &press);
    }

    xcb_window_t m_proof = XCB_WINDOW_NONE;
};

MOORLINE_TEST(WorkspaceRequestsTest);

} // namespace

#include "WorkspaceRequestsTest.moc"
