#pragma once

#include "files/FileDragSource.h"

#include <QKeyEvent>

namespace moorline {

/// One file of the Downloads stack: its icon and its name.
class DownloadsRow final : public FileDragSource {
    Q_OBJECT
public:
    DownloadsRow(BarStage &stage, Files &files, IconCache &icons, const QUrl &url, QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    /// The list reads the keyboard for all of its rows.
    void keyPressEvent(QKeyEvent *event) override { event->ignore(); }
    void keyReleaseEvent(QKeyEvent *event) override { event->ignore(); }
    void paintEvent(QPaintEvent *event) override;

private:
    IconImage m_icon;
};

} // namespace moorline
