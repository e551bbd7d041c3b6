#include "files/DownloadsRow.h"

#include "files/ShownName.h"
#include "theme/Shapes.h"
#include "theme/Text.h"
#include "theme/Theme.h"

#include <QPainter>
#include <QtMath>

namespace moorline {

namespace {

constexpr qreal iconSide = 22;
constexpr qreal spacing = 8;
constexpr qreal sidePadding = 6;
constexpr qreal verticalPadding = 4;
constexpr qreal cornerRadius = 6;
constexpr qreal draggedOpacity = 0.4;
constexpr TextStyle nameStyle{.size = 12};
const QColor hoverColor = QColor::fromRgbF(1, 1, 1, 0.1F);

} // namespace

DownloadsRow::DownloadsRow(BarStage &stage, Files &files, IconCache &icons, const QUrl &url, QWidget *parent)
    : FileDragSource(stage, files, icons, url, parent)
    , m_icon(icons)
{
    setText(shownName(url));
    // As wide as the list, however long the name is.
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    m_icon.show(IconKind::file, url.toLocalFile(), iconSide);
    const auto repaint = [this] { update(); };
    connect(&m_icon, &IconImage::changed, this, repaint);
    connect(this, &FileDragSource::hoveredChanged, this, repaint);
    connect(this, &FileDragSource::dragStarted, this, repaint);
    connect(this, &FileDragSource::dragEnded, this, repaint);
}

QSize DownloadsRow::sizeHint() const
{
    const qreal width = iconSide + spacing + textSize(text(), nameStyle).width();
    const qreal height = std::max(iconSide, textSize(text(), nameStyle).height());
    return {qCeil(width + 2 * sidePadding), qCeil(height + 2 * verticalPadding)};
}

void DownloadsRow::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    painter.setOpacity(isDragging() ? draggedOpacity : 1);
    if (underMouse() || hasFocus())
        painter.fillPath(continuousRoundedRect(rect(), cornerRadius), hoverColor);
    const QRectF icon(sidePadding, (height() - iconSide) / 2, iconSide, iconSide);
    if (const QImage &image = m_icon.at(devicePixelRatioF()); !image.isNull())
        painter.drawImage(icon, image);
    const qreal left = icon.right() + spacing;
    const QString name = elided(text(), nameStyle, width() - left - sidePadding);
    const qreal top = (height() - textSize(name, nameStyle).height()) / 2;
    drawText(painter, {left, top}, name, nameStyle, Theme::primaryText);
}

} // namespace moorline
