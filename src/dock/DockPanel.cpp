#include "dock/DockPanel.h"

#include "platform/PanelWindow.h"

#include <QVBoxLayout>

namespace moorline {

DockPanel::DockPanel(PanelWindow &native)
    : m_native(native)
{
    setObjectName(QStringLiteral("DockPanel"));
    setWindowTitle(QStringLiteral("Moorline"));
    setAttribute(Qt::WA_TranslucentBackground);
    setAttribute(Qt::WA_ShowWithoutActivating);
    // Its size is its window's, also where that was set without Qt's knowing; never the one its content would like.
    setAttribute(Qt::WA_Resized);
    setFocusPolicy(Qt::NoFocus);
    m_native.adopt(*this);
}

void DockPanel::setContent(QWidget *content)
{
    m_content = content;
    auto *filled = new QVBoxLayout(this);
    filled->setContentsMargins(0, 0, 0, 0);
    filled->setSizeConstraint(QLayout::SetNoConstraint);
    filled->addWidget(content);
}

void DockPanel::setFrame(const QRectF &frame)
{
    m_native.setFrame(frame);
}

QRectF DockPanel::frame() const
{
    return m_native.frame();
}

} // namespace moorline
