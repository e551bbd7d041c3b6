#include "chrome/BarPopup.h"

#include "fakes/FakePopupWindows.h"
#include "harness/TestCase.h"

using namespace moorline;
using namespace moorline::test;

namespace {

class Blank final : public BarPopup {
public:
    explicit Blank(PopupWindows &windows, PopupKind kind = PopupKind::popover)
        : BarPopup(windows, kind)
    {
        resize(120, 80);
    }

    [[nodiscard]] QSizeF naturalSize() const override { return {120, 80}; }

    int paints = 0;

protected:
    void paintEvent(QPaintEvent *event) override
    {
        ++paints;
        BarPopup::paintEvent(event);
    }
};

QImage picture(QWidget &widget)
{
    QImage image(widget.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    widget.render(&image, {}, {}, QWidget::DrawChildren);
    return image;
}

} // namespace

class BarPopupTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void itIsRoundAndTransparentWhereWindowsMayBe()
    {
        FakePopupWindows windows;
        Blank popup(windows);
        const QImage image = picture(popup);
        QCOMPARE(image.pixelColor(0, 0).alpha(), 0);
        QCOMPARE(image.pixelColor(119, 79).alpha(), 0);
        // The fill of the pill: #141416 at nine tenths.
        QCOMPARE(image.pixelColor(60, 40).alpha(), 230);
        QCOMPARE(image.pixelColor(60, 40).rgb() & 0xFFFFFFU, 0x141416U);
    }

    void itIsSquareAndOpaqueWhereTheyMayNot()
    {
        FakePopupWindows windows;
        windows.setComposited(false);
        Blank popup(windows);
        const QImage image = picture(popup);
        for (const QPoint &place : {QPoint(0, 0), QPoint(119, 0), QPoint(0, 79), QPoint(119, 79), QPoint(60, 40)})
            QCOMPARE(image.pixelColor(place).alpha(), 255);
        QCOMPARE(image.pixelColor(60, 40), QColor(0x14, 0x14, 0x16));
        // Its outline stands out from a dark window behind it.
        QVERIFY(qGray(image.pixel(60, 0)) > qGray(image.pixel(60, 40)) + 15);
    }

    void itIsPaintedAnewWhenThatChanges()
    {
        FakePopupWindows windows;
        Blank popup(windows);
        popup.orderFront();
        QVERIFY(QTest::qWaitFor([&] { return popup.paints > 0; }));
        const int before = popup.paints;
        windows.setComposited(false);
        QVERIFY(QTest::qWaitFor([&] { return popup.paints > before; }));
    }

    void itLeavesTheFocusWhereItIs()
    {
        FakePopupWindows windows;
        Blank popup(windows);
        QVERIFY(popup.testAttribute(Qt::WA_ShowWithoutActivating));
        popup.orderFront();
        QVERIFY(!windows.keyboardOwner);
    }
};

MOORLINE_TEST(BarPopupTest);

#include "BarPopupTest.moc"
