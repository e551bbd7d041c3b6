#include "platform/qt/NullAdapters.h"

#include "platform/qt/QtFileDrag.h"

namespace moorline {

namespace {

// Further from any edge than any screen is large.
constexpr QPointF nowhere(0, 1'000'000);

class NullElement final : public AccessibilityElement {
public:
    void setMessagingTimeout([[maybe_unused]] std::chrono::milliseconds timeout) override { }
    [[nodiscard]] std::optional<List> elements([[maybe_unused]] const QString &attribute) const override
    {
        return std::nullopt;
    }
    [[nodiscard]] QVariant value([[maybe_unused]] const QString &attribute) const override { return {}; }
};

} // namespace

std::shared_ptr<AccessibilityElement> NullAccessibility::application([[maybe_unused]] qint64 process) const
{
    return std::make_shared<NullElement>();
}

QPointF NullPointer::location() const
{
    return nowhere;
}

Qt::MouseButtons NullPointer::pressedButtons() const
{
    return Qt::NoButton;
}

std::optional<QList<WindowDescription>> NullWindowServer::onScreenWindows() const
{
    return std::nullopt;
}

int NullWindowServer::level(WindowLevel level) const
{
    switch (level) {
    case WindowLevel::dock:
        return 20;
    case WindowLevel::mainMenu:
        return 24;
    }
    Q_UNREACHABLE();
}

std::optional<QList<DisplaySpace>> NullWindowServer::managedDisplaySpaces() const
{
    return std::nullopt;
}

std::optional<QString> NullWindowServer::mainDisplayUUID() const
{
    return std::nullopt;
}

void NullPanelWindow::adopt(QWidget &panel)
{
    m_panel = &panel;
}

void NullPanelWindow::setLevel(int level)
{
    m_level = level;
}

int NullPanelWindow::level() const
{
    return m_level;
}

void NullPanelWindow::setCollectionBehavior([[maybe_unused]] unsigned behavior)
{
}

void NullPanelWindow::setFrame(const QRectF &frame)
{
    m_frame = frame;
    m_panel->resize(frame.size().toSize());
}

QRectF NullPanelWindow::frame() const
{
    return m_frame;
}

QRect NullPanelWindow::accessibleRect(const QRectF &part) const
{
    return part.toAlignedRect();
}

void NullPanelWindow::orderFrontRegardless()
{
    m_panel->show();
}

void NullStatusBar::show([[maybe_unused]] StatusBarItem item)
{
}

void NullPanelWindow::setInteractiveArea([[maybe_unused]] const QPainterPath &area)
{
}

namespace {

class NullPopupWindow final : public PopupWindow {
public:
    explicit NullPopupWindow(QWidget &window)
        : m_window(window)
    {
    }
    void setFrame(const QRectF &frame) override { m_window.resize(frame.size().toSize()); }
    void orderFront() override { m_window.show(); }
    void takeKeyboard() override { }
    void orderOut() override { m_window.hide(); }

private:
    QWidget &m_window;
};

} // namespace

std::unique_ptr<PopupWindow> NullPopupWindows::adopt(QWidget &window, [[maybe_unused]] PopupKind kind)
{
    return std::make_unique<NullPopupWindow>(window);
}

bool NullPopupWindows::isComposited() const
{
    return true;
}

std::unique_ptr<PopupWindows::Handle> NullPopupWindows::openSystemMenu(
    [[maybe_unused]] const Menu &menu, [[maybe_unused]] MenuPlacement placement, [[maybe_unused]] Closed closed)
{
    return nullptr;
}

std::unique_ptr<PopupWindows::Handle> NullPopupWindows::watchPresses([[maybe_unused]] Pressed pressed)
{
    return std::make_unique<Handle>();
}

std::unique_ptr<PopupWindows::Handle> NullPopupWindows::watchEscape([[maybe_unused]] Escaped escaped)
{
    return nullptr;
}

void NullPopupWindows::carryFile(
    [[maybe_unused]] QWidget &source, [[maybe_unused]] const QPointF &press, CarriedFile file, Ended ended)
{
    carryWithQt(std::move(file));
    ended();
}

void NullPopupWindows::cancelDrag()
{
}

} // namespace moorline
