#pragma once

#include "files/DownloadsStackView.h"
#include "files/FileTile.h"
#include "platform/Files.h"
#include "platform/Menu.h"

#include <QPointer>

namespace moorline {

/// The Downloads folder. A click shows what came into it last; the folder is read anew each time, and what was known
/// before is shown until then.
class DownloadsButton final : public FileTile {
    Q_OBJECT
public:
    explicit DownloadsButton(const FilesContext &context, QGraphicsItem *parent = nullptr);

    [[nodiscard]] QString id() const override { return QStringLiteral("downloads"); }
    [[nodiscard]] Menu menu() const;
    [[nodiscard]] const DownloadsState &state() const { return m_state; }
    /// Null while it is closed.
    [[nodiscard]] DownloadsStackView *stack() const { return m_stack; }

private:
    struct UnderWay {
        QString folder;
        quint64 reading;
    };

    [[nodiscard]] QString path() const;
    void openStack();
    void load();
    void take(quint64 reading, const QString &folder, const std::optional<QList<FolderEntry>> &found);
    void openMenuOf(const QUrl &file);

    DownloadsState m_state;
    QPointer<DownloadsStackView> m_stack;
    /// The last reading; the answers to others are of no interest.
    quint64 m_reading = 0;
    /// What is being read, and since which of them.
    std::optional<UnderWay> m_underWay;
};

} // namespace moorline
