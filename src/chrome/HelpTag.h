#pragma once

#include "platform/Clock.h"

#include <QWidget>

namespace moorline {

/// A short text above the bar that tells about the widget below it, in the bar's own look. It takes no input and goes
/// by itself after a while.
class HelpTag final : public QWidget {
    Q_OBJECT
public:
    static constexpr std::chrono::seconds longestShow{10};

    HelpTag(Clock &clock, QWidget *parent);

    /// `anchor` is where the middle of the lower edge belongs, in Qt's global coordinates. The tag keeps to the screen
    /// that is there.
    void showText(const QString &text, const QPoint &anchor);
    [[nodiscard]] QString text() const { return m_lines.join(u'\n'); }

protected:
    void paintEvent(QPaintEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    Clock &m_clock;
    QStringList m_lines;
    std::unique_ptr<Clock::Timer> m_timer;
};

} // namespace moorline
