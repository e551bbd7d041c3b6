#include "chrome/BarWidget.h"

#include "harness/TestCase.h"

#include <QSignalSpy>

namespace moorline::test {

namespace {

class SizedWidget final : public BarWidget {
public:
    using BarWidget::setNaturalSize;
};

} // namespace

class BarWidgetTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void takesItsNaturalSize();
    void announcesOnlyASizeThatChanged();
    void isNeverStretched();
};

void BarWidgetTest::takesItsNaturalSize()
{
    SizedWidget widget;
    widget.setNaturalSize({80, 40});
    QCOMPARE(widget.size(), QSizeF(80, 40));
    QCOMPARE(widget.preferredSize(), QSizeF(80, 40));
    widget.setNaturalSize({30, 50});
    QCOMPARE(widget.size(), QSizeF(30, 50));
}

void BarWidgetTest::announcesOnlyASizeThatChanged()
{
    SizedWidget widget;
    QSignalSpy announced(&widget, &BarWidget::naturalSizeChanged);
    widget.setNaturalSize({80, 40});
    QCOMPARE(announced.size(), 1);
    widget.setNaturalSize({80, 40});
    QCOMPARE(announced.size(), 1);
    widget.setNaturalSize({81, 40});
    QCOMPARE(announced.size(), 2);
}

void BarWidgetTest::isNeverStretched()
{
    SizedWidget widget;
    widget.setNaturalSize({80, 40});
    widget.resize(200, 72);
    QCOMPARE(widget.size(), QSizeF(80, 40));
}

} // namespace moorline::test

using moorline::test::BarWidgetTest;
MOORLINE_TEST(BarWidgetTest);

#include "BarWidgetTest.moc"
