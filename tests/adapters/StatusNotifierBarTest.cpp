#include "platform/linux/desktop/StatusNotifierBar.h"

#include "StatusNotifierTestCase.h"
#include "platform/linux/desktop/SvgSymbols.h"

#include <QDBusReply>
#include <QSignalSpy>

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;

namespace {

const QString watcherName = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString watcherPath = QStringLiteral("/StatusNotifierWatcher");
const QString item = QStringLiteral("org.kde.StatusNotifierItem");
const QString itemPath = QStringLiteral("/StatusNotifierItem");
const QString properties = QStringLiteral("org.freedesktop.DBus.Properties");

/// The panel that keeps the list of items, and may show them itself.
class Watcher final {
public:
    explicit Watcher(Bus &bus)
        : m_bus(bus)
        , m_object(bus, watcherPath, {interface()})
    {
        isThere = QDBusConnection(bus.connection()).registerService(watcherName);
    }
    ~Watcher() { QDBusConnection(m_bus.connection()).unregisterService(watcherName); }

    void tell(const QString &signal) { m_object.emitSignal(watcherName, signal, {}); }

    bool isThere = false;
    bool takesItems = true;
    bool hasHost = true;
    bool tellsOfHost = true;
    QStringList items;

private:
    BusInterface interface()
    {
        const auto take = [this](const QVariantList &arguments) -> BusMethod::Reply {
            if (!takesItems)
                return BusError::invalidArguments(QStringLiteral("not now"));
            items.append(arguments.first().toString());
            return QVariantList();
        };
        return {watcherName, {{QStringLiteral("RegisterStatusNotifierItem"), {QStringLiteral("s")}, {}, take}}, [this] {
                    return tellsOfHost ? QVariantMap{{QStringLiteral("IsStatusNotifierHostRegistered"), hasHost}}
                                       : QVariantMap();
                }};
    }

    Bus &m_bus;
    BusObject m_object;
};

StatusBarItem trialItem()
{
    return {
        .name = QStringLiteral("Moorline"),
        .symbol = QStringLiteral("dock.rectangle"),
        .color = QColor(166, 166, 166),
        .menu = [] { return Menu{{.title = QStringLiteral("Quit")}}; },
    };
}

} // namespace

class StatusNotifierBarTest final : public StatusNotifierTestCase {
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        StatusNotifierTestCase::init();
        m_bar = std::make_unique<StatusNotifierBar>(bus, clock, m_symbols);
        m_bar->show(trialItem());
    }

    void cleanup()
    {
        m_bar.reset();
        StatusNotifierTestCase::cleanup();
    }

    // Registration

    void aWatcherThatIsThereIsToldOfTheItem()
    {
        const Watcher watcher(panelBus);
        QVERIFY(watcher.isThere);
        QTRY_VERIFY(m_bar->isShown());
        QCOMPARE(watcher.items, QStringList{bus.connection().baseService()});
    }

    void anItemThatComesAfterItsWatcherIsToldOf()
    {
        m_bar.reset();
        const Watcher watcher(panelBus);
        m_bar = std::make_unique<StatusNotifierBar>(bus, clock, m_symbols);
        m_bar->show(trialItem());
        QTRY_VERIFY(m_bar->isShown());
        QCOMPARE(watcher.items, QStringList{bus.connection().baseService()});
    }

    void aWatcherThatComesAgainIsToldAgain()
    {
        auto watcher = std::make_unique<Watcher>(panelBus);
        QTRY_VERIFY(m_bar->isShown());
        QSignalSpy changed(m_bar.get(), &StatusNotifierBar::shownChanged);
        watcher.reset();
        QTRY_VERIFY(!m_bar->isShown());
        watcher = std::make_unique<Watcher>(panelBus);
        QTRY_VERIFY(m_bar->isShown());
        QCOMPARE(watcher->items, QStringList{bus.connection().baseService()});
        QCOMPARE(changed.size(), 2);
    }

    void theWatcherOfABusThatCameAgainIsToldAgain()
    {
        {
            const Watcher watcher(panelBus);
            QTRY_VERIFY(m_bar->isShown());
        }
        open();
        QVERIFY(!m_bar->isShown());
        const Watcher watcher(panelBus);
        QVERIFY(watcher.isThere);
        QTRY_VERIFY(m_bar->isShown());
        QCOMPARE(watcher.items, QStringList{bus.connection().baseService()});
        QCOMPARE(property(QStringLiteral("Id")).toString(), QStringLiteral("Moorline"));
    }

    void aWatcherWithoutAHostShowsNothing()
    {
        Watcher watcher(panelBus);
        watcher.hasHost = false;
        QTRY_COMPARE(watcher.items.size(), 1);
        QTest::qWait(50);
        QVERIFY(!m_bar->isShown());

        watcher.hasHost = true;
        watcher.tell(QStringLiteral("StatusNotifierHostRegistered"));
        QTRY_VERIFY(m_bar->isShown());
        QCOMPARE(watcher.items.size(), 1);

        // One of two hosts may have gone.
        watcher.tell(QStringLiteral("StatusNotifierHostUnregistered"));
        QTest::qWait(50);
        QVERIFY(m_bar->isShown());
        watcher.hasHost = false;
        watcher.tell(QStringLiteral("StatusNotifierHostUnregistered"));
        QTRY_VERIFY(!m_bar->isShown());
    }

    void aWatcherThatCannotTellOfHostsIsOneItself()
    {
        Watcher watcher(panelBus);
        watcher.tellsOfHost = false;
        QTRY_VERIFY(m_bar->isShown());
    }

    void aWatcherThatRefusesIsAskedAgainWhenAHostComes()
    {
        QTest::ignoreMessage(QtDebugMsg, "Moorline: the tray does not take the item: not now");
        Watcher watcher(panelBus);
        watcher.takesItems = false;
        QTest::qWait(50);
        QVERIFY(!m_bar->isShown());
        watcher.takesItems = true;
        watcher.tell(QStringLiteral("StatusNotifierHostRegistered"));
        QTRY_VERIFY(m_bar->isShown());
        QCOMPARE(watcher.items.size(), 1);
    }

    // The item

    void theItemTellsWhatItIs()
    {
        QCOMPARE(property(QStringLiteral("Category")).toString(), QStringLiteral("ApplicationStatus"));
        QCOMPARE(property(QStringLiteral("Id")).toString(), QStringLiteral("Moorline"));
        QCOMPARE(property(QStringLiteral("Title")).toString(), QStringLiteral("Moorline"));
        QCOMPARE(property(QStringLiteral("Status")).toString(), QStringLiteral("Active"));
        QCOMPARE(property(QStringLiteral("IconName")).toString(), QString());
        QCOMPARE(property(QStringLiteral("ItemIsMenu")), QVariant(true));
        QCOMPARE(property(QStringLiteral("WindowId")), QVariant(0));
        QCOMPARE(property(QStringLiteral("Menu")).value<QDBusObjectPath>().path(), QStringLiteral("/MenuBar"));
        const auto tip = qdbus_cast<StatusNotifierToolTip>(property(QStringLiteral("ToolTip")));
        QCOMPARE(tip.title, QStringLiteral("Moorline"));
        QCOMPARE(tip.text, QString());
        QVERIFY(tip.pictures.isEmpty());
    }

    void allPropertiesComeTogether()
    {
        const QDBusReply<QVariantMap> all(call(itemPath, properties, QStringLiteral("GetAll"), {item}));
        QVERIFY(all.isValid());
        QCOMPARE(all.value().size(), 16);
        QCOMPARE(all.value().value(QStringLiteral("Title")).toString(), QStringLiteral("Moorline"));
    }

    void thePictureComesInEverySizeByteByByte()
    {
        const auto pictures = qdbus_cast<QList<StatusNotifierPicture>>(property(QStringLiteral("IconPixmap")));
        QList<int> sides;
        for (const StatusNotifierPicture &picture : pictures) {
            sides.append(picture.width);
            QCOMPARE(picture.height, picture.width);
            QCOMPARE(picture.bytes.size(), picture.width * picture.height * 4);
        }
        QCOMPARE(sides, (QList<int>{16, 18, 22, 24, 32, 48, 64}));
        // Alpha, red, green, blue; the colour as it is where it is half transparent.
        const QByteArray &bytes = pictures.first().bytes;
        QSet<QByteArray> colors;
        for (qsizetype at = 0; at < bytes.size(); at += 4) {
            if (bytes[at] != 0)
                colors.insert(bytes.mid(at + 1, 3));
        }
        QVERIFY(colors.contains(QByteArray::fromHex("a6a6a6")));
        for (const QByteArray &color : colors)
            QVERIFY(qAbs(quint8(color[0]) - 0xa6) < 0x20);
    }

    void bytesOfAPictureAreInTheOrderOfTheNetwork()
    {
        QImage image(2, 1, QImage::Format_ARGB32_Premultiplied);
        image.setPixelColor(0, 0, QColor(1, 2, 3));
        image.setPixelColor(1, 0, QColor(200, 100, 50, 128));
        const auto picture = StatusNotifierPicture::from(image);
        QCOMPARE(picture.width, 2);
        QCOMPARE(picture.height, 1);
        QCOMPARE(picture.bytes.left(4).toHex(), QByteArray("ff010203"));
        QCOMPARE(quint8(picture.bytes[4]), quint8(128));
        QVERIFY(qAbs(quint8(picture.bytes[5]) - 200) <= 2);
    }

    void whoeverCannotShowTheMenuHasItOpened()
    {
        QSignalSpy requested(m_bar.get(), &StatusNotifierBar::menuRequested);
        for (const char *method : {"Activate", "ContextMenu"})
            QCOMPARE(call(itemPath, item, QString::fromLatin1(method), {0, 0}).type(), QDBusMessage::ReplyMessage);
        QTRY_COMPARE(requested.size(), 2);
        QCOMPARE(call(itemPath, item, QStringLiteral("SecondaryActivate"), {0, 0}).type(), QDBusMessage::ReplyMessage);
        QCOMPARE(call(itemPath, item, QStringLiteral("Scroll"), {1, QStringLiteral("vertical")}).type(),
            QDBusMessage::ReplyMessage);
        QCoreApplication::processEvents();
        QCOMPARE(requested.size(), 2);
    }

    // Whoever asks for what there is not

    void strangeCallsAreAnsweredInTheWordsOfTheBus_data()
    {
        QTest::addColumn<QString>("interface");
        QTest::addColumn<QString>("method");
        QTest::addColumn<QVariantList>("arguments");
        QTest::addColumn<QString>("error");
        const auto row = [](const char *name, const QString &interface, const char *method,
                             const QVariantList &arguments, const char *error) {
            QTest::newRow(name) << interface << QString::fromLatin1(method) << arguments
                                << QStringLiteral("org.freedesktop.DBus.Error.") + QLatin1StringView(error);
        };
        const QString other = QStringLiteral("org.example.Other");
        const QString title = QStringLiteral("Title");
        row("no such method", item, "Explode", {}, "UnknownMethod");
        row("no such interface", other, "Activate", {0, 0}, "UnknownMethod");
        row("too few arguments", item, "Activate", {0}, "InvalidArgs");
        row("other arguments", item, "Activate", {title, title}, "InvalidArgs");
        row("no such property", properties, "Get", {item, QStringLiteral("Price")}, "UnknownProperty");
        row("a property of another", properties, "Get", {other, title}, "UnknownInterface");
        row("all of another's", properties, "GetAll", {other}, "UnknownInterface");
        row("half a question", properties, "Get", {item}, "UnknownMethod");
        row("a property to be set", properties, "Set", {item, title, QVariant::fromValue(QDBusVariant(title))},
            "PropertyReadOnly");
    }
    void strangeCallsAreAnsweredInTheWordsOfTheBus()
    {
        QFETCH(const QString, interface);
        QFETCH(const QString, method);
        QFETCH(const QVariantList, arguments);
        QFETCH(const QString, error);
        QCOMPARE(errorOf(itemPath, interface, method, arguments), error);
        QCOMPARE(property(QStringLiteral("Title")).toString(), QStringLiteral("Moorline"));
    }

    void theInterfaceMayBeLeftOut()
    {
        QSignalSpy requested(m_bar.get(), &StatusNotifierBar::menuRequested);
        QCOMPARE(call(itemPath, QString(), QStringLiteral("Activate"), {0, 0}).type(), QDBusMessage::ReplyMessage);
        QTRY_COMPARE(requested.size(), 1);
    }

    void theObjectDescribesItself()
    {
        const QString xml =
            call(itemPath, QStringLiteral("org.freedesktop.DBus.Introspectable"), QStringLiteral("Introspect"))
                .arguments()
                .value(0)
                .toString();
        QVERIFY(xml.contains(QStringLiteral("<interface name=\"org.kde.StatusNotifierItem\">")));
        QVERIFY(xml.contains(QStringLiteral("<property name=\"IconPixmap\" type=\"a(iiay)\" access=\"read\"/>")));
        QVERIFY(xml.contains(QStringLiteral("<property name=\"ToolTip\" type=\"(sa(iiay)ss)\" access=\"read\"/>")));
        QVERIFY(xml.contains(QStringLiteral("<method name=\"Activate\">\n"
                                            "      <arg type=\"i\" direction=\"in\"/>\n"
                                            "      <arg type=\"i\" direction=\"in\"/>\n"
                                            "    </method>")));
    }

    void anItemThatIsGoneIsNotOnTheBus()
    {
        m_bar.reset();
        QCOMPARE(errorOf(itemPath, item, QStringLiteral("Activate"), {0, 0}),
            QStringLiteral("org.freedesktop.DBus.Error.UnknownObject"));
    }

private:
    [[nodiscard]] QVariant property(const QString &name)
    {
        const QDBusReply<QDBusVariant> reply(call(itemPath, properties, QStringLiteral("Get"), {item, name}));
        return reply.value().variant();
    }

    SvgSymbols m_symbols;
    std::unique_ptr<StatusNotifierBar> m_bar;
};

MOORLINE_TEST(StatusNotifierBarTest);

#include "StatusNotifierBarTest.moc"
