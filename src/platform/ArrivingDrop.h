#pragma once

#include <QMimeData>
#include <functional>
#include <memory>
#include <optional>

namespace moorline {

/// The format in which programs hand files over: their addresses, one a line.
[[nodiscard]] QString fileListFormat();

/// What another program let go over a window of ours, where its data have to be asked for and waited for. The program
/// waits in turn to be told what became of it: when this goes before, it is told that nothing was taken.
class DropTransfer {
public:
    /// Absent where the program gives none, says nothing for too long, or ends.
    using Received = std::function<void(const std::optional<QByteArray> &data)>;

    DropTransfer() = default;
    virtual ~DropTransfer() = default;
    Q_DISABLE_COPY_MOVE(DropTransfer)

    /// Asks for the data in a format that is offered; to be called once at most. Calls back once, from the event loop,
    /// and not at all when this is gone by then. The transfer may go with the call.
    virtual void read(const QString &format, Received received) = 0;
    /// Tells the program what became of what it offered; to ignore it where nothing was taken. Told once.
    virtual void finish(Qt::DropAction action) = 0;
};

/// What the events of another program's drag carry where the data come later: formats, and no data. Whoever takes the
/// drop keeps the transfer, which is null before.
class ArrivingDrop final : public QMimeData {
public:
    ArrivingDrop(QStringList formats, std::shared_ptr<DropTransfer> transfer);

    [[nodiscard]] QStringList formats() const override { return m_formats; }
    [[nodiscard]] const std::shared_ptr<DropTransfer> &transfer() const { return m_transfer; }

private:
    QStringList m_formats;
    std::shared_ptr<DropTransfer> m_transfer;
};

} // namespace moorline
