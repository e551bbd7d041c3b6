#pragma once

#include <QObject>
#include <QTest>
#include <functional>

namespace moorline::test {

/// The base of every test class: a warning that was not announced with QTest::ignoreMessage fails the test, and so does
/// a top-level window that outlives it.
class TestCase : public QObject {
    Q_OBJECT
protected Q_SLOTS:
    void init();
    void cleanup();
};

/// One named test class of an executable.
struct Registration {
    Registration(std::function<std::unique_ptr<QObject>()> make);
};

/// Runs every registered class; the whole of a test executable's main().
int runAll(int argc, char **argv);

} // namespace moorline::test

/// Adds a test class to its executable.
#define MOORLINE_TEST(Class)                                                                                           \
    static const moorline::test::Registration s_registration##Class([] { return std::make_unique<Class>(); })
