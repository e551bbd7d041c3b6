#pragma once

#include "files/FileTile.h"
#include "platform/Menu.h"

namespace moorline {

/// The Trash: empty or full, as it was seen last. A click opens it; what is dropped on it is thrown away. While it is
/// shown it is looked at every four seconds, and at once after a drop.
class TrashButton final : public FileTile {
    Q_OBJECT
public:
    explicit TrashButton(const FilesContext &context, QGraphicsItem *parent = nullptr);

    [[nodiscard]] QString id() const override { return QStringLiteral("trash"); }
    [[nodiscard]] bool isFull() const { return m_isFull; }
    [[nodiscard]] Menu menu() const;

protected:
    QVariant itemChange(GraphicsItemChange change, const QVariant &value) override;
    void iconMissing() override;
    [[nodiscard]] bool takesDrop(const QStringList &formats) const override;
    bool drop(const QMimeData &data) override;

private:
    /// Looks now, and from then on for as long as it is shown.
    void refresh();
    void follow();
    void take(bool isFull);
    void showState();

    bool m_isFull = false;
    bool m_isFollowed = false;
    /// In place of an image that the system does not have.
    bool m_isFolderShown = false;
    /// The last look; the answers to others are of no interest.
    quint64 m_look = 0;
    std::unique_ptr<Clock::Timer> m_pause;
};

} // namespace moorline
