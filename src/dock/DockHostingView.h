#pragma once

#include "platform/Clock.h"

#include <QGraphicsView>
#include <QMetaObject>

QT_BEGIN_NAMESPACE
class QGraphicsObject;
class QMouseEvent;
class QSinglePointEvent;
class QTimer;
QT_END_NAMESPACE

namespace moorline {

class BarStage;
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
    bool viewportEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    /// True when the press is not for the scene.
    [[nodiscard]] bool takesPress(const QMouseEvent &press);
    bool pointerWasLetGo(QMouseEvent &release);
    /// The item below the pointer that has something to tell. Null when there is none.
    [[nodiscard]] QGraphicsObject *helpfulItemAt(const QPoint &place) const;
    /// To the view, or to another place in it.
    void pointerCame(const QSinglePointEvent &event);
    /// The row changed: what the pointer rests on may be another item now.
    void lookBelowPointer();
    void showHelp();
    void hideHelp();

    DockBarView *m_bar;
    BarStage &m_stage;
    QTimer *m_look;
    /// What the tag tells about, to be compared and nothing else: the item may be gone.
    const QGraphicsObject *m_helpItem = nullptr;
    /// The last press was not for the scene, and neither is what it calls for beside.
    bool m_isPressTaken = false;
    /// Where it was last.
    QPoint m_pointer;
    std::unique_ptr<Clock::Timer> m_helpTimer;
    QMetaObject::Connection m_helpChange;
};

} // namespace moorline
