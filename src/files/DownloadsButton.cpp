#include "files/DownloadsButton.h"

#include "chrome/BarStage.h"
#include "files/RecentDownloads.h"
#include "platform/Directories.h"
#include "platform/Workspace.h"
#include "settings/SettingsStore.h"

namespace moorline {

DownloadsButton::DownloadsButton(const FilesContext &context, QGraphicsItem *parent)
    : FileTile(context, parent)
{
    // What is dropped on it is meant for the bar.
    setAcceptDrops(false);
    showIcon(IconKind::file, path());
    setSymbol(QStringLiteral("folder"));
    setName(tr("Downloads"));
    connect(this, &BarItem::clicked, this, &DownloadsButton::openStack);
    connect(this, &BarItem::menuRequested, this, [this] { this->context().stage.openMenu(*this, menu()); });
}

QString DownloadsButton::path() const
{
    return context().directories.downloads();
}

Menu DownloadsButton::menu() const
{
    // What is chosen may be chosen when the button is gone.
    Workspace *workspace = &context().workspace;
    SettingsStore *store = &context().store;
    const QUrl folder = QUrl::fromLocalFile(path());
    return {{.title = tr("Open Downloads Folder"), .action = [=] { workspace->openFile(folder); }},
        {.title = tr("Show in Finder"), .action = [=] { workspace->reveal({folder}); }}, MenuItem::separator(),
        {.title = tr("Hide Downloads from Dock"),
            .action = [=] { store->change([](Settings &settings) { settings.showDownloadsFolder = false; }); }}};
}

void DownloadsButton::openStack()
{
    load();
    Workspace *workspace = &context().workspace;
    auto stack = std::make_unique<DownloadsStackView>(
        DownloadsStackView::Context{
            .stage = context().stage, .files = context().files, .icons = context().icons, .symbols = context().symbols},
        m_state);
    m_stack = stack.get();
    const auto finish = [stack = m_stack] {
        if (stack)
            Q_EMIT stack->finished();
    };
    connect(m_stack, &DownloadsStackView::fileChosen, m_stack, [workspace, finish](const QUrl &file) {
        workspace->openFile(file);
        finish();
    });
    connect(
        m_stack, &DownloadsStackView::folderChosen, m_stack, [workspace, finish, folder = QUrl::fromLocalFile(path())] {
            workspace->openFile(folder);
            finish();
        });
    connect(m_stack, &DownloadsStackView::menuRequested, this, &DownloadsButton::openMenuOf);
    context().stage.openPopover(*this, std::move(stack));
}

void DownloadsButton::load()
{
    ++m_reading;
    const QString folder = path();
    // However often it is clicked under one reading, one more follows.
    if (m_underWay && m_underWay->folder == folder)
        return;
    m_underWay = UnderWay{.folder = folder, .reading = m_reading};
    context().files.list(folder, newest, [button = QPointer(this), reading = m_reading, folder](const auto &found) {
        if (button)
            button->take(reading, folder, found);
    });
}

void DownloadsButton::take(quint64 reading, const QString &folder, const std::optional<QList<FolderEntry>> &found)
{
    const bool wasUnderWay = m_underWay && m_underWay->reading == reading;
    if (wasUnderWay)
        m_underWay.reset();
    if (m_reading != reading) {
        if (wasUnderWay)
            load();
        return;
    }
    m_state.couldNotRead = !found;
    if (found)
        m_state.files = urlsIn(folder, *found);
    if (m_stack)
        m_stack->show(m_state);
}

void DownloadsButton::openMenuOf(const QUrl &file)
{
    Workspace *workspace = &context().workspace;
    // In the place of the stack: there is one window above the bar at a time.
    context().stage.close();
    context().stage.openMenu(*this,
        {{.title = tr("Open"), .action = [=] { workspace->openFile(file); }},
            {.title = tr("Show in Finder"), .action = [=] { workspace->reveal({file}); }}});
}

} // namespace moorline
