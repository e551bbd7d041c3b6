#include "platform/linux/apps/LauncherEntrySource.h"
#include "PrivateBus.h"
#include "harness/TestCase.h"
#include "platform/linux/apps/DesktopEntries.h"
#include "platform/linux/bus/Bus.h"
#include "platform/qt/QtClock.h"

#include <QCoroTask>
#include <QDBusConnectionInterface>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>

namespace {

using moorline::BadgeTile;
using moorline::LauncherEntrySource;

const QString launcherName = QStringLiteral("com.canonical.Unity");
const QString mail = QStringLiteral("application://mail.desktop");

/// Programs that tell of themselves on a real bus.
class LauncherEntrySourceTest final : public moorline::test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_folder = std::make_unique<QTemporaryDir>();
        writeEntry(QStringLiteral("mail"));
        writeEntry(QStringLiteral("org.chat.desktop"));
        m_entries =
            std::make_unique<moorline::DesktopEntries>(m_clock, moorline::EntryPlaces{.folders = {m_folder->path()}});
        bool isLoaded = false;
        m_entries->whenLoaded([&] { isLoaded = true; });
        QTRY_VERIFY(isLoaded);
        m_bus = std::make_unique<moorline::Bus>();
        openBus();
        m_source = std::make_unique<LauncherEntrySource>(*m_bus, *m_entries, m_clock);
    }

    void cleanup()
    {
        m_source.reset();
        closeBus();
        m_bus.reset();
        m_entries.reset();
        TestCase::cleanup();
    }

    void badgesAreAlwaysPermitted() { QVERIFY(m_source->isPermitted()); }

    void aBadgeIsTold()
    {
        m_source->setActive(true);
        QSignalSpy changes(m_source.get(), &moorline::BadgeSource::changed);
        tell(sender(1), mail, {{QStringLiteral("count"), qint64(4)}, {QStringLiteral("count-visible"), true}});
        QTRY_COMPARE(labels(), QStringList{path(QStringLiteral("mail")) + QStringLiteral(" 4")});
        QTRY_VERIFY(!changes.isEmpty());
    }

    void changesAreMerged()
    {
        m_source->setActive(true);
        tell(sender(1), mail, {{QStringLiteral("count"), qint32(4)}});
        tell(sender(1), mail, {{QStringLiteral("count-visible"), true}});
        QTRY_COMPARE(labels(), QStringList{path(QStringLiteral("mail")) + QStringLiteral(" 4")});
        tell(sender(1), mail, {{QStringLiteral("count"), qint32(0)}});
        QTRY_COMPARE(labels(), QStringList());
    }

    void nothingIsHeardBeforeAndAfter()
    {
        tell(sender(1), mail, {{QStringLiteral("count"), 4}, {QStringLiteral("count-visible"), true}});
        settle();
        QCOMPARE(labels(), QStringList());
        m_source->setActive(true);
        QCOMPARE(labels(), QStringList());
        tell(sender(1), mail, {{QStringLiteral("count"), 4}, {QStringLiteral("count-visible"), true}});
        QTRY_COMPARE(labels().size(), 1);
        m_source->setActive(false);
        QCOMPARE(labels(), QStringList());
        tell(sender(1), mail, {{QStringLiteral("count"), 5}, {QStringLiteral("count-visible"), true}});
        settle();
        QCOMPARE(labels(), QStringList());
    }

    void theNameOfALauncherIsHadWhileActive()
    {
        QVERIFY(!isOwned());
        m_source->setActive(true);
        QTRY_VERIFY(isOwned());
        m_source->setActive(false);
        QTRY_VERIFY(!isOwned());
    }

    void anotherLauncherMayHaveTheName()
    {
        QDBusConnection other = sender(7);
        QVERIFY(other.registerService(launcherName));
        m_source->setActive(true);
        tell(sender(1), mail, {{QStringLiteral("count"), 4}, {QStringLiteral("count-visible"), true}});
        QTRY_COMPARE(labels().size(), 1);
        QCOMPARE(owner(), other.baseService());
        QVERIFY(other.unregisterService(launcherName));
        QTRY_COMPARE(owner(), m_bus->connection().baseService());
    }

    void aSenderThatLeavesTakesItsBadgeAlong()
    {
        m_source->setActive(true);
        tell(sender(1), mail, {{QStringLiteral("count"), 4}, {QStringLiteral("count-visible"), true}});
        tell(sender(2), mail, {{QStringLiteral("count"), 9}, {QStringLiteral("count-visible"), true}});
        QTRY_COMPARE(labels(), QStringList{path(QStringLiteral("mail")) + QStringLiteral(" 9")});
        leave(2);
        QTRY_COMPARE(labels(), QStringList{path(QStringLiteral("mail")) + QStringLiteral(" 4")});
        leave(1);
        QTRY_COMPARE(labels(), QStringList());
    }

    void aSenderThatLeavesAtOnceLeavesNothing()
    {
        m_source->setActive(true);
        settle();
        for (int i = 0; i < 20; ++i) {
            tell(sender(3), mail, {{QStringLiteral("count"), 4}, {QStringLiteral("count-visible"), true}});
            leave(3);
        }
        tell(sender(1), QStringLiteral("application://org.chat.desktop"),
            {{QStringLiteral("count"), 1}, {QStringLiteral("count-visible"), true}});
        QTRY_COMPARE(labels(), QStringList{path(QStringLiteral("org.chat.desktop")) + QStringLiteral(" 1")});
    }

    void whatIsNoUpdateIsIgnored()
    {
        m_source->setActive(true);
        settle();
        auto wrong = signal();
        wrong << mail;
        QVERIFY(sender(1).send(wrong));
        auto swapped = signal();
        swapped << QVariantMap{{QStringLiteral("count"), 4}} << mail;
        QVERIFY(sender(1).send(swapped));
        tell(
            sender(1), QStringLiteral("mail"), {{QStringLiteral("count"), 4}, {QStringLiteral("count-visible"), true}});
        tell(
            sender(1), mail, {{QStringLiteral("count"), QStringLiteral("4")}, {QStringLiteral("count-visible"), true}});
        settle();
        QCOMPARE(labels(), QStringList());
    }

    void aBusThatComesAgainIsHeardAgain()
    {
        m_source->setActive(true);
        tell(sender(1), mail, {{QStringLiteral("count"), 4}, {QStringLiteral("count-visible"), true}});
        QTRY_COMPARE(labels().size(), 1);
        closeBus();
        QCOMPARE(labels(), QStringList());
        openBus();
        QTRY_VERIFY(isOwned());
        tell(sender(1), mail, {{QStringLiteral("count"), 5}, {QStringLiteral("count-visible"), true}});
        QTRY_COMPARE(labels(), QStringList{path(QStringLiteral("mail")) + QStringLiteral(" 5")});
    }

private:
    void writeEntry(const QString &id) const
    {
        QFile file(path(id));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("[Desktop Entry]\nType=Application\nName=One\nExec=one\n");
    }
    [[nodiscard]] QString path(const QString &id) const { return m_folder->filePath(id + QStringLiteral(".desktop")); }

    [[nodiscard]] QString name(int number) const { return QStringLiteral("side%1-%2").arg(m_generation).arg(number); }
    [[nodiscard]] QDBusConnection sender(int number)
    {
        m_open.insert(name(number));
        return QDBusConnection::connectToBus(QString::fromLocal8Bit(m_daemon.address()), name(number));
    }
    void leave(int number)
    {
        m_open.remove(name(number));
        QDBusConnection::disconnectFromBus(name(number));
    }

    void openBus()
    {
        QVERIFY(m_daemon.start());
        ++m_generation;
        m_bus->adopt(sender(0));
        QVERIFY(m_bus->isOpen());
    }
    void closeBus()
    {
        m_daemon.end();
        QTRY_VERIFY(!m_bus->isOpen());
        for (const QString &one : std::as_const(m_open))
            QDBusConnection::disconnectFromBus(one);
        m_open.clear();
    }

    static QDBusMessage signal()
    {
        return QDBusMessage::createSignal(QStringLiteral("/com/example/mail/42"),
            QStringLiteral("com.canonical.Unity.LauncherEntry"), QStringLiteral("Update"));
    }
    static void tell(const QDBusConnection &from, const QString &address, const QVariantMap &changes)
    {
        auto update = signal();
        update << address << changes;
        QVERIFY(from.send(update));
    }

    /// Whatever was sent has come, and whatever was asked been done.
    void settle()
    {
        static_cast<void>(owner());
        QTest::qWait(150);
    }
    [[nodiscard]] QString owner() { return sender(9).interface()->serviceOwner(launcherName).value(); }
    [[nodiscard]] bool isOwned() { return sender(9).interface()->isServiceRegistered(launcherName).value(); }

    [[nodiscard]] QStringList labels() const
    {
        QStringList texts;
        const QList<BadgeTile> tiles = QCoro::waitFor(m_source->tiles());
        for (const BadgeTile &tile : tiles)
            texts.append(tile.path + u' ' + tile.label);
        return texts;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    moorline::test::PrivateBus m_daemon;
    moorline::QtClock m_clock;
    std::unique_ptr<moorline::Bus> m_bus;
    std::unique_ptr<moorline::DesktopEntries> m_entries;
    std::unique_ptr<LauncherEntrySource> m_source;
    QSet<QString> m_open;
    int m_generation = 0;
};

MOORLINE_TEST(LauncherEntrySourceTest);

} // namespace

#include "LauncherEntrySourceTest.moc"
