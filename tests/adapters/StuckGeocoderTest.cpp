#include "platform/linux/location/GWeatherGeocoder.h"

#include "harness/TestCase.h"

#include <QElapsedTimer>

using namespace moorline;
using namespace moorline::test;

namespace {

// A busy machine takes a while for everything.
constexpr qint64 promptly = 3000;

} // namespace

/// In a process of its own, which finds a library that never answers in place of the real one.
class StuckGeocoderTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void aLibraryThatDoesNotReturnHoldsNoEndUp()
    {
        const QTemporaryDir folder;
        const QString mark = folder.filePath(QStringLiteral("mark"));
        qputenv("STUCK_MARK", mark.toLocal8Bit());
        QElapsedTimer timer;
        {
            GWeatherGeocoder geocoder;
            for (int times = 0; times < 2; ++times)
                geocoder.reverseGeocode(48.14, 11.58, [](const QList<Placemark> &) { QFAIL("there is no answer"); });
            QTRY_VERIFY(QFile::exists(mark));
            timer.start();
        }
        QVERIFY2(timer.elapsed() < promptly, QByteArray::number(timer.elapsed()).constData());
        QCoreApplication::processEvents();
    }
};

MOORLINE_TEST(StuckGeocoderTest);

#include "StuckGeocoderTest.moc"
