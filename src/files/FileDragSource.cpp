#include "files/FileDragSource.h"

#include "chrome/BarDrag.h"
#include "chrome/BarStage.h"

#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QDrag>
#include <QMimeData>
#include <QMouseEvent>
#include <QPointer>

namespace moorline {

namespace {

/// A pointer that travels farther from its press begins a drag, in points.
constexpr qreal longestClick = 3;
constexpr int pictureSize = 48;

/// A file, and what was prepared for whoever it is given to, who may ask for it after the drop.
class CarriedFile final : public QMimeData {
public:
    CarriedFile(const QUrl &url, std::unique_ptr<Files::DragOffer> offer)
        : m_offer(std::move(offer))
    {
        setUrls({url});
        const QHash<QString, QByteArray> formats = m_offer ? m_offer->formats() : QHash<QString, QByteArray>();
        for (auto format = formats.begin(); format != formats.end(); ++format)
            setData(format.key(), format.value());
    }

private:
    std::unique_ptr<Files::DragOffer> m_offer;
};

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
    m_press.reset();
    // No click follows.
    setDown(false);
    // Qt deletes it when the other program has what it wants of it, which may be when this is gone.
    auto *drag = new QDrag(QCoreApplication::instance());
    drag->setMimeData(new CarriedFile(*m_url, std::move(m_offer)));
    drag->setPixmap(picture());
    drag->setHotSpot({pictureSize / 2, pictureSize / 2});
    // For as long as it lasts, which may be longer than this.
    std::unique_ptr<BarDrag> held = m_stage.beginDrag();
    m_isDragging = true;
    QPointer<FileDragSource> alive{this};
    Q_EMIT dragStarted();
    // What becomes of it is the other program's affair: some say that they moved what they were offered to copy.
    drag->exec(Qt::CopyAction | Qt::LinkAction, Qt::CopyAction);
    if (!alive)
        return;
    held.reset();
    m_isDragging = false;
    Q_EMIT dragEnded();
}

QPixmap FileDragSource::picture()
{
    return QPixmap::fromImage(m_icon.image());
}

} // namespace moorline
