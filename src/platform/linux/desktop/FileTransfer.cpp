#include "platform/linux/desktop/FileTransfer.h"

#include "platform/linux/bus/Bus.h"
#include "platform/linux/bus/PendingBusCall.h"

#include <QPointer>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace moorline {

namespace {

using namespace std::chrono_literals;

/// It may have to be started first.
constexpr auto patience = 10s;
/// Far more than any portal gives.
constexpr qsizetype longestKey = 1024;

QDBusMessage question(const QString &method, const QVariantList &arguments)
{
    auto message = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.portal.Documents"),
        QStringLiteral("/org/freedesktop/portal/documents"), QStringLiteral("org.freedesktop.portal.FileTransfer"),
        method);
    message.setArguments(arguments);
    return message;
}

QDBusMessage startQuestion()
{
    // A program may ask as it is dragged over, and again when the file is dropped: not once, then.
    const QVariantMap options{{QStringLiteral("autostop"), false}};
    return question(QStringLiteral("StartTransfer"), {options});
}

QDBusMessage addQuestion(const QString &key, const QDBusUnixFileDescriptor &file)
{
    const QList<QDBusUnixFileDescriptor> files{file};
    return question(QStringLiteral("AddFiles"), {key, QVariant::fromValue(files), QVariantMap()});
}

void stop(Bus &bus, const QString &key)
{
    if (bus.isOpen())
        bus.connection().send(question(QStringLiteral("StopTransfer"), {key}));
}

} // namespace

FileTransfer::FileTransfer(Bus &sessionBus, Clock &clock, QObject &owner)
    : QObject(&owner)
    , m_bus(sessionBus)
    , m_clock(clock)
    , m_owner(owner)
{
}

FileTransfer::~FileTransfer()
{
    if (!m_key.isEmpty())
        stop(m_bus, m_key);
}

QDBusUnixFileDescriptor FileTransfer::open(const QByteArray &path)
{
    QDBusUnixFileDescriptor file;
    const int descriptor = ::open(path.constData(), O_PATH | O_CLOEXEC);
    struct stat facts { };
    if (descriptor >= 0 && fstat(descriptor, &facts) == 0 && S_ISREG(facts.st_mode))
        file.giveFileDescriptor(descriptor);
    else if (descriptor >= 0)
        close(descriptor);
    return file;
}

void FileTransfer::begin(const QDBusUnixFileDescriptor &file)
{
    handOver(file);
}

QCoro::Task<> FileTransfer::handOver(QDBusUnixFileDescriptor file)
{
    const QPointer<FileTransfer> alive(this);
    Bus &bus = m_bus;
    const BusAnswer started = co_await ask(m_owner, m_bus, m_clock, startQuestion(), patience);
    const auto key = started.value<QString>();
    if (!key || key->isEmpty() || key->size() > longestKey)
        co_return;
    // A portal that had to be started may answer when the drag is long over.
    if (!alive)
        co_return stop(bus, *key);
    m_key = *key;
    const BusAnswer added = co_await ask(*this, m_bus, m_clock, addQuestion(m_key, file), patience);
    if (!added.isError())
        m_isReady = true;
}

QHash<QString, QByteArray> FileTransfer::formats() const
{
    if (!m_isReady)
        return {};
    return {{QStringLiteral("application/vnd.portal.filetransfer"), m_key.toUtf8()}};
}

} // namespace moorline
