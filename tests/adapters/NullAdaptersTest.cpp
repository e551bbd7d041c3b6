#include "platform/qt/NullAdapters.h"
#include "harness/TestCase.h"

namespace moorline::test {

class NullAdaptersTest final : public TestCase {
    Q_OBJECT

private Q_SLOTS:
    void nothingIsToldOfOtherPrograms()
    {
        const NullAccessibility accessibility;
        QVERIFY(!accessibility.isProcessTrusted());
        const auto element = accessibility.application(1);
        QVERIFY(element);
        element->setMessagingTimeout(std::chrono::seconds(1));
        QCOMPARE(element->elements(QStringLiteral("AXChildren")).has_value(), false);
        QVERIFY(!element->value(QStringLiteral("AXTitle")).isValid());
    }
};

MOORLINE_TEST(NullAdaptersTest);

} // namespace moorline::test

#include "NullAdaptersTest.moc"
