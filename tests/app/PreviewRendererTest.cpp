#include "app/PreviewRenderer.h"

#include "DockFixture.h"
#include "harness/TestCase.h"

#include <QImage>
#include <QRegularExpression>

using namespace moorline;
using namespace moorline::test;

namespace {

struct Fixture : DockFixture {
    PreviewRenderer renderer{std::make_unique<DockBarView>(barContext(), [](qreal) {})};
    QTemporaryDir folder;
};

} // namespace

class PreviewRendererTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void writesTheBarOnItsGradientAtDoubleScale()
    {
        Fixture fixture;
        const QString path = fixture.folder.filePath(QStringLiteral("preview.png"));
        QTest::ignoreMessage(QtInfoMsg, qPrintable(QStringLiteral("Moorline: wrote preview to ") + path));
        fixture.renderer.render(path);
        const QImage image(path);
        QCOMPARE(image.size(), QSize(3200, 276));
        QCOMPARE(image.pixelColor(4, 0).name(), QStringLiteral("#2b3a4a"));
        QCOMPARE(image.pixelColor(4, 275).name(), QStringLiteral("#1b2430"));
    }

    void thePillStandsInTheMiddle()
    {
        Fixture fixture;
        const QString path = fixture.folder.filePath(QStringLiteral("preview.png"));
        QTest::ignoreMessage(QtInfoMsg, qPrintable(QStringLiteral("Moorline: wrote preview to ") + path));
        fixture.renderer.render(path);
        const QImage image(path);
        // The pill is 72 points high in 138: from 33 to 105, and darker than the ground.
        QVERIFY(image.pixelColor(1600, 2 * 33 + 6).lightness() < 40);
        QVERIFY(image.pixelColor(1600, 2 * 105 - 6).lightness() < 40);
        QVERIFY(image.pixelColor(1600, 2 * 33 - 6).lightness() > 40);
    }

    void aFolderThatIsNotThereIsReported()
    {
        Fixture fixture;
        QTest::ignoreMessage(QtInfoMsg, QRegularExpression(QStringLiteral("^Moorline: could not write preview: .+")));
        fixture.renderer.render(QStringLiteral("/nowhere/at/all.png"));
    }
};

MOORLINE_TEST(PreviewRendererTest);

#include "PreviewRendererTest.moc"
