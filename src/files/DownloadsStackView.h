#pragma once

#include "chrome/Popover.h"

#include <QUrl>
#include <optional>

QT_BEGIN_NAMESPACE
class QAbstractButton;
class QScrollArea;
class QVBoxLayout;
QT_END_NAMESPACE

namespace moorline {

class BarStage;
class DownloadsRow;
class Files;
class IconCache;
class Symbols;

/// What is known of the Downloads folder.
struct DownloadsState {
    /// Absent until the folder was read for the first time.
    std::optional<QList<QUrl>> files = std::nullopt;
    /// Whether the last reading failed.
    bool couldNotRead = false;

    bool operator==(const DownloadsState &) const = default;
};

/// The list of what came into the Downloads folder last, and a way into the folder. The arrow keys go from one to the
/// next, and Return opens it.
class DownloadsStackView final : public PopoverContent {
    Q_OBJECT
public:
    /// What it draws with, and whom it asks for drags; all of it outlives it.
    struct Context {
        BarStage &stage;
        Files &files;
        IconCache &icons;
        const Symbols &symbols;
    };

    DownloadsStackView(const Context &context, const DownloadsState &state);

    void show(const DownloadsState &state);
    /// What is said in place of the files; empty while there are some, and while nothing is known.
    [[nodiscard]] const QString &message() const { return m_message; }
    [[nodiscard]] const QList<DownloadsRow *> &rows() const { return m_rows; }
    [[nodiscard]] QAbstractButton &folderButton() const { return *m_folder; }

    [[nodiscard]] bool wantsKeyboard() const override { return true; }

Q_SIGNALS:
    void fileChosen(const QUrl &file);
    void folderChosen();
    void menuRequested(const QUrl &file);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    /// In place of what the part above the line was.
    void setUpper(QWidget *upper);
    [[nodiscard]] QWidget *makeList(const QList<QUrl> &files);
    [[nodiscard]] DownloadsRow *makeRow(const QUrl &file);
    void step(qsizetype by);

    Context m_context;
    DownloadsState m_state;
    QString m_message;
    QVBoxLayout *m_column;
    /// The files, or what is said in their place; null while nothing is known.
    QWidget *m_upper = nullptr;
    /// The same where it is the files; null otherwise.
    QScrollArea *m_list = nullptr;
    QList<DownloadsRow *> m_rows;
    QAbstractButton *m_folder;
};

} // namespace moorline
