#include "platform/linux/icons/ThemedIcons.h"

#include "IconsOnDisk.h"
#include "fakes/FakeClock.h"
#include "harness/TestCase.h"
#include "platform/linux/icons/SessionIconTheme.h"
#include "platform/qt/QtFileWatch.h"

#include <QSignalSpy>
#include <QThread>

namespace moorline::test {

namespace {

using namespace std::chrono_literals;

const IconRequest app{IconKind::named, QStringLiteral("app"), 46, 1};

} // namespace

class ThemedIconsTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_disk = std::make_unique<IconsOnDisk>();
        // What is used where the theme of the session is not installed.
        m_disk->writeTheme(QStringLiteral("system/Adwaita"), {48});
        m_disk->writePng(QStringLiteral("system/Adwaita/48x48/apps/app.png"), Qt::red);
        m_icons = std::make_unique<ThemedIcons>(m_clock, m_theme, m_disk->bases());
        m_answers.clear();
    }

    void cleanup()
    {
        m_icons.reset();
        m_disk.reset();
        TestCase::cleanup();
    }

    void theAnswerComesLaterOnTheSameThread()
    {
        QThread *thread = nullptr;
        QImage icon;
        const auto request = m_icons->load(app, [&](const QImage &answer) {
            thread = QThread::currentThread();
            icon = answer;
        });
        QVERIFY(!thread);
        QTRY_VERIFY(thread);
        QCOMPARE(thread, QThread::currentThread());
        QCOMPARE(icon.size(), QSize(46, 46));
        QCOMPARE(middle(icon), QColor(Qt::red));
    }

    void whatIsMissingIsAnsweredToo()
    {
        const auto request = load({IconKind::named, QStringLiteral("other"), 46, 1});
        QTRY_COMPARE(m_answers.size(), 1);
        QVERIFY(m_answers.first().isNull());
    }

    void aRequestThatIsDroppedIsNotAnswered()
    {
        auto dropped = load(app);
        dropped.reset();
        const auto request = load({IconKind::named, QStringLiteral("other"), 46, 1});
        QTRY_COMPARE(m_answers.size(), 1);
        QVERIFY(m_answers.first().isNull());
    }

    void anApplicationIsLookedForWhereItIs()
    {
        const QString entry =
            m_disk->write(QStringLiteral("files.desktop"), "[Desktop Entry]\nType=Application\nName=Files\nIcon=app\n");
        const QString finder = QStringLiteral("/System/Library/CoreServices/Finder.app");
        QStringList asked;
        QList<std::function<void(const QString &)>> waiting;
        m_icons->setLocator([&](const QString &path, const std::function<void(const QString &)> &located) {
            asked.append(path);
            waiting.append(located);
        });
        const auto request = load({IconKind::application, finder, 46, 1});
        auto dropped = load({IconKind::application, finder, 46, 1});
        const auto other = load(app);
        QTRY_COMPARE(m_answers.size(), 1);
        QCOMPARE(asked, QStringList({finder, finder}));
        dropped.reset();
        for (const auto &located : std::as_const(waiting))
            located(entry);
        QTRY_COMPARE(m_answers.size(), 2);
        QCOMPARE(middle(m_answers.last()), QColor(Qt::red));
    }

    void whoIsLocatedAfterTheEndIsNotLookedFor()
    {
        std::function<void(const QString &)> waiting;
        m_icons->setLocator(
            [&](const QString &, const std::function<void(const QString &)> &located) { waiting = located; });
        const auto request = load({IconKind::application, QStringLiteral("/Finder.app"), 46, 1});
        m_icons.reset();
        waiting(QStringLiteral("/files.desktop"));
        QVERIFY(m_answers.isEmpty());
    }

    void otherApplicationsAreWorthAskingForAgain()
    {
        QSignalSpy changed(m_icons.get(), &Icons::themeChanged);
        m_icons->noteApplicationsChanged();
        QCOMPARE(changed.size(), 1);
    }

    void aRequestMayBeDroppedByItsAnswer()
    {
        bool isAnswered = false;
        std::unique_ptr<Icons::Request> request;
        request = m_icons->load(app, [&](const QImage &) {
            isAnswered = true;
            request.reset();
        });
        QTRY_VERIFY(isAnswered);
    }

    void anAnswerMayEndEverything()
    {
        bool isAnswered = false;
        const auto request = m_icons->load(app, [&](const QImage &) {
            isAnswered = true;
            m_icons.reset();
        });
        const auto other = load(app);
        QTRY_VERIFY(isAnswered);
        QCoreApplication::processEvents();
        QVERIFY(m_answers.isEmpty());
    }

    void endsWithoutDrawingWhatNobodyWaitsFor()
    {
        m_disk->writeSvg(QStringLiteral("system/Adwaita/48x48/apps/large.svg"), "red");
        std::vector<std::unique_ptr<Icons::Request>> requests;
        for (int i = 0; i < 2000; ++i)
            requests.push_back(load({IconKind::named, QStringLiteral("large"), 1000.0 + i % 20, 1}));
        const QDeadlineTimer tooLate(1000);
        m_icons.reset();
        QVERIFY(!tooLate.hasExpired());
        QVERIFY(m_answers.isEmpty());
    }

    void beyondTwoThousandWhoWaitNobodyIsAsked()
    {
        QCOMPARE(ThemedIcons::mostWaiting, 2048);
        std::vector<std::unique_ptr<Icons::Request>> requests;
        for (qsizetype i = 0; i < ThemedIcons::mostWaiting; ++i)
            requests.push_back(m_icons->load(app, [](const QImage &) {}));
        const auto oneTooMany = load(app);
        QVERIFY(m_answers.isEmpty());
        QTRY_COMPARE(m_answers.size(), 1);
        QVERIFY(m_answers.first().isNull());
        requests.clear();
        const auto oneMore = load(app);
        QTRY_COMPARE(m_answers.size(), 2);
        QVERIFY(!m_answers.last().isNull());
    }

    void anIconThatIsInstalledLaterIsWorthAskingForAgain()
    {
        const IconRequest late{IconKind::named, QStringLiteral("late"), 46, 1};
        QSignalSpy changed(m_icons.get(), &Icons::themeChanged);
        const auto missing = load(late);
        QTRY_COMPARE(m_answers.size(), 1);
        QVERIFY(m_answers.last().isNull());
        m_disk->writePng(QStringLiteral("system/Adwaita/48x48/apps/late.png"), Qt::blue);
        QTRY_COMPARE(m_clock.runningTimers(), 1);
        m_clock.advance(999ms);
        QCOMPARE(m_clock.runningTimers(), 1);
        m_clock.advance(1ms);
        QTRY_COMPARE(changed.size(), 1);
        const auto found = load(late);
        QTRY_COMPARE(m_answers.size(), 2);
        QCOMPARE(middle(m_answers.last()), QColor(Qt::blue));
    }

private:
    [[nodiscard]] std::unique_ptr<Icons::Request> load(const IconRequest &request)
    {
        return m_icons->load(request, [this](const QImage &icon) { m_answers.append(icon); });
    }

    FakeClock m_clock;
    QtFileWatch m_fileWatch;
    SessionIconTheme m_theme{nullptr, m_fileWatch, {}};
    std::unique_ptr<IconsOnDisk> m_disk;
    std::unique_ptr<ThemedIcons> m_icons;
    QList<QImage> m_answers;
};

MOORLINE_TEST(ThemedIconsTest);

} // namespace moorline::test

#include "ThemedIconsTest.moc"
