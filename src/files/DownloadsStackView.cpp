#include "files/DownloadsStackView.h"

#include "files/DownloadsRow.h"
#include "files/StackParts.h"

#include <QKeyEvent>
#include <QVBoxLayout>
#include <algorithm>

namespace moorline {

namespace {

constexpr int padding = 12;
constexpr int spacing = 8;

constexpr qreal failureSize = 11;
constexpr qreal emptySize = 12;

} // namespace

DownloadsStackView::DownloadsStackView(const Context &context, const DownloadsState &state)
    : m_context(context)
    , m_column(new QVBoxLayout(this))
    , m_folder(new StackButton(context.symbols, QStringLiteral("folder"), tr("Open Downloads Folder"), this))
{
    m_column->setContentsMargins(padding, padding, padding, padding);
    m_column->setSpacing(spacing);
    m_column->addWidget(new StackLine(this));
    m_column->addWidget(m_folder, 0, Qt::AlignLeft);
    connect(m_folder, &QAbstractButton::clicked, this, &DownloadsStackView::folderChosen);
    setFocusPolicy(Qt::StrongFocus);
    show(state);
}

void DownloadsStackView::show(const DownloadsState &state)
{
    if (m_upper && state == m_state)
        return;
    m_state = state;
    m_rows.clear();
    m_list = nullptr;
    m_message.clear();
    if (state.couldNotRead)
        m_message = tr("Moorline needs permission to read Downloads.\nmacOS will ask the next time you click.");
    else if (state.files && state.files->isEmpty())
        m_message = tr("No recent downloads");
    if (!m_message.isEmpty())
        setUpper(new StackMessage(m_message, state.couldNotRead ? failureSize : emptySize, this));
    else
        setUpper(state.files ? makeList(*state.files) : nullptr);
}

void DownloadsStackView::setUpper(QWidget *upper)
{
    // Perhaps under an event of its own.
    if (m_upper) {
        m_upper->hide();
        m_upper->deleteLater();
        m_column->removeWidget(m_upper);
    }
    m_upper = upper;
    if (upper)
        m_column->insertWidget(0, upper);
    updateGeometry();
}

QWidget *DownloadsStackView::makeList(const QList<QUrl> &files)
{
    auto *list = new StackList(this);
    for (const QUrl &file : files) {
        m_rows.append(makeRow(file));
        list->append(m_rows.last());
    }
    m_list = list;
    return list;
}

DownloadsRow *DownloadsStackView::makeRow(const QUrl &file)
{
    auto *row = new DownloadsRow(m_context.stage, m_context.files, m_context.icons, file, this);
    connect(row, &QAbstractButton::clicked, this, [this, file] { Q_EMIT fileChosen(file); });
    connect(row, &FileDragSource::menuRequested, this, [this, file] { Q_EMIT menuRequested(file); });
    return row;
}

void DownloadsStackView::step(qsizetype by)
{
    QList<QWidget *> stops(m_rows.begin(), m_rows.end());
    stops.append(m_folder);
    const qsizetype now = stops.indexOf(window()->focusWidget());
    const qsizetype first = by > 0 ? 0 : stops.size() - 1;
    QWidget *stop = stops.at(now < 0 ? first : (now + by + stops.size()) % stops.size());
    stop->setFocus(Qt::TabFocusReason);
    if (m_list && stop != m_folder)
        m_list->ensureWidgetVisible(stop, 0, 0);
}

void DownloadsStackView::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Down:
        return step(1);
    case Qt::Key_Up:
        return step(-1);
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        if (auto *button = qobject_cast<QAbstractButton *>(window()->focusWidget()))
            button->click();
        return;
    default:
        PopoverContent::keyPressEvent(event);
    }
}

} // namespace moorline
