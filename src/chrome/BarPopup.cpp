#include "chrome/BarPopup.h"

#include "theme/Shapes.h"
#include "theme/Theme.h"

#include <QKeyEvent>
#include <QPainter>

namespace moorline {

namespace {

qreal cornerRadius(PopupKind kind)
{
    switch (kind) {
    case PopupKind::menu:
    case PopupKind::popover:
        return 11;
    case PopupKind::helpTag:
        return 8;
    }
    return 0;
}

QColor opaque(QColor color)
{
    color.setAlpha(255);
    return color;
}

} // namespace

BarPopup::BarPopup(PopupWindows &windows, PopupKind kind)
    : m_windows(windows)
    , m_kind(kind)
{
    setAttribute(Qt::WA_TranslucentBackground);
    setAttribute(Qt::WA_ShowWithoutActivating);
    connect(&windows, &PopupWindows::compositionChanged, this, QOverload<>::of(&QWidget::update));
}

BarPopup::~BarPopup() = default;

PopupWindow &BarPopup::native()
{
    if (!m_native)
        m_native = m_windows.adopt(*this, m_kind);
    return *m_native;
}

void BarPopup::setFrame(const QRectF &frame)
{
    m_frame = frame;
    native().setFrame(frame);
}

void BarPopup::orderFront()
{
    native().orderFront();
    if (!wantsKeyboard())
        return;
    setFocus();
    native().takeKeyboard();
}

void BarPopup::orderOut()
{
    if (m_native)
        m_native->orderOut();
}

void BarPopup::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape)
        Q_EMIT dismissed();
    else
        QWidget::keyPressEvent(event);
}

void BarPopup::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const bool isRound = m_windows.isComposited();
    constexpr qreal inset = 0.5;
    const QRectF border = QRectF(rect()).adjusted(inset, inset, -inset, -inset);
    painter.setRenderHint(QPainter::Antialiasing);
    if (isRound) {
        painter.fillPath(continuousRoundedRect(rect(), cornerRadius(m_kind)), Theme::pillFill);
        painter.strokePath(continuousRoundedRect(border, cornerRadius(m_kind) - inset), QPen(Theme::pillStroke, 1));
    } else {
        painter.fillRect(rect(), opaque(Theme::pillFill));
        painter.setPen(QPen(Theme::pillStroke, 1, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
        painter.drawRect(border);
    }
}

} // namespace moorline
