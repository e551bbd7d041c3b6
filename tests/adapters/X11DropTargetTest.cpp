#include "platform/linux/x11/X11DropTarget.h"
#include "DragSource.h"
#include "X11TestCase.h"
#include "fakes/FakeClock.h"
#include "platform/ArrivingDrop.h"

#include <QDropEvent>
#include <QWidget>
#include <QWindow>

using namespace std::chrono_literals;

namespace moorline::test {

namespace {

using Manner = DragSource::Manner;
using Answer = DragSource::Answer;

const QByteArray files = QByteArrayLiteral("file:///a%20b\r\nfile:///caf\xe9\r\n");
const Answer refusal{.isTaken = false, .action = {}};
const QString listFormat = QStringLiteral("text/uri-list");

/// Takes what it is told to, and keeps what is let go over it.
class Target final : public QWidget {
public:
    Target()
    {
        setWindowFlags(Qt::Window | Qt::BypassWindowManagerHint);
        setAcceptDrops(true);
        setGeometry(200, 100, 100, 100);
    }

    Qt::DropAction answer = Qt::CopyAction;
    bool keepsTransfer = true;
    bool isHovered = false;
    int drops = 0;
    QPointF place;
    Qt::DropActions possible;
    QStringList formats;
    std::shared_ptr<DropTransfer> transfer;

private:
    void dragEnterEvent(QDragEnterEvent *event) override
    {
        isHovered = true;
        decide(*event);
    }
    void dragMoveEvent(QDragMoveEvent *event) override { decide(*event); }
    void dragLeaveEvent(QDragLeaveEvent *) override { isHovered = false; }
    void dropEvent(QDropEvent *event) override
    {
        isHovered = false;
        ++drops;
        place = event->position();
        possible = event->possibleActions();
        const auto *arriving = dynamic_cast<const ArrivingDrop *>(event->mimeData());
        QVERIFY(arriving);
        if (keepsTransfer)
            transfer = arriving->transfer();
        decide(*event);
    }
    void decide(QDropEvent &event)
    {
        formats = event.mimeData()->formats();
        event.setDropAction(answer);
        event.setAccepted(answer != Qt::IgnoreAction);
    }
};

} // namespace

/// Another program drags something over a window of this one, and lets it go there.
class X11DropTargetTest final : public X11TestCase {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        X11TestCase::init();
        m_target = std::make_unique<Target>();
        m_target->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_target.get()));
        m_filter.emplace(*connection, m_clock, *m_target->windowHandle());
        m_source.emplace(DragSource::Offer{.data = files});
    }

    void cleanup()
    {
        m_source.reset();
        m_filter.reset();
        m_target.reset();
        X11TestCase::cleanup();
    }

    void whatIsHeldOverTheWindowIsNotRead()
    {
        hold();
        QCOMPARE(m_source->status(), (Answer{.isTaken = true, .action = "XdndActionCopy"}));
        QVERIFY(m_target->isHovered);
        hold({240, 150});
        QCOMPARE(m_source->timesAsked(), 0);
    }

    void whatIsLetGoIsReadWhenItIsWanted()
    {
        hold({230, 140}, "XdndActionMove");
        letGo();
        QCOMPARE(m_target->place, QPointF(30, 40));
        QCOMPARE(m_target->possible, Qt::MoveAction);
        QCOMPARE(m_target->formats, QStringList{listFormat});
        QCOMPARE(m_source->timesAsked(), 0);
        std::optional<QByteArray> data;
        m_target->transfer->read(listFormat, [&data](const std::optional<QByteArray> &read) { data = read; });
        QVERIFY(!data);
        QTRY_COMPARE(data, files);
        QCOMPARE(m_source->timesAsked(), 1);
        QVERIFY(m_source->finished().isEmpty());
    }

    void theProgramIsToldWhatBecameOfIt_data()
    {
        QTest::addColumn<Qt::DropAction>("action");
        QTest::addColumn<bool>("isTaken");
        QTest::addColumn<QByteArray>("name");
        QTest::newRow("copied") << Qt::CopyAction << true << QByteArray("XdndActionCopy");
        QTest::newRow("moved") << Qt::MoveAction << true << QByteArray("XdndActionMove");
        QTest::newRow("linked") << Qt::LinkAction << true << QByteArray("XdndActionLink");
        QTest::newRow("refused") << Qt::IgnoreAction << false << QByteArray();
    }

    void theProgramIsToldWhatBecameOfIt()
    {
        QFETCH(Qt::DropAction, action);
        QFETCH(bool, isTaken);
        QFETCH(QByteArray, name);
        hold();
        letGo();
        m_target->transfer->finish(action);
        QTRY_COMPARE(m_source->finished(), (QList<Answer>{{.isTaken = isTaken, .action = name}}));
        // Once: the answer to what is held next comes after all that.
        m_target->transfer.reset();
        hold();
        QCOMPARE(m_source->finished().size(), 1);
    }

    void whatIsGivenUpIsRefused()
    {
        hold();
        letGo();
        m_target->transfer.reset();
        QTRY_COMPARE(m_source->finished(), QList{refusal});
    }

    void whatNobodyKeepsIsRefusedAtOnce()
    {
        m_target->keepsTransfer = false;
        hold();
        letGo();
        QTRY_COMPARE(m_source->finished(), QList{refusal});
        QCOMPARE(m_source->timesAsked(), 0);
    }

    void whoLetsGoWithoutHavingHeldIsRefused()
    {
        m_source->enter(window());
        m_source->letGo();
        QTRY_COMPARE(m_source->finished(), QList{refusal});
        QCOMPARE(m_target->drops, 0);
        QCOMPARE(m_source->timesAsked(), 0);
    }

    void whoNeverCameIsNotHeard()
    {
        hold();
        DragSource other({.data = "file:///b"});
        other.letGoOver(window());
        // After it, whatever it leads to would be there.
        hold({240, 150});
        QCOMPARE(m_target->drops, 0);
        QVERIFY(other.finished().isEmpty());
        letGo();
        QCOMPARE(m_target->drops, 1);
    }

    void whoSaysNothingIsToldThatNothingWasTaken()
    {
        m_source.emplace(DragSource::Offer{.data = {}, .manner = Manner::silent});
        hold();
        letGo();
        int answers = 0;
        m_target->transfer->read(listFormat, [this, &answers](const std::optional<QByteArray> &read) {
            QVERIFY(!read);
            ++answers;
            m_target->transfer.reset();
        });
        QTRY_COMPARE(m_source->timesAsked(), 1);
        m_clock.advance(9999ms);
        QCOMPARE(answers, 0);
        m_clock.advance(1ms);
        QCOMPARE(answers, 1);
        QTRY_COMPARE(m_source->finished(), QList{refusal});
    }

    void theNextDragIsReadAlthoughTheLastIsNot()
    {
        m_source.emplace(DragSource::Offer{.data = {}, .manner = Manner::silent});
        hold();
        letGo();
        const auto silent = std::exchange(m_target->transfer, nullptr);
        silent->read(listFormat, [](const std::optional<QByteArray> &) { QFAIL("it never answers"); });
        QTRY_COMPARE(m_source->timesAsked(), 1);
        DragSource other({.data = "file:///b"});
        other.enter(window());
        other.moveTo({250, 150});
        QTRY_VERIFY(other.status());
        other.letGo();
        QTRY_COMPARE(m_target->drops, 2);
        std::optional<QByteArray> data;
        m_target->transfer->read(listFormat, [&data](const std::optional<QByteArray> &read) { data = read; });
        QTRY_COMPARE(data, QByteArray("file:///b"));
    }

    void manyFormatsAreKnownByTheirList()
    {
        m_source->enter(window(), {"application/x-first", "text/x-moz-url", "text/html", "text/uri-list"});
        m_source->moveTo({250, 150});
        QTRY_VERIFY(m_source->status());
        QVERIFY(m_target->formats.contains(listFormat));
        letGo();
        QVERIFY(m_target->formats.contains(listFormat));
        QCOMPARE(m_source->timesAsked(), 0);
    }

    void aLinkOfABrowserIsNoListOfFiles_data()
    {
        QTest::addColumn<QList<QByteArray>>("types");
        QTest::newRow("few formats") << QList<QByteArray>{"text/x-moz-url", "text/plain", "XdndDirectSave0"};
        QTest::newRow("many formats") << QList<QByteArray>{
            "text/x-moz-url", "text/x-moz-url-desc", "text/x-moz-url-data", "_NETSCAPE_URL", "text/plain"};
    }

    void aLinkOfABrowserIsNoListOfFiles()
    {
        QFETCH(QList<QByteArray>, types);
        m_source->enter(window(), types);
        m_source->moveTo({250, 150});
        QTRY_VERIFY(m_source->status());
        QVERIFY(!m_target->formats.contains(listFormat));
        QVERIFY(m_target->formats.contains(QStringLiteral("text/plain")));
        letGo();
        QVERIFY(!m_target->formats.contains(listFormat));
    }

private:
    [[nodiscard]] xcb_window_t window() const { return static_cast<xcb_window_t>(m_target->winId()); }

    void hold(const QPoint &place = {250, 150}, const QByteArray &action = "XdndActionCopy")
    {
        if (!m_source->hasEntered())
            m_source->enter(window());
        m_source->moveTo(place, action);
        QTRY_VERIFY(m_source->status());
    }

    void letGo()
    {
        const int before = m_target->drops;
        m_source->letGo();
        QTRY_COMPARE(m_target->drops, before + 1);
        QVERIFY(!m_target->isHovered);
    }

    FakeClock m_clock;
    std::unique_ptr<Target> m_target;
    std::optional<X11DropTarget> m_filter;
    std::optional<DragSource> m_source;
};

MOORLINE_TEST(X11DropTargetTest);

} // namespace moorline::test

#include "X11DropTargetTest.moc"
