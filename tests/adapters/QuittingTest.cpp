#include "WorkspaceTestCase.h"
#include "platform/linux/bus/BusObject.h"

#include <QDBusConnection>

namespace {

using moorline::Bus;
using moorline::BusInterface;
using moorline::BusObject;
using moorline::RunningApplication;

const QString paint = QStringLiteral("paint");
const QString write = QStringLiteral("write");
const QString exportedPath = QStringLiteral("/org/example/paint");

/// A program on the session bus that offers to quit, and the bar's connection beside it.
struct Exporter {
    explicit Exporter(Bus &asking)
    {
        asking.adopt(QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("quit-asking")));
        bus.adopt(QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("quit-asked")));
    }
    ~Exporter()
    {
        QDBusConnection::disconnectFromBus(QStringLiteral("quit-asking"));
        QDBusConnection::disconnectFromBus(QStringLiteral("quit-asked"));
    }
    Q_DISABLE_COPY_MOVE(Exporter)

    /// Its actions; `takesCalls` says whether it is there to do what it lists.
    BusInterface actions(bool takesCalls)
    {
        BusInterface actions{.name = QStringLiteral("org.gtk.Actions"),
            .methods = {{.name = QStringLiteral("List"),
                .takes = {},
                .gives = {QStringLiteral("as")},
                .call =
                    [](const QVariantList &) {
                        return QVariantList{QStringList{QStringLiteral("about"), QStringLiteral("quit")}};
                    }}},
            .properties = nullptr};
        if (takesCalls) {
            actions.methods.append({.name = QStringLiteral("Activate"),
                .takes = {QStringLiteral("s"), QStringLiteral("av"), QStringLiteral("a{sv}")},
                .gives = {},
                .call = [this](const QVariantList &arguments) {
                    activated.append(arguments.first());
                    return QVariantList();
                }});
        }
        return actions;
    }

    Bus bus;
    QVariantList activated;
};

/// How applications of a desktop with a window manager are asked to quit.
class QuittingTest final : public moorline::test::WorkspaceTestCase {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        WorkspaceTestCase::init();
        start();
        QTRY_COMPARE(identifiers(), QStringList());
    }

    void quittingClosesTheWindowsOfAllDesktopsThatCanBeAsked()
    {
        const xcb_window_t here = showClosable("paint");
        const xcb_window_t elsewhere = showClosable("paint");
        foreign->moveToDesktop(elsewhere, 1);
        QTRY_VERIFY(!foreign->isViewable(elsewhere));
        const xcb_window_t deaf = showManaged(plan("paint"));
        const xcb_window_t others = showClosable("write");
        QTRY_COMPARE(identifiers(), (QStringList{paint, write}));
        workspace->terminate(application(paint));
        QTRY_COMPARE(foreign->closeRequests(here), 1);
        QTRY_COMPARE(foreign->closeRequests(elsewhere), 1);
        QTest::qWait(100);
        QCOMPARE(foreign->closeRequests(others), 0);
        QCOMPARE(foreign->closeRequests(here), 1);
        QVERIFY(foreign->isManaged(deaf));
    }

    void quittingIsAnActionOfTheEntryWhereItHasOne()
    {
        const QString mark = folder->filePath(QStringLiteral("asked"));
        writeEntry(QStringLiteral("mail"),
            "Actions=new-window;Quit;\n[Desktop Action Quit]\nName=Quit\nExec=touch " + QFile::encodeName(mark) + '\n');
        start();
        const xcb_window_t window = showClosable("mail");
        QTRY_COMPARE(identifiers(), QStringList{QStringLiteral("mail")});
        workspace->terminate(application(QStringLiteral("mail")));
        QTRY_VERIFY(QFile::exists(mark));
        QCOMPARE(foreign->closeRequests(window), 0);
    }

    void quittingIsAnActionOfTheProgramWhereItExportsOne()
    {
        Exporter exporter(bus);
        QVERIFY(bus.isOpen() && exporter.bus.isOpen());
        const BusObject object(exporter.bus, exportedPath, {exporter.actions(true)});
        const xcb_window_t window = showClosable("paint");
        offerActions(window, exporter);
        const xcb_window_t plain = showClosable("paint");
        QTRY_COMPARE(identifiers(), QStringList{paint});
        workspace->terminate(application(paint));
        QTRY_COMPARE(exporter.activated, QVariantList{QStringLiteral("quit")});
        QTRY_COMPARE(foreign->closeRequests(plain), 1);
        QTest::qWait(100);
        QCOMPARE(foreign->closeRequests(window), 0);
    }

    void whereNobodyTakesTheExportedActionTheWindowsAreClosed()
    {
        Exporter exporter(bus);
        const BusObject object(exporter.bus, exportedPath, {exporter.actions(false)});
        const xcb_window_t window = showClosable("paint");
        offerActions(window, exporter);
        QTRY_COMPARE(identifiers(), QStringList{paint});
        workspace->terminate(application(paint));
        QTRY_COMPARE(foreign->closeRequests(window), 1);
    }

    void whereNobodyTakesTheEntrysActionTheWindowsAreClosed()
    {
        const Exporter other(bus);
        const QString mail = QStringLiteral("org.example.Mail");
        writeEntry(mail, "DBusActivatable=true\nActions=quit;\n[Desktop Action quit]\nName=Quit\n");
        start();
        const xcb_window_t window = showClosable("org.example.Mail");
        QTRY_COMPARE(identifiers(), QStringList{mail});
        workspace->terminate(application(mail));
        QTRY_COMPARE(foreign->closeRequests(window), 1);
    }

    void anActionThatCannotBeStartedLeavesItToTheWindows()
    {
        writeEntry(QStringLiteral("mail"), "Actions=quit;\n[Desktop Action quit]\nName=Quit\nExec=/nowhere/quit\n");
        start();
        const xcb_window_t window = showClosable("mail");
        QTRY_COMPARE(identifiers(), QStringList{QStringLiteral("mail")});
        workspace->terminate(application(QStringLiteral("mail")));
        QTRY_COMPARE(foreign->closeRequests(window), 1);
    }

    void quittingIsOfferedWhereThereIsAWay()
    {
        QVERIFY(showManaged(plan("paint")));
        QTRY_COMPARE(identifiers(), QStringList{paint});
        QVERIFY(!workspace->canTerminate(application(paint)));
        const xcb_window_t second = showClosable("paint");
        QTRY_VERIFY(workspace->canTerminate(application(paint)));
        foreign->destroy(second);
        QTRY_VERIFY(!workspace->canTerminate(application(paint)));
        const xcb_window_t third = showManaged(plan("paint"));
        foreign->setBytes(third, "_GTK_UNIQUE_BUS_NAME", "UTF8_STRING", ":1.7");
        foreign->setBytes(third, "_GTK_APPLICATION_OBJECT_PATH", "UTF8_STRING", "/org/example/paint");
        QTRY_VERIFY(workspace->canTerminate(application(paint)));
    }

    void quittingIsOfferedWhereTheEntryDoesIt()
    {
        writeEntry(QStringLiteral("mail"), "Actions=Quit;\n[Desktop Action Quit]\nName=Quit\nExec=true\n");
        start();
        QVERIFY(showManaged(plan("mail")));
        QTRY_COMPARE(identifiers(), QStringList{QStringLiteral("mail")});
        QVERIFY(workspace->canTerminate(application(QStringLiteral("mail"))));
    }

    void whatDoesNotRunIsNotOfferedToQuit() { QVERIFY(!workspace->canTerminate(RunningApplication{.id = 4711})); }

    void quittingAProgramThatOnlySaysSoClosesItsWindows()
    {
        const xcb_window_t window = showClosable("paint");
        foreign->setBytes(window, "_GTK_UNIQUE_BUS_NAME", "UTF8_STRING", "not a name");
        foreign->setBytes(window, "_GTK_APPLICATION_OBJECT_PATH", "UTF8_STRING", "nor/a path");
        QTRY_COMPARE(identifiers(), QStringList{paint});
        workspace->terminate(application(paint));
        QTRY_COMPARE(foreign->closeRequests(window), 1);
    }

private:
    void offerActions(xcb_window_t window, const Exporter &exporter) const
    {
        const QByteArray name = exporter.bus.connection().baseService().toUtf8();
        foreign->setBytes(window, "_GTK_UNIQUE_BUS_NAME", "UTF8_STRING", name);
        foreign->setBytes(window, "_GTK_APPLICATION_OBJECT_PATH", "UTF8_STRING", exportedPath.toUtf8());
    }
};

MOORLINE_TEST(QuittingTest);

} // namespace

#include "QuittingTest.moc"
