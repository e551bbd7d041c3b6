#include "support/RegularFile.h"

#include "support/FileDescriptor.h"

#include <QFile>
#include <fcntl.h>
#include <sys/stat.h>

namespace moorline {

namespace {

bool isRegularFile(int descriptor, qint64 largest)
{
    struct stat status = {};
    return ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) && status.st_size <= largest;
}

} // namespace

std::optional<QByteArray> regularFileContent(const QString &path, qint64 largest)
{
    if (path.contains(QChar(u'\0')))
        return std::nullopt;
    const FileDescriptor descriptor(
        ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY));
    QFile file;
    if (!isRegularFile(descriptor.get(), largest) || !file.open(descriptor.get(), QIODevice::ReadOnly))
        return std::nullopt;
    const QByteArray content = file.read(largest + 1);
    return content.size() <= largest ? std::optional(content) : std::nullopt;
}

} // namespace moorline
