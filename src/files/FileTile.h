#pragma once

#include "chrome/IconButton.h"
#include "files/FilesContext.h"

namespace moorline {

/// A file, a folder or what stands for one in the bar: its icon, on a light field while something is held over it that
/// it takes. Where the system has no icon, a symbol stands in its place.
class FileTile : public IconButton {
    Q_OBJECT
public:
    FileTile(const FilesContext &context, QGraphicsItem *parent);

protected:
    [[nodiscard]] const FilesContext &context() const { return m_context; }
    /// What it is to whoever looks at it, and to whoever cannot.
    void setName(const QString &name, const QString &state = {});
    /// What is shown where there is no icon.
    void setSymbol(const QString &symbol);
    [[nodiscard]] QRectF growingRect() const override;
    void paintBehind(QPainter &painter) override;
    void paintOver(QPainter &painter) override;
    void iconMissing() override;

private:
    [[nodiscard]] QRectF fieldRect() const;

    FilesContext m_context;
    QString m_symbol;
    /// Whether the system was asked for an icon in vain.
    bool m_isIconMissing = false;
};

} // namespace moorline
