#include "support/XSettings.h"

#include "harness/TestCase.h"

namespace moorline::test {

namespace {

/// Integer 7 as "Net/DoubleClick", colour as "Own/Color", "Papirus" as "Net/IconThemeName", "" as "Net/Empty".
QByteArray littleEndian()
{
    return QByteArray::fromHex("00000000 05000000 04000000"
                               "00000f00 4e65742f446f75626c65436c69636b00 01000000 07000000"
                               "02000900 4f776e2f436f6c6f72000000 01000000 1111222233334444"
                               "01001100 4e65742f49636f6e5468656d654e616d65000000 02000000 07000000 5061706972757300"
                               "01000900 4e65742f456d707479000000 01000000 00000000");
}

QByteArray bigEndian()
{
    return QByteArray::fromHex("01000000 00000005 00000001"
                               "01000011 4e65742f49636f6e5468656d654e616d65000000 00000002 00000007 5061706972757300");
}

const QByteArray iconTheme = QByteArrayLiteral("Net/IconThemeName");
const std::optional<QByteArray> absent;

} // namespace

class XSettingsTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void findsATextAmongOtherSettings()
    {
        QCOMPARE(xSettingsText(littleEndian(), iconTheme), std::optional(QByteArrayLiteral("Papirus")));
        QCOMPARE(xSettingsText(littleEndian(), "Net/Empty"), std::optional(QByteArray("")));
    }

    void readsEitherOrderOfBytes()
    {
        QCOMPARE(xSettingsText(bigEndian(), iconTheme), std::optional(QByteArrayLiteral("Papirus")));
    }

    void whatIsNoTextOrNotThereIsAbsent()
    {
        QCOMPARE(xSettingsText(littleEndian(), "Net/DoubleClick"), absent);
        QCOMPARE(xSettingsText(littleEndian(), "Own/Color"), absent);
        QCOMPARE(xSettingsText(littleEndian(), "Net/ThemeName"), absent);
        QCOMPARE(xSettingsText({}, iconTheme), absent);
    }

    void whatIsCutOffIsAbsent()
    {
        const QByteArray whole = bigEndian();
        for (qsizetype size = 0; size < whole.size(); ++size)
            QCOMPARE(xSettingsText(whole.left(size), iconTheme), absent);
    }

    void lengthsBeyondTheEndAreAbsent()
    {
        // The length of the name, the length of the value.
        const QList<std::pair<qsizetype, QByteArray>> damages{
            {14, QByteArray::fromHex("ffff")}, {40, QByteArray::fromHex("ffffffff")}};
        for (const auto &[place, bytes] : damages) {
            QByteArray damaged = bigEndian();
            damaged.replace(place, bytes.size(), bytes);
            QCOMPARE(xSettingsText(damaged, iconTheme), absent);
        }
    }

    void settingsThatNeverEndAreGivenUp()
    {
        QByteArray damaged = bigEndian();
        damaged.replace(8, 4, QByteArray::fromHex("ffffffff"));
        QCOMPARE(xSettingsText(damaged, "Net/Other"), absent);
    }

    void anUnknownTypeEndsTheReading()
    {
        QByteArray damaged = littleEndian();
        damaged[12] = 9;
        QCOMPARE(xSettingsText(damaged, iconTheme), absent);
    }
};

MOORLINE_TEST(XSettingsTest);

} // namespace moorline::test

#include "XSettingsTest.moc"
