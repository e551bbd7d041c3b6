#include "dock/DockPanel.h"
#include "fakes/FakePanelWindow.h"
#include "harness/TestCase.h"

using namespace moorline;

namespace {

/// A window that is sized beside Qt's back, as one is whose view lies in a window that is not Qt's.
class EmbeddingPanelWindow final : public test::FakePanelWindow {
public:
    void setFrame(const QRectF &frame) override { frames.append(frame); }
};

class Content final : public QWidget {
public:
    [[nodiscard]] QSize sizeHint() const override { return {200, 150}; }
};

} // namespace

class DockPanelTest final : public test::TestCase {
    Q_OBJECT
private Q_SLOTS:
    void theFirstShowTakesNoSizeFromTheContent()
    {
        EmbeddingPanelWindow window;
        DockPanel panel(window);
        panel.setContent(new Content);
        panel.setFrame({490, -11, 460, 98});
        const QSize before = panel.size();
        QVERIFY(before != QSize(200, 150));
        window.orderFrontRegardless();
        QVERIFY(QTest::qWaitForWindowExposed(&panel));
        QCOMPARE(panel.size(), before);
        QCOMPARE(panel.content()->size(), before);
    }
};

MOORLINE_TEST(DockPanelTest);
#include "DockPanelTest.moc"
