#pragma once

#include "platform/Clock.h"

#include <QAbstractNativeEventFilter>
#include <QObject>
#include <QPointF>
#include <QPointer>
#include <QStringList>
#include <QWindow>
#include <optional>
#include <xcb/xcb.h>

QT_BEGIN_NAMESPACE
class QDragMoveEvent;
QT_END_NAMESPACE

namespace moorline {

class XConnection;

/// Takes the drops of other programs on a window before Qt does, which would wait for their data. What is held over
/// the window and let go there comes in the events of Qt as ever, with an ArrivingDrop.
class X11DropTarget final : public QObject, private QAbstractNativeEventFilter {
    Q_OBJECT
public:
    /// The connection and the clock outlive it.
    X11DropTarget(XConnection &connection, Clock &clock, QWindow &window);
    ~X11DropTarget() override;

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    /// What is held over the window, as it was told to Qt last.
    struct Held {
        QPointF place;
        Qt::DropActions actions;
        QStringList formats;
        Qt::MouseButtons buttons;
        Qt::KeyboardModifiers modifiers;
    };

    bool nativeEventFilter(const QByteArray &type, void *message, qintptr *result) override;
    void messageCame(xcb_client_message_event_t &message);
    void entered(const xcb_client_message_event_t &message);
    /// True when the window was told in another way.
    bool moved(QDragMoveEvent &event);
    void letGo(xcb_timestamp_t time);

    XConnection &m_connection;
    Clock &m_clock;
    QPointer<QWindow> m_window;
    /// Whose drag entered the window last.
    xcb_window_t m_source = XCB_WINDOW_NONE;
    /// A list of files is among what it offers.
    bool m_offersFiles = false;
    std::optional<Held> m_held;
};

} // namespace moorline
