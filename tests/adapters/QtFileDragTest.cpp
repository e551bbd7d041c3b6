#include "platform/qt/QtFileDrag.h"

#include "fakes/FakeFiles.h"
#include "harness/TestCase.h"
#include "platform/qt/NullAdapters.h"

#include <QDrag>
#include <QMimeData>
#include <QWidget>

using namespace moorline;
using namespace moorline::test;

namespace {

CarriedFile carried(const QUrl &url, std::unique_ptr<Files::DragOffer> offer = nullptr)
{
    QImage picture(96, 96, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::red);
    picture.setDevicePixelRatio(2);
    return {.url = url, .picture = picture, .offer = std::move(offer)};
}

/// The drag that was under way last. Here nobody can be dragged to, so that it is over at once.
const QDrag *lastDrag()
{
    const QList<QDrag *> drags = QCoreApplication::instance()->findChildren<QDrag *>();
    return drags.isEmpty() ? nullptr : drags.last();
}

void deleteDrags()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace

class QtFileDragTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void theFileIsOfferedAsItIs()
    {
        carryWithQt(carried(QUrl::fromEncoded("file:///home/me/a%FFb")));
        const QDrag *drag = lastDrag();
        QVERIFY(drag);
        QCOMPARE(drag->mimeData()->urls().value(0).toEncoded(), "file:///home/me/a%FFb");
        QCOMPARE(drag->mimeData()->formats(), QStringList{QStringLiteral("text/uri-list")});
        deleteDrags();
    }

    void itIsNeverToBeMoved()
    {
        carryWithQt(carried(QUrl(QStringLiteral("file:///home/me/a"))));
        const QDrag *drag = lastDrag();
        QVERIFY(drag);
        QCOMPARE(drag->supportedActions(), Qt::CopyAction | Qt::LinkAction);
        QCOMPARE(drag->defaultAction(), Qt::CopyAction);
        deleteDrags();
    }

    void theMiddleOfThePictureIsAtThePointer()
    {
        carryWithQt(carried(QUrl(QStringLiteral("file:///home/me/a"))));
        const QDrag *drag = lastDrag();
        QVERIFY(drag);
        QCOMPARE(drag->pixmap().deviceIndependentSize(), QSizeF(48, 48));
        QCOMPARE(drag->hotSpot(), QPoint(24, 24));
        deleteDrags();
    }

    void whatWasPreparedIsThereForAsLongAsItMayBeAskedFor()
    {
        FakeFiles files;
        files.offered.insert(QStringLiteral("application/x-transfer"), "key");
        const QUrl url(QStringLiteral("file:///home/me/a"));
        carryWithQt(carried(url, files.prepareDrag(url)));
        const QDrag *drag = lastDrag();
        QVERIFY(drag);
        QCOMPARE(drag->mimeData()->formats().size(), 2);
        QCOMPARE(drag->mimeData()->data(QStringLiteral("application/x-transfer")), "key");
        QCOMPARE(*files.offers, 1);
        deleteDrags();
        QCOMPARE(*files.offers, 0);
    }

    void itsEndIsToldOnce()
    {
        NullPopupWindows windows;
        QWidget source;
        int ends = 0;
        windows.carryFile(source, {10, 10}, carried(QUrl(QStringLiteral("file:///home/me/a"))), [&] { ++ends; });
        QCOMPARE(ends, 1);
        deleteDrags();
    }
};

MOORLINE_TEST(QtFileDragTest);
#include "QtFileDragTest.moc"
