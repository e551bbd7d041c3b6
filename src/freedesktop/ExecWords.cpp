#include "freedesktop/ExecWords.h"

#include <QRegularExpression>
#include <optional>

namespace moorline {

namespace {

/// Takes one word off the front of `rest`. Absent where a quote does not close.
std::optional<QString> takeWord(QStringView &rest)
{
    QString word;
    QChar quote;
    qsizetype i = 0;
    for (; i < rest.size(); ++i) {
        const QChar letter = rest[i];
        if (letter == u'\\' && quote != u'\'' && i + 1 < rest.size())
            word.append(rest[++i]);
        else if (!quote.isNull() && letter == quote)
            quote = QChar();
        else if (quote.isNull() && (letter == u'"' || letter == u'\''))
            quote = letter;
        else if (quote.isNull() && letter.isSpace())
            break;
        else
            word.append(letter);
    }
    rest = rest.mid(i);
    return quote.isNull() ? std::optional(word) : std::nullopt;
}

/// Without "%f", "--file=%f" and the like, in a line of shell as well. A percent sign of its own is written as two.
QString withoutFieldCodes(const QString &word)
{
    if (!word.contains(u'%'))
        return word;
    if (word.size() == 2 && word.front() == u'%' && word.back() != u'%')
        return {};
    static const QRegularExpression code(QStringLiteral("(?<!%)((?:%%)*)%[a-zA-Z]"));
    if (!word.contains(code))
        return QString(word).replace(QStringLiteral("%%"), QStringLiteral("%"));
    const bool isLine = word.contains(u' ');
    return isLine ? QString(word).replace(code, QStringLiteral("\\1")).trimmed() : QString();
}

} // namespace

QStringList execWords(const QString &exec)
{
    QStringList words;
    QStringView rest = QStringView(exec).trimmed();
    while (!rest.isEmpty()) {
        const auto word = takeWord(rest);
        if (!word)
            return {};
        if (const QString plain = withoutFieldCodes(*word); !plain.isEmpty())
            words.append(plain);
        rest = rest.trimmed();
    }
    return words;
}

} // namespace moorline
