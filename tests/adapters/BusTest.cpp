#include "platform/linux/bus/Bus.h"

#include "fakes/FakeClock.h"
#include "harness/TestCase.h"
#include "platform/linux/bus/BusSignal.h"
#include "platform/linux/bus/FollowedName.h"
#include "platform/linux/bus/PendingBusCall.h"

#include <QCoroTask>
#include <QDBusObjectPath>
#include <QDBusVirtualObject>
#include <QSignalSpy>

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;

namespace {

const QString name = QStringLiteral("app.moorline.Test");
const QString path = QStringLiteral("/app/moorline/Test");
const QString interface = QStringLiteral("app.moorline.Test");
const QString error = QStringLiteral("app.moorline.Error");
const BusSignalAddress tick{path, interface, QStringLiteral("Tick")};

/// Another program on the bus, with one object that answers as it is told.
class Program final : public QDBusVirtualObject {
public:
    explicit Program(const QString &connection)
        : m_name(connection)
        , m_connection(QDBusConnection::connectToBus(QDBusConnection::SessionBus, connection))
    {
        m_connection.registerVirtualObject(path, this);
    }
    ~Program() override
    {
        m_connection.unregisterObject(path);
        QDBusConnection::disconnectFromBus(m_name);
    }

    [[nodiscard]] QString uniqueName() const { return m_connection.baseService(); }
    [[nodiscard]] bool takeName() { return m_connection.registerService(name); }
    [[nodiscard]] bool leaveName() { return m_connection.unregisterService(name); }
    [[nodiscard]] bool tellTick(const QVariantList &values = {}, const QString &from = path) const
    {
        auto message = QDBusMessage::createSignal(from, tick.interface, tick.member);
        message.setArguments(values);
        return m_connection.send(message);
    }

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override
    {
        if (message.member() == QLatin1StringView("Wait")) {
            message.setDelayedReply(true);
            return true;
        }
        if (message.member() == QLatin1StringView("Fail"))
            return connection.send(message.createErrorReply(error, QStringLiteral("as told")));
        // "Get" as a property does it, everything else gives back what it got.
        const QVariantList values =
            message.member() == QLatin1StringView("Get") ? QVariantList{property} : message.arguments();
        return connection.send(message.createReply(values));
    }
    QString introspect(const QString &) const override { return {}; }

    QVariant property;

private:
    QString m_name;
    QDBusConnection m_connection;
};

/// What became of a question.
struct Reply {
    std::optional<BusAnswer> answer;
};

} // namespace

class BusTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_clock = std::make_unique<FakeClock>();
        m_bus = std::make_unique<Bus>();
        m_bus->adopt(QDBusConnection::sessionBus());
        m_program = std::make_unique<Program>(QStringLiteral("program"));
        m_owner = std::make_unique<QObject>();
    }

    void cleanup()
    {
        m_bus.reset();
        m_program.reset();
        TestCase::cleanup();
    }

    // A call

    void anAnswerIsOfItsTypeAndOfNoOther()
    {
        Reply reply;
        question(QStringLiteral("Echo"), {QStringLiteral("word")}, reply);
        QTRY_VERIFY(reply.answer);
        QVERIFY(!reply.answer->isError());
        QCOMPARE(reply.answer->errorName(), QString());
        QCOMPARE(reply.answer->sender(), m_program->uniqueName());
        QCOMPARE(reply.answer->value<QString>(), std::optional(QStringLiteral("word")));
        QVERIFY(!reply.answer->value<bool>());
        QVERIFY(!reply.answer->value<QDBusObjectPath>());
        QVERIFY(!reply.answer->value<QVariantMap>());
        QCOMPARE(m_clock->runningTimers(), 0);
    }

    void anAnswerOfNothingOrOfTwoIsNoValue()
    {
        for (const QVariantList &values : {QVariantList{}, QVariantList{true, true}}) {
            Reply reply;
            question(QStringLiteral("Echo"), values, reply);
            QTRY_VERIFY(reply.answer);
            QVERIFY(!reply.answer->isError());
            QVERIFY(!reply.answer->value<bool>());
        }
    }

    void anAnswerMayBeAMap()
    {
        const QVariantMap map{{QStringLiteral("one"), 1}};
        Reply reply;
        question(QStringLiteral("Echo"), {map}, reply);
        QTRY_VERIFY(reply.answer);
        QCOMPARE(reply.answer->value<QVariantMap>(), std::optional(map));
    }

    void aPropertyIsOfItsTypeAndOfNoOther()
    {
        m_program->property = QVariant::fromValue(QDBusVariant(7U));
        Reply reply;
        wait(propertyQuestion(m_program->uniqueName(), path, interface, QStringLiteral("Level")), 10s, reply);
        QTRY_VERIFY(reply.answer);
        QCOMPARE(reply.answer->property<uint>(), std::optional(7U));
        QVERIFY(!reply.answer->property<int>());
        QVERIFY(!reply.answer->value<uint>());
    }

    void anErrorIsToldByItsName()
    {
        Reply reply;
        question(QStringLiteral("Fail"), {}, reply);
        QTRY_VERIFY(reply.answer);
        QVERIFY(reply.answer->isError());
        QCOMPARE(reply.answer->errorName(), error);
        QCOMPARE(reply.answer->errorText(), QStringLiteral("as told"));
        QVERIFY(!reply.answer->value<QString>());
    }

    void anAnswerIsWaitedForAsLongAsTheLimitAllows()
    {
        Reply reply;
        question(QStringLiteral("Wait"), {}, reply);
        m_clock->advance(9999ms);
        QCoreApplication::processEvents();
        QVERIFY(!reply.answer);
        m_clock->advance(1ms);
        QVERIFY(reply.answer);
        QCOMPARE(reply.answer->errorName(), QStringLiteral("org.freedesktop.DBus.Error.NoReply"));
        QCOMPARE(m_clock->runningTimers(), 0);
    }

    void theEndOfTheBusEndsAQuestion()
    {
        Reply reply;
        question(QStringLiteral("Wait"), {}, reply);
        m_bus->adopt(QDBusConnection(QStringLiteral("none")));
        QVERIFY(reply.answer);
        QCOMPARE(reply.answer->errorName(), QStringLiteral("org.freedesktop.DBus.Error.Disconnected"));
        Reply another;
        question(QStringLiteral("Echo"), {}, another);
        QCOMPARE(another.answer->errorName(), QStringLiteral("org.freedesktop.DBus.Error.Disconnected"));
        QCOMPARE(m_clock->runningTimers(), 0);
    }

    void theEndOfTheOwnerEndsAQuestion()
    {
        Reply reply;
        question(QStringLiteral("Wait"), {}, reply);
        m_owner.reset();
        QVERIFY(reply.answer && reply.answer->isError());
        QCOMPARE(m_clock->runningTimers(), 0);
    }

    // A name

    void aNameHasNoOwnerUntilItIsTaken()
    {
        const FollowedName followed(*m_bus, *m_clock, name);
        QSignalSpy changed(&followed, &FollowedName::ownerChanged);
        settle();
        QCOMPARE(followed.owner(), QString());
        QVERIFY(m_program->takeName());
        QTRY_COMPARE(followed.owner(), m_program->uniqueName());
        QCOMPARE(changed, (QList<QVariantList>{{QString(), m_program->uniqueName()}}));
    }

    void anOwnerThatWasThereBeforeIsFound()
    {
        QVERIFY(m_program->takeName());
        const FollowedName followed(*m_bus, *m_clock, name);
        QTRY_COMPARE(followed.owner(), m_program->uniqueName());
    }

    void aNameIsFollowedFromOwnerToOwner()
    {
        QVERIFY(m_program->takeName());
        const FollowedName followed(*m_bus, *m_clock, name);
        QTRY_COMPARE(followed.owner(), m_program->uniqueName());
        QVERIFY(m_program->leaveName());
        QTRY_COMPARE(followed.owner(), QString());
        Program next(QStringLiteral("next"));
        QVERIFY(next.takeName());
        QTRY_COMPARE(followed.owner(), next.uniqueName());
    }

    void withoutABusNobodyOwnsAnything()
    {
        QVERIFY(m_program->takeName());
        const FollowedName followed(*m_bus, *m_clock, name);
        QTRY_COMPARE(followed.owner(), m_program->uniqueName());
        m_bus->adopt(QDBusConnection(QStringLiteral("none")));
        QCOMPARE(followed.owner(), QString());
        m_bus->adopt(QDBusConnection::sessionBus());
        QTRY_COMPARE(followed.owner(), m_program->uniqueName());
    }

    // A signal

    void aSignalIsHeardFromTheOwnerOfTheName()
    {
        QVERIFY(m_program->takeName());
        const FollowedName followed(*m_bus, *m_clock, name);
        QTRY_VERIFY(!followed.owner().isEmpty());
        const BusSignal signal(followed, tick, hearer());
        settle();
        QVERIFY(m_program->tellTick({QStringLiteral("word")}));
        QTRY_COMPARE(m_heard.size(), 1);
        QCOMPARE(onlyValue<QString>(m_heard.first()), std::optional(QStringLiteral("word")));
        QVERIFY(!onlyValue<bool>(m_heard.first()));
    }

    void aSignalOfAStrangerIsNotHeard()
    {
        const Program stranger(QStringLiteral("stranger"));
        const FollowedName followed(*m_bus, *m_clock, name);
        const BusSignal signal(followed, tick, hearer());
        settle();
        // Nor while nobody owns the name.
        QVERIFY(stranger.tellTick());
        settle();
        QVERIFY(m_program->takeName());
        QTRY_VERIFY(!followed.owner().isEmpty());
        QVERIFY(stranger.tellTick());
        QVERIFY(m_program->tellTick());
        QTRY_COMPARE(m_heard.size(), 1);
        settle();
        QCOMPARE(m_heard.size(), 1);
        QCOMPARE(m_heard.first().service(), m_program->uniqueName());
    }

    void aSignalCanBeHeardFromOneConnectionOrFromAnybody()
    {
        const Program stranger(QStringLiteral("stranger"));
        const BusSignal fromOne(*m_bus, m_program->uniqueName(), tick, hearer());
        settle();
        QVERIFY(stranger.tellTick());
        QVERIFY(m_program->tellTick());
        QTRY_COMPARE(m_heard.size(), 1);
        QCOMPARE(m_heard.first().service(), m_program->uniqueName());
        const BusSignal fromAnybody(*m_bus, {}, {{}, tick.interface, tick.member}, hearer());
        settle();
        QVERIFY(stranger.tellTick({}, QStringLiteral("/elsewhere")));
        QTRY_COMPARE(m_heard.size(), 1);
        QCOMPARE(m_heard.first().path(), QStringLiteral("/elsewhere"));
    }

    void aSignalIsHeardAsLongAsItsHearerLives()
    {
        auto signal = std::make_unique<BusSignal>(*m_bus, QString(), tick, hearer());
        settle();
        signal.reset();
        QVERIFY(m_program->tellTick());
        settle();
        QVERIFY(m_heard.isEmpty());
    }

private:
    QCoro::Task<> wait(QDBusMessage message, std::chrono::milliseconds limit, Reply &reply)
    {
        reply.answer = co_await ask(*m_owner, *m_bus, *m_clock, message, limit);
    }

    void question(const QString &method, const QVariantList &values, Reply &reply)
    {
        auto message = QDBusMessage::createMethodCall(m_program->uniqueName(), path, interface, method);
        message.setArguments(values);
        wait(message, 10s, reply);
    }

    BusSignal::Hearer hearer()
    {
        m_heard.clear();
        return [this](const QDBusMessage &message) { m_heard.append(message); };
    }

    /// Returns when everything that was on its way on the bus before has arrived.
    static void settle()
    {
        for (const QDBusConnection &connection :
            {QDBusConnection::sessionBus(), QDBusConnection(QStringLiteral("stranger"))}) {
            if (connection.isConnected())
                connection.call(QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"),
                    QStringLiteral("/"), QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetId")));
        }
        QCoreApplication::processEvents();
    }

    std::unique_ptr<FakeClock> m_clock;
    std::unique_ptr<Bus> m_bus;
    std::unique_ptr<Program> m_program;
    std::unique_ptr<QObject> m_owner;
    QList<QDBusMessage> m_heard;
};

MOORLINE_TEST(BusTest);

#include "BusTest.moc"
