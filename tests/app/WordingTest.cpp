#include "harness/TestCase.h"

#include <QFile>
#include <QXmlStreamReader>

using namespace moorline::test;

namespace {

struct Message {
    QString source;
    QString translation;
};

bool namesMacOS(const QString &text)
{
    return text.contains(QLatin1StringView("macOS")) || text.contains(QLatin1StringView("System Settings"))
        || text.contains(QLatin1StringView("Finder"));
}

QList<Message> catalogue()
{
    QFile file(QStringLiteral(WORDING_CATALOGUE));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QXmlStreamReader xml(&file);
    QList<Message> messages;
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isStartElement() && xml.name() == QLatin1StringView("source"))
            messages.append({xml.readElementText(), {}});
        else if (xml.isStartElement() && xml.name() == QLatin1StringView("translation"))
            messages.last().translation = xml.readElementText();
    }
    return messages;
}

} // namespace

class WordingTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void theLinuxWordingNamesNothingOfMacOS()
    {
        const QList<Message> messages = catalogue();
        QVERIFY(!messages.isEmpty());
        for (const Message &message : messages) {
            QVERIFY2(namesMacOS(message.source), qPrintable(message.source));
            QVERIFY2(!message.translation.isEmpty(), qPrintable(message.source));
            QVERIFY2(!namesMacOS(message.translation), qPrintable(message.translation));
        }
    }
};

MOORLINE_TEST(WordingTest);

#include "WordingTest.moc"
