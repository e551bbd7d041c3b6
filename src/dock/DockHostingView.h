#pragma once

#include <QGraphicsView>

namespace moorline {

class DockBarView;

/// Shows the bar's scene in a widget: transparent, without scroll bars, the bar always as large as the view.
/// A press acts at once, also while another program is active.
class DockHostingView final : public QGraphicsView {
    Q_OBJECT
public:
    /// Owns the bar.
    explicit DockHostingView(std::unique_ptr<DockBarView> bar, QWidget *parent = nullptr);
    ~DockHostingView() override;

    [[nodiscard]] DockBarView &bar() const { return *m_bar; }

protected:
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    DockBarView *m_bar;
};

} // namespace moorline
