#pragma once

#include "platform/Files.h"
#include "theme/IconImage.h"

#include <QAbstractButton>
#include <QUrl>
#include <optional>

namespace moorline {

class BarStage;

/// An area that stands for a file: a click opens it, and a drag carries it into another program, as a copy or a link.
/// It is never moved out of its folder by that, whatever the other program says.
class FileDragSource : public QAbstractButton {
    Q_OBJECT
public:
    /// What is lent here outlives it. `url` is absent where there is nothing to drag.
    FileDragSource(BarStage &stage, Files &files, IconCache &icons, std::optional<QUrl> url, QWidget *parent = nullptr);

    [[nodiscard]] const std::optional<QUrl> &url() const { return m_url; }
    [[nodiscard]] bool isDragging() const { return m_isDragging; }

Q_SIGNALS:
    /// A menu was asked for, where there is a file that one is of.
    void menuRequested();
    void hoveredChanged(bool isHovered);
    void dragStarted();
    void dragEnded();

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void enterEvent(QEnterEvent *event) override;
    void leaveEvent(QEvent *event) override;

private:
    void beginDrag();

    BarStage &m_stage;
    Files &m_files;
    std::optional<QUrl> m_url;
    /// What goes with the pointer.
    IconImage m_icon;
    /// Where the press was that may begin a drag.
    std::optional<QPointF> m_press;
    /// For the drag that may begin.
    std::unique_ptr<Files::DragOffer> m_offer;
    bool m_isDragging = false;
};

} // namespace moorline
