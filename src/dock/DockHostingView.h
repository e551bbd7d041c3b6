#pragma once

#include "platform/Clock.h"

#include <QGraphicsView>
#include <QMetaObject>

QT_BEGIN_NAMESPACE
class QSinglePointEvent;
QT_END_NAMESPACE

namespace moorline {

class DockBarView;
class HelpTag;

/// Shows the bar's scene in a widget: transparent, without scroll bars, the bar always as large as the view.
/// A press acts at once, also while another program is active.
class DockHostingView final : public QGraphicsView {
    Q_OBJECT
public:
    /// Owns the bar.
    explicit DockHostingView(std::unique_ptr<DockBarView> bar, QWidget *parent = nullptr);
    ~DockHostingView() override;

    [[nodiscard]] DockBarView &bar() const { return *m_bar; }
    /// What tells about the widget that the pointer rests on.
    [[nodiscard]] const HelpTag &helpTag() const { return *m_helpTag; }

protected:
    bool viewportEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    /// The item below the pointer that has something to tell. Null when there is none.
    [[nodiscard]] const QGraphicsItem *helpfulItemAt(const QPoint &place) const;
    /// To the view, or to another place in it.
    void pointerCame(const QSinglePointEvent &event);
    void showHelp();
    void hideHelp();

    DockBarView *m_bar;
    HelpTag *m_helpTag;
    /// What the tag tells about, to be compared and nothing else: the item may be gone.
    const QGraphicsItem *m_helpItem = nullptr;
    /// Where it was last.
    QPoint m_pointer;
    std::unique_ptr<Clock::Timer> m_helpTimer;
    QMetaObject::Connection m_helpChange;
};

} // namespace moorline
