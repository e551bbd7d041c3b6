#include "freedesktop/ProgramName.h"
#include "freedesktop/ExecWords.h"
#include "harness/TestCase.h"

namespace {

using moorline::execWords;
using moorline::programOf;

class ProgramNameTest : public moorline::test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void aCommandRunsAProgram_data();
    void aCommandRunsAProgram();
    void nothingIsKnownOfAProgram_data();
    void nothingIsKnownOfAProgram();
    void argumentsFollowTheProgram();
    void execIsSplitIntoWords_data();
    void execIsSplitIntoWords();
    void interpretersAreKnownByName_data();
    void interpretersAreKnownByName();
};

QString kindName(moorline::ProgramName::Kind kind)
{
    switch (kind) {
    case moorline::ProgramName::Kind::file:
        return QStringLiteral("file");
    case moorline::ProgramName::Kind::flatpak:
        return QStringLiteral("flatpak");
    case moorline::ProgramName::Kind::snap:
        return QStringLiteral("snap");
    case moorline::ProgramName::Kind::busName:
        return QStringLiteral("bus");
    }
    Q_UNREACHABLE();
}

void ProgramNameTest::aCommandRunsAProgram_data()
{
    QTest::addColumn<QString>("exec");
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("program");
    const auto row = [](const char *exec, const char *kind, const char *program) {
        QTest::newRow(exec) << QString::fromLatin1(exec) << QString::fromLatin1(kind) << QString::fromLatin1(program);
    };
    row("mousepad %F", "file", "mousepad");
    row("/usr/bin/mousepad %F", "file", "/usr/bin/mousepad");
    row("env LANG=C A=b mousepad", "file", "mousepad");
    row("/usr/bin/env -u LANG -i mousepad", "file", "mousepad");
    row("env --chdir=/tmp A=b sh -c \"exec mousepad %F\"", "file", "mousepad");
    row("sh -c 'LANG=C mousepad %F'", "file", "mousepad");
    row("bash -lc mousepad", "file", "mousepad");
    row("sh /opt/word/start.sh --quiet", "file", "/opt/word/start.sh");
    row("bash --norc -o pipefail /opt/word/start.sh", "file", "/opt/word/start.sh");
    row("python3 /usr/share/paint/paint.py %f", "file", "/usr/share/paint/paint.py");
    row("/usr/bin/python3.11 -O -W ignore -u paint.py", "file", "paint.py");
    row("python3 -m paint.window", "file", "paint.window");
    row("java -Xmx512m -jar /usr/share/maps/maps.jar", "file", "/usr/share/maps/maps.jar");
    row("/usr/lib/jvm/java-17/bin/java -cp a.jar:b.jar --add-opens java.base/x=ALL-UNNAMED org.maps.Main", "file",
        "org.maps.Main");
    row("java --module-path /m -m org.maps/org.maps.Main", "file", "org.maps/org.maps.Main");
    row("gjs -m /usr/share/notes/notes.js", "file", "/usr/share/notes/notes.js");
    row("gjs-console -I /usr/share/lib notes.js", "file", "notes.js");
    row("perl -w /usr/bin/report", "file", "/usr/bin/report");
    row("node --no-warnings /opt/chat/chat.js", "file", "/opt/chat/chat.js");
    row("electron25 --no-sandbox /usr/lib/chat/app.asar", "file", "/usr/lib/chat/app.asar");
    row("nice -n 10 mousepad", "file", "mousepad");
    row("pkexec --user root synaptic", "file", "synaptic");
    row("setsid nohup env A=b python3 paint.py", "file", "paint.py");
    row("flatpak run --branch=stable --arch=x86_64 --command=gimp --file-forwarding org.gimp.GIMP @@u %U @@", "flatpak",
        "org.gimp.GIMP");
    row("/usr/bin/flatpak run --command gimp org.gimp.GIMP//stable", "flatpak", "org.gimp.GIMP");
    row("snap run chat.window %U", "snap", "chat");
    row("env BAMF_DESKTOP_FILE_HINT=/x/chat_chat.desktop /snap/bin/chat %U", "snap", "chat");
    row("/var/lib/snapd/snap/bin/office.writer", "snap", "office");
    row("gapplication launch org.example.Notes", "bus", "org.example.Notes");
    row("gapplication action org.example.Notes new-window", "bus", "org.example.Notes");
}

void ProgramNameTest::aCommandRunsAProgram()
{
    QFETCH(const QString, exec);
    QFETCH(const QString, kind);
    QFETCH(const QString, program);
    const auto found = programOf(execWords(exec));
    QVERIFY(found);
    QCOMPARE(kindName(found->kind), kind);
    QCOMPARE(found->name, program);
}

void ProgramNameTest::nothingIsKnownOfAProgram_data()
{
    QTest::addColumn<QString>("exec");
    for (const char *exec : {"", "env", "env A=b", "python3", "python3 -c pass", "python3.11 -i", "sh", "sh -c",
             "bash -i", "sh -c 'cd /opt && ./run'", "sh -c 'a; b'", "sh -c 'a | b'", "java -version", "gjs -c code",
             "perl -e 1", "flatpak run", "flatpak list", "snap", "gapplication launch", "gapplication list-apps",
             "\"\"", "env env env env env env env env env mousepad"})
        QTest::newRow(exec) << QString::fromLatin1(exec);
}

void ProgramNameTest::nothingIsKnownOfAProgram()
{
    QFETCH(const QString, exec);
    QVERIFY(!programOf(execWords(exec)));
}

void ProgramNameTest::argumentsFollowTheProgram()
{
    const auto found = programOf(execWords(QStringLiteral("env A=b python3 -u paint.py --new \"two words\" %F")));
    QVERIFY(found);
    QCOMPARE(found->arguments, (QStringList{QStringLiteral("--new"), QStringLiteral("two words")}));
}

void ProgramNameTest::execIsSplitIntoWords_data()
{
    QTest::addColumn<QString>("exec");
    QTest::addColumn<QStringList>("words");
    const auto row = [](const char *exec, const char *words) {
        QTest::newRow(exec) << QString::fromLatin1(exec) << QString::fromLatin1(words).split(u'|', Qt::SkipEmptyParts);
    };
    row("a b  c", "a|b|c");
    row("  a\tb ", "a|b");
    row("\"a b\" 'c d'", "a b|c d");
    row("a\\ b \"c\\\"d\"", "a b|c\"d");
    row("'a\\b'", "a\\b");
    row("a%%b %f %U --file=%f %i", "a%b");
    row("a \"never ends", "");
}

void ProgramNameTest::execIsSplitIntoWords()
{
    QFETCH(const QString, exec);
    QFETCH(const QStringList, words);
    QCOMPARE(execWords(exec), words);
}

void ProgramNameTest::interpretersAreKnownByName_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("interprets");
    for (const char *name : {"sh", "/bin/bash", "env", "python", "python3", "/usr/bin/python3.11", "Java", "gjs",
             "gjs-console", "flatpak", "snap", "gapplication", "perl5.36.0", "electron", "wine64"})
        QTest::newRow(name) << QString::fromLatin1(name) << true;
    for (const char *name : {"", "mousepad", "pythonic", "shell", "snapshot", "javaws-viewer", "7", "env2go"})
        QTest::newRow(name) << QString::fromLatin1(name) << false;
}

void ProgramNameTest::interpretersAreKnownByName()
{
    QFETCH(const QString, name);
    QFETCH(const bool, interprets);
    QCOMPARE(moorline::isInterpreter(name), interprets);
}

MOORLINE_TEST(ProgramNameTest);

} // namespace

#include "ProgramNameTest.moc"
