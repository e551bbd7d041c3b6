#include "platform/linux/desktop/FileTransfer.h"

#include "PrivateBus.h"
#include "fakes/FakeClock.h"
#include "harness/TestCase.h"
#include "platform/linux/bus/Bus.h"
#include "platform/linux/bus/BusObject.h"
#include "platform/linux/desktop/PlainFiles.h"
#include "support/FileUrls.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusVirtualObject>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace moorline;
using namespace moorline::test;

namespace {

using namespace std::chrono_literals;

/// The document portal, as another program on the bus.
struct Portal {
    explicit Portal(const QByteArray &address)
    {
        auto connection = QDBusConnection::connectToBus(QString::fromLocal8Bit(address), QStringLiteral("portal"));
        bus.adopt(connection);
        connection.registerService(QStringLiteral("org.freedesktop.portal.Documents"));
    }
    ~Portal() { QDBusConnection::disconnectFromBus(QStringLiteral("portal")); }
    Q_DISABLE_COPY_MOVE(Portal)

    BusMethod::Reply start(const QVariantMap &options)
    {
        calls.append(QStringLiteral("start autostop=%1").arg(options.value(QStringLiteral("autostop")).toString()));
        if (asked)
            asked();
        return QVariantList{key};
    }
    BusMethod::Reply add(const QVariantList &arguments)
    {
        calls.append(QStringLiteral("add ") + arguments[0].toString());
        const auto handed = qdbus_cast<QList<QDBusUnixFileDescriptor>>(arguments[1]);
        for (const QDBusUnixFileDescriptor &file : handed) {
            QByteArray path(4096, '\0');
            const QByteArray place = "/proc/self/fd/" + QByteArray::number(file.fileDescriptor());
            path.truncate(std::max<ssize_t>(readlink(place.constData(), path.data(), size_t(path.size())), 0));
            files.append(path);
        }
        if (refuses)
            return BusError{QStringLiteral("org.freedesktop.portal.Error.NotAllowed"), {}};
        return QVariantList{};
    }

    QString key = QStringLiteral("1234");
    bool refuses = false;
    /// Called before a key is given.
    std::function<void()> asked;
    QStringList calls;
    QByteArrayList files;
    Bus bus;
    BusObject object{bus, QStringLiteral("/org/freedesktop/portal/documents"),
        {{.name = QStringLiteral("org.freedesktop.portal.FileTransfer"),
            .methods = {{.name = QStringLiteral("StartTransfer"),
                            .takes = {QStringLiteral("a{sv}")},
                            .gives = {QStringLiteral("s")},
                            .call = [this](const QVariantList &a) { return start(qdbus_cast<QVariantMap>(a[0])); }},
                {.name = QStringLiteral("AddFiles"),
                    .takes = {QStringLiteral("s"), QStringLiteral("ah"), QStringLiteral("a{sv}")},
                    .gives = {},
                    .call = [this](const QVariantList &a) { return add(a); }},
                {.name = QStringLiteral("StopTransfer"),
                    .takes = {QStringLiteral("s")},
                    .gives = {},
                    .call =
                        [this](const QVariantList &a) {
                            calls.append(QStringLiteral("stop ") + a[0].toString());
                            return BusMethod::Reply(QVariantList{});
                        }}},
            .properties = [] { return QVariantMap(); }}}};
};

/// Hears everything and says nothing.
class Silence final : public QDBusVirtualObject {
public:
    [[nodiscard]] QString introspect(const QString &) const override { return {}; }
    bool handleMessage(const QDBusMessage &, const QDBusConnection &) override
    {
        ++timesAsked;
        return true;
    }

    int timesAsked = 0;
};

} // namespace

/// A file on its way through the document portal, over a real bus.
class FileTransferTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        TestCase::init();
        QVERIFY(m_daemon.start());
        m_root = std::make_unique<QTemporaryDir>();
        m_bus = std::make_unique<Bus>();
        m_bus->adopt(QDBusConnection::connectToBus(QString::fromLocal8Bit(m_daemon.address()), QStringLiteral("bar")));
        QVERIFY(m_bus->isOpen());
        m_files = std::make_unique<PlainFiles>(m_clock, *m_bus);
    }

    void cleanup()
    {
        m_files.reset();
        m_bus.reset();
        QDBusConnection::disconnectFromBus(QStringLiteral("bar"));
        m_daemon.end();
        TestCase::cleanup();
    }

    void theKeyIsOfferedOnceTheFileIsHandedOver()
    {
        Portal portal(m_daemon.address());
        const QByteArray path = write("caf\xe9 %41");
        auto offer = m_files->prepareDrag(fileUrl(path));
        QVERIFY(offer->formats().isEmpty());
        const QHash<QString, QByteArray> formats{{QStringLiteral("application/vnd.portal.filetransfer"), "1234"}};
        QTRY_COMPARE(offer->formats(), formats);
        QCOMPARE(portal.files, QByteArrayList{path});
        QCOMPARE(portal.calls, (QStringList{QStringLiteral("start autostop=false"), QStringLiteral("add 1234")}));
        offer.reset();
        QTRY_COMPARE(portal.calls.value(2), QStringLiteral("stop 1234"));
        // What is no text only its bytes remove.
        QCOMPARE(unlink(path.constData()), 0);
    }

    void withoutABusThereIsTheUrlAlone()
    {
        Bus none;
        PlainFiles files(m_clock, none);
        const auto offer = files.prepareDrag(fileUrl(write("letter")));
        QTest::qWait(200);
        QVERIFY(offer->formats().isEmpty());
    }

    void aPortalThatIsSilentKeepsNobodyWaiting()
    {
        Silence silence;
        auto silent =
            QDBusConnection::connectToBus(QString::fromLocal8Bit(m_daemon.address()), QStringLiteral("silent"));
        QVERIFY(silent.registerVirtualObject(QStringLiteral("/"), &silence, QDBusConnection::SubPath));
        QVERIFY(silent.registerService(QStringLiteral("org.freedesktop.portal.Documents")));
        auto offer = m_files->prepareDrag(fileUrl(write("letter")));
        QTRY_COMPARE(silence.timesAsked, 1);
        m_clock.advance(9'999ms);
        QCOMPARE(m_clock.runningTimers(), 1);
        m_clock.advance(1ms);
        QCOMPARE(m_clock.runningTimers(), 0);
        QVERIFY(offer->formats().isEmpty());
        QDBusConnection::disconnectFromBus(QStringLiteral("silent"));
    }

    void onlyRegularFilesAreHandedOver_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("a folder") << QStringLiteral("folder");
        QTest::newRow("a pipe") << QStringLiteral("pipe");
        QTest::newRow("nothing") << QStringLiteral("nothing");
    }

    void onlyRegularFilesAreHandedOver()
    {
        QFETCH(QString, name);
        QVERIFY(QDir(m_root->path()).mkdir(QStringLiteral("folder")));
        QCOMPARE(mkfifo((QFile::encodeName(m_root->filePath(QStringLiteral("pipe")))).constData(), S_IRUSR), 0);
        QVERIFY(!FileTransfer::open(QFile::encodeName(m_root->filePath(name))).isValid());
        QVERIFY(FileTransfer::open(write("letter")).isValid());
    }

    void whatThePortalRefusesIsNotOffered()
    {
        Portal portal(m_daemon.address());
        portal.refuses = true;
        const auto offer = m_files->prepareDrag(fileUrl(write("letter")));
        QTRY_COMPARE(portal.calls.size(), 2);
        QTest::qWait(50);
        QVERIFY(offer->formats().isEmpty());
    }

    void aKeyThatIsNoneIsNotUsed_data()
    {
        QTest::addColumn<QString>("key");
        QTest::newRow("empty") << QString();
        QTest::newRow("too long") << QString(1025, u'k');
    }

    void aKeyThatIsNoneIsNotUsed()
    {
        QFETCH(QString, key);
        Portal portal(m_daemon.address());
        portal.key = key;
        auto offer = m_files->prepareDrag(fileUrl(write("letter")));
        QTRY_COMPARE(portal.calls.size(), 1);
        QTest::qWait(50);
        QVERIFY(offer->formats().isEmpty());
        offer.reset();
        QTest::qWait(50);
        QCOMPARE(portal.calls.size(), 1);
    }

    /// What another program took may be kept for it until the very end.
    void itMayBeKeptLongerThanItCounts()
    {
        Portal portal(m_daemon.address());
        const auto offer = m_files->prepareDrag(fileUrl(write("letter")));
        QTRY_VERIFY(!offer->formats().isEmpty());
        m_files.reset();
        QVERIFY(offer->formats().isEmpty());
        QTRY_COMPARE(portal.calls.value(2), QStringLiteral("stop 1234"));
    }

    void whatIsOverBeforeItBeganIsNotBegun()
    {
        Portal portal(m_daemon.address());
        m_files->prepareDrag(fileUrl(write("letter"))).reset();
        const auto next = m_files->prepareDrag(fileUrl(write("letter")));
        QTRY_VERIFY(!next->formats().isEmpty());
        QCOMPARE(portal.calls, (QStringList{QStringLiteral("start autostop=false"), QStringLiteral("add 1234")}));
    }

    /// As a click is, which is over long before a portal is there that has to be started.
    void aKeyThatComesTooLateIsGivenBack()
    {
        Portal portal(m_daemon.address());
        auto offer = m_files->prepareDrag(fileUrl(write("letter")));
        portal.asked = [&offer] { offer.reset(); };
        QTRY_COMPARE(portal.calls, (QStringList{QStringLiteral("start autostop=false"), QStringLiteral("stop 1234")}));
        QCOMPARE(m_clock.runningTimers(), 0);
    }

    void theEndUnderAQuestionDoesNoHarm()
    {
        Portal portal(m_daemon.address());
        const auto offer = m_files->prepareDrag(fileUrl(write("letter")));
        portal.asked = [this] { m_files.reset(); };
        QTRY_COMPARE(portal.calls.size(), 1);
        QTest::qWait(50);
        QVERIFY(offer->formats().isEmpty());
        QCOMPARE(m_clock.runningTimers(), 0);
    }

private:
    [[nodiscard]] QByteArray write(const QByteArray &name) const
    {
        QByteArray path = QFile::encodeName(m_root->path()) + '/' + name;
        const int file = ::open(path.constData(), O_CREAT | O_WRONLY | O_CLOEXEC, S_IRUSR | S_IWUSR);
        if (file < 0)
            qFatal("cannot write %s", path.constData());
        ::close(file);
        return path;
    }

    PrivateBus m_daemon;
    std::unique_ptr<QTemporaryDir> m_root;
    FakeClock m_clock;
    std::unique_ptr<Bus> m_bus;
    std::unique_ptr<PlainFiles> m_files;
};

MOORLINE_TEST(FileTransferTest);

#include "FileTransferTest.moc"
