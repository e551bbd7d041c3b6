#include "platform/linux/x11/SelectionReader.h"
#include "DragSource.h"
#include "X11TestCase.h"
#include "fakes/FakeClock.h"

#include <QTimer>

using namespace std::chrono_literals;

namespace moorline::test {

namespace {

using Manner = DragSource::Manner;

constexpr qsizetype megabyte = 1024 * 1024;
constexpr qsizetype limit = 16 * megabyte;

/// No two neighbours are the same, and every byte is among them.
QByteArray bytes(qsizetype count)
{
    QByteArray answer(count, Qt::Uninitialized);
    for (qsizetype i = 0; i < count; ++i)
        answer[i] = static_cast<char>(i % 251 + i / 65536);
    return answer;
}

} // namespace

class SelectionReaderTest final : public X11TestCase {
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        m_reader.reset();
        m_source.reset();
        m_answers.clear();
        X11TestCase::cleanup();
    }

    void whatIsGivenIsReadByteForByte_data()
    {
        QTest::addColumn<QByteArray>("data");
        QTest::addColumn<Manner>("manner");
        QTest::addColumn<qsizetype>("pieceSize");
        const qsizetype piece = 65536;
        const QByteArray uris("file:///a%20b\r\nfile:///caf\xe9\0x\r\n", 31);
        QTest::newRow("at once") << uris << Manner::whole << piece;
        QTest::newRow("nothing") << QByteArray() << Manner::whole << piece;
        QTest::newRow("a lot at once") << bytes(10 * megabyte) << Manner::whole << piece;
        QTest::newRow("in pieces") << bytes(300000) << Manner::inPieces << piece;
        QTest::newRow("in small pieces") << uris << Manner::inPieces << qsizetype(1);
        QTest::newRow("in large pieces") << bytes(7 * megabyte) << Manner::inPieces << 5 * megabyte / 2;
        QTest::newRow("a lot in pieces") << bytes(10 * megabyte) << Manner::inPieces << piece;
        QTest::newRow("nothing in pieces") << QByteArray() << Manner::inPieces << piece;
        QTest::newRow("as much as may be") << bytes(limit) << Manner::inPieces << megabyte;
    }

    void whatIsGivenIsReadByteForByte()
    {
        QFETCH(QByteArray, data);
        QFETCH(Manner, manner);
        QFETCH(qsizetype, pieceSize);
        read({.data = data, .manner = manner, .pieceSize = pieceSize});
        QVERIFY(m_answers.isEmpty());
        QTRY_COMPARE(m_answers.size(), 1);
        QVERIFY(m_answers.first() == data);
        QCOMPARE(m_clock.runningTimers(), 0);
    }

    void whatCannotBeReadIsAbsentAtOnce_data()
    {
        QTest::addColumn<DragSource::Offer>("offer");
        QTest::newRow("refused") << DragSource::Offer{.data = {}, .manner = Manner::refusing};
        QTest::newRow("no bytes") << DragSource::Offer{.data = "file:///a", .manner = Manner::asNumbers};
        QTest::newRow("too much") << DragSource::Offer{
            .data = bytes(limit + 1), .manner = Manner::inPieces, .pieceSize = megabyte};
    }

    void whatCannotBeReadIsAbsentAtOnce()
    {
        QFETCH(DragSource::Offer, offer);
        read(offer);
        QTRY_COMPARE(m_answers, Answers{std::nullopt});
        QCOMPARE(m_clock.runningTimers(), 0);
    }

    void whatNobodyOffersIsAbsentAtOnce()
    {
        m_source.emplace(DragSource::Offer{});
        const xcb_window_t gone = m_source->window();
        m_source->end();
        ask(gone);
        QTRY_COMPARE(m_answers, Answers{std::nullopt});
    }

    void whoSaysNothingIsWaitedForTenSeconds()
    {
        read({.data = {}, .manner = Manner::silent});
        QTRY_COMPARE(m_source->timesAsked(), 1);
        m_clock.advance(9999ms);
        QVERIFY(m_answers.isEmpty());
        m_clock.advance(1ms);
        QCOMPARE(m_answers, Answers{std::nullopt});
    }

    void everyPieceIsWaitedForTenSeconds()
    {
        read({.data = "file:///", .manner = Manner::inPiecesOnRequest, .pieceSize = 3});
        QTRY_COMPARE(m_source->timesAsked(), 1);
        for (int i = 0; i < 3; ++i) {
            QTRY_VERIFY(m_source->isTaken());
            m_clock.advance(9999ms);
            m_source->givePiece();
        }
        QTRY_VERIFY(m_source->isTaken());
        QVERIFY(m_answers.isEmpty());
        m_clock.advance(9999ms);
        QVERIFY(m_answers.isEmpty());
        m_clock.advance(1ms);
        QCOMPARE(m_answers, Answers{std::nullopt});
    }

    void whoEndsMidwayIsWaitedForNoLonger()
    {
        read({.data = "file:///", .manner = Manner::inPiecesOnRequest, .pieceSize = 3});
        QTRY_COMPARE(m_source->timesAsked(), 1);
        QTRY_VERIFY(m_source->isTaken());
        m_source->givePiece();
        QTRY_VERIFY(m_source->isTaken());
        QVERIFY(m_answers.isEmpty());
        m_source->end();
        QTRY_COMPARE(m_answers, Answers{std::nullopt});
    }

    void theProgramGoesOnWhileALotIsRead()
    {
        int turns = 0;
        QTimer turn;
        connect(&turn, &QTimer::timeout, this, [&turns] { ++turns; });
        turn.start(0);
        read({.data = bytes(10 * megabyte)});
        QTRY_COMPARE(m_answers.size(), 1);
        QVERIFY2(turns >= 10, qPrintable(QString::number(turns)));
    }

    void whoLosesInterestIsNotCalled()
    {
        read({.data = "file:///a"});
        m_reader.reset();
        QTRY_COMPARE(m_source->timesAsked(), 1);
        QCOMPARE(m_clock.runningTimers(), 0);
        read({.data = "file:///b"});
        QTRY_COMPARE(m_answers, Answers{QByteArray("file:///b")});
    }

    void theReaderMayGoWithTheCall()
    {
        m_onAnswer = [this] { m_reader.reset(); };
        read({.data = "file:///a"});
        QTRY_COMPARE(m_answers.size(), 1);
        QVERIFY(!m_reader);
    }

    void twoAreReadSideBySide()
    {
        read({.data = {}, .manner = Manner::silent});
        QTRY_COMPARE(m_source->timesAsked(), 1);
        DragSource other({.data = "file:///b"});
        Answers others;
        const SelectionReader second(
            *connection, m_clock, question(other.window()), [&](const auto &answer) { others.append(answer); });
        QTRY_COMPARE(others, Answers{QByteArray("file:///b")});
        QVERIFY(m_answers.isEmpty());
    }

private:
    using Answers = QList<std::optional<QByteArray>>;

    [[nodiscard]] SelectionReader::Question question(xcb_window_t source) const
    {
        return {.selection = connection->atom(QByteArrayLiteral("XdndSelection")),
            .target = connection->atom(QByteArrayLiteral("text/uri-list")),
            .time = XCB_CURRENT_TIME,
            .source = source};
    }

    void read(const DragSource::Offer &offer)
    {
        m_source.emplace(offer);
        ask(m_source->window());
    }

    void ask(xcb_window_t source)
    {
        m_reader = std::make_unique<SelectionReader>(
            *connection, m_clock, question(source), [this](const std::optional<QByteArray> &answer) {
                m_answers.append(answer);
                if (const auto act = std::exchange(m_onAnswer, nullptr))
                    act();
            });
    }

    FakeClock m_clock;
    std::optional<DragSource> m_source;
    std::unique_ptr<SelectionReader> m_reader;
    Answers m_answers;
    std::function<void()> m_onAnswer;
};

MOORLINE_TEST(SelectionReaderTest);

} // namespace moorline::test

#include "SelectionReaderTest.moc"
