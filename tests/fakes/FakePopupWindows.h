#pragma once

#include "platform/PopupWindows.h"

#include <QPointer>
#include <QWidget>
#include <map>
#include <optional>
#include <utility>

namespace moorline::test {

/// A menu that the system draws.
struct SystemMenu {
    Menu menu;
    PopupWindows::MenuPlacement placement;
    PopupWindows::Closed closed;
};

/// Shows the widgets, presses where it is told to, and remembers who has the keyboard.
class FakePopupWindows final : public PopupWindows {
public:
    [[nodiscard]] std::unique_ptr<PopupWindow> adopt(QWidget &window, PopupKind kind) override
    {
        return std::make_unique<Window>(*this, window, kind);
    }
    [[nodiscard]] bool isComposited() const override { return m_isComposited; }
    [[nodiscard]] std::unique_ptr<Handle> openSystemMenu(
        const Menu &menu, MenuPlacement placement, Closed closed) override
    {
        if (!hasSystemMenus)
            return nullptr;
        return std::make_unique<OpenMenu>(*this, SystemMenu{menu, std::move(placement), std::move(closed)});
    }
    [[nodiscard]] std::unique_ptr<Handle> watchPresses(Pressed pressed) override
    {
        return std::make_unique<Watch>(*this, std::move(pressed));
    }
    [[nodiscard]] std::unique_ptr<Handle> watchEscape(Escaped escaped) override
    {
        return isKeyboardHeldElsewhere ? nullptr : std::make_unique<EscapeWatch>(*this, std::move(escaped));
    }

    void carryFile(QWidget &source, const QPointF &press, CarriedFile file, Ended ended) override
    {
        carrying = Carrying{&source, press, std::move(file), std::move(ended)};
    }
    void cancelDrag() override { ++cancelledDrags; }

    /// The file that is carried is let go, wherever that is.
    void letFileGo()
    {
        const std::optional<Carrying> over = std::exchange(carrying, std::nullopt);
        over.value().ended();
    }

    void setComposited(bool isComposited)
    {
        m_isComposited = isComposited;
        Q_EMIT compositionChanged();
    }
    /// The system's menu closes, with an item chosen or without.
    void closeSystemMenu(std::optional<qsizetype> chosen = std::nullopt)
    {
        const SystemMenu closing = systemMenu.value();
        closing.closed();
        if (chosen)
            closing.menu.at(*chosen).action();
    }
    /// A press of a button, on whichever program's window.
    void press(const QPointF &place)
    {
        const auto told = watches;
        for (const auto &[watch, pressed] : told) {
            if (watches.contains(watch))
                pressed(place);
        }
    }

    /// Escape, whoever has the keyboard.
    void pressEscape()
    {
        const auto told = escapeWatches;
        for (const auto &[watch, escaped] : told) {
            if (escapeWatches.contains(watch))
                escaped();
        }
    }

    struct Carrying {
        QPointer<QWidget> source;
        QPointF press;
        CarriedFile file;
        Ended ended;
    };

    /// The file that is carried now.
    std::optional<Carrying> carrying;
    bool isKeyboardHeldElsewhere = false;
    int cancelledDrags = 0;
    /// Null while other programs have it.
    QPointer<QWidget> keyboardOwner;
    /// What is shown now, the latest last.
    QList<QWidget *> shown;
    QList<PopupKind> adopted;
    std::map<Handle *, Pressed> watches;
    std::map<Handle *, Escaped> escapeWatches;

    bool hasSystemMenus = false;
    /// The one that is open.
    std::optional<SystemMenu> systemMenu;

private:
    class OpenMenu final : public Handle {
    public:
        OpenMenu(FakePopupWindows &windows, SystemMenu menu)
            : m_windows(windows)
        {
            windows.systemMenu = std::move(menu);
        }
        ~OpenMenu() override { m_windows.systemMenu.reset(); }

    private:
        FakePopupWindows &m_windows;
    };

    class Window final : public PopupWindow {
    public:
        Window(FakePopupWindows &windows, QWidget &widget, PopupKind kind)
            : m_windows(windows)
            , m_widget(widget)
        {
            windows.adopted.append(kind);
        }
        ~Window() override { m_windows.shown.removeOne(&m_widget); }
        void setFrame(const QRectF &frame) override { m_widget.resize(frame.size().toSize()); }
        void orderFront() override
        {
            m_windows.shown.removeOne(&m_widget);
            m_windows.shown.append(&m_widget);
            m_widget.show();
        }
        void takeKeyboard() override { m_windows.keyboardOwner = &m_widget; }
        void orderOut() override
        {
            if (m_windows.keyboardOwner == &m_widget)
                m_windows.keyboardOwner = nullptr;
            m_windows.shown.removeOne(&m_widget);
            m_widget.hide();
        }

    private:
        FakePopupWindows &m_windows;
        QWidget &m_widget;
    };

    class Watch final : public Handle {
    public:
        Watch(FakePopupWindows &windows, Pressed pressed)
            : m_windows(windows)
        {
            windows.watches.emplace(this, std::move(pressed));
        }
        ~Watch() override { m_windows.watches.erase(this); }

    private:
        FakePopupWindows &m_windows;
    };

    class EscapeWatch final : public Handle {
    public:
        EscapeWatch(FakePopupWindows &windows, Escaped escaped)
            : m_windows(windows)
        {
            windows.escapeWatches.emplace(this, std::move(escaped));
        }
        ~EscapeWatch() override { m_windows.escapeWatches.erase(this); }

    private:
        FakePopupWindows &m_windows;
    };

    bool m_isComposited = true;
};

} // namespace moorline::test
