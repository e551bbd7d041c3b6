#include "platform/linux/apps/AppStarter.h"
#include "EntriesOnDisk.h"
#include "fakes/FakeClock.h"
#include "harness/TestCase.h"
#include "platform/linux/apps/DesktopEntries.h"
#include "platform/linux/apps/FileOpener.h"
#include "platform/linux/apps/StarterWorkspace.h"
#include "platform/linux/bus/Bus.h"
#include "platform/linux/x11/StartupMessages.h"
#include "platform/linux/x11/XConnection.h"
#include "support/FileUrls.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QRegularExpression>
#include <QSignalSpy>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace moorline::test {

namespace {

using namespace std::chrono_literals;

QString text(const char *latin1)
{
    return QString::fromLatin1(latin1);
}

/// What a started program found.
struct Record {
    QByteArray directory;
    qint64 session = 0;
    qint64 process = 0;
    QList<QByteArray> arguments;
    QList<QByteArray> environment;

    [[nodiscard]] QByteArray variable(const QByteArray &name) const
    {
        for (const QByteArray &one : environment) {
            if (one.startsWith(name + '='))
                return one.mid(name.size() + 1);
        }
        return "(unset)";
    }
};

constexpr char recorder[] = R"script(#!/bin/sh
part=$RECORDS/part.$$
{
    printf '%s\0' "$(pwd)" "$(awk '{ print $6 }' /proc/$$/stat)" "$$" "$#" "$@"
    env -0
} >"$part"
mv "$part" "$RECORDS/done.$$"
[ -z "$STAY" ] || exec sleep 20
)script";

Record recordIn(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QList<QByteArray> fields = file.readAll().split('\0');
    const qsizetype count = fields.at(3).toInt();
    return {.directory = fields.at(0),
        .session = fields.at(1).toLongLong(),
        .process = fields.at(2).toLongLong(),
        .arguments = fields.mid(4, count),
        .environment = fields.mid(4 + count)};
}

/// Another program on the bus, which keeps what it is asked.
class Service final : public QDBusVirtualObject {
public:
    explicit Service(const char *name)
        : m_connection(QDBusConnection::connectToBus(QDBusConnection::SessionBus, text(name)))
        , m_name(text(name))
    {
        m_connection.registerVirtualObject(text("/"), this, QDBusConnection::SubPath);
        m_connection.registerService(m_name);
    }
    ~Service() override
    {
        m_connection.unregisterObject(text("/"), QDBusConnection::UnregisterTree);
        QDBusConnection::disconnectFromBus(m_name);
    }

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override
    {
        calls.append(message);
        return connection.send(error.isEmpty() ? message.createReply() : message.createErrorReply(error, text("no")));
    }
    [[nodiscard]] QString introspect([[maybe_unused]] const QString &path) const override { return {}; }

    QList<QDBusMessage> calls;
    QString error;

private:
    QDBusConnection m_connection;
    QString m_name;
};

/// Hears what everybody on the display is told of starting programs.
class MessageListener final {
public:
    MessageListener()
        : m_connection(xcb_connect(nullptr, nullptr))
    {
        const auto *screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data;
        const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_change_window_attributes(m_connection, screen->root, XCB_CW_EVENT_MASK, &mask);
        free(xcb_get_input_focus_reply(m_connection, xcb_get_input_focus(m_connection), nullptr));
    }
    ~MessageListener() { xcb_disconnect(m_connection); }
    Q_DISABLE_COPY_MOVE(MessageListener)

    [[nodiscard]] QList<QByteArray> messages()
    {
        while (auto *event = xcb_poll_for_event(m_connection)) {
            if ((event->response_type & 0x7f) == XCB_CLIENT_MESSAGE)
                take(*reinterpret_cast<const xcb_client_message_event_t *>(event));
            free(event);
        }
        return m_messages;
    }

private:
    void take(const xcb_client_message_event_t &event)
    {
        auto *name = xcb_get_atom_name_reply(m_connection, xcb_get_atom_name(m_connection, event.type), nullptr);
        const QByteArray type(xcb_get_atom_name_name(name), xcb_get_atom_name_name_length(name));
        free(name);
        if (type == "_NET_STARTUP_INFO_BEGIN")
            m_part.clear();
        else if (type != "_NET_STARTUP_INFO")
            return;
        m_part += QByteArray(reinterpret_cast<const char *>(event.data.data8), sizeof event.data.data8);
        if (const qsizetype end = m_part.indexOf('\0'); end >= 0)
            m_messages.append(m_part.left(end));
    }

    xcb_connection_t *m_connection;
    QByteArray m_part;
    QList<QByteArray> m_messages;
};

} // namespace

class AppStarterTest final : public TestCase {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_disk = std::make_unique<EntriesOnDisk>();
        m_path = qgetenv("PATH");
        qputenv("PATH", QFile::encodeName(m_disk->path(text("bin"))) + ':' + m_path);
        m_disk->writeProgram(m_disk->path(text("bin/recorder")), recorder);
        QDir().mkpath(m_disk->path(text("records")));
        m_connection = XConnection::open();
        QVERIFY(m_connection);
        m_messages = std::make_unique<StartupMessages>(*m_connection);
        m_bus = std::make_unique<Bus>();
        m_bus->adopt(QDBusConnection::connectToBus(QDBusConnection::SessionBus, text("starter")));
        QVERIFY(m_bus->isOpen());
    }

    void cleanup()
    {
        m_starter.reset();
        m_entries.reset();
        m_bus.reset();
        m_messages.reset();
        m_connection.reset();
        QDBusConnection::disconnectFromBus(text("starter"));
        m_disk.reset();
        qputenv("PATH", m_path);
        TestCase::cleanup();
    }

    void aProgramFindsTheEnvironmentOfTheStartAndNothingOfTheBars()
    {
        open(writeEntry("pad", "Exec=recorder"));
        const Record record = onlyRecord();
        QCOMPARE(record.variable("MARK"), QByteArray("1 = one"));
        for (const char *name : {"QT_QPA_PLATFORM", "BAMF_DESKTOP_FILE_HINT", "MOORLINE_PREVIEW"})
            QCOMPARE(record.variable(name), QByteArray("(unset)"));
        const QByteArray id = record.variable("DESKTOP_STARTUP_ID");
        QVERIFY2(id.endsWith("_TIME777"), id.constData());
        QCOMPARE(record.variable("XDG_ACTIVATION_TOKEN"), id);
        QCOMPARE(record.variable("GIO_LAUNCHED_DESKTOP_FILE"), QFile::encodeName(m_disk->own(text("pad"))));
        QCOMPARE(record.variable("GIO_LAUNCHED_DESKTOP_FILE_PID").toLongLong(), record.process);
    }

    void aProgramIsAtHomeInASessionOfItsOwn()
    {
        open(writeEntry("pad", "Exec=recorder"));
        const Record record = onlyRecord();
        QCOMPARE(record.directory, QFile::encodeName(QDir::homePath()));
        QVERIFY(record.session > 0);
        QCOMPARE_NE(record.session, ::getsid(0));
        QCOMPARE(error(), std::nullopt);
    }

    void aProgramIsWhereItsEntrySaysIfThatIsThere_data()
    {
        QTest::addColumn<bool>("isThere");
        QTest::newRow("there") << true;
        QTest::newRow("gone") << false;
    }

    void aProgramIsWhereItsEntrySaysIfThatIsThere()
    {
        QFETCH(bool, isThere);
        const QString place = m_disk->path(text("place"));
        if (isThere)
            QDir().mkpath(place);
        open(writeEntry("pad", "Exec=recorder\nPath=" + place.toUtf8()));
        QCOMPARE(onlyRecord().directory, QFile::encodeName(isThere ? place : QDir::homePath()));
    }

    void filesArriveAsTheBytesTheyAre()
    {
        const QByteArray folder = QFile::encodeName(m_disk->path(text("files")));
        const QList<QByteArray> paths{folder + "/two words.txt", folder + "/50%f & 100%25.txt", folder + "/a\nb.txt",
            folder + "/'quoted' \"$HOME\".txt", folder + "/caf\xe9.txt", folder + "/-rf"};
        QList<QUrl> files;
        for (const QByteArray &path : paths)
            files.append(QUrl::fromEncoded("file://" + path.toPercentEncoding("/")));
        open(writeEntry("pad", "Exec=recorder --open %F"), files);
        QCOMPARE(onlyRecord().arguments, QList<QByteArray>{"--open"} + paths);
    }

    void aProgramForOneFileIsStartedForEach()
    {
        const QList<QUrl> files{QUrl(text("file:///a")), QUrl(text("file:///b")), QUrl(text("file:///c"))};
        open(writeEntry("pad", "Exec=recorder %f"), files);
        QTRY_COMPARE(records().size(), 3);
        QTRY_COMPARE(m_ended.size(), 3);
        QCOMPARE(m_answers.size(), 1);
    }

    void addressesStayAddresses()
    {
        open(writeEntry("pad", "Exec=recorder %U"), {QUrl(text("https://example.org/a%20b?c=d&e"))});
        QCOMPARE(onlyRecord().arguments, QList<QByteArray>{"https://example.org/a%20b?c=d&e"});
    }

    void theOtherCodesOfACommandAreFilledIn()
    {
        const QString path = writeEntry("pad", "Icon=pad-icon\nExec=recorder %i %c %k 100%%");
        open(path);
        QCOMPARE(
            onlyRecord().arguments, (QList<QByteArray>{"--icon", "pad-icon", "pad", QFile::encodeName(path), "100%"}));
    }

    void whatCannotBeStartedSaysWhy_data()
    {
        QTest::addColumn<QByteArray>("lines");
        QTest::addColumn<bool>("hasFiles");

        QTest::newRow("takes no files") << QByteArray("Exec=recorder") << true;
        QTest::newRow("nothing to run") << QByteArray("Name=Pad") << false;
        QTest::newRow("a missing program") << QByteArray("Exec=/nowhere/program") << false;
        QTest::newRow("a missing name") << QByteArray("Exec=no-such-program-anywhere %U") << true;
        QTest::newRow("an open quote") << QByteArray("Exec=recorder \"open") << false;
        QTest::newRow("hidden") << QByteArray("Exec=recorder\nHidden=true") << false;
        QTest::newRow("endless") << "Exec=recorder " + QByteArray(900'000, 'x') << false;
        QTest::newRow("no entry") << QByteArray() << false;
    }

    void whatCannotBeStartedSaysWhy()
    {
        QFETCH(QByteArray, lines);
        QFETCH(bool, hasFiles);
        const QString path = lines.isEmpty() ? m_disk->own(text("gone")) : writeEntry("pad", lines);
        open(path, hasFiles ? QList<QUrl>{QUrl(text("file:///a"))} : QList<QUrl>());
        QTRY_COMPARE(m_answers.size(), 1);
        QVERIFY(error());
        QVERIFY(!error()->isEmpty());
        QVERIFY(records().isEmpty());
    }

    void theEndOfAProcessIsToldAndNothingOfItStays()
    {
        const QString path = writeEntry("pad", "Exec=recorder");
        open(path);
        QTRY_COMPARE(m_ended.size(), 1);
        QCOMPARE(m_ended.first().at(0).toString(), path);
        QCOMPARE(m_started.size(), 1);
        QCOMPARE(m_started.first().at(0).toString(), path);
        QCOMPARE(m_started.first().at(1).toString().toLatin1(), onlyRecord().variable("DESKTOP_STARTUP_ID"));
        QCOMPARE(m_started.first().at(2), m_ended.first().at(1));
        QCOMPARE(::waitpid(pid_t(m_ended.first().at(1).toLongLong()), nullptr, WNOHANG), -1);
        QCOMPARE(errno, ECHILD);
    }

    void aProcessThatGoesOnIsNotToldToHaveEnded()
    {
        m_environment.append("STAY=1");
        open(writeEntry("pad", "Exec=recorder"));
        const Record record = onlyRecord();
        QTest::qWait(50);
        QCOMPARE(m_ended.size(), 0);
        QCOMPARE(::kill(pid_t(record.process), SIGKILL), 0);
        QTRY_COMPARE(m_ended.size(), 1);
    }

    void theEndOfTheStarterIsNothingToWhatItStarted()
    {
        m_environment.append("STAY=1");
        open(writeEntry("pad", "Exec=recorder"));
        const Record record = onlyRecord();
        m_starter.reset();
        QTest::qWait(50);
        QCOMPARE(::kill(pid_t(record.process), 0), 0);
        QCOMPARE(::kill(pid_t(record.process), SIGKILL), 0);
        QCOMPARE(::waitpid(pid_t(record.process), nullptr, 0), pid_t(record.process));
    }

    void aTerminalOfTheDesktopIsPutBefore_data()
    {
        QTest::addColumn<QStringList>("terminals");
        QTest::addColumn<QList<QByteArray>>("arguments");

        const QString xdg = text("xdg-terminal-exec");
        const QString debian = text("x-terminal-emulator");
        QTest::newRow("xdg-terminal-exec") << QStringList{xdg, debian} << QList<QByteArray>{"top", "-d", "a b"};
        QTest::newRow("x-terminal-emulator") << QStringList{debian} << QList<QByteArray>{"-e", "top", "-d", "a b"};
    }

    void aTerminalOfTheDesktopIsPutBefore()
    {
        QFETCH(QStringList, terminals);
        QFETCH(QList<QByteArray>, arguments);
        for (const QString &terminal : std::as_const(terminals))
            m_disk->writeProgram(m_disk->path(text("bin/") + terminal), recorder);
        open(writeEntry("top", "Terminal=true\nExec=top -d \"a b\""));
        const Record record = onlyRecord();
        QCOMPARE(record.arguments, arguments);
        // The window is the terminal's.
        QCOMPARE(record.variable("GIO_LAUNCHED_DESKTOP_FILE"), QByteArray("(unset)"));
    }

    void aRealTerminalRunsTheCommand()
    {
        open(writeEntry("tool", "Terminal=true\nExec=recorder \"a b\" %F"), {QUrl(text("file:///c%20d"))});
        QCOMPARE(onlyRecord().arguments, (QList<QByteArray>{"a b", "/c d"}));
    }

    void theBusyCursorIsOnlyForThoseThatAskForIt_data()
    {
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<bool>("isTold");
        QTest::newRow("asked") << QByteArray("StartupNotify=true\n") << true;
        QTest::newRow("not asked") << QByteArray() << false;
        QTest::newRow("refused") << QByteArray("StartupNotify=false\n") << false;
    }

    void theBusyCursorIsOnlyForThoseThatAskForIt()
    {
        QFETCH(QByteArray, line);
        QFETCH(bool, isTold);
        MessageListener listener;
        open(writeEntry("pad", line + "Exec=recorder"));
        QTRY_COMPARE(m_ended.size(), 1);
        const QByteArray id = onlyRecord().variable("DESKTOP_STARTUP_ID");
        QVERIFY(id.endsWith("_TIME777"));
        if (isTold)
            QTRY_COMPARE(listener.messages().size(), 2);
        const QList<QByteArray> messages = listener.messages();
        QCOMPARE(!messages.isEmpty(), isTold);
        if (isTold) {
            QVERIFY2(messages.at(0).startsWith("new: ID=\"" + id + "\" NAME=\"pad\""), messages.at(0).constData());
            QCOMPARE(messages.at(1), "remove: ID=\"" + id + '"');
        }
    }

    void anApplicationOnTheBusIsAskedThere()
    {
        Service service("org.example.Clocks");
        open(writeEntry("org.example.Clocks", "DBusActivatable=true\nExec=recorder"));
        QTRY_COMPARE(m_answers.size(), 1);
        QCOMPARE(error(), std::nullopt);
        QCOMPARE(service.calls.size(), 1);
        const QDBusMessage call = service.calls.first();
        QCOMPARE(call.path(), text("/org/example/Clocks"));
        QCOMPARE(call.interface(), text("org.freedesktop.Application"));
        QCOMPARE(call.member(), text("Activate"));
        const auto data = qdbus_cast<QVariantMap>(call.arguments().at(0));
        QVERIFY(data.value(text("desktop-startup-id")).toString().endsWith(text("_TIME777")));
        QCOMPARE(data.value(text("activation-token")), data.value(text("desktop-startup-id")));
        QVERIFY(records().isEmpty());
    }

    void anApplicationOnTheBusIsHandedFilesThere()
    {
        Service service("org.example.Clocks");
        open(writeEntry("org.example.Clocks", "DBusActivatable=true\nExec=recorder %U"),
            {QUrl::fromEncoded("file:///a%20b%E9")});
        QTRY_COMPARE(service.calls.size(), 1);
        QCOMPARE(service.calls.first().member(), text("Open"));
        QCOMPARE(service.calls.first().arguments().at(0).toStringList(), QStringList(text("file:///a%20b%E9")));
    }

    void withoutAServiceTheCommandIsRunOnce()
    {
        open(writeEntry("org.example.Clocks", "DBusActivatable=true\nExec=recorder"));
        QTRY_COMPARE(m_ended.size(), 1);
        QTest::qWait(50);
        QCOMPARE(records().size(), 1);
        QCOMPARE(m_answers.size(), 1);
        QCOMPARE(error(), std::nullopt);
    }

    void aServiceThatRefusesIsNotStartedAgain()
    {
        Service service("org.example.Clocks");
        service.error = text("org.example.Error");
        open(writeEntry("org.example.Clocks", "DBusActivatable=true\nExec=recorder"));
        QTRY_COMPARE(m_answers.size(), 1);
        QCOMPARE(error(), text("no"));
        QVERIFY(records().isEmpty());
    }

    void aServiceManagerIsGivenTheProcessAsAnApplicationOfItsOwn()
    {
        Service manager("org.freedesktop.systemd1");
        open(writeEntry("my-pad", "Exec=recorder"));
        QTRY_COMPARE(manager.calls.size(), 1);
        const QDBusMessage call = manager.calls.first();
        QCOMPARE(call.member(), text("StartTransientUnit"));
        QCOMPARE(call.signature(), text("ssa(sv)a(sa(sv))"));
        const QRegularExpression name(text("^app-moorline-my\\\\x2dpad-[0-9a-f]{8}\\.scope$"));
        QVERIFY(name.match(call.arguments().at(0).toString()).hasMatch());
        QCOMPARE(call.arguments().at(1).toString(), text("fail"));
        // Nothing of it ran yet.
        QCOMPARE(m_started.size(), 0);
        QTRY_COMPARE(m_started.size(), 1);
        QCOMPARE(processesOf(call), QList<uint>{uint(m_started.first().at(2).toLongLong())});
    }

    void aWebAddressIsOpenedByTheBrowserOfChoice()
    {
        writeEntry("one", "MimeType=x-scheme-handler/https;\nExec=recorder one %u");
        writeEntry("two", "MimeType=x-scheme-handler/https;\nExec=recorder two %u");
        m_disk->write(m_disk->mimeList(), "[Default Applications]\nx-scheme-handler/https=two.desktop\n");
        start();
        m_starter->openAddress(QUrl(text("https://example.org/?a=b%20c")));
        QCOMPARE(onlyRecord().arguments, (QList<QByteArray>{"two", "https://example.org/?a=b%20c"}));
    }

    void withoutABrowserTheDesktopIsAsked()
    {
        m_disk->writeProgram(m_disk->path(text("bin/xdg-open")), recorder);
        start();
        m_starter->openAddress(QUrl(text("https://example.org/")));
        QCOMPARE(onlyRecord().arguments, QList<QByteArray>{"https://example.org/"});
    }

    void filesAreShownByWhoeverOffersIt()
    {
        Service manager("org.freedesktop.FileManager1");
        writeFileManager();
        start();
        m_starter->reveal({QUrl::fromEncoded("file:///a/b%E9"), QUrl(text("file:///a/c d"))});
        QTRY_COMPARE(manager.calls.size(), 1);
        QCOMPARE(manager.calls.first().member(), text("ShowItems"));
        QCOMPARE(manager.calls.first().arguments().at(0).toStringList(),
            (QStringList{text("file:///a/b%E9"), text("file:///a/c%20d")}));
        QVERIFY(manager.calls.first().arguments().at(1).toString().endsWith(text("_TIME777")));
        QTest::qWait(50);
        QVERIFY(records().isEmpty());
    }

    void whereNobodyShowsFilesTheirFoldersAreOpened()
    {
        writeFileManager();
        start();
        m_starter->reveal({QUrl(text("file:///a/b")), QUrl(text("file:///a/c")), QUrl(text("file:///d/e"))});
        QCOMPARE(onlyRecord().arguments, (QList<QByteArray>{"/a", "/d"}));
    }

    void aFolderIsShownByTheFileManager()
    {
        writeFileManager();
        start();
        m_starter->showFolder(QUrl::fromLocalFile(text("/a b/100%")), nullptr);
        QCOMPARE(onlyRecord().arguments, QList<QByteArray>{"/a b/100%"});
    }

    void aFileIsOpenedByTheApplicationForItsKind_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("text") << QByteArray("a b.txt") << QByteArray("words");
        QTest::newRow("a name that is no text") << QByteArray("caf\xe9.txt") << QByteArray("words");
        // What is read there is not run.
        QTest::newRow("a desktop entry") << QByteArray(
            "pad.desktop") << QByteArray("[Desktop Entry]\nType=Application\nName=Pad\nExec=recorder run\n");
        QTest::newRow("a script") << QByteArray("run.sh") << QByteArray("#!/bin/sh\nrecorder run\n");
    }

    void aFileIsOpenedByTheApplicationForItsKind()
    {
        QFETCH(QByteArray, name);
        QFETCH(QByteArray, content);
        writeEntry("editor", "MimeType=text/plain;\nExec=recorder edit %F");
        writeEntry("viewer", "MimeType=image/png;application/octet-stream;\nExec=recorder view %F");
        start();
        const QByteArray path = writeFile(name, content);
        FileOpener opener(*m_entries, *m_starter, m_clock);
        opener.open(fileUrl(path));
        QCOMPARE(onlyRecord().arguments, (QList<QByteArray>{"edit", path}));
    }

    void aFolderIsOpenedByTheFileManager()
    {
        writeFileManager();
        start();
        FileOpener opener(*m_entries, *m_starter, m_clock);
        opener.open(QUrl::fromLocalFile(m_disk->path(text("bin"))));
        QCOMPARE(onlyRecord().arguments, QList<QByteArray>{QFile::encodeName(m_disk->path(text("bin")))});
    }

    void whatNobodyOpensStaysClosed()
    {
        writeEntry("viewer", "MimeType=application/octet-stream;\nExec=recorder view %F");
        start();
        FileOpener opener(*m_entries, *m_starter, m_clock);
        const QByteArray program = writeFile("tool",
            QByteArray("\x7f"
                       "ELF\x02\x01\x01",
                7)
                + QByteArray(57, '\0'));
        QVERIFY(!fileTypes(program).isEmpty());
        opener.open(fileUrl(program));
        opener.open(QUrl(text("file:///nowhere")));
        QVERIFY(fileTypes("/nowhere").isEmpty());
        QTest::qWait(200);
        QVERIFY(records().isEmpty());
    }

    void aFileManagerThatDoesNotStartSaysWhy()
    {
        writeEntry("files", "MimeType=inode/directory;\nCategories=FileManager;\nExec=/nowhere/files %U");
        showFolder();
        QTRY_COMPARE(m_answers.size(), 1);
        QVERIFY(error() && !error()->isEmpty());
        const StarterWorkspace workspace(*m_entries, *m_starter, m_clock);
        QCOMPARE(workspace.applicationPath(text("com.apple.finder")), std::optional(m_disk->own(text("files"))));
    }

    void withoutAFileManagerAFolderIsShownByWhoeverOffersIt()
    {
        Service manager("org.freedesktop.FileManager1");
        showFolder();
        QTRY_COMPARE(m_answers.size(), 1);
        QCOMPARE(error(), std::nullopt);
        QCOMPARE(manager.calls.size(), 1);
        QCOMPARE(manager.calls.first().member(), text("ShowFolders"));
        QCOMPARE(manager.calls.first().arguments().at(0).toStringList(), QStringList(text("file:///a")));
    }

    void withoutAnybodyWhoShowsAFolderThatIsSaidAtOnce()
    {
        showFolder();
        QTRY_COMPARE(m_answers.size(), 1);
        QCOMPARE(error(), text("no file manager is installed"));
        QCOMPARE(m_clock.runningTimers(), 0);
    }

    void theFileManagerIsStartedFromFindersPlace()
    {
        writeFileManager();
        open(text("/System/Library/CoreServices/Finder.app"));
        QCOMPARE(onlyRecord().variable("GIO_LAUNCHED_DESKTOP_FILE"), QFile::encodeName(m_disk->own(text("files"))));
    }

    void aProgramWithoutAnEntryIsStartedTheSameWay()
    {
        start();
        m_starter->startProgram(text("recorder"), {text("a b"), text("c")});
        const Record record = onlyRecord();
        QCOMPARE(record.arguments, (QList<QByteArray>{"a b", "c"}));
        QCOMPARE(record.directory, QFile::encodeName(QDir::homePath()));
        QCOMPARE(record.variable("MARK"), QByteArray("1 = one"));
        QCOMPARE(record.variable("QT_QPA_PLATFORM"), QByteArray("(unset)"));
        QVERIFY(record.variable("DESKTOP_STARTUP_ID").endsWith("_TIME777"));
        QCOMPARE(record.variable("GIO_LAUNCHED_DESKTOP_FILE"), QByteArray("(unset)"));
        QTRY_COMPARE(::waitpid(pid_t(record.process), nullptr, WNOHANG), -1);
        QCOMPARE(m_ended.size(), 0);
    }

private:
    QString writeEntry(const char *id, const QByteArray &lines) const
    {
        return m_disk->writeEntry(m_disk->own(text(id)), "Name=" + QByteArray(id) + '\n' + lines);
    }

    /// A file that may be run, by the bytes of its name. Its path.
    QByteArray writeFile(const QByteArray &name, const QByteArray &content) const
    {
        const QByteArray path = QFile::encodeName(m_disk->path(text("files/")));
        QDir().mkpath(m_disk->path(text("files")));
        const int file = ::open((path + name).constData(), O_CREAT | O_WRONLY | O_CLOEXEC, S_IRWXU);
        if (file < 0 || ::write(file, content.constData(), size_t(content.size())) != content.size())
            qFatal("cannot write %s", name.constData());
        ::close(file);
        return path + name;
    }

    void writeFileManager() const
    {
        writeEntry("files", "MimeType=inode/directory;\nCategories=FileManager;\nExec=recorder %U");
    }

    void start()
    {
        m_environment += {"PATH=" + qgetenv("PATH"), "HOME=" + qgetenv("HOME"), "DISPLAY=" + qgetenv("DISPLAY"),
            "MARK=1 = one", "DESKTOP_STARTUP_ID=old", "BAMF_DESKTOP_FILE_HINT=/old", "GIO_LAUNCHED_DESKTOP_FILE=/old",
            "MOORLINE_PREVIEW=/old", "RECORDS=" + QFile::encodeName(m_disk->path(text("records")))};
        m_entries = std::make_unique<DesktopEntries>(m_clock, m_disk->places());
        m_starter = std::make_unique<AppStarter>(
            *m_entries, *m_bus, m_clock, m_environment, m_messages.get(), [] { return quint32(777); });
        m_environment.clear();
        m_answers.clear();
        m_started.clear();
        m_ended.clear();
        connect(m_starter.get(), &AppStarter::started, this,
            [this](const QString &path, const QString &id, qint64 process) {
                m_started.append({path, id, process});
            });
        connect(m_starter.get(), &AppStarter::ended, this, [this](const QString &path, qint64 process) {
            m_ended.append({path, process});
        });
    }

    void open(const QString &path, const QList<QUrl> &files = {})
    {
        start();
        m_starter->open(path, files, [this](const std::optional<QString> &error) { m_answers.append({error}); });
    }

    void showFolder()
    {
        start();
        m_starter->showFolder(QUrl::fromLocalFile(text("/a")),
            [this](const std::optional<QString> &error) { m_answers.append({error}); });
    }

    [[nodiscard]] std::optional<QString> error() const
    {
        return m_answers.isEmpty() ? text("no answer") : m_answers.first();
    }

    [[nodiscard]] QStringList records() const
    {
        return QDir(m_disk->path(text("records"))).entryList({text("done.*")});
    }

    /// Of the one program that is started.
    [[nodiscard]] Record onlyRecord() const
    {
        if (!QTest::qWaitFor([this] { return records().size() == 1; }))
            return {};
        return recordIn(m_disk->path(text("records/") + records().first()));
    }

    static QList<uint> processesOf(const QDBusMessage &call)
    {
        QList<uint> processes;
        const auto properties = call.arguments().at(2).value<QDBusArgument>();
        properties.beginArray();
        while (!properties.atEnd()) {
            QString name;
            QDBusVariant value;
            properties.beginStructure();
            properties >> name >> value;
            properties.endStructure();
            if (name == text("PIDs"))
                processes = qdbus_cast<QList<uint>>(value.variant());
        }
        properties.endArray();
        return processes;
    }

    QByteArray m_path;
    FakeClock m_clock;
    std::unique_ptr<EntriesOnDisk> m_disk;
    std::unique_ptr<XConnection> m_connection;
    std::unique_ptr<StartupMessages> m_messages;
    std::unique_ptr<Bus> m_bus;
    std::unique_ptr<DesktopEntries> m_entries;
    std::unique_ptr<AppStarter> m_starter;
    QList<QByteArray> m_environment;
    QList<std::optional<QString>> m_answers;
    QList<QVariantList> m_started;
    QList<QVariantList> m_ended;
};

MOORLINE_TEST(AppStarterTest);

} // namespace moorline::test

#include "AppStarterTest.moc"
