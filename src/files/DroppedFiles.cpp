#include "files/DroppedFiles.h"

#include "platform/ArrivingDrop.h"

#include <QSysInfo>

namespace moorline {

namespace {

bool isHexDigit(char character)
{
    return (character >= '0' && character <= '9') || (character >= 'a' && character <= 'f')
        || (character >= 'A' && character <= 'F');
}

bool isEscape(const QByteArray &uri, qsizetype at)
{
    return uri[at] == '%' && at + 2 < uri.size() && isHexDigit(uri[at + 1]) && isHexDigit(uri[at + 2]);
}

/// The address of a file without a byte that does not belong into one: not every program escapes all of them. They are
/// bytes to the end, as the names of files are, and need not be text.
QByteArray escaped(const QByteArray &uri)
{
    QByteArray answer;
    for (qsizetype i = 0; i < uri.size(); ++i) {
        const auto byte = static_cast<unsigned char>(uri[i]);
        const bool belongs = byte > ' ' && byte < 0x7f && byte != '?' && (byte != '%' || isEscape(uri, i));
        if (belongs)
            answer.append(uri[i]);
        else
            answer.append('%').append(QByteArray(1, uri[i]).toHex().toUpper());
    }
    return answer;
}

/// Some programs name the machine, as the first description of such drags had it.
bool isThisMachine(const QString &host)
{
    const auto is = [&host](const QString &name) { return host.compare(name, Qt::CaseInsensitive) == 0; };
    return host.isEmpty() || is(QStringLiteral("localhost")) || is(QSysInfo::machineHostName());
}

/// Invalid for what is no file of this machine.
QUrl fileURL(const QByteArray &uri)
{
    QUrl url = QUrl::fromEncoded(escaped(uri));
    if (url.scheme() != QStringLiteral("file") || !isThisMachine(url.host()))
        return {};
    if (!url.path().startsWith(u'/') || uri.contains("%00"))
        return {};
    // A place within the file, as links have it.
    url.setFragment(QString());
    url.setHost(QString());
    return url;
}

} // namespace

bool mayHoldFiles(const QStringList &formats)
{
    return formats.contains(fileListFormat());
}

QList<QUrl> loadDroppedFileURLs(const QMimeData &dropped)
{
    QList<QUrl> files;
    const QList<QByteArray> lines = dropped.data(fileListFormat()).split('\n');
    for (const QByteArray &line : lines) {
        // What begins so is a comment.
        const QByteArray uri = line.trimmed();
        const QUrl file = uri.startsWith('#') ? QUrl() : fileURL(uri);
        if (file.isValid())
            files.append(file);
    }
    return files;
}

} // namespace moorline
