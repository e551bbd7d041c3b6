#include "harness/TestCase.h"

#include <QApplication>
#include <QRegularExpression>
#include <QWidget>

namespace moorline::test {

namespace {

QList<std::function<std::unique_ptr<QObject>()>> &registrations()
{
    static QList<std::function<std::unique_ptr<QObject>()>> all;
    return all;
}

} // namespace

void TestCase::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void TestCase::cleanup()
{
    const auto leaked = QApplication::topLevelWidgets();
    QVERIFY2(leaked.isEmpty(), leaked.isEmpty() ? "" : leaked.first()->metaObject()->className());
}

Registration::Registration(std::function<std::unique_ptr<QObject>()> make)
{
    registrations().append(std::move(make));
}

int runAll(int argc, char **argv)
{
    QApplication application(argc, argv);
    int failed = 0;
    for (const auto &make : registrations()) {
        const auto testCase = make();
        failed += QTest::qExec(testCase.get(), application.arguments());
    }
    return failed == 0 ? 0 : 1;
}

} // namespace moorline::test
