#pragma once

#include <QObject>

namespace moorline {

class XConnection;

/// When the user last did something to one of the program's windows, by the X server's clock. Window managers want to
/// know it of whoever asks for the focus.
class UserTime final : public QObject {
    Q_OBJECT
public:
    /// `connection` outlives it. The application object must exist.
    explicit UserTime(XConnection &connection);

    /// In the server's milliseconds; zero as long as nothing was done.
    [[nodiscard]] quint32 last() const { return m_last; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    XConnection &m_connection;
    quint32 m_last = 0;
};

} // namespace moorline
