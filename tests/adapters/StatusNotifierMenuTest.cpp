#include "platform/linux/desktop/StatusNotifierMenu.h"

#include "StatusNotifierTestCase.h"

#include <QDBusReply>
#include <QSignalSpy>

using namespace moorline;
using namespace moorline::test;

namespace {

const QString menu = QStringLiteral("com.canonical.dbusmenu");
const QString properties = QStringLiteral("org.freedesktop.DBus.Properties");

/// What a host knows of the menu, and is told of it.
class Host final : public QObject {
    Q_OBJECT
public:
    explicit Host(QDBusConnection connection)
    {
        connection.connect(
            {}, StatusNotifierMenu::path, menu, QStringLiteral("LayoutUpdated"), this, SLOT(hearLayout(uint, int)));
        connection.connect({}, StatusNotifierMenu::path, menu, QStringLiteral("ItemsPropertiesUpdated"), this,
            SLOT(hearProperties(QDBusMessage)));
    }

    QList<uint> revisions;
    QList<MenuItemProperties> updated;
    QList<MenuItemLosses> lost;

private Q_SLOTS:
    void hearLayout(uint revision, int parent)
    {
        QCOMPARE(parent, 0);
        revisions.append(revision);
    }
    void hearProperties(const QDBusMessage &message)
    {
        updated += qdbus_cast<QList<MenuItemProperties>>(message.arguments().value(0));
        lost += qdbus_cast<QList<MenuItemLosses>>(message.arguments().value(1));
    }
};

struct Layout {
    uint revision = 0;
    MenuItemLayout top;

    [[nodiscard]] MenuItemLayout child(qsizetype index) const
    {
        return qdbus_cast<MenuItemLayout>(top.children.value(index).variant());
    }
};

} // namespace

class StatusNotifierMenuTest final : public StatusNotifierTestCase {
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        StatusNotifierTestCase::init();
        registerStatusNotifierTypes();
        m_chosen.clear();
        m_looks = 0;
        m_current = {
            {.title = QStringLiteral("Dock_Settings & more"), .shortcut = QKeySequence(QStringLiteral("Ctrl+,"))},
            MenuItem::separator(),
            {.title = QStringLiteral("Always"), .action = [this] { toggle(); }, .isChecked = true},
            {.title = QStringLiteral("Quit"),
                .action = [this] { m_chosen.append(QStringLiteral("quit")); },
                .shortcut = QKeySequence(QStringLiteral("Ctrl+Alt+Shift+Meta+Q"))},
        };
        m_menu = std::make_unique<StatusNotifierMenu>(bus, [this] {
            ++m_looks;
            return m_current;
        });
        m_host = std::make_unique<Host>(panelBus.connection());
        // Its wishes have reached the bus once it has answered something later.
        static_cast<void>(layout());
    }

    void cleanup()
    {
        m_menu.reset();
        m_host.reset();
        StatusNotifierTestCase::cleanup();
    }

    // Reading

    void theLayoutHoldsTheItemsInOrder()
    {
        const Layout all = layout();
        QCOMPARE(all.top.id, 0);
        QCOMPARE(all.top.properties, (QVariantMap{{QStringLiteral("children-display"), QStringLiteral("submenu")}}));
        QCOMPARE(all.top.children.size(), 4);
        QCOMPARE(
            all.child(0).properties.value(QStringLiteral("label")).toString(), QStringLiteral("Dock__Settings & more"));
        QCOMPARE(all.child(0).properties.value(QStringLiteral("enabled")), QVariant(false));
        QCOMPARE(all.child(1).properties, (QVariantMap{{QStringLiteral("type"), QStringLiteral("separator")}}));
        QCOMPARE(all.child(2).properties.value(QStringLiteral("toggle-type")).toString(), QStringLiteral("checkmark"));
        QCOMPARE(all.child(2).properties.value(QStringLiteral("toggle-state")), QVariant(1));
        QVERIFY(!all.child(2).properties.contains(QStringLiteral("enabled")));
        QVERIFY(!all.child(3).properties.contains(QStringLiteral("toggle-type")));
        QSet<int> ids{0};
        for (qsizetype i = 0; i < 4; ++i)
            ids.insert(all.child(i).id);
        QCOMPARE(ids.size(), 5);
    }

    void shortcutsAreWords()
    {
        const Layout all = layout();
        const auto words = [&all](qsizetype index) {
            return qdbus_cast<QList<QStringList>>(all.child(index).properties.value(QStringLiteral("shortcut")));
        };
        QCOMPARE(words(0), (QList<QStringList>{{QStringLiteral("Control"), QStringLiteral(",")}}));
        QCOMPARE(words(3),
            (QList<QStringList>{{QStringLiteral("Control"), QStringLiteral("Alt"), QStringLiteral("Shift"),
                QStringLiteral("Super"), QStringLiteral("Q")}}));
    }

    void onlyWhatIsAskedForIsTold()
    {
        QCOMPARE(layout(0, 0).top.children.size(), 0);
        QCOMPARE(layout(0, 1).top.children.size(), 4);
        const Layout labels = layout(0, -1, {QStringLiteral("label"), QStringLiteral("nonsense")});
        QVERIFY(labels.top.properties.isEmpty());
        QCOMPARE(labels.child(2).properties, (QVariantMap{{QStringLiteral("label"), QStringLiteral("Always")}}));
        const int always = labels.child(2).id;
        QCOMPARE(layout(always).top.id, always);
        QCOMPARE(layout(always).top.children.size(), 0);
    }

    void propertiesOfSeveralItems()
    {
        const int always = idAt(2);
        auto some = groupProperties({always, 4711, 0}, {QStringLiteral("label")});
        QCOMPARE(some.size(), 2);
        QCOMPARE(some[0].id, always);
        QCOMPARE(some[0].properties, (QVariantMap{{QStringLiteral("label"), QStringLiteral("Always")}}));
        QCOMPARE(some[1].id, 0);
        QCOMPARE(groupProperties({}, {}).size(), 5);
    }

    void oneProperty()
    {
        const int always = idAt(2);
        QCOMPARE(property(always, QStringLiteral("toggle-state")), QVariant(1));
        QCOMPARE(property(always, QStringLiteral("visible")), QVariant(true));
        QCOMPARE(property(idAt(0), QStringLiteral("enabled")), QVariant(false));
        QCOMPARE(
            errorOf(StatusNotifierMenu::path, menu, QStringLiteral("GetProperty"), {always, QStringLiteral("price")}),
            invalidArguments);
        QCOMPARE(
            errorOf(StatusNotifierMenu::path, menu, QStringLiteral("GetProperty"), {4711, QStringLiteral("label")}),
            invalidArguments);
    }

    void theInterfaceTellsItsVersion()
    {
        const QDBusReply<QVariantMap> all(call(StatusNotifierMenu::path, properties, QStringLiteral("GetAll"), {menu}));
        QCOMPARE(all.value().value(QStringLiteral("Version")), QVariant(3U));
        QCOMPARE(all.value().value(QStringLiteral("Status")).toString(), QStringLiteral("normal"));
        QCOMPARE(all.value().value(QStringLiteral("TextDirection")).toString(), QStringLiteral("ltr"));
    }

    // What changes

    void theMarkIsRightWhenTheMenuIsAboutToShow()
    {
        const int always = idAt(2);
        QCOMPARE(aboutToShow(), false);
        m_current[2].isChecked = false;
        QCOMPARE(aboutToShow(), true);
        QTRY_COMPARE(m_host->updated.size(), 1);
        QCOMPARE(m_host->updated[0].id, always);
        QCOMPARE(m_host->updated[0].properties, (QVariantMap{{QStringLiteral("toggle-state"), 0}}));
        QVERIFY(m_host->lost.isEmpty());
        QVERIFY(m_host->revisions.isEmpty());
        QCOMPARE(aboutToShow(), false);
        QCOMPARE(layout().child(2).properties.value(QStringLiteral("toggle-state")), QVariant(0));
        QCOMPARE(idAt(2), always);
    }

    void theMarkIsRightForWhoReadsWithoutAsking()
    {
        m_current[2].isChecked = false;
        QCOMPARE(layout().child(2).properties.value(QStringLiteral("toggle-state")), QVariant(0));
        QTRY_COMPARE(m_host->updated.size(), 1);
    }

    void whatAnItemHasNoMoreIsTold()
    {
        m_current[3].shortcut = {};
        m_current[0].action = [] {};
        QCOMPARE(aboutToShow(), true);
        QTRY_COMPARE(m_host->lost.size(), 2);
        QCOMPARE(m_host->lost[0].names, QStringList{QStringLiteral("enabled")});
        QCOMPARE(m_host->lost[1].id, idAt(3));
        QCOMPARE(m_host->lost[1].names, QStringList{QStringLiteral("shortcut")});
    }

    void anotherMenuHasANewRevisionAndOtherNumbers()
    {
        const Layout before = layout();
        m_current.removeAt(2);
        QCOMPARE(aboutToShow(), true);
        QTRY_COMPARE(m_host->revisions.size(), 1);
        const Layout after = layout();
        QCOMPARE(after.top.children.size(), 3);
        QCOMPARE(after.revision, m_host->revisions[0]);
        QVERIFY(after.revision > before.revision);
        for (qsizetype i = 0; i < 3; ++i) {
            for (qsizetype j = 0; j < 4; ++j)
                QVERIFY(after.child(i).id != before.child(j).id);
        }
        // What was clicked there is nothing any more.
        QCOMPARE(click(before.child(3).id).errorName(), invalidArguments);
        QCoreApplication::processEvents();
        QVERIFY(m_chosen.isEmpty());
    }

    // Choosing

    void aClickDoesWhatTheItemSays()
    {
        QCOMPARE(click(idAt(3)).type(), QDBusMessage::ReplyMessage);
        QTRY_COMPARE(m_chosen, QStringList{QStringLiteral("quit")});
    }

    void theMarkFollowsTheClick()
    {
        QCOMPARE(click(idAt(2)).type(), QDBusMessage::ReplyMessage);
        QTRY_COMPARE(m_host->updated.size(), 1);
        QCOMPARE(m_host->updated[0].properties, (QVariantMap{{QStringLiteral("toggle-state"), 0}}));
    }

    void whatCannotBeChosenIsNot()
    {
        m_current[3].action = nullptr;
        QCOMPARE(aboutToShow(), true);
        for (const int id : {0, idAt(0), idAt(1), idAt(3)})
            QCOMPARE(click(id).type(), QDBusMessage::ReplyMessage);
        QCoreApplication::processEvents();
        QVERIFY(m_chosen.isEmpty());
    }

    void otherEventsChooseNothing()
    {
        const int looks = m_looks;
        for (const char *name : {"hovered", "closed", "opened", "", "x-unknown"})
            QCOMPARE(tell(idAt(3), QString::fromLatin1(name)).type(), QDBusMessage::ReplyMessage);
        QCOMPARE(tell(0, QStringLiteral("opened")).type(), QDBusMessage::ReplyMessage);
        QCoreApplication::processEvents();
        QVERIFY(m_chosen.isEmpty());
        QVERIFY(m_looks > looks);
    }

    void unknownItemsAreErrors()
    {
        for (const int id : {4711, -1, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
            QCOMPARE(click(id).errorName(), invalidArguments);
            QCOMPARE(errorOf(StatusNotifierMenu::path, menu, QStringLiteral("AboutToShow"), {id}), invalidArguments);
            QCOMPARE(errorOf(StatusNotifierMenu::path, menu, QStringLiteral("GetLayout"), {id, -1, QStringList()}),
                invalidArguments);
        }
        QCOMPARE(layout(0, std::numeric_limits<int>::min()).top.children.size(), 4);
        QCOMPARE(layout(0, std::numeric_limits<int>::max()).top.children.size(), 4);
    }

    void severalEventsAtOnce()
    {
        const auto clicked = [](int id) {
            return MenuItemEvent{id, QStringLiteral("clicked"), QDBusVariant(QString()), 0};
        };
        const auto group = [this](const QList<MenuItemEvent> &events) {
            return call(StatusNotifierMenu::path, menu, QStringLiteral("EventGroup"), {QVariant::fromValue(events)});
        };
        const QDBusMessage answer = group({clicked(4711), clicked(idAt(3))});
        QCOMPARE(qdbus_cast<QList<int>>(answer.arguments().value(0)), QList<int>{4711});
        QTRY_COMPARE(m_chosen, QStringList{QStringLiteral("quit")});
        QCOMPARE(group({clicked(4711), clicked(4712)}).errorName(), invalidArguments);
        QCOMPARE(group({}).type(), QDBusMessage::ReplyMessage);
    }

    void severalMenusAboutToShow()
    {
        const auto group = [this](const QList<int> &ids) {
            return call(StatusNotifierMenu::path, menu, QStringLiteral("AboutToShowGroup"), {QVariant::fromValue(ids)});
        };
        m_current[2].isChecked = false;
        const QDBusMessage answer = group({4711, 0});
        QCOMPARE(qdbus_cast<QList<int>>(answer.arguments().value(0)), QList<int>{0});
        QCOMPARE(qdbus_cast<QList<int>>(answer.arguments().value(1)), QList<int>{4711});
        QVERIFY(qdbus_cast<QList<int>>(group({0}).arguments().value(0)).isEmpty());
        QCOMPARE(group({4711}).errorName(), invalidArguments);
    }

    void aChoiceMayTakeTheMenuAway()
    {
        m_current[3].action = [this] {
            m_menu.reset();
            m_chosen.append(QStringLiteral("quit"));
        };
        static_cast<void>(layout());
        QCOMPARE(click(idAt(3)).type(), QDBusMessage::ReplyMessage);
        QTRY_COMPARE(m_chosen, QStringList{QStringLiteral("quit")});
        QCOMPARE(errorOf(StatusNotifierMenu::path, menu, QStringLiteral("AboutToShow"), {0}),
            QStringLiteral("org.freedesktop.DBus.Error.UnknownObject"));
    }

private:
    void toggle() { m_current[2].isChecked = !m_current[2].isChecked; }

    [[nodiscard]] Layout layout(int parent = 0, int depth = -1, const QStringList &names = {})
    {
        const QDBusMessage answer =
            call(StatusNotifierMenu::path, menu, QStringLiteral("GetLayout"), {parent, depth, names});
        return {answer.arguments().value(0).toUInt(), qdbus_cast<MenuItemLayout>(answer.arguments().value(1))};
    }

    [[nodiscard]] int idAt(qsizetype index) { return layout().child(index).id; }

    [[nodiscard]] QList<MenuItemProperties> groupProperties(const QList<int> &ids, const QStringList &names)
    {
        const QDBusMessage answer = call(
            StatusNotifierMenu::path, menu, QStringLiteral("GetGroupProperties"), {QVariant::fromValue(ids), names});
        return qdbus_cast<QList<MenuItemProperties>>(answer.arguments().value(0));
    }

    [[nodiscard]] QVariant property(int id, const QString &name)
    {
        const QDBusReply<QDBusVariant> reply(
            call(StatusNotifierMenu::path, menu, QStringLiteral("GetProperty"), {id, name}));
        return reply.value().variant();
    }

    [[nodiscard]] bool aboutToShow()
    {
        return QDBusReply<bool>(call(StatusNotifierMenu::path, menu, QStringLiteral("AboutToShow"), {0})).value();
    }

    [[nodiscard]] QDBusMessage tell(int id, const QString &name)
    {
        return call(StatusNotifierMenu::path, menu, QStringLiteral("Event"),
            {id, name, QVariant::fromValue(QDBusVariant(QString())), 0U});
    }

    [[nodiscard]] QDBusMessage click(int id) { return tell(id, QStringLiteral("clicked")); }

    Menu m_current;
    int m_looks = 0;
    QStringList m_chosen;
    std::unique_ptr<StatusNotifierMenu> m_menu;
    std::unique_ptr<Host> m_host;
};

MOORLINE_TEST(StatusNotifierMenuTest);

#include "StatusNotifierMenuTest.moc"
