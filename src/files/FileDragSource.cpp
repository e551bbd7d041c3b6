#include "files/FileDragSource.h"

#include "chrome/BarStage.h"

#include <QContextMenuEvent>
#include <QMouseEvent>
#include <QPointer>
#include <utility>

namespace moorline {

namespace {

/// A pointer that travels farther from its press begins a drag, in points.
constexpr qreal longestClick = 3;
constexpr int pictureSize = 48;

} // namespace

FileDragSource::FileDragSource(
    BarStage &stage, Files &files, IconCache &icons, std::optional<QUrl> url, QWidget *parent)
    : QAbstractButton(parent)
    , m_stage(stage)
    , m_files(files)
    , m_url(std::move(url))
    , m_icon(icons)
{
    setFocusPolicy(Qt::StrongFocus);
    if (m_url)
        m_icon.show(IconKind::file, m_url->toLocalFile(), pictureSize);
}

void FileDragSource::mousePressEvent(QMouseEvent *event)
{
    QAbstractButton::mousePressEvent(event);
    if (event->button() != Qt::LeftButton)
        return;
    m_press = event->position();
    if (m_url)
        m_offer = m_files.prepareDrag(*m_url);
    // To be there when a drag begins.
    static_cast<void>(m_icon.at(devicePixelRatioF()));
}

void FileDragSource::mouseMoveEvent(QMouseEvent *event)
{
    if (!m_press)
        return;
    const QPointF travel = event->position() - *m_press;
    if (m_url && QPointF::dotProduct(travel, travel) > longestClick * longestClick)
        beginDrag();
}

void FileDragSource::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton) {
        m_press.reset();
        m_offer.reset();
    }
    QAbstractButton::mouseReleaseEvent(event);
}

void FileDragSource::contextMenuEvent(QContextMenuEvent *)
{
    if (m_url)
        Q_EMIT menuRequested();
}

void FileDragSource::enterEvent(QEnterEvent *event)
{
    QAbstractButton::enterEvent(event);
    Q_EMIT hoveredChanged(true);
}

void FileDragSource::leaveEvent(QEvent *event)
{
    QAbstractButton::leaveEvent(event);
    Q_EMIT hoveredChanged(false);
}

void FileDragSource::beginDrag()
{
    const QPointF press = *std::exchange(m_press, std::nullopt);
    // No click follows.
    setDown(false);
    m_isDragging = true;
    const QPointer alive(this);
    Q_EMIT dragStarted();
    if (!alive)
        return;
    const auto end = [alive] {
        if (!alive)
            return;
        alive->m_isDragging = false;
        Q_EMIT alive->dragEnded();
    };
    m_stage.carryFile(*this, press, {.url = *m_url, .picture = m_icon.image(), .offer = std::move(m_offer)}, end);
}

} // namespace moorline
