#pragma once

#include "platform/Clock.h"

#include <QObject>
#include <optional>

namespace moorline {

class XConnection;

/// When the user last did something to one of the program's windows, by the X server's clock. Window managers want to
/// know it of whoever asks for the focus.
class UserTime final : public QObject {
    Q_OBJECT
public:
    struct Deed {
        /// In the server's milliseconds.
        quint32 time = 0;
        /// How long ago it was heard of.
        std::chrono::milliseconds age;
    };

    /// Both outlive it. The application object must exist.
    UserTime(XConnection &connection, const Clock &clock);

    /// Absent as long as nothing was done.
    [[nodiscard]] std::optional<Deed> last() const;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void note(quint32 time);

    XConnection &m_connection;
    const Clock &m_clock;
    quint32 m_last = 0;
    std::chrono::milliseconds m_heard{};
};

} // namespace moorline
