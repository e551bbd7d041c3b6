#include "chrome/HelpTag.h"

#include "fakes/FakeClock.h"
#include "fakes/FakePopupWindows.h"
#include "harness/TestCase.h"

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;

class HelpTagTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void everyLineIsPainted()
    {
        FakeClock clock;
        FakePopupWindows windows;
        HelpTag tag(windows, clock);
        tag.setText(QStringLiteral("Clear"));
        const int oneLine = int(tag.naturalSize().height());
        tag.setText(QStringLiteral("Clear\nFeels like 3°"));
        QVERIFY(tag.naturalSize().height() > oneLine + 8);
        tag.resize(tag.naturalSize().toSize());
        const QImage image = tag.grab().toImage();
        for (const int y : {oneLine / 2, image.height() - oneLine / 2}) {
            bool isBright = false;
            for (int x = 0; x < image.width(); ++x)
                isBright = isBright || qGray(image.pixel(x, y)) > 150;
            QVERIFY(isBright);
        }
    }

    void itGoesByItself()
    {
        FakeClock clock;
        FakePopupWindows windows;
        HelpTag tag(windows, clock);
        tag.setText(QStringLiteral("Clear"));
        tag.orderFront();
        clock.advance(6s);
        // Another text is read from the beginning.
        tag.setText(QStringLiteral("Rain"));
        clock.advance(9900ms);
        QVERIFY(tag.isVisible());
        clock.advance(100ms);
        QVERIFY(!tag.isVisible());
    }

    void itTakesNoInput()
    {
        FakeClock clock;
        FakePopupWindows windows;
        HelpTag tag(windows, clock);
        QVERIFY(tag.testAttribute(Qt::WA_TransparentForMouseEvents));
        QVERIFY(tag.testAttribute(Qt::WA_ShowWithoutActivating));
        QCOMPARE(tag.focusPolicy(), Qt::NoFocus);
        tag.orderFront();
        QCOMPARE(windows.adopted, QList<PopupKind>{PopupKind::helpTag});
        QVERIFY(!windows.keyboardOwner);
    }
};

MOORLINE_TEST(HelpTagTest);

#include "HelpTagTest.moc"
