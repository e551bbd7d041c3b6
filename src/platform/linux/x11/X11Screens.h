#pragma once

#include "platform/Screens.h"

QT_BEGIN_NAMESPACE
class QScreen;
QT_END_NAMESPACE

namespace moorline {

class XConnection;

/// The screens that Qt follows through RandR.
class X11Screens final : public Screens {
    Q_OBJECT
public:
    /// `connection` is null where Qt draws without an X server.
    explicit X11Screens(XConnection *connection);

    [[nodiscard]] QList<Screen> screens() const override;

private:
    void follow(QScreen *screen);
    void updateMonitors();

    XConnection *m_connection;
    bool m_hasMonitors = true;
};

} // namespace moorline
