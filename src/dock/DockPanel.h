#pragma once

#include <QWidget>

namespace moorline {

class PanelWindow;

/// The borderless, translucent window the bar lives in. It floats above other windows and never takes the focus.
class DockPanel final : public QWidget {
    Q_OBJECT
public:
    /// `native` is this panel's alone.
    explicit DockPanel(PanelWindow &native);

    /// Fills the panel with `content` and owns it.
    void setContent(QWidget *content);
    /// Null until there is one.
    [[nodiscard]] QWidget *content() const { return m_content; }

    /// In points, origin at the bottom left of the primary screen.
    void setFrame(const QRectF &frame);
    [[nodiscard]] QRectF frame() const;
    [[nodiscard]] PanelWindow &native() const { return m_native; }

private:
    PanelWindow &m_native;
    QWidget *m_content = nullptr;
};

} // namespace moorline
